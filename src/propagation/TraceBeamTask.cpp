#include "propagation/TraceBeamTask.h"

#include "logging/Log.h"
#include "propagation/Volume.h"
#include "radiation/BeamQUICK.h"

void* BeamToFaces(void* content) {
    auto* task = static_cast<TraceBeamTask*>(content);
    BeamQUICK* beam = GETBEAM(task->beamId);
    if (beam == nullptr) {
        Log::log(2) << "BeamToFaces: beam " << task->beamId << " has gone\n";
        task->result = false;
        return nullptr;
    }
    Volume* volume = beam->GetVolume();
    if (volume != nullptr && volume->stepTransmit(beam->GetRaysp(), false)) {
        volume->stepTransmit(beam->GetTestRaysp(), true);
        task->result = true;
        return nullptr;
    }
    task->result = beam->TransmitToInterfaces(task->interfaces);
    return nullptr;
}
