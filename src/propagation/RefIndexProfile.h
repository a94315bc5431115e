#pragma once

#include "framework/ParamTypes.h"

// The refractive index n of a graded volume as a function of the distance a of a point from
// the volume's axis (or centre), with its slope s = dn/da. R is the volume's radius and
// D = indexMax - indexMin the index contrast. The four shapes:
//
//   "refIndex_Flat"      n = (indexMin + indexMax) / 2, s = 0.
//   "refIndex_cone"      s = -D / R, n = indexMax + a s (indexMax on the axis itself).
//   "refIndex_gaussian"  a bell of height D over indexMin, centred at a = peakOffset and
//                        R wide: with u = (a - peakOffset) / R,
//                          n = indexMin + D exp(-|u|^p),
//                          s = -sign(u) (D p / R) |u|^(p - 1) exp(-|u|^p).
//                        p = 2 is the true Gaussian; a larger p flattens the top.
//   "refIndex_powerLaw"  the graded-index law falling from indexMax on the axis to indexMin
//                        at R: with x = a / R,
//                          n = indexMax - D x^p,  s = -(D p / R) x^(p - 1)   for x < 1,
//                          n = indexMin,          s = 0                      for x >= 1.
//                        p = 2 is the parabolic profile; p = 1 is the cone within R.
//
// p is the parameter "refIndexProfileParameter"; when it is absent or not positive both
// bell and power law take DEFAULT_EXPONENT.
struct RefIndexProfile {
    static constexpr double DEFAULT_EXPONENT = 2.0;

    // n and s at distance a. False, leaving both, when a shaped profile has no radius.
    bool At(double a, double& n, double& slope) const;

    eParamValue shape = PV_REFINDEX_FLAT;
    double indexMin = 249.0;
    double indexMax = 250.0;
    double radius = 0.0;
    double peakOffset = 0.0;
    double exponent = DEFAULT_EXPONENT;

private:
    bool Gaussian(double a, double& n, double& slope) const;
    bool PowerLaw(double a, double& n, double& slope) const;
};
