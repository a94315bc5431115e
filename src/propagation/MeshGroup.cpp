#include "propagation/MeshGroup.h"

#include <algorithm>
#include <cmath>

#include "logging/Log.h"
#include "propagation/MeshElement.h"

namespace {

// Degrees per radian of the bounding-sphere cone.
constexpr double kConeDegreesPerRadian = 57.29577951308232;

// Widens the box [low, high] to hold the point.
void Enclose(double low[3], double high[3], const CoordQUICK& point) {
    for (int axis = 0; axis < 3; ++axis) {
        low[axis] = std::min(low[axis], point.data[axis]);
        high[axis] = std::max(high[axis], point.data[axis]);
    }
}

}  // namespace

MeshGroup::~MeshGroup() {
    for (MeshElement* element : elements) delete element;
}

bool MeshGroup::addElement(MeshElement* element) {
    if (element == nullptr) {
        Log::log(1) << "MeshGroup::addElement: no element given\n";
        return false;
    }
    elements.push_back(element);
    needsUpdate = true;
    return true;
}

bool MeshGroup::update() {
    if (!needsUpdate) return true;
    needsUpdate = false;
    if (elements.empty()) return true;

    const CoordQUICK& seed = elements.front()->point1;
    double low[3] = {seed.data[0], seed.data[1], seed.data[2]};
    double high[3] = {seed.data[0], seed.data[1], seed.data[2]};
    for (const MeshElement* element : elements) {
        CoordQUICK vertex = element->point1;
        Enclose(low, high, vertex);
        vertex += element->edge1;
        Enclose(low, high, vertex);
        vertex = element->point1;
        vertex += element->edge2;
        Enclose(low, high, vertex);
    }
    centre.SetValues((low[0] + high[0]) / 2.0, (low[1] + high[1]) / 2.0, (low[2] + high[2]) / 2.0);
    const VectorQUICK diagonal(high[0] - low[0], high[1] - low[1], high[2] - low[2]);
    radius = diagonal.GetLength() / 2.0;
    return true;
}

bool MeshGroup::SphereReachable(CoordQUICK& origin, DirQUICK& dir, double limit) const {
    const double d = origin.diff(centre);
    if (d < radius) return true;
    if (limit != -1.0 && !(d - radius < limit)) return false;
    // A centre behind the origin is never ruled out.
    if (dir.DotDiff(centre, origin) < 0.0) return true;
    return dir.AngleDiff(centre, origin) < std::abs(std::asin(radius / d)) * kConeDegreesPerRadian;
}

bool MeshGroup::distance(double& result, CoordQUICK& origin, DirQUICK& dir, DirQUICK** normal,
                         double limit) {
    if (needsUpdate) update();
    if (!SphereReachable(origin, dir, limit)) return false;

    MeshElement* closest = nullptr;
    double best = -1.0;
    for (MeshElement* element : elements) {
        double t = 0.0;
        if (!element->distance(t, origin, dir, limit, false)) continue;
        if (closest == nullptr || (t > 0.0 && t < best)) {
            best = t;
            closest = element;
        }
    }
    if (closest == nullptr || best < 1e-8) return false;
    result = best;
    if (normal != nullptr) {
        if (*normal == nullptr) *normal = new DirQUICK();
        (*normal)->Copy(closest->normal);
    }
    return true;
}

bool MeshGroup::missDistance(Ray* ray, std::vector<RayFaceMiss*>& misses, double gap) {
    if (needsUpdate) update();
    for (MeshElement* element : elements) element->missDistance(ray, misses, gap);
    return true;
}
