#include "geometry/Translation.h"

#include <algorithm>
#include <cmath>

#include "documents/AttrNameId.h"
#include "geometry/Coordinates.h"
#include "geometry/Direction.h"
#include "geometry/Transformation.h"
#include "logging/Log.h"

namespace {

constexpr const char* TYPE = "Translation";
// A move vector shorter than this does not grow with time.
constexpr double SHORTEST_MOVE = 1e-10;

}  // namespace

Translation::Translation(int n) : dimension(n), matrix(n + 1, n + 1) { objTypeStr = TYPE; }

Translation::~Translation() = default;

bool Translation::Initialize() {
    if (!Component::Initialize()) return false;
    MakeChild(&coord, "coord", dimension);
    MakeChild(&dir, "dir", dimension);
    return true;
}

bool Translation::FromXml(CElement* element) {
    if (!Component::FromXml(element)) return false;
    LoadPointerByName<Coordinates>(&coord, element, "coord");
    LoadPointerByName<Direction>(&dir, element, "dir");
    LoadAttributeFromElement<double>(element, A_SP, speed);
    return buildTrans();
}

bool Translation::ToXml(CElement* element, bool leaveOutExpanded) {
    if (!Component::ToXml(element, leaveOutExpanded)) return false;
    return LoadAttributeToElement<double>(element, A_SP, speed, true, true, true, false);
}

double Translation::Growth(double length) const {
    if (std::abs(length) < SHORTEST_MOVE || speed == 0.0 || simTime == 0.0) return 0.0;
    return speed * simTime / length;
}

bool Translation::buildTrans() {
    matrix.SetIdentity();
    if (coord == nullptr) return false;
    const double factor = Growth(coord->GetLength()) + 1.0;
    const int rows = std::min(coord->GetDim(1), dimension);
    for (int i = 0; i < rows; ++i) matrix.quickSet(i, dimension, coord->Get(i) * factor);
    return true;
}

bool Translation::updateDirDist() {
    if (coord == nullptr || dir == nullptr) return false;
    dir->CopyTr(*coord);
    const double length = coord->GetLength();
    distance = length * (Growth(length) + 1.0);
    return true;
}

bool Translation::Add(Direction& direction, double moveDistance) {
    return AddToCoord(direction, moveDistance);
}

bool Translation::Add(Coordinates& move) { return AddToCoord(move, 1.0); }

bool Translation::AddToCoord(MatrixTemplate<double>& vector, double factor) {
    if (coord == nullptr || !coord->PlusProd(vector, factor)) {
        Log::log(1) << "Translation::Add() - no move vector of the size of the one added\n";
        return false;
    }
    return updateDirDist();
}

bool Translation::Set(Coordinates& move) {
    if (coord == nullptr) return false;
    coord->CopyTr(move);
    return updateDirDist();
}

bool Translation::Clear() {
    if (coord == nullptr) return false;
    coord->SetZero();
    return updateDirDist();
}

bool Translation::Transform(Coordinates in, Coordinates& out) {
    return Transformation::TransformColumn(matrix, in, out);
}

bool Translation::SetSpeed(double metresPerSecond) {
    speed = metresPerSecond;
    return updateDirDist();
}
