#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "control/OpticElement.h"
#include "documents/CElement.h"
#include "geometry/Coordinates.h"
#include "geometry/Direction.h"
#include "geometry/Layout.h"
#include "geometry/Rotation.h"
#include "propagation/Barrier.h"
#include "propagation/CityPart.h"
#include "propagation/FreqResponse.h"
#include "propagation/Interface.h"
#include "propagation/Tunnel.h"
#include "propagation/Volume.h"
#include "radiation/Ray.h"
#include "support/LogCapture.h"

namespace {

using Strings = std::vector<std::string>;
using Path = std::vector<std::pair<double, double>>;

template <typename T>
T Value(Component* owner, eParamName name) {
    T value{};
    EXPECT_TRUE(owner->GetParameterValue(name, value)) << "parameter " << name;
    return value;
}

// Distance at which the face stops the ray from (x, y, z) along (dx, dy, dz), or -1.
double Hit(Interface* face, double x, double y, double z, double dx, double dy, double dz) {
    Ray ray;
    ray.Set(CoordQUICK(x, y, z), VectorQUICK(dx, dy, dz), 100.0);
    return face->TestRayHit(&ray, -1.0);
}

// Which of the points the volume holds.
std::vector<bool> Held(Volume* volume, const std::vector<CoordQUICK>& points) {
    EXPECT_NE(volume, nullptr);
    std::vector<bool> held;
    for (const CoordQUICK& point : points) held.push_back(volume && volume->Contains(point));
    return held;
}

// Which of the points the structure's latest volume holds.
std::vector<bool> Held(Structure* structure, const std::vector<CoordQUICK>& points) {
    return Held(Volume::GetVolumeFromId(structure->GetVolumeId()), points);
}

bool Joins(Interface* face, int volumeId) {
    return face->GetVolumeA() == volumeId || face->GetVolumeB() == volumeId;
}

Structure::Faces& FacesOf(Structure* structure) { return *structure; }

// A scene element with a surrounding volume, in which structures are built.
class StructureBuild : public ::testing::Test {
protected:
    void SetUp() override {
        OpticElement::resources.init();
        element = NewElement();
        air = element->AddVolume()->GetSimObjectID();
        OpticElement::resources.SetDefaultVolumeId(air);
    }
    void TearDown() override {
        OpticElement::resources.SetDefaultVolumeId(-1);
        delete element;
    }
    static OpticElement* NewElement() {
        auto* made = new OpticElement();
        made->Initialize();
        return made;
    }

    // A brick structure under the element along the path, from 0.5 up by 2.
    template <typename T>
    T* Add(const Path& path, double thickness, eParamValue orientation = PV_ORIENT_VERTICAL) {
        auto* structure = new T();
        structure->Initialize();
        element->AddChild(structure);
        structure->SetName("wall");
        structure->SetParameterValue(PN_THICKNESS, thickness);
        structure->SetParameterValue(PN_BARBSE, 0.5);
        structure->SetParameterValue(PN_BARHGT, 2.0);
        structure->SetParameterValue(PN_MED, std::string("Brick (ITU)"));
        structure->SetParameterValue(PN_ORIENTATION, orientation);
        for (const auto& [x, y] : path) structure->AddPoint(Coordinates(x, y, 0.0));
        return structure;
    }
    // The names of the faces of the structure, or of the whole element.
    Strings Names(Structure* of = nullptr) {
        Strings names;
        for (Interface* face :
             of ? FacesOf(of) : static_cast<OpticElement::Interfaces&>(*element)) {
            names.push_back(face->GetName());
        }
        return names;
    }
    Interface* Face(const std::string& name) {
        return dynamic_cast<Interface*>(element->GetChildNamed(name));
    }
    size_t VolumeCount() { return static_cast<OpticElement::Volumes&>(*element).size(); }

