// The build of an optic element: the entry of every rebuild, a wireless system with its
// structures, sources, outer limit and trace volume, the load from a file, the links by name
// and the presets.
#include <algorithm>
#include <cmath>

#include "control/OpticElement.h"
#include "control/OpticSetup.h"
#include "documents/CElement.h"
#include "geometry/Coordinates.h"
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

std::map<int, std::string> OpticElement::newElementNames;
bool OpticElement::namesSet = false;

namespace {

constexpr double EARTH_RADIUS = 6371000.0;
constexpr double DEGREES_TO_RADIANS = 0.017453292519943295;

// What every city part takes from the system before it is rebuilt.
const std::vector<eParamName> kBuildingPassed = {
    PN_TRCMIN,    PN_SCLL,      PN_BARREFMDL, PN_BARREFSPAR,   PN_BARREFALPAR,
    PN_BARTRNMDL, PN_BARLOSMDL, PN_BARDIFMDL, PN_BARDIFANGDEP, PN_BARDIFEXP,
    PN_RAYGAP,    PN_DIFFANG,   PN_MED,
};

// What every barrier takes from the system; floor and ceiling never diffract, so they do
// not take the second list.
const std::vector<eParamName> kBarrierPassed = {
    PN_HEIGHT,     PN_TRCMIN,      PN_SCLL,      PN_BARTYPE,   PN_BARREFMDL,
    PN_BARREFSPAR, PN_BARREFALPAR, PN_BARTRNMDL, PN_BARLOSMDL,
};
const std::vector<eParamName> kBarrierDiffraction = {PN_BARDIFMDL, PN_BARDIFANGDEP, PN_BARDIFEXP};
const std::vector<eParamName> kBarrierSpread = {PN_RAYGAP, PN_DIFFANG};

// What a trace volume shows, as the system sets it.
const std::vector<eParamName> kTraceVolumeDisplay = {
    PN_COLSCA,   PN_RXPWRSCL,       PN_COLSCATYP,     PN_TRACECHAN,
    PN_TRACEDIM, PN_TRACELAYHEIGHT, PN_TRACERENDERAS,
};

// The loss tables of a system, by the name of their list in a file.
const char* const kWallTable = "FreqResponse(walls)";
const char* const kFloorTable = "FreqResponse(floor)";
const char* const kCeilingTable = "FreqResponse(ceiling)";
// A loss table is saved as a list element of this name, named after the table: the
// table's name has brackets, which an XML element name cannot hold.
const char* const kResponseList = "FreqResponseArray";

CElement* ResponseList(CElement* element, const char* table) {
    return element->findSubElementWithAttribute<const char*>(A_NAME, table);
}

// The presets by kind: the first index of each kind's range and its names in order.
struct PresetRange {
    int first;
    std::vector<const char*> names;
};
const PresetRange kPresetRanges[] = {
    {1,
     {"Point360deg", "Point180deg", "Point90deg", "Point45deg", "Point15deg", "Point5deg",
      "Point1deg", "PlanarSquare", "PlanarCircle", "PlanarLine", "PlanarCross", "Planar"}},
    {14, {"CVParabolic", "CVSpherical", "CXParabolic", "CXSpherical"}},
    {21,
     {"DCXParabolic", "DCXSpherical", "DCVParabolic", "DCVSpherical", "PCXParabolic",
      "PCXSpherical", "PCVParabolic", "PCVSpherical"}},
    {31,
     {"Circle2mm", "Circle10mm", "Circle25mm", "Circle100mm", "Square2mm", "Square10mm",
      "Square25mm", "Square100mm"}},
    {41, {"Sphere", "Cylinder", "Block"}},
    {46, {"3Dmodel", "Image"}},
    {50, {"Building", "urban city", "suburban city", "rural area", "tunnel"}},
    {57, {"detector"}},
    {60,
     {"FDTDVolume - 1um", "FDTDVolume - 10um", "FDTDVolume - 100um", "FDTDVolume - 1mm",
      "FDTDVolume - 10mm", "FDTDVolume - 100mm"}},
    {68,
     {"TraceVolume - 1mm", "TraceVolume - 10mm", "TraceVolume - 100mm", "TraceVolume - 1m",
      "TraceVolume - 10m", "TraceVolume - 100m"}},
};

// The preset function of each index range, as SetupNewElement chooses it.
struct SetupRange {
    int first;
    int last;
    bool (*setup)(int, OpticElement*);
};
const SetupRange kSetupRanges[] = {
    {1, 12, OpticSetup::SetupSource},      {14, 19, OpticSetup::SetupMirror},
    {21, 29, OpticSetup::SetupLens},       {31, 39, OpticSetup::SetupWaveguide},
    {41, 44, OpticSetup::SetupObject},     {46, 48, OpticSetup::SetupImporter},
    {50, 55, OpticSetup::SetupSystem},     {57, 58, OpticSetup::SetupDetector},
    {60, 66, OpticSetup::SetupFDTDVolume}, {68, 74, OpticSetup::SetupTRACEVolume},
};

// Default materials of the loss tables of a system, by edit option.
const std::map<int, eMedia> kLossMaterials = {
    {4, MEDIA_CONCRETE}, {23, MEDIA_FLOORBOARD}, {30, MEDIA_CEILINGBOARD}};

bool IsSystemKind(eParamValue systemType) {
    return systemType == PV_BUILDING || systemType == PV_URBAN_CITY ||
           systemType == PV_SUBURBAN_CITY;
}

bool IsPartKind(eParamValue type) {
    return (type >= 4 && type <= 9) || (type >= 22 && type <= 24) || type == PV_VOL_STEPPED;
}

// Adds the loaded objects of one kind to the handles of that kind.
template <typename T>
void CollectChildren(std::vector<SimObject*>& children, std::vector<T*>& handles) {
    for (SimObject* child : children) {
        if (auto* item = dynamic_cast<T*>(child)) handles.push_back(item);
    }
}

}  // namespace

