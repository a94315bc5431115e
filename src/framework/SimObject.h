#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "documents/CElement.h"
#include "framework/ActionAble.h"
#include "framework/Lockable.h"
#include "framework/Renderable.h"

class Layout;
class Transformation;

// A node of the simulation tree. Every object has a process-wide integer id, taken by
// Initialize, and knows its children by id only: a child deleted elsewhere leaves a stale
// id that lookups skip, never a dangling pointer. The type string is the class name and the
// XML element name; each derived constructor sets it.
//
// Construction follows one pattern: new, Initialize, AddChild under the parent, SetName.
// A parent owns its children and deletes them with itself.
class SimObject : public ActionAble, public Renderable {
public:
    SimObject();
    // A copy has the other's type, names, caption and flags, but is a new object: no id
    // until it is initialised, no parent, no children and no layout.
    SimObject(const SimObject& other);
    SimObject& operator=(const SimObject&) = delete;
    ~SimObject() override;

    // Deletes all children and the layout; the object keeps its id, type, name and parent.
    virtual bool Empty();
    // Reads names, type, caption and the quick-set mark; the id is not read.
    virtual bool FromXml(CElement* element);
    // Writes this object into element in place: sub-elements of children still present are
    // updated, new children get new sub-elements, those of children gone are removed. With
    // leaveOutExpanded, a quick-set object leaves out its expanded "CityPart" and
    // "TestPoint" children.
    virtual bool ToXml(CElement* element, bool leaveOutExpanded);
    // Same name, type and children in order; a difference is logged and gives false.
    virtual bool CheckEq(SimObject* other);
    // Lets each child that needs it rebuild itself from its quick parameters.
    virtual bool QuickSetToChildren(bool force);
    // Lets each child collect its quick parameters from its expanded children.
    virtual bool QuickSetFromChildren();
    virtual bool RemoveQuickSet();
    virtual bool LeaveOnlyQuickSet();
    virtual void SetIsQuickSet(bool value);
    virtual bool IsQuickSetParam(int id);
    virtual bool IsReSimParam(int name);
    // Stores the flag, and with recursive passes it down to all children.
    virtual void SetUpdateQuickSet(bool value, bool recursive);
    virtual bool GetUpdateQuickSet();
    virtual bool IsAbovoQuickSet();
    virtual bool ShowInDataTree();
    // Takes a fresh id (giving back a previous one) and registers with the parent, if set.
    virtual bool Initialize();
    // Rendering happens outside this library: the defaults hand over nothing.
    virtual bool ToRenderData(ObjectRenderData* data);
    virtual bool ToRenderData(std::vector<ObjectRenderData*>& data);
    virtual bool ToRenderData(TextRenderData* data);
    virtual bool ToRenderData(std::vector<TextRenderData*>& data);
    virtual bool SetActions(int actions);
    virtual bool ReceiveEditOption(eActionEditOptions option);
    // Pushes the transformations down the tree: each child applies its own.
    virtual bool ApplyTransformation(bool forward);
    // The object and its children on the status log.
    virtual void Print();

    bool SetName(const char* name);
    bool SetName(const std::string& name);
    const std::string& GetName() const { return objName; }
    bool TestName(const std::string& name) const { return objName == name; }
    bool TestNameId(int nameId) const { return objNameId == nameId; }
    bool TestType(const std::string& type) const { return objTypeStr == type; }
    bool TestTypeId(int typeId) const { return objTypeId == typeId; }
    const std::string& GetTypeStr() const { return objTypeStr; }
    int GetTypeId() const { return objTypeId; }
    void SetTypeId(int typeId) { objTypeId = typeId; }
    int GetNameId() const { return objNameId; }
    void SetNameId(int nameId) { objNameId = nameId; }
    int GetSimObjectID() const { return simObjectID; }

    // The caption; with autoCaption it follows the name. An empty text when there is none.
    bool SetCaption(const std::string& text);
    std::string GetCaption() const;
    bool HasCaption() const { return caption != nullptr; }
    void SetAutoCaption(bool value);

    void SetParent(SimObject* newParent) { parent = newParent; }
    SimObject* GetParent() const { return parent; }

