#pragma once

#include "framework/Component.h"
#include "geometry/MatrixTemplate.h"

class CElement;
class Coordinates;
class Direction;

// A turn about an axis: the child "coord" is a point on the axis and "dir" its direction.
// The angle at simulation time t is startAngle + angleSpeed * t degrees. The matrix is
// homogeneous, (n + 1) square, for column points: move the axis point to the origin, turn,
// move back.
class Rotation : public Component {
public:
    explicit Rotation(int dimension = 3);
    ~Rotation() override;

    // Makes the children "coord" (the origin) and "dir" (the z axis) when missing.
    bool Initialize() override;
    bool FromXml(CElement* element) override;
    bool ToXml(CElement* element, bool leaveOutExpanded) override;

    // The axis-angle matrix about "dir" through "coord". The angle goes to radians through
    // 3.1412459 / 180 and not pi / 180, the counterpart of the system's degree factor, so a
    // half turn is not quite one. False without the children.
    bool buildTrans();
    bool SetStartAngle(double degrees);
    bool AddToStartAngle(double degrees);
    bool SetAngleSpeed(double degreesPerSecond);
    // startAngle + angleSpeed * simTime, brought into -180 to 180.
    double GetAngle() const;
    double GetStartAngle() const { return startAngle; }
    double GetAngleSpeed() const { return angleSpeed; }
    // out = matrix * (in, 1), with in's dimensions.
    bool Transform(Coordinates in, Coordinates& out);
    bool Transform(Coordinates* point);

    Coordinates* GetCoord() { return coord; }
    Direction* GetDir() { return dir; }
    MatrixTemplate<double>& GetMatrix() { return matrix; }

private:
    int dimension;
    Coordinates* coord = nullptr;
    Direction* dir = nullptr;
    double startAngle = 0.0;
    double angleSpeed = 0.0;
    MatrixTemplate<double> matrix;
};
