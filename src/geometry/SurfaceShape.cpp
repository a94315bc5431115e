#include "geometry/SurfaceShape.h"

#include "geometry/SurfaceFunction.h"

namespace {

constexpr const char* TYPE = "SurfaceShape";

}  // namespace

SurfaceShape::SurfaceShape() : ShapeForwarder<SurfaceFunction>(TYPE, "surface", "SurfaceFunction") {}

SurfaceShape::~SurfaceShape() = default;

double SurfaceShape::TestDistance(CoordQUICK& point) {
    return child == nullptr ? -1.0 : child->TestDistance(point);
}

double SurfaceShape::TestDistance(Coordinates& origin, Direction& dir, double limit) {
    return child == nullptr ? -1.0 : child->TestDistance(origin, dir, limit);
}

bool SurfaceShape::Intersect(Coordinates& origin, Direction& dir, Coordinates& hit,
                             double minDistance, double maxDistance, double shift, bool bothWays,
                             bool nearestOnly) {
    return child != nullptr && child->Intersect(origin, dir, hit, minDistance, maxDistance, shift,
                                                bothWays, nearestOnly);
}

bool SurfaceShape::Intersect(Coordinates& origin, Direction& dir, std::vector<double>& distances,
                             double minDistance, double maxDistance, double shift, bool bothWays,
                             bool nearestOnly) {
    return child != nullptr && child->Intersect(origin, dir, distances, minDistance, maxDistance,
                                                shift, bothWays, nearestOnly);
}

bool SurfaceShape::Intersect(std::vector<Coordinates*>& origins, Direction& dir,
                             std::vector<Coordinates*>& hits, double minDistance,
                             double maxDistance, double shift, bool bothWays, bool nearestOnly) {
    return child != nullptr && child->Intersect(origins, dir, hits, minDistance, maxDistance, shift,
                                                bothWays, nearestOnly);
}

bool SurfaceShape::HasExactPointSet() { return child != nullptr && child->HasExactPointSet(); }

bool SurfaceShape::SetAperture(Aperture* outline) {
    aperture = outline;
    return true;
}