bool OpticElement::QuickSetToChildren(bool force) {
    Log::log(4) << "OpticElement::QuickSetToChildren(bool force)\n";
    elementType = ReadOr(PN_TYP, elementType);
    if (force) RemoveInterfaces();
    if (force && elementType != PV_ELEM_SYSTEM) RemovePartChildren();

    int positions = 1;
    if (ReadOr(PN_RPATAPP_ARRAY, false) == false) positions = GetLayoutPositionCount();
    bool built = true;
    for (int i = 0; i < positions; i++) {
        if (positions > 1) SetLayoutPosition(i);
        SetWillRender(ReadOr(PN_SHOW, true));
        if (elementType == PV_ELEM_SYSTEM) {
            if (force) built = RebuildSystem(force) && built;
        } else if (IsPartKind(elementType)) {
            built = RebuildPart(force) && built;
        }
    }
    if (positions > 1) SetLayoutPosition(0);
    SetParamsWritten(true);
    return built;
}

bool OpticElement::RebuildSystem(bool force) {
    Log::log(4) << "OpticElement::RebuildSystem(bool force)\n";
    RemoveInterfaces();
    const std::string fileName = ReadOr(PN_FNAM, std::string());
    if (!fileName.empty()) {
        Log::log(2) << "OpticElement::RebuildSystem: import of \"" << fileName
                    << "\" is not available\n";
    }
    Volume* surrounding = SurroundingVolume();
    PassParameter(PN_TRACERENDERAS, this, surrounding, PN_TRACERENDERAS);

    const eParamValue systemType = ReadOr(PN_SYSTYP, PV_EMPTY);
    const bool threeD = ReadOr(PN_TRACEDIM, PNUM_NONE) == DIMENSIONS_3D;
    if (IsSystemKind(systemType)) {
        RemoveVolumes();
        if (systemType == PV_BUILDING && threeD) {
            AddBarrier(_barFloorName, barrierFloor);
            AddBarrier(_barCeilingName, barrierCeiling);
        }
        // A flat building keeps no floor or ceiling of an earlier three-dimensional build.
        if (systemType == PV_BUILDING && !threeD) {
            for (const char* name : {_barFloorName, _barCeilingName}) {
                if (auto* old = dynamic_cast<Barrier*>(GetChildNamed(name))) RemoveBarrier(old);
            }
        }
        if (systemType != PV_BUILDING) {
            Importers::clear();
            for (eParamName name : {PN_MDLBLD, PN_OSMFILE}) {
                const std::string source = ReadOr(name, std::string());
                if (!source.empty()) {
                    Log::log(2) << "OpticElement::RebuildSystem: street map \"" << source
                                << "\" is not available\n";
                }
            }
            if (ReadOr(PN_USETER, false)) {
                Log::log(2) << "OpticElement::RebuildSystem: terrain is not available\n";
            }
            if (threeD) AddBarrier(_barFloorName, barrierFloor);
            if (ReadOr(PN_USEOSM, false)) {
                Log::log(2) << "OpticElement::RebuildSystem: street map buildings are not "
                               "available\n";
            }
        }
        ExpandBuildings();
        ExpandBarriers();
        ExpandSources(force);
        AddOuterInterface();
        EMSource::CheckFrequency(this);
        ExpandTraceVolume(force);
    }
    if (ReadOr(PN_SOLVTYP, PV_EMPTY) == PV_SOLVER_FDTD) {
        Log::log(2) << "OpticElement::RebuildSystem: the fdtd solver is not available\n";
    }
    return true;
}

