#include "radiation/Signal.h"

#include <cmath>

namespace {

constexpr const char* TYPE = "Signal";
constexpr double SPEED_OF_LIGHT = 300000000.0;
constexpr double TWO_PI = 6.283185307179586;

}  // namespace

Signal::Signal() { objTypeStr = TYPE; }

Signal::~Signal() = default;

bool Signal::checkParams() {
    if (paramsChecked) return false;
    GetParameterValue<double>(PN_LMDA, wavelength);
    GetParameterValue<eParamValue>(PN_WAVFRM, waveform);
    GetParameterValue<eParamValue>(PN_WAVLOP, waveEnvelope);
    GetParameterValue<double>(PN_WAVDUR, waveDuration);
    paramsChecked = true;
    return true;
}

bool Signal::ParamUpdated(Parameter* param) {
    if (param == nullptr) return false;
    switch (param->getName()) {
        case PN_LMDA:
        case PN_WAVFRM:
        case PN_WAVLOP:
        case PN_WAVDUR:
            paramsChecked = false;
            return checkParams();
        default:
            return false;
    }
}

double Signal::getValueAtTime(double t, Coordinates*, double) {
    checkParams();
    double value = 0.0;
    if (waveform == PV_WAVE_SIN) {
        value = std::sin((t * SPEED_OF_LIGHT / wavelength) * TWO_PI);
    } else if (waveform == PV_WAVE_FLAT) {
        value = 1.0;
    }
    if (waveEnvelope == PV_ENV_GAUSSIAN) {
        // The pulse peaks at twice its width, so that it starts from almost nothing.
        double width = wavelength * waveDuration * 0.5 / SPEED_OF_LIGHT;
        double offset = t - 2.0 * width;
        value *= std::exp(-(offset * offset) / (width * width));
    }
    return value;
}

double Signal::GetWavelength() {
    checkParams();
    return wavelength;
}
