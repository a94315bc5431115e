#pragma once

#include <string>
#include <vector>

#include "framework/ParamTypes.h"
#include "system/AccessPointOption.h"
#include "system/AntennaOption.h"
#include "system/SystemRecords.h"

class SimEvaluation;
class System_;

// The facade between the system records and the simulation library: catalogues of
// what a client may choose from, the system of the current run, and its results.
//
// The first facade fills two process-wide tables that turn a record's plain integers into
// the library's values: the medium number (0 for none, then the built-in media after
// "Vacuum/ air") to a medium's name, and the channel number (1 to 221) to the value of the
// simulation's channel parameter.
class LibInterface {
public:
    // Fills the tables where they are empty and the built-in media of the process.
    LibInterface();
    virtual ~LibInterface();

    // The name of the medium with that number; an empty text for 0 and unknown numbers.
    static std::string GetMediumName(int medium);
    // The channel value of that channel number; 0 for an unknown number.
    static eParamValue GetChannelValue(int channel);

    static const char* GetVersion();
    bool SetDataLocation();
    bool UpdateOnline();
    bool Ready();
    bool UpdateFailed();

    // Appends the name of each medium of the process, "Vacuum/ air" first.
    bool GetMaterialNames(std::vector<std::string>& names);
    // Appends the ITU numbers of each medium as a text.
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
