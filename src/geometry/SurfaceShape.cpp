#include "geometry/SurfaceShape.h"

#include "geometry/SurfaceFunction.h"

namespace {

constexpr const char* TYPE = "SurfaceShape";

}  // namespace

SurfaceShape::SurfaceShape() { objTypeStr = TYPE; }

SurfaceShape::~SurfaceShape() = default;

bool SurfaceShape::Initialize() {
    if (!Component::Initialize()) return false;
    if (surface == nullptr) {
        surface = new SurfaceFunction();
        surface->Initialize();
        AddChild(surface);
        surface->SetName("surface");
    }
    return true;
}

bool SurfaceShape::FromXml(CElement* element) {
    if (!Component::FromXml(element)) return false;
    return LoadPointerByType<SurfaceFunction>(&surface, element, "SurfaceFunction");
}

bool SurfaceShape::QuickSetToChildren(bool force) {
    if (surface != nullptr) surface->QuickSetToChildren(force);
    return Component::QuickSetToChildren(force);
}

double SurfaceShape::TestDistance(CoordQUICK& point) {
    return surface == nullptr ? -1.0 : surface->TestDistance(point);
}

double SurfaceShape::TestDistance(Coordinates& origin, Direction& dir, double limit) {
    return surface == nullptr ? -1.0 : surface->TestDistance(origin, dir, limit);
}

bool SurfaceShape::Intersect(Coordinates& origin, Direction& dir, Coordinates& hit,
                             double minDistance, double maxDistance, double shift, bool bothWays,
                             bool nearestOnly) {
    return surface != nullptr && surface->Intersect(origin, dir, hit, minDistance, maxDistance,
                                                    shift, bothWays, nearestOnly);
}

bool SurfaceShape::Intersect(Coordinates& origin, Direction& dir, std::vector<double>& distances,
                             double minDistance, double maxDistance, double shift, bool bothWays,
                             bool nearestOnly) {
    return surface != nullptr && surface->Intersect(origin, dir, distances, minDistance,
                                                    maxDistance, shift, bothWays, nearestOnly);
}

bool SurfaceShape::Intersect(std::vector<Coordinates*>& origins, Direction& dir,
                             std::vector<Coordinates*>& hits, double minDistance,
                             double maxDistance, double shift, bool bothWays, bool nearestOnly) {
    return surface != nullptr && surface->Intersect(origins, dir, hits, minDistance, maxDistance,
                                                    shift, bothWays, nearestOnly);
}

bool SurfaceShape::GetNormal(CoordQUICK& point, DirQUICK& normal) {
    return surface != nullptr && surface->GetNormal(point, normal);
}

bool SurfaceShape::HasExactPointSet() { return surface != nullptr && surface->HasExactPointSet(); }

bool SurfaceShape::GetRenderPointSet(std::vector<Coordinates*>& points) {
    return surface != nullptr && surface->GetRenderPointSet(points);
}

bool SurfaceShape::GetMeshPointSet(std::vector<Coordinates*>& points) {
    return surface != nullptr && surface->GetMeshPointSet(points);
}

bool SurfaceShape::GetOutlinePointSet(std::vector<Coordinates*>& points) {
    return surface != nullptr && surface->GetOutlinePointSet(points);
}

bool SurfaceShape::SetAperture(Aperture* outline) {
    aperture = outline;
    return true;
}
