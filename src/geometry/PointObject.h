#pragma once

#include <string>

#include "geometry/MatrixTemplate.h"

// A point-like n by 1 matrix as a simulation object (Self is Coordinates or Direction): it
// takes the interactive moves and follows the transformation of the object above it.
template <typename Self>
class PointObject : public MatrixTemplate<double> {
public:
    PointObject(int rows, int cols) : MatrixTemplate<double>(rows, cols) {}
    explicit PointObject(const MatrixTemplate<double>& matrix) : MatrixTemplate<double>(matrix) {}

    // The interactive moves "movex", "movey", "movexy" and "scale"; others go to the base.
    bool ReceiveAction(const std::string& action, double x, double y) override;
    // Moves this object by the transformation of the object above (forward) or back by its
    // inverse. False when that object has none.
    bool ApplyTransformation(bool forward) override;
    void Print() override;
};

class Coordinates;
class Direction;
extern template class PointObject<Coordinates>;
extern template class PointObject<Direction>;
