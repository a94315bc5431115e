#include "documents/SimDocumentSaveLoad.h"

bool SimDocumentSaveLoad::ReadSimFile(const std::string&, SimulationDocument*) { return false; }
bool SimDocumentSaveLoad::SaveSim(SimulationDocument*, const std::string&, bool) { return false; }
bool SimDocumentSaveLoad::ExtractSimDocument(const std::string&, SimulationDocument*) {
    return false;
}
void SimDocumentSaveLoad::SetPath(SimulationDocument*, const std::string&) {}
