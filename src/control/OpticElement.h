#pragma once

#include "radiation/SimulationResources.h"

class OpticElement {
public:
    static SimulationResources resources;
};
