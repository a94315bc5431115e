#include "propagation/WayLine.h"

#include <algorithm>

#include "geometry/CoordQUICK.h"
#include "geometry/Coordinates.h"
#include "logging/Log.h"
#include "propagation/PathPoints.h"

namespace {

CoordQUICK Quick(Coordinates* point) {
    CoordQUICK quick;
    quick.Copy(*point);
    return quick;
}

void Store(const CoordQUICK& point, Coordinates& out) {
    for (int i = 0; i < 3; ++i) out.SetValue(i, point.Get(i));
}

}  // namespace

WayLine::WayLine() { objTypeStr = "WayLine"; }

bool WayLine::FromXml(CElement* element) {
    if (!Component::FromXml(element)) return false;
    return LoadPathPoints(*this, element);
}

bool WayLine::AddPoint(const Coordinates& point) { return AddPathPoint(*this, point) != nullptr; }

std::vector<Coordinates*> WayLine::GetPoints() { return GetPathPoints(*this); }

double WayLine::GetLength() {
    std::vector<Coordinates*> points = GetPoints();
    double length = 0.0;
    for (size_t i = 1; i < points.size(); ++i)
        length += Quick(points[i]).diff(Quick(points[i - 1]));
    return length;
}

bool WayLine::GetPointAtDistance(double distance, Coordinates& out) {
    std::vector<Coordinates*> points = GetPoints();
    if (points.empty()) {
        Log::log(1) << "WayLine::GetPointAtDistance: " << objName << " has no point\n";
        return false;
    }
    CoordQUICK at = Quick(points.front());
    for (size_t i = 1; i < points.size() && distance > 0.0; ++i) {
        const CoordQUICK next = Quick(points[i]);
        const double step = next.diff(at);
        if (step <= 0.0) continue;
        const double share = std::min(distance / step, 1.0);
        for (int k = 0; k < 3; ++k) at.Get(k) += share * (next.Get(k) - at.Get(k));
        distance -= step;
    }
    Store(at, out);
    return true;
}
