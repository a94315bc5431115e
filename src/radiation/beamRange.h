#pragma once

#include <vector>

#include "geometry/CoordQUICK.h"
#include "geometry/DirQUICK.h"

class Ray;

// A cone (axis and half angle in degrees) and a sphere (centre and radius) that grow to
// take in a set of rays.
struct beamRange {
    // The first ray seeds the cone and the sphere; later ones widen them.
    void addRay(Ray* ray);

    CoordQUICK centre{0.0, 0.0, 0.0};
    double radius = 0.0;
    DirQUICK axis;
    double halfAngle = 0.0;
    std::vector<Ray*> rays;
};
