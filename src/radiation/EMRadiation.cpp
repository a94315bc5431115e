#include "radiation/EMRadiation.h"

#include <algorithm>
#include <atomic>

#include "geometry/Direction.h"
#include "logging/Log.h"
#include "propagation/Interface.h"
#include "propagation/Volume.h"
#include "radiation/Beam.h"
#include "radiation/BeamQUICK.h"
#include "radiation/LaunchParameters.h"

namespace {

constexpr const char* TYPE = "EMRadiation";

// Radiation ids are unique in the process, and never reused.
std::atomic<int> nextRadId{0};

}  // namespace

EMRadiation::EMRadiation() : radId(nextRadId++) { objTypeStr = TYPE; }

EMRadiation::~EMRadiation() { DeleteBeams(); }

void EMRadiation::DeleteBeams() {
    // A beam may have gone with the table already.
    for (int id : beamIds) delete GETBEAM(id);
    beamIds.clear();
    tracedBeamIds.clear();
}

void EMRadiation::DeleteLaunches() {
    for (Beam* beam : beams) RemoveChild(beam, true);
    beams.clear();
}

Beam* EMRadiation::AddLaunch() {
    auto* beam = new Beam();
    beam->Initialize();
    AddChild(beam);
    beam->SetName("beam");
    beams.push_back(beam);
    return beam;
}

bool EMRadiation::Empty() {
    DeleteBeams();
    beams.clear();
    interfaces.clear();
    return Component::Empty();
}

bool EMRadiation::FromXml(CElement* element) {
    if (!Component::FromXml(element)) return false;
    DeleteLaunches();
    LoadVectorByType(&beams, element, "Beam");
    return true;
}

bool EMRadiation::CheckEq(Component* other) {
    auto* theirs = dynamic_cast<EMRadiation*>(other);
    if (theirs == nullptr || !Component::CheckEq(other)) return false;
    if (GetBeamRaysCount() != theirs->GetBeamRaysCount() ||
        GetRayCount() != theirs->GetRayCount() || GetTestRayCount() != theirs->GetTestRayCount()) {
        Log::log(1) << "EMRadiation::CheckEq - the beams of " << objName << " differ\n";
        return false;
    }
    return true;
}

bool EMRadiation::QuickSetToChildren(bool force) {
    DeleteLaunches();
    Beam* beam = AddLaunch();
    PassParameters(LAUNCH_PARAMETERS, this, beam);
    Component::PassParameter(PN_LMDA, this, beam, PN_LMDA);
    PassParameters(BEAM_SHAPE_PARAMETERS, this, beam);
    return beam->QuickSetToChildren(force);
}

void EMRadiation::Print() {
    Log::log(4) << "EMRadiation " << objName << " of " << sourceName << ": " << GetBeamsCount()
                << " layouts, " << GetBeamRaysCount() << " beams\n";
    Component::Print();
}

void EMRadiation::PrintRays() {
    for (int id : beamIds) {
        BeamQUICK* beam = GETBEAM(id);
        if (beam != nullptr) beam->Print();
    }
}

bool EMRadiation::Copy(EMRadiation* other) {
    if (other == nullptr || other == this) return false;
    DeleteLaunches();
    DeleteBeams();
    PassAllParameters(other, this);
    for (Beam* launch : other->beams) AddLaunch()->Copy(*launch);
    radPattern = other->radPattern;
    useTriRays = other->useTriRays;
    sourceName = other->sourceName;
    interfaces = other->interfaces;
    volume = other->volume;
    for (int id : other->beamIds) {
        BeamQUICK* theirs = GETBEAM(id);
        if (theirs == nullptr) continue;
        auto* mine = new BeamQUICK();
        mine->Copy(*theirs);
        mine->SetSourceName(theirs->GetSourceName());
        AddBeamRaysp(mine);
    }
    return true;
}

bool EMRadiation::LoadFromRayLayouts() {
    Log::log(4) << "EMRadiation::LoadFromRayLayouts - start\n";
    DeleteBeams();
    for (Beam* launch : beams) {
        Log::log(4) << "EMRadiation::LoadFromRayLayouts - beam " << launch->GetName() << "\n";
        launch->SetUseTriRays(useTriRays);
        if (radPattern != nullptr) launch->SetRadiationPattern(radPattern);
        auto* beam = new BeamQUICK();
        launch->LoadRaysFromLayout(beam);
        AddBeamRaysp(beam);
        beam->SetVolume(volume);
        beam->SetSourceName(sourceName);
    }
    return true;
}

