#include "geometry/Transformation.h"

#include <cmath>

#include "geometry/Coordinates.h"
#include "geometry/Direction.h"
#include "geometry/Rotation.h"
#include "geometry/Translation.h"
#include "logging/Log.h"

namespace {

constexpr const char* TYPE = "Transformation";
// Metres per degree of latitude (the equator's circumference over 360).
constexpr double METRES_PER_DEGREE = 111319.49;
constexpr double RADIANS_PER_DEGREE = 3.141592653589793 / 180.0;

int CheckedDimension(int dimension) {
    if (dimension >= 1 && dimension <= Transformation::MAX_DIMENSION) return dimension;
    Log::log(1) << "Transformation::Transformation() - dimension " << dimension
                << " out of range, 3 taken\n";
    return 3;
}

}  // namespace

Transformation::Transformation(int n)
    : dimension(CheckedDimension(n)),
      matrix(dimension + 1, dimension + 1),
      inverse(dimension + 1, dimension + 1) {
    objTypeStr = TYPE;
}

Transformation::Transformation(const Transformation& other)
    : SimObject(), dimension(other.dimension), matrix(other.matrix), inverse(other.inverse) {
    objTypeStr = TYPE;
}

Transformation& Transformation::operator=(const Transformation& other) {
    if (this == &other) return *this;
    dimension = other.dimension;
    matrix.Copy(other.matrix);
    inverse.Copy(other.inverse);
    return *this;
}

Transformation::~Transformation() = default;

bool Transformation::Initialize() { return matrix.SetIdentity(); }

bool Transformation::AddColumnForm(MatrixTemplate<double>& part) {
    MatrixTemplate<double> rowForm(part);
    rowForm.Transpose();
    matrix *= rowForm;
    return true;
}

bool Transformation::Add(Translation& translation) {
    return AddColumnForm(translation.GetMatrix());
}

bool Transformation::Add(Rotation& rotation) { return AddColumnForm(rotation.GetMatrix()); }

bool Transformation::Add(Transformation& other) {
    matrix *= other.matrix;
    return true;
}

bool Transformation::AddScale(double factor) {
    for (int i = 0; i < dimension; ++i) matrix.quickSet(i, i, matrix.quickGet(i, i) * factor);
    return true;
}

void Transformation::MovePoint(MatrixTemplate<double>& m, const double* in, int count,
                               double* out) {
    const int size = m.GetDim(1);
    double row[MAX_DIMENSION + 1] = {};
    for (int i = 0; i < count && i < size; ++i) row[i] = in[i];
    if (count < size) row[size - 1] = 1.0;
    for (int j = 0; j < count; ++j) {
        double sum = 0.0;
        if (j < size) {
            for (int i = 0; i < size; ++i) sum += row[i] * m.quickGet(i, j);
        }
        out[j] = sum;
    }
}

int Transformation::ReadPoint(MatrixTemplate<double>& in, double* values) {
    const int count = in.GetDim(1) * in.GetDim(2);
    if (count > MAX_DIMENSION + 1) {
        Log::log(1) << "Transformation::Transform() - a point of " << count
                    << " values is too long\n";
        return -1;
    }
    for (int i = 0; i < count; ++i) values[i] = in.Get(i);
    return count;
}

void Transformation::WritePoint(MatrixTemplate<double>& in, MatrixTemplate<double>& out,
                                const double* values, int count) {
    if (&out != &in) out.SetDim(in.GetDim(1), in.GetDim(2));
    for (int i = 0; i < count; ++i) out.quickSet(i, values[i]);
}

bool Transformation::MoveCoordinates(MatrixTemplate<double>& m, Coordinates& in, Coordinates& out) {
    double values[MAX_DIMENSION + 1] = {};
    double moved[MAX_DIMENSION + 1] = {};
    const int count = ReadPoint(in, values);
    if (count < 0) return false;
    MovePoint(m, values, count, moved);
    WritePoint(in, out, moved, count);
    return true;
}

