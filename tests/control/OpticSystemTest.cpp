#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "control/BatchEvent.h"
#include "control/OpticElement.h"
#include "framework/NexoBase.h"
#include "geometry/Coordinates.h"
#include "propagation/Barrier.h"
#include "propagation/Interface.h"
#include "propagation/Volume.h"
#include "radiation/BeamQUICK.h"
#include "radiation/EMRadiation.h"
#include "radiation/EMSource.h"
#include "radiation/TestPoint.h"
#include "radiation/TraceVolume.h"
#include "support/LogCapture.h"
#include "support/WallScene.h"

namespace {

// A wireless system of a building 20 by 20 metres, set up as a client would set it.
std::unique_ptr<OpticElement> MakeSystem(eParamNumber dimensions) {
    auto system = std::make_unique<OpticElement>();
    system->Initialize();
    system->SetName("system");
    system->SetQuickParameterValue(PN_TYP, PV_ELEM_SYSTEM);
    system->SetQuickParameterValue(PN_SYSTYP, PV_BUILDING);
    system->SetQuickParameterValue(PN_TRACEDIM, dimensions);
    system->SetQuickParameterValue(PN_SYSOUT, PV_TRUE);
    for (auto [name, value] :
         {std::pair{PN_XMIN, -10.0}, std::pair{PN_XMAX, 10.0}, std::pair{PN_YMIN, -10.0},
          std::pair{PN_YMAX, 10.0}, std::pair{PN_HEIGHT, 3.0}, std::pair{PN_BARBSE, 0.0},
          std::pair{PN_BARHGT, 3.0}, std::pair{PN_THICKNESS, 0.0}, std::pair{PN_RAYGAP, 2.0},
          std::pair{PN_RXSIZ, 1.0}}) {
        system->SetQuickParameterValue(name, value, PU_M);
    }
    system->SetQuickParameterValue(PN_MED, std::string("Concrete (ITU)"));
    system->SetQuickParameterValue(PN_LMDA, 0.125, PU_M);
    system->SetQuickParameterValue(PN_PWRWATT, 0.1, PU_WAT);
    system->SetQuickParameterValue(PN_TRLIM, 3);
    system->SetQuickParameterValue(PN_REFLIM, 2);
    system->SetQuickParameterValue(PN_TRANLIM, 1);
    system->SetQuickParameterValue(PN_BARTYPE, PV_BARRIER_THIN);
    system->SetQuickParameterValue(PN_BARLOSMDL, PV_LOSS_THIN);
    system->SetQuickParameterValue(PN_ORIENTATION, PV_ORIENT_VERTICAL);
    return system;
}

template <typename T>
std::vector<T*> ChildrenOf(OpticElement& element) {
    std::vector<T*> found;
    for (int i = 0; i < element.GetChildCount(); i++) {
        if (auto* child = dynamic_cast<T*>(element.GetChild(i))) found.push_back(child);
    }
    return found;
}

BatchEvent Wall(double x1, double y1, double x2, double y2) {
    BatchEvent event(BatchEvent::eventWall);
    event.AddPoint(x1, y1, 0.0);
    event.AddPoint(x2, y2, 0.0);
    return event;
}

}  // namespace

TEST(OpticSystem, RebuildsOnlyWhenForcedWithTheFloorsAndOuterLimitItsParametersAsk) {
    auto building = MakeSystem(OpticElement::DIMENSIONS_3D);
    EXPECT_TRUE(building->QuickSetToChildren(false));
    EXPECT_EQ(building->GetChildNamed("outerLimit"), nullptr);
    EXPECT_EQ(building->GetChildNamed(OpticElement::_barFloorName), nullptr);

    ASSERT_TRUE(building->QuickSetToChildren(true));
    auto* outer = dynamic_cast<Interface*>(building->GetChildNamed("outerLimit"));
    ASSERT_NE(outer, nullptr);
    EXPECT_EQ(outer->GetVolumeA(), OpticElement::resources.GetDefaultVolumeId());
    EXPECT_NE(building->GetChildNamed(OpticElement::_barFloorName), nullptr);
    EXPECT_NE(building->GetChildNamed(OpticElement::_barCeilingName), nullptr);
    // A second rebuild replaces the floor and the outer limit rather than adding to them.
    ASSERT_TRUE(building->QuickSetToChildren(true));
    EXPECT_EQ(ChildrenOf<Barrier>(*building).size(), 2u);
    int outers = 0;
    for (Interface* face : ChildrenOf<Interface>(*building)) outers += face->TestName("outerLimit");
    EXPECT_EQ(outers, 1);

    auto flat = MakeSystem(OpticElement::DIMENSIONS_2D);
    flat->SetQuickParameterValue(PN_SYSOUT, PV_FALSE);
    ASSERT_TRUE(flat->QuickSetToChildren(true));
    EXPECT_EQ(flat->GetChildNamed(OpticElement::_barFloorName), nullptr);
    EXPECT_EQ(flat->GetChildNamed("outerLimit"), nullptr);
}

