#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "framework/ParamTypes.h"
#include "framework/Parameter.h"
#include "framework/SimObject.h"

class Coordinates;

// A simulation object with named parameters. All its parameters live in the multimap,
// keyed by name; several of one name are told apart by their index. Each is also a child.
//
// The quick parameters are the few that define the component in a saved system; the rest
// of its children can be rebuilt from them. Every component has the standard children
// "centrePoint", "startPoint" (Coordinates at the origin) and "heading" (a Direction).
class Component : public SimObject, public std::multimap<eParamName, Parameter*> {
public:
    using ParameterMap = std::multimap<eParamName, Parameter*>;

    Component();
    Component(const Component&) = delete;
    Component& operator=(const Component&) = delete;
    ~Component() override;

    // Deletes children, parameters and render records.
    bool Empty() override;
    // Replaces the parameters by those of the element and loads "heading" and the layout.
    bool FromXml(CElement* element) override;
    bool IsQuickSetParam(int id) override;
    bool IsReSimParam(int name) override;
    // SimObject's Initialize, then the standard children where they are missing.
    bool Initialize() override;
    void Print() override;

    // Reacts to a new parameter value; nothing by default.
    virtual bool ParamUpdated(Parameter* param);
    using SimObject::CheckEq;
    // Same parameters by name and index, then the SimObject comparison.
    virtual bool CheckEq(Component* other);
    virtual bool RemoveQuickSetParams();
    // Keeps only the quick parameters and quick layouts: what a client would have sent.
    virtual bool LeaveOnlyQuickSetParams();
    // Brings dependent parameters into line; nothing by default.
    virtual bool checkParams();

    // Takes ownership of p as a child; with quick it becomes a quick parameter too.
    bool AddParameter(Parameter* p, bool quick);
    bool AddQuickParameter(Parameter* p);
    // Removes and deletes every parameter of the name, or the one given.
    bool RemoveParameter(eParamName name);
    bool RemoveParameter(Parameter* p);
    Parameter* GetParameterp(eParamName name);
    // By file name or display name.
    Parameter* GetParameterp(const std::string& name);
    // The nth (from 0) parameter of the name.
    Parameter* GetParameterOcurrencep(eParamName name, int n);
    Parameter* GetParameterIndexp(eParamName name, int index);
    int GetMinIndex(eParamName name);
    int GetMaxIndex(eParamName name);
    int GetCount(eParamName name);
    // Sets the value limits of the parameter.
    bool SetParameterValRange(eParamName name, int first, int last);
    bool UpdateParameterUnits(eParamName name, eParamUnits units);
    bool UpdateParameterMult(eParamName name, eParamMultiplier mult);
    bool UpdateParameterIndex(eParamName name, int index);
    // Keeps copies of all parameters, to be put back by RestoreParameters.
    bool BackupParameters();
    bool RestoreParameters();
    // Gives to the parameter toName of to the value of the parameter fromName of from.
    static bool PassParameter(eParamName fromName, Component* from, Component* to,
                              eParamName toName);
    // Rounds each of the first count coordinates of point to a multiple of snap.
    static bool snapPoint(Coordinates* point, int count, double snap);
    std::vector<Parameter*>& GetQuickParameters() { return quickParameters; }

