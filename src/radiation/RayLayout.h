#pragma once

#include <vector>

#include "framework/Component.h"
#include "framework/ParamTypes.h"
#include "geometry/Direction.h"
#include "geometry/Transformation.h"

class Array;
class CElement;
class Coordinates;
class Ray;
class TriRay;
struct triLink;

// Which rays a source launches: the shape, count, angle and spacing that a Beam passes
// down become the positions of an Array (directions for "point", points for "plane"),
// and each position becomes one Ray from the layout's place, with the triangles that link
// neighbouring rays when they are asked for.
class RayLayout : public Component {
public:
    RayLayout();
    ~RayLayout() override;

    // Forgets the children as it deletes them.
    bool Empty() override;
    // Takes the children "Array" by type and "Point" and "Direction" by name.
    bool FromXml(CElement* element) override;
    // The parameter "Shape" with "Single", the child "Point" at the origin and the child
    // "Direction" along z.
    bool InitializeDefault();
    // The other's parameters and the values of its point and direction.
    bool Copy(RayLayout* other);

    // Finds "Point" and "Direction", builds the frame around the direction, reads the
    // parameters and makes a new Array from them. Runs once per change of the parameters:
    // false when there was nothing to do or a child is missing.
    bool checkParams() override;

    // Appends one ray per position of the array (count as Array::getPositions takes it),
    // with ids from 0 in the order of the positions; with triRays, also one TriRay per
    // triangle of neighbouring rays. False when there are no positions.
    bool SetRays(std::vector<Ray*>& rays, int rayCount, std::vector<TriRay*>* triRays);
    // The rays of a trace: SetRays with the spacing or count that the array holds.
    bool SetInitialRays(std::vector<Ray*>& rays, std::vector<TriRay*>* triRays);
    // testCount rays; false, and none, when testCount is not positive.
    bool SetTestRays(std::vector<Ray*>& rays);

    Array* GetArray() { return array; }
    Coordinates* GetPoint() { return point; }
    Direction* GetDirection() { return direction; }

private:
    // side1 and up = direction x helper, side2 = direction x up, with the helper x, or y
    // when the direction is x.
    void BuildFrame();
    // The layout's global transformation, or its parent's when it has no layout.
    Transformation PlacingTransformation();
    // Reads a parameter into value when it exists; found says whether it did.
    template <typename T>
    void ReadParameter(eParamName name, T& value, bool& found, T fallback);
    // Sets the parameter of the new array when the layout has it.
    template <typename T>
    void SetInArray(eParamName name, T value, bool found);
    // Replaces the array by a new one that takes this layout's shape parameters.
    void MakeArray();
    // Turns the positions into rays and appends them to rays, numbered from 0.
    void MakeRays(const std::vector<Coordinates*>& positions, std::vector<Ray*>& rays);
    // One TriRay per link, carrying its share of the total solid angle.
    static void MakeTriRays(const std::vector<triLink*>& links,
                            const std::vector<double>& solidAngles, std::vector<TriRay*>& triRays);

    Array* array = nullptr;
    Coordinates* point = nullptr;
    Direction* direction = nullptr;
    Direction side1;
    Direction side2;
    Direction up;
    eParamValue type = PV_EMPTY;
    bool typeFound = false;
    eParamValue shape = PV_EMPTY;
    bool shapeFound = false;
    double size = -1.0;
    bool sizeFound = false;
    double angle = -1.0;
    bool angleFound = false;
    double count = -1.0;
    bool countFound = false;
    double armCount = -1.0;
    bool armCountFound = false;
    double wavelength = -1.0;
    bool wavelengthFound = false;
    int traceLimit = -1;
    bool traceLimitFound = false;
    int reflectLimit = -1;
    bool reflectLimitFound = false;
    int transmitLimit = -1;
    bool transmitLimitFound = false;
};
