#pragma once

#include <string>

class SimulationDocument;

// Reads, saves and extracts simulation documents in one step each: file or text through
// the element tree to objects, and objects through the element tree to a file.
class SimDocumentSaveLoad {
public:
    // Loads the file at path into the document: its element tree and its objects. The
    // document keeps the path's directory and name.
    bool ReadSimFile(const std::string& path, SimulationDocument* document);
    // Writes the document's objects to the file at path, which it keeps.
    bool SaveSim(SimulationDocument* document, const std::string& path, bool leaveOutExpanded);
    // Loads a document from XML text, its element tree and its objects.
    bool ExtractSimDocument(const std::string& text, SimulationDocument* document);

private:
    // Splits path into directory and name at its last "/"; without one the directory is ".".
    static void SetPath(SimulationDocument* document, const std::string& path);
};