// The difference of the moved tip and the moved origin: the move itself cancels.
bool Transformation::MoveDirection(MatrixTemplate<double>& m, Direction& in, Direction& out) {
    double tip[MAX_DIMENSION + 1] = {};
    const double base[MAX_DIMENSION + 1] = {};
    double movedTip[MAX_DIMENSION + 1] = {};
    double movedBase[MAX_DIMENSION + 1] = {};
    const int count = ReadPoint(in, tip);
    if (count < 0) return false;
    MovePoint(m, tip, count, movedTip);
    MovePoint(m, base, count, movedBase);
    for (int i = 0; i < count; ++i) movedTip[i] -= movedBase[i];
    WritePoint(in, out, movedTip, count);
    return true;
}

bool Transformation::TransformColumn(MatrixTemplate<double>& m, Coordinates& in, Coordinates& out) {
    MatrixTemplate<double> rowForm(m);
    rowForm.Transpose();
    return MoveCoordinates(rowForm, in, out);
}

bool Transformation::Transform(Coordinates& in, Coordinates& out) {
    return MoveCoordinates(matrix, in, out);
}

bool Transformation::Transform(Coordinates& point) { return MoveCoordinates(matrix, point, point); }

bool Transformation::Transform(Direction& in, Direction& out) {
    return MoveDirection(matrix, in, out);
}

bool Transformation::Transform(Direction& direction) {
    return MoveDirection(matrix, direction, direction);
}

bool Transformation::Transform(double& x, double& y, double& z, double& dx, double& dy,
                               double& dz) {
    double tip[3] = {x + dx, y + dy, z + dz};
    double movedTip[3];
    Transform(x, y, z);
    MovePoint(matrix, tip, 3, movedTip);
    dx = movedTip[0] - x;
    dy = movedTip[1] - y;
    dz = movedTip[2] - z;
    const double length = std::sqrt(dx * dx + dy * dy + dz * dz);
    if (length > 0.0) {
        dx /= length;
        dy /= length;
        dz /= length;
    }
    return true;
}

bool Transformation::Transform(double& x, double& y, double& z) {
    const double point[3] = {x, y, z};
    double moved[3];
    MovePoint(matrix, point, 3, moved);
    x = moved[0];
    y = moved[1];
    z = moved[2];
    return true;
}

bool Transformation::BuildInverse() {
    inverse.Copy(matrix);
    if (inverse.Invert()) return true;
    Log::log(1) << "Transformation::TransformInv() - the transformation has no inverse\n";
    return false;
}

bool Transformation::TransformInv(Coordinates& in, Coordinates& out) {
    return BuildInverse() && MoveCoordinates(inverse, in, out);
}

bool Transformation::TransformInv(Coordinates& point) {
    return BuildInverse() && MoveCoordinates(inverse, point, point);
}

bool Transformation::TransformInv(Direction& in, Direction& out) {
    return BuildInverse() && MoveDirection(inverse, in, out);
}

bool Transformation::TransformInv(Direction& direction) {
    return BuildInverse() && MoveDirection(inverse, direction, direction);
}

bool Transformation::ToMatrix(float* out) {
    const int count = matrix.GetDim(1) * matrix.GetDim(2);
    for (int i = 0; i < count; ++i) out[i] = static_cast<float>(matrix.quickGet(i));
    return true;
}

bool Transformation::FromMatrix(const float* in) {
    const int count = matrix.GetDim(1) * matrix.GetDim(2);
    for (int i = 0; i < count; ++i) matrix.quickSet(i, in[i]);
    return true;
}

bool Transformation::getTransGPS2XYZ(float lonMin, float lonMax, float latMin, float latMax) {
    if (dimension < 2) {
        Log::log(1) << "Transformation::getTransGPS2XYZ() - needs two dimensions\n";
        return false;
    }
    const double lonCentre = 0.5 * (static_cast<double>(lonMin) + lonMax);
    const double latCentre = 0.5 * (static_cast<double>(latMin) + latMax);
    const double northScale = METRES_PER_DEGREE;
    const double eastScale = METRES_PER_DEGREE * std::cos(latCentre * RADIANS_PER_DEGREE);
    matrix.SetIdentity();
    matrix.quickSet(0, 0, eastScale);
    matrix.quickSet(1, 1, northScale);
    matrix.quickSet(dimension, 0, -lonCentre * eastScale);
    matrix.quickSet(dimension, 1, -latCentre * northScale);
    return true;
}
