#include <gtest/gtest.h>

#include "propagation/Volume.h"

TEST(VolumeData, IdMapDefaultsAndFaces) {
    auto* volume = new Volume();
    volume->Initialize();
    const int firstId = volume->GetSimObjectID();
    EXPECT_EQ(Volume::GetVolumeFromId(firstId), volume);
    volume->Initialize();
    EXPECT_EQ(Volume::GetVolumeFromId(firstId), nullptr);
    EXPECT_EQ(Volume::GetVolumeFromId(volume->GetSimObjectID()), volume);

    eParamValue type = PV_EMPTY;
    EXPECT_TRUE(volume->GetParameterValue(PN_VOLTYP, type));
    EXPECT_EQ(type, PV_VOL_HOMOGENEOUS);
    double step = 0.0;
    EXPECT_TRUE(volume->GetParameterValue(PN_VOLSTEPDIST, step));
    EXPECT_EQ(step, -1.0);

    // Faces are handles only; these stand for two interfaces.
    int faceA = 0, faceB = 0;
    auto* a = reinterpret_cast<Interface*>(&faceA);
    auto* b = reinterpret_cast<Interface*>(&faceB);
    EXPECT_TRUE(volume->AddInterface(a));
    EXPECT_FALSE(volume->AddInterface(a));
    EXPECT_FALSE(volume->AddInterface(nullptr));
    EXPECT_TRUE(volume->AddInterface(b));
    EXPECT_TRUE(volume->RemoveInterface(a));
    EXPECT_FALSE(volume->RemoveInterface(a));
    EXPECT_EQ(volume->Faces::front(), b);
    volume->Empty();
    EXPECT_TRUE(volume->Faces::empty());

    const int id = volume->GetSimObjectID();
    delete volume;
    EXPECT_EQ(Volume::GetVolumeFromId(id), nullptr);
}
