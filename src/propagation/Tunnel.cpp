#include "propagation/Tunnel.h"

#include <cmath>

#include "control/OpticElement.h"
#include "geometry/Coordinates.h"
#include "propagation/Interface.h"

namespace {

// The horizontal unit vector to the left of the way from a to b; false when the two points
// stand one above the other.
bool SideVector(Coordinates& a, Coordinates& b, double& x, double& y) {
    const double dx = b.Get(0) - a.Get(0);
    const double dy = b.Get(1) - a.Get(1);
    const double length = std::hypot(dx, dy);
    if (length == 0.0) return false;
    x = -dy / length;
    y = dx / length;
    return true;
}

// The point moved by amount along the horizontal direction (x, y).
Coordinates Shifted(Coordinates& point, double x, double y, double amount) {
    return Coordinates(point.Get(0) + amount * x, point.Get(1) + amount * y, point.Get(2));
}

}  // namespace

Tunnel::Tunnel() { objTypeStr = "Tunnel"; }

bool Tunnel::QuickSetToChildren(bool rebuild) {
    if (!rebuild) return true;
    OpticElement* element = GetElement("Tunnel::QuickSetToChildren");
    if (element == nullptr) return false;
    RemoveBuilt();
    checkParams();
    needsRebuild = false;
    points = GetPoints();
    if (points.size() < 2) return true;

    const double base = ReadOr(PN_BARBSE, 0.0);
    const double tall = ReadOr(PN_BARHGT, 2.0);
    const sSection section = {base, base + tall, ReadOr(PN_WID, tall)};
    height = section.top;
    MakeVolume(element);
    for (size_t i = 1; i < points.size(); ++i) BuildSegment(element, static_cast<int>(i), section);
    BuildEnd(element, points.front(), points[1], section);
    BuildEnd(element, points.back(), points[points.size() - 2], section);
    return true;
}

void Tunnel::BuildSegment(OpticElement* element, int i, const sSection& section) {
    Coordinates& from = *points[i - 1];
    Coordinates& to = *points[i];
    double x = 0.0, y = 0.0;
    if (!SideVector(from, to, x, y)) return;
    const sStrip wall = {"face", PV_TYPE_POINTPOINTHEIGHT, section.base, section.top, -1.0};
    const double half = section.width / 2.0;
    Interface* face1 =
        MakeStripFace(element, wall, "face1", Shifted(from, x, y, half), Shifted(to, x, y, half));
    Interface* face2 =
        MakeStripFace(element, wall, "face2", Shifted(from, x, y, -half), Shifted(to, x, y, -half));
    for (Interface* face : {face1, face2}) {
        face->SetParameterValue(PN_SHOW, PV_FALSE);
        face->SetHalfLoss(true);
    }
    const sStrip floor = {"floor", PV_TYPE_POINTPOINTWIDTH, section.base, section.base,
                          section.width};
    const sStrip roof = {"roof", PV_TYPE_POINTPOINTWIDTH, section.base, section.top, section.width};
    Interface* floorFace = MakeStripFace(element, floor, floor.name, from, to);
    Interface* roofFace = MakeStripFace(element, roof, roof.name, from, to);
    for (Interface* face : {face1, face2, floorFace, roofFace}) FinishFace(face);
}

void Tunnel::BuildEnd(OpticElement* element, Coordinates* end, Coordinates* next,
                      const sSection& section) {
    double x = 0.0, y = 0.0;
    if (!SideVector(*end, *next, x, y)) return;
    const double half = section.width / 2.0;
    const sStrip opening = {"guide", PV_TYPE_POINTPOINTHEIGHT, section.base, section.top, -1.0};
    Interface* guide = MakeStripFace(element, opening, opening.name, Shifted(*end, x, y, half),
                                     Shifted(*end, x, y, -half));
    // An opening: no reflection, and a loss in dB with no entries is no loss.
    guide->SetParameterValue(PN_REFLECT, PV_FALSE);
    guide->SetReflect(false);
    guide->SetParameterValue(PN_BARLOSMDL, PV_LOSS_DB);
    guide->SetResponse(nullptr);
    FinishFace(guide);
}
