#pragma once

class Loss;

// Building materials with a fitted permittivity a f^b and conductivity c f^d, f in GHz.
enum eMaterial : int { MAT_VACUUM = 1, MAT_CONCRETE = 2 };

// The loss formulas of reflection, transmission and travel through a lossy material.
// Stateless; angles are in radians, permittivities relative, conductivities in S/m.
class LossManage {
public:
    // The four fit coefficients of the material; false for an unknown material.
    static bool GetMaterialProps(eMaterial material, double& a, double& b, double& c, double& d);
    // Relative permittivity a f^b and conductivity c f^d at frequency f (GHz).
    static bool GetCondPerm(eMaterial material, double frequency, double& permittivity,
                            double& conductivity);
    // Refraction angle from medium 1 into medium 2 at incidence theta. False, with a NaN
    // angle, under total internal reflection.
    static bool GetTheta2RAD(double permittivity1, double permittivity2, double theta,
                             double& theta2);
    // Attenuation of distance metres in the material, on both polarisations.
    static bool AddVolumeLoss(double conductivity, double permittivity, double distance,
                              Loss& loss);
    // True when a ray from medium 1 at incidence theta cannot enter medium 2.
    static bool TotalInternalReflection(double permittivity1, double permittivity2, double theta);
    // Fresnel reflection amplitudes at incidence i and refraction t, added in dB; nothing
    // under total reflection.
    static bool AddFaceReflectLoss(double permittivity1, double permittivity2, double i, double t,
                                   Loss& loss);
    // Fresnel transmission amplitudes, added as 10 log10 of the amplitude; nothing under
    // total reflection.
    static bool AddFaceTransmitLoss(double permittivity1, double permittivity2, double i, double t,
                                    Loss& loss);
};
