#include "propagation/MeshElement.h"

#include <algorithm>
#include <cmath>

#include "geometry/Coordinates.h"
#include "propagation/RayFaceMiss.h"
#include "radiation/Ray.h"

namespace {

// out = a - b over three components, without touching the heap.
void SetDifference(VectorQUICK& out, const VectorQUICK& a, const VectorQUICK& b) {
    out.SetValues(a.data[0] - b.data[0], a.data[1] - b.data[1], a.data[2] - b.data[2]);
}

// out = a + b times s over three components.
void SetSum(VectorQUICK& out, const VectorQUICK& a, const VectorQUICK& b, double s) {
    out.SetValues(a.data[0] + s * b.data[0], a.data[1] + s * b.data[1], a.data[2] + s * b.data[2]);
}

CoordQUICK FromMatrix(Coordinates& point) {
    CoordQUICK result;
    result.Copy(point);
    return result;
}

// Degrees per radian for the near-miss angle limits.
constexpr double kMissDegreesPerRadian = 180.0 / 3.141592653589793;
// |ray . normal| over the first marks a steep ray, under the second a grazing one.
constexpr double kSteepRayCosine = 0.95;
constexpr double kGrazingRayCosine = 0.05;

}  // namespace

MeshElement::MeshElement(int owner, CoordQUICK& p1, CoordQUICK& p2, CoordQUICK& p3) {
    Build(owner, p1, p2, p3);
}

MeshElement::MeshElement(int owner, Coordinates& p1, Coordinates& p2, Coordinates& p3) {
    Build(owner, FromMatrix(p1), FromMatrix(p2), FromMatrix(p3));
}

MeshElement::MeshElement(int owner, double x1, double y1, double z1, double x2, double y2,
                         double z2, double x3, double y3, double z3) {
    Build(owner, CoordQUICK(x1, y1, z1), CoordQUICK(x2, y2, z2), CoordQUICK(x3, y3, z3));
}

void MeshElement::Build(int owner, const CoordQUICK& p1, const CoordQUICK& p2,
                        const CoordQUICK& p3) {
    ownerId = owner;
    point1.SetValues(p1.data[0], p1.data[1], p1.data[2]);
    SetDifference(edge1, p2, p1);
    SetDifference(edge2, p3, p1);
    centre.SetValues((p1.data[0] + p2.data[0] + p3.data[0]) / 3.0,
                     (p1.data[1] + p2.data[1] + p3.data[1]) / 3.0,
                     (p1.data[2] + p2.data[2] + p3.data[2]) / 3.0);
    normal.SetCross(edge1, edge2);
    normal.Normalize();
    radius = std::max({centre.diff(p1), centre.diff(p2), centre.diff(p3)});
}

void MeshElement::EdgeLine(int index, CoordQUICK& start, DirQUICK& dir, double& length) const {
    start = point1;
    if (index == 1) {
        dir.SetValues(edge1.data[0], edge1.data[1], edge1.data[2]);
        length = edge1.GetLength();
    } else if (index == 2) {
        start += edge1;
        SetDifference(dir, edge2, edge1);
        length = edge1.diff(edge2);
    } else {
        start += edge2;
        dir.SetValues(-edge2.data[0], -edge2.data[1], -edge2.data[2]);
        length = edge2.GetLength();
    }
}

CoordQUICK* MeshElement::NewEdgeStart(int index) const {
    CoordQUICK* start = new CoordQUICK();
    DirQUICK dir;
    double length = 0.0;
    EdgeLine(index, *start, dir, length);
    return start;
}

DirQUICK* MeshElement::NewEdgeDir(int index) const {
    CoordQUICK start;
    DirQUICK* dir = new DirQUICK();
    double length = 0.0;
    EdgeLine(index, start, *dir, length);
    return dir;
}

CoordQUICK* MeshElement::getPoint1() const { return NewEdgeStart(1); }
CoordQUICK* MeshElement::getPoint2() const { return NewEdgeStart(2); }
CoordQUICK* MeshElement::getPoint3() const { return NewEdgeStart(3); }
DirQUICK* MeshElement::getDir1() const { return NewEdgeDir(1); }
DirQUICK* MeshElement::getDir2() const { return NewEdgeDir(2); }
DirQUICK* MeshElement::getDir3() const { return NewEdgeDir(3); }

void MeshElement::setDiffEdge(bool edge1Diffracts, bool edge2Diffracts, bool edge3Diffracts) {
    diffEdge1 = edge1Diffracts;
    diffEdge2 = edge2Diffracts;
    diffEdge3 = edge3Diffracts;
}

bool MeshElement::distance(double& result, CoordQUICK& origin, DirQUICK& dir, double /*limit*/,
                           bool anyDistance) {
    crossScratch.SetCross(dir, edge2);
    const double det = edge1.Dot(crossScratch);
    if (std::abs(det) < 1e-8) return false;

    SetDifference(offsetScratch, origin, point1);
    const double inv = 1.0 / det;
    const double u = offsetScratch.Dot(crossScratch) * inv;
    if (u < 0.0 || u > 1.0) return false;

    crossScratch.SetCross(offsetScratch, edge1);
    const double v = dir.Dot(crossScratch) * inv;
    if (v < 0.0 || u + v > 1.0) return false;

    result = edge2.Dot(crossScratch) * inv;
    return result > 1e-8 || anyDistance;
}

