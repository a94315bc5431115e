#pragma once

#include "framework/SimObject.h"
#include "geometry/MatrixTemplate.h"

class Coordinates;
class Direction;
class Translation;
class Rotation;

// A composed homogeneous transformation of n-dimensional points ((n + 1) by (n + 1)).
//
// Points are rows: a point p is extended to (p, 1) and multiplied by the matrix from the
// right. Adding a part multiplies the matrix on the right, so parts act in the order they
// were added: a layout adds its rotation, then its translation, then its ancestors'
// transformation, and a point is turned, then moved, then carried along with the
// ancestors. Translation and Rotation build their matrices for columns (the move in the
// last column); they are added as their transposes, which is the same map for rows. The
// row-major matrix is what a renderer takes as its 16 floats.
class Transformation : public SimObject {
public:
    // The largest dimension of a point.
    static constexpr int MAX_DIMENSION = 7;

    // A dimension outside 1 to MAX_DIMENSION is logged and replaced by 3.
    explicit Transformation(int dimension = 3);
    Transformation(const Transformation& other);
    Transformation& operator=(const Transformation& other);
    ~Transformation() override;

    // The identity.
    bool Initialize() override;
    bool Add(Translation& translation);
    bool Add(Rotation& rotation);
    bool Add(Transformation& other);
    // Multiplies the first n diagonal entries by the factor.
    bool AddScale(double factor);

    bool Transform(Coordinates& in, Coordinates& out);
    bool Transform(Coordinates& point);
    // A direction is moved as the difference of two moved points and renormalised.
    bool Transform(Direction& in, Direction& out);
    bool Transform(Direction& direction);
    // A point and a direction given as doubles, in place; the direction comes out unit.
    bool Transform(double& x, double& y, double& z, double& dx, double& dy, double& dz);
    bool Transform(double& x, double& y, double& z);
    // The same through the inverse; false, with the output untouched, when the matrix
    // cannot be inverted.
    bool TransformInv(Coordinates& in, Coordinates& out);
    bool TransformInv(Coordinates& point);
    bool TransformInv(Direction& in, Direction& out);
    bool TransformInv(Direction& direction);

    // (n + 1) squared floats, row-major, to and from a renderer (16 in three dimensions).
    bool ToMatrix(float* out);
    bool FromMatrix(const float* in);
    // Replaces the matrix with the map from longitude and latitude (degrees) within the
    // limits to metres east and north of their centre: 111319.49 m per degree of latitude
    // and that times the cosine of the centre's latitude per degree of longitude. Heights
    // pass unchanged.
    bool getTransGPS2XYZ(float lonMin, float lonMax, float latMin, float latMax);

    MatrixTemplate<double>& GetMatrix() { return matrix; }
    int GetDimension() const { return dimension; }

    // out = m (in, 1) for a matrix in column form, as Translation and Rotation build theirs;
    // out takes in's dimensions. A point of as many values as m has columns is multiplied
    // as it stands.
    static bool TransformColumn(MatrixTemplate<double>& m, Coordinates& in, Coordinates& out);

private:
    // Adds a column-form matrix as its transpose.
    bool AddColumnForm(MatrixTemplate<double>& part);
    // Builds the inverse of the matrix into inverse; false when it has none.
    bool BuildInverse();
    // out = (in, 1) m: a point of fewer values than m has rows is extended by a last 1.0,
    // one of as many values is multiplied as it stands. out has count values.
    static void MovePoint(MatrixTemplate<double>& m, const double* in, int count, double* out);
    // The values of a point into values; -1, logged, when it has more than a transformation
    // takes.
    static int ReadPoint(MatrixTemplate<double>& in, double* values);
    // out takes in's dimensions (unless it is in) and the values.
    static void WritePoint(MatrixTemplate<double>& in, MatrixTemplate<double>& out,
                           const double* values, int count);
    static bool MoveCoordinates(MatrixTemplate<double>& m, Coordinates& in, Coordinates& out);
    static bool MoveDirection(MatrixTemplate<double>& m, Direction& in, Direction& out);

    int dimension;
    MatrixTemplate<double> matrix;
    // A copy of matrix, inverted at each inverse transformation.
    MatrixTemplate<double> inverse;
};
