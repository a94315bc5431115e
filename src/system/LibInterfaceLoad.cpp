#include <cmath>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "control/BatchEvent.h"
#include "control/OpticElement.h"
#include "control/SimEvaluation.h"
#include "framework/Parameter.h"
#include "logging/Log.h"
#include "radiation/EMSource.h"
#include "system/LibInterface.h"
#include "system/System_.h"

namespace {

using PointMap = std::map<std::string, std::string>;

const eParamNumber dimensions2D = static_cast<eParamNumber>(4);
const eParamNumber dimensions3D = static_cast<eParamNumber>(5);

// The entry of the number table with that text; "None" when there is none.
eParamNumber NumberOfText(const std::string& text) {
    Parameter tables;  // the first Parameter fills the tables
    for (const auto& [number, numberText] : Parameter::paramNumStrings) {
        if (numberText == text) return number;
    }
    return PNUM_NONE;
}

eParamValue TrueFalse(bool value) { return value ? PV_TRUE : PV_FALSE; }

std::string NumberText(double value) {
    std::ostringstream text;
    text.precision(17);
    text << value;
    return text.str();
}

// The name of the medium with that number; an unknown number takes the entry of 0.
std::string MediumName(int medium) {
    std::string name = LibInterface::GetMediumName(medium);
    return name.empty() ? LibInterface::GetMediumName(0) : name;
}

eParamValue LossModel(int pathLossModel) {
    switch (pathLossModel) {
        case 0:
            return PV_FREESPACE_EXP;
        case 1:
            return PV_INH_LOS;
        case 2:
            return PV_INH_NLOS;
        case 3:
            return PV_UMI_LOS;
        case 4:
            return PV_UMI_NLOS;
        case 5:
            return PV_UMA_LOS;
        case 6:
            return PV_UMA_NLOS;
        default:
            return PV_FREESPACE;
    }
}

eParamValue BandOfChannel(eParamValue channel) {
    if (channel >= 285 && channel <= 298) return PV_BAND_WIFI24;
    if (channel >= 301 && channel <= 365) return PV_BAND_WIFI50;
    if (channel >= 368 && channel <= 421) return PV_BAND_LTE;
    if (channel >= 424 && channel <= 503) return PV_BAND_NR_FR1;
    if (channel >= 506 && channel <= 513) return PV_BAND_NR_FR2;
    return PV_BAND_WIFI24;
}

eParamValue RadPattern(int radPattern) {
    if (radPattern == 2) return PV_RADPAT_DIPOLE;
    if (radPattern == 3) return PV_RADPAT_HPBW;
    return PV_RADPAT_OMNI;
}

// The centre frequency in MHz of a channel value; false for a value the table lacks.
bool ChannelFrequencyMHz(eParamValue channel, double& frequency) {
    Parameter tables;  // the first Parameter fills the channel table
    auto found = Parameter::channelFreqMap.find(channel);
    if (found == Parameter::channelFreqMap.end()) return false;
    frequency = found->second;
    return true;
}

// The map of a position for a batch event. A building takes cartesian points (flat on the
// floor in two dimensions); other systems take geographic ones, and the record learns its
// cartesian position.
PointMap PositionMap(e_Vector_& location, OpticElement* element) {
    if (element->TestParameterValue(PN_SYSTYP, PV_BUILDING)) {
        if (element->TestParameterValue(PN_TRACEDIM, dimensions2D)) location.z = 0;
        return {{"x", NumberText(location.x)},
                {"y", NumberText(location.y)},
                {"z", NumberText(location.z)}};
    }
    BatchEvent::GeoToCartesian(location.lon, location.lat, location.height, location.x, location.y,
                               location.z);
    return {{"longitude", NumberText(location.lon)},
            {"latitude", NumberText(location.lat)},
            {"height", NumberText(location.height)}};
}

std::vector<PointMap> CornerMaps(const e_Vector_* corners) {
    std::vector<PointMap> maps;
    for (const e_Vector_* corner = corners; corner != nullptr; corner = corner->next) {
        maps.push_back({{"x", NumberText(corner->x)},
                        {"y", NumberText(corner->y)},
                        {"z", NumberText(corner->z)}});
    }
    return maps;
}

// The ids of what the element made from the points; empty when it made nothing.
std::vector<int> SendBatchEvent(OpticElement* element, int event,
                                const std::vector<PointMap>& maps) {
    BatchEvent batch(event);
    for (const PointMap& map : maps) batch.AddPoint(map);
    std::vector<int> ids;
    if (!element->ReceiveBatchEvent(batch, ids)) ids.clear();
    return ids;
}

// The outline of a wall or a building as a batch event, with the log of its steps.
bool SendOutline(OpticElement* element, int event, const e_Vector_* corners) {
    Log::log(OUTPUT_INFORMATIVE) << "adding barrier - end points\n";
    std::vector<PointMap> maps = CornerMaps(corners);
    Log::log(OUTPUT_INFORMATIVE) << "adding barrier - process\n";
    bool made = !SendBatchEvent(element, event, maps).empty();
    Log::log(OUTPUT_INFORMATIVE) << "adding barrier - done\n";
    return made;
}

// Runs add on each record of the list until one fails.
template <typename Record, typename Add>
bool AddEach(Record* list, Add add) {
    for (Record* record = list; record != nullptr; record = record->next) {
        if (!add(record)) return false;
    }
    return true;
}

bool Failed(const char* words) {
    Log::log(OUTPUT_ERROR) << words;
    return false;
}

}  // namespace

