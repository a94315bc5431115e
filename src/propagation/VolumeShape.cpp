// The volume's shape: inside or outside, the nearest face's normal, size and placement.
#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <limits>

#include "geometry/Coordinates.h"
#include "propagation/FaceHold.h"
#include "propagation/Interface.h"
#include "propagation/Volume.h"

namespace {

// The default inside test casts along this direction, oblique to the axes so that it does
// not run along the edges and faces of axis-aligned walls.
const DirQUICK CAST_DIRECTION(0.6, 0.7, 0.39);
// After each face crossed the cast goes on from just past it.
constexpr double CROSSING_STEP = 1e-6;
// A cast that crosses more faces than this is taken to run along a surface and stops.
constexpr int MAX_CROSSINGS = 1000;

// Distances of a point outside each pair of slabs (negative inside): all inside gives the
// largest, the one nearest the boundary; otherwise the smallest of those outside.
double CombineSlabs(std::initializer_list<double> distances) {
    double inside = -std::numeric_limits<double>::infinity();
    double outside = std::numeric_limits<double>::infinity();
    for (double d : distances) {
        if (d > 0.0) {
            outside = std::min(outside, d);
        } else {
            inside = std::max(inside, d);
        }
    }
    return outside < std::numeric_limits<double>::infinity() ? outside : inside;
}

VectorQUICK Offset(const CoordQUICK& point, const CoordQUICK& from) {
    return VectorQUICK(point.data[0] - from.data[0], point.data[1] - from.data[1],
                       point.data[2] - from.data[2]);
}

}  // namespace

void Volume::FindOrMakeChild(Coordinates** child, const char* name) {
    if (*child == nullptr) *child = dynamic_cast<Coordinates*>(GetChildNamed(name));
    MakeChild(child, name);
}

bool Volume::UpdateCentre() {
    FindOrMakeChild(&centre, "centre");
    centre->SetZero();
    // Without a transformation above the centre stays at the origin.
    centre->ApplyTransformation(true);
    centrePoint.Copy(*centre);
    if (axis == nullptr) axis = dynamic_cast<Coordinates*>(GetChildNamed("axis"));
    if (axis2 == nullptr) axis2 = dynamic_cast<Coordinates*>(GetChildNamed("axis2"));
    if (axis != nullptr) axisDir.Copy(*axis);
    if (axis2 != nullptr) axis2Dir.Copy(*axis2);
    axis3Dir.SetCross(axisDir, axis2Dir);
    axis3Dir.Normalize();
    return true;
}

bool Volume::SetAxes(const DirQUICK& main, const DirQUICK& second) {
    FindOrMakeChild(&axis, "axis");
    FindOrMakeChild(&axis2, "axis2");
    axis->SetValues(main.data[0], main.data[1], main.data[2]);
    axis2->SetValues(second.data[0], second.data[1], second.data[2]);
    return UpdateCentre();
}

bool Volume::UpdateSize() {
    GetParameterValue(PN_SIZ, sizeRadius);
    GetParameterValue(PN_APSIZEIN, sizeInner);
    GetParameterValue(PN_LEN, sizeLength);
    GetParameterValue(PN_SHAPRATIO1, ratio1);
    GetParameterValue(PN_SHAPRATIO2, ratio2);
    GetParameterValue(PN_SHAPRATIO3, ratio3);
    GetParameterValue(PN_OBJSHAP, shapeName);
    return true;
}

double Volume::DistanceOutside(Coordinates& point) {
    CoordQUICK quick;
    quick.Copy(point);
    return DistanceOutside(quick);
}

double Volume::DistanceOutside(const CoordQUICK& point) {
    if (Faces::size() == 1 && Faces::front() != nullptr) {
        Interface* face = Faces::front();
        eParamValue type = PV_EMPTY;
        face->GetParameterValue(PN_TYP, type);
        if (type == PV_TYPE_CLOSEDSURFACE) {
            CoordQUICK copy = point;
            face->lock(true);
            const double distance = face->TestHitDistance(copy);
            face->unlock();
            return distance;
        }
    }
    switch (shapeName) {
        case PV_SHAPE_CYLINDER:
            return CylinderDistance(point);
        case PV_SHAPE_BLOCK:
            return BlockDistance(point);
        case PV_SHAPE_WALL:
            return WallDistance(point);
        default:
            return RayCastDistance(point);
    }
}

bool Volume::Contains(Coordinates& point) { return DistanceOutside(point) < 0.0; }

