#pragma once

#include <atomic>
#include <memory>
#include <string>
#include <vector>

#include "documents/AttrNameId.h"
#include "framework/NexoBase.h"

// The form an attribute's value was last set in: its master form.
enum eAttrStoreType : int {
    AST_STRING = 1,
    AST_DOUBLE = 2,
    AST_FLOAT = 3,
    AST_INT = 4,
    AST_BOOL = 5,
};

// One named value of an element. The value is kept in the form it was set in and the
// other forms are derived from it once, on the first read in another form, so a value
// can be set as one kind and read as any other. A value read from a file is text until
// it is asked for as something else.
//
// Text forms of the other kinds: doubles and floats as "%f" (six decimals), ints in
// decimal, bools as "true" or "false". Text turns into numbers as atof and atoi read it,
// and into true only when it is exactly "true".
class Attribute : public virtual NexoBase {
public:
    Attribute();
    explicit Attribute(eAttrNameId id);
    // An attribute holding the value in its own form.
    template <typename T>
    Attribute(eAttrNameId id, T value) : Attribute(id) {
        set(id, value);
    }
    Attribute(const Attribute& other);
    Attribute& operator=(const Attribute& other);
    ~Attribute() override = default;

    // Each stores the value as the master, takes the id and forgets derived forms. A null
    // text stores an empty text.
    void set(eAttrNameId id, const std::string& value);
    void set(eAttrNameId id, const char* value);
    void set(eAttrNameId id, double value);
    void set(eAttrNameId id, float value);
    void set(eAttrNameId id, int value);
    void set(eAttrNameId id, bool value);

    // The value in the kind asked for, derived at need. Always true. The text of the
    // const char* form belongs to the attribute and lives until its next set.
    bool get(std::string& out);
    bool get(const char*& out);
    bool get(double& out);
    bool get(float& out);
    bool get(int& out);
    bool get(bool& out);

    // The value as text; owned by the attribute, valid until its next set.
    const char* getValue();
    int getInt();
    double getDouble();

    eAttrNameId getNameId() const { return nameId; }
    void setNameId(eAttrNameId id) { nameId = id; }
    eAttrStoreType getStoreType() const { return storeType; }
    // True when the value was last set as text.
    bool getHasString() const { return hasString; }

    // True when the value, in the kind of the argument, equals it exactly.
    bool testValue(const std::string& value);
    bool testValue(const char* value);
    bool testValue(double value);
    bool testValue(float value);
    bool testValue(int value);
    bool testValue(bool value);

    // Same id and the same value, compared in this attribute's store type.
    bool equalTo(Attribute* other);
    // One line on the status log: display name and value, behind indent spaces.
    void print(int indent);

    // Choices offered by an editor. AddOption appends a text not yet there, and answers
    // false for one that is.
    bool AddOption(const std::string& option);
    void SetOptions(const std::vector<std::string>& newOptions);
    // The choices, or null when there are none.
    const std::vector<std::string>* GetOptions() const { return options.get(); }
    void ClearOptions() { options.reset(); }
    bool HasOptions() const { return options != nullptr; }

    // Editing hints, for an editor only.
    void setDisplayEditTextDropBox(bool showIt, bool editIt, bool asText, bool asDropBox);
    void setFilenameChooser(bool chooser) { filenameChooser = chooser; }
    void setDirectoryChooser(bool chooser) { directoryChooser = chooser; }
    bool getDisplay() const { return display; }
    bool getEdit() const { return edit; }
    bool getText() const { return text; }
    bool getDropBox() const { return dropBox; }
    bool getFilenameChooser() const { return filenameChooser; }
    bool getDirectoryChooser() const { return directoryChooser; }

    // Derives every form from the master unless wanted is the master or that was done.
    void flowValue(eAttrStoreType wanted);

    // The id whose file name (or display name) is the text; false when none has it.
    static bool FileStringToId(const std::string& fileName, eAttrNameId& id);
    static bool GUIStringToId(const std::string& displayName, eAttrNameId& id);
    // The file name of an id, or an empty text for an id outside the table.
    static const std::string& FileString(int id);
    static const std::string& GUIString(int id);
    // Fills both tables unless done; every constructor calls it.
    static void SetNameStrings();
    // Empties both tables; the next constructor fills them again.
    static void ClearStaticSpace();

    // Indexed by id, 1 to attrNameIdLast.
    static std::string attGUIStrings[attrNameIdLast + 1];
    static std::string attFILEStrings[attrNameIdLast + 1];
    static std::atomic<bool> nameStringsSet;

private:
    void setMaster(eAttrNameId id, eAttrStoreType type);
    void flowFromString();
    void flowFromNumber(double value);

    eAttrNameId nameId = A_UNK;
    bool hasString = false;
    std::string stringValue;
    double doubleValue = 0.0;
    float floatValue = 0.0f;
    int intValue = 0;
    bool boolValue = false;
    std::unique_ptr<std::vector<std::string>> options;
    eAttrStoreType storeType = AST_STRING;
    bool flowed = false;
    bool display = true;
    bool edit = false;
    bool text = false;
    bool dropBox = false;
    bool filenameChooser = false;
    bool directoryChooser = false;
};
