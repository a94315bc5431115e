#pragma once

#include <vector>

#include "framework/NexoBase.h"
#include "radiation/BeamLimitPair.h"

class TestPoint;

// One tile of the test-point catch: a group of test points offered a group of beams. Each
// task owns its vectors, so that parallel tiles share nothing but the points' own locks.
class TestPointTask : public NexoBase::ContentBase {
public:
    TestPointTask() = default;

    // Not owned: the points of the tile.
    std::vector<TestPoint*> testPoints;
    // The beams of the tile, each with a copy of its box.
    std::vector<BeamLimitPair> beamLimitPairs;
    int flag = 1;
};

// The task function: every point of the task takes the task's beams. Returns null.
void* BeamToTestPointTask(void* content);
