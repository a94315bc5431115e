#pragma once

#include <map>
#include <string>
#include <vector>

// One row of the antenna catalogue.
struct AntennaOption {
    std::string brand;
    std::string name;
    std::string description;
    std::string link;
    std::vector<double> frequency;
    std::map<double, double> hBeamWidth;
    std::map<double, double> vBeamWidth;
    std::map<double, double> gain;
};
