#include "control/OpticElement.h"

#include <algorithm>
#include <set>

#include "control/BatchEvent.h"
#include "geometry/Coordinates.h"
#include "geometry/Layout.h"
#include "logging/Log.h"
#include "propagation/Barrier.h"
#include "propagation/CityPart.h"
#include "propagation/FreqResponse.h"
#include "propagation/FreqResponseArray.h"
#include "propagation/Interface.h"
#include "propagation/Tunnel.h"
#include "propagation/Volume.h"
#include "propagation/WayLine.h"
#include "radiation/EMReceiver.h"
#include "radiation/EMSource.h"
#include "radiation/Medium.h"
#include "radiation/TestPoint.h"
#include "radiation/TraceVolume.h"

SimulationResources OpticElement::resources;
const char* const OpticElement::_barFloorName = "floorBarrier";
const char* const OpticElement::_barCeilingName = "ceilingBarrier";
std::map<int, OpticElement*> OpticElement::opticElementMap;

const std::vector<eParamName> OpticElement::volumeProfileParameters = {
    PN_VOLTYP,      PN_RINDPROF,   PN_RINDMIN,       PN_RINDMAX,
    PN_RINDPEAKWID, PN_RINDOFFSET, PN_RINDPROFPARAM, PN_VOLSTEPDIST,
};

const std::vector<eParamName> OpticElement::volumeShapeParameters = {
    PN_OBJSHAP, PN_SIZ,    PN_SHAPRATIO1, PN_SHAPRATIO2, PN_SHAPRATIO3,    PN_WID,
    PN_BASE,    PN_BARHGT, PN_VOLPROPMDL, PN_VOLPROPEXP, PN_TRACERENDERAS,
};

namespace {

// What a new wall takes from the element, besides its points.
const std::vector<eParamName> kWallParameters = {
    PN_TRCMIN,    PN_SCLL,        PN_MED,       PN_BARBSE,       PN_BARHGT,     PN_THICKNESS,
    PN_REFLECT,   PN_TRANSMIT,    PN_BARTYPE,   PN_BARREFMDL,    PN_BARREFSPAR, PN_BARREFALPAR,
    PN_BARTRNMDL, PN_BARLOSMDL,   PN_BARDIFMDL, PN_BARDIFANGDEP, PN_BARDIFEXP,  PN_RAYGAP,
    PN_DIFFANG,   PN_ORIENTATION, PN_SHOW,      PN_WHOWAS,       PN_COLOR,      PN_BRGHT,
};

// What a new city block takes from the element, besides its points.
const std::vector<eParamName> kBlockParameters = {
    PN_MED,          PN_BARBSE,     PN_BARHGT,      PN_THICKNESS, FLMAT,        FLTHK,
    CEMAT,           CETHK,         PN_TRCMIN,      PN_SCLL,      PN_REFLECT,   PN_TRANSMIT,
    PN_BARREFMDL,    PN_BARREFSPAR, PN_BARREFALPAR, PN_BARTRNMDL, PN_BARLOSMDL, PN_BARDIFMDL,
    PN_BARDIFANGDEP, PN_BARDIFEXP,  PN_RAYGAP,      PN_DIFFANG,   PN_SHOW,      PN_WHOWAS,
    PN_COLOR,        PN_BRGHT,
};

// What a new source takes from the element: the launch, then the pattern.
const std::vector<eParamName> kSourceLaunchParameters = {
    PN_SRCSIZ,  PN_GAINTX,  PN_RPATAX,  PN_RAYGAP, PN_HPBWH,    PN_HPBWV,
    PN_GAINMIN, PN_GAINROT, PN_GAINTLT, PN_FREQ,   PN_FREQBAND, PN_FREQCHAN,
    PN_LMDA,    PN_PWRWATT, PN_TRLIM,   PN_REFLIM, PN_TRANLIM,
};
const std::vector<eParamName> kSourcePatternParameters = {
    PN_RPFIL, PN_RPAT,    PN_RPATAPP_SRC, PN_RPATAPP_TORAYS, PN_RENDRAD,
    PN_SCA,   PN_RPATRES, PN_RPATCOLOR,   PN_TRACERENDERAS,
};

template <typename T>
bool Erase(std::vector<T*>& handles, T* item) {
    auto found = std::find(handles.begin(), handles.end(), item);
    if (found == handles.end()) return false;
    handles.erase(found);
    return true;
}

// Copies the points, as given, into a list the structures take.
template <typename S>
void AddPoints(S* structure, const std::vector<Coordinates*>& points) {
    for (Coordinates* point : points) {
        if (point != nullptr) structure->AddPoint(*point);
    }
}

}  // namespace

