#include "geometry/Direction.h"

#include "geometry/Transformation.h"
#include "logging/Log.h"

namespace {

constexpr const char* TYPE = "Direction";

}  // namespace

Direction::Direction(int dimension) : MatrixTemplate<double>(dimension, 1) {
    objTypeStr = TYPE;
    normalised = true;
}

Direction::Direction(double x, double y) : MatrixTemplate<double>(2, 1) {
    objTypeStr = TYPE;
    normalised = true;
    SetValues(x, y);
}

Direction::Direction(double x, double y, double z) : MatrixTemplate<double>(3, 1) {
    objTypeStr = TYPE;
    normalised = true;
    SetValues(x, y, z);
}

Direction::Direction(double x, double y, double z, double w) : MatrixTemplate<double>(4, 1) {
    objTypeStr = TYPE;
    normalised = true;
    SetValues(x, y, z, w);
}

Direction::Direction(const MatrixTemplate<double>& matrix) : MatrixTemplate<double>(matrix) {
    objTypeStr = TYPE;
    normalised = true;
    changed = true;
}

Direction::Direction(const Direction& other) : MatrixTemplate<double>(other) {
    objTypeStr = TYPE;
    normalised = true;
}

Direction::Direction(const DirQUICK& direction) : MatrixTemplate<double>(3, 1) {
    objTypeStr = TYPE;
    normalised = true;
    Copy(direction);
}

Direction& Direction::operator=(const Direction& other) {
    MatrixTemplate<double>::operator=(other);
    return *this;
}

Direction::~Direction() = default;

bool Direction::Copy(const DirQUICK& direction) {
    return SetValues(direction.data[0], direction.data[1], direction.data[2]);
}

bool Direction::FromXml(CElement* element) {
    if (!MatrixTemplate<double>::FromXml(element)) return false;
    Normalise();
    return true;
}

bool Direction::ToXml(CElement* element, bool leaveOutExpanded) {
    UpdateChanges();
    return MatrixTemplate<double>::ToXml(element, leaveOutExpanded);
}

bool Direction::CheckEq(Direction* other) {
    if (other == nullptr) return false;
    UpdateChanges();
    other->UpdateChanges();
    return MatrixTemplate<double>::CheckEq(other);
}

bool Direction::ReceiveAction(const std::string& action, double x, double y) {
    return MoveByAction(action, x, y) || MatrixTemplate<double>::ReceiveAction(action, x, y);
}

bool Direction::ApplyTransformation(bool forward) {
    Transformation* upper = GetUpperTransformation();
    if (upper == nullptr) return false;
    return forward ? upper->Transform(*this) : upper->TransformInv(*this);
}

void Direction::Print() {
    Log::log(4) << "Direction::Print()\n";
    MatrixTemplate<double>::Print();
}
