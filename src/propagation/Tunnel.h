#pragma once

#include "propagation/Structure.h"

class Coordinates;
class OpticElement;

// A rectangular corridor along a polyline of points, from the level barrierBase (default 0)
// up by barrierHeight (default 2), width wide (default its height).
//
// The corridor's inside is one volume "barrierVol". Each segment has two walls "face1" and
// "face2", width / 2 to either side of the centre line, hidden and each charging half the
// loss of a crossing; a "floor" and a "roof" strip the width of the corridor. At each of the
// two open ends a "guide" spans the opening: it neither reflects nor charges a loss, and
// joins the inside to the surrounding volume. Every face joins the default volume and the
// corridor's volume.
class Tunnel : public Structure {
public:
    Tunnel();

    // With rebuild false, nothing. Otherwise discards what was built and builds anew; a
    // path of fewer than two points builds nothing.
    bool QuickSetToChildren(bool rebuild) override;

private:
    // The measures of the corridor's cross-section.
    struct sSection {
        double base;
        double top;
        double width;
    };

    void BuildSegment(OpticElement* element, int i, const sSection& section);
    // The opening at end, on the segment that runs from end to next.
    void BuildEnd(OpticElement* element, Coordinates* end, Coordinates* next,
                  const sSection& section);
};
