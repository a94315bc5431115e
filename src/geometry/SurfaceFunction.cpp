#include "geometry/SurfaceFunction.h"

#include <algorithm>
#include <cmath>

#include "geometry/Coordinates.h"
#include "geometry/Direction.h"
#include "geometry/Function.h"
#include "geometry/ShapeValues.h"
#include "logging/Log.h"

namespace {

constexpr const char* TYPE = "SurfaceFunction";
// A crossing nearer than this is the ray's own starting surface.
constexpr double NEAREST_HIT = 1e-10;

VectorQUICK FromMatrix(MatrixTemplate<double>& m) {
    return VectorQUICK(m.Get(0), m.Get(1), m.Get(2));
}

}  // namespace

SurfaceFunction::SurfaceFunction() { objTypeStr = TYPE; }

SurfaceFunction::~SurfaceFunction() = default;

bool SurfaceFunction::Initialize() {
    if (!Component::Initialize()) return false;
    if (function == nullptr) {
        function = new Function();
        function->Initialize();
        AddChild(function);
        function->SetName("function");
    }
    return true;
}

bool SurfaceFunction::FromXml(CElement* element) {
    if (!Component::FromXml(element)) return false;
    return LoadPointerByType<Function>(&function, element, "Function");
}

bool SurfaceFunction::QuickSetToChildren(bool force) {
    if (function != nullptr) function->Recheck();
    return Component::QuickSetToChildren(force);
}

double SurfaceFunction::TestDistance(CoordQUICK& point) {
    if (function == nullptr || function->GetCoordSystem() != shapeValue::spherical ||
        function->GetFunctionType() != shapeValue::surfaceSpherical) {
        return -1.0;
    }
    const VectorQUICK centre = function->GetSphereCentre();
    return point.diff(CoordQUICK(centre.data[0], centre.data[1], centre.data[2])) -
           function->GetSphericalRadius();
}

double SurfaceFunction::TestDistance(Coordinates& origin, Direction& dir, double limit) {
    std::vector<double> distances;
    if (!Intersect(origin, dir, distances, NEAREST_HIT, limit, 0.0, false, true)) {
        Log::log(4) << "SurfaceFunction::Intersect() .. done - failed\n";
        return -1.0;
    }
    Log::log(4) << "SurfaceFunction::Intersect() .. done\n";
    return distances.front();
}

bool SurfaceFunction::Crossings(const VectorQUICK& origin, const VectorQUICK& dir,
                                double minDistance, double maxDistance, double shift, bool bothWays,
                                bool nearestOnly, std::vector<double>& distances) {
    if (function == nullptr) return false;
    std::vector<double> ts;
    if (!function->crossings(origin, dir, function->GetFunctionType(), function->GetCoordSystem(),
                             shift, ts)) {
        return false;
    }
    for (double t : ts) {
        const double reach = bothWays ? std::abs(t) : t;
        if (reach < minDistance || (maxDistance >= 0.0 && reach > maxDistance)) continue;
        distances.push_back(t);
    }
    if (nearestOnly && distances.size() > 1) {
        const double nearest =
            *std::min_element(distances.begin(), distances.end(),
                              [](double a, double b) { return std::abs(a) < std::abs(b); });
        distances.assign(1, nearest);
    }
    return !distances.empty();
}

bool SurfaceFunction::Intersect(Coordinates& origin, Direction& dir, std::vector<double>& distances,
                                double minDistance, double maxDistance, double shift, bool bothWays,
                                bool nearestOnly) {
    return Crossings(FromMatrix(origin), FromMatrix(dir), minDistance, maxDistance, shift, bothWays,
                     nearestOnly, distances);
}

bool SurfaceFunction::Intersect(std::vector<Coordinates*>& origins, Direction& dir,
                                std::vector<Coordinates*>& hits, double minDistance,
                                double maxDistance, double shift, bool bothWays, bool nearestOnly) {
    const VectorQUICK d = FromMatrix(dir);
    bool every = !origins.empty();
    for (Coordinates* origin : origins) {
        std::vector<double> distances;
        if (origin == nullptr || !Crossings(FromMatrix(*origin), d, minDistance, maxDistance, shift,
                                            bothWays, nearestOnly, distances)) {
            every = false;
            continue;
        }
        for (double t : distances) {
            hits.push_back(new Coordinates(origin->Get(0) + t * d.data[0],
                                           origin->Get(1) + t * d.data[1],
                                           origin->Get(2) + t * d.data[2]));
        }
    }
    return every;
}

bool SurfaceFunction::Intersect(Coordinates& origin, Direction& dir, Coordinates& hit,
                                double minDistance, double maxDistance, double shift, bool bothWays,
                                bool nearestOnly) {
    std::vector<Coordinates*> origins{&origin};
    std::vector<Coordinates*> hits;
    Intersect(origins, dir, hits, minDistance, maxDistance, shift, bothWays, false);
    bool found = nearestOnly ? !hits.empty() : hits.size() == 1;
    if (found) {
        Coordinates* nearest =
            *std::min_element(hits.begin(), hits.end(), [&origin](Coordinates* a, Coordinates* b) {
                return origin.diff(*a) < origin.diff(*b);
            });
        hit.SetValues(nearest->Get(0), nearest->Get(1), nearest->Get(2));
    }
    for (Coordinates* h : hits) delete h;
    return found;
}

bool SurfaceFunction::GetNormal(CoordQUICK& point, DirQUICK& normal) {
    if (function == nullptr) return false;
    VectorQUICK n(0, 0, 0);
    if (!function->GetNormal(point, n)) return false;
    normal.SetValues(n.data[0], n.data[1], n.data[2]);
    return true;
}

bool SurfaceFunction::HasExactPointSet() {
    if (function == nullptr) return false;
    const eParamValue type = function->GetFunctionType();
    return type == shapeValue::surfaceFlat || type == shapeValue::surfaceCube;
}

bool SurfaceFunction::GetRenderPointSet(std::vector<Coordinates*>& points) {
    return function != nullptr && function->GetRenderPointSet(points);
}

bool SurfaceFunction::GetMeshPointSet(std::vector<Coordinates*>& points) {
    return function != nullptr && function->GetMeshPointSet(points);
}

bool SurfaceFunction::GetOutlinePointSet(std::vector<Coordinates*>& points) {
    return function != nullptr && function->GetOutlinePointSet(points);
}
