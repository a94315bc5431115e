#pragma once

#include <map>

// Which cut through a radiation pattern a slice is.
enum eSliceDir : int {
    SLICE_VERTICAL = 0,
    SLICE_HORIZONTAL = 1,
};

// One cut through a radiation pattern: the linear gain, relative to the pattern's maximum,
// by angle in degrees, ordered so that a look-up is logarithmic.
class PatternSlice {
public:
    // The offset that init takes as "not given".
    static constexpr double OFFSET_NOT_GIVEN = -1000.0;

    // Sets the cut's direction, and its offset unless offset is OFFSET_NOT_GIVEN.
    void init(eSliceDir sliceDir, double sliceOffset);
    // Drops every entry; direction and offset stay.
    void clear() { values.clear(); }
    // Stores gain under angle, replacing an entry of the same angle.
    void add(double angle, double gain) { values[angle] = gain; }

    // The gain at angle, linear between the entry before the lower bound of angle and the
    // upper bound of angle. False, with gain untouched, when either does not exist: before
    // the first entry, beyond the last, and in an empty slice.
    bool interpolate(double angle, double& gain) const;

    const std::map<double, double>& getValues() const { return values; }
    eSliceDir getDir() const { return dir; }
    double getOffset() const { return offset; }

private:
    std::map<double, double> values;
    eSliceDir dir = SLICE_HORIZONTAL;
    double offset = 0.0;
};
