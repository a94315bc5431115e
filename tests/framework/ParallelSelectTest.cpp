#include <gtest/gtest.h>

#include "framework/ParallelSelect.h"

// The constructor's flag decides every section until an entry of its own is set; an
// assigned copy takes the entries and shares the original's lock.
TEST(ParallelSelect, FlagEntriesAndAssignment) {
    ParallelSelect serial(false), parallel(true);
    for (int section = parallelNone; section <= parallelVolumeTransmit; ++section) {
        auto which = static_cast<eParallelSection>(section);
        EXPECT_FALSE(serial.IsParallelAvailable(which) || serial.IsParallelForced(which));
        EXPECT_TRUE(parallel.IsParallelAvailable(which) && !parallel.IsParallelForced(which));
    }
    serial.SetAvailable(parallelSetRays, true);
    serial.SetForced(parallelVolumeTransmit, true);
    parallel = serial;
    EXPECT_TRUE(parallel.IsParallelAvailable(parallelSetRays));
    EXPECT_FALSE(parallel.IsParallelAvailable(parallelVolumeTransmit));
    EXPECT_TRUE(parallel.IsParallelForced(parallelVolumeTransmit));
    ASSERT_TRUE(serial.lock(true));
    EXPECT_TRUE(parallel.isLocked());
    serial.unlock();
}
