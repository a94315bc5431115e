#pragma once

#include <map>

#include "framework/Component.h"
#include "framework/Lockable.h"
#include "framework/ParamTypes.h"

class CElement;

// A named material whose electrical properties depend on frequency. Either it has a fixed
// refractive index, or the index follows from the ITU form: relative permittivity a f^b and
// conductivity c f^d, f in GHz. Worker threads read a medium during a trace, so every read
// of its numbers takes its lock.
class Medium : public Component, public Lockable {
public:
    explicit Medium(const char* name = nullptr);

    // SimObject's Initialize; the ITU form applies from now on, with an index of 1.
    bool Initialize() override;
    // The component load, then the parameters named "Name" and "RefractiveIndex": the first
    // marks the medium as named, the second fixes its index to its value.
    bool FromXml(CElement* element) override;
    // Writes a fixed index as the "RefractiveIndex" parameter and a set name as "Name", so
    // that a load restores both flags.
    bool ToXml(CElement* element, bool leaveOutExpanded) override;
    // Drops the children and both tables.
    bool Empty() override;

    // Fixes the index: the ITU form no longer applies.
    bool SetRefractiveIndex(double index);
    // The fixed index, or sqrt(permittivity * permeability) of the ITU form at frequency,
    // whose unit is the caller's.
    double GetRefractiveIndex(double frequency);

    bool SetRelPtPbCond(double a, double b, double permeability, double c, double d);
    // The five numbers of the ITU form as they were set.
    bool GetRelPtPbCond(double& a, double& b, double& permeability, double& c, double& d);
    // Permittivity (the magnitude of the complex one), permeability and conductivity at
    // frequency in GHz. Without alreadyLocked the medium's lock is taken here. False, with
    // the values the arithmetic gives, for a frequency that is not above 0.
    bool GetRelPtPbCond_fromFreq(double frequency, double& permittivity, double& permeability,
                                 double& conductivity, bool alreadyLocked);

    bool SetTransRef(double frequency, double reflection, double transmission);
    // The factors at frequency: an exact entry, else the nearer of the two neighbouring ones.
    // False when either table is empty.
    bool GetTransRef(double frequency, double& transmission, double& reflection);

    // A medium carries no attenuation of its own: its loss follows from its conductivity.
    bool SetAtten(double frequency, double attenuation);
    bool GetAtten(double frequency, double& attenuation);

    bool GetColorBrightTrans(eParamValue& colour, eParamNumber& bright);
    bool SetColorBrightTrans(eParamValue colour, eParamNumber bright);

    bool HasName() const { return hasName; }
    bool HasFixedIndex() const { return hasFixedIndex; }

private:
    using FactorTable = std::map<double, double>;
    // The entry at frequency, or the neighbour nearer to it; the table is not empty.
    static double NearestFactor(const FactorTable& table, double frequency);
    // The parameter child loaded under that name, or null.
    Parameter* LoadedParameter(const char* name);
    // Makes the parameter hold value under childName while present holds, else drops it.
    template <typename T>
    void KeepFlagParameter(eParamName name, const char* childName, bool present, const T& value);

    double refractiveIndex = 1.0;
    bool hasName = false;
    bool hasFixedIndex = true;
    double a = 1.0;
    double b = 0.0;
    double permeability = 1.0;
    double c = 0.0;
    double d = 0.0;
    eParamValue color = PV_WHITE;
    eParamNumber brightness = PNUM_NONE;
    FactorTable transmission;
    FactorTable reflection;
};
