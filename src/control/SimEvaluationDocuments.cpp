#include <algorithm>

#include "control/OpticElement.h"
#include "control/SimEvaluation.h"
#include "documents/DocumentChange.h"
#include "documents/SimulationData.h"
#include "documents/SimulationDocument.h"
#include "documents/SimulationResults.h"
#include "logging/Log.h"

namespace {

// The preset of each kind of system that startNewSystem makes.
constexpr int SYSTEM_BUILDING = 13;
constexpr int SYSTEM_URBAN_CITY = 14;

std::vector<SimulationData*>& DataOf(SimulationDocument* document) {
    return static_cast<std::vector<SimulationData*>&>(*document);
}

std::vector<SimulationResults*>& ResultsOf(SimulationDocument* document) {
    return static_cast<std::vector<SimulationResults*>&>(*document);
}

std::string PathOf(SimulationDocument* document) { return document->GetFilePath(); }

}  // namespace

SimulationDocument* SimEvaluation::NewDocument(const std::string& name, const std::string& dir,
                                               const std::string& file) {
    auto* document = new SimulationDocument();
    document->SetName(name);
    document->SetFileDir(dir);
    document->SetFileName(file);
    push_back(document);
    document->Initialize();
    AddChild(document);
    return document;
}

SimulationData* SimEvaluation::GetTopData(bool make) {
    if (topData == nullptr && make) {
        topData = NewDocument("new system", HomeDirectory(), "newSys1.xml")->GetTopData();
    }
    return topData;
}

OpticElement* SimEvaluation::GetSystem() {
    if (topData == nullptr) return nullptr;
    auto& elements = static_cast<std::vector<OpticElement*>&>(*topData);
    return elements.empty() ? nullptr : elements.front();
}

SimObject* SimEvaluation::GetSimObject(int id) {
    for (SimulationDocument* document : static_cast<Documents&>(*this)) {
        SimObject* found = document->GetChildWithId(id, true);
        if (found != nullptr) return found;
    }
    return nullptr;
}

OpticElement* SimEvaluation::startNewSystem(int type) {
    const char* preset = type == SYSTEM_BUILDING     ? "Building"
                         : type == SYSTEM_URBAN_CITY ? "urban city"
                                                     : nullptr;
    if (preset == nullptr) {
        Log::log(1) << "SimEvaluation::startNewSystem() - no system of type " << type << "\n";
        return nullptr;
    }
    const int index = OpticElement::GetNewElementIndex(preset);
    if (index < 0) {
        Log::log(1) << "SimEvaluation::startNewSystem() - no preset " << preset << "\n";
        return nullptr;
    }
    topData = NewDocument("new system", HomeDirectory(), "newSys1.xml")->GetTopData();
    auto* element = new OpticElement();
    element->Initialize();
    element->SetupNewElement(index, nullptr);
    static_cast<std::vector<OpticElement*>&>(*topData).push_back(element);
    topData->AddChild(element);
    element->SetName(preset);
    element->setQuickSet(true);
    element->QuickSetToChildren(true);
    return element;
}

bool SimEvaluation::StartWirelessNetwork(int type) { return startNewSystem(type) != nullptr; }

bool SimEvaluation::GetFilenames(std::vector<std::string>& out) {
    for (SimulationDocument* document : static_cast<Documents&>(*this)) {
        out.push_back(PathOf(document));
    }
    return true;
}

bool SimEvaluation::ContainsFile(const std::string& path) { return GetSimDoc(path) != nullptr; }

SimulationDocument* SimEvaluation::GetSimDoc(const std::string& path) {
    for (SimulationDocument* document : static_cast<Documents&>(*this)) {
        if (PathOf(document) == path) return document;
    }
    return nullptr;
}

bool SimEvaluation::AddFile(const std::string& path) {
    if (ContainsFile(path)) {
        Log::log(1) << "SimEvaluation::AddFile() - " << path << " is open already\n";
        return false;
    }
    const size_t slash = path.find_last_of('/');
    const std::string dir = slash == std::string::npos ? "." : path.substr(0, slash);
    const std::string file = slash == std::string::npos ? path : path.substr(slash + 1);
    SimulationDocument* document = NewDocument(file, dir, file);
    if (!document->LoadFileToDocument() || !document->LoadDocumentToData()) {
        Log::log(1) << "SimEvaluation::AddFile() - cannot read " << path << "\n";
        DropDocument(document);
        return false;
    }
    RefreshTopData();
    return true;
}

void SimEvaluation::RefreshTopData() {
    SimulationData* first = nullptr;
    for (SimulationDocument* document : static_cast<Documents&>(*this)) {
        const auto& data = DataOf(document);
        if (std::find(data.begin(), data.end(), topData) != data.end()) return;
        if (first == nullptr && !data.empty()) first = data.front();
    }
    topData = first;
}

void SimEvaluation::DropDocument(SimulationDocument* document) {
    erase(std::remove(begin(), end(), document), end());
    if (document == evalDocument) {
        evalDocument = nullptr;
        evalResults = nullptr;
    }
    if (!RemoveChild(document, true)) delete document;
    RefreshTopData();
}

bool SimEvaluation::RemoveFile(const std::string& path) {
    SimulationDocument* document = GetSimDoc(path);
    if (document == nullptr) return false;
    DropDocument(document);
    return true;
}

bool SimEvaluation::RemoveAllFiles() {
    while (!empty()) DropDocument(back());
    return true;
}

bool SimEvaluation::ClearEmptySimDocs() {
    Documents unused;
    for (SimulationDocument* document : static_cast<Documents&>(*this)) {
        if (DataOf(document).empty() && ResultsOf(document).empty()) unused.push_back(document);
    }
    for (SimulationDocument* document : unused) DropDocument(document);
    return true;
}

bool SimEvaluation::SourceFilesToDocuments() {
    bool all = true;
    for (SimulationDocument* document : static_cast<Documents&>(*this)) {
        all = document->LoadFileToDocument() && all;
    }
    return all;
}

bool SimEvaluation::DocumentsToSourceFiles() {
    bool all = true;
    for (SimulationDocument* document : static_cast<Documents&>(*this)) {
        document->LoadDataToDocument(false);
        all = document->LoadDocumentToFile() && all;
    }
    return all;
}

bool SimEvaluation::DocumentsToData() {
    bool all = true;
    for (SimulationDocument* document : static_cast<Documents&>(*this)) {
        all = document->LoadDocumentToData() && all;
    }
    RefreshTopData();
    // The results were reloaded as well.
    if (evalDocument != nullptr) evalResults = evalDocument->GetTopResults();
    return all;
}

bool SimEvaluation::DataToDocuments() {
    bool all = true;
    for (SimulationDocument* document : static_cast<Documents&>(*this)) {
        all = document->LoadDataToDocument(false) && all;
    }
    return all;
}

bool SimEvaluation::ProcessDocumentChange(DocumentChange* change, SimObject** out) {
    if (change == nullptr) return false;
    for (SimulationDocument* document : static_cast<Documents&>(*this)) {
        if (document->ProcessChange(change, out)) return true;
    }
    Log::log(1) << "SimEvaluation::ProcessDocumentChange() - no object " << change->objectId
                << " named " << change->name << "\n";
    return false;
}

SimulationResults* SimEvaluation::FirstResults() {
    for (SimulationDocument* document : static_cast<Documents&>(*this)) {
        SimulationResults* results = document->GetTopResults();
        if (results != nullptr) return results;
    }
    return nullptr;
}
