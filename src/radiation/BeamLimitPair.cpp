#include "radiation/BeamLimitPair.h"

#include "radiation/BeamQUICK.h"

BeamLimitPair::BeamLimitPair(BeamQUICK* beamIn) : beam(beamIn) {
    if (beam != nullptr) beam->CopyCoordLimits(limits);
}
