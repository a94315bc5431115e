#pragma once

#include <vector>

#include "framework/ParamTypes.h"

class FreqResponse;
class Parameter;

// The per-frequency losses of a structure. The entries are handles: those the structure
// loads belong to it; those made here by getResponse are deleted with the array, unless
// by then an object has taken them as its children.
class FreqResponseArray : public std::vector<FreqResponse*> {
public:
    FreqResponseArray() = default;
    FreqResponseArray(const FreqResponseArray&) = delete;
    FreqResponseArray& operator=(const FreqResponseArray&) = delete;
    virtual ~FreqResponseArray();

    // The entry at the listed frequency number times the multiplier; with create, an entry
    // is made for it when there is none. Null otherwise.
    FreqResponse* getResponse(eParamNumber number, eParamMultiplier mult, bool create);
    // The same for the frequency that the parameter holds; a new entry takes a copy of it.
    FreqResponse* getResponse(Parameter* frequency, bool create);

    // Whether the entry nearest to f (in Hz) holds the parameter.
    bool hasParamAtFreq(eParamName name, double f);
    // The parameter's value in the entry nearest to f; -1 when that entry lacks it or there
    // is no entry. The first of two equally near entries counts; nothing is interpolated.
    double getParamAtFreq(eParamName name, double f);

private:
    FreqResponse* nearest(double f);
    std::vector<int> createdIds;
};
