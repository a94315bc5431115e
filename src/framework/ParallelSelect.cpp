#include "framework/ParallelSelect.h"

ParallelSelect::ParallelSelect(bool all) : allAvailable(all) {}

ParallelSelect& ParallelSelect::operator=(const ParallelSelect& other) {
    if (this == &other) return *this;
    // A copy of a Lockable shares its mutex, so this locks the other object.
    Lockable otherLock = other;
    otherLock.lock(true);
    bool otherAvailable = other.allAvailable;
    bool otherForced = other.allForced;
    std::map<eParallelSection, bool> otherAvailableMap = other.available;
    std::map<eParallelSection, bool> otherForcedMap = other.forced;
    otherLock.unlock();

    lock(true);
    allAvailable = otherAvailable;
    allForced = otherForced;
    available.swap(otherAvailableMap);
    forced.swap(otherForcedMap);
    unlock();
    Lockable::operator=(other);
    return *this;
}

bool ParallelSelect::Lookup(bool all, const std::map<eParallelSection, bool>& entries,
                            eParallelSection section) {
    if (all) return true;
    auto found = entries.find(section);
    return found != entries.end() && found->second;
}

bool ParallelSelect::IsParallelAvailable(eParallelSection section) {
    lock(true);
    bool answer = Lookup(allAvailable, available, section);
    unlock();
    return answer;
}

bool ParallelSelect::IsParallelForced(eParallelSection section) {
    lock(true);
    bool answer = Lookup(allForced, forced, section);
    unlock();
    return answer;
}

void ParallelSelect::SetAvailable(eParallelSection section, bool allowed) {
    lock(true);
    available[section] = allowed;
    unlock();
}

void ParallelSelect::SetForced(eParallelSection section, bool force) {
    lock(true);
    forced[section] = force;
    unlock();
}
