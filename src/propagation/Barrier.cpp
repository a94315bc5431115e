#include "propagation/Barrier.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "control/OpticElement.h"
#include "geometry/Coordinates.h"
#include "logging/Log.h"
#include "propagation/Interface.h"
#include "propagation/Volume.h"

Barrier::Barrier() { objTypeStr = "Barrier"; }

bool Barrier::QuickSetToChildren(bool rebuild) {
    if (!rebuild) return true;
    OpticElement* element = GetElement("Barrier::QuickSetToChildren");
    if (element == nullptr) return false;
    RemoveBuilt();
    checkParams();
    points = GetPoints();
    const bool horizontal = ReadOr(PN_ORIENTATION, PV_ORIENT_VERTICAL) == PV_ORIENT_HORIZONTAL;
    const bool built = horizontal ? BuildHorizontal(element) : BuildVertical(element);
    needsRebuild = false;
    return built;
}

void Barrier::PrepareReload() { firstPoint = static_cast<int>(GetPoints().size()) - 1; }

void Barrier::Print() {
    Log::log(4) << "Barrier " << objName << ": building from point " << firstPoint << "\n";
    Structure::Print();
}

bool Barrier::BuildVertical(OpticElement* element) {
    const int count = static_cast<int>(points.size());
    if (count < 2) {
        firstPoint = 0;
        return true;
    }
    if (needsRebuild || firstPoint < 1 || firstPoint >= count) firstPoint = 1;

    const double base = ReadOr(PN_BARBSE, 0.1);
    const double tall = ReadOr(PN_BARHGT, 0.1);
    const double top = base + tall;
    height = top;
    const bool thin = thickness == 0.0 || ReadOr(PN_BARTYPE, PV_BARRIER_THICK) == PV_BARRIER_THIN;
    // The sheet rises from the base by the wall's height.
    const sStrip sheet = {"barrierFace", PV_TYPE_POINTPOINTHEIGHT, base, tall, -1.0};
    for (int i = firstPoint; i < count; ++i) {
        if (thin) {
            MakeSegmentFace(element, sheet, i, PV_LOSS_THIN);
        } else {
            BuildThickSegment(element, i, base, top);
        }
    }
    return true;
}

void Barrier::MakeWallVolume(OpticElement* element, const sBox& box) {
    Volume* volume = MakeVolume(element);
    volume->SetParameterValue(PN_OBJSHAP, PV_SHAPE_WALL);
    PlaceBox(volume, box);
}

Structure::sBox Barrier::SegmentBox(int i, double base, double top) {
    CoordQUICK from;
    CoordQUICK to;
    from.Copy(*points[i - 1]);
    to.Copy(*points[i]);
    const double dx = to.data[0] - from.data[0];
    const double dy = to.data[1] - from.data[1];
    const double length = std::hypot(dx, dy);
    // A segment of no length gives a box of no length, which holds no point.
    const DirQUICK along = length > 0.0 ? DirQUICK(dx, dy, 0.0) : DirQUICK(1.0, 0.0, 0.0);
    // The faces rise from each end point by base and top.
    const CoordQUICK centre((from.data[0] + to.data[0]) / 2.0, (from.data[1] + to.data[1]) / 2.0,
                            (from.data[2] + to.data[2] + base + top) / 2.0);
    // Along the segment, then up; the third axis runs across the wall.
    return {centre, along, DirQUICK(0.0, 0.0, 1.0), length, top - base, thickness};
}

void Barrier::BuildThickSegment(OpticElement* element, int i, double base, double top) {
    MakeWallVolume(element, SegmentBox(i, base, top));
    const sStrip faces[] = {
        {"barrierSide", PV_TYPE_POINTPOINTWIDTHHEIGHT, base, top, thickness},
        {"barrierBottom", PV_TYPE_POINTPOINTWIDTH, base, base, thickness},
        {"barrierTop", PV_TYPE_POINTPOINTWIDTH, base, top, thickness},
    };
    for (const sStrip& face : faces) MakeSegmentFace(element, face, i, PV_LOSS_THICK);
}

Interface* Barrier::MakeSegmentFace(OpticElement* element, const sStrip& strip, int i,
                                    eParamValue lossModel) {
    Interface* face =
        MakeStripFace(element, strip, strip.name + std::to_string(i), *points[i - 1], *points[i]);
    face->SetParameterValue(PN_BARLOSMDL, lossModel);
    FinishFace(face);
    return face;
}

bool Barrier::BuildHorizontal(OpticElement* element) {
    // The floor's level.
    height = ReadOr(PN_BARBSE, 0.1);
    const double barrierHeight = ReadOr(PN_BARHGT, 0.1);
    const sSquare square = LimitsSquare();
    if (thickness == 0.0 || ReadOr(PN_BARLOSMDL, PV_LOSS_THICK) == PV_LOSS_THIN) {
        Interface* floorFace = MakeOutlineFace(element, "floorFace", height, square);
        floorFace->SetParameterValue(PN_BARLOSMDL, PV_LOSS_THIN);
        FinishFace(floorFace);
        return true;
    }
    // The top lies thickness away from the level, on the far side from the ground.
    const double topLevel = height + (height < 0.0 ? -thickness : thickness);
    MakeWallVolume(element, FloorBox(square, height, topLevel));
    Interface* floorBase = MakeOutlineFace(element, "floorBase", barrierHeight, square);
    Interface* floorTop = MakeOutlineFace(element, "floorTop", topLevel, square);
    // A ray through the floor crosses base and top: each charges half the loss.
    for (Interface* outline : {floorBase, floorTop}) {
        outline->SetHalfLoss(true);
        FinishFace(outline);
    }
    MakeGuidedSide(element, "floorRound", thickness, floorBase, floorTop);
    return true;
}

Structure::sBox Barrier::FloorBox(const sSquare& square, double level, double topLevel) {
    const double half = square.size / 2.0;
    double xMin = square.x - half;
    double xMax = square.x + half;
    double yMin = square.y - half;
    double yMax = square.y + half;
    if (!points.empty()) {
        xMin = yMin = std::numeric_limits<double>::infinity();
        xMax = yMax = -std::numeric_limits<double>::infinity();
    }
    for (Coordinates* point : points) {
        xMin = std::min(xMin, point->Get(0));
        xMax = std::max(xMax, point->Get(0));
        yMin = std::min(yMin, point->Get(1));
        yMax = std::max(yMax, point->Get(1));
    }
    const CoordQUICK centre((xMin + xMax) / 2.0, (yMin + yMax) / 2.0, (level + topLevel) / 2.0);
    // Along x, then y; the third axis is the vertical, across the floor.
    return {centre,      DirQUICK(1.0, 0.0, 0.0),   DirQUICK(0.0, 1.0, 0.0), xMax - xMin,
            yMax - yMin, std::abs(topLevel - level)};
}

Structure::sSquare Barrier::LimitsSquare() {
    const double xMin = ReadOr(PN_XMIN, 0.0);
    const double xMax = ReadOr(PN_XMAX, 0.0);
    const double yMin = ReadOr(PN_YMIN, 0.0);
    const double yMax = ReadOr(PN_YMAX, 0.0);
    return {(xMin + xMax) / 2.0, (yMin + yMax) / 2.0, std::max(xMax - xMin, yMax - yMin)};
}
