#include "geometry/Coordinates.h"


namespace {

constexpr const char* TYPE = "Coordinates";

}  // namespace

Coordinates::Coordinates(int dimension) : PointObject<Coordinates>(dimension, 1) {
    objTypeStr = TYPE;
}

Coordinates::Coordinates(double x, double y) : PointObject<Coordinates>(2, 1) {
    objTypeStr = TYPE;
    SetValues(x, y);
}

Coordinates::Coordinates(double x, double y, double z) : PointObject<Coordinates>(3, 1) {
    objTypeStr = TYPE;
    SetValues(x, y, z);
}

Coordinates::Coordinates(double x, double y, double z, double w) : PointObject<Coordinates>(4, 1) {
    objTypeStr = TYPE;
    SetValues(x, y, z, w);
}

Coordinates::Coordinates(const MatrixTemplate<double>& matrix) : PointObject<Coordinates>(matrix) {
    objTypeStr = TYPE;
}

Coordinates::Coordinates(const Coordinates& other) : PointObject<Coordinates>(other) {
    objTypeStr = TYPE;
}

Coordinates::Coordinates(const CoordQUICK& point) : PointObject<Coordinates>(3, 1) {
    objTypeStr = TYPE;
    SetValues(point.data[0], point.data[1], point.data[2]);
}

Coordinates& Coordinates::operator=(const Coordinates& other) {
    MatrixTemplate<double>::operator=(other);
    return *this;
}

Coordinates::~Coordinates() = default;

bool Coordinates::CheckEq(SimObject* other) {
    if (other == nullptr || other->GetTypeStr() != objTypeStr) return false;
    return MatrixTemplate<double>::CheckEq(static_cast<Coordinates*>(other));
}
