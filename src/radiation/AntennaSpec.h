#pragma once

#include <map>
#include <string>
#include <vector>

#include "framework/Component.h"

// Data sheet of an antenna model: per-frequency beam widths and gain.
class AntennaSpec : public Component {
public:
    explicit AntennaSpec(const char* name = nullptr);

    bool ToXml(CElement* element, bool leaveOutExpanded) override;

    std::string brand;
    std::string description;
    std::string link;
    std::vector<double> frequency;
    std::map<double, double> hBeamWidth;
    std::map<double, double> vBeamWidth;
    std::map<double, double> gain;
};
