#pragma once

#include <string>
#include <vector>

#include "documents/Document.h"
#include "framework/SimObject.h"

class SimulationData;
class SimulationResults;
struct DocumentChange;

// A simulation tied to a file. As an object it owns the scene (SimulationData) and what
// runs produced (SimulationResults); as a document it holds the element image of both.
// Data moves between file, element tree and objects only through the four Load*
// operations, so the two trees are kept apart in between.
//
// A file path is always the directory, "/" and the name. The root of a saved file carries
// six version attributes: the software, build time and save time of the first save and of
// the last one.
class SimulationDocument : public SimObject,
                           public Document,
                           public std::vector<SimulationData*>,
                           public std::vector<SimulationResults*> {
public:
    using DataVector = std::vector<SimulationData*>;
    using ResultsVector = std::vector<SimulationResults*>;

    SimulationDocument();
    SimulationDocument(const SimulationDocument&) = delete;
    SimulationDocument& operator=(const SimulationDocument&) = delete;
    ~SimulationDocument() override;

    // Rebuilds the objects from element: the scene and the results below it.
    bool FromXml(CElement* element) override;
    // Writes the objects into element; the name stays editable.
    bool ToXml(CElement* element, bool leaveOutExpanded) override;
    // Empties, then takes a fresh id.
    bool Initialize() override;
    bool CheckEq(SimObject* other) override;
    void Print() override;
    // Deletes the objects and forgets the handles; the element tree stays.
    bool Empty() override;

    void SetFileName(const std::string& name) { fileName = name; }
    const std::string& GetFileName() const { return fileName; }
    void SetFileDir(const std::string& dir) { fileDir = dir; }
    const std::string& GetFileDir() const { return fileDir; }
    bool TestFileName(const std::string& name) const { return fileName == name; }
    bool TestFileDir(const std::string& dir) const { return fileDir == dir; }
    // Directory, "/" and name.
    std::string GetFilePath() const;

    // File to element tree; false, with an empty tree, when the file cannot be read.
    bool LoadFileToDocument();
    // Element tree to file, stamping the version attributes.
    bool LoadDocumentToFile();
    // Element tree to objects.
    bool LoadDocumentToData();
    // Objects to element tree; with leaveOutExpanded, what quick-set objects regenerate
    // from their parameters is left out.
    bool LoadDataToDocument(bool leaveOutExpanded);

    // Appends the data (a new one when null) as an initialised child.
    bool AddSimulationData(SimulationData* data);
    bool AddSimulationResults(SimulationResults* results);
    // The first scene, made when there is none.
    SimulationData* GetTopData();
    // The first results, or null.
    SimulationResults* GetTopResults();

    // Gives every stored object id in the tree below element a fresh id of this process.
    bool CheckSimObjectID(CElement* element);
    // The live object whose element carries that id, or null.
    SimObject* GetSimObject(int id);
    // Applies the change to the matching element and lets its object read itself back;
    // *out receives the object. False when nothing matched.
    bool ProcessChange(DocumentChange* change, SimObject** out);
    bool TryChange(CElement* element, DocumentChange* change, SimObject** out);
    // The object that receives actions for the whole document.
    ActionAble* GetTopActionable();

private:
    // Writes the attributes of one save: those of the first save only when missing.
    void StampVersion();
    // Marks the six version attributes not editable.
    void FixVersionAttributes();
    // Sets the attribute to the change's value, in the file form for a multiplier.
    static bool ApplyChangeValue(CElement* element, eAttrNameId id, const std::string& value);
    // Lets the object of a changed element read it back.
    static SimObject* ReloadChangedObject(SimObject* object, CElement* element, eAttrNameId id);

    std::string fileName;
    std::string fileDir;
};
