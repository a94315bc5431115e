#include "documents/SimulationDocument.h"

#include <ctime>
#include <sstream>

#include "documents/DocumentChange.h"
#include "documents/SimulationData.h"
#include "documents/SimulationResults.h"
#include "framework/Parameter.h"
#include "logging/Log.h"
#include "system/LibInterface.h"

namespace {

// The attributes of who first made a file and who last saved it, in id order.
constexpr eAttrNameId versionAttributes[] = {A_INITSWDESC, A_INITBUILDTSMP, A_INITSAVETSMP,
                                             A_LASTSWDESC, A_LASTBUILDTSMP, A_LASTSAVETSMP};

// The software that writes a file: product, edition and version, then the platform word.
std::string SoftwareDescription() { return std::string(LibInterface::GetVersion()) + "_win"; }

// The local time as asctime gives it, line end included.
std::string SaveTimeStamp() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char text[64] = {};
    return asctime_r(&local, text) != nullptr ? std::string(text) : std::string();
}

// The first element at or below element, depth first, whose object id is text.
CElement* FindElementWithId(CElement* element, const std::string& text) {
    if (element->testAttribute<const char*>(A_SIMOBJID, text.c_str())) return element;
    for (const auto& entry : element->elements()) {
        CElement* found = FindElementWithId(entry.second, text);
        if (found != nullptr) return found;
    }
    return nullptr;
}

}  // namespace

SimulationDocument::SimulationDocument() { objTypeStr = "SimulationDocument"; }

SimulationDocument::~SimulationDocument() = default;

bool SimulationDocument::Empty() {
    DataVector::clear();
    ResultsVector::clear();
    return SimObject::Empty();
}

bool SimulationDocument::Initialize() {
    Empty();
    return SimObject::Initialize();
}

bool SimulationDocument::FromXml(CElement* element) {
    if (element == nullptr) {
        Log::log(1) << "SimulationDocument::FromXml: no element\n";
        return false;
    }
    Empty();
    if (!SimObject::FromXml(element)) return false;
    bool loaded = LoadVectorByType<SimulationData>(this, element, "SimulationData");
    return LoadVectorByType<SimulationResults>(this, element, "SimulationResults") && loaded;
}

bool SimulationDocument::ToXml(CElement* element, bool leaveOutExpanded) {
    bool written = SimObject::ToXml(element, leaveOutExpanded);
    if (element != nullptr)
        element->setAttributeDisplayEditTextDropBox(A_NAME, true, true, true, false);
    return written;
}

bool SimulationDocument::CheckEq(SimObject* other) {
    auto* document = dynamic_cast<SimulationDocument*>(other);
    if (document == nullptr) {
        Log::log(1) << "SimulationDocument::CheckEq: not a document\n";
        return false;
    }
    if (DataVector::size() != document->DataVector::size() ||
        ResultsVector::size() != document->ResultsVector::size()) {
        Log::log(1) << "SimulationDocument::CheckEq: data or results differ in count\n";
        return false;
    }
    return SimObject::CheckEq(other);
}

void SimulationDocument::Print() {
    Log::log(4) << "SimulationDocument " << GetFilePath() << ": " << DataVector::size() << " data, "
                << ResultsVector::size() << " results\n";
    SimObject::Print();
}

std::string SimulationDocument::GetFilePath() const { return fileDir + "/" + fileName; }

bool SimulationDocument::LoadFileToDocument() {
    CElement::Empty();
    const bool read = Document::read(GetFilePath());
    if (!read)
        Log::log(1) << "SimulationDocument::LoadFileToDocument: cannot read " << GetFilePath()
                    << "\n";
    FixVersionAttributes();
    return read;
}

bool SimulationDocument::LoadDocumentToFile() {
    StampVersion();
    const bool written = Document::write(GetFilePath());
    if (!written)
        Log::log(1) << "SimulationDocument::LoadDocumentToFile: cannot write " << GetFilePath()
                    << "\n";
    FixVersionAttributes();
    return written;
}

bool SimulationDocument::LoadDocumentToData() { return FromXml(this); }

bool SimulationDocument::LoadDataToDocument(bool leaveOutExpanded) {
    clearXmlOut();
    return ToXml(this, leaveOutExpanded);
}

void SimulationDocument::StampVersion() {
    const std::string software = SoftwareDescription();
    const std::string build = GetBuildTimeStamp();
    const std::string saved = SaveTimeStamp();
    if (!hasAttribute(A_INITSWDESC)) {
        setAttribute(A_INITSWDESC, software);
        setAttribute(A_INITBUILDTSMP, build);
        setAttribute(A_INITSAVETSMP, saved);
    }
    setAttribute(A_LASTSWDESC, software);
    setAttribute(A_LASTBUILDTSMP, build);
    setAttribute(A_LASTSAVETSMP, saved);
}