bool OpticElement::ExpandBuildings() {
    const double height = ReadOr(PN_HEIGHT, 2.0);
    SetQuickParameterValue(PN_HEIGHT, height, PU_M);
    for (CityPart* part : static_cast<CityParts&>(*this)) {
        PassParameters(kBuildingPassed, part);
        part->QuickSetToChildren(false);
    }
    return true;
}

bool OpticElement::ExpandBarriers() {
    bool built = true;
    for (Barrier* barrier : static_cast<Barriers&>(*this)) {
        PassParameters(kBarrierPassed, barrier);
        if (!barrier->TestName(_barFloorName) && !barrier->TestName(_barCeilingName)) {
            PassParameters(kBarrierDiffraction, barrier);
        }
        PassParameters(kBarrierSpread, barrier);
        built = barrier->QuickSetToChildren(true) && built;
    }
    return built;
}

bool OpticElement::ExpandSources(bool force) {
    bool built = true;
    for (EMSource* source : static_cast<Sources&>(*this)) {
        PassParameters({PN_TRLIM, PN_REFLIM, PN_TRANLIM}, source);
        built = source->QuickSetToChildren(force) && built;
    }
    return built;
}

bool OpticElement::AddOuterInterface() {
    if (GetParameterp(PN_SYSOUT) != nullptr && !ReadOr(PN_SYSOUT, true)) return true;
    auto* outer = dynamic_cast<Interface*>(GetChildNamed("outerLimit"));
    if (outer == nullptr) outer = AddInterface("outerLimit");
    outer->SetQuickParameterValue(PN_TYP, PV_TYPE_CLOSEDSURFACE);
    outer->SetQuickParameterValue(PN_SURFSHAP, PV_SURF_CUBE);
    outer->SetQuickParameterValue(PN_RDET, PV_RES_LOW);
    // A cube about the origin that holds the limits, the element's size and its height,
    // with room to spare so that no ray starts outside it.
    double half = ReadOr(PN_SIZ, 10.0) / 2.0;
    for (eParamName limit : {PN_XMIN, PN_XMAX, PN_YMIN, PN_YMAX, PN_HEIGHT}) {
        half = std::max(half, std::fabs(ReadOr(limit, 0.0)));
    }
    half *= 1.5;
    outer->SetQuickParameterValue(PN_SPHERRAD, half, PU_M);
    outer->SetQuickParameterValue(PN_SIZ, 2.0 * half, PU_M);
    outer->SetQuickParameterValue(PN_SHOW, false);
    outer->QuickSetToChildren(true);
    outer->ApplyTransformation(true);
    Volume* surrounding = SurroundingVolume();
    if (outer->AddVolume(surrounding->GetSimObjectID())) surrounding->AddInterface(outer);
    PassParameters({PN_VOLPROPMDL, PN_VOLPROPEXP}, surrounding);
    return true;
}

