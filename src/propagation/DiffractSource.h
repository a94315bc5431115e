#pragma once

#include "geometry/CoordQUICK.h"
#include "geometry/DirQUICK.h"

class Ray;

// One edge event: a ray that passed an edge of a face closely enough to diffract there.
// edgePoint is the point of the edge nearest the ray, inward points from the edge into the
// face, edgeDir runs along the edge; sweepAngle (degrees) is how far the diffracted fan
// turns and missDistance how far the ray passed from the edge. The ray is not owned.
struct DiffractSource {
    Ray* ray = nullptr;
    CoordQUICK edgePoint;
    DirQUICK inward;
    DirQUICK edgeDir;
    double sweepAngle = 0.0;
    double missDistance = 0.0;
};
