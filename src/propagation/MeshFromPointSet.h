#pragma once

#include <vector>

#include "geometry/CoordQUICK.h"

class Coordinates;
class MeshGroup;

// Extrudes a closed outline along axis from base to base + height and appends one new group
// of triangles to groups. Each index i joins point i to point i + 1, the last wrapping to
// the first. width -1 gives one thin sheet per segment (two triangles); any other width
// gives four sheets offset by width / 2 to either side and up and down (eight triangles).
// In every quad the diagonal is the third edge of both triangles and never diffracts.
// False, with nothing added, for fewer than two points.
bool MeshFromPointSet(std::vector<MeshGroup*>& groups, int ownerId,
                      std::vector<Coordinates*>& outline, CoordQUICK& axis, double base,
                      double height, double width);
