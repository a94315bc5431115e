#pragma once

#include <string>

#include "propagation/Structure.h"

class Interface;
class OpticElement;

// A wall along a polyline of points, or with orientation "horizontal" a floor or ceiling.
//
// A vertical wall expands segment by segment, from point firstPoint - 1 to the last point:
// a thin wall into one sheet "barrierFace" per segment; a thick one into a volume
// "barrierVol" per segment and the faces "barrierSide", "barrierBottom" and "barrierTop"
// that close it. A floor expands into one face "floorFace" when thin; when thick into a
// volume with the faces "floorBase", "floorTop" and the rim "floorRound" between them.
class Barrier : public Structure {
public:
    Barrier();

    // With rebuild false, nothing. Otherwise discards what was built and builds anew, all
    // segments when a parameter changed since the last build, else from firstPoint on.
    bool QuickSetToChildren(bool rebuild) override;
    void Print() override;

    int GetFirstPoint() const { return firstPoint; }

protected:
    // A reload builds only the last segment.
    void PrepareReload() override;

private:
    bool BuildVertical(OpticElement* element);
    bool BuildHorizontal(OpticElement* element);
    // The strip of the segment ending at point i, named with i, given barrierLossModel
    // lossModel.
    Interface* MakeSegmentFace(OpticElement* element, const sStrip& strip, int i,
                               eParamValue lossModel);
    // A new volume of the shape of the box around a thick wall, sized and placed as the box.
    void MakeWallVolume(OpticElement* element, const sBox& box);
    // The side, bottom and top of segment i around a new volume.
    void BuildThickSegment(OpticElement* element, int i, double base, double top);
    // The slab of segment i: along the segment, from base to top above it, and thickness
    // across it, centred on the segment line as the faces are.
    sBox SegmentBox(int i, double base, double top);
    // The slab of a floor between the two levels over its outline's bounding rectangle: the
    // square without points, else the rectangle that holds every point.
    sBox FloorBox(const sSquare& square, double level, double topLevel);
    // The square spanned by xMin, xMax, yMin and yMax; the larger span is its side.
    sSquare LimitsSquare();

    // The index of the point at which building starts.
    int firstPoint = 1;
};
