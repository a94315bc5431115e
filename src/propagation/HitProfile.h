#pragma once

#include <vector>

#include "framework/ParamTypes.h"

class BeamQUICK;
class Ray;

// The detection profile of an interface: the rays that hit it, and the field evaluated
// over their beam. Drawing the profile is the business of the viewer; here it holds the
// hits it is given and the settings of the last evaluation.
class HitProfile {
public:
    HitProfile() = default;
    HitProfile(const HitProfile&) = delete;
    HitProfile& operator=(const HitProfile&) = delete;

    // Keeps the ray as a hit. The ray is not owned: it belongs to the detection's beam.
    bool Addhit(Ray* ray);
    // Forgets the hits.
    void Clear();
    const std::vector<Ray*>& GetHits() const { return hits; }

    // Stores the settings and evaluates the beam's limits, intensities and gradients.
    // False for a null beam or one without rays.
    bool Evaluate(BeamQUICK* beam, eParamValue type, double resolution, double heightRatio,
                  eParamValue heightColor, eParamValue colorScale);

    eParamValue GetProfileType() const { return profileType; }
    double GetResolution() const { return resolution; }
    double GetHeightRatio() const { return heightRatio; }
    eParamValue GetHeightColor() const { return heightColor; }
    eParamValue GetColorScale() const { return colorScale; }

private:
    std::vector<Ray*> hits;
    eParamValue profileType = PV_EMPTY;
    double resolution = 0.0;
    double heightRatio = 0.0;
    eParamValue heightColor = PV_EMPTY;
    eParamValue colorScale = PV_EMPTY;
};
