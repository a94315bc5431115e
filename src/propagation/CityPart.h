#pragma once

#include "propagation/Structure.h"

class OpticElement;

// A city block: a ground with a building over it. The outline is the path of points, or
// without points a square of side size (default 10) around the origin. The ground lies at
// the level barrierBase (default 0), the roof barrierHeight (default 2) above it.
//
// The ground face "ground" joins the default volume only. The building is a volume
// "barrierVol" closed by the side "guide", which runs between the outlines "face1" at the
// level and "face2" at the roof, and the roof "faceTop". The two outlines only guide the
// side: they take no rays. The side charges half the loss at each of the two crossings of
// a ray through the building. Every face takes "show" and "showAs" as well.
class CityPart : public Structure {
public:
    CityPart();

    // With rebuild false, nothing. Otherwise discards what was built and builds anew.
    bool QuickSetToChildren(bool rebuild) override;

private:
    void BuildBlock(OpticElement* element);
};
