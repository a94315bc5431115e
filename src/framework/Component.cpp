#include "framework/Component.h"

#include <algorithm>
#include <cmath>

#include "framework/Parameter.h"
#include "geometry/Coordinates.h"
#include "geometry/Direction.h"
#include "geometry/Layout.h"
#include "geometry/MatrixTemplate.h"
#include "logging/Log.h"

namespace {

// Makes the standard child of that name, a T at (x, y, z), unless the owner has it already.
template <typename T>
void AddStandardChild(Component* owner, const char* name, double x, double y, double z) {
    if (owner->GetChildNamed(name) != nullptr) return;
    T* child = new T(x, y, z);
    child->Initialize();
    owner->AddChild(child);
    child->SetName(name);
}

}  // namespace

Component::Component() { objTypeStr = "Component"; }

Component::~Component() {
    ClearBackup();
    DeleteChildren();
    ParameterMap::clear();
    quickParameters.clear();
}

bool Component::Initialize() {
    if (!SimObject::Initialize()) return false;
    // A matrix is itself what the standard children are made of.
    if (dynamic_cast<MatrixTemplate<double>*>(this) != nullptr) return true;
    AddStandardChild<Coordinates>(this, "centrePoint", 0.0, 0.0, 0.0);
    AddStandardChild<Coordinates>(this, "startPoint", 0.0, 0.0, 0.0);
    AddStandardChild<Direction>(this, "heading", 1.0, 0.0, 0.0);
    return true;
}

bool Component::Empty() {
    SimObject::Empty();
    ParameterMap::clear();
    quickParameters.clear();
    ClearBackup();
    renderData.clear();
    return true;
}

void Component::ForgetParameters() {
    ParameterMap::clear();
    quickParameters.clear();
}

bool Component::FromXml(CElement* element) {
    if (element == nullptr) {
        Log::log(1) << "Component::FromXml: no element for " << objName << "\n";
        return false;
    }
    RemoveChildrenType("Parameter", true);
    ForgetParameters();
    if (!SimObject::FromXml(element)) return false;

    std::vector<Parameter*> loaded;
    LoadVectorByType<Parameter>(&loaded, element, "Parameter");
    for (SimObject* child : LiveChildren()) {
        auto* param = dynamic_cast<Parameter*>(child);
        if (param == nullptr) continue;
        if (param->getQuickSet()) AddQuickParameter(param);
        ParameterMap::emplace(param->getName(), param);
    }

    Direction* heading = dynamic_cast<Direction*>(GetChildNamed("heading"));
    LoadPointerByName<Direction>(&heading, element, "heading");
    // An object with a layout has loaded it with its SimObject side already; one that finds
    // a layout in the file has one from now on.
    if (!hasLayout && LoadPointerByType<Layout>(&layout, element, "Layout")) hasLayout = true;
    ApplyTransformation(true);
    return true;
}

bool Component::IsQuickSetParam(int id) {
    return std::any_of(quickParameters.begin(), quickParameters.end(),
                       [id](Parameter* p) { return p->GetSimObjectID() == id; });
}

bool Component::IsReSimParam(int name) {
    Parameter* p = GetParameterp(static_cast<eParamName>(name));
    return p != nullptr && p->ReSimOnChange();
}

void Component::Print() {
    Log::log(4) << "Component " << objName << ": " << ParameterMap::size() << " parameters, "
                << quickParameters.size() << " quick\n";
    SimObject::Print();
}

bool Component::ParamUpdated(Parameter*) { return true; }

bool Component::CheckEq(Component* other) {
    if (other == nullptr) return SimObject::CheckEq(static_cast<SimObject*>(nullptr));
    if (ParameterMap::size() != other->ParameterMap::size() ||
        quickParameters.size() != other->quickParameters.size()) {
        Log::log(1) << "Component::CheckEq: the parameters of " << objName << " differ\n";
        return false;
    }
    return SimObject::CheckEq(static_cast<SimObject*>(other));
}

bool Component::RemoveQuickSetParams() { return true; }

