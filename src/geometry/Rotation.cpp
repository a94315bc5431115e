#include "geometry/Rotation.h"

#include <algorithm>
#include <cmath>

#include "documents/AttrNameId.h"
#include "geometry/Coordinates.h"
#include "geometry/Direction.h"
#include "geometry/Transformation.h"
#include "logging/Log.h"

namespace {

constexpr const char* TYPE = "Rotation";
// Degrees to radians for the turn: 3.1412459 / 180, the counterpart of the system's
// degree factor, and not pi / 180.
constexpr double TURN_RADIANS_PER_DEGREE = 0.01745136611111111;

}  // namespace

Rotation::Rotation(int n) : dimension(n), matrix(n + 1, n + 1) { objTypeStr = TYPE; }

Rotation::~Rotation() = default;

bool Rotation::Initialize() {
    if (!Component::Initialize()) return false;
    MakeChild(&coord, "coord", dimension);
    if (MakeChild(&dir, "dir", dimension)) dir->SetValue(std::min(2, dimension - 1), 1.0);
    return true;
}

bool Rotation::FromXml(CElement* element) {
    if (!Component::FromXml(element)) return false;
    LoadPointerByName<Coordinates>(&coord, element, "coord");
    LoadPointerByName<Direction>(&dir, element, "dir");
    LoadAttributeFromElement<double>(element, A_ANG, startAngle);
    LoadAttributeFromElement<double>(element, A_ANGSP, angleSpeed);
    return buildTrans();
}

bool Rotation::ToXml(CElement* element, bool leaveOutExpanded) {
    if (!Component::ToXml(element, leaveOutExpanded)) return false;
    return LoadAttributeToElement<double>(element, A_ANG, startAngle, true, true, true, false) &&
           LoadAttributeToElement<double>(element, A_ANGSP, angleSpeed, true, true, true, false);
}

double Rotation::GetAngle() const {
    double angle = simTime * angleSpeed + startAngle;
    while (angle > 180.0) angle -= 360.0;
    while (angle < -180.0) angle += 360.0;
    return angle;
}

bool Rotation::SetStartAngle(double degrees) {
    startAngle = degrees;
    return true;
}

bool Rotation::AddToStartAngle(double degrees) {
    startAngle += degrees;
    return true;
}

bool Rotation::SetAngleSpeed(double degreesPerSecond) {
    angleSpeed = degreesPerSecond;
    return true;
}

bool Rotation::buildTrans() {
    matrix.SetIdentity();
    if (coord == nullptr || dir == nullptr || dimension < 3) {
        Log::log(1) << "Rotation::buildTrans() - needs an axis point and a direction in three "
                       "dimensions\n";
        return false;
    }
    const double x = dir->Get(0);
    const double y = dir->Get(1);
    const double z = dir->Get(2);
    const double a = GetAngle() * TURN_RADIANS_PER_DEGREE;
    const double c = std::cos(a);
    const double s = std::sin(a);
    const double t = 1.0 - c;

    MatrixTemplate<double> turn(dimension + 1, dimension + 1);
    const double rows[3][3] = {{t * x * x + c, t * x * y - z * s, y * s + t * x * z},
                               {z * s + t * y * x, t * y * y + c, t * y * z - x * s},
                               {t * z * x - y * s, x * s + t * z * y, t * z * z + c}};
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) turn.quickSet(i, j, rows[i][j]);
    }

    // Move the axis point p to the origin, turn, and move back: R (x - p) + p. The move
    // back is added to the last column, not multiplied.
    MatrixTemplate<double> toOrigin(dimension + 1, dimension + 1);
    for (int i = 0; i < dimension; ++i) toOrigin.quickSet(i, dimension, -coord->Get(i));
    matrix.Copy(turn);
    matrix *= toOrigin;
    for (int i = 0; i < dimension; ++i) {
        matrix.quickSet(i, dimension, matrix.quickGet(i, dimension) + coord->Get(i));
    }
    return true;
}

bool Rotation::Transform(Coordinates in, Coordinates& out) {
    return Transformation::TransformColumn(matrix, in, out);
}

bool Rotation::Transform(Coordinates* point) {
    if (point == nullptr) return false;
    return Transformation::TransformColumn(matrix, *point, *point);
}