    OpticElement* element = nullptr;
    int air = -1;
};

TEST_F(StructureBuild, VerticalWallsExpandIntoSheetsOrClosedVolumes) {
    // Thickness 0 is thin whatever the loss model says; so is barrierType "thin".
    Barrier* wall = Add<Barrier>({{0, 0}, {4, 0}, {4, 3}}, 0.0);
    wall->SetParameterValue(PN_BARLOSMDL, PV_LOSS_THICK);
    ASSERT_TRUE(wall->QuickSetToChildren(true));
    EXPECT_EQ(Names(), (Strings{"barrierFace1", "barrierFace2"}));
    EXPECT_EQ(VolumeCount(), 1u);
    Interface* sheet = Face("barrierFace2");
    EXPECT_EQ(Value<eParamValue>(sheet, PN_TYP), PV_TYPE_POINTPOINTHEIGHT);
    EXPECT_EQ(Value<eParamValue>(sheet, PN_BARLOSMDL), PV_LOSS_THIN);
    wall->SetParameterValue(PN_THICKNESS, 0.2);
    wall->SetParameterValue(PN_BARTYPE, PV_BARRIER_THIN);
    ASSERT_TRUE(wall->QuickSetToChildren(true));
    EXPECT_EQ(Names(), (Strings{"barrierFace1", "barrierFace2"}));

    wall->SetParameterValue(PN_BARTYPE, PV_BARRIER_THICK);
    ASSERT_TRUE(wall->QuickSetToChildren(true));
    EXPECT_EQ(Names(), (Strings{"barrierSide1", "barrierBottom1", "barrierTop1", "barrierSide2",
                                "barrierBottom2", "barrierTop2"}));
    ASSERT_EQ(VolumeCount(), 3u);
    Volume* volume = static_cast<OpticElement::Volumes&>(*element).back();
    EXPECT_EQ(volume->GetName(), "barrierVol");
    EXPECT_EQ(Value<eParamValue>(volume, PN_OBJSHAP), PV_SHAPE_WALL);
    EXPECT_EQ(volume->GetResponse(), static_cast<FreqResponseArray*>(wall));
    EXPECT_FALSE(volume->GetSaveToXML());
    EXPECT_EQ(volume->GetMedium(), OpticElement::resources.GetMedium("Brick (ITU)"));
    struct Row {
        const char* name;
        eParamValue type;
        double height;
    };
    for (const Row& row : {Row{"barrierSide2", PV_TYPE_POINTPOINTWIDTHHEIGHT, 2.5},
                           Row{"barrierBottom2", PV_TYPE_POINTPOINTWIDTH, 0.5},
                           Row{"barrierTop2", PV_TYPE_POINTPOINTWIDTH, 2.5}}) {
        Interface* face = Face(row.name);
        EXPECT_EQ(Value<eParamValue>(face, PN_TYP), row.type) << row.name;
        EXPECT_DOUBLE_EQ(Value<double>(face, PN_BASE), 0.5) << row.name;
        EXPECT_DOUBLE_EQ(Value<double>(face, PN_HEIGHT), row.height) << row.name;
        EXPECT_DOUBLE_EQ(Value<double>(face, PN_WID), 0.2) << row.name;
        EXPECT_EQ(Value<eParamValue>(face, PN_BARLOSMDL), PV_LOSS_THICK) << row.name;
        EXPECT_TRUE(Joins(face, volume->GetSimObjectID()) && Joins(face, air)) << row.name;
        EXPECT_FALSE(face->GetHalfLoss()) << row.name;
    }
}

TEST_F(StructureBuild, OnePointOrNoElementBuildNothing) {
    Barrier* wall = Add<Barrier>({{1, 1}}, 0.0);
    ASSERT_TRUE(wall->QuickSetToChildren(true));
    EXPECT_TRUE(Names().empty());
    EXPECT_EQ(wall->GetFirstPoint(), 0);

    Barrier loose;
    loose.Initialize();
    loose.AddPoint(Coordinates(0, 0, 0));
    loose.AddPoint(Coordinates(1, 0, 0));
    LogCapture capture;
    EXPECT_FALSE(loose.QuickSetToChildren(true));
    EXPECT_TRUE(capture.Contains("has no OpticElement parent"));
}

TEST_F(StructureBuild, ChangesRebuildEverySegmentAReloadOnlyTheLast) {
    Barrier* wall = Add<Barrier>({{0, 0}, {2, 0}, {2, 2}}, 0.2);
    auto* loss = new FreqResponse();
    loss->Initialize();
    wall->AddChild(loss);
    loss->SetParameterValue(PN_FREQ, 2.4e9, PU_HZ);
    loss->SetParameterValue(PN_TRANSLOSS, 6.0);
    wall->FreqResponseArray::push_back(loss);
    ASSERT_TRUE(wall->QuickSetToChildren(true));
    const std::vector<int> before = *wall;
    ASSERT_EQ(before.size(), 6u);
    EXPECT_TRUE(wall->QuickSetToChildren(false));
    EXPECT_EQ(static_cast<std::vector<int>&>(*wall), before);

    wall->SetParameterValue(PN_THICKNESS, 0.0);
    ASSERT_TRUE(wall->QuickSetToChildren(true));
    EXPECT_EQ(Names(), (Strings{"barrierFace1", "barrierFace2"}));
    EXPECT_EQ(VolumeCount(), 1u);
    for (int id : before) EXPECT_EQ(SimObject::GetObjectGlobally(id), nullptr);

    CElement saved;
    ASSERT_TRUE(element->ToXml(&saved, false));
    EXPECT_EQ(saved.findSubElementWithAttribute<const char*>(A_NAME, "barrierFace1"), nullptr);

    OpticElement* other = NewElement();
    auto* loaded = new Barrier();
    loaded->SetParent(other);
    loaded->Initialize();
    ASSERT_TRUE(loaded->FromXml(saved.findSubElementWithAttribute<const char*>(A_NAME, "wall")));
    EXPECT_DOUBLE_EQ(loaded->getParamAtFreq(PN_TRANSLOSS, 2.4e9), 6.0);
    EXPECT_EQ(loaded->GetFirstPoint(), 2);
    EXPECT_EQ(Names(loaded), (Strings{"barrierFace2"}));
    EXPECT_EQ(FacesOf(loaded)[0]->GetResponse(), static_cast<FreqResponseArray*>(loaded));
    loaded->SetParameterValue(PN_BARHGT, 3.0);
    ASSERT_TRUE(loaded->QuickSetToChildren(true));
    EXPECT_EQ(loaded->GetFirstPoint(), 1);
    EXPECT_EQ(Names(loaded), (Strings{"barrierFace1", "barrierFace2"}));
    delete other;
}

TEST_F(StructureBuild, FloorsBlocksAndTunnelsPairTheirFaces) {
    // Below the ground the top of a slab lies under its level.
    Barrier* slab = Add<Barrier>({{0, 0}, {3, 0}, {3, 3}, {0, 3}}, 0.3, PV_ORIENT_HORIZONTAL);
    slab->SetParameterValue(PN_BARBSE, -1.0);
    ASSERT_TRUE(slab->QuickSetToChildren(true));
    EXPECT_EQ(Names(slab), (Strings{"floorBase", "floorTop", "floorRound"}));
    Interface* top = Face("floorTop");
    EXPECT_EQ(Value<eParamValue>(top, PN_TYP), PV_TYPE_POLYGON);
    EXPECT_DOUBLE_EQ(Value<double>(top, PN_SURFOFFSET), -1.3);
    EXPECT_DOUBLE_EQ(Value<double>(Face("floorBase"), PN_SURFOFFSET), 2.0);
    EXPECT_EQ(Face("floorRound")->GetGuideStart(), Face("floorBase"));
    EXPECT_EQ(Face("floorRound")->GetGuideEnd(), top);
    for (Interface* face : FacesOf(slab)) {
        EXPECT_EQ(face->GetHalfLoss(), !face->TestName("floorRound")) << face->GetName();
    }

    CityPart* block = Add<CityPart>({}, 0.2);
    block->SetParameterValue(PN_SHOW, PV_FALSE);
    ASSERT_TRUE(block->QuickSetToChildren(true));
    EXPECT_EQ(Names(block), (Strings{"ground", "face1", "face2", "guide", "faceTop"}));
    for (Interface* face : FacesOf(block)) {
        const bool outline = face->TestName("face1") || face->TestName("face2");
        EXPECT_EQ(face->GetNoHits(), outline) << face->GetName();
        EXPECT_EQ(face->GetHalfLoss(), outline || face->TestName("guide")) << face->GetName();
        EXPECT_EQ(Joins(face, block->GetVolumeId()), !face->TestName("ground")) << face->GetName();
        EXPECT_EQ(Value<eParamValue>(face, PN_SHOW), PV_FALSE) << face->GetName();
    }

    // A tunnel 3 wide: its walls stand 1.5 to either side of the way.
    Tunnel* tunnel = Add<Tunnel>({{0, 0}, {10, 0}}, 0.2);
    tunnel->SetParameterValue(PN_WID, 3.0);
    ASSERT_TRUE(tunnel->QuickSetToChildren(true));
    EXPECT_NEAR(Hit(FacesOf(tunnel)[1], 5, 0, 1, 0, -1, 0), 1.5, 1e-9);
    EXPECT_EQ(Names(tunnel), (Strings{"face1", "face2", "floor", "roof", "guide", "guide"}));
    for (Interface* face : FacesOf(tunnel)) {
        EXPECT_EQ(face->GetHalfLoss(), face->TestName("face1") || face->TestName("face2"));
        EXPECT_EQ(face->GetReflect(), !face->TestName("guide")) << face->GetName();
        EXPECT_TRUE(Joins(face, tunnel->GetVolumeId())) << face->GetName();
    }
}

TEST_F(StructureBuild, BuiltFacesStopRaysWhereTheStructureStands) {
    // A sheet from 0.5 up to 2.5 along x from 0 to 4; 0.2 thick, a box around it.
    Barrier* wall = Add<Barrier>({{0, 0}, {4, 0}}, 0.0);
    ASSERT_TRUE(wall->QuickSetToChildren(true));
    EXPECT_NEAR(Hit(Face("barrierFace1"), 2, -3, 1, 0, 1, 0), 3.0, 1e-9);
    EXPECT_EQ(Hit(Face("barrierFace1"), 2, -3, 2.6, 0, 1, 0), -1.0);
    wall->SetParameterValue(PN_THICKNESS, 0.2);
    ASSERT_TRUE(wall->QuickSetToChildren(true));
    EXPECT_NEAR(Hit(Face("barrierTop1"), 2, 0.05, 5, 0, 0, -1), 2.5, 1e-9);
    EXPECT_NEAR(Hit(Face("barrierSide1"), 2, -3, 1, 0, 1, 0), 2.9, 1e-9);

    // A square floor at 0.5 over x in [-2, 4], y in [-1.5, 4.5].
    Barrier* floor = Add<Barrier>({}, 0.0, PV_ORIENT_HORIZONTAL);
    floor->SetParameterValue(PN_XMIN, -2.0);
    floor->SetParameterValue(PN_XMAX, 4.0);
    floor->SetParameterValue(PN_YMAX, 3.0);
    ASSERT_TRUE(floor->QuickSetToChildren(true));
    EXPECT_NEAR(Hit(Face("floorFace"), 3.5, 4.0, 5, 0, 0, -1), 4.5, 1e-9);
    EXPECT_EQ(Hit(Face("floorFace"), -2.5, 1.5, 5, 0, 0, -1), -1.0);

    // A slab over [0, 3] x [0, 3] from 0.5 to 0.8, closed by its rim.
    Barrier* slab = Add<Barrier>({{0, 0}, {3, 0}, {3, 3}, {0, 3}}, 0.3, PV_ORIENT_HORIZONTAL);
    slab->SetParameterValue(PN_BARHGT, 0.5);
    ASSERT_TRUE(slab->QuickSetToChildren(true));
    EXPECT_NEAR(Hit(Face("floorTop"), 1, 2, 5, 0, 0, -1), 4.2, 1e-9);
    EXPECT_NEAR(Hit(Face("floorRound"), -3, 1.5, 0.65, 1, 0, 0), 3.0, 1e-9);
}

TEST_F(StructureBuild, ThickVolumesHoldJustTheirSlab) {
    // A wall along x from 0 to 4, 0.2 thick, from the ground up to 2.5.
    Barrier* wall = Add<Barrier>({{0, 0}, {4, 0}}, 0.2);
    wall->SetParameterValue(PN_BARBSE, 0.0);
    wall->SetParameterValue(PN_BARHGT, 2.5);
    ASSERT_TRUE(wall->QuickSetToChildren(true));
    const std::vector<CoordQUICK> inside = {{2, 0, 1}, {0.01, 0.09, 0.01}, {3.99, -0.09, 2.49}};
    EXPECT_EQ(Held(wall, inside), std::vector<bool>(3, true));
    // Beyond each face, below, above, past each end; then exactly on each side face and end.
    const std::vector<CoordQUICK> outside = {{2, 0.11, 1}, {2, -0.11, 1}, {2, 0, -0.01},
                                             {2, 0, 2.51}, {-0.01, 0, 1}, {4.01, 0, 1},
                                             {2, 0.1, 1},  {2, -0.1, 1},  {4, 0, 1}};
    EXPECT_EQ(Held(wall, outside), std::vector<bool>(outside.size(), false));

    // Moved to run along y from (1, 1) to (1, 5) and raised by 1, the slab follows.
    std::vector<Coordinates*> path = wall->GetPoints();
    path[0]->SetValues(1.0, 1.0, 0.0);
    path[1]->SetValues(1.0, 5.0, 0.0);
    wall->SetParameterValue(PN_BARBSE, 1.0);
    ASSERT_TRUE(wall->QuickSetToChildren(true));
    EXPECT_EQ(VolumeCount(), 2u);  // the old one went
    EXPECT_EQ(Held(wall, {{1.05, 4.9, 3.4}, {2, 0, 1}, {1.15, 3, 2}, {1, 3, 0.9}, {1, 5.1, 2}}),
              (std::vector<bool>{true, false, false, false, false}));

    // Each segment has its own box, ending at its points: the inner corner of an L belongs
    // to both, the outer notch to neither.
    Barrier* corner = Add<Barrier>({{10, 0}, {14, 0}, {14, 3}}, 0.2);
    ASSERT_TRUE(corner->QuickSetToChildren(true));
    OpticElement::Volumes& volumes = *element;
    const std::vector<CoordQUICK> probes = {
        {13.95, 0.05, 1}, {12, 0, 1}, {14.05, 2, 1}, {14.05, -0.05, 1}};
    EXPECT_EQ(Held(volumes[volumes.size() - 2], probes),
              (std::vector<bool>{true, true, false, false}));
    EXPECT_EQ(Held(volumes.back(), probes), (std::vector<bool>{true, false, true, false}));

    // A floor of the polygon kind holds the slab from its level up by the thickness over the
    // outline's bounding rectangle; a floor without points over its square.
    Barrier* slab = Add<Barrier>({{0, 0}, {3, 0}, {3, 2}, {0, 2}}, 0.3, PV_ORIENT_HORIZONTAL);
    ASSERT_TRUE(slab->QuickSetToChildren(true));
    EXPECT_EQ(Held(slab, {{1, 1, 0.6},
                          {2.9, 1.9, 0.79},
                          {1, 1, 0.4},
                          {1, 1, 0.9},
                          {3.1, 1, 0.6},
                          {1, 2.1, 0.6}}),
              (std::vector<bool>{true, true, false, false, false, false}));
    Barrier* square = Add<Barrier>({}, 0.3, PV_ORIENT_HORIZONTAL);
    square->SetParameterValue(PN_XMIN, -2.0);
    square->SetParameterValue(PN_XMAX, 4.0);
    square->SetParameterValue(PN_BARBSE, -1.0);
    ASSERT_TRUE(square->QuickSetToChildren(true));
    EXPECT_EQ(Held(square, {{3.9, 2.9, -1.1}, {3.9, -2.9, -1.29}, {1, 3.1, -1.1}, {1, 0, -0.9}}),
              (std::vector<bool>{true, true, false, false}));
}

TEST_F(StructureBuild, ThickVolumesMoveAndTurnWithTheirElement) {
    // The element turns its contents a quarter round z, then moves them by (0, 0, 10): the
    // wall along x from 0 to 4 stands along y from (0, 0) to (0, 4).
    element->InitLayout();
    Coordinates origin(0.0, 0.0, 0.0);
    Direction up(0.0, 0.0, 1.0);
    element->GetLayout()->InitRotation(&origin, &up);
    element->GetLayout()->GetRotation()->SetStartAngle(90.0);
    Coordinates raise(0.0, 0.0, 10.0);
    element->GetLayout()->setToCentre(raise);
    Barrier* wall = Add<Barrier>({{0, 0}, {4, 0}}, 0.2);
    ASSERT_TRUE(wall->QuickSetToChildren(true));
    EXPECT_EQ(
        Held(wall, {{0.05, 3.9, 11}, {-0.05, 0.1, 12.4}, {2, 0, 11}, {0, 2, 1}, {0.15, 2, 11}}),
        (std::vector<bool>{true, true, false, false, false}));
}

TEST_F(StructureBuild, PassToInterfaceHandsOverParametersFlagsAndLosses) {
    Barrier* wall = Add<Barrier>({}, 0.25);
    const eParamName listed[] = {PN_TRCMIN, PN_BARREFSPAR, PN_BARDIFEXP, PN_RAYGAP, PN_DIFFANG};
    for (eParamName name : listed) wall->SetParameterValue(name, 0.5 + static_cast<int>(name));
    wall->SetParameterValue(PN_REFLECT, PV_FALSE);
    wall->SetParameterValue(PN_TRANSMITRAT, 0.4);
    wall->checkParams();
    Interface* face = element->AddInterface("loose");
    ASSERT_TRUE(Structure::PassToInterface(wall, face));
    for (eParamName name : listed)
        EXPECT_DOUBLE_EQ(Value<double>(face, name), 0.5 + static_cast<int>(name));
    EXPECT_EQ(Value<std::string>(face, PN_MED), "Brick (ITU)");
    EXPECT_EQ(Value<eParamValue>(face, PN_COLOR), PV_ORANGE);
    EXPECT_FALSE(face->GetReflect());
    EXPECT_DOUBLE_EQ(face->GetTransmitRatio(), 0.4);
    EXPECT_EQ(face->GetResponse(), static_cast<FreqResponseArray*>(wall));
    EXPECT_FALSE(face->GetSaveToXML());
    EXPECT_EQ(wall->FaceIds::back(), face->GetSimObjectID());
}

}  // namespace
