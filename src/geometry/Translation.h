#pragma once

#include "framework/Component.h"
#include "geometry/MatrixTemplate.h"

class CElement;
class Coordinates;
class Direction;

// A move: the child "coord" is the move vector and "dir" the same vector as a unit
// direction. With a speed the object travels along the vector: at simulation time t the
// move is coord * (1 + speed * t / |coord|). The matrix is homogeneous, (n + 1) square,
// with the move in its last column.
class Translation : public Component {
public:
    explicit Translation(int dimension = 3);
    ~Translation() override;

    // Makes the children "coord" and "dir" when they are missing.
    bool Initialize() override;
    bool FromXml(CElement* element) override;
    bool ToXml(CElement* element, bool leaveOutExpanded) override;

    // Identity with coord * (g + 1) in the last column, g = speed * simTime / |coord|, or 0
    // when |coord| < 1e-10, speed is 0 or the time is 0. False without "coord".
    bool buildTrans();
    // "dir" follows "coord", and distance becomes |coord| (g + 1). Needs both children.
    bool updateDirDist();
    // coord += direction * distance.
    bool Add(Direction& direction, double distance);
    // coord += move.
    bool Add(Coordinates& move);
    // coord = move.
    bool Set(Coordinates& move);
    // coord = 0.
    bool Clear();
    // out = in moved by the matrix.
    bool Transform(Coordinates in, Coordinates& out);

    bool SetSpeed(double metresPerSecond);
    double GetSpeed() const { return speed; }
    double GetDistance() const { return distance; }
    Coordinates* GetCoord() { return coord; }
    Direction* GetDir() { return dir; }
    MatrixTemplate<double>& GetMatrix() { return matrix; }

private:
    // The growth g of the move at the current time.
    double Growth(double length) const;
    // coord += factor * vector; false when there is no coord of that size.
    bool AddToCoord(MatrixTemplate<double>& vector, double factor);

    int dimension;
    Coordinates* coord = nullptr;
    Direction* dir = nullptr;
    double distance = 0.0;
    double speed = 0.0;
    MatrixTemplate<double> matrix;
};
