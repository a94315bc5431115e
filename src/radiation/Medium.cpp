#include "radiation/Medium.h"

#include <cmath>
#include <iterator>

#include "logging/Log.h"

Medium::Medium(const char* name) {
    objTypeStr = "Medium";
    if (name != nullptr) SetName(name);
}

bool Medium::Initialize() {
    if (!SimObject::Initialize()) return false;
    hasName = false;
    hasFixedIndex = false;
    refractiveIndex = 1.0;
    return true;
}

Parameter* Medium::LoadedParameter(const char* name) {
    return dynamic_cast<Parameter*>(GetChildNamed(name));
}

bool Medium::FromXml(CElement* element) {
    Log::log(OUTPUT_INFORMATIVE) << "Medium::FromXml\n";
    if (!Component::FromXml(element)) return false;
    hasName = LoadedParameter("Name") != nullptr;
    Parameter* index = LoadedParameter("RefractiveIndex");
    hasFixedIndex = index != nullptr;
    if (hasFixedIndex) index->getValue(&refractiveIndex);
    return true;
}

template <typename T>
void Medium::KeepFlagParameter(eParamName name, const char* childName, bool present,
                               const T& value) {
    if (!present) {
        RemoveParameter(name);
        return;
    }
    SetParameterValue(name, value);
    GetParameterp(name)->SetName(childName);
}

bool Medium::ToXml(CElement* element, bool leaveOutExpanded) {
    KeepFlagParameter(PN_RIND, "RefractiveIndex", hasFixedIndex, refractiveIndex);
    KeepFlagParameter(PN_NAM, "Name", hasName, objName);
    return SimObject::ToXml(element, leaveOutExpanded);
}

bool Medium::Empty() {
    lock(true);
    transmission.clear();
    reflection.clear();
    unlock();
    return Component::Empty();
}

bool Medium::SetRefractiveIndex(double index) {
    lock(true);
    refractiveIndex = index;
    hasFixedIndex = true;
    unlock();
    return true;
}

double Medium::GetRefractiveIndex(double frequency) {
    lock(true);
    double index = refractiveIndex;
    if (!hasFixedIndex) {
        double permittivity = 1.0;
        double mu = 1.0;
        double conductivity = 0.0;
        GetRelPtPbCond_fromFreq(frequency, permittivity, mu, conductivity, true);
        index = std::sqrt(permittivity * mu);
    }
    unlock();
    return index;
}

bool Medium::SetRelPtPbCond(double newA, double newB, double newPermeability, double newC,
                            double newD) {
    lock(true);
    a = newA;
    b = newB;
    permeability = newPermeability;
    c = newC;
    d = newD;
    hasFixedIndex = false;
    unlock();
    return true;
}

bool Medium::GetRelPtPbCond(double& outA, double& outB, double& outPermeability, double& outC,
                            double& outD) {
    lock(true);
    outA = a;
    outB = b;
    outPermeability = permeability;
    outC = c;
    outD = d;
    unlock();
    return true;
}

bool Medium::GetRelPtPbCond_fromFreq(double frequency, double& permittivity,
                                     double& outPermeability, double& conductivity,
                                     bool alreadyLocked) {
    if (!alreadyLocked) lock(true);
    conductivity = c * std::pow(frequency, d);
    const double real = a * std::pow(frequency, b);
    const double imaginary = conductivity * 17.98 / frequency;
    // The magnitude of the complex permittivity stands in for the permittivity.
    permittivity = std::sqrt(real * real + imaginary * imaginary);
    outPermeability = permeability;
    if (!alreadyLocked) unlock();
    if (frequency > 0) return true;
    Log::log(OUTPUT_ERROR) << "Medium::GetRelPtPbCond_fromFreq: " << objName
                           << " has no finite permittivity at frequency " << frequency << "\n";
    return false;
}

bool Medium::SetTransRef(double frequency, double reflectionFactor, double transmissionFactor) {
    lock(true);
    reflection[frequency] = reflectionFactor;
    transmission[frequency] = transmissionFactor;
    unlock();
    return true;
}

double Medium::NearestFactor(const FactorTable& table, double frequency) {
    auto exact = table.find(frequency);
    if (exact != table.end()) return exact->second;
    auto upper = table.lower_bound(frequency);
    if (upper == table.end()) upper = std::prev(upper);
    auto lower = upper == table.begin() ? upper : std::prev(upper);
    if (std::fabs(upper->first - frequency) < std::fabs(lower->first - frequency)) {
        return upper->second;
    }
    return lower->second;
}

bool Medium::GetTransRef(double frequency, double& transmissionFactor, double& reflectionFactor) {
    lock(true);
    const bool filled = !transmission.empty() && !reflection.empty();
    if (filled) {
        transmissionFactor = NearestFactor(transmission, frequency);
        reflectionFactor = NearestFactor(reflection, frequency);
    }
    unlock();
    return filled;
}

bool Medium::SetAtten(double, double) { return true; }

bool Medium::GetAtten(double, double& attenuation) {
    attenuation = 0;
    return true;
}

bool Medium::GetColorBrightTrans(eParamValue& colour, eParamNumber& bright) {
    colour = color;
    bright = brightness;
    return true;
}

bool Medium::SetColorBrightTrans(eParamValue colour, eParamNumber bright) {
    color = colour;
    brightness = bright;
    return true;
}
