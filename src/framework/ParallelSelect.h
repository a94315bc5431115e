#pragma once

#include <map>

#include "framework/Lockable.h"

// Keys of the stages that may run in parallel. Values 0, 2 and 6 name no stage.
enum eParallelSection : int {
    parallelNone = 0,
    parallelBeamsToTestPoints = 1,
    parallelSpare2 = 2,
    parallelVolumeToInterface = 3,
    parallelInterfaceToVolume = 4,
    parallelSetRays = 5,
    parallelSpare6 = 6,
    parallelVolumeTransmit = 7,
};

// Which stages of a run may go parallel (available) and which must (forced). The
// constructor's flag makes every section available; otherwise a section is available
// only when its own entry says so. Nothing is forced unless an entry says so.
class ParallelSelect : public Lockable {
public:
    explicit ParallelSelect(bool allAvailable = true);
    ParallelSelect(const ParallelSelect& other) = default;
    // Copies both flags and both maps; afterwards both objects share other's lock.
    ParallelSelect& operator=(const ParallelSelect& other);

    bool IsParallelAvailable(eParallelSection section);
    bool IsParallelForced(eParallelSection section);
    // Per-section entries, consulted when the matching "all" flag is not set.
    void SetAvailable(eParallelSection section, bool allowed);
    void SetForced(eParallelSection section, bool force);

private:
    // Expects the object's lock to be held.
    static bool Lookup(bool all, const std::map<eParallelSection, bool>& entries,
                       eParallelSection section);

    bool allAvailable;
    bool allForced = false;
    std::map<eParallelSection, bool> available;
    std::map<eParallelSection, bool> forced;
};