OpticElement::OpticElement() { objTypeStr = "OpticElement"; }

OpticElement::~OpticElement() {
    // Faces leave the volumes that may outlive this element, such as the surrounding one.
    RemoveInterfaces();
    delete wallResponse;
    delete floorResponse;
    delete ceilingResponse;
    ReleaseSurroundingVolume();
}

void OpticElement::ClearHandles() {
    Interfaces::clear();
    Sources::clear();
    Receivers::clear();
    TestPoints::clear();
    Volumes::clear();
    Importers::clear();
    Solvers::clear();
    TraceVolumes::clear();
    Barriers::clear();
    WayLines::clear();
    Tunnels::clear();
    CityParts::clear();
}

bool OpticElement::Empty() {
    // Faces leave the volumes that outlive them, such as the surrounding one.
    RemoveInterfaces();
    ClearHandles();
    return Component::Empty();
}

bool OpticElement::Initialize() {
    resources.init();
    return Component::Initialize();
}

void OpticElement::Print() {
    Log::log(4) << "OpticElement " << objName << ": type " << elementType << ", "
                << Interfaces::size() << " interfaces, " << Volumes::size() << " volumes, "
                << Sources::size() << " sources, " << TestPoints::size() << " test points, "
                << Barriers::size() << " barriers, " << CityParts::size() << " city parts\n";
    Component::Print();
}

void OpticElement::PassParameters(const std::vector<eParamName>& names, Component* to) {
    for (eParamName name : names) PassParameter(name, this, to, name);
}

// Children.

std::string OpticElement::NextFreeName(const std::string& prefix) {
    std::set<std::string> used;
    for (SimObject* child : LiveChildren()) used.insert(child->GetName());
    int number = 0;
    while (used.count(prefix + std::to_string(number)) > 0) number++;
    return prefix + std::to_string(number);
}

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

TestPoint* OpticElement::AddTestPoint(Coordinates* position, bool inTraceVolume, const char* name) {
    auto* point = new TestPoint();
    TestPoints::push_back(point);
    point->Initialize();
    AddChild(point);
    InitWithWaylines(point);
    point->SetInTraceVolume(inTraceVolume);
    point->SetName(name != nullptr ? std::string(name) : NextFreeName("testPoint"));
    point->SetQuickParameterValue(PN_TYP, PV_POINT);
    PassParameter(PN_RXSIZ, this, point, PN_RXSIZ);
    point->SetQuickParameterValue(PN_RXPWR, -20.0, PU_DB, PM_NON);
    PassParameter(PN_GAINRX, this, point, PN_GAINRX);
    point->checkParams();
    point->setQuickSet(true);
    point->QuickSetToChildren(true);
    if (position != nullptr) MoveSimObject(point, position);
    return point;
}

EMSource* OpticElement::AddEMSource(Coordinates* position) {
    auto* source = new EMSource();
    Sources::push_back(source);
    AddChild(source);
    source->Initialize();
    InitWithWaylines(source);
    source->SetName(NextFreeName("source"));
    if (position != nullptr) MoveSimObject(source, position);
    source->setQuickSet(true);
    source->ApplyTransformation(true);
    source->SetQuickParameterValue(PN_TYP, PV_POINT);
    source->SetQuickParameterValue(PN_SIZ, 1.0);
    const eParamNumber dimensions = ReadOr(PN_TRACEDIM, PNUM_NONE);
    if (dimensions == DIMENSIONS_2D) {
        source->SetQuickParameterValue(PN_ARRSHA, PV_CIRCLEEMPTY);
        source->SetQuickParameterValue(PN_ANG, 180.0);
    } else if (dimensions == DIMENSIONS_3D) {
        source->SetQuickParameterValue(PN_ARRSHA, PV_CIRCLEFULL);
        source->SetQuickParameterValue(PN_ANG, 360.0);
    }
    source->SetQuickParameterValue(PN_SRCSIZ, 5.0);
    PassParameters(kSourceLaunchParameters, source);
    source->SetQuickParameterValue(PN_TRAT, 0.0);
    PassParameters(kSourcePatternParameters, source);
    source->setQuickSet(true);
    source->QuickSetToChildren(true);
    if (ReadOr(PN_TRACERENDERAS, PV_EMPTY) == PV_HEATMAP) {
        ExpandTraceVolume(true);
        for (TraceVolume* grid : static_cast<TraceVolumes&>(*this)) {
            PassParameter(PN_TRACECHAN, this, grid, PN_TRACECHAN);
        }
    }
    UpdateLayerOptions();
    return source;
}

