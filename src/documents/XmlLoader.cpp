#include "documents/XmlLoader.h"

XmlLoader::XmlLoader() : current(this) {}

bool XmlLoader::loadFile(const std::string& path) {
    bool loaded = read(path);
    gotoRoot();
    return loaded;
}

bool XmlLoader::saveFile(const std::string& path) { return write(path); }

void XmlLoader::print() { current->print(0); }

bool XmlLoader::gotoRoot() {
    current = this;
    return true;
}

bool XmlLoader::gotoSubElement(const std::string& elementName) {
    CElement* element = current->findElementp(elementName, false);
    if (element == nullptr) return false;
    current = element;
    return true;
}

bool XmlLoader::gotoParent() {
    if (current == this || current->getParent() == nullptr) return false;
    current = current->getParent();
    return true;
}

template <typename T>
bool XmlLoader::loadAttribute(eAttrNameId id, T* out) {
    Attribute* attribute = current->findAttributep(id, false);
    return out != nullptr && attribute != nullptr && attribute->get(*out);
}

template <typename T>
bool XmlLoader::loadGroup(const char* elementName,
                          std::initializer_list<std::pair<eAttrNameId, T*>> fields) {
    CElement* start = current;
    if (elementName != nullptr && !gotoSubElement(elementName)) return false;
    bool all = true;
    for (const auto& [id, out] : fields) all = loadAttribute(id, out) && all;
    current = start;
    return all;
}

template <typename T>
bool XmlLoader::loadXYZ(const char* elementName, T* x, T* y, T* z) {
    return loadGroup<T>(elementName, {{A_X, x}, {A_Y, y}, {A_Z, z}});
}

template <typename T>
bool XmlLoader::loadRGB(const char* elementName, T* r, T* g, T* b) {
    return loadGroup<T>(elementName, {{A_R, r}, {A_G, g}, {A_B, b}});
}

template <typename T>
bool XmlLoader::loadTopLeft(const char* elementName, T* top, T* left) {
    return loadGroup<T>(elementName, {{A_TOP, top}, {A_LEFT, left}});
}

template <typename T>
bool XmlLoader::loadWidthHeight(const char* elementName, T* width, T* height) {
    return loadGroup<T>(elementName, {{A_WIDTH, width}, {A_HEIGHT, height}});
}

template bool XmlLoader::loadAttribute<const char*>(eAttrNameId, const char**);

#define XMLLOADER_NUMERIC_FORMS(T)                                \
    template bool XmlLoader::loadAttribute<T>(eAttrNameId, T*);   \
    template bool XmlLoader::loadXYZ<T>(const char*, T*, T*, T*); \
    template bool XmlLoader::loadRGB<T>(const char*, T*, T*, T*); \
    template bool XmlLoader::loadTopLeft<T>(const char*, T*, T*); \
    template bool XmlLoader::loadWidthHeight<T>(const char*, T*, T*);

XMLLOADER_NUMERIC_FORMS(int)
XMLLOADER_NUMERIC_FORMS(double)
XMLLOADER_NUMERIC_FORMS(float)