TEST(OpticSystem, PartTypesTakeThePartPath) {
    LogCapture log;
    OpticElement element;
    element.Initialize();
    element.SetQuickParameterValue(PN_TYP, static_cast<eParamValue>(3));
    EXPECT_TRUE(element.QuickSetToChildren(true));
    EXPECT_FALSE(log.Contains("has no part of type"));
    element.SetQuickParameterValue(PN_TYP, PV_VOL_STEPPED);
    EXPECT_FALSE(element.QuickSetToChildren(true));
    EXPECT_TRUE(log.Contains("has no part of type 121"));

    // A lens without its shape sequence cannot be built; with one it has two faces, a guide
    // between them and a volume inside.
    element.SetQuickParameterValue(PN_TYP, static_cast<eParamValue>(6));
    EXPECT_FALSE(element.QuickSetToChildren(true));
    element.SetQuickParameterValue(PN_SEQ, static_cast<eParamValue>(113));
    ASSERT_TRUE(element.QuickSetToChildren(true));
    auto* guide = dynamic_cast<Interface*>(element.GetChildNamed("guide"));
    ASSERT_NE(guide, nullptr);
    EXPECT_EQ(guide->GetGuideStart(), element.GetChildNamed("face1"));
    EXPECT_EQ(static_cast<OpticElement::Volumes&>(element).size(), 1u);
    EXPECT_EQ(static_cast<OpticElement::Interfaces&>(element).size(), 3u);
}

TEST(OpticSystem, TestPointsAreNumberedAndTheTraceVolumeGoesWithItsPoints) {
    auto system = MakeSystem(OpticElement::DIMENSIONS_2D);
    Coordinates here(1.0, 2.0, 1.5);
    TestPoint* first = system->AddTestPoint(&here, false, nullptr);
    TestPoint* second = system->AddTestPoint(nullptr, false, nullptr);
    EXPECT_EQ(first->GetName(), "testPoint0");
    EXPECT_EQ(second->GetName(), "testPoint1");
    EXPECT_DOUBLE_EQ(first->GetCentre()->Get(1), 2.0);
    system->RemoveTestPoint(first);
    EXPECT_EQ(system->AddTestPoint(nullptr, false, nullptr)->GetName(), "testPoint0");

    system->SetQuickParameterValue(PN_TRACERENDERAS, PV_HEATMAP);
    system->ExpandTraceVolume(true);
    ASSERT_EQ(static_cast<OpticElement::TraceVolumes&>(*system).size(), 1u);
    system->AddTestPoint(&here, true, "cell");
    system->SetQuickParameterValue(PN_TRACERENDERAS, static_cast<eParamValue>(270));
    EXPECT_TRUE(system->ExpandTraceVolume(false));
    EXPECT_TRUE(static_cast<OpticElement::TraceVolumes&>(*system).empty());
    EXPECT_TRUE(ChildrenOf<TraceVolume>(*system).empty());
    EXPECT_EQ(system->GetChildNamed("cell"), nullptr);
    EXPECT_EQ(ChildrenOf<TestPoint>(*system).size(), 2u);
    EXPECT_EQ(static_cast<OpticElement::TestPoints&>(*system).size(), 2u);
}

TEST(OpticSystem, VolumesTraceSeriallyUntilThreeHoldRadiation) {
    OpticElement element;
    element.Initialize();
    const auto hold = [&element](int count) {
        for (int i = 0; i < count; i++) {
            Volume* volume = element.AddVolume();
            auto* beam = new BeamQUICK();
            WallScene::AddFan(beam, CoordQUICK(0.0, 0.0, 1.0), 8, 5.0);
            volume->lock(true);
            volume->ReceiveBeam(beam);
            volume->unlock();
        }
    };
    NexoBase::SetNumProcs(4);
    std::vector<EMRadiation*> out;
    EXPECT_FALSE(element.TransmitVolumeToInterface(&out));
    EXPECT_EQ(element.GetLastVolumeTaskCount(), 0);
    hold(2);
    element.TransmitVolumeToInterface(&out);
    EXPECT_EQ(element.GetLastVolumeTaskCount(), 1);
    EXPECT_EQ(out.size(), 2u);
    hold(3);
    element.TransmitVolumeToInterface(&out);
    EXPECT_EQ(element.GetLastVolumeTaskCount(), 3);
    EXPECT_EQ(out.size(), 5u);

    // Without the parallel flag three volumes go serially too.
    NexoBase::parallelSelected = ParallelSelect(false);
    element.ClearReceivedRadiation();
    hold(3);
    element.TransmitVolumeToInterface(&out);
    EXPECT_EQ(element.GetLastVolumeTaskCount(), 1);
    NexoBase::parallelSelected = ParallelSelect(true);
    NexoBase::SetNumProcs(0);
    element.ClearReceivedRadiation();
}

