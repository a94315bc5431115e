#include "propagation/MeshFromPointSet.h"

#include "geometry/Coordinates.h"
#include "logging/Log.h"
#include "propagation/MeshElement.h"
#include "propagation/MeshGroup.h"

namespace {

// p + axis times along + offset.
CoordQUICK Corner(const CoordQUICK& p, const CoordQUICK& axis, double along,
                  const VectorQUICK& offset) {
    CoordQUICK corner(p.data[0], p.data[1], p.data[2]);
    corner.PlusProd(axis, along);
    corner += offset;
    return corner;
}

// The quad from point i to point j, base to base + height along axis, moved by offset. Its
// two triangles have the bottom or top as first edge, an upright as second edge and the
// shared diagonal as third edge, which never diffracts.
void AddQuad(MeshGroup* group, int ownerId, const CoordQUICK& pi, const CoordQUICK& pj,
             const CoordQUICK& axis, double base, double height, const VectorQUICK& offset) {
    CoordQUICK a = Corner(pi, axis, base, offset);
    CoordQUICK b = Corner(pi, axis, base + height, offset);
    CoordQUICK c = Corner(pj, axis, base, offset);
    CoordQUICK d = Corner(pj, axis, base + height, offset);
    MeshElement* lower = new MeshElement(ownerId, c, a, b);
    MeshElement* upper = new MeshElement(ownerId, b, d, c);
    lower->setDiffEdge(true, true, false);
    upper->setDiffEdge(true, true, false);
    group->addElement(lower);
    group->addElement(upper);
}

// The segment's quad four times: half the width to either side and up and down.
void AddWideQuads(MeshGroup* group, int ownerId, const CoordQUICK& pi, const CoordQUICK& pj,
                  const CoordQUICK& axis, double base, double height, double width) {
    DirQUICK along;
    along.CopyDiff(pi, pj);
    DirQUICK side;
    side.SetCross(axis, along);
    side.Normalize();
    const double half = width / 2.0;
    const VectorQUICK offsets[4] = {
        VectorQUICK(side.data[0] * half, side.data[1] * half, side.data[2] * half),
        VectorQUICK(-side.data[0] * half, -side.data[1] * half, -side.data[2] * half),
        VectorQUICK(axis.data[0] * half, axis.data[1] * half, axis.data[2] * half),
        VectorQUICK(-axis.data[0] * half, -axis.data[1] * half, -axis.data[2] * half)};
    for (const VectorQUICK& offset : offsets) {
        AddQuad(group, ownerId, pi, pj, axis, base, height, offset);
    }
}

}  // namespace

bool MeshFromPointSet(std::vector<MeshGroup*>& groups, int ownerId,
                      std::vector<Coordinates*>& outline, CoordQUICK& axis, double base,
                      double height, double width) {
    if (outline.size() < 2) {
        Log::log(1) << "MeshFromPointSet: an outline needs two points, got " << outline.size()
                    << "\n";
        return false;
    }
    for (Coordinates* point : outline) {
        if (point == nullptr) {
            Log::log(1) << "MeshFromPointSet: the outline holds a missing point\n";
            return false;
        }
    }

    MeshGroup* group = new MeshGroup();
    const VectorQUICK noOffset(0.0, 0.0, 0.0);
    const size_t count = outline.size();
    for (size_t i = 0; i < count; ++i) {
        CoordQUICK pi;
        CoordQUICK pj;
        pi.Copy(*outline[i]);
        pj.Copy(*outline[(i + 1) % count]);
        if (width == -1.0) {
            AddQuad(group, ownerId, pi, pj, axis, base, height, noOffset);
        } else {
            AddWideQuads(group, ownerId, pi, pj, axis, base, height, width);
        }
    }
    groups.push_back(group);
    return true;
}
