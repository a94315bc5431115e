#include "control/SimEvaluation.h"

#include "control/TestPointTask.h"

double SimEvaluation::calcProgress = 1.0;
Lockable SimEvaluation::progressLock;

SimEvaluation::SimEvaluation() { objTypeStr = "SimEvaluation"; }
SimEvaluation::~SimEvaluation() = default;
bool SimEvaluation::UpdateStart(bool, ParallelSelect&) { return false; }
bool SimEvaluation::ProcessingComplete() { return false; }
bool SimEvaluation::StopProcessing() { return false; }
double SimEvaluation::GetProgress() { return 1.0; }
void SimEvaluation::SetProgress(double value) { calcProgress = value; }
void SimEvaluation::UpdateReq(eEvalReq, bool) {}
bool SimEvaluation::GetReq(eEvalReq) const { return false; }
void SimEvaluation::ResetReqUpdate() {}
bool SimEvaluation::UpdateSim() { return false; }
void* SimEvaluation::callUpdateSim(void*) { return nullptr; }
bool SimEvaluation::UpdateRayTracing() { return false; }
bool SimEvaluation::UpdateTraceVolumes() { return false; }
bool SimEvaluation::UpdateFDTD() { return false; }
bool SimEvaluation::UpdateTestPoints() { return false; }
bool SimEvaluation::UpdateRendering() { return false; }
bool SimEvaluation::AssignSourcesToVolumes() { return false; }
bool SimEvaluation::BeamsToTestPoints(std::vector<BeamQUICK*>&, std::vector<TestPoint*>&) {
    return false;
}
std::vector<SimEvaluation::TileGroup> SimEvaluation::TileGroups(int) { return {}; }
int SimEvaluation::TestPointTaskCount(int, int) { return 0; }
bool SimEvaluation::TraceBackTestPoints(std::vector<TestPoint*>&) { return false; }
bool SimEvaluation::ClearEvaluated() { return false; }
bool SimEvaluation::SetTime(double) { return false; }
void SimEvaluation::SetPlaying(bool) {}
SimulationData* SimEvaluation::GetTopData(bool) { return nullptr; }
OpticElement* SimEvaluation::GetSystem() { return nullptr; }
SimObject* SimEvaluation::GetSimObject(int) { return nullptr; }
OpticElement* SimEvaluation::startNewSystem(int) { return nullptr; }
bool SimEvaluation::StartWirelessNetwork(int) { return false; }
bool SimEvaluation::GetFilenames(std::vector<std::string>&) { return false; }
bool SimEvaluation::ContainsFile(const std::string&) { return false; }
bool SimEvaluation::AddFile(const std::string&) { return false; }
bool SimEvaluation::RemoveFile(const std::string&) { return false; }
bool SimEvaluation::RemoveAllFiles() { return false; }
SimulationDocument* SimEvaluation::GetSimDoc(const std::string&) { return nullptr; }
bool SimEvaluation::ClearEmptySimDocs() { return false; }
bool SimEvaluation::SourceFilesToDocuments() { return false; }
bool SimEvaluation::DocumentsToSourceFiles() { return false; }
bool SimEvaluation::DocumentsToData() { return false; }
bool SimEvaluation::DataToDocuments() { return false; }
bool SimEvaluation::ProcessDocumentChange(DocumentChange*, SimObject**) { return false; }
bool SimEvaluation::ExportSimResults() { return false; }
std::string SimEvaluation::ExportDirectory() { return ""; }
void SimEvaluation::AddRenderer(GuiRender*) {}
