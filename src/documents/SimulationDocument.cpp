#include "documents/SimulationDocument.h"

SimulationDocument::SimulationDocument() { objTypeStr = "SimulationDocument"; }
SimulationDocument::~SimulationDocument() = default;
bool SimulationDocument::FromXml(CElement*) { return false; }
bool SimulationDocument::ToXml(CElement*, bool) { return false; }
bool SimulationDocument::Initialize() { return false; }
bool SimulationDocument::CheckEq(SimObject*) { return false; }
void SimulationDocument::Print() {}
bool SimulationDocument::Empty() { return false; }
std::string SimulationDocument::GetFilePath() const { return fileDir + "/" + fileName; }
bool SimulationDocument::LoadFileToDocument() { return false; }
bool SimulationDocument::LoadDocumentToFile() { return false; }
bool SimulationDocument::LoadDocumentToData() { return false; }
bool SimulationDocument::LoadDataToDocument(bool) { return false; }
bool SimulationDocument::AddSimulationData(SimulationData*) { return false; }
bool SimulationDocument::AddSimulationResults(SimulationResults*) { return false; }
SimulationData* SimulationDocument::GetTopData() { return nullptr; }
SimulationResults* SimulationDocument::GetTopResults() { return nullptr; }
bool SimulationDocument::CheckSimObjectID(CElement*) { return false; }
SimObject* SimulationDocument::GetSimObject(int) { return nullptr; }
bool SimulationDocument::ProcessChange(DocumentChange*, SimObject**) { return false; }
bool SimulationDocument::TryChange(CElement*, DocumentChange*, SimObject**) { return false; }
ActionAble* SimulationDocument::GetTopActionable() { return nullptr; }
void SimulationDocument::StampVersion() {}
void SimulationDocument::FixVersionAttributes() {}
bool SimulationDocument::ApplyChangeValue(CElement*, eAttrNameId, const std::string&) {
    return false;
}
SimObject* SimulationDocument::ReloadChangedObject(CElement*, eAttrNameId) { return nullptr; }
