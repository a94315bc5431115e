#pragma once

#include "geometry/CoordQUICK.h"
#include "geometry/MatrixTemplate.h"

// A position as a simulation object: an n by 1 matrix that can be a child of any object,
// is saved with it and follows the transformation of the object above it.
class Coordinates : public MatrixTemplate<double> {
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

    // The interactive moves "movex", "movey", "movexy" and "scale"; others go to the base.
    bool ReceiveAction(const std::string& action, double x, double y) override;
    using MatrixTemplate<double>::CheckEq;
    // Equal class names, then the matrix comparison.
    bool CheckEq(SimObject* other) override;
    // Moves this point by the transformation of the object above (forward) or back by its
    // inverse. False when that object has none.
    bool ApplyTransformation(bool forward) override;
    void Print() override;
};
