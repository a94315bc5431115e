#pragma once

#include <string>
#include <vector>

#include "framework/Component.h"
#include "radiation/SimulationResources.h"

class Interface;
class Volume;

// The element from which a scene is made, and the root of a wireless system. Its
// structures, sources and parts expand into the interfaces and volumes that the tracer
// sees; those are children of the element, and the two vectors are fast handles on them.
// The pointees are owned through the tree, so clearing a vector destroys nothing.
class OpticElement : public std::vector<Interface*>, public std::vector<Volume*>, public Component {
public:
    using Interfaces = std::vector<Interface*>;
    using Volumes = std::vector<Volume*>;

    OpticElement();

    // Forgets the handles, then empties the component.
    bool Empty() override;

    // A new interface as a child under that name, appended to the handles, free to join
    // any volume of this element.
    Interface* AddInterface(const std::string& name);
    // A new volume as a child, appended to the handles and named "vol" with its position
    // from 1. It takes the element's medium from the resources, the element's volume and
    // shape parameters, spherical coordinates and a zero "centre" point.
    Volume* AddVolume();

    // The media of the simulation and the id of the volume that surrounds every scene.
    static SimulationResources resources;

private:
    // Gives each of the element's parameters of those names to the component; a parameter
    // the element lacks is left out.
    void PassParameters(const std::vector<eParamName>& names, Component* to);

    // The element's parameters that every new volume takes over under the same name: the
    // profile, then the shape.
    static const std::vector<eParamName> volumeProfileParameters;
    static const std::vector<eParamName> volumeShapeParameters;
};
