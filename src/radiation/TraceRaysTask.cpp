#include "radiation/TraceRaysTask.h"

#include <algorithm>
#include <utility>

#include "framework/Usleep.h"
#include "propagation/Interface.h"
#include "radiation/Ray.h"

namespace {

constexpr const char* OUTER_LIMIT = "outerLimit";
// The pause after a sweep that found every untested interface busy.
constexpr int BUSY_PAUSE_MICROSECONDS = 1000;

// The sweeps over the interfaces of one task, with what they reuse from one interface to
// the next: the done flags and the sublist of rays that can reach a bounding sphere.
class FaceSweep {
public:
    explicit FaceSweep(TraceRaysTask& task)
        : task(task), faces(*task.interfaces), done(faces.size(), false) {
        candidates.reserve(static_cast<size_t>(std::max(0, task.last - task.first)));
    }

    void Run() {
        int outer = -1;
        for (;;) {
            bool worked = false;
            bool othersDone = true;
            for (size_t index = 0; index < faces.size(); index++) {
                if (done[index]) continue;
                Interface* face = faces[index];
                if (face == nullptr) {
                    done[index] = true;
                    continue;
                }
                if (face->TestName(OUTER_LIMIT)) {
                    outer = static_cast<int>(index);
                    continue;
                }
                if (face->isLocked()) {
                    othersDone = false;
                    continue;
                }
                TestFace(face);
                done[index] = true;
                worked = true;
            }
            if (othersDone && outer >= 0 && !done[outer]) {
                faces[outer]->TestRaysHit(task.rays, task.first, task.last);
                done[outer] = true;
                worked = true;
            }
            if (othersDone) return;
            if (!worked) USLEEP(BUSY_PAUSE_MICROSECONDS);
        }
    }

private:
    // The whole slice, or only the rays that can reach the interface's bounding sphere.
    void TestFace(Interface* face) {
        CoordQUICK sphereCentre;
        double radius = 0.0;
        if (!face->getCentreAndSize(sphereCentre, radius)) {
            face->TestRaysHit(task.rays, task.first, task.last);
            return;
        }
        candidates.clear();
        for (int i = task.first; i < task.last; i++) {
            Ray* ray = (*task.rays)[i];
            if (Interface::RayReachesSphere(ray, sphereCentre, radius)) candidates.push_back(ray);
        }
        if (!candidates.empty()) {
            face->TestRaysHit(&candidates, 0, static_cast<int>(candidates.size()));
        }
    }

    TraceRaysTask& task;
    std::vector<Interface*>& faces;
    std::vector<bool> done;
    std::vector<Ray*> candidates;
};

// The interfaces of the list by object id, for the rays to find theirs without a global
// look-up.
std::vector<std::pair<int, Interface*>> FacesById(const std::vector<Interface*>& faces) {
    std::vector<std::pair<int, Interface*>> byId;
    byId.reserve(faces.size());
    for (Interface* face : faces) {
        if (face != nullptr) byId.emplace_back(face->GetSimObjectID(), face);
    }
    std::sort(byId.begin(), byId.end());
    return byId;
}

Interface* FindFace(const std::vector<std::pair<int, Interface*>>& byId, int id) {
    auto found = std::lower_bound(byId.begin(), byId.end(), id,
                                  [](const auto& entry, int key) { return entry.first < key; });
    return found != byId.end() && found->first == id ? found->second : nullptr;
}

}  // namespace

void* TraceRaysToFacesTask(void* content) {
    auto* task = static_cast<TraceRaysTask*>(content);
    task->result = false;
    if (task->rays == nullptr || task->interfaces == nullptr) return nullptr;
    std::vector<Ray*>& rays = *task->rays;
    task->last = std::min(task->last, static_cast<int>(rays.size()));
    for (int i = task->first; i < task->last; i++) rays[i]->endInterfaceId = -1;

    FaceSweep(*task).Run();

    const auto byId = FacesById(*task->interfaces);
    for (int i = task->first; i < task->last; i++) {
        Ray* ray = rays[i];
        if (ray->endInterfaceId == -1) continue;
        Interface* face = FindFace(byId, ray->endInterfaceId);
        if (face == nullptr) continue;
        face->ReceiveRay(ray, nullptr);
        task->result = true;
    }
    return nullptr;
}
