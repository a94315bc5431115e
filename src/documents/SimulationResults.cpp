#include "documents/SimulationResults.h"

SimulationResults::SimulationResults() { objTypeStr = "SimulationResults"; }
