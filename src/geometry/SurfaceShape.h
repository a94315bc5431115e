#pragma once

#include <vector>

#include "framework/Component.h"
#include "geometry/CoordQUICK.h"
#include "geometry/DirQUICK.h"

class Aperture;
class CElement;
class Coordinates;
class Direction;
class SurfaceFunction;

// The closed-form surface of an interface. Every call goes to the child SurfaceFunction
// "surface"; the aperture that clips the surface is linked, not owned.
class SurfaceShape : public Component {
public:
    SurfaceShape();
    ~SurfaceShape() override;

    // Makes the child "surface" when it is missing.
    bool Initialize() override;
    bool FromXml(CElement* element) override;
    bool QuickSetToChildren(bool force) override;

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
    bool GetNormal(CoordQUICK& point, DirQUICK& normal);
    bool HasExactPointSet();
    bool GetRenderPointSet(std::vector<Coordinates*>& points);
    bool GetMeshPointSet(std::vector<Coordinates*>& points);
    bool GetOutlinePointSet(std::vector<Coordinates*>& points);

    bool SetAperture(Aperture* outline);
    Aperture* GetAperture() { return aperture; }
    SurfaceFunction* GetSurfaceFunction() { return surface; }

private:
    SurfaceFunction* surface = nullptr;
    Aperture* aperture = nullptr;
};
