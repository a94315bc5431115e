#include "propagation/Volume.h"

#include <algorithm>

#include "framework/NexoBase.h"
#include "logging/Log.h"
#include "propagation/TraceBeamTask.h"
#include "radiation/BeamQUICK.h"
#include "radiation/EMRadiation.h"

namespace {

// Beams go in parallel only with at least this many rays each, and two beams or more.
constexpr int PARALLEL_MIN_RAYS = 41;
constexpr int PARALLEL_MIN_BEAMS = 2;
// A forced parallel pass is for beams under this many rays, three beams or more.
constexpr int FORCED_MAX_RAYS = 500;
constexpr int FORCED_MIN_BEAMS = 3;

}  // namespace

std::map<int, Volume*> Volume::volumesById;
Lockable Volume::volumesLock;

Volume::Volume() { objTypeStr = "Volume"; }

Volume::~Volume() { Unregister(); }

bool Volume::Initialize() {
    Unregister();
    if (!Component::Initialize()) return false;
    Register();
    if (GetParameterp(PN_VOLTYP) == nullptr) SetParameterValue(PN_VOLTYP, PV_VOL_HOMOGENEOUS);
    if (GetParameterp(PN_COORDSYS) == nullptr) {
        SetParameterValue(PN_COORDSYS, PV_COORD_CYLINDRICAL);
    }
    if (GetParameterp(PN_RINDPROF) == nullptr) SetParameterValue(PN_RINDPROF, PV_REFINDEX_FLAT);
    if (GetParameterp(PN_RINDMIN) == nullptr) SetParameterValue(PN_RINDMIN, 249.0);
    if (GetParameterp(PN_RINDMAX) == nullptr) SetParameterValue(PN_RINDMAX, 250.0);
    // -1: rays are not stepped through the volume.
    if (GetParameterp(PN_VOLSTEPDIST) == nullptr) SetParameterValue(PN_VOLSTEPDIST, -1.0);
    return true;
}

bool Volume::Empty() {
    Faces::clear();
    beamIds.clear();
    radiationIds.clear();
    // The base deletes the children, these among them.
    centre = nullptr;
    axis = nullptr;
    axis2 = nullptr;
    return Component::Empty();
}

Volume* Volume::GetVolumeFromId(int id) {
    volumesLock.lock(true);
    auto entry = volumesById.find(id);
    Volume* volume = entry == volumesById.end() ? nullptr : entry->second;
    volumesLock.unlock();
    return volume;
}

void Volume::Register() {
    if (simObjectID < 0) return;
    volumesLock.lock(true);
    volumesById[simObjectID] = this;
    volumesLock.unlock();
}

void Volume::Unregister() {
    volumesLock.lock(true);
    auto entry = volumesById.find(simObjectID);
    if (entry != volumesById.end() && entry->second == this) volumesById.erase(entry);
    volumesLock.unlock();
}

bool Volume::AddInterface(Interface* face) {
    if (face == nullptr) {
        Log::log(1) << "Volume::AddInterface: no interface for " << objName << "\n";
        return false;
    }
    if (std::find(Faces::begin(), Faces::end(), face) != Faces::end()) return false;
    Faces::push_back(face);
    return true;
}

bool Volume::RemoveInterface(Interface* face) {
    auto entry = std::find(Faces::begin(), Faces::end(), face);
    if (entry == Faces::end()) return false;
    Faces::erase(entry);
    return true;
}

bool Volume::ReceiveBeam(BeamQUICK* beam) {
    if (beam == nullptr) return false;
    beamIds.push_back(beam->GetBeamId());
    beam->SetVolume(this);
    if (radiationIds.empty()) {
        auto* received = new EMRadiation();
        received->Initialize();
        AddChild(received);
        received->SetName("receivedRadiation");
        received->SetSaveToXML(false);
        received->setRayOrigin(false);
        received->SetVolume(this);
        radiationIds.push_back(received->GetSimObjectID());
    }
    auto* radiation = dynamic_cast<EMRadiation*>(GetObjectGlobally(radiationIds.front()));
    if (radiation == nullptr) {
        Log::log(1) << "Volume::ReceiveBeam: the radiation of " << objName << " has gone\n";
        return false;
    }
    return radiation->AddBeamRaysp(beam);
}

bool Volume::checkParams() {
    UpdateSize();
    return UpdateCentre();
}

bool Volume::ParallelBeams(int beams, int raysPerBeam) {
    eParamValue type = PV_VOL_HOMOGENEOUS;
    GetParameterValue(PN_VOLTYP, type);
    if (type != PV_VOL_HOMOGENEOUS) return false;
    ParallelSelect& select = NexoBase::parallelSelected;
    if (select.IsParallelForced(parallelVolumeTransmit) && raysPerBeam < FORCED_MAX_RAYS &&
        beams >= FORCED_MIN_BEAMS) {
        return true;
    }
    const bool wanted = raysPerBeam >= PARALLEL_MIN_RAYS && beams >= PARALLEL_MIN_BEAMS;
    return wanted && select.IsParallelAvailable(parallelVolumeTransmit) &&
           NexoBase::CanAddThreads();
}

bool Volume::TransmitRadiation(std::vector<EMRadiation*>* out) {
    lock(true);
    std::vector<int> held;
    held.swap(beamIds);
    unlock();
    if (held.empty()) return false;
    Log::log(4) << "Volume::TransmitRadiation " << objName << ": " << held.size() << " beams\n";

    long totalRays = 0;
    for (int id : held) {
        BeamQUICK* beam = GETBEAM(id);
        if (beam != nullptr) totalRays += beam->GetRaysCount();
    }
    const int count = static_cast<int>(held.size());
    const bool parallel = ParallelBeams(count, static_cast<int>(totalRays / count));

    NexoBase::ProcessTask** tasks = NexoBase::NewTaskList(count);
    for (int i = 0; i < count; i++) {
        tasks[i] = new NexoBase::ProcessTask(new TraceBeamTask(held[i], static_cast<Faces*>(this)),
                                             BeamToFaces);
    }
    if (parallel) {
        NexoBase::ThreadedProcessTasks(tasks, count);
    } else {
        for (int i = 0; i < count; i++) tasks[i]->function(tasks[i]->content);
    }
    bool traced = false;
    for (int i = 0; i < count; i++) {
        traced = static_cast<TraceBeamTask*>(tasks[i]->content)->result || traced;
    }
    NexoBase::DeleteTasks(tasks, count);
    ReportRadiation(out);
    return traced;
}

void Volume::ReportRadiation(std::vector<EMRadiation*>* out) {
    if (out == nullptr) return;
    for (int id : radiationIds) {
        auto* radiation = dynamic_cast<EMRadiation*>(GetObjectGlobally(id));
        if (radiation == nullptr) continue;
        if (std::find(out->begin(), out->end(), radiation) == out->end()) {
            out->push_back(radiation);
        }
    }
}

int Volume::CountReceivedRadiation() {
    lock(true);
    const int count = static_cast<int>(beamIds.size());
    unlock();
    return count;
}

bool Volume::ClearReceivedRadiation() {
    lock(true);
    bool had = !beamIds.empty();
    beamIds.clear();
    for (int id : radiationIds) {
        auto* radiation = dynamic_cast<EMRadiation*>(GetObjectGlobally(id));
        if (radiation == nullptr) continue;
        had = had || radiation->GetBeamRaysCount() > 0;
        // Empty deletes the beams; the received radiation holds nothing else of value.
        radiation->Empty();
    }
    unlock();
    return had;
}
