#pragma once

#include "geometry/DirQUICK.h"
#include "geometry/PointObject.h"

// A direction as a simulation object: an n by 1 matrix marked normalised, so that it is
// rescaled to unit length on the first read after any write.
class Direction : public PointObject<Direction> {
public:
    // n by 1, all zero.
    explicit Direction(int dimension = 3);
    Direction(double x, double y);
    Direction(double x, double y, double z);
    Direction(double x, double y, double z, double w);
    explicit Direction(const MatrixTemplate<double>& matrix);
    Direction(const Direction& other);
    explicit Direction(const DirQUICK& direction);
    Direction& operator=(const Direction& other);
    ~Direction() override;

    using MatrixTemplate<double>::Copy;
    // The three components of the fast direction.
    bool Copy(const DirQUICK& direction);

    // The stored values are brought back to unit length after the load.
    bool FromXml(CElement* element) override;
    bool ToXml(CElement* element, bool leaveOutExpanded) override;
    using MatrixTemplate<double>::CheckEq;
    // The matrix comparison, both sides normalised first.
    virtual bool CheckEq(Direction* other);
};