void SimulationDocument::FixVersionAttributes() {
    for (eAttrNameId id : versionAttributes) {
        setAttributeDisplayEditTextDropBox(id, true, false, true, false);
    }
}

bool SimulationDocument::AddSimulationData(SimulationData* data) {
    if (data == nullptr) data = new SimulationData();
    DataVector::push_back(data);
    AddChild(data);
    return data->Initialize();
}

bool SimulationDocument::AddSimulationResults(SimulationResults* results) {
    if (results == nullptr) results = new SimulationResults();
    ResultsVector::push_back(results);
    AddChild(results);
    return results->Initialize();
}

SimulationData* SimulationDocument::GetTopData() {
    if (DataVector::empty()) AddSimulationData(nullptr);
    SimulationData* top = DataVector::front();
    top->SetActions(4);
    return top;
}

SimulationResults* SimulationDocument::GetTopResults() {
    return ResultsVector::empty() ? nullptr : ResultsVector::front();
}

ActionAble* SimulationDocument::GetTopActionable() { return this; }

bool SimulationDocument::CheckSimObjectID(CElement* element) {
    if (element == nullptr) return false;
    if (element->hasAttribute(A_SIMOBJID)) {
        simObjLock.lock(true);
        if (nextSimObjectID < 1) nextSimObjectID = 1;
        while (SimObjectIDSet.count(nextSimObjectID) > 0) nextSimObjectID++;
        element->setAttribute(A_SIMOBJID, nextSimObjectID++);
        simObjLock.unlock();
    }
    for (const auto& entry : element->elements()) CheckSimObjectID(entry.second);
    return true;
}

SimObject* SimulationDocument::GetSimObject(int id) {
    std::ostringstream text;
    text << id;
    if (FindElementWithId(this, text.str()) == nullptr) return nullptr;
    return GetObjectGlobally(id);
}

bool SimulationDocument::ProcessChange(DocumentChange* change, SimObject** out) {
    if (change == nullptr || out == nullptr) {
        Log::log(1) << "SimulationDocument::ProcessChange: no change\n";
        return false;
    }
    return TryChange(this, change, out);
}

bool SimulationDocument::TryChange(CElement* element, DocumentChange* change, SimObject** out) {
    if (element == nullptr || change == nullptr || out == nullptr) return false;
    if (element->testName(change->name) &&
        element->testAttribute<int>(A_SIMOBJID, change->objectId)) {
        eAttrNameId id = A_UNK;
        if (!Attribute::GUIStringToId(change->attribute, id) || !element->hasAttribute(id)) {
            Log::log(1) << "SimulationDocument::TryChange: no attribute \"" << change->attribute
                        << "\" in " << change->name << "\n";
            return false;
        }
        SimObject* object = GetObjectGlobally(change->objectId);
        if (object == nullptr) {
            Log::log(1) << "SimulationDocument::TryChange: no object " << change->objectId << "\n";
            return false;
        }
        if (!ApplyChangeValue(element, id, change->value)) return false;
        element->print(0);
        *out = ReloadChangedObject(object, element, id);
        return true;
    }
    for (const auto& entry : element->elements()) {
        if (TryChange(entry.second, change, out)) return true;
    }
    return false;
}

bool SimulationDocument::ApplyChangeValue(CElement* element, eAttrNameId id,
                                          const std::string& value) {
    if (id != A_MULT) return element->setAttribute(id, value);
    for (const auto& [mult, word] : Parameter::paramMultiplierDesc) {
        if (word == value)
            return element->setAttribute(id, Parameter::paramMultiplierFILEStrings[mult]);
    }
    Log::log(1) << "SimulationDocument::TryChange: no multiplier \"" << value << "\"\n";
    return false;
}

SimObject* SimulationDocument::ReloadChangedObject(SimObject* object, CElement* element,
                                                   eAttrNameId id) {
    if (id == A_NAME) {
        object->SetName(element->getAttributeValue(A_NAME));
        if (object->HasCaption()) element->setAttribute(A_CAPT, object->GetCaption());
    }
    object->FromXml(element);
    SimObject* owner = object->GetParent();
    if (owner != nullptr && owner->IsQuickSetParam(object->GetSimObjectID())) {
        owner->SetUpdateQuickSet(true, false);
    }
    return object;
}
