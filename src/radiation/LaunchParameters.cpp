#include "radiation/LaunchParameters.h"

#include "framework/Component.h"

int PassParameters(std::span<const eParamName> names, Component* from, Component* to) {
    int passed = 0;
    for (eParamName name : names) {
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