bool LibInterface::CheckSystemContentOK() {
    if (system == nullptr) Log::log(OUTPUT_ERROR) << "LibInterface::BeginUpdate() - no system\n";
    if (system != nullptr && system->GetSystem() == nullptr) {
        Log::log(OUTPUT_ERROR) << "LibInterface::BeginUpdate() - system without content\n";
    }
    if (GetSystem() != nullptr) return true;
    return Failed("LibInterface::BeginUpdate() - given system is invalid\n");
}

OpticElement* LibInterface::GetSystemElement(SimEvaluation* eval) {
    OpticElement* element = eval->startNewSystem(GetSystem()->isIndoorOnly ? 13 : 14);
    if (element == nullptr) {
        Log::log(OUTPUT_ERROR) << "LibInterface::BeginUpdate() - new network failed\n";
    } else if (!element->TestType("OpticElement")) {
        Log::log(OUTPUT_ERROR) << "LibInterface::BeginUpdate() - new network of invalid type\n";
        element = nullptr;
    }
    if (element == nullptr) Failed("LibInterface::BeginUpdate() - new base simulation failed\n");
    return element;
}

bool LibInterface::LoadSystemToEval(SimEvaluation* eval) {
    OpticElement* element = nullptr;
    bool ok = eval != nullptr && CheckSystemContentOK();
    if (ok) ok = (element = GetSystemElement(eval)) != nullptr;
    e_System_* record = GetSystem();
    if (ok) {
        eval->SetTraceLimit(record->traceLimit);
        ok = TopParamsToElement(record, element) ||
             Failed("LibInterface::BeginUpdate() - load base simulation params failed\n");
    }
    ok = ok && (AddEach(record->barriers,
                        [&](e_Barrier_* b) { return AddBarrierToElement(b, element); }) ||
                Failed("LibInterface::BeginUpdate() - load barriers failed\n"));
    ok = ok && (AddEach(record->buildings,
                        [&](e_Building_* b) { return AddBuildingToElement(b, element); }) ||
                Failed("LibInterface::BeginUpdate() - load buildings failed\n"));
    ok = ok && (AddEach(record->accessPoints,
                        [&](e_AccessPoint_* ap) { return AddApToElement(ap, element); }) ||
                Failed("LibInterface::BeginUpdate() - load APs failed\n"));
    ok = ok && (AddEach(record->samplePoints,
                        [&](e_SamplePoint_* sp) { return AddSpToElement(sp, element); }) ||
                Failed("LibInterface::BeginUpdate() - load SPs failed\n"));
    if (ok) {
        Log::log(OUTPUT_INFORMATIVE)
            << "LibInterface::BeginUpdate() - loading system from lib to simulation - success\n";
    } else {
        Log::log(OUTPUT_ERROR)
            << "LibInterface::BeginUpdate() - loading system from lib to simulation - failed\n";
    }
    return ok;
}

void LibInterface::TopCartesianToElement(e_System_* record, OpticElement* element) {
    element->SetParameterValue(PN_XMAX, record->xMax, PU_M);
    element->SetParameterValue(PN_XMIN, record->xMin, PU_M);
    element->SetParameterValue(PN_YMAX, record->yMax, PU_M);
    element->SetParameterValue(PN_YMIN, record->yMin, PU_M);
}

