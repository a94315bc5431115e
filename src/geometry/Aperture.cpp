#include "geometry/Aperture.h"

#include "geometry/Coordinates.h"
#include "geometry/Direction.h"
#include "geometry/Function.h"
#include "geometry/SurfaceShape.h"

namespace {

constexpr const char* TYPE = "Aperture";

}  // namespace

Aperture::Aperture() : ShapeForwarder<Function>(TYPE, "function", "Function") {}

Aperture::~Aperture() = default;

bool Aperture::Contains(Coordinates& point) { return child != nullptr && child->contains(point); }

bool Aperture::Distance(Coordinates& origin, Direction& dir, double& distance, double minDistance,
                        double maxDistance) {
    if (child == nullptr) return false;
    std::vector<double> distances;
    if (shape != nullptr) {
        shape->Intersect(origin, dir, distances, minDistance, maxDistance, 0.0, false, false);
    } else {
        double t = 0.0;
        if (child->distance(origin, dir, t, minDistance, maxDistance, nullptr, nullptr,
                            PV_SURF_FLAT, 3, PV_COORD_CARTESIAN)) {
            distances.push_back(t);
        }
    }
    for (double t : distances) {
        Coordinates point(origin.Get(0) + t * dir.Get(0), origin.Get(1) + t * dir.Get(1),
                          origin.Get(2) + t * dir.Get(2));
        if (!Contains(point)) continue;
        distance = t;
        return true;
    }
    return false;
}

double Aperture::gap(Coordinates& point) { return child == nullptr ? 1.0 : child->gap(point); }

bool Aperture::GetNormal(CoordQUICK& point, DirQUICK& normal) {
    if (shape != nullptr) return shape->GetNormal(point, normal);
    return ShapeForwarder<Function>::GetNormal(point, normal);
}

bool Aperture::HasExactPointSet() {
    if (child == nullptr) return false;
    const eParamValue type = child->GetFunctionType();
    return type == PV_APSHAPE_SQUARE || type == PV_APSHAPE_POINTSWIDTH ||
           type == PV_APSHAPE_SQUARE3D || type == PV_APSHAPE_POINTOUTLINE;
}

bool Aperture::SetShape(SurfaceShape* surface) {
    shape = surface;
    return true;
}

bool Aperture::SetGuideEdge(int edge) { return child != nullptr && child->SetGuideEdge(edge); }
