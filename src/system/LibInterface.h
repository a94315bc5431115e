#pragma once

#include <string>
#include <vector>

#include "framework/ParamTypes.h"
#include "system/AccessPointOption.h"
#include "system/AntennaOption.h"
#include "system/SystemRecords.h"

class OpticElement;
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
    // True when the file holds a system.
    bool FileHasSystem(const std::string& file);
    // Reads the system of the file and makes it the current one; false when there is none.
    bool GetSystemFromFile(std::string& file);
    // Raises the stop flag of a run in progress.
    void StopProcessing();
    // Clears what a previous run left, loads the current system into a new evaluation and
    // starts it: on a thread of its own when threaded, else before returning. The stages may
    // spread over workers when parallel. A failed load still starts what was loaded.
    bool BeginUpdate(bool threaded, bool parallel);

    // Fills the evaluation's new system element from the record, step by step; a failed
    // step stops the later ones.
    bool LoadSystemToEval(SimEvaluation* eval);
    // The system-wide parameters of the record on the system element.
    bool TopParamsToElement(e_System_* record, OpticElement* element);
    // A wall, a building, an access point or a sample point as a child of the element.
    bool AddBarrierToElement(e_Barrier_* barrier, OpticElement* element);
    bool AddBuildingToElement(e_Building_* building, OpticElement* element);
    bool AddApToElement(e_AccessPoint_* ap, OpticElement* element);
    // Also stores the id of the test point made in the record's simElementID.
    bool AddSpToElement(e_SamplePoint_* sp, OpticElement* element);

    double UpdateProgress();
    bool UpdateComplete();
    // True while an evaluation exists that has not finished.
    bool IsRunning();
    bool ResultsExtracted() const;
    bool ExtractResults();
    void ClearResults();
    void ClearStaticSpace();

    // The evaluation of the current run, or null.
    SimEvaluation* GetEvaluation() const { return evaluation; }

private:
    void releaseSystem();
    bool CheckSystemContentOK();
    // The system element that the evaluation makes for the record's kind; null on failure.
    OpticElement* GetSystemElement(SimEvaluation* eval);
    void TopCartesianToElement(e_System_* record, OpticElement* element);
    void TopGPSToElement(e_System_* record, OpticElement* element);

    SimEvaluation* evaluation = nullptr;
    System_* system = nullptr;
    double progress = 0;
    bool resultsExtracted = false;
};
