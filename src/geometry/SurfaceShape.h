#pragma once

#include <vector>

#include "geometry/ShapeForwarder.h"

class Aperture;
class CElement;
class Coordinates;
class Direction;
class SurfaceFunction;

// The closed-form surface of an interface. Every call goes to the child SurfaceFunction
// "surface"; the aperture that clips the surface is linked, not owned.
class SurfaceShape : public ShapeForwarder<SurfaceFunction> {
public:
    SurfaceShape();
    ~SurfaceShape() override;

    double TestDistance(CoordQUICK& point);
    double TestDistance(Coordinates& origin, Direction& dir, double limit);
    bool Intersect(Coordinates& origin, Direction& dir, Coordinates& hit, double minDistance,
                   double maxDistance, double shift, bool bothWays, bool nearestOnly);
    bool Intersect(Coordinates& origin, Direction& dir, std::vector<double>& distances,
                   double minDistance, double maxDistance, double shift, bool bothWays,
                   bool nearestOnly);
    bool Intersect(std::vector<Coordinates*>& origins, Direction& dir,
                   std::vector<Coordinates*>& hits, double minDistance, double maxDistance,
                   double shift, bool bothWays, bool nearestOnly);
    bool HasExactPointSet();

    bool SetAperture(Aperture* outline);
    Aperture* GetAperture() { return aperture; }
    SurfaceFunction* GetSurfaceFunction() { return child; }

private:
    Aperture* aperture = nullptr;
};