Barrier* OpticElement::AddBarrier(const std::string& name, int barrierType) {
    if (auto* old = dynamic_cast<Barrier*>(GetChildNamed(name))) RemoveBarrier(old);
    auto* barrier = new Barrier();
    barrier->Initialize();
    Barriers::push_back(barrier);
    AddChild(barrier);
    barrier->SetName(name);

    double thickness = 0.1;
    std::string medium;
    FreqResponseArray* response = wallResponse;
    if (barrierType == barrierFloor) {
        GetParameterValue(FLTHK, thickness);
        GetParameterValue(FLMAT, medium);
        response = floorResponse;
    } else if (barrierType == barrierCeiling) {
        GetParameterValue(CETHK, thickness);
        GetParameterValue(CEMAT, medium);
        PassParameter(PN_HEIGHT, this, barrier, PN_HEIGHT);
        response = ceilingResponse;
    } else {
        GetParameterValue(PN_MED, medium);
        GetParameterValue(PN_THICKNESS, thickness);
    }
    if (ReadOr(PN_BARLOSMDL, PV_EMPTY) == PV_LOSS_DB) passLossValues(response, barrier);
    barrier->SetQuickParameterValue(PN_THICKNESS, thickness);
    for (eParamName limit : {PN_XMIN, PN_XMAX, PN_YMIN, PN_YMAX, PN_SIZ}) {
        PassParameter(limit, this, barrier, limit);
    }
    if (!medium.empty()) barrier->SetQuickParameterValue(PN_MED, medium);
    barrier->SetQuickParameterValue(PN_BARLOSMDL, PV_LOSS_THIN);
    barrier->SetQuickParameterValue(PN_ORIENTATION, PV_ORIENT_HORIZONTAL);
    barrier->SetQuickParameterValue(PN_RDET, PV_RES_VERYLOW);
    barrier->SetQuickParameterValue(PN_BRGHT, 0.4);
    return barrier;
}

Barrier* OpticElement::AddBarrier(const std::vector<Coordinates*>& points) {
    auto* barrier = new Barrier();
    barrier->Initialize();
    PassParameters(kWallParameters, barrier);
    if (ReadOr(PN_BARLOSMDL, PV_EMPTY) == PV_LOSS_DB) passLossValues(wallResponse, barrier);
    Barriers::push_back(barrier);
    AddChild(barrier);
    barrier->SetName(NextFreeName("barrier"));
    AddPoints(barrier, points);
    barrier->QuickSetToChildren(true);
    return barrier;
}

CityPart* OpticElement::AddCityPart(const std::vector<Coordinates*>& points) {
    auto* part = new CityPart();
    part->Initialize();
    PassParameters(kBlockParameters, part);
    if (ReadOr(PN_BARLOSMDL, PV_EMPTY) == PV_LOSS_DB) passLossValues(wallResponse, part);
    CityParts::push_back(part);
    AddChild(part);
    part->SetName(NextFreeName("cityPart"));
    AddPoints(part, points);
    part->QuickSetToChildren(true);
    return part;
}

WayLine* OpticElement::AddWayline(const std::vector<Coordinates*>& points) {
    auto* line = new WayLine();
    line->Initialize();
    WayLines::push_back(line);
    AddChild(line);
    line->SetName(NextFreeName("wayLine"));
    AddPoints(line, points);
    UpdateWaylineOptions();
    return line;
}

bool OpticElement::MoveSimObject(SimObject* object, Coordinates* position) {
    if (object == nullptr || position == nullptr) {
        Log::log(1) << "OpticElement::MoveSimObject: no object or no position\n";
        return false;
    }
    const double x = position->Get(0), y = position->Get(1), z = position->Get(2);
    if (auto* point = dynamic_cast<TestPoint*>(object)) return point->SetCentre(x, y, z);
    if (!object->InitLayout()) return false;
    Coordinates centre(x, y, z);
    object->GetLayout()->setToCentre(centre);
    object->GetLayout()->buildTransformations();
    return object->ApplyTransformation(true);
}

