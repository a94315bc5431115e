#include "framework/SimObject.h"

#include <atomic>

#include "framework/Parameter.h"
#include "geometry/Layout.h"
#include "logging/Log.h"

int SimObject::nextSimObjectID = 0;
std::set<int> SimObject::SimObjectIDSet;
std::map<int, SimObject*> SimObject::IDSimObjectMap;
Lockable SimObject::simObjLock;
double SimObject::simTime = 0.0;

namespace {

// The identifying attributes, from A_SIMOBJID to A_QIKSET, are shown but fixed in an editor.
constexpr eAttrNameId fixedAttributes[] = {A_SIMOBJID,  A_OBJTYP, A_OBJTYPID, A_NAME,
                                           A_OBJNAMEID, A_CAPT,   A_QIKSET};

const char* const unNamed = "unNamed";

}  // namespace

SimObject::SimObject() { ReserveIdZero(); }

SimObject::SimObject(const SimObject& other)
    : NexoBase(),
      ActionAble(other),
      Renderable(other),
      objTypeStr(other.objTypeStr),
      objTypeId(other.objTypeId),
      objName(other.objName),
      objNameId(other.objNameId),
      caption(other.caption ? std::make_unique<std::string>(*other.caption) : nullptr),
      autoCaption(other.autoCaption),
      saveToXML(other.saveToXML),
      hasLayout(other.hasLayout),
      paramsWritten(other.paramsWritten),
      isQuickSet(other.isQuickSet),
      updateQuickSet(other.updateQuickSet),
      quickSet(other.quickSet),
      abovoQuickSet(other.abovoQuickSet),
      showInDataTree(other.showInDataTree) {
    ReserveIdZero();
}

SimObject::~SimObject() {
    Unregister();
    DeleteChildren();
    if (parent != nullptr) parent->RemoveChildAction(this);
}

void SimObject::ReserveIdZero() {
    // Id 0 is never given back, so once it is reserved a construction needs no lock: the
    // many positions of a layout are built without one.
    static std::atomic<bool> reserved{false};
    if (reserved.load(std::memory_order_acquire)) return;
    simObjLock.lock(true);
    if (SimObjectIDSet.empty()) {
        SimObjectIDSet.insert(0);
        nextSimObjectID = 1;
    }
    reserved.store(true, std::memory_order_release);
    simObjLock.unlock();
}

void SimObject::Unregister() {
    if (simObjectID == -1) return;
    simObjLock.lock(true);
    SimObjectIDSet.erase(simObjectID);
    auto entry = IDSimObjectMap.find(simObjectID);
    if (entry != IDSimObjectMap.end() && entry->second == this) IDSimObjectMap.erase(entry);
    simObjLock.unlock();
}

bool SimObject::Initialize() {
    loadedFromXml = false;
    simObjLock.lock(true);
    if (simObjectID != -1) {
        SimObjectIDSet.erase(simObjectID);
        IDSimObjectMap.erase(simObjectID);
    }
    while (SimObjectIDSet.count(nextSimObjectID) > 0) nextSimObjectID++;
    simObjectID = nextSimObjectID;
    SimObjectIDSet.insert(simObjectID);
    IDSimObjectMap[simObjectID] = this;
    sourceElement = nullptr;
    nextSimObjectID++;
    simObjLock.unlock();

    UpdateLayout();
    if (parent != nullptr) {
        parent->AddChild(this);
        TakeTranslationFromParentArray();
    }
    return Renderable::Initialize();
}

SimObject* SimObject::GetObjectGlobally(int id) {
    simObjLock.lock(true);
    auto entry = IDSimObjectMap.find(id);
    SimObject* object = entry == IDSimObjectMap.end() ? nullptr : entry->second;
    simObjLock.unlock();
    return object;
}

bool SimObject::SetName(const char* name) {
    if (name == nullptr) {
        Log::log(1) << "SimObject::SetName: no name given for " << objName << "\n";
        return false;
    }
    return SetName(std::string(name));
}

