#include "control/TestPointTask.h"

void* BeamToTestPointTask(void*) { return nullptr; }
