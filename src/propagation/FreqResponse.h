#pragma once

#include "framework/Component.h"

// Measured losses of a structure at one frequency: the parameter "frequency" and any of
// "reflectLoss" and "transmitLoss".
class FreqResponse : public Component {
public:
    FreqResponse();

    // Caches "frequency" in Hz; 0 when the parameter is missing.
    bool checkParams() override;
    // The cached frequency in Hz, brought up to date first when a parameter changed.
    double GetFrequency();

private:
    double frequency = 0;
};
