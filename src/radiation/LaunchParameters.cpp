#include "radiation/LaunchParameters.h"

#include "framework/Component.h"
#include "framework/Parameter.h"

int PassParameters(std::span<const eParamName> names, Component* from, Component* to) {
    int passed = 0;
    for (eParamName name : names) {
        if (Component::PassParameter(name, from, to, name)) passed++;
    }
    return passed;
}

int PassAllParameters(Component* from, Component* to) {
    int passed = 0;
    // In the order of the children, so that the copy's children line up with the original's.
    for (int i = 0; i < from->GetChildCount(); i++) {
        auto* parameter = dynamic_cast<Parameter*>(from->GetChild(i));
        if (parameter == nullptr) continue;
        eParamName name = parameter->getName();
        if (Component::PassParameter(name, from, to, name)) passed++;
    }
    return passed;
}

int QuickCopyParameters(std::span<const eParamName> names, Component* from, Component* to) {
    int passed = 0;
    for (eParamName name : names) {
        if (!Component::PassParameter(name, from, to, name)) continue;
        to->AddQuickParameter(to->GetParameterp(name));
        passed++;
    }
    return passed;
}
