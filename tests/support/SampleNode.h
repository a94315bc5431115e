#pragma once

#include <string>
#include <vector>

#include "framework/Component.h"
#include "framework/SimObject.h"

// A component that reloads its own kind of children, as every class with a subtree does:
// a tree of SampleNodes with parameters saves and loads whole.
class SampleNode : public Component {
public:
    SampleNode() { objTypeStr = "SampleNode"; }

    bool FromXml(CElement* element) override {
        if (!Component::FromXml(element)) return false;
        std::vector<SampleNode*> loaded;
        return LoadVectorByType(&loaded, element, "SampleNode");
    }

    // Made, initialised, added under parent and named, as an owner does it.
    static SampleNode* MakeUnder(SimObject* parent, const std::string& name) {
        auto* node = new SampleNode();
        node->Initialize();
        if (parent != nullptr) parent->AddChild(node);
        node->SetName(name);
        return node;
    }
};

// A plain object with a type string of the caller's choice, for tests that depend on types.
class TypedObject : public SimObject {
public:
    explicit TypedObject(const std::string& type = "TypedObject") { objTypeStr = type; }

    // Made, initialised, added under parent and named.
    static TypedObject* MakeUnder(SimObject* parent, const std::string& type,
                                  const std::string& name) {
        auto* object = new TypedObject(type);
        object->Initialize();
        if (parent != nullptr) parent->AddChild(object);
        object->SetName(name);
        return object;
    }
};
