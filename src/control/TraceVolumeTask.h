#pragma once

#include <utility>
#include <vector>

#include "framework/NexoBase.h"

class EMRadiation;

// The work of one task of OpticElement::TransmitVolumeToInterface: the volumes, by id, whose
// held beams are traced to their faces. A task of a parallel pass has an output vector of its
// own, merged into the caller's after the join, so that the tasks share nothing.
class TraceVolumeTask : public NexoBase::ContentBase {
public:
    TraceVolumeTask(std::vector<int> volumeIds, std::vector<EMRadiation*>* out)
        : volumeIds(std::move(volumeIds)), out(out) {}

    // The volumes to trace.
    std::vector<int> volumeIds;
    // Where the radiation that the volumes report goes; null when it is not wanted.
    std::vector<EMRadiation*>* out;
    // The task's own output of a parallel pass.
    std::vector<EMRadiation*> own;
    // True when any volume traced something.
    bool result = false;
};
