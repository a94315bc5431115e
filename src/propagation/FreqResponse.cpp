#include "propagation/FreqResponse.h"

FreqResponse::FreqResponse() { objTypeStr = "FreqResponse"; }

bool FreqResponse::checkParams() {
    frequency = 0;
    GetParameterValue(PN_FREQ, frequency);
    paramsChecked = true;
    return true;
}

double FreqResponse::GetFrequency() {
    if (!paramsChecked) checkParams();
    return frequency;
}
