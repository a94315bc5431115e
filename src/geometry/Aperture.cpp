#include "geometry/Aperture.h"

#include "geometry/Coordinates.h"
#include "geometry/Direction.h"
#include "geometry/Function.h"
#include "geometry/ShapeValues.h"
#include "geometry/SurfaceShape.h"

namespace {

constexpr const char* TYPE = "Aperture";

}  // namespace

Aperture::Aperture() { objTypeStr = TYPE; }

Aperture::~Aperture() = default;

bool Aperture::Initialize() {
    if (!Component::Initialize()) return false;
    if (function == nullptr) {
        function = new Function();
        function->Initialize();
        AddChild(function);
        function->SetName("function");
    }
    return true;
}

bool Aperture::FromXml(CElement* element) {
    if (!Component::FromXml(element)) return false;
    return LoadPointerByType<Function>(&function, element, "Function");
}

bool Aperture::QuickSetToChildren(bool force) {
    if (function != nullptr) function->Recheck();
    return Component::QuickSetToChildren(force);
}

bool Aperture::Contains(Coordinates& point) {
    return function != nullptr && function->contains(point);
}

bool Aperture::Distance(Coordinates& origin, Direction& dir, double& distance, double minDistance,
                        double maxDistance) {
    if (function == nullptr) return false;
    std::vector<double> distances;
    if (shape != nullptr) {
        shape->Intersect(origin, dir, distances, minDistance, maxDistance, 0.0, false, false);
    } else {
        double t = 0.0;
        if (function->distance(origin, dir, t, minDistance, maxDistance, nullptr, nullptr,
                               shapeValue::surfaceFlat, 3, shapeValue::cartesian)) {
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

double Aperture::gap(Coordinates& point) {
    return function == nullptr ? 1.0 : function->gap(point);
}

bool Aperture::GetNormal(CoordQUICK& point, DirQUICK& normal) {
    if (shape != nullptr) return shape->GetNormal(point, normal);
    if (function == nullptr) return false;
    VectorQUICK n(0, 0, 0);
    if (!function->GetNormal(point, n)) return false;
    normal.SetValues(n.data[0], n.data[1], n.data[2]);
    return true;
}

bool Aperture::HasExactPointSet() {
    if (function == nullptr) return false;
    const eParamValue type = function->GetFunctionType();
    return type == shapeValue::square || type == shapeValue::pointsWidth ||
           type == shapeValue::square3d || type == shapeValue::pointOutline;
}

bool Aperture::GetRenderPointSet(std::vector<Coordinates*>& points) {
    return function != nullptr && function->GetRenderPointSet(points);
}

bool Aperture::GetMeshPointSet(std::vector<Coordinates*>& points) {
    return function != nullptr && function->GetMeshPointSet(points);
}

bool Aperture::GetOutlinePointSet(std::vector<Coordinates*>& points) {
    return function != nullptr && function->GetOutlinePointSet(points);
}

bool Aperture::SetShape(SurfaceShape* surface) {
    shape = surface;
    return true;
}

bool Aperture::SetGuideEdge(int edge) {
    return function != nullptr && function->SetGuideEdge(edge);
}
