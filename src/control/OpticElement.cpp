#include "control/OpticElement.h"

#include "geometry/Coordinates.h"
#include "logging/Log.h"
#include "propagation/Interface.h"
#include "propagation/Volume.h"

SimulationResources OpticElement::resources;

const std::vector<eParamName> OpticElement::volumeProfileParameters = {
    PN_VOLTYP,      PN_RINDPROF,   PN_RINDMIN,       PN_RINDMAX,
    PN_RINDPEAKWID, PN_RINDOFFSET, PN_RINDPROFPARAM, PN_VOLSTEPDIST,
};

const std::vector<eParamName> OpticElement::volumeShapeParameters = {
    PN_OBJSHAP, PN_SIZ,    PN_SHAPRATIO1, PN_SHAPRATIO2, PN_SHAPRATIO3,    PN_WID,
    PN_BASE,    PN_BARHGT, PN_VOLPROPMDL, PN_VOLPROPEXP, PN_TRACERENDERAS,
};

const char* const OpticElement::_barFloorName = "floorBarrier";
const char* const OpticElement::_barCeilingName = "ceilingBarrier";
std::map<int, std::string> OpticElement::newElementNames;
std::map<int, OpticElement*> OpticElement::opticElementMap;
bool OpticElement::namesSet = false;

OpticElement::OpticElement() { objTypeStr = "OpticElement"; }

OpticElement::~OpticElement() = default;

bool OpticElement::Empty() {
    Interfaces::clear();
    Volumes::clear();
    return Component::Empty();
}

bool OpticElement::FromXml(CElement*) { return false; }
bool OpticElement::QuickSetToChildren(bool) { return false; }
bool OpticElement::QuickSetFromChildren() { return false; }
bool OpticElement::Initialize() { return Component::Initialize(); }
void OpticElement::Print() { Component::Print(); }
bool OpticElement::RebuildPart(bool) { return false; }
bool OpticElement::RebuildSystem(bool) { return false; }
bool OpticElement::ExpandTraceVolume(bool) { return false; }
bool OpticElement::ExpandBuildings() { return false; }
bool OpticElement::ExpandBarriers() { return false; }
bool OpticElement::ExpandSources(bool) { return false; }
bool OpticElement::AddOuterInterface() { return false; }
bool OpticElement::SetupNewElement(int, OpticElement*) { return false; }
void OpticElement::SetNewNameStrings() {}
std::string OpticElement::GetNewElementName(int) { return ""; }
int OpticElement::GetNewElementIndex(const std::string&) { return -1; }
bool OpticElement::setLossValues(FreqResponseArray*, int) { return false; }
bool OpticElement::passLossValues(FreqResponseArray*, Structure*) { return false; }
bool OpticElement::InitWithWaylines(Component*) { return false; }
bool OpticElement::UpdateWaylineOptions() { return false; }
bool OpticElement::UpdateMoveOnWayline(double) { return false; }
bool OpticElement::UpdateLayerOptions() { return true; }
bool OpticElement::GetGPSToXYZCentre(Coordinates&) { return false; }
void OpticElement::SetGPSToXYZCentre(const Coordinates&) {}
TestPoint* OpticElement::AddTestPoint(Coordinates*, bool, const char*) { return nullptr; }
EMSource* OpticElement::AddEMSource(Coordinates*) { return nullptr; }
Barrier* OpticElement::AddBarrier(const std::string&, int) { return nullptr; }
Barrier* OpticElement::AddBarrier(const std::vector<Coordinates*>&) { return nullptr; }
CityPart* OpticElement::AddCityPart(const std::vector<Coordinates*>&) { return nullptr; }
WayLine* OpticElement::AddWayline(const std::vector<Coordinates*>&) { return nullptr; }
bool OpticElement::MoveSimObject(SimObject*, Coordinates*) { return false; }
bool OpticElement::RemoveElement(SimObject*) { return false; }
bool OpticElement::RemoveTestPoint(TestPoint*) { return false; }
bool OpticElement::RemoveEMSource(EMSource*) { return false; }
bool OpticElement::RemoveBarrier(Barrier*) { return false; }
bool OpticElement::RemoveCityPart(CityPart*) { return false; }
bool OpticElement::RemoveWayLine(WayLine*) { return false; }
bool OpticElement::RemoveVolume(Volume*) { return false; }
bool OpticElement::RemoveTraceVolume(bool) { return false; }
bool OpticElement::ReceiveBatchEvent(const BatchEvent&, std::vector<int>&) { return false; }
bool OpticElement::ResetDetection() { return false; }
bool OpticElement::InitialTransmit(bool) { return false; }
bool OpticElement::TransmitSourceToVolume() { return false; }
bool OpticElement::TransmitVolumeToInterface(std::vector<EMRadiation*>*) { return false; }
bool OpticElement::TransmitInterfaceToVolume() { return false; }
double OpticElement::TestRay(Ray*) { return -1.0; }
bool OpticElement::ClearReceivedRadiation() { return false; }
void* OpticElement::TraceVolumeToFacesTask(void*) { return nullptr; }
void* OpticElement::TraceInterfaceToVolumeTask(void*) { return nullptr; }
bool OpticElement::RunParallel(eParallelSection, int) { return false; }
FreqResponseArray* OpticElement::NewWallResponse() { return nullptr; }
FreqResponseArray* OpticElement::NewFloorResponse() { return nullptr; }
FreqResponseArray* OpticElement::NewCeilingResponse() { return nullptr; }

Interface* OpticElement::AddInterface(const std::string& name) {
    auto* face = new Interface();
    Interfaces::push_back(face);
    face->Initialize();
    AddChild(face);
    face->SetName(name);
    face->SetAvailableVolumes(*static_cast<Volumes*>(this));
    return face;
}

Volume* OpticElement::AddVolume() {
    auto* volume = new Volume();
    Volumes::push_back(volume);
    AddChild(volume);
    volume->Initialize();
    volume->SetName("vol" + std::to_string(Volumes::size()));

    std::string mediumName;
    if (GetParameterValue(PN_MED, mediumName)) {
        Medium* medium = resources.GetMedium(mediumName);
        if (medium == nullptr) {
            Log::log(2) << "OpticElement::AddVolume: no medium \"" << mediumName << "\"\n";
        }
        volume->SetMedium(medium);
    }
    PassParameters(volumeProfileParameters, volume);
    volume->SetParameterValue(PN_COORDSYS, PV_COORD_SPHERICAL);
    auto* centre = new Coordinates(0.0, 0.0, 0.0);
    centre->Initialize();
    volume->AddChild(centre);
    centre->SetName("centre");
    PassParameters(volumeShapeParameters, volume);
    return volume;
}

void OpticElement::PassParameters(const std::vector<eParamName>& names, Component* to) {
    for (eParamName name : names) PassParameter(name, this, to, name);
}
