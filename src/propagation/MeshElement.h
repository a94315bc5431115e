#pragma once

#include <vector>

#include "framework/NexoBase.h"
#include "geometry/CoordQUICK.h"
#include "geometry/DirQUICK.h"

class Coordinates;
class Ray;
struct RayFaceMiss;

// One triangle of a mesh, in world coordinates, with the scratch vectors its ray tests
// write. Because the scratch lives in the element, an element is not re-entrant: two threads
// must not test the same element at once, which is why its MeshGroup is lockable.
//
// Edges run p1 to p2, p2 to p3 and p3 to p1; each may be barred from diffraction (the
// diagonal of a quad, for instance).
class MeshElement : public virtual NexoBase {
public:
    MeshElement(int ownerId, CoordQUICK& p1, CoordQUICK& p2, CoordQUICK& p3);
    MeshElement(int ownerId, Coordinates& p1, Coordinates& p2, Coordinates& p3);
    MeshElement(int ownerId, double x1, double y1, double z1, double x2, double y2, double z2,
                double x3, double y3, double z3);

    // Fresh heap objects that the caller deletes: the three vertices and the three unit edge
    // directions (p1 to p2, p2 to p3, p3 to p1).
    CoordQUICK* getPoint1() const;
    CoordQUICK* getPoint2() const;
    CoordQUICK* getPoint3() const;
    DirQUICK* getDir1() const;
    DirQUICK* getDir2() const;
    DirQUICK* getDir3() const;

    // Which of the edges p1-p2, p2-p3, p3-p1 may diffract.
    void setDiffEdge(bool edge1Diffracts, bool edge2Diffracts, bool edge3Diffracts);

    // Ray against triangle: true on a hit, with the distance along dir in result. A hit must
    // lie more than 1e-8 ahead of the origin unless anyDistance is set, when the whole line
    // counts. limit is accepted for the caller's convenience and not consulted. A ray
    // parallel to the plane never hits, even inside it. Allocates nothing.
    bool distance(double& result, CoordQUICK& origin, DirQUICK& dir, double limit,
                  bool anyDistance);

    // Appends at most one record for the diffracting edge the ray passes closest to, within
    // gap metres and away from the ray's two ends. True when a record was appended.
    bool missDistance(Ray* ray, std::vector<RayFaceMiss*>& misses, double gap);

    // Closest approach of the ray line (origin, dir) and the edge line (edgePoint, edgeDir).
    // Parallel lines divide by zero and the result is whatever that gives.
    // Distance along the ray to its point nearest the edge line.
    double distLineClosestToLine(CoordQUICK& origin, DirQUICK& dir, CoordQUICK* edgePoint,
                                 DirQUICK* edgeDir);
    // Distance along the edge to its point nearest the ray line.
    double getDistOnEdgeNearLine(CoordQUICK& origin, DirQUICK& dir, CoordQUICK* edgePoint,
                                 DirQUICK* edgeDir);
    // Perpendicular distance from the ray point at along to the edge line.
    double distMissLineForwardToLine(CoordQUICK& origin, DirQUICK& dir, double along,
                                     CoordQUICK* edgePoint, DirQUICK* edgeDir);

    CoordQUICK point1;
    // (p1 + p2 + p3) / 3.
    CoordQUICK centre;
    // edge1 cross edge2, unit length.
    DirQUICK normal;
    // Largest distance from centre to a vertex.
    double radius = 0.0;
    // p2 - p1 and p3 - p1.
    CoordQUICK edge1;
    CoordQUICK edge2;
    // Working vectors of distance, written on every call.
    CoordQUICK crossScratch;
    CoordQUICK offsetScratch;
    bool diffEdge1 = true;
    bool diffEdge2 = true;
    bool diffEdge3 = true;
    // Object id of the owning Interface.
    int ownerId = -1;
    // Working vectors of missDistance.
    CoordQUICK edgePointScratch;
    CoordQUICK bestEdgePoint;
    CoordQUICK rayPointScratch;
    CoordQUICK rayEdgeCross;
    CoordQUICK bestEdgeDir;
    CoordQUICK inwardScratch;

private:
    // Fills the derived fields from the three vertices.
    void Build(int owner, const CoordQUICK& p1, const CoordQUICK& p2, const CoordQUICK& p3);
    // Start, unit direction and length of edge 1, 2 or 3.
    void EdgeLine(int index, CoordQUICK& start, DirQUICK& dir, double& length) const;
    // Heap copies of an edge's start and direction, for the accessors.
    CoordQUICK* NewEdgeStart(int index) const;
    DirQUICK* NewEdgeDir(int index) const;
    // True when edge index (1, 2 or 3) passes every test of a near miss and beats the
    // best edge held so far; then the best fields are updated.
    bool TakeEdge(int index, Ray* ray, double gap, bool found, double& bestAlong, double& bestMiss);
};