bool SimObject::SetName(const std::string& name) {
    objName = name;
    if (autoCaption) SetCaption(name);
    return true;
}

bool SimObject::SetCaption(const std::string& text) {
    caption = std::make_unique<std::string>(text);
    return true;
}

std::string SimObject::GetCaption() const { return caption ? *caption : std::string(); }

void SimObject::SetAutoCaption(bool value) {
    autoCaption = value;
    if (autoCaption) SetCaption(objName);
}

bool SimObject::AddChild(SimObject* child) {
    if (child == nullptr) {
        Log::log(1) << "SimObject::AddChild: null child for " << objName << "\n";
        return false;
    }
    child->parent = this;
    xmlCurrent = false;
    if (child->simObjectID == -1) {
        // The parent pointer stays: the child's Initialize registers it here.
        Log::log(3) << "SimObject::AddChild: " << child->objName << " is not initialised yet\n";
        return false;
    }
    if (!childIds.insert(child->simObjectID).second) {
        Log::log(1) << "SimObject::AddChild: " << child->objName << " is a child of " << objName
                    << " already\n";
        return false;
    }
    simObjLock.lock(true);
    IDSimObjectMap.emplace(child->simObjectID, child);
    simObjLock.unlock();
    AddChildAction(child);
    return true;
}

bool SimObject::RemoveChild(SimObject* child, bool destroy) {
    if (child == nullptr || childIds.erase(child->simObjectID) == 0) return false;
    child->parent = nullptr;
    RemoveChildAction(child);
    xmlCurrent = false;
    if (layout != nullptr && child == static_cast<SimObject*>(layout)) layout = nullptr;
    if (destroy) delete child;
    return true;
}

bool SimObject::RemoveChildrenName(const std::string& name, bool destroy) {
    bool removed = false;
    for (SimObject* child : LiveChildren()) {
        if (child->TestName(name)) removed = RemoveChild(child, destroy) || removed;
    }
    return removed;
}

bool SimObject::RemoveChildrenType(const std::string& type, bool destroy) {
    bool removed = false;
    for (SimObject* child : LiveChildren()) {
        if (child->TestType(type)) removed = RemoveChild(child, destroy) || removed;
    }
    return removed;
}

SimObject* SimObject::GetChildNamed(const std::string& name) {
    for (SimObject* child : LiveChildren()) {
        if (child->TestName(name)) return child;
    }
    return nullptr;
}

SimObject* SimObject::GetChildTyped(const std::string& type) {
    for (SimObject* child : LiveChildren()) {
        if (child->TestType(type)) return child;
    }
    return nullptr;
}

SimObject* SimObject::GetChild(int position, bool quick) {
    if (position < 0 || position >= GetChildCount()) return nullptr;
    if (quick) return GetObjectGlobally(*std::next(childIds.begin(), position));
    std::vector<SimObject*> children = LiveChildren();
    return position < static_cast<int>(children.size()) ? children[position] : nullptr;
}

SimObject* SimObject::GetChildWithId(int id, bool recursive) {
    if (childIds.count(id) > 0) {
        SimObject* child = GetObjectGlobally(id);
        if (child != nullptr) return child;
    }
    if (!recursive) return nullptr;
    for (SimObject* child : LiveChildren()) {
        SimObject* found = child->GetChildWithId(id, true);
        if (found != nullptr) return found;
    }
    return nullptr;
}

bool SimObject::RemoveNullChildren() {
    size_t before = childIds.size();
    LiveChildren();
    return childIds.size() != before;
}

std::vector<SimObject*> SimObject::LiveChildren() {
    std::vector<SimObject*> children;
    children.reserve(childIds.size());
    simObjLock.lock(true);
    for (auto id = childIds.begin(); id != childIds.end();) {
        auto entry = IDSimObjectMap.find(*id);
        if (entry == IDSimObjectMap.end()) {
            id = childIds.erase(id);
            continue;
        }
        children.push_back(entry->second);
        ++id;
    }
    simObjLock.unlock();
    return children;
}