double MeshElement::distLineClosestToLine(CoordQUICK& origin, DirQUICK& dir, CoordQUICK* edgePoint,
                                          DirQUICK* edgeDir) {
    const VectorQUICK& p = *edgePoint;
    const VectorQUICK& e = *edgeDir;
    const double numerator =
        (origin.Dot(e) - p.Dot(e)) * e.Dot(dir) - (origin.Dot(dir) - p.Dot(dir)) * e.Dot(e);
    const double denominator = dir.Dot(dir) * e.Dot(e) - dir.Dot(e) * e.Dot(dir);
    return numerator / denominator;
}

double MeshElement::getDistOnEdgeNearLine(CoordQUICK& origin, DirQUICK& dir, CoordQUICK* edgePoint,
                                          DirQUICK* edgeDir) {
    const VectorQUICK& p = *edgePoint;
    const VectorQUICK& e = *edgeDir;
    const double a = (p.Dot(dir) - origin.Dot(dir)) / (0.0 - dir.Dot(dir));
    return ((origin.Dot(e) - p.Dot(e)) - dir.Dot(e) * a) /
           (e.Dot(e) + dir.Dot(e) * e.Dot(dir) / (0.0 - dir.Dot(dir)));
}

double MeshElement::distMissLineForwardToLine(CoordQUICK& origin, DirQUICK& dir, double along,
                                              CoordQUICK* edgePoint, DirQUICK* edgeDir) {
    VectorQUICK a(3);
    SetSum(a, origin, dir, along);
    SetDifference(a, a, *edgePoint);
    VectorQUICK b(3);
    SetDifference(b, a, *edgeDir);
    VectorQUICK cross(3);
    cross.SetCross(a, b);
    return cross.GetLength() / edgeDir->GetLength();
}

bool MeshElement::TakeEdge(int index, Ray* ray, double gap, bool found, double& bestAlong,
                           double& bestMiss) {
    const bool diffracts = index == 1 ? diffEdge1 : (index == 2 ? diffEdge2 : diffEdge3);
    if (!diffracts) return false;
    CoordQUICK start;
    DirQUICK dir;
    double length = 0.0;
    EdgeLine(index, start, dir, length);

    const double t = distLineClosestToLine(ray->origin, ray->dir, &start, &dir);
    const double s = getDistOnEdgeNearLine(ray->origin, ray->dir, &start, &dir);
    SetSum(rayPointScratch, ray->origin, ray->dir, t);
    SetSum(edgePointScratch, start, dir, s);
    SetDifference(rayEdgeCross, rayPointScratch, edgePointScratch);
    if (!(rayEdgeCross.DotDiff(edgePointScratch, centre) > 0.0)) return false;
    // A ray through a corner belongs to the first edge only: the others are open at both
    // ends so that the shared vertex is not counted twice.
    const bool onEdge = index == 1 ? (s >= 0.0 && s <= length) : (s > 0.0 && s < length);
    if (!onEdge) return false;
    const double m = distMissLineForwardToLine(ray->origin, ray->dir, t, &start, &dir);
    if (!(m < gap && t > 1e-10)) return false;

    // Steep rays (and, on the second edge, rays grazing the face) prefer the farther edge;
    // all others the nearer miss.
    const double facing = std::abs(ray->dir.Dot(normal));
    const bool special = index == 2 ? facing < kGrazingRayCosine : facing > kSteepRayCosine;
    const bool better = !found || (special ? t > bestAlong : m < bestMiss);
    const double angleLimit = index == 2 ? 5.0 : 2.0;
    const bool taken = better && t > 2.0 * gap && t < ray->GetLength() - 5.0 * gap &&
                       std::abs(ray->hitNormal.DotDiff(edgePointScratch, centre)) > 0.01 &&
                       std::asin(m / t) * kMissDegreesPerRadian < angleLimit;
    if (!taken) return false;
    bestAlong = t;
    bestMiss = m;
    bestEdgePoint = edgePointScratch;
    bestEdgeDir.Copy(dir);
    return true;
}

bool MeshElement::missDistance(Ray* ray, std::vector<RayFaceMiss*>& misses, double gap) {
    double lineHit = 0.0;
    if (distance(lineHit, ray->origin, ray->dir, -1.0, true)) return false;

    double bestAlong = -1.0;
    double bestMiss = -1.0;
    bool found = false;
    for (int index = 1; index <= 3; ++index) {
        if (TakeEdge(index, ray, gap, found, bestAlong, bestMiss)) found = true;
    }
    if (!found) return false;

    inwardScratch.SetCross(bestEdgeDir, normal);
    inwardScratch.Normalize();
    if (inwardScratch.DotDiff(centre, bestEdgePoint) < 0.0) inwardScratch *= -1.0;

    RayFaceMiss* miss = new RayFaceMiss();
    miss->ray = ray;
    miss->face = RayFaceMiss::ResolveFace(ownerId);
    miss->distanceAlongRay = bestAlong;
    miss->missDistance = bestMiss;
    miss->edgePoint = bestEdgePoint;
    miss->inward.Copy(inwardScratch);
    miss->edgeDir.Copy(bestEdgeDir);
    miss->faceNormal.Copy(normal);
    misses.push_back(miss);
    return true;
}