bool OpticElement::RemoveElement(SimObject* object) {
    if (object == nullptr) return false;
    if (auto* face = dynamic_cast<Interface*>(object)) return RemoveInterface(face);
    if (auto* point = dynamic_cast<TestPoint*>(object)) return RemoveTestPoint(point);
    if (auto* source = dynamic_cast<EMSource*>(object)) return RemoveEMSource(source);
    if (auto* barrier = dynamic_cast<Barrier*>(object)) return RemoveBarrier(barrier);
    if (auto* part = dynamic_cast<CityPart*>(object)) return RemoveCityPart(part);
    if (auto* line = dynamic_cast<WayLine*>(object)) return RemoveWayLine(line);
    if (auto* volume = dynamic_cast<Volume*>(object)) return RemoveVolume(volume);
    if (auto* grid = dynamic_cast<TraceVolume*>(object)) {
        Erase(static_cast<TraceVolumes&>(*this), grid);
        return RemoveChild(grid, true);
    }
    Erase(static_cast<Tunnels&>(*this), dynamic_cast<Tunnel*>(object));
    Erase(static_cast<Receivers&>(*this), dynamic_cast<EMReceiver*>(object));
    return RemoveChild(object, true);
}

bool OpticElement::RemoveInterface(Interface* face) {
    Erase(static_cast<Interfaces&>(*this), face);
    for (int id : {face->GetVolumeA(), face->GetVolumeB()}) {
        if (Volume* volume = Volume::GetVolumeFromId(id)) volume->RemoveInterface(face);
    }
    return RemoveChild(face, true);
}

void OpticElement::RemoveInterfaces() {
    Interfaces::clear();
    for (SimObject* child : LiveChildren()) {
        if (auto* face = dynamic_cast<Interface*>(child)) RemoveInterface(face);
    }
    // The faces that structures keep as handles are gone with them.
    for (SimObject* child : LiveChildren()) {
        if (auto* structure = dynamic_cast<Structure*>(child)) {
            static_cast<Structure::Faces&>(*structure).clear();
        }
    }
}

bool OpticElement::RemoveTestPoint(TestPoint* point) {
    if (point == nullptr) return false;
    Erase(static_cast<TestPoints&>(*this), point);
    return RemoveChild(point, true);
}

bool OpticElement::RemoveEMSource(EMSource* source) {
    if (source == nullptr) return false;
    Erase(static_cast<Sources&>(*this), source);
    return RemoveChild(source, true);
}

bool OpticElement::RemoveBarrier(Barrier* barrier) {
    if (barrier == nullptr) return false;
    Erase(static_cast<Barriers&>(*this), barrier);
    barrier->RemoveBuilt();
    return RemoveChild(barrier, true);
}

bool OpticElement::RemoveCityPart(CityPart* part) {
    if (part == nullptr) return false;
    Erase(static_cast<CityParts&>(*this), part);
    part->RemoveBuilt();
    return RemoveChild(part, true);
}

bool OpticElement::RemoveWayLine(WayLine* line) {
    if (line == nullptr) return false;
    Erase(static_cast<WayLines&>(*this), line);
    return RemoveChild(line, true);
}

bool OpticElement::RemoveVolume(Volume* volume) {
    if (volume == nullptr) return false;
    Erase(static_cast<Volumes&>(*this), volume);
    return RemoveChild(volume, true);
}

bool OpticElement::RemoveTraceVolume(bool withPoints) {
    bool removed = false;
    for (TraceVolume* grid : static_cast<TraceVolumes&>(*this)) {
        removed = RemoveChild(grid, true) || removed;
    }
    TraceVolumes::clear();
    for (SimObject* child : LiveChildren()) {
        if (auto* grid = dynamic_cast<TraceVolume*>(child)) {
            removed = RemoveChild(grid, true) || removed;
        }
    }
    if (!withPoints) return removed;
    const TestPoints points = *this;
    for (TestPoint* point : points) {
        if (point->IsInTraceVolume()) RemoveTestPoint(point);
    }
    return removed;
}

// Batch events.

