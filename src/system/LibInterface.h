#pragma once

#include <string>
#include <vector>

#include "system/AccessPointOption.h"
#include "system/AntennaOption.h"
#include "system/SystemRecords.h"

class SimEvaluation;
class System_;

// The facade between the system records and the simulation library: catalogues of
// what a client may choose from, the system of the current run, and its results.
class LibInterface {
public:
    LibInterface();
    virtual ~LibInterface();

    static const char* GetVersion();
    bool SetDataLocation();
    bool UpdateOnline();
    bool Ready();
    bool UpdateFailed();

    bool GetMaterialNames(std::vector<std::string>& names);
    bool GetMaterialDescriptions(std::vector<std::string>& descriptions);
    bool GetAPNames(std::vector<std::string>& names);
    bool GetAPDescriptions(std::vector<std::string>& descriptions);
    bool GetAntennaNames(std::vector<std::string>& names);
    bool GetAntennaDescriptions(std::vector<std::string>& descriptions);
    bool GetAPOptions(std::vector<AccessPointOption>& options);
    bool GetAntennaOptions(std::vector<AntennaOption>& options);

    // Takes the wrapper; a previous wrapper and its record are released.
    bool SetSystem(System_* wrapper);
    e_System_* GetSystem();
    void StopProcessing();
    bool BeginUpdate(bool threaded, bool parallel);

    double UpdateProgress();
    bool UpdateComplete();
    // True while an evaluation exists that has not finished.
    bool IsRunning();
    bool ResultsExtracted() const;
    bool ExtractResults();
    void ClearResults();
    void ClearStaticSpace();

private:
    void releaseSystem();

    SimEvaluation* evaluation = nullptr;
    System_* system = nullptr;
    double progress = 0;
    bool resultsExtracted = false;
};
