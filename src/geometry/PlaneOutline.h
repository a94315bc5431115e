#pragma once

#include <array>
#include <cstddef>
#include <vector>

// A closed polygon in a plane, given by its corners (x, y) in order: the outline of a
// floor or a face. Answers whether a point lies inside, how far it is from the edge, and
// splits the polygon into triangles.
class PlaneOutline {
public:
    struct Corner {
        double x;
        double y;
    };

    explicit PlaneOutline(std::vector<Corner> corners);

    // At least three corners.
    bool IsValid() const { return corners.size() >= 3; }
    const std::vector<Corner>& GetCorners() const { return corners; }
    // The mean of the corners.
    Corner Centre() const;
    // By the crossing number; a point on an edge may fall either way.
    bool Inside(double x, double y) const;
    // The distance to the nearest edge.
    double EdgeDistance(double x, double y) const;
    // 0 at the centre, 1 on the edge, growing outside: 1 - d / dc inside and 1 + d / dc
    // outside, with d the point's and dc the centre's distance from the edge.
    double Value(double x, double y) const;
    // Triangles of corner indices covering the polygon, by clipping ears; false when the
    // polygon could not be split completely (self-crossing outlines).
    bool Triangulate(std::vector<std::array<int, 3>>& triangles) const;

private:
    // Twice the signed area: positive for counter-clockwise corners.
    double SignedArea() const;
    bool IsEar(const std::vector<int>& ring, size_t at, double orientation) const;

    std::vector<Corner> corners;
};