TEST(OpticSystem, BatchEventsBuildASceneWhoseSourceRaysReachTheTestPoint) {
    auto system = MakeSystem(OpticElement::DIMENSIONS_3D);
    ASSERT_TRUE(system->QuickSetToChildren(true));
    std::vector<int> ids;
    for (const BatchEvent& wall : {Wall(-8, -8, 8, -8), Wall(8, -8, 8, 8), Wall(-8, 8, 8, 8)}) {
        ASSERT_TRUE(system->ReceiveBatchEvent(wall, ids));
    }
    BatchEvent source(BatchEvent::eventSource);
    source.AddPoint(-3.0, 0.0, 1.5);
    BatchEvent point(BatchEvent::eventTestPoint);
    point.AddPoint(3.0, 0.5, 1.5);
    ASSERT_TRUE(system->ReceiveBatchEvent(source, ids));
    ASSERT_TRUE(system->ReceiveBatchEvent(point, ids));
    ASSERT_EQ(ids.size(), 5u);
    EXPECT_NE(dynamic_cast<Barrier*>(SimObject::GetObjectGlobally(ids[0])), nullptr);
    auto* transmitter = dynamic_cast<EMSource*>(SimObject::GetObjectGlobally(ids[3]));
    auto* receiver = dynamic_cast<TestPoint*>(SimObject::GetObjectGlobally(ids[4]));
    ASSERT_NE(transmitter, nullptr);
    ASSERT_NE(receiver, nullptr);
    EXPECT_EQ(transmitter->GetName(), "source0");
    EXPECT_FALSE(system->ReceiveBatchEvent(BatchEvent(7), ids));
    BatchEvent broken(BatchEvent::eventSource);
    broken.AddPoint({{"x", "one"}});
    EXPECT_FALSE(system->ReceiveBatchEvent(broken, ids));

    EXPECT_TRUE(system->ResetDetection());
    system->InitialTransmit(true);
    ASSERT_TRUE(system->TransmitSourceToVolume());
    Volume* surrounding = Volume::GetVolumeFromId(OpticElement::resources.GetDefaultVolumeId());
    ASSERT_NE(surrounding, nullptr);
    std::vector<EMRadiation*> radiation;
    bool changed = true;
    for (int pass = 0; changed && pass < 10; pass++) {
        changed = system->TransmitInterfaceToVolume();
        changed = system->TransmitVolumeToInterface(&radiation) || changed;
        changed = surrounding->TransmitRadiation(&radiation) || changed;
    }
    ASSERT_FALSE(radiation.empty());
    ASSERT_TRUE(receiver->updateFromRadiation(radiation));
    EXPECT_GT(receiver->GetRayCount(), 0);
    double power = 0.0;
    EXPECT_TRUE(receiver->GetMaxPowerdB(power, transmitter->GetRadiation()->GetSourceName()));
    EXPECT_LT(power, 20.0);
    receiver->ClearRays();
    system->ClearReceivedRadiation();
    surrounding->ClearReceivedRadiation();
}

TEST(OpticSystem, GeographicPointsBecomeEarthCentredPositions) {
    BatchEvent event(BatchEvent::eventTestPoint);
    event.AddGeoPoint(90.0, 0.0, 29.0);
    Coordinates out;
    ASSERT_TRUE(BatchEvent::ToCoordinates(event.GetPoints()[0], out));
    EXPECT_NEAR(out.Get(0), 0.0, 1e-6);
    EXPECT_NEAR(out.Get(1), 6371029.0, 1e-6);
    EXPECT_NEAR(out.Get(2), 0.0, 1e-6);
    EXPECT_FALSE(BatchEvent::ToCoordinates({{"latitude", "1"}}, out));
    EXPECT_FALSE(BatchEvent::ToCoordinates({{"x", "1"}, {"y", "2m"}}, out));
}

TEST(OpticSystem, PresetsAreFoundByIndexAndNameAndGapsHaveNone) {
    EXPECT_EQ(OpticElement::GetNewElementName(OpticElement::GetNewElementIndex("Building")),
              "Building");
    EXPECT_EQ(OpticElement::GetNewElementIndex("Point360deg"), 1);
    EXPECT_EQ(OpticElement::GetNewElementIndex("TraceVolume - 100m"), 73);
    EXPECT_EQ(OpticElement::GetNewElementIndex("no such preset"), -1);
    OpticElement element;
    element.Initialize();
    EXPECT_FALSE(element.SetupNewElement(13, nullptr));
    EXPECT_EQ(element.GetParameterp(PN_TYP), nullptr);
}