bool Component::LeaveOnlyQuickSetParams() {
    for (SimObject* child : LiveChildren()) {
        if (child->TestType("Layout") && child->getQuickSet()) continue;
        auto* param = dynamic_cast<Parameter*>(child);
        if (param != nullptr) {
            if (!param->getQuickSet()) RemoveParameter(param);
            continue;
        }
        RemoveChild(child, true);
    }
    return true;
}

bool Component::checkParams() { return true; }

bool Component::AddParameter(Parameter* p, bool quick) {
    if (p == nullptr) {
        Log::log(1) << "Component::AddParameter: null parameter for " << objName << "\n";
        return false;
    }
    ParameterMap::emplace(p->getName(), p);
    AddChild(p);
    if (quick) AddQuickParameter(p);
    paramsChecked = false;
    return true;
}

bool Component::AddQuickParameter(Parameter* p) {
    if (p == nullptr) {
        Log::log(1) << "Component::AddQuickParameter: null parameter for " << objName << "\n";
        return false;
    }
    bool listed = std::any_of(quickParameters.begin(), quickParameters.end(), [p](Parameter* q) {
        return q == p || q->GetSimObjectID() == p->GetSimObjectID();
    });
    if (!listed) quickParameters.push_back(p);
    isQuickSet = true;
    updateQuickSet = true;
    paramsChecked = false;
    p->setQuickSet(true);
    return true;
}

void Component::DropParameter(Parameter* p) {
    quickParameters.erase(std::remove(quickParameters.begin(), quickParameters.end(), p),
                          quickParameters.end());
    if (!RemoveChild(p, true)) delete p;
}

bool Component::RemoveParameter(eParamName name) {
    auto range = ParameterMap::equal_range(name);
    if (range.first == range.second) return false;
    std::vector<Parameter*> removed;
    for (auto entry = range.first; entry != range.second; ++entry) removed.push_back(entry->second);
    ParameterMap::erase(range.first, range.second);
    for (Parameter* p : removed) DropParameter(p);
    paramsChecked = false;
    return true;
}

bool Component::RemoveParameter(Parameter* p) {
    if (p == nullptr) return false;
    auto range = ParameterMap::equal_range(p->getName());
    auto entry = std::find_if(range.first, range.second,
                              [p](const value_type& candidate) { return candidate.second == p; });
    if (entry == range.second) return false;
    ParameterMap::erase(entry);
    DropParameter(p);
    paramsChecked = false;
    return true;
}

Parameter* Component::GetParameterp(eParamName name) {
    auto entry = ParameterMap::find(name);
    return entry == ParameterMap::end() ? nullptr : entry->second;
}

Parameter* Component::GetParameterp(const std::string& name) {
    for (const auto& [parName, p] : static_cast<ParameterMap&>(*this)) {
        if (p->TestName(name)) return p;
        auto fileName = Parameter::paramNameFILEStrings.find(parName);
        if (fileName != Parameter::paramNameFILEStrings.end() && fileName->second == name) {
            return p;
        }
    }
    return nullptr;
}

Parameter* Component::GetParameterOcurrencep(eParamName name, int n) {
    if (n < 0) return nullptr;
    auto range = ParameterMap::equal_range(name);
    for (auto entry = range.first; entry != range.second; ++entry, --n) {
        if (n == 0) return entry->second;
    }
    return nullptr;
}

Parameter* Component::GetParameterIndexp(eParamName name, int index) {
    auto range = ParameterMap::equal_range(name);
    for (auto entry = range.first; entry != range.second; ++entry) {
        if (entry->second->GetIndex() == index) return entry->second;
    }
    return nullptr;
}

int Component::GetMinIndex(eParamName name) {
    auto range = ParameterMap::equal_range(name);
    if (range.first == range.second) return -1;
    int lowest = range.first->second->GetIndex();
    for (auto entry = range.first; entry != range.second; ++entry) {
        lowest = std::min(lowest, entry->second->GetIndex());
    }
    return lowest;
}

int Component::GetMaxIndex(eParamName name) {
    auto range = ParameterMap::equal_range(name);
    if (range.first == range.second) return -1;
    int highest = range.first->second->GetIndex();
    for (auto entry = range.first; entry != range.second; ++entry) {
        highest = std::max(highest, entry->second->GetIndex());
    }
    return highest;
}

