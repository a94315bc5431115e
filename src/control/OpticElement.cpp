#include "control/OpticElement.h"

SimulationResources OpticElement::resources;
