#include <gtest/gtest.h>

#include "framework/ParallelSelect.h"

namespace {

const eParallelSection allSections[] = {parallelNone,
                                        parallelBeamsToTestPoints,
                                        parallelSpare2,
                                        parallelVolumeToInterface,
                                        parallelInterfaceToVolume,
                                        parallelSetRays,
                                        parallelSpare6,
                                        parallelVolumeTransmit};

}  // namespace

TEST(ParallelSelect, ConstructorFlagDecidesEverySection) {
    ParallelSelect serial(false);
    ParallelSelect parallel(true);
    for (eParallelSection section : allSections) {
        EXPECT_FALSE(serial.IsParallelAvailable(section)) << section;
        EXPECT_TRUE(parallel.IsParallelAvailable(section)) << section;
        EXPECT_FALSE(serial.IsParallelForced(section)) << section;
        EXPECT_FALSE(parallel.IsParallelForced(section)) << section;
    }
}

TEST(ParallelSelect, EntriesApplyWithoutTheAllFlag) {
    ParallelSelect select(false);
    select.SetAvailable(parallelSetRays, true);
    select.SetAvailable(parallelVolumeTransmit, false);
    select.SetForced(parallelVolumeTransmit, true);
    EXPECT_TRUE(select.IsParallelAvailable(parallelSetRays));
    EXPECT_FALSE(select.IsParallelAvailable(parallelVolumeTransmit));
    EXPECT_FALSE(select.IsParallelAvailable(parallelBeamsToTestPoints));
    EXPECT_TRUE(select.IsParallelForced(parallelVolumeTransmit));
    EXPECT_FALSE(select.IsParallelForced(parallelSetRays));
}

// Assignment copies the flags and entries, and the two objects then share one lock.
TEST(ParallelSelect, AssignmentCopiesSelectionAndLock) {
    ParallelSelect source(false);
    source.SetAvailable(parallelInterfaceToVolume, true);
    source.SetForced(parallelSetRays, true);
    ParallelSelect target(true);
    target = source;
    EXPECT_TRUE(target.IsParallelAvailable(parallelInterfaceToVolume));
    EXPECT_FALSE(target.IsParallelAvailable(parallelVolumeToInterface));
    EXPECT_TRUE(target.IsParallelForced(parallelSetRays));

    ASSERT_TRUE(source.lock(true));
    EXPECT_TRUE(target.isLocked());
    source.unlock();
    EXPECT_FALSE(target.isLocked());
}
