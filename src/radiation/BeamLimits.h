#pragma once

// Ranges of phase, position and intensity over the rays of one beam, for colour scales
// and the detection profiles.
struct BeamLimits {
    double phaseMean = 0.0;
    double phaseMin = 0.0;
    double phaseMax = 0.0;
    double phaseMid = 0.0;
    double phaseRange = 0.0;
    double xMin = 0.0;
    double xMax = 0.0;
    double yMin = 0.0;
    double yMax = 0.0;
    double zMin = 0.0;
    double zMax = 0.0;
    double xRange = 0.0;
    double yRange = 0.0;
    double zRange = 0.0;
    double maxRange = 0.0;
    double intensityMin = 0.0;
    double intensityMax = 0.0;
    double intensityMid = 0.0;
};
