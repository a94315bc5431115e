#pragma once

#include "framework/Component.h"
#include "framework/ParamTypes.h"

class Coordinates;

// The waveform of a source: a sine or a flat level at the source's wavelength, shaped by a
// flat or a gaussian envelope. It takes its parameters from the source and is read by the
// time-domain solver.
class Signal : public Component {
public:
    Signal();
    ~Signal() override;

    // Reads wavelength, waveform, waveEnvelope and waveDuration; runs once per change.
    bool checkParams() override;
    // A new value of one of the four signal parameters is read again at once.
    bool ParamUpdated(Parameter* param) override;

    // The value at time t (seconds). The waveform does not vary in space, so the point and
    // the distance of the caller do not enter it.
    double getValueAtTime(double t, Coordinates* p, double distance);
    double GetWavelength();

private:
    double wavelength = -1.0;
    eParamValue waveform = PV_WAVE_SIN;
    eParamValue waveEnvelope = PV_ENV_FLAT;
    double waveDuration = 0.0;
};
