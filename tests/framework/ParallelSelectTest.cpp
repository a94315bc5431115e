#include <gtest/gtest.h>

#include "framework/ParallelSelect.h"

// The constructor's flag decides every section; entries set one by one apply without it,
// and assignment copies both while the two objects then share one lock.
TEST(ParallelSelect, FlagEntriesAndAssignment) {
    ParallelSelect serial(false), parallel(true);
    for (int section = parallelNone; section <= parallelVolumeTransmit; ++section) {
        auto which = static_cast<eParallelSection>(section);
        EXPECT_FALSE(serial.IsParallelAvailable(which)) << section;
        EXPECT_TRUE(parallel.IsParallelAvailable(which)) << section;
        EXPECT_FALSE(serial.IsParallelForced(which) || parallel.IsParallelForced(which));
    }

    serial.SetAvailable(parallelSetRays, true);
    serial.SetAvailable(parallelVolumeTransmit, false);
    serial.SetForced(parallelVolumeTransmit, true);
    parallel = serial;
    for (ParallelSelect* select : {&serial, &parallel}) {
        EXPECT_TRUE(select->IsParallelAvailable(parallelSetRays));
        EXPECT_FALSE(select->IsParallelAvailable(parallelVolumeTransmit));
        EXPECT_FALSE(select->IsParallelAvailable(parallelBeamsToTestPoints));
        EXPECT_TRUE(select->IsParallelForced(parallelVolumeTransmit));
        EXPECT_FALSE(select->IsParallelForced(parallelSetRays));
    }
    ASSERT_TRUE(serial.lock(true));
    EXPECT_TRUE(parallel.isLocked());
    serial.unlock();
    EXPECT_FALSE(parallel.isLocked());
}
