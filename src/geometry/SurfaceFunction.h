#pragma once

#include <vector>

#include "geometry/ShapeForwarder.h"

class CElement;
class Coordinates;
class Direction;
class Function;

// A closed-form surface: the child Function "function" gives its shape (surfaceShapeName)
// and its coordinate system (coordSystem); this class finds where lines meet it.
//
// The three Intersect forms share their trailing arguments: crossings closer than
// minDistance or further than maxDistance (no limit when negative) are dropped; shift moves
// the surface along its axis; with bothWays the line is followed backwards too and the
// limits apply to the absolute distance; with nearestOnly only the crossing nearest the
// origin is kept.
class SurfaceFunction : public ShapeForwarder<Function> {
public:
    SurfaceFunction();
    ~SurfaceFunction() override;

    // For a sphere in the "spherical" system: the distance from its centre minus its
    // radius (negative inside); -1 for any other surface.
    double TestDistance(CoordQUICK& point);
    // The nearest crossing along the ray at 1e-10 or more, within limit (none when
    // negative), or -1.
    double TestDistance(Coordinates& origin, Direction& dir, double limit);

    // One point: all crossings, then the one nearest the origin. Without nearestOnly there
    // must be exactly one crossing.
    bool Intersect(Coordinates& origin, Direction& dir, Coordinates& hit, double minDistance,
                   double maxDistance, double shift, bool bothWays, bool nearestOnly);
    // A list of results: the distances of the crossings in ascending order.
    bool Intersect(Coordinates& origin, Direction& dir, std::vector<double>& distances,
                   double minDistance, double maxDistance, double shift, bool bothWays,
                   bool nearestOnly);
    // A list of points: each origin projected along dir onto the surface; the hits are new
    // objects that the caller owns. True when every origin met the surface.
    bool Intersect(std::vector<Coordinates*>& origins, Direction& dir,
                   std::vector<Coordinates*>& hits, double minDistance, double maxDistance,
                   double shift, bool bothWays, bool nearestOnly);
    // "surfaceFlat" and "surfaceCube" can be meshed exactly.
    bool HasExactPointSet();

    Function* GetFunction() { return child; }

private:
    // The distances of all crossings of one line, filtered and ordered as the class
    // comment says.
    bool Crossings(const VectorQUICK& origin, const VectorQUICK& dir, double minDistance,
                   double maxDistance, double shift, bool bothWays, bool nearestOnly,
                   std::vector<double>& distances);
};
