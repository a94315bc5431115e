#include "system/LibInterface.h"

#include <map>
#include <mutex>
#include <sstream>
#include <string>

#include "control/OpticElement.h"
#include "control/SimEvaluation.h"
#include "framework/ParallelSelect.h"
#include "logging/Log.h"
#include "radiation/BeamQUICK.h"
#include "radiation/Medium.h"
#include "radiation/TestPoint.h"
#include "system/SystemBuilder.h"
#include "system/System_.h"

namespace {

std::map<int, std::string> mediumNames;
std::map<int, eParamValue> channelMap;
std::mutex tablesLock;

// Medium numbers 1 to 12 name the built-in media that follow "Vacuum/ air".
void FillMediumNames() {
    mediumNames[0] = "";
    for (int medium = MEDIA_CONCRETE; medium < MEDIA_COUNT; ++medium) {
        mediumNames[medium] = OpticElement::resources.GetMediaName(static_cast<eMedia>(medium));
    }
}

// Channel numbers run on from 1 through the value runs of the channel table, skipping the
// gaps between the runs.
void FillChannelMap() {
    static const std::pair<eParamValue, eParamValue> runs[] = {
        {PV_CHANNEL_WIFI24_FIRST, PV_CHANNEL_WIFI24_LAST},
        {PV_CHANNEL_WIFI50_FIRST, PV_CHANNEL_WIFI50_LAST},
        {PV_CHANNEL_LTE_FIRST, PV_CHANNEL_LTE_LAST},
        {PV_CHANNEL_NR_FR1_FIRST, PV_CHANNEL_NR_FR1_LAST},
        {PV_CHANNEL_NR_FR2_FIRST, PV_CHANNEL_NR_FR2_LAST},
    };
    int channel = 1;
    for (const auto& [first, last] : runs) {
        for (int value = first; value <= last; ++value) {
            channelMap[channel++] = static_cast<eParamValue>(value);
        }
    }
}

// The text of one medium: its name and ITU numbers, doubles as a stream writes them.
std::string MaterialDescription(Medium* medium) {
    double a = 0, b = 0, permeability = 0, c = 0, d = 0;
    medium->GetRelPtPbCond(a, b, permeability, c, d);
    std::ostringstream text;
    text << "material " << medium->GetName() << " details from ITU documentation: \n"
         << "ralative permittivity a = " << a << " , b =" << b << "\n"
         << "ralative permeability a = " << permeability << "\n"
         << "condictivity c = " << c << " , d =" << d << "\n";
    return text.str();
}

// Fills the tables where they are empty; the caller holds tablesLock.
void FillTables() {
    if (mediumNames.empty()) FillMediumNames();
    if (channelMap.empty()) FillChannelMap();
}

}  // namespace

LibInterface::LibInterface() {
    {
        std::lock_guard<std::mutex> guard(tablesLock);
        FillTables();
    }
    OpticElement::resources.init();
}

std::string LibInterface::GetMediumName(int medium) {
    std::lock_guard<std::mutex> guard(tablesLock);
    FillTables();
    auto found = mediumNames.find(medium);
    return found == mediumNames.end() ? std::string() : found->second;
}

eParamValue LibInterface::GetChannelValue(int channel) {
    std::lock_guard<std::mutex> guard(tablesLock);
    FillTables();
    auto found = channelMap.find(channel);
    return found == channelMap.end() ? static_cast<eParamValue>(0) : found->second;
}

LibInterface::~LibInterface() {
    ClearResults();
    releaseSystem();
}

const char* LibInterface::GetVersion() {
    static const std::string version =
        std::string("Fenwave") + "_" + "Paragon" + "_" + "00" + "." + "16" + "." + "10";
    return version.c_str();
}

bool LibInterface::SetDataLocation() { return false; }
bool LibInterface::UpdateOnline() { return false; }
bool LibInterface::Ready() { return false; }
bool LibInterface::UpdateFailed() { return false; }

bool LibInterface::GetMaterialNames(std::vector<std::string>& names) {
    for (Medium* medium : OpticElement::resources.GetMedia()) names.push_back(medium->GetName());
    return true;
}

bool LibInterface::GetMaterialDescriptions(std::vector<std::string>& descriptions) {
    for (Medium* medium : OpticElement::resources.GetMedia()) {
        descriptions.push_back(MaterialDescription(medium));
    }
    return true;
}

