#include "documents/SimDocumentSaveLoad.h"

#include "documents/DocumentConverter.h"
#include "documents/SimulationDocument.h"
#include "logging/Log.h"

bool SimDocumentSaveLoad::ReadSimFile(const std::string& path, SimulationDocument* document) {
    if (document == nullptr) {
        Log::log(1) << "SimDocumentSaveLoad::ReadSimFile: no document for " << path << "\n";
        return false;
    }
    SetPath(document, path);
    return document->LoadFileToDocument() && document->LoadDocumentToData();
}

bool SimDocumentSaveLoad::SaveSim(SimulationDocument* document, const std::string& path,
                                  bool leaveOutExpanded) {
    if (document == nullptr) {
        Log::log(1) << "SimDocumentSaveLoad::SaveSim: no document for " << path << "\n";
        return false;
    }
    SetPath(document, path);
    return document->LoadDataToDocument(leaveOutExpanded) && document->LoadDocumentToFile();
}

bool SimDocumentSaveLoad::ExtractSimDocument(const std::string& text,
                                             SimulationDocument* document) {
    return DocumentConverter::TextToDocument(text, document) && document->LoadDocumentToData();
}

void SimDocumentSaveLoad::SetPath(SimulationDocument* document, const std::string& path) {
    const std::string::size_type slash = path.rfind('/');
    if (slash == std::string::npos) {
        document->SetFileDir(".");
        document->SetFileName(path);
        return;
    }
    document->SetFileDir(path.substr(0, slash));
    document->SetFileName(path.substr(slash + 1));
}
