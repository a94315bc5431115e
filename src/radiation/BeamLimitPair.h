#pragma once

#include "geometry/CoordLimits.h"

class BeamQUICK;

// A beam with a copy of its box, so that a test point can discard the beam by the box
// alone without touching it.
struct BeamLimitPair {
    explicit BeamLimitPair(BeamQUICK* beam);

    BeamQUICK* beam;
    CoordLimits limits;
};