bool OpticElement::ExpandTraceVolume(bool force) {
    if (ReadOr(PN_TRACERENDERAS, PV_EMPTY) != PV_HEATMAP) {
        RemoveTraceVolume(true);
        return true;
    }
    const bool fresh = force || TraceVolumes::empty();
    if (fresh) {
        RemoveTraceVolume(true);
        auto* made = new TraceVolume();
        made->Initialize();
        AddChild(made);
        made->SetName("traceVolume");
        TraceVolumes::push_back(made);
    }
    TraceVolume* grid = TraceVolumes::front();
    SizeTraceVolume(grid);
    grid->SetRendThreshold(ReadOr(PN_TRACEREND, 0.0));
    PassParameters(kTraceVolumeDisplay, grid);
    SetTraceVolumePowerRange(grid);
    return !fresh || grid->InitTestPoints(this);
}

void OpticElement::SizeTraceVolume(TraceVolume* grid) {
    const double gap = ReadOr(PN_TRACEGAP, 1.0);
    const double xMin = ReadOr(PN_XMIN, 0.0), xMax = ReadOr(PN_XMAX, 0.0);
    const double yMin = ReadOr(PN_YMIN, 0.0), yMax = ReadOr(PN_YMAX, 0.0);
    const auto count = [gap](double range) { return gap > 0.0 ? int(range / gap) : 1; };
    const double lonMin = ReadOr(PN_LONMIN, 0.0), lonMax = ReadOr(PN_LONMAX, 0.0);
    const double latMin = ReadOr(PN_LATMIN, 0.0), latMax = ReadOr(PN_LATMAX, 0.0);
    if (lonMax > lonMin && latMax > latMin) {
        // A geographic scene: the limits in degrees, the counts from the metric spans.
        grid->SetLimits(lonMin, latMin, 0.0, lonMax, latMax, 0.0);
        grid->SetDim(count(EARTH_RADIUS * (lonMax - lonMin) * DEGREES_TO_RADIANS),
                     count(EARTH_RADIUS * (latMax - latMin) * DEGREES_TO_RADIANS), 1);
        return;
    }
    const eParamNumber dimensions = ReadOr(PN_TRACEDIM, DIMENSIONS_2D);
    const double level = ReadOr(PN_TRACELAYHEIGHT, 0.0);
    if (dimensions == DIMENSIONS_1D) {
        grid->SetLimits(xMin, 0.0, level, xMax, 0.0, level);
        grid->SetDim(count(xMax - xMin), 1, 1);
    } else if (dimensions == DIMENSIONS_3D) {
        const double height = ReadOr(PN_HEIGHT, 2.0);
        grid->SetLimits(xMin, yMin, 0.0, xMax, yMax, height);
        grid->SetDim(count(xMax - xMin), count(yMax - yMin), count(height));
    } else {
        grid->SetLimits(xMin, yMin, level, xMax, yMax, level);
        grid->SetDim(count(xMax - xMin), count(yMax - yMin), 1);
    }
}

void OpticElement::SetTraceVolumePowerRange(TraceVolume* grid) {
    grid->SetPowerRange(ReadOr(PN_SCLL, -25.0), ReadOr(PN_SCLH, -15.0));
}

// Loading and linking.

bool OpticElement::FromXml(CElement* element) {
    if (!Component::FromXml(element)) return false;
    ClearHandles();
    bool loaded = LoadVectorByType<Interface>(this, element, "Interface");
    loaded = LoadVectorByType<EMSource>(this, element, "EMSource") && loaded;
    loaded = LoadVectorByType<EMReceiver>(this, element, "EMReceiver") && loaded;
    loaded = LoadVectorByType<TestPoint>(this, element, "TestPoint") && loaded;
    loaded = LoadVectorByType<Volume>(this, element, "Volume") && loaded;
    if (element->hasElement("Importer")) {
        Log::log(2) << "OpticElement::FromXml: importers are not available\n";
    }
    for (Interface* face : static_cast<Interfaces&>(*this)) {
        face->SetAvailableVolumes(*static_cast<Volumes*>(this));
    }
    elementType = ReadOr(PN_TYP, elementType);
    if (elementType == PV_ELEM_SYSTEM) {
        loaded = LoadVectorByType<Barrier>(this, element, "Barrier") && loaded;
        loaded = LoadVectorByType<WayLine>(this, element, "WayLine") && loaded;
        loaded = LoadVectorByType<CityPart>(this, element, "CityPart") && loaded;
    }
    loaded = LoadResponses(element) && loaded;
    if (!loaded) Log::log(1) << "OpticElement::FromXml: " << objName << " loaded in part\n";
    // A part keeps what it loaded; a system is rebuilt from its structures and sources.
    return (elementType != PV_ELEM_SYSTEM || RebuildSystem(true)) && loaded;
}

