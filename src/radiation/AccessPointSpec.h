#pragma once

#include <map>
#include <string>
#include <vector>

#include "framework/Component.h"

// Data sheet of an access-point model: its bands and standards, its antennas, and power and
// gain per frequency.
class AccessPointSpec : public Component {
public:
    explicit AccessPointSpec(const char* name = nullptr);

    bool ToXml(CElement* element, bool leaveOutExpanded) override;

    std::string brand;
    std::string description;
    std::string link;
    std::string standards;
    std::vector<double> frequencyBand;
    std::vector<double> bandwidth;
    std::string antennaName;
    int antennaCount = -1;
    std::string antennaType;
    std::map<double, double> power;
    std::map<double, double> gain;
};
