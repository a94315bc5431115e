#include "system/LibInterface.h"

#include <string>

#include "logging/Log.h"
#include "system/System_.h"

LibInterface::LibInterface() = default;

LibInterface::~LibInterface() { releaseSystem(); }

const char* LibInterface::GetVersion() {
    static const std::string version =
        std::string("Fenwave") + "_" + "Paragon" + "_" + "00" + "." + "16" + "." + "10";
    return version.c_str();
}

bool LibInterface::SetDataLocation() { return false; }
bool LibInterface::UpdateOnline() { return false; }
bool LibInterface::Ready() { return false; }
bool LibInterface::UpdateFailed() { return false; }

// The material catalogue comes from the simulation's media, which this build does not
// hold yet: the lists stay empty.
bool LibInterface::GetMaterialNames(std::vector<std::string>&) { return true; }
bool LibInterface::GetMaterialDescriptions(std::vector<std::string>&) { return true; }

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

void LibInterface::StopProcessing() {}

// No evaluation engine is linked into this build, so a run cannot start.
bool LibInterface::BeginUpdate(bool threaded, bool parallel) {
    resultsExtracted = false;
    ClearResults();
    Log::log(OUTPUT_ERROR) << "LibInterface::BeginUpdate() - UpdateStart() failed, "
                           << "threaded = " << threaded << ", parallel = " << parallel << "\n";
    return false;
}

double LibInterface::UpdateProgress() { return -1; }

bool LibInterface::UpdateComplete() {
    if (evaluation == nullptr) return false;
    progress = 1;
    return true;
}

bool LibInterface::IsRunning() { return evaluation != nullptr && !UpdateComplete(); }

bool LibInterface::ResultsExtracted() const { return resultsExtracted; }

bool LibInterface::ExtractResults() {
    ClearResults();
    resultsExtracted = true;
    return true;
}

void LibInterface::ClearResults() {
    if (evaluation == nullptr) {
        Log::log(OUTPUT_INFORMATIVE) << "LibInterface::ClearResults() - nothing\n";
    }
}

void LibInterface::ClearStaticSpace() {}
