#pragma once

#include <vector>

#include "framework/NexoBase.h"

class Interface;
class Ray;

// A slice of one beam's rays, rays[first] .. rays[last - 1], to be traced to a list of
// interfaces: the content of TraceRaysToFacesTask. Neither list is owned.
class TraceRaysTask : public NexoBase::ContentBase {
public:
    TraceRaysTask(int beamId, std::vector<Ray*>* rays, int first, int last,
                  std::vector<Interface*>* interfaces)
        : beamId(beamId), rays(rays), first(first), last(last), interfaces(interfaces) {}

    int beamId = -1;
    std::vector<Ray*>* rays = nullptr;
    int first = 0;
    int last = 0;
    std::vector<Interface*>* interfaces = nullptr;
    // Set when at least one ray of the slice was received by an interface.
    bool result = false;
};

// Finds each ray's next interface and hands the ray to it. Every ray's endInterfaceId is
// cleared first. Each interface is tested once, on the rays that can reach its bounding
// sphere (on all of them when it has none); an interface whose lock is held elsewhere is
// left for a later sweep, and a sweep that could test none sleeps a millisecond. The
// interface named "outerLimit" is tested after all the others, on the whole slice, so that
// the outer boundary never shortens a ray before a real face does. The closest hit wins
// (see Interface::TestRaysHit). Then every ray that hit something is received by its
// interface. Returns null.
void* TraceRaysToFacesTask(void* content);
