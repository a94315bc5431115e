#include "geometry/Direction.h"


namespace {

constexpr const char* TYPE = "Direction";

}  // namespace

Direction::Direction(int dimension) : PointObject<Direction>(dimension, 1) {
    objTypeStr = TYPE;
    normalised = true;
}

Direction::Direction(double x, double y) : PointObject<Direction>(2, 1) {
    objTypeStr = TYPE;
    normalised = true;
    SetValues(x, y);
}

Direction::Direction(double x, double y, double z) : PointObject<Direction>(3, 1) {
    objTypeStr = TYPE;
    normalised = true;
    SetValues(x, y, z);
}

Direction::Direction(double x, double y, double z, double w) : PointObject<Direction>(4, 1) {
    objTypeStr = TYPE;
    normalised = true;
    SetValues(x, y, z, w);
}

Direction::Direction(const MatrixTemplate<double>& matrix) : PointObject<Direction>(matrix) {
    objTypeStr = TYPE;
    normalised = true;
    changed = true;
}

Direction::Direction(const Direction& other) : PointObject<Direction>(other) {
    objTypeStr = TYPE;
    normalised = true;
}

Direction::Direction(const DirQUICK& direction) : PointObject<Direction>(3, 1) {
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
