#pragma once

#include <vector>

#include "framework/Component.h"
#include "framework/ParamTypes.h"

class Coordinates;
class Rotation;
struct triLink;

// The repetition of an object or the fan of a source: a shape (arrayType "point" for
// directions from one point, "plane" for points on a plane; arrayShape "single", "line",
// "star", "circleFull", ...) with its count and sizes, and the cache of the positions made
// from them, with the triangles that link neighbouring positions and their solid angles.
class Array : public Component {
public:
    Array();
    ~Array() override;

    // Reads arrayType, arrayShape, count, armCount, angle (degrees), rayGap (degrees,
    // kept in radians), size and wavelength, and finds the child Rotation if there is one.
    // Runs once per change of the parameters: false when there was nothing to do.
    bool checkParams() override;

    // Hands out the positions of the shape for count (-1: the spacing rayGap, or the
    // array's own count when there is no spacing), generating them when the parameters,
    // the count or the positionsChanged mark say the cache is out of date. With copy
    // false the caller receives the cached objects themselves, which stay the array's;
    // with copy true it receives clones that it owns. links and solidAngles may be null:
    // the triangles of neighbouring positions are made only when links are asked for.
    // True when there are positions.
    bool getPositions(std::vector<Coordinates*>& positions, bool copy, std::vector<triLink*>* links,
                      std::vector<double>* solidAngles, int count);

    // True while the cached positions are out of date.
    bool PositionsChanged() const { return positionsChanged; }
    void SetPositionsChanged(bool value) { positionsChanged = value; }
    // The number of cached positions; 1 while there are none.
    int GetPositionCount() const;
    // A cached position, or null.
    Coordinates* GetPosition(int index) const;
    // Deletes the cached positions, links and solid angles.
    void ClearPositions();

    eParamValue GetArrayType() const { return arrayType; }
    eParamValue GetArrayShape() const { return arrayShape; }
    int GetCount() const { return count; }
    int GetArmCount() const { return armCount; }
    double GetAngle() const { return angle; }
    double GetRayGap() const { return rayGap; }
    double GetSize() const { return size; }
    double GetWavelength() const { return wavelength; }
    Rotation* GetRotation() { return rotation; }

protected:
    // Fills the cache with the shape for the count n.
    void Generate(int n, bool withLinks, bool withAngles);
    // Turns every cached position by the rotation, when there is one.
    void Rotate();
    // Appends the cache (or clones of it) to the caller's vectors.
    void HandOut(std::vector<Coordinates*>& out, bool copy, std::vector<triLink*>* outLinks,
                 std::vector<double>* outAngles) const;

    eParamValue arrayType = PV_EMPTY;
    eParamValue arrayShape = PV_EMPTY;
    int count = -1;
    int armCount = -1;
    double angle = -1.0;
    double rayGap = -1.0;
    double size = -1.0;
    double wavelength = -1.0;
    Rotation* rotation = nullptr;
    std::vector<Coordinates*> positions;
    int positionCount = 0;
    std::vector<triLink*> links;
    std::vector<double> solidAngles;
    bool positionsChanged = true;
    // Whether the cache holds the triangles and their solid angles: both are made only
    // when asked for.
    bool linksCached = false;
    bool anglesCached = false;
};
