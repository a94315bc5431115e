#pragma once

#include <cstddef>
#include <vector>

#include "propagation/Interface.h"
#include "propagation/MeshGroup.h"

// Holds an interface and each of its mesh groups for one geometric question asked from
// outside the batch hit test: a near-miss test, or a single ray's distance. Those walk the
// elements' working vectors, which other threads' batch hit tests use under the group
// locks alone, so the interface's lock is not enough. The interface is locked first, as
// everywhere; nothing locks an interface while holding a group, so the order is safe, and
// the batch hit test only tries the group locks and comes back to a held group later.
class FaceHold {
public:
    explicit FaceHold(Interface* held) : face(held) {
        face->lock(true);
        lockedCount = face->GetMeshGroups().size();
        for (MeshGroup* group : face->GetMeshGroups()) group->lock(true);
    }
    FaceHold(const FaceHold&) = delete;
    FaceHold& operator=(const FaceHold&) = delete;
    ~FaceHold() {
        // A first question may build the mesh, appending groups that were never locked
        // here; nothing else changes the groups while the interface is held.
        const std::vector<MeshGroup*>& groups = face->GetMeshGroups();
        for (size_t i = 0; i < lockedCount; i++) groups[i]->unlock();
        face->unlock();
    }

private:
    Interface* face;
    size_t lockedCount = 0;
};