void SimObject::DeleteChildren() {
    std::vector<SimObject*> children = LiveChildren();
    childIds.clear();
    ClearChildActions();
    layout = nullptr;
    for (SimObject* child : children) {
        // A child taken over by another parent belongs to that one.
        if (child->parent != this) continue;
        child->parent = nullptr;
        delete child;
    }
}

bool SimObject::Empty() {
    DeleteChildren();
    xmlCurrent = false;
    sourceElement = nullptr;
    loadedFromXml = false;
    transformationApplied = false;
    return true;
}

void SimObject::WriteAttributes(CElement* element) {
    element->setAttribute(A_SIMOBJID, simObjectID);
    element->setAttribute(A_OBJTYP, objTypeStr);
    element->setAttribute(A_OBJTYPID, objTypeId);
    element->setAttribute(A_NAME, objName);
    element->setAttribute(A_OBJNAMEID, objNameId);
    element->setAttribute(A_QIKSET, quickSet);
    for (eAttrNameId id : fixedAttributes) {
        element->setAttributeDisplayEditTextDropBox(id, true, false, false, false);
    }
    element->setAttributeDisplayEditTextDropBox(A_NAME, true, true, true, false);
}

std::map<int, CElement*> SimObject::MarkSubElementsOld(CElement* element) {
    std::map<int, CElement*> byId;
    for (const auto& entry : element->elements()) {
        CElement* sub = entry.second;
        sub->setOld(true);
        int id = -1;
        if (sub->getAttributeValue(A_SIMOBJID, id)) byId.emplace(id, sub);
    }
    return byId;
}

void SimObject::RemoveOldSubElements(CElement* element) {
    std::vector<CElement*> old;
    for (const auto& entry : element->elements()) {
        if (entry.second->getOld()) old.push_back(entry.second);
    }
    for (CElement* sub : old) element->removeElement(sub);
}

bool SimObject::SkipOnSave(SimObject* child, bool leaveOutExpanded) const {
    if (isQuickSet && leaveOutExpanded &&
        (child->TestType("CityPart") || child->TestType("TestPoint"))) {
        return true;
    }
    return !child->saveToXML;
}

bool SimObject::ToXml(CElement* element, bool leaveOutExpanded) {
    if (element == nullptr) {
        Log::log(1) << "SimObject::ToXml: no element for " << objName << "\n";
        return false;
    }
    element->setName(objTypeStr);
    if (objName == unNamed) objName = objTypeStr;
    WriteAttributes(element);

    std::map<int, CElement*> existing = MarkSubElementsOld(element);
    bool savedAll = true;
    for (SimObject* child : LiveChildren()) {
        if (SkipOnSave(child, leaveOutExpanded)) continue;
        auto found = existing.find(child->simObjectID);
        CElement* sub = found == existing.end() ? new CElement() : found->second;
        savedAll = child->ToXml(sub, leaveOutExpanded) && savedAll;
        if (found == existing.end()) element->addElement(sub);
        sub->setOld(false);
    }
    RemoveOldSubElements(element);
    xmlCurrent = true;
    return savedAll;
}

bool SimObject::FromXml(CElement* element) {
    if (element == nullptr) {
        Log::log(1) << "SimObject::FromXml: no element for " << objName << "\n";
        return false;
    }
    LoadAttributeFromElement(element, A_OBJTYP, objTypeStr);
    LoadAttributeFromElement(element, A_OBJTYPID, objTypeId);
    LoadAttributeFromElement(element, A_NAME, objName);
    LoadAttributeFromElement(element, A_OBJNAMEID, objNameId);
    if (caption) LoadAttributeFromElement(element, A_CAPT, *caption);
    LoadAttributeFromElement(element, A_QIKSET, quickSet);
    loadedFromXml = true;
    sourceElement = element;
    if (hasLayout) {
        InitLayout();
        LoadPointerByType<Layout>(&layout, element, "Layout");
        // The layout's global transformation takes in its parent's accumulated one.
        UpdateLayout();
    }
    return Renderable::FromXml(element);
}