int Component::GetCount(eParamName name) { return static_cast<int>(ParameterMap::count(name)); }

Parameter* Component::ExistingParameter(eParamName name, const char* caller) {
    Parameter* p = GetParameterp(name);
    if (p == nullptr) {
        Log::log(1) << "Component::" << caller << ": " << objName << " has no parameter "
                    << static_cast<int>(name) << "\n";
    }
    return p;
}

bool Component::SetParameterValRange(eParamName name, int first, int last) {
    Parameter* p = ExistingParameter(name, "SetParameterValRange");
    if (p == nullptr) return false;
    sParamDesc desc = *p->getDesc();
    desc.limits[0] = first;
    desc.limits[1] = last;
    p->setDesc(&desc);
    paramsChecked = false;
    return true;
}

bool Component::UpdateParameterUnits(eParamName name, eParamUnits units) {
    Parameter* p = ExistingParameter(name, "UpdateParameterUnits");
    if (p == nullptr) return false;
    p->setUnits(units);
    paramsChecked = false;
    return true;
}

bool Component::UpdateParameterMult(eParamName name, eParamMultiplier mult) {
    Parameter* p = ExistingParameter(name, "UpdateParameterMult");
    if (p == nullptr) return false;
    p->setMult(mult);
    paramsChecked = false;
    return true;
}

bool Component::UpdateParameterIndex(eParamName name, int index) {
    Parameter* p = ExistingParameter(name, "UpdateParameterIndex");
    if (p == nullptr) return false;
    p->SetIndex(index);
    paramsChecked = false;
    return true;
}

void Component::ClearBackup() {
    for (Parameter* copy : backupParameters) delete copy;
    backupParameters.clear();
}

bool Component::BackupParameters() {
    ClearBackup();
    for (const auto& entry : static_cast<ParameterMap&>(*this)) {
        backupParameters.push_back(new Parameter(*entry.second));
    }
    return true;
}

bool Component::RestoreParameters() {
    for (Parameter* copy : backupParameters) {
        const char* text = copy->getValue();
        SetParameterValue(copy->getName(), std::string(text == nullptr ? "" : text),
                          copy->getUnits(), copy->getMult(), copy->GetIndex());
    }
    ClearBackup();
    return true;
}

bool Component::PassParameter(eParamName fromName, Component* from, Component* to,
                              eParamName toName) {
    if (from == nullptr || to == nullptr) {
        Log::log(1) << "Component::PassParameter: no component to pass between\n";
        return false;
    }
    Parameter* source = from->GetParameterp(fromName);
    if (source == nullptr) return false;
    to->paramsChecked = false;
    Parameter* target = to->GetParameterp(toName);
    if (target != nullptr) return target->Copy(source);

    auto* copy = new Parameter(*source);
    copy->setParName(toName);
    copy->Initialize();
    to->AddParameter(copy, false);
    if (source->getQuickSet()) to->AddQuickParameter(copy);
    // The name's rules may depend on the new parent.
    copy->ProcessParamName();
    return true;
}

bool Component::snapPoint(Coordinates* point, int count, double snap) {
    if (point == nullptr || snap <= 0.0) {
        Log::log(1) << "Component::snapPoint: no point or no positive snap size\n";
        return false;
    }
    int elements = point->GetDim(1) * point->GetDim(2);
    for (int i = 0; i < std::min(count, elements); i++) {
        point->SetValue(i, std::round(point->Get(i, false) / snap) * snap);
    }
    return true;
}

Parameter* Component::FindOrMakeParameter(eParamName name, int index) {
    Parameter* p = index == -1 ? GetParameterp(name) : GetParameterIndexp(name, index);
    if (p != nullptr) return p;
    p = new Parameter();
    p->setParName(name);
    p->SetIndex(index);
    p->Initialize();
    AddParameter(p, false);
    return p;
}

void Component::FinishParameterWrite(Parameter* p, eParamName name, int index, eParamUnits units,
                                     eParamMultiplier mult) {
    // Naming again runs the name's rules now that the parent is known.
    p->setParName(name);
    p->SetIndex(index);
    p->setUnits(units);
    p->setMult(mult);
    paramsChecked = false;
}
