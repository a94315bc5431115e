#pragma once

#include <vector>

#include "geometry/ShapeForwarder.h"

class CElement;
class Coordinates;
class Direction;
class Function;
class SurfaceShape;

// The outline of an interface's surface. Every call goes to the child Function "function"
// (apertureShape); the surface it lies on is linked, not owned. The child "Axis", when the
// owner gives one, is the direction along which the outline projects onto the surface.
class Aperture : public ShapeForwarder<Function> {
public:
    Aperture();
    ~Aperture() override;

    bool Contains(Coordinates& point);
    // The nearest point within [minDistance, maxDistance] (no limit when negative) where the
    // ray meets the linked surface, or without one the aperture's own plane, inside the
    // outline.
    bool Distance(Coordinates& origin, Direction& dir, double& distance, double minDistance,
                  double maxDistance);
    double gap(Coordinates& point);
    // The surface's normal when one is linked, otherwise the outline's axis.
    bool GetNormal(CoordQUICK& point, DirQUICK& normal);
    // "square", "pointsWidth", "square3d" and the point outline are given exactly by their
    // corners.
    bool HasExactPointSet();
    bool SetShape(SurfaceShape* surface);
    bool SetGuideEdge(int edge);

    SurfaceShape* GetShape() { return shape; }
    Function* GetFunction() { return child; }

private:
    SurfaceShape* shape = nullptr;
};
