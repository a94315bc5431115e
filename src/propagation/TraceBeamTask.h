#pragma once

#include <vector>

#include "framework/NexoBase.h"

class Interface;

// One beam of a volume to be traced to the volume's faces: the content of a task of
// Volume::TransmitRadiation. result tells whether the beam was traced.
class TraceBeamTask : public NexoBase::ContentBase {
public:
    TraceBeamTask(int beamId, std::vector<Interface*>* interfaces)
        : beamId(beamId), interfaces(interfaces) {}

    int beamId = -1;
    // Not owned: the faces of the volume.
    std::vector<Interface*>* interfaces = nullptr;
    bool result = false;
};

// The task function: the beam's volume steps the rays through its refractive-index profile
// when it does that, and otherwise the beam is traced straight to the faces by
// BeamQUICK::TransmitToInterfaces. A beam that has gone leaves result false. Returns null.
void* BeamToFaces(void* content);