bool OpticElement::ReceiveBatchEvent(const BatchEvent& event, std::vector<int>& ids) {
    std::vector<Coordinates> points(event.GetPoints().size());
    for (size_t i = 0; i < points.size(); i++) {
        if (!BatchEvent::ToCoordinates(event.GetPoints()[i], points[i])) {
            Log::log(1) << "OpticElement::ReceiveBatchEvent: point " << i << " of event "
                        << event.GetEvent() << " is not a position\n";
            return false;
        }
    }
    std::vector<Coordinates*> handles;
    for (Coordinates& point : points) handles.push_back(&point);
    SimObject* made = nullptr;
    switch (event.GetEvent()) {
        case BatchEvent::eventWall:
            made = AddBarrier(handles);
            break;
        case BatchEvent::eventBuilding:
            made = AddCityPart(handles);
            break;
        case BatchEvent::eventSource:
        case BatchEvent::eventTestPoint:
            if (handles.empty()) {
                Log::log(1) << "OpticElement::ReceiveBatchEvent: event " << event.GetEvent()
                            << " without a position\n";
                return false;
            }
            if (event.GetEvent() == BatchEvent::eventSource) {
                made = AddEMSource(handles.front());
            } else {
                made = AddTestPoint(handles.front(), false, nullptr);
            }
            break;
        default:
            Log::log(1) << "OpticElement::ReceiveBatchEvent: unknown event " << event.GetEvent()
                        << "\n";
            return false;
    }
    ids.push_back(made->GetSimObjectID());
    return true;
}

// Waylines.

bool OpticElement::InitWithWaylines(Component* object) {
    if (object == nullptr) return false;
    Parameter* onWayline = object->GetParameterp(PN_ONWLNE);
    if (onWayline == nullptr) return true;
    onWayline->ClearOptions();
    for (WayLine* line : static_cast<WayLines&>(*this)) onWayline->AddOption(line->GetName());
    return true;
}

bool OpticElement::UpdateWaylineOptions() {
    for (EMSource* source : static_cast<Sources&>(*this)) InitWithWaylines(source);
    for (TestPoint* point : static_cast<TestPoints&>(*this)) InitWithWaylines(point);
    return true;
}

bool OpticElement::MoveOnWayline(Component* object, double time) {
    std::string lineName;
    if (!object->GetParameterValue(PN_ONWLNE, lineName) || lineName.empty()) return false;
    auto* line = dynamic_cast<WayLine*>(GetChildNamed(lineName));
    if (line == nullptr) return false;
    double speed = 0.0, delay = 0.0;
    object->GetParameterValue(PN_SPD, speed);
    object->GetParameterValue(PN_DLY, delay);
    Coordinates position;
    if (!line->GetPointAtDistance(speed * std::max(0.0, time - delay), position)) return false;
    return MoveSimObject(object, &position);
}

bool OpticElement::UpdateMoveOnWayline(double time) {
    bool moved = false;
    for (EMSource* source : static_cast<Sources&>(*this)) {
        moved = MoveOnWayline(source, time) || moved;
    }
    for (TestPoint* point : static_cast<TestPoints&>(*this)) {
        moved = MoveOnWayline(point, time) || moved;
    }
    return moved;
}

bool OpticElement::UpdateLayerOptions() { return true; }

// Geographic centre.

bool OpticElement::GetGPSToXYZCentre(Coordinates& shift) {
    if (!gpsCentre.set) return false;
    shift.SetValues(-gpsCentre.x, -gpsCentre.y, -gpsCentre.z);
    return true;
}

void OpticElement::SetGPSToXYZCentre(const Coordinates& centre) {
    Coordinates copy(centre);
    gpsCentre = {true, copy.Get(0), copy.Get(1), copy.Get(2)};
}

// Loss tables.

FreqResponseArray* OpticElement::ReplaceResponse(FreqResponseArray*& table) {
    delete table;
    table = new FreqResponseArray();
    return table;
}

FreqResponseArray* OpticElement::NewWallResponse() { return ReplaceResponse(wallResponse); }
FreqResponseArray* OpticElement::NewFloorResponse() { return ReplaceResponse(floorResponse); }
FreqResponseArray* OpticElement::NewCeilingResponse() { return ReplaceResponse(ceilingResponse); }

bool OpticElement::passLossValues(FreqResponseArray* from, Structure* to) {
    if (from == nullptr || to == nullptr) {
        Log::log(1) << "OpticElement::passLossValues: no loss table or no structure\n";
        return false;
    }
    for (FreqResponse* entry : *from) {
        auto* copy = new FreqResponse();
        copy->Initialize();
        for (eParamName name : {PN_FREQ, PN_REFLOSS, PN_TRANSLOSS, PN_VOLLOSS}) {
            PassParameter(name, entry, copy, name);
        }
        to->AddChild(copy);
        copy->SetName(entry->GetName());
        to->FreqResponseArray::push_back(copy);
    }
    return true;
}