bool OpticElement::ToXml(CElement* element, bool leaveOutExpanded) {
    if (!Component::ToXml(element, leaveOutExpanded)) return false;
    const std::pair<const char*, FreqResponseArray*> tables[] = {
        {kWallTable, wallResponse}, {kFloorTable, floorResponse}, {kCeilingTable, ceilingResponse}};
    for (const auto& [name, table] : tables) {
        if (CElement* old = ResponseList(element, name)) element->removeElement(old);
        if (table == nullptr) continue;
        auto* list = new CElement(kResponseList);
        list->setAttribute(A_NAME, name);
        element->addElement(list);
        for (FreqResponse* entry : *table) {
            auto* sub = new CElement();
            sub->setName("FreqResponse");
            list->addElement(sub);
            entry->ToXml(sub, leaveOutExpanded);
        }
    }
    return true;
}

void OpticElement::AdoptResponse(FreqResponse* entry) {
    if (GetChildWithId(entry->GetSimObjectID()) == nullptr) AddChild(entry);
    entry->SetSaveToXML(false);
}

bool OpticElement::LoadResponses(CElement* element) {
    const std::pair<const char*, FreqResponseArray* (OpticElement::*)()> tables[] = {
        {kWallTable, &OpticElement::NewWallResponse},
        {kFloorTable, &OpticElement::NewFloorResponse},
        {kCeilingTable, &OpticElement::NewCeilingResponse}};
    bool loaded = true;
    for (const auto& [name, make] : tables) {
        CElement* list = ResponseList(element, name);
        if (list == nullptr) continue;
        FreqResponseArray* table = (this->*make)();
        loaded = LoadVectorByType<FreqResponse>(table, list, "FreqResponse") && loaded;
        for (FreqResponse* entry : *table) AdoptResponse(entry);
    }
    return loaded;
}

bool OpticElement::QuickSetFromChildren() {
    const bool collected = Component::QuickSetFromChildren();
    LinkByNames();
    return collected;
}

void OpticElement::LinkByNames() {
    const auto volumeNamed = [this](const std::string& name) -> Volume* {
        for (Volume* volume : static_cast<Volumes&>(*this)) {
            if (volume->TestName(name)) return volume;
        }
        return nullptr;
    };
    for (Interface* face : static_cast<Interfaces&>(*this)) {
        for (int n = 0; n < face->GetCount(PN_VOL); n++) {
            std::string name;
            Parameter* link = face->GetParameterOcurrencep(PN_VOL, n);
            if (link == nullptr || !link->getValue(&name)) continue;
            Volume* volume = volumeNamed(name);
            if (volume != nullptr && face->AddVolume(volume)) volume->AddInterface(face);
        }
    }
    for (EMSource* source : static_cast<Sources&>(*this)) {
        std::string name;
        if (!source->GetParameterValue(PN_VOL, name)) continue;
        Log::log(4) << "volumeName = " << name << "\n";
        Volume* volume = volumeNamed(name);
        if (volume == nullptr) continue;
        Log::log(4) << "source link to volume = " << volume->GetName() << "\n";
        source->SetVolume(volume);
    }
    for (Volume* volume : static_cast<Volumes&>(*this)) {
        std::string name;
        if (volume->GetParameterValue(PN_MED, name)) volume->SetMedium(resources.GetMedium(name));
    }
}

// Children removed at a rebuild.