// The access-point and antenna catalogues are empty in this system.
bool LibInterface::GetAPNames(std::vector<std::string>&) { return true; }
bool LibInterface::GetAPDescriptions(std::vector<std::string>&) { return true; }
bool LibInterface::GetAntennaNames(std::vector<std::string>&) { return true; }
bool LibInterface::GetAntennaDescriptions(std::vector<std::string>&) { return true; }
bool LibInterface::GetAPOptions(std::vector<AccessPointOption>&) { return true; }
bool LibInterface::GetAntennaOptions(std::vector<AntennaOption>&) { return true; }

void LibInterface::releaseSystem() {
    if (system == nullptr) return;
    e_System_* record = system->GetSystem();
    if (record != nullptr) {
        record->held = false;
        DeleteSystem(&record);
    }
    delete system;
    system = nullptr;
}

bool LibInterface::SetSystem(System_* wrapper) {
    releaseSystem();
    system = wrapper;
    progress = 0;
    return true;
}

e_System_* LibInterface::GetSystem() { return system == nullptr ? nullptr : system->GetSystem(); }

bool LibInterface::FileHasSystem(const std::string& file) {
    return SystemBuilder().FilehasSystem(file);
}

bool LibInterface::GetSystemFromFile(std::string& file) {
    e_System_* record = SystemBuilder().SystemFromFile(file);
    if (record == nullptr) return false;
    record->held = true;
    return SetSystem(new System_(record));
}

void LibInterface::StopProcessing() {
    if (evaluation != nullptr) evaluation->StopProcessing();
}

bool LibInterface::BeginUpdate(bool threaded, bool parallel) {
    resultsExtracted = false;
    ClearResults();
    evaluation = new SimEvaluation();
    evaluation->Initialize();
    LoadSystemToEval(evaluation);
    evaluation->UpdateReq(evalReqRayTracing, true);
    evaluation->UpdateReq(evalReqTestPoints, true);
    ParallelSelect select(parallel);
    if (evaluation->UpdateStart(threaded, select)) return true;
    Log::log(OUTPUT_ERROR) << "LibInterface::BeginUpdate() - UpdateStart() failed, "
                           << "threaded = " << threaded << ", parallel = " << parallel << "\n";
    return false;
}

double LibInterface::UpdateProgress() { return -1; }

bool LibInterface::UpdateComplete() {
    if (evaluation == nullptr || !evaluation->ProcessingComplete()) return false;
    progress = 1;
    return true;
}

bool LibInterface::IsRunning() { return evaluation != nullptr && !UpdateComplete(); }

bool LibInterface::ResultsExtracted() const { return resultsExtracted; }

void LibInterface::ClearResults() {
    if (evaluation == nullptr) {
        Log::log(OUTPUT_INFORMATIVE) << "LibInterface::ClearResults() - nothing\n";
        return;
    }
    Log::log(OUTPUT_INFORMATIVE) << "LibInterface::ClearResults() - eval..\n";
    // A run still going is asked to stop; deleting the evaluation joins its thread.
    evaluation->StopProcessing();
    // Display data is not built by a run of this library: nothing to delete for it.
    Log::log(OUTPUT_INFORMATIVE) << "LibInterface::ClearResults() - renderdataset\n";
    Log::log(OUTPUT_INFORMATIVE) << "LibInterface::ClearResults() - volumelist\n";
    evaluation->ProcessingComplete();
    evaluation->ClearEvaluated();
    // The points keep rays of the beams: they forget them before the beams go.
    Log::log(OUTPUT_INFORMATIVE) << "LibInterface::ClearResults() - volumelist - delete list\n";
    for (TestPoint* point : TestPoint::GetTestPointList()) point->ClearRays();
    // Volumes, trace volumes with their points and the radiations are children of the
    // evaluation's documents and go with it.
    Log::log(OUTPUT_INFORMATIVE) << "LibInterface::ClearResults() - tracelist\n";
    delete evaluation;
    evaluation = nullptr;
    Log::log(OUTPUT_INFORMATIVE) << "LibInterface::ClearResults() - radiations\n";
    DELETEALLBEAMS();
    Log::log(OUTPUT_INFORMATIVE) << "LibInterface::ClearResults() - done\n";
}

void LibInterface::ClearStaticSpace() {
    {
        std::lock_guard<std::mutex> guard(tablesLock);
        mediumNames.clear();
        channelMap.clear();
    }
    Parameter::ClearStaticSpace();
}
