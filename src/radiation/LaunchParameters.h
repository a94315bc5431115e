#pragma once

#include <span>

#include "framework/ParamTypes.h"

class Component;

// The parameters that travel from a source down to the layouts and patterns of its beams.

// What a source gives its radiation, and the radiation each of its beams. The wavelength is
// handed on separately, since the source may derive it from the frequency.
inline constexpr eParamName LAUNCH_PARAMETERS[] = {
    PN_TYP,    PN_ARRSHA, PN_SIZ,     PN_ANG,    PN_CNT,    PN_ARMS,    PN_FREQ,    PN_WAVFRM,
    PN_WAVLOP, PN_WAVDUR, PN_PWRWATT, PN_GAINTX, PN_TRLIM,  PN_REFLIM,  PN_TRANLIM, PN_TRAT,
    PN_RPAT,   PN_RPFIL,  PN_RPATRES, PN_SRCSIZ, PN_RPATAX, PN_RENDRAD,
};

// The ray spacing and the shape of the beam's pattern, which reach the beams as well.
inline constexpr eParamName BEAM_SHAPE_PARAMETERS[] = {
    PN_RAYGAP, PN_HPBWH, PN_HPBWV, PN_GAINMIN, PN_GAINROT, PN_GAINTLT,
};

// What a beam gives its ray layout.
inline constexpr eParamName LAYOUT_PARAMETERS[] = {
    PN_RAYGAP, PN_TYP, PN_ARRSHA, PN_SIZ, PN_ANG, PN_LMDA, PN_ARMS, PN_TRLIM, PN_REFLIM, PN_TRANLIM,
};

// What a beam, or a source with a pattern of its own, gives a radiation pattern.
inline constexpr eParamName PATTERN_PARAMETERS[] = {
    PN_RPAT,  PN_RPFIL, PN_RPATRES, PN_SRCSIZ,  PN_RPATAX,  PN_SIZ,
    PN_HPBWH, PN_HPBWV, PN_GAINMIN, PN_GAINROT, PN_GAINTLT, PN_GAINTX,
};

// Passes each listed parameter that from has to to, under the same name. The number passed.
int PassParameters(std::span<const eParamName> names, Component* from, Component* to);
// Passes every parameter of from to to, in the order of from's children; of several under
// one name, the first.
int PassAllParameters(Component* from, Component* to);
// The same, and each parameter passed becomes a quick parameter of to.
int QuickCopyParameters(std::span<const eParamName> names, Component* from, Component* to);
