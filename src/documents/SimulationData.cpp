#include "documents/SimulationData.h"

SimulationData::SimulationData() { objTypeStr = "SimulationData"; }
