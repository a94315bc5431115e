#pragma once

#include <vector>

#include "framework/Component.h"
#include "geometry/CoordQUICK.h"
#include "geometry/DirQUICK.h"

class CElement;
class Coordinates;
class Direction;
class Function;
class SurfaceShape;

// The outline of an interface's surface. Every call goes to the child Function "function"
// (apertureShape); the surface it lies on is linked, not owned. The child "Axis", when the
// owner gives one, is the direction along which the outline projects onto the surface.
class Aperture : public Component {
public:
    Aperture();
    ~Aperture() override;

    // Makes the child "function" when it is missing.
    bool Initialize() override;
    bool FromXml(CElement* element) override;
    bool QuickSetToChildren(bool force) override;

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
    bool GetRenderPointSet(std::vector<Coordinates*>& points);
    bool GetMeshPointSet(std::vector<Coordinates*>& points);
    bool GetOutlinePointSet(std::vector<Coordinates*>& points);
    bool SetShape(SurfaceShape* surface);
    bool SetGuideEdge(int edge);

    SurfaceShape* GetShape() { return shape; }
    Function* GetFunction() { return function; }

private:
    Function* function = nullptr;
    SurfaceShape* shape = nullptr;
};