    // False for a null child, one not yet initialised (its parent is set all the same, so
    // that its Initialize registers it) and one already held.
    bool AddChild(SimObject* child);
    // False when the child is not held; with destroy the child is deleted.
    bool RemoveChild(SimObject* child, bool destroy);
    // Remove every child with that name (type); false when there was none.
    bool RemoveChildrenName(const std::string& name, bool destroy);
    bool RemoveChildrenType(const std::string& type, bool destroy);
    // The first child, in id order, with that name (type); null when none.
    SimObject* GetChildNamed(const std::string& name);
    SimObject* GetChildTyped(const std::string& type);
    // The child at a position from 0, in ascending id order; null beyond the count. With
    // quick, a stale id gives null; without, stale ids are dropped and never count.
    SimObject* GetChild(int position, bool quick = false);
    // The child with that id; with recursive the whole subtree is searched.
    SimObject* GetChildWithId(int id, bool recursive = false);
    int GetChildCount() const { return static_cast<int>(childIds.size()); }
    // Drops the ids of children that no longer exist; false when there were none.
    bool RemoveNullChildren();
    // The live object with that id, or null.
    static SimObject* GetObjectGlobally(int id);

    // Transformations of the layout: null for an object without one.
    Transformation* GetGlobalTransformation();
    Transformation* GetUpperTransformation();
    Transformation* GetLocalTransformation();
    // Makes the layout child when the object has none.
    bool InitLayout();
    // Brings the layout's transformations up to date; true without a layout.
    bool UpdateLayout();
    // The positions of the layout's array; 1 when there is no array.
    int GetLayoutPositionCount();
    // Moves the object to a position of its layout's array.
    bool SetLayoutPosition(int position);
    Layout* GetLayout() const { return layout; }
    bool GetHasLayout() const { return hasLayout; }
    void SetHasLayout(bool value) { hasLayout = value; }
    bool GetTransformationApplied() const { return transformationApplied; }
    void SetTransformationApplied(bool value) { transformationApplied = value; }

    static void SetTime(double time);
    static void AdvanceTime(double step);
    static double GetTime();

    bool getQuickSet() const { return quickSet; }
    void setQuickSet(bool value) { quickSet = value; }
    bool GetIsQuickSet() const { return isQuickSet; }
    void SetAbovoQuickSet(bool value) { abovoQuickSet = value; }
    void SetShowInDataTree(bool value) { showInDataTree = value; }
    bool GetSaveToXML() const { return saveToXML; }
    void SetSaveToXML(bool value) { saveToXML = value; }
    bool GetLoadedFromXml() const { return loadedFromXml; }
    CElement* GetSourceElement() const { return sourceElement; }
    bool GetXmlCurrent() const { return xmlCurrent; }
    bool GetParamsWritten() const { return paramsWritten; }
    void SetParamsWritten(bool value) { paramsWritten = value; }

    // Finds the sub-element whose "A_NAME" is name (whose element name is type), loads it
    // into *target, constructing and initialising a T when *target is null, and adds the
    // object as a child. False when there is no such sub-element or the load fails; an
    // object made here is deleted again on failure.
    template <typename T>
    bool LoadPointerByName(T** target, CElement* element, const char* name);
    template <typename T>
    bool LoadPointerByType(T** target, CElement* element, const char* type);
    // The same for every matching sub-element, appending to target. False when one failed.
    template <typename T>
    bool LoadVectorByName(std::vector<T*>* target, CElement* element, const char* name);
    template <typename T>
    bool LoadVectorByType(std::vector<T*>* target, CElement* element, const char* type);
    // Sets the attribute (made at need) and its editing hints.
    template <typename T>
    static bool LoadAttributeToElement(CElement* element, eAttrNameId id, T& value, bool display,
                                       bool edit, bool text, bool dropBox);
    // Reads the attribute into value; false, and value untouched, when it is absent.
    template <typename T>
    static bool LoadAttributeFromElement(CElement* element, eAttrNameId id, T& value);

protected:
    // Makes *target when it is missing, the standard way: new T(args...), Initialize,
    // AddChild, SetName. True when the child was made here.
    template <typename T, typename... Args>
    bool MakeChild(T** target, const char* name, Args... args);
    // The live children in id order. Ids of children that no longer exist are dropped.
    std::vector<SimObject*> LiveChildren();
    // Deletes every child whose parent this object is, and forgets all children.
    void DeleteChildren();

    int simObjectID = -1;
    std::string objTypeStr = "SimObject";
    int objTypeId = -1;
    std::string objName = "unNamed";
    int objNameId = -1;
    std::unique_ptr<std::string> caption;
    bool autoCaption = false;
    bool loadedFromXml = false;
    bool saveToXML = true;
    CElement* sourceElement = nullptr;
    bool xmlCurrent = false;
    SimObject* parent = nullptr;
    Layout* layout = nullptr;
    bool hasLayout = false;
    bool paramsWritten = true;
    bool isQuickSet = false;
    bool updateQuickSet = true;
    bool quickSet = false;
    bool abovoQuickSet = false;
    bool showInDataTree = true;
    bool transformationApplied = false;
    std::set<int> childIds;

