#include "propagation/Volume.h"

#include <algorithm>

#include "logging/Log.h"
#include "radiation/BeamQUICK.h"
#include "radiation/EMRadiation.h"

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
