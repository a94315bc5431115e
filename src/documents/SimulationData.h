#pragma once

#include "documents/ElementGroup.h"

// The scene of a simulation document: its element vector holds the top elements.
class SimulationData : public ElementGroup {
public:
    SimulationData();
};