bool SimObject::ChildrenEqual(SimObject* mine, SimObject* theirs) {
    // Parameters compare by value, which their SimObject side does not see.
    auto* myParameter = dynamic_cast<Parameter*>(mine);
    auto* theirParameter = dynamic_cast<Parameter*>(theirs);
    if (myParameter != nullptr && theirParameter != nullptr) {
        return myParameter->CheckEq(theirParameter);
    }
    return mine->CheckEq(theirs);
}

bool SimObject::CheckEq(SimObject* other) {
    if (other == nullptr) {
        Log::log(1) << "SimObject::CheckEq: nothing to compare " << objName << " with\n";
        return false;
    }
    if (objName != other->objName || objTypeStr != other->objTypeStr) {
        Log::log(1) << "SimObject::CheckEq: " << objTypeStr << " " << objName << " differs from "
                    << other->objTypeStr << " " << other->objName << "\n";
        return false;
    }
    std::vector<SimObject*> mine = LiveChildren();
    std::vector<SimObject*> theirs = other->LiveChildren();
    if (mine.size() != theirs.size()) {
        Log::log(1) << "SimObject::CheckEq: " << objName << " has " << mine.size()
                    << " children against " << theirs.size() << "\n";
        return false;
    }
    for (size_t i = 0; i < mine.size(); i++) {
        if (!ChildrenEqual(mine[i], theirs[i])) {
            Log::log(1) << "child of " << objName << " named " << mine[i]->objName << "\n";
            return false;
        }
    }
    return true;
}

bool SimObject::QuickSetToChildren(bool force) {
    for (SimObject* child : LiveChildren()) {
        if (child->GetUpdateQuickSet() || child->IsAbovoQuickSet() || child->getQuickSet()) {
            child->QuickSetToChildren(force);
            child->SetUpdateQuickSet(false, true);
        }
    }
    return true;
}

bool SimObject::QuickSetFromChildren() {
    for (SimObject* child : LiveChildren()) child->QuickSetFromChildren();
    return true;
}

bool SimObject::RemoveQuickSet() { return true; }

bool SimObject::LeaveOnlyQuickSet() { return true; }

void SimObject::SetIsQuickSet(bool value) { isQuickSet = value; }

bool SimObject::IsQuickSetParam(int) { return false; }

bool SimObject::IsReSimParam(int) { return false; }

void SimObject::SetUpdateQuickSet(bool value, bool recursive) {
    updateQuickSet = value;
    if (!recursive) return;
    for (SimObject* child : LiveChildren()) child->SetUpdateQuickSet(value, true);
}

bool SimObject::GetUpdateQuickSet() { return updateQuickSet; }

bool SimObject::IsAbovoQuickSet() { return abovoQuickSet; }

bool SimObject::ShowInDataTree() { return showInDataTree; }

bool SimObject::ToRenderData(ObjectRenderData*) { return false; }

bool SimObject::ToRenderData(std::vector<ObjectRenderData*>&) { return false; }

bool SimObject::ToRenderData(TextRenderData*) { return false; }

bool SimObject::ToRenderData(std::vector<TextRenderData*>&) { return false; }

bool SimObject::SetActions(int) { return false; }

bool SimObject::ReceiveEditOption(eActionEditOptions) { return false; }

bool SimObject::ApplyTransformation(bool forward) {
    for (SimObject* child : LiveChildren()) child->ApplyTransformation(forward);
    transformationApplied = true;
    return true;
}

void SimObject::Print() {
    Log::log(4) << objTypeStr << " \"" << objName << "\" id " << simObjectID << " with "
                << GetChildCount() << " children\n";
    for (SimObject* child : LiveChildren()) child->Print();
}

void SimObject::SetTime(double time) { simTime = time; }

void SimObject::AdvanceTime(double step) { simTime += step; }

double SimObject::GetTime() { return simTime; }
