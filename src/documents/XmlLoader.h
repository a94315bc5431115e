#pragma once

#include <initializer_list>
#include <string>
#include <utility>

#include "documents/Document.h"

// A document with a cursor on one of its elements, for reading plain files field by
// field. The loaders read attributes of the element at the cursor or, given an element
// name, of that sub-element; the cursor is where it was afterwards, also when the
// sub-element is missing (then the result is false). A loader gives true only when every
// attribute it reads was there; the outputs of missing ones stay as they were.
//
// The loaders exist for const char* (text owned by the attribute), int, double and float.
class XmlLoader : public Document {
public:
    XmlLoader();

    using Document::print;

    // Reads the file and puts the cursor on the root.
    bool loadFile(const std::string& path);
    bool saveFile(const std::string& path);
    // The element at the cursor and what is below it, on the status log.
    void print() override;

    bool gotoRoot();
    // False, and the cursor stays, when there is no sub-element of that name.
    bool gotoSubElement(const std::string& elementName);
    // False at the root.
    bool gotoParent();
    CElement* getCurrent() const { return current; }

    template <typename T>
    bool loadAttribute(eAttrNameId id, T* out);
    // A_X, A_Y, A_Z.
    template <typename T>
    bool loadXYZ(const char* elementName, T* x, T* y, T* z);
    // A_R, A_G, A_B.
    template <typename T>
    bool loadRGB(const char* elementName, T* r, T* g, T* b);
    // A_TOP, A_LEFT.
    template <typename T>
    bool loadTopLeft(const char* elementName, T* top, T* left);
    // A_WIDTH, A_HEIGHT.
    template <typename T>
    bool loadWidthHeight(const char* elementName, T* width, T* height);

private:
    template <typename T>
    bool loadGroup(const char* elementName,
                   std::initializer_list<std::pair<eAttrNameId, T*>> fields);

    CElement* current;
};