bool Volume::Contains(const CoordQUICK& point) { return DistanceOutside(point) < 0.0; }

// A cylinder of diameter sizeRadius * ratio1 about the main axis, as long along it.
double Volume::CylinderDistance(const CoordQUICK& point) const {
    const VectorQUICK offset = Offset(point, centrePoint);
    const double half = sizeRadius * ratio1 / 2.0;
    const double along = offset.Dot(axisDir);
    const double beyondEnds = std::abs(along) - half;
    if (beyondEnds > 0.0) return beyondEnds;
    VectorQUICK radial = offset;
    radial.data[0] -= along * axisDir.data[0];
    radial.data[1] -= along * axisDir.data[1];
    radial.data[2] -= along * axisDir.data[2];
    return radial.GetLength() - half;
}

// A box of sides sizeRadius times ratio1, ratio2 and ratio3 along the three axes.
double Volume::BlockDistance(const CoordQUICK& point) const {
    const VectorQUICK offset = Offset(point, centrePoint);
    const double main = std::abs(offset.Dot(axisDir)) - sizeRadius * ratio1 / 2.0;
    if (main > 0.0) return main;
    return CombineSlabs({main, std::abs(offset.Dot(axis2Dir)) - sizeRadius * ratio2 / 2.0,
                         std::abs(offset.Dot(axis3Dir)) - sizeRadius * ratio3 / 2.0});
}

// The box around a thick wall: sizeLength along the main axis, sizeInner + sizeRadius
// along the second and sizeInner along the third.
double Volume::WallDistance(const CoordQUICK& point) const {
    const VectorQUICK offset = Offset(point, centrePoint);
    const double main = std::abs(offset.Dot(axisDir)) - sizeLength / 2.0;
    if (main > 0.0) return main;
    return CombineSlabs({main, std::abs(offset.Dot(axis2Dir)) - (sizeInner + sizeRadius) / 2.0,
                         std::abs(offset.Dot(axis3Dir)) - sizeInner / 2.0});
}

// The distance to the first face crossed, negative when the count of faces crossed is odd.
// A point from which no face is crossed is outside with no face that way: +infinity. With
// no faces, sizeRadius.
double Volume::RayCastDistance(const CoordQUICK& point) {
    if (Faces::empty()) return sizeRadius;
    CoordQUICK origin = point;
    DirQUICK direction = CAST_DIRECTION;
    DirQUICK normal;
    double first = -1.0;
    double travelled = 0.0;
    int crossings = 0;
    double distance = 0.0;
    while (crossings < MAX_CROSSINGS &&
           NearestFace(origin, direction, -1.0, distance, normal) != nullptr) {
        if (first < 0.0) first = distance;
        crossings++;
        travelled += distance + CROSSING_STEP;
        origin = point;
        origin.PlusProd(direction, travelled);
    }
    if (first < 0.0) return std::numeric_limits<double>::infinity();
    return crossings % 2 == 1 ? -first : first;
}

double Volume::FaceDistance(Interface* face, CoordQUICK& origin, DirQUICK& dir, DirQUICK* normal) {
    FaceHold hold(face);
    return face->TestHitDistance(origin, dir, normal, -1.0);
}

Interface* Volume::NearestFace(CoordQUICK& origin, DirQUICK& dir, double limit, double& distance,
                               DirQUICK& normal) {
    Interface* nearest = nullptr;
    DirQUICK faceNormal;
    for (Interface* face : static_cast<Faces&>(*this)) {
        if (face == nullptr) continue;
        const double d = FaceDistance(face, origin, dir, &faceNormal);
        if (d <= 1e-10 || (limit >= 0.0 && d >= limit)) continue;
        if (nearest == nullptr || d < distance) {
            nearest = face;
            distance = d;
            normal = faceNormal;
        }
    }
    return nearest;
}

// Faces are asked under their locks: a face may build its mesh on the first question.
bool Volume::GetNormal(CoordQUICK& point, DirQUICK& normal) {
    Interface* nearest = nullptr;
    double best = 0.0;
    for (Interface* face : static_cast<Faces&>(*this)) {
        if (face == nullptr) continue;
        face->lock(true);
        const double d = std::abs(face->TestHitDistance(point));
        face->unlock();
        if (nearest == nullptr || d < best) {
            nearest = face;
            best = d;
        }
    }
    if (nearest == nullptr) return false;
    nearest->lock(true);
    const bool found = nearest->GetNormal(point, normal);
    nearest->unlock();
    return found;
}
