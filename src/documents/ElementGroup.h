#pragma once

#include <vector>

#include "framework/Component.h"

class EMRadiation;
class OpticElement;

// A group of scene elements and of radiation. The three vectors are non-owning handles on
// children: sub-groups, the top elements of a scene, and radiation a run produced. The
// stage forwarders pass each propagation stage to every element of the group.
class ElementGroup : public Component,
                     public std::vector<ElementGroup*>,
                     public std::vector<OpticElement*>,
                     public std::vector<EMRadiation*> {
public:
    using Groups = std::vector<ElementGroup*>;
    using Elements = std::vector<OpticElement*>;
    using Radiation = std::vector<EMRadiation*>;

    ElementGroup();

    // Forgets the handles, then empties the component.
    bool Empty() override;
    // The component, then its "OpticElement" and "EMRadiation" sub-elements as children.
    bool FromXml(CElement* element) override;
    // Writes the object and its children: the children are what is saved.
    bool ToXml(CElement* element, bool leaveOutExpanded) override;
    using Component::CheckEq;
    // Same parameters and children, and as many elements and radiation entries.
    virtual bool CheckEq(ElementGroup* other);
    void Print() override;

    // Each forwarder calls the same stage on every element and ORs the results.
    virtual bool ResetDetection();
    // Also passes the stage on to every sub-group.
    virtual bool TransmitSourceToVolume();
    virtual bool TransmitVolumeToInterface(std::vector<EMRadiation*>* out);
    virtual bool TransmitInterfaceToVolume();
    virtual bool ClearReceivedRadiation();
    virtual bool InitialTransmit(bool reset);
    // Takes the element off the vector and destroys it as a child; false when not held.
    virtual bool RemoveElement(OpticElement* element);

    Elements& GetElements() { return *this; }
    Radiation& GetRadiation() { return *this; }
    Groups& GetGroups() { return *this; }
};