void LibInterface::TopGPSToElement(e_System_* record, OpticElement* element) {
    element->SetParameterValue(PN_LONMAX, record->lonMax, PU_D);
    element->SetParameterValue(PN_LONMIN, record->lonMin, PU_D);
    element->SetParameterValue(PN_LATMAX, record->latMax, PU_D);
    element->SetParameterValue(PN_LATMIN, record->latMin, PU_D);
    if (record->osmContent == nullptr) return;
    element->SetParameterValue(PN_OSMCONTENT, std::string(record->osmContent));
    element->SetParameterValue(PN_USEOSM, true);
}

bool LibInterface::TopParamsToElement(e_System_* record, OpticElement* element) {
    if (record == nullptr || element == nullptr) return false;
    if (record->barriers == nullptr && record->buildings == nullptr) {
        Log::log(OUTPUT_WARNING) << "LibInterface::BeginUpdate() - no barriers or buildings\n";
    }
    if (record->accessPoints == nullptr) {
        Log::log(OUTPUT_WARNING) << "LibInterface::BeginUpdate() - no APs\n";
    }
    if (record->samplePoints == nullptr) {
        Log::log(OUTPUT_WARNING) << "LibInterface::BeginUpdate() - no SPs\n";
    }
    element->SetParameterValue(PN_TRACEDIM, record->only2d ? dimensions2D : dimensions3D);
    if (record->only2d) element->SetParameterValue(PN_TRACELAYHEIGHT, 0.0, PU_M);
    if (record->isIndoorOnly) {
        TopCartesianToElement(record, element);
    } else {
        TopGPSToElement(record, element);
    }
    element->SetParameterValue(PN_SYSOUT, PV_TRUE);
    element->SetParameterValue(PN_HEIGHT, record->height, PU_M);
    element->SetParameterValue(PN_REFLECT, TrueFalse(record->reflect));
    element->SetParameterValue(PN_TRANSMIT, TrueFalse(record->transmit));
    eParamValue diffract = record->isIndoorOnly ? PV_DIFFRACT_KED : PV_DIFFRACT_BERG;
    element->SetParameterValue(PN_BARDIFMDL, record->diffract ? diffract : PV_DIFFRACT_OFF);
    element->SetParameterValue(FLMAT, MediumName(record->floorMaterial));
    element->SetParameterValue(FLTHK, record->floorThickness, PU_M);
    element->SetParameterValue(CEMAT, MediumName(record->ceilingMaterial));
    element->SetParameterValue(CETHK, record->ceilingThickness, PU_M);
    element->SetParameterValue(PN_NTKTYP, std::string("wifi"));
    element->SetParameterValue(PN_VOLPROPMDL, LossModel(record->pathLoss_model));
    if (record->pathLoss_model == 0)
        element->SetParameterValue(PN_VOLPROPEXP, record->pathLoss_Exp);
    element->SetParameterValue(PN_RAYGAP, record->rayGap, PU_D);
    element->SetParameterValue(PN_TRLIM, record->traceLimit);
    element->QuickSetToChildren(true);
    element->SetQuickParameterValue(PN_RXSIZ, 1.0, PU_M);
    element->SetQuickParameterValue(PN_PWRWATT, NumberOfText("20"), PU_WAT, PM_MILLI);
    element->SetQuickParameterValue(PN_GAINTX, NumberOfText("+2"), PU_DBI);
    element->SetQuickParameterValue(PN_GAINTXMIN, NumberOfText("0"), PU_DBI);
    return true;
}

bool LibInterface::AddBarrierToElement(e_Barrier_* barrier, OpticElement* element) {
    if (barrier == nullptr || element == nullptr) return false;
    Log::log(OUTPUT_INFORMATIVE) << "adding barrier - begin\n";
    double base = barrier->height_lower < 0.05 ? -0.1 : barrier->height_lower;
    element->SetParameterValue(PN_BARBSE, base, PU_M);
    element->SetParameterValue(PN_BARHGT, barrier->height_upper, PU_M);
    element->SetParameterValue(PN_THICKNESS, barrier->thickness, PU_M);
    element->SetParameterValue(PN_REFLECT, TrueFalse(barrier->reflect));
    element->SetParameterValue(PN_TRANSMIT, TrueFalse(barrier->transmit));
    element->SetParameterValue(PN_BARDIFMDL, barrier->diffract ? PV_DIFFRACT_KED : PV_DIFFRACT_OFF);
    element->SetParameterValue(PN_MED, MediumName(barrier->medium));
    element->SetParameterValue(PN_ORIENTATION,
                               barrier->vertical ? PV_ORIENT_VERTICAL : PV_ORIENT_HORIZONTAL);
    element->SetParameterValue(PN_BARLOSMDL, barrier->thinBarrier ? PV_LOSS_THIN : PV_LOSS_THICK);
    return SendOutline(element, BatchEvent::eventWall, barrier->vectors);
}

