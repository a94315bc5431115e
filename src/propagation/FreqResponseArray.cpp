#include "propagation/FreqResponseArray.h"

#include <cmath>

#include "framework/Parameter.h"
#include "logging/Log.h"
#include "propagation/FreqResponse.h"

FreqResponseArray::~FreqResponseArray() {
    for (int id : createdIds) {
        SimObject* entry = SimObject::GetObjectGlobally(id);
        if (entry != nullptr && entry->GetParent() == nullptr) delete entry;
    }
}

FreqResponse* FreqResponseArray::getResponse(eParamNumber number, eParamMultiplier mult,
                                             bool create) {
    Parameter frequency;
    frequency.setParName(PN_FREQ);
    frequency.setValue(number);
    frequency.setUnits(PU_HZ);
    frequency.setMult(mult);
    return getResponse(&frequency, create);
}

FreqResponse* FreqResponseArray::getResponse(Parameter* frequency, bool create) {
    double hz = 0;
    if (frequency == nullptr || !frequency->getValue(&hz)) {
        Log::log(OUTPUT_ERROR) << "FreqResponseArray::getResponse: no frequency given\n";
        return nullptr;
    }
    for (FreqResponse* entry : *this) {
        if (entry->GetFrequency() == hz) return entry;
    }
    if (!create) return nullptr;
    auto* entry = new FreqResponse();
    entry->Initialize();
    auto* copy = new Parameter(*frequency);
    copy->setParName(PN_FREQ);
    copy->Initialize();
    entry->AddParameter(copy, false);
    push_back(entry);
    createdIds.push_back(entry->GetSimObjectID());
    return entry;
}

FreqResponse* FreqResponseArray::nearest(double f) {
    FreqResponse* best = nullptr;
    double bestGap = 0;
    for (FreqResponse* entry : *this) {
        const double gap = std::fabs(f - entry->GetFrequency());
        if (best == nullptr || gap < bestGap) {
            best = entry;
            bestGap = gap;
        }
    }
    return best;
}

bool FreqResponseArray::hasParamAtFreq(eParamName name, double f) {
    FreqResponse* entry = nearest(f);
    return entry != nullptr && entry->GetParameterp(name) != nullptr;
}

double FreqResponseArray::getParamAtFreq(eParamName name, double f) {
    FreqResponse* entry = nearest(f);
    double value = -1;
    if (entry == nullptr || !entry->GetParameterValue(name, value)) return -1;
    return value;
}