void OpticElement::RemoveVolumes() {
    Volumes::clear();
    for (SimObject* child : LiveChildren()) {
        if (auto* volume = dynamic_cast<Volume*>(child)) RemoveChild(volume, true);
    }
}

void OpticElement::RemovePartChildren() {
    Sources::clear();
    Importers::clear();
    Solvers::clear();
    RemoveVolumes();
    RemoveTraceVolume(false);
    for (SimObject* child : LiveChildren()) {
        if (dynamic_cast<EMSource*>(child) != nullptr) RemoveChild(child, true);
    }
}

Volume* OpticElement::SurroundingVolume() {
    Volume* live = Volume::GetVolumeFromId(resources.GetDefaultVolumeId());
    if (live != nullptr) return live;
    surroundingVolume = new Volume();
    surroundingVolume->Initialize();
    surroundingVolume->SetName("surroundingVolume");
    surroundingVolume->SetMedium(resources.GetDefaultMedium());
    resources.SetDefaultVolumeId(surroundingVolume->GetSimObjectID());
    return surroundingVolume;
}

void OpticElement::ReleaseSurroundingVolume() {
    if (surroundingVolume == nullptr) return;
    if (resources.GetDefaultVolumeId() == surroundingVolume->GetSimObjectID()) {
        resources.SetDefaultVolumeId(-1);
    }
    surroundingVolume->ClearReceivedRadiation();
    delete surroundingVolume;
    surroundingVolume = nullptr;
}

// Presets.

void OpticElement::SetNewNameStrings() {
    if (namesSet) return;
    for (const PresetRange& range : kPresetRanges) {
        int index = range.first;
        for (const char* name : range.names) newElementNames[index++] = name;
    }
    namesSet = true;
}

std::string OpticElement::GetNewElementName(int index) {
    SetNewNameStrings();
    auto found = newElementNames.find(index);
    return found == newElementNames.end() ? std::string() : found->second;
}

int OpticElement::GetNewElementIndex(const std::string& name) {
    SetNewNameStrings();
    for (const auto& [index, text] : newElementNames) {
        if (text == name) return index;
    }
    return -1;
}

bool OpticElement::SetupNewElement(int index, OpticElement* parent) {
    SetNewNameStrings();
    if (newElementNames.count(index) == 0) {
        Log::log(1) << "OpticElement::SetupNewElement: no preset at index " << index << "\n";
        return false;
    }
    if (parent != nullptr && GetParent() == nullptr) parent->AddChild(this);
    for (const SetupRange& range : kSetupRanges) {
        if (index >= range.first && index <= range.last) return range.setup(index, this);
    }
    return false;
}

bool OpticElement::setLossValues(FreqResponseArray* table, int editOption) {
    auto material = kLossMaterials.find(editOption);
    const eMedia which =
        material != kLossMaterials.end() ? material->second : static_cast<eMedia>(editOption);
    Medium* medium = resources.GetMedium(resources.GetMediaName(which));
    if (table == nullptr || medium == nullptr) {
        Log::log(1) << "OpticElement::setLossValues: no table or no material for option "
                    << editOption << "\n";
        return false;
    }
    // The losses at normal incidence on a half-space of the material, at 2.4 and 5 GHz.
    const std::pair<int, double> frequencies[] = {{238, 2.4}, {242, 5.0}};
    for (const auto& [number, gigahertz] : frequencies) {
        double permittivity = 1.0, permeability = 1.0, conductivity = 0.0;
        medium->GetRelPtPbCond_fromFreq(gigahertz, permittivity, permeability, conductivity, false);
        const double index = std::sqrt(std::max(permittivity, 1.0));
        const double reflected = std::fabs((1.0 - index) / (1.0 + index));
        FreqResponse* entry = table->getResponse(static_cast<eParamNumber>(number), PM_MEGA, true);
        AdoptResponse(entry);
        entry->SetQuickParameterValue(PN_REFLOSS, 20.0 * std::log10(std::max(reflected, 1e-6)),
                                      PU_DB);
        entry->SetQuickParameterValue(
            PN_TRANSLOSS, 10.0 * std::log10(std::max(1.0 - reflected * reflected, 1e-12)), PU_DB);
    }
    return true;
}
