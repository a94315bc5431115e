#pragma once

#include "framework/NexoBase.h"

class Interface;

// The work of one task of OpticElement::TransmitInterfaceToVolume: one interface turns the
// rays it caught into new beams for the volumes on its sides.
class InterfaceToVolumeTask : public NexoBase::ContentBase {
public:
    explicit InterfaceToVolumeTask(Interface* face) : face(face) {}

    Interface* face;
    // True when the interface passed something on.
    bool result = false;
};
