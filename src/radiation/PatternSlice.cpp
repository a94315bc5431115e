#include "radiation/PatternSlice.h"

#include <iterator>

void PatternSlice::init(eSliceDir sliceDir, double sliceOffset) {
    dir = sliceDir;
    if (sliceOffset != OFFSET_NOT_GIVEN) offset = sliceOffset;
}

bool PatternSlice::interpolate(double angle, double& gain) const {
    const auto upper = values.upper_bound(angle);
    const auto lower = values.lower_bound(angle);
    if (upper == values.end() || lower == values.begin()) return false;
    const auto before = std::prev(lower);
    const double span = upper->first - before->first;
    gain = before->second + (upper->second - before->second) * (angle - before->first) / span;
    return true;
}
