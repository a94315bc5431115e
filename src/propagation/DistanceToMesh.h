#pragma once

#include <vector>

#include "geometry/CoordQUICK.h"
#include "geometry/DirQUICK.h"

class MeshGroup;

// Nearest hit of the ray over the groups, or -1. Each group is held by its lock while it is
// tested, but never waited for: a busy group is left for a later sweep, and sweeps repeat
// until every group has been tested. On a hit the nearest element's normal goes to *normal,
// which is allocated when null.
double DistanceToMesh(CoordQUICK& origin, DirQUICK& dir, DirQUICK** normal,
                      std::vector<MeshGroup*>& groups);
