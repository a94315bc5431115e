#pragma once

#include <map>
#include <string>
#include <vector>

// One row of the access-point catalogue.
struct AccessPointOption {
    std::string brand;
    std::string name;
    std::string description;
    std::string link;
    std::string standards;
    std::vector<double> frequencyBand;
    std::map<double, double> power;
    std::map<double, double> gain;
    std::vector<double> bandwidth;
    int antennaCount = 0;
};