    static int nextSimObjectID;
    static std::set<int> SimObjectIDSet;
    static std::map<int, SimObject*> IDSimObjectMap;
    // Guards the id set, the id map and nextSimObjectID.
    static Lockable simObjLock;
    static double simTime;

private:
    // An object with a layout under a parent whose layout has an array starts at the
    // array's first position.
    void TakeTranslationFromParentArray();
    // Reserves id 0 once, for the first object constructed.
    static void ReserveIdZero();
    // Gives the id back to the set and the map.
    void Unregister();
    // Writes the identifying attributes and their editing hints.
    void WriteAttributes(CElement* element);
    // Marks every sub-element old and indexes them by the id they were saved with; the
    // first sub-element with an id wins.
    static std::map<int, CElement*> MarkSubElementsOld(CElement* element);
    static void RemoveOldSubElements(CElement* element);
    bool SkipOnSave(SimObject* child, bool leaveOutExpanded) const;
    static bool ChildrenEqual(SimObject* mine, SimObject* theirs);

    // Loads sub into *target as LoadPointerByName describes.
    template <typename T>
    bool LoadPointerFrom(T** target, CElement* sub);
    template <typename T>
    bool LoadIntoVector(std::vector<T*>* target, CElement* sub);
};

template <typename T, typename... Args>
bool SimObject::MakeChild(T** target, const char* name, Args... args) {
    if (*target != nullptr) return false;
    *target = new T(args...);
    (*target)->Initialize();
    AddChild(*target);
    (*target)->SetName(name);
    return true;
}

template <typename T>
bool SimObject::LoadPointerFrom(T** target, CElement* sub) {
    if (sub == nullptr) return false;
    bool made = *target == nullptr;
    if (made) {
        *target = new T();
        // The parent is known before the load, so that what the load does with its parent
        // reaches this object; Initialize registers the new object as a child.
        (*target)->SetParent(this);
        (*target)->Initialize();
    }
    if (!(*target)->FromXml(sub)) {
        if (made) {
            if (!RemoveChild(*target, true)) delete *target;
            *target = nullptr;
        }
        return false;
    }
    if (childIds.count((*target)->GetSimObjectID()) == 0) AddChild(*target);
    return true;
}

template <typename T>
bool SimObject::LoadIntoVector(std::vector<T*>* target, CElement* sub) {
    T* loaded = nullptr;
    if (!LoadPointerFrom(&loaded, sub)) return false;
    target->push_back(loaded);
    return true;
}

template <typename T>
bool SimObject::LoadPointerByName(T** target, CElement* element, const char* name) {
    if (target == nullptr || element == nullptr || name == nullptr) return false;
    return LoadPointerFrom(target, element->findSubElementWithAttribute<const char*>(A_NAME, name));
}

template <typename T>
bool SimObject::LoadPointerByType(T** target, CElement* element, const char* type) {
    if (target == nullptr || element == nullptr || type == nullptr) return false;
    return LoadPointerFrom(target, element->findElementp(type, false));
}

template <typename T>
bool SimObject::LoadVectorByName(std::vector<T*>* target, CElement* element, const char* name) {
    if (target == nullptr || element == nullptr || name == nullptr) return false;
    bool loadedAll = true;
    for (const auto& entry : element->elements()) {
        if (!entry.second->testAttribute<const char*>(A_NAME, name)) continue;
        loadedAll = LoadIntoVector(target, entry.second) && loadedAll;
    }
    return loadedAll;
}

template <typename T>
bool SimObject::LoadVectorByType(std::vector<T*>* target, CElement* element, const char* type) {
    if (target == nullptr || element == nullptr || type == nullptr) return false;
    bool loadedAll = true;
    auto range = element->elements().equal_range(type);
    for (auto entry = range.first; entry != range.second; ++entry) {
        loadedAll = LoadIntoVector(target, entry->second) && loadedAll;
    }
    return loadedAll;
}

template <typename T>
bool SimObject::LoadAttributeToElement(CElement* element, eAttrNameId id, T& value, bool display,
                                       bool edit, bool text, bool dropBox) {
    if (element == nullptr) return false;
    Attribute* attribute = element->findAttributep(id, true);
    attribute->set(id, value);
    attribute->setDisplayEditTextDropBox(display, edit, text, dropBox);
    return true;
}

template <typename T>
bool SimObject::LoadAttributeFromElement(CElement* element, eAttrNameId id, T& value) {
    return element != nullptr && element->getAttributeValue(id, value);
}
