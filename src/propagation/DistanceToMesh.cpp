#include "propagation/DistanceToMesh.h"

#include <sched.h>

#include "propagation/MeshGroup.h"

namespace {

// Groups of a usual interface fit the flags on the stack; larger sets take the heap.
constexpr size_t kStackGroups = 64;

}  // namespace

double DistanceToMesh(CoordQUICK& origin, DirQUICK& dir, DirQUICK** normal,
                      std::vector<MeshGroup*>& groups) {
    const size_t count = groups.size();
    unsigned char stackDone[kStackGroups] = {};
    std::vector<unsigned char> heapDone;
    unsigned char* done = stackDone;
    if (count > kStackGroups) {
        heapDone.assign(count, 0);
        done = heapDone.data();
    }

    // Each group writes its own nearest normal here; it reaches the caller only when that
    // group holds the nearest hit so far.
    DirQUICK groupNormal;
    DirQUICK* groupNormalHandle = &groupNormal;
    double best = -1.0;
    size_t remaining = count;
    while (remaining > 0) {
        for (size_t index = 0; index < count; ++index) {
            if (done[index]) continue;
            MeshGroup* group = groups[index];
            if (group != nullptr) {
                // A busy group is left for the next sweep, never waited for.
                if (group->isLocked() || !group->lock(false)) continue;
                double t = -1.0;
                const bool hit = group->distance(t, origin, dir, &groupNormalHandle, best);
                group->unlock();
                if (hit && t > 0.0 && (best == -1.0 || t < best)) {
                    best = t;
                    if (normal != nullptr) {
                        if (*normal == nullptr) *normal = new DirQUICK();
                        (*normal)->Copy(groupNormal);
                    }
                }
            }
            done[index] = 1;
            --remaining;
        }
        // Give the holder of a busy group the processor before sweeping again.
        if (remaining > 0) sched_yield();
    }
    return best;
}
