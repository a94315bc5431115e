#pragma once

#include <tinyxml.h>

#include <string>

#include "framework/NexoBase.h"

// The one gate to the XML library. Writing builds a document node by node behind a
// cursor: start, then nextElement for each element, with startSubElements before a
// child and finishSubElements after it. Reading walks a loaded document with a cursor on
// the current node and one on its current attribute; the nodes it walks are elements and
// comments, everything else (text, declarations) is passed over.
class XmlWrapper : public virtual NexoBase {
public:
    XmlWrapper() = default;
    XmlWrapper(const XmlWrapper&) = delete;
    XmlWrapper& operator=(const XmlWrapper&) = delete;
    ~XmlWrapper() override = default;

    // Writing.
    // Empties the document and links the declaration: version "1.0", no encoding or
    // standalone.
    bool start();
    // A comment placed as nextElement would place an element. False for a text holding
    // "-->", which would end the comment early.
    bool addComment(const char* text);
    // A new element: the first becomes the root; after startSubElements a child of the
    // cursor, else the cursor's next sibling. The cursor moves to it. False, placing
    // nothing, for a name that is not an XML name and so could not be read back.
    bool nextElement(const char* name);
    // An attribute of the element at the cursor.
    bool addAttribute(const char* name, const char* value);
    bool startSubElements();
    // Back to the parent of the cursor, when a child was placed since startSubElements.
    bool finishSubElements();
    // Saves the document; false when the file cannot be written completely.
    bool write(const char* path);
    // The printed document (tab indent) in a block from malloc that the caller frees.
    // *size is the printed length; the block holds one more byte, a terminating zero.
    bool writeToChar(char** out, int* size);
    // Appends the same printed text.
    bool writeToString(std::string& out);

    // Reading. Each read places the cursor on the root element; false on a file error,
    // a syntax error or a document without a root element.
    bool read(const char* path);
    bool read(const TiXmlDocument* source);
    // Parses the text; *end, when end is given, receives where the parse stopped.
    bool readCharArray(const char* text, char** end);
    // True while the cursor is on a node.
    bool hasCurrent() const { return current != nullptr; }
    // The element's name, or the comment's text.
    const char* getElementValue() const;
    bool isComment() const;
    bool currentHasNextSibling() const;
    // Moves to the next sibling; false, staying put, when there is none.
    bool nextElement();
    bool attributeExists() const { return currentAttribute != nullptr; }
    bool nextAttribute();
    // Name and value of the current attribute, empty when there is none.
    const char* getAttributeName() const;
    const char* getAttributeValue() const;
    // True when the current attribute has this name.
    bool checkAttribute(const char* name) const;
    bool hasChildren() const;
    // Moves to the first child; false, staying put, when there is none.
    bool startChildren();
    // Moves back to the parent of the current node.
    bool finishChildren();

    // The document itself.
    TiXmlDocument* getxmlp() { return &document; }
    void clear();

private:
    bool place(TiXmlNode* node);
    void moveTo(TiXmlNode* node);
    bool takeRoot();
    static bool IsWalked(const TiXmlNode* node);
    static TiXmlNode* FirstWalkedChild(const TiXmlNode* node);
    static TiXmlNode* NextWalkedSibling(const TiXmlNode* node);

    TiXmlDocument document;
    TiXmlNode* root = nullptr;
    TiXmlNode* current = nullptr;
    TiXmlAttribute* currentAttribute = nullptr;
    bool goDown = false;
    bool firstPlaced = false;
};
