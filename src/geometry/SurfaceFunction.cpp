#include "geometry/SurfaceFunction.h"

#include <algorithm>
#include <cmath>

#include "geometry/Coordinates.h"
#include "geometry/Direction.h"
#include "geometry/Function.h"
#include "logging/Log.h"

namespace {

constexpr const char* TYPE = "SurfaceFunction";
// A crossing nearer than this is the ray's own starting surface.
constexpr double NEAREST_HIT = 1e-10;

VectorQUICK FromMatrix(MatrixTemplate<double>& m) {
    return VectorQUICK(m.Get(0), m.Get(1), m.Get(2));
}

}  // namespace

SurfaceFunction::SurfaceFunction() : ShapeForwarder<Function>(TYPE, "function", "Function") {}

SurfaceFunction::~SurfaceFunction() = default;

double SurfaceFunction::TestDistance(CoordQUICK& point) {
    if (child == nullptr || child->GetCoordSystem() != PV_COORD_SPHERICAL ||
        child->GetFunctionType() != PV_SURF_SPHERICAL) {
        return -1.0;
    }
    const VectorQUICK centre = child->GetSphereCentre();
    return point.diff(CoordQUICK(centre.data[0], centre.data[1], centre.data[2])) -
           child->GetSphericalRadius();
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
    if (child == nullptr) return false;
    std::vector<double> ts;
    if (!child->crossings(origin, dir, child->GetFunctionType(), child->GetCoordSystem(), shift,
                          ts)) {
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

bool SurfaceFunction::HasExactPointSet() {
    if (child == nullptr) return false;
    const eParamValue type = child->GetFunctionType();
    return type == PV_SURF_FLAT || type == PV_SURF_CUBE;
}
