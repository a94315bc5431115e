#include "geometry/PlaneOutline.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace {

using Corner = PlaneOutline::Corner;

// z of (b - a) x (c - a).
double Cross(const Corner& a, const Corner& b, const Corner& c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

double SegmentDistance(double x, double y, const Corner& a, const Corner& b) {
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const double lengthSquared = dx * dx + dy * dy;
    double t = lengthSquared > 0.0 ? ((x - a.x) * dx + (y - a.y) * dy) / lengthSquared : 0.0;
    t = std::clamp(t, 0.0, 1.0);
    return std::hypot(x - (a.x + t * dx), y - (a.y + t * dy));
}

}  // namespace

PlaneOutline::PlaneOutline(std::vector<Corner> points) : corners(std::move(points)) {}

Corner PlaneOutline::Centre() const {
    Corner centre{0.0, 0.0};
    if (corners.empty()) return centre;
    for (const Corner& c : corners) {
        centre.x += c.x;
        centre.y += c.y;
    }
    centre.x /= corners.size();
    centre.y /= corners.size();
    return centre;
}

bool PlaneOutline::Inside(double x, double y) const {
    bool inside = false;
    for (size_t i = 0, j = corners.size() - 1; i < corners.size(); j = i++) {
        const Corner& a = corners[i];
        const Corner& b = corners[j];
        if ((a.y > y) != (b.y > y) && x < (b.x - a.x) * (y - a.y) / (b.y - a.y) + a.x) {
            inside = !inside;
        }
    }
    return inside;
}

double PlaneOutline::EdgeDistance(double x, double y) const {
    double nearest = std::numeric_limits<double>::infinity();
    for (size_t i = 0; i < corners.size(); ++i) {
        const Corner& next = corners[(i + 1) % corners.size()];
        nearest = std::min(nearest, SegmentDistance(x, y, corners[i], next));
    }
    return nearest;
}

double PlaneOutline::Value(double x, double y) const {
    const Corner centre = Centre();
    const double scale = EdgeDistance(centre.x, centre.y);
    if (!(scale > 0.0)) return Inside(x, y) ? 0.0 : 2.0;
    const double d = EdgeDistance(x, y) / scale;
    return Inside(x, y) ? 1.0 - d : 1.0 + d;
}

double PlaneOutline::SignedArea() const {
    double area = 0.0;
    for (size_t i = 0; i < corners.size(); ++i) {
        const Corner& a = corners[i];
        const Corner& b = corners[(i + 1) % corners.size()];
        area += a.x * b.y - b.x * a.y;
    }
    return area;
}

// The corner at ring[at] is an ear when it turns the way the polygon does and no other
// corner lies inside or on its triangle.
bool PlaneOutline::IsEar(const std::vector<int>& ring, size_t at, double orientation) const {
    const size_t n = ring.size();
    const Corner& a = corners[ring[(at + n - 1) % n]];
    const Corner& b = corners[ring[at]];
    const Corner& c = corners[ring[(at + 1) % n]];
    if (Cross(a, b, c) * orientation <= 0.0) return false;
    for (size_t k = 0; k < n; ++k) {
        if (k == at || k == (at + 1) % n || k == (at + n - 1) % n) continue;
        const Corner& p = corners[ring[k]];
        if (Cross(a, b, p) * orientation >= 0.0 && Cross(b, c, p) * orientation >= 0.0 &&
            Cross(c, a, p) * orientation >= 0.0) {
            return false;
        }
    }
    return true;
}

bool PlaneOutline::Triangulate(std::vector<std::array<int, 3>>& triangles) const {
    if (!IsValid()) return false;
    const double orientation = SignedArea() >= 0.0 ? 1.0 : -1.0;
    std::vector<int> ring(corners.size());
    for (size_t i = 0; i < ring.size(); ++i) ring[i] = static_cast<int>(i);
    bool clipped = true;
    while (ring.size() > 3 && clipped) {
        clipped = false;
        for (size_t at = 0; at < ring.size(); ++at) {
            if (!IsEar(ring, at, orientation)) continue;
            const size_t n = ring.size();
            triangles.push_back({ring[(at + n - 1) % n], ring[at], ring[(at + 1) % n]});
            ring.erase(ring.begin() + at);
            clipped = true;
            break;
        }
    }
    if (ring.size() != 3) return false;
    triangles.push_back({ring[0], ring[1], ring[2]});
    return true;
}
