#pragma once

#include "geometry/CoordQUICK.h"
#include "geometry/PointObject.h"

// A position as a simulation object: an n by 1 matrix that can be a child of any object,
// is saved with it and follows the transformation of the object above it.
class Coordinates : public PointObject<Coordinates> {
public:
    // n by 1, all zero.
    explicit Coordinates(int dimension = 3);
    Coordinates(double x, double y);
    Coordinates(double x, double y, double z);
    Coordinates(double x, double y, double z, double w);
    explicit Coordinates(const MatrixTemplate<double>& matrix);
    Coordinates(const Coordinates& other);
    explicit Coordinates(const CoordQUICK& point);
    Coordinates& operator=(const Coordinates& other);
    ~Coordinates() override;

    using MatrixTemplate<double>::CheckEq;
    // Equal class names, then the matrix comparison.
    bool CheckEq(SimObject* other) override;
};