int EMRadiation::GetTestRayCount() {
    int count = 0;
    for (int id : beamIds) {
        BeamQUICK* beam = GETBEAM(id);
        if (beam != nullptr) count += beam->GetTestRaysCount();
    }
    return count;
}

int EMRadiation::GetRayCount() {
    int count = 0;
    for (int id : beamIds) {
        BeamQUICK* beam = GETBEAM(id);
        if (beam != nullptr) count += beam->GetRaysCount();
    }
    return count;
}

bool EMRadiation::GetDirection(Direction& out) {
    Direction sum(3);
    bool found = false;
    for (Beam* launch : beams) {
        Direction* axis = launch->GetLayoutDirection();
        if (axis == nullptr) continue;
        sum += *axis;
        found = true;
    }
    if (found) out.Copy(sum);
    return found;
}

bool EMRadiation::SetVolume(Volume* newVolume) {
    volume = newVolume;
    for (int id : beamIds) {
        BeamQUICK* beam = GETBEAM(id);
        if (beam != nullptr) beam->SetVolume(newVolume);
    }
    return true;
}

bool EMRadiation::AddInterfaceInLine(Interface* face) {
    if (face != nullptr) interfaces.push_back(face);
    return true;
}

bool EMRadiation::TransmitToInterfaces(std::vector<Interface*>* list) {
    std::vector<Interface*>& faces = list != nullptr ? *list : interfaces;
    std::vector<Interface*> told;
    bool hit = false;
    for (int id : beamIds) {
        BeamQUICK* beam = GETBEAM(id);
        if (beam == nullptr) continue;
        if (std::find(tracedBeamIds.begin(), tracedBeamIds.end(), id) != tracedBeamIds.end()) {
            continue;
        }
        tracedBeamIds.push_back(id);
        hit = RaysToInterfaces(*beam->GetTestRaysp(), faces, true, told) || hit;
        hit = RaysToInterfaces(*beam->GetRaysp(), faces, false, told) || hit;
    }
    if (list == nullptr) interfaces.clear();
    return hit;
}

bool EMRadiation::RaysToInterfaces(std::map<int, Ray*>& list, std::vector<Interface*>& faces,
                                   bool test, std::vector<Interface*>& told) {
    bool hit = false;
    for (auto& entry : list) {
        Ray* ray = entry.second;
        Interface* nearest = nullptr;
        double best = -1.0;
        for (Interface* face : faces) {
            if (face == nullptr) continue;
            const double d = face->TestRayHit(ray, -1.0);
            // A new nearest must be closer by more than the tolerance.
            if (d > 1e-10 && (nearest == nullptr || d < best - 1e-10)) {
                nearest = face;
                best = d;
            }
        }
        if (nearest == nullptr) continue;
        ray->SetLength(best);
        if (std::find(told.begin(), told.end(), nearest) == told.end()) {
            nearest->NextRadiation(radId);
            told.push_back(nearest);
        }
        if (test) {
            nearest->ReceiveTestRay(ray);
        } else {
            nearest->ReceiveRay(ray, nullptr);
        }
        hit = true;
    }
    return hit;
}

bool EMRadiation::InitializeLayout() {
    bool done = true;
    for (Beam* launch : beams) done = launch->InitializeLayout() && done;
    return done;
}

void EMRadiation::setRayOrigin(bool value) {
    rayOrigin = value;
    for (int id : beamIds) {
        BeamQUICK* beam = GETBEAM(id);
        if (beam != nullptr) beam->setRayOrigin(value);
    }
}

bool EMRadiation::PassName(const std::string& name) {
    sourceName = name;
    return true;
}

bool EMRadiation::AddBeamRaysp(BeamQUICK* beam) {
    if (beam == nullptr) return false;
    beamIds.push_back(beam->GetBeamId());
    beam->setRayOrigin(rayOrigin);
    return true;
}
