#include "geometry/Coordinates.h"

#include "geometry/Transformation.h"
#include "logging/Log.h"

namespace {

constexpr const char* TYPE = "Coordinates";

}  // namespace

Coordinates::Coordinates(int dimension) : MatrixTemplate<double>(dimension, 1) {
    objTypeStr = TYPE;
}

Coordinates::Coordinates(double x, double y) : MatrixTemplate<double>(2, 1) {
    objTypeStr = TYPE;
    SetValues(x, y);
}

Coordinates::Coordinates(double x, double y, double z) : MatrixTemplate<double>(3, 1) {
    objTypeStr = TYPE;
    SetValues(x, y, z);
}

Coordinates::Coordinates(double x, double y, double z, double w) : MatrixTemplate<double>(4, 1) {
    objTypeStr = TYPE;
    SetValues(x, y, z, w);
}

Coordinates::Coordinates(const MatrixTemplate<double>& matrix) : MatrixTemplate<double>(matrix) {
    objTypeStr = TYPE;
}

Coordinates::Coordinates(const Coordinates& other) : MatrixTemplate<double>(other) {
    objTypeStr = TYPE;
}

Coordinates::Coordinates(const CoordQUICK& point) : MatrixTemplate<double>(3, 1) {
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

bool Coordinates::ReceiveAction(const std::string& action, double x, double y) {
    return MoveByAction(action, x, y) || MatrixTemplate<double>::ReceiveAction(action, x, y);
}

bool Coordinates::ApplyTransformation(bool forward) {
    Transformation* upper = GetUpperTransformation();
    if (upper == nullptr) return false;
    return forward ? upper->Transform(*this) : upper->TransformInv(*this);
}

void Coordinates::Print() {
    Log::log(4) << "Coordinates::Print()\n";
    MatrixTemplate<double>::Print();
}
