#pragma once

#include "documents/ElementGroup.h"

// What a run produced: its radiation vector holds the run's result.
class SimulationResults : public ElementGroup {
public:
    SimulationResults();
};
