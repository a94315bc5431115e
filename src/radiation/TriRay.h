#pragma once

#include "geometry/Coordinates.h"

// A triangle of three neighbouring rays of one beam, named by their ids within the beam.
// The beam fills centre and intensity from the rays' end points.
struct TriRay {
    TriRay() = default;
    TriRay(int a, int b, int c) : rayA(a), rayB(b), rayC(c) {}

    // True if the ray with this id is a corner.
    bool HasCorner(int id) const { return rayA == id || rayB == id || rayC == id; }

    int rayA = -1;
    int rayB = -1;
    int rayC = -1;
    double solidAngle = 0.0;
    double power = -1.0;
    double intensity = -1.0;
    Coordinates centre{3};
};
