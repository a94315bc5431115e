#include "propagation/HitProfile.h"

#include "logging/Log.h"
#include "radiation/BeamQUICK.h"

bool HitProfile::Addhit(Ray* ray) {
    if (ray == nullptr) return false;
    hits.push_back(ray);
    return true;
}

void HitProfile::Clear() { hits.clear(); }

bool HitProfile::Evaluate(BeamQUICK* beam, eParamValue type, double newResolution,
                          double newHeightRatio, eParamValue newHeightColor,
                          eParamValue newColorScale) {
    profileType = type;
    resolution = newResolution;
    heightRatio = newHeightRatio;
    heightColor = newHeightColor;
    colorScale = newColorScale;
    if (beam == nullptr || beam->GetRaysCount() == 0) {
        Log::log(1) << "HitProfile::Evaluate() - no rays to evaluate\n";
        return false;
    }
    // The intensity and gradients need the triangles; without them the maps stay empty,
    // which is no failure of the profile.
    const bool limits = beam->EvaluateLimits();
    beam->EvaluateIntensity();
    beam->EvaluateGradients();
    return limits;
}
