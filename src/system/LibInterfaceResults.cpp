#include <cmath>
#include <cstring>
#include <string>

#include "framework/SimObject.h"
#include "logging/Log.h"
#include "radiation/TestPoint.h"
#include "system/LibInterface.h"

namespace {

e_ReceivedSignal_* FindSignal(e_SamplePoint_* sp, const std::string& apName) {
    for (e_ReceivedSignal_* signal = sp->signals; signal != nullptr; signal = signal->next) {
        if (signal->apName != nullptr && apName == signal->apName) return signal;
    }
    return nullptr;
}

const e_AccessPoint_* FindAccessPoint(const e_System_* system, const std::string& name) {
    for (const e_AccessPoint_* ap = system->accessPoints; ap != nullptr; ap = ap->next) {
        if (ap->name != nullptr && name == ap->name) return ap;
    }
    return nullptr;
}

void SetPower(e_ReceivedSignal_* signal, double powerDBW) {
    signal->receivedPower_dBW = powerDBW;
    signal->receivedPower_dBm = powerDBW + 30;
}

// A signal already in the record takes the new power only when it is untouched (both
// powers equal) or the new one is higher; its path loss is worked out again when the record
// expects one, with the gains of both ends.
void UpdateSignal(const e_System_* system, e_SamplePoint_* sp, e_ReceivedSignal_* signal,
                  double powerDBW) {
    if (signal->receivedPower_dBW == signal->receivedPower_dBm ||
        powerDBW > signal->receivedPower_dBW) {
        SetPower(signal, powerDBW);
    }
    if (signal->expectedPathLoss_dB == 0) return;
    const e_AccessPoint_* ap = FindAccessPoint(system, signal->apName);
    if (ap == nullptr) return;
    double transmitDB = ap->power < 1e-12 ? -120 : 10 * std::log10(ap->power);
    signal->receivedPathLoss_dB = transmitDB - signal->receivedPower_dBW + (ap->gain + sp->gain);
}

// Writes what the test point of the sample point received into its signals.
void SamplePointFromTestPoint(const e_System_* system, e_SamplePoint_* sp) {
    auto* point = dynamic_cast<TestPoint*>(SimObject::GetObjectGlobally(sp->simElementID));
    if (point == nullptr) return;
    TestPoint::SourcePowers powers;
    if (!point->GetMaxSourcePowerdB(powers)) return;
    for (const auto& [apName, powerAndCount] : powers) {
        e_ReceivedSignal_* signal = FindSignal(sp, apName);
        if (signal != nullptr) {
            UpdateSignal(system, sp, signal, powerAndCount.first);
        } else {
            // A new signal expects no path loss, so its path loss stays 0.
            SetPower(NewReceivedSignal(sp, apName.c_str()), powerAndCount.first);
        }
        sp->signals->receivedPathCount = powerAndCount.second;
    }
    Log::log(OUTPUT_INFORMATIVE) << "update testpoint received power\n";
}

}  // namespace

bool LibInterface::ExtractResults() {
    e_System_* record = GetSystem();
    if (record != nullptr) {
        for (e_SamplePoint_* sp = record->samplePoints; sp != nullptr; sp = sp->next) {
            SamplePointFromTestPoint(record, sp);
        }
    }
    ClearResults();
    resultsExtracted = true;
    return true;
}
