#pragma once

#include <vector>

#include "framework/Component.h"

class CElement;
class Coordinates;

// A drawn path: an ordered list of points, as a street or a walkway along which objects
// may move. It has no surface and takes no part in the trace.
class WayLine : public Component {
public:
    WayLine();

    // The component's load, then the points.
    bool FromXml(CElement* element) override;

    // Appends a copy of the point to the path.
    bool AddPoint(const Coordinates& point);
    std::vector<Coordinates*> GetPoints();
    // The sum of the segment lengths; 0 for fewer than two points.
    double GetLength();
    // The point at that distance along the path from its first point, held to the two
    // ends. False, leaving out as it is, when the path has no point.
    bool GetPointAtDistance(double distance, Coordinates& out);
};
