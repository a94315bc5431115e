// The stages of a trace that pass radiation between the children of an optic element.
#include "control/InterfaceToVolumeTask.h"
#include "control/OpticElement.h"
#include "control/TraceVolumeTask.h"
#include "logging/Log.h"
#include "propagation/Interface.h"
#include "propagation/Volume.h"
#include "radiation/EMRadiation.h"
#include "radiation/EMSource.h"

namespace {

// More items than this make a stage worth running in parallel.
constexpr int PARALLEL_MIN_ITEMS = 2;

// Runs the tasks on worker threads, or one after another on this thread.
void RunTasks(NexoBase::ProcessTask** tasks, int count, bool parallel) {
    if (parallel) {
        NexoBase::ThreadedProcessTasks(tasks, count);
        return;
    }
    for (int i = 0; i < count; i++) tasks[i]->function(tasks[i]->content);
}

}  // namespace

bool OpticElement::RunParallel(eParallelSection section, int count) {
    ParallelSelect& select = NexoBase::parallelSelected;
    const bool worthIt = count > PARALLEL_MIN_ITEMS;
    if (select.IsParallelForced(section) && worthIt) return true;
    return select.IsParallelAvailable(section) && worthIt && NexoBase::CanAddThreads();
}

bool OpticElement::ResetDetection() {
    bool cleared = true;
    for (Interface* face : static_cast<Interfaces&>(*this)) {
        cleared = face->ClearDetection() && cleared;
    }
    return cleared;
}

bool OpticElement::InitialTransmit(bool value) {
    bool armed = true;
    for (EMSource* source : static_cast<Sources&>(*this)) {
        armed = source->InitialTransmit(value) && armed;
    }
    return armed;
}

bool OpticElement::TransmitSourceToVolume() {
    if (ReadOr(PN_RPATAPP_ARRAY, false) && GetLayoutPositionCount() > 1) SetLayoutPosition(0);
    bool launched = false;
    for (EMSource* source : static_cast<Sources&>(*this)) {
        launched = source->TransmitRadiation() || launched;
    }
    return launched;
}

bool OpticElement::TransmitVolumeToInterface(std::vector<EMRadiation*>* out) {
    std::vector<int> active;
    for (Volume* volume : static_cast<Volumes&>(*this)) {
        if (volume->CountReceivedRadiation() > 0) active.push_back(volume->GetSimObjectID());
    }
    lastVolumeTaskCount = 0;
    if (active.empty()) return false;
    const int count = static_cast<int>(active.size());
    const bool parallel = RunParallel(parallelVolumeToInterface, count);
    const int taskCount = parallel ? count : 1;
    NexoBase::ProcessTask** tasks = NexoBase::NewTaskList(taskCount);
    if (parallel) {
        for (int i = 0; i < count; i++) {
            auto* task = new TraceVolumeTask({active[i]}, nullptr);
            if (out != nullptr) task->out = &task->own;
            tasks[i] = new NexoBase::ProcessTask(task, TraceVolumeToFacesTask);
        }
    } else {
        tasks[0] =
            new NexoBase::ProcessTask(new TraceVolumeTask(active, out), TraceVolumeToFacesTask);
    }
    RunTasks(tasks, taskCount, parallel);
    bool traced = false;
    for (int i = 0; i < taskCount; i++) {
        auto* task = static_cast<TraceVolumeTask*>(tasks[i]->content);
        traced = task->result || traced;
        if (parallel && out != nullptr) out->insert(out->end(), task->own.begin(), task->own.end());
    }
    NexoBase::DeleteTasks(tasks, taskCount);
    lastVolumeTaskCount = taskCount;
    return traced;
}

void* OpticElement::TraceVolumeToFacesTask(void* content) {
    auto* task = static_cast<TraceVolumeTask*>(content);
    for (int id : task->volumeIds) {
        Volume* volume = Volume::GetVolumeFromId(id);
        if (volume != nullptr) task->result = volume->TransmitRadiation(task->out) || task->result;
    }
    return nullptr;
}

bool OpticElement::TransmitInterfaceToVolume() {
    const Interfaces& faces = *this;
    const int count = static_cast<int>(faces.size());
    if (count == 0) return false;
    const bool parallel = RunParallel(parallelInterfaceToVolume, count);
    NexoBase::ProcessTask** tasks = NexoBase::NewTaskList(count);
    for (int i = 0; i < count; i++) {
        tasks[i] = new NexoBase::ProcessTask(new InterfaceToVolumeTask(faces[i]),
                                             TraceInterfaceToVolumeTask);
    }
    RunTasks(tasks, count, parallel);
    bool passed = false;
    for (int i = 0; i < count; i++) {
        passed = static_cast<InterfaceToVolumeTask*>(tasks[i]->content)->result || passed;
    }
    NexoBase::DeleteTasks(tasks, count);
    return passed;
}

void* OpticElement::TraceInterfaceToVolumeTask(void* content) {
    auto* task = static_cast<InterfaceToVolumeTask*>(content);
    task->result = task->face->TransmitRadiation();
    return nullptr;
}

double OpticElement::TestRay(Ray* ray) {
    Log::log(4) << "OpticElement::TestRay(Ray * rayIn)\n";
    double nearest = -1.0;
    for (Interface* face : static_cast<Interfaces&>(*this)) {
        Log::log(4) << "interfaceIt\n";
        const double distance = face->TestRayHit(ray, -1);
        if (distance > 1e-10 && (nearest < 0.0 || distance < nearest)) nearest = distance;
    }
    return nearest;
}

bool OpticElement::ClearReceivedRadiation() {
    Log::log(4) << "OpticElement::ClearReceivedRadiation()\n";
    bool held = false;
    for (Interface* face : static_cast<Interfaces&>(*this)) {
        held = face->ClearReceivedRadiation(true) || held;
    }
    for (Volume* volume : static_cast<Volumes&>(*this)) {
        held = volume->ClearReceivedRadiation() || held;
    }
    for (EMSource* source : static_cast<Sources&>(*this)) {
        held = source->GetRadiation()->GetBeamRaysCount() > 0 || held;
    }
    return held;
}
