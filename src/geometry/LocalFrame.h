#pragma once

#include <cmath>

#include "geometry/VectorQUICK.h"

// An orthonormal frame (u, v, w) at an origin: the frame a surface or an outline is
// written in, w being its axis. Converts points and directions between the world and the
// frame's coordinates (x along u, y along v, z along w).
class LocalFrame {
public:
    // The world's own axes at the origin.
    LocalFrame() : origin(0, 0, 0), u(1, 0, 0), v(0, 1, 0), w(0, 0, 1) {}

    // w along axis; u along the part of hint perpendicular to it (or along whichever of
    // the world's x and y axes is further from the axis, when hint is parallel or zero);
    // v = w x u. False for a zero axis, with the frame left as it was.
    bool Set(const VectorQUICK& centre, const VectorQUICK& axis, const VectorQUICK& hint) {
        VectorQUICK along(axis.data[0], axis.data[1], axis.data[2]);
        const double length = along.GetLength();
        if (!(length > 0.0)) return false;
        along *= 1.0 / length;
        VectorQUICK side = Perpendicular(along, hint);
        if (!(side.GetLength() > 1e-12)) {
            const bool nearX = std::abs(along.data[0]) > 0.9;
            side = Perpendicular(along, nearX ? VectorQUICK(0, 1, 0) : VectorQUICK(1, 0, 0));
        }
        side *= 1.0 / side.GetLength();
        origin = VectorQUICK(centre.data[0], centre.data[1], centre.data[2]);
        w = along;
        u = side;
        v.SetCross(w, u);
        return true;
    }

    VectorQUICK PointToLocal(const VectorQUICK& p) const {
        const VectorQUICK d(p.data[0] - origin.data[0], p.data[1] - origin.data[1],
                            p.data[2] - origin.data[2]);
        return DirectionToLocal(d);
    }
    VectorQUICK DirectionToLocal(const VectorQUICK& d) const {
        return VectorQUICK(u.Dot(d), v.Dot(d), w.Dot(d));
    }
    VectorQUICK PointToWorld(const VectorQUICK& local) const {
        VectorQUICK p = DirectionToWorld(local);
        for (int i = 0; i < 3; ++i) p.data[i] += origin.data[i];
        return p;
    }
    VectorQUICK DirectionToWorld(const VectorQUICK& local) const {
        VectorQUICK d(0, 0, 0);
        for (int i = 0; i < 3; ++i) {
            d.data[i] =
                u.data[i] * local.data[0] + v.data[i] * local.data[1] + w.data[i] * local.data[2];
        }
        return d;
    }

    VectorQUICK origin;
    VectorQUICK u;
    VectorQUICK v;
    VectorQUICK w;

private:
    // The part of hint perpendicular to the unit vector along.
    static VectorQUICK Perpendicular(const VectorQUICK& along, const VectorQUICK& hint) {
        const double d = along.Dot(hint);
        return VectorQUICK(hint.data[0] - d * along.data[0], hint.data[1] - d * along.data[1],
                           hint.data[2] - d * along.data[2]);
    }
};