bool LibInterface::AddBuildingToElement(e_Building_* building, OpticElement* element) {
    if (building == nullptr || element == nullptr) return false;
    Log::log(OUTPUT_INFORMATIVE) << "adding barrier - begin\n";
    element->SetParameterValue(PN_BARBSE, building->height, PU_M);
    element->SetParameterValue(PN_THICKNESS, building->wallThickness, PU_M);
    element->SetParameterValue(PN_REFLECT, building->reflect);
    element->SetParameterValue(PN_TRANSMIT, building->transmit);
    element->SetParameterValue(PN_BARDIFMDL,
                               building->diffract ? PV_DIFFRACT_KED : PV_DIFFRACT_OFF);
    element->SetParameterValue(PN_MED, MediumName(building->wallMedium));
    element->SetParameterValue(FLMAT, MediumName(building->floorMedium));
    element->SetParameterValue(FLTHK, building->floorThickness, PU_M);
    element->SetParameterValue(CEMAT, MediumName(building->roofMedium));
    element->SetParameterValue(CETHK, building->roofThickness, PU_M);
    element->SetParameterValue(PN_BARLOSMDL, building->thinBarrier ? PV_LOSS_THIN : PV_LOSS_THICK);
    return SendOutline(element, BatchEvent::eventBuilding, building->vectors);
}

bool LibInterface::AddApToElement(e_AccessPoint_* ap, OpticElement* element) {
    if (ap == nullptr || element == nullptr) return false;
    double frequencyMHz = 0;
    if (ap->frequency_GHz != -1) {
        element->SetQuickParameterValue(PN_FREQ, ap->frequency_GHz, PU_HZ, PM_GIGA);
        frequencyMHz = ap->frequency_GHz * 1000;
    } else {
        eParamValue channel = GetChannelValue(ap->channel);
        element->SetParameterValue(PN_FREQCHAN, channel);
        element->SetQuickParameterValue(PN_FREQBAND, BandOfChannel(channel));
        if (!ChannelFrequencyMHz(channel, frequencyMHz)) {
            Log::log(OUTPUT_ERROR)
                << "LibInterface::AddApToElement() - unknown channel " << ap->channel << "\n";
            return false;
        }
    }
    element->SetParameterValue(PN_RPAT, RadPattern(ap->radPattern));
    element->SetParameterValue(PN_PWRWATT, ap->power, PU_WAT);
    double wavelength = 300000000 / (frequencyMHz * 1000000);
    element->SetParameterValue(PN_SRCSIZ, ap->size / wavelength, PU_LMD);
    element->SetParameterValue(PN_LMDA, wavelength, PU_M);
    element->SetParameterValue(PN_GAINTX, ap->gain, PU_DBI);
    element->SetParameterValue(PN_HPBWH, ap->gainBeamWidth, PU_D);
    element->SetParameterValue(PN_HPBWV, ap->gainBeamHeight, PU_D);
    element->SetParameterValue(PN_GAINROT, ap->rotateHorizontal, PU_D);
    element->SetParameterValue(PN_GAINTLT, ap->rotateVertical, PU_D);
    std::vector<int> ids =
        SendBatchEvent(element, BatchEvent::eventSource, {PositionMap(ap->location, element)});
    if (ids.empty()) return false;
    auto* source = dynamic_cast<EMSource*>(SimObject::GetObjectGlobally(ids.front()));
    if (source != nullptr && ap->name != nullptr) source->PassName(ap->name);
    return true;
}

bool LibInterface::AddSpToElement(e_SamplePoint_* sp, OpticElement* element) {
    if (sp == nullptr || element == nullptr) return false;
    element->SetParameterValue(PN_RXSIZ, sp->size, PU_M);
    element->SetParameterValue(PN_GAINRX, sp->gain, PU_DBI);
    std::vector<int> ids =
        SendBatchEvent(element, BatchEvent::eventTestPoint, {PositionMap(sp->location, element)});
    if (ids.empty()) return false;
    sp->simElementID = ids.front();
    return true;
}