    template <typename T>
    bool GetParameterValue(eParamName name, T& out, sParamDesc** desc = nullptr);
    template <typename T>
    bool SetParameterValue(eParamName name, T value, eParamUnits units = PU_NON,
                           eParamMultiplier mult = PM_NON, int index = -1);
    template <typename T>
    bool SetParameterValue(eParamName name, T value, sParamDesc* desc, int index = -1);
    template <typename T>
    bool SetQuickParameterValue(eParamName name, T value, eParamUnits units = PU_NON,
                                eParamMultiplier mult = PM_NON, int index = -1);
    template <typename T>
    bool SetQuickParameterValue(eParamName name, T value, sParamDesc* desc, int index = -1);
    template <typename T>
    bool UpdateParameterValue(eParamName name, T value, eParamUnits units = PU_NON,
                              eParamMultiplier mult = PM_NON);
    template <typename T>
    bool TestParameterValue(eParamName name, T value);
    template <typename T>
    bool GetParameterIndexValue(eParamName name, int index, T& out, sParamDesc** desc = nullptr);

protected:
    std::vector<std::shared_ptr<ObjectRenderData>> renderData;
    std::vector<Parameter*> quickParameters;
    std::vector<Parameter*> backupParameters;
    bool paramsChecked = false;

private:
    // Empties the multimap and the quick list; the parameters themselves stay.
    void ForgetParameters();
    void ClearBackup();
    // Takes p off the quick list and deletes it; it has left the multimap already.
    void DropParameter(Parameter* p);
    // The first parameter of the name; logs the caller when there is none.
    Parameter* ExistingParameter(eParamName name, const char* caller);
    // The parameter of the name (and index, unless -1), made and added when missing.
    Parameter* FindOrMakeParameter(eParamName name, int index);
    void FinishParameterWrite(Parameter* p, eParamName name, int index, eParamUnits units,
                              eParamMultiplier mult);
};

template <typename T>
bool Component::GetParameterValue(eParamName name, T& out, sParamDesc** desc) {
    Parameter* p = GetParameterp(name);
    if (p == nullptr) return false;
    if (p->getValue(&out, desc)) return true;
    if (desc != nullptr) *desc = p->getDesc();
    return false;
}

template <typename T>
bool Component::GetParameterIndexValue(eParamName name, int index, T& out, sParamDesc** desc) {
    Parameter* p = GetParameterIndexp(name, index);
    if (p == nullptr) return false;
    if (p->getValue(&out, desc)) return true;
    if (desc != nullptr) *desc = p->getDesc();
    return false;
}

template <typename T>
bool Component::SetParameterValue(eParamName name, T value, eParamUnits units,
                                  eParamMultiplier mult, int index) {
    Parameter* p = FindOrMakeParameter(name, index);
    p->setValue(value, nullptr);
    FinishParameterWrite(p, name, index, units, mult);
    return true;
}

template <typename T>
bool Component::SetParameterValue(eParamName name, T value, sParamDesc* desc, int index) {
    Parameter* p = FindOrMakeParameter(name, index);
    p->setValue(value, desc == nullptr ? nullptr : &desc);
    FinishParameterWrite(p, name, index, desc == nullptr ? PU_NON : desc->units,
                         desc == nullptr ? PM_NON : desc->mult);
    return true;
}

template <typename T>
bool Component::SetQuickParameterValue(eParamName name, T value, eParamUnits units,
                                       eParamMultiplier mult, int index) {
    SetParameterValue(name, value, units, mult, index);
    return AddQuickParameter(index == -1 ? GetParameterp(name) : GetParameterIndexp(name, index));
}

template <typename T>
bool Component::SetQuickParameterValue(eParamName name, T value, sParamDesc* desc, int index) {
    SetParameterValue(name, value, desc, index);
    return AddQuickParameter(index == -1 ? GetParameterp(name) : GetParameterIndexp(name, index));
}

template <typename T>
bool Component::UpdateParameterValue(eParamName name, T value, eParamUnits units,
                                     eParamMultiplier mult) {
    Parameter* p = ExistingParameter(name, "UpdateParameterValue");
    if (p == nullptr) return false;
    p->setValue(value, nullptr);
    if (units != PU_NON) p->setUnits(units);
    if (mult != PM_NON) p->setMult(mult);
    paramsChecked = false;
    return true;
}

template <typename T>
bool Component::TestParameterValue(eParamName name, T value) {
    Parameter* p = GetParameterp(name);
    return p != nullptr && p->testValue(value, nullptr);
}
