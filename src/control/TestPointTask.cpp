#include "control/TestPointTask.h"

#include "radiation/TestPoint.h"

void* BeamToTestPointTask(void* content) {
    auto* task = static_cast<TestPointTask*>(content);
    for (TestPoint* point : task->testPoints) point->updateFromBeams(task->beamLimitPairs);
    return nullptr;
}
