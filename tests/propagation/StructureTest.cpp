#include <gtest/gtest.h>

#include <initializer_list>
#include <set>
#include <string>
#include <vector>

#include "control/OpticElement.h"
#include "documents/CElement.h"
#include "geometry/Coordinates.h"
#include "propagation/Barrier.h"
#include "propagation/CityPart.h"
#include "propagation/FreqResponse.h"
#include "propagation/Interface.h"
#include "propagation/Tunnel.h"
#include "propagation/Volume.h"
#include "radiation/Medium.h"
#include "radiation/Ray.h"
#include "support/LogCapture.h"

namespace {

template <typename T>
T Value(Component* owner, eParamName name) {
    T value{};
    EXPECT_TRUE(owner->GetParameterValue(name, value)) << "parameter " << name;
    return value;
}

// Every "A_NAME" in the element and below it.
void CollectNames(CElement* element, std::set<std::string>& names) {
    std::string name;
    if (element->getAttributeValue(A_NAME, name)) names.insert(name);
    for (const auto& entry : element->elements()) CollectNames(entry.second, names);
}

// A scene element with a surrounding volume, in which structures are built.
class StructureBuild : public ::testing::Test {
protected:
    void SetUp() override {
        OpticElement::resources.init();
        element = NewElement();
        air = element->AddVolume();
        OpticElement::resources.SetDefaultVolumeId(air->GetSimObjectID());
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

    // A structure under the element with the path (x, y) at ground level and the wall
    // parameters used throughout.
    template <typename T>
    T* Add(std::initializer_list<std::pair<double, double>> path, double thickness) {
        auto* structure = new T();
        structure->Initialize();
        element->AddChild(structure);
        structure->SetName("wall");
        structure->SetParameterValue(PN_THICKNESS, thickness);
        structure->SetParameterValue(PN_BARBSE, 0.5);
        structure->SetParameterValue(PN_BARHGT, 2.0);
        structure->SetParameterValue(PN_MED, std::string("Brick (ITU)"));
        for (const auto& [x, y] : path) structure->AddPoint(Coordinates(x, y, 0.0));
        return structure;
    }

    std::vector<std::string> FaceNames() {
        std::vector<std::string> names;
        for (Interface* face : *static_cast<OpticElement::Interfaces*>(element)) {
            names.push_back(face->GetName());
        }
        return names;
    }
    Interface* Face(const std::string& name) {
        return dynamic_cast<Interface*>(element->GetChildNamed(name));
    }
    size_t VolumeCount() { return static_cast<OpticElement::Volumes*>(element)->size(); }
    static bool Joins(Interface* face, Volume* volume) {
        const int id = volume->GetSimObjectID();
        return face->GetVolumeA() == id || face->GetVolumeB() == id;
    }

    OpticElement* element = nullptr;
    Volume* air = nullptr;
};

using Strings = std::vector<std::string>;

// Distance at which the face stops the ray from (x, y, z) along (dx, dy, dz), or -1.
double HitDistance(Interface* face, double x, double y, double z, double dx, double dy, double dz) {
    Ray ray;
    ray.Set(CoordQUICK(x, y, z), VectorQUICK(dx, dy, dz), 100.0);
    return face->TestRayHit(&ray, -1.0);
}

Structure::Faces& FacesOf(Structure* structure) {
    return *static_cast<Structure::Faces*>(structure);
}

TEST_F(StructureBuild, ThinWallIsOneSheetPerSegmentWhateverTheLossModel) {
    Barrier* wall = Add<Barrier>({{0, 0}, {4, 0}, {4, 3}}, 0.0);
    wall->SetParameterValue(PN_BARLOSMDL, PV_LOSS_THICK);
    ASSERT_TRUE(wall->QuickSetToChildren(true));
    EXPECT_EQ(FaceNames(), (Strings{"barrierFace1", "barrierFace2"}));
    EXPECT_EQ(VolumeCount(), 1u);
    EXPECT_EQ(wall->GetFirstPoint(), 1);

    Interface* second = Face("barrierFace2");
    EXPECT_EQ(Value<eParamValue>(second, PN_TYP), PV_TYPE_POINTPOINTHEIGHT);
    EXPECT_DOUBLE_EQ(Value<double>(second, PN_BASE), 0.5);
    EXPECT_DOUBLE_EQ(Value<double>(second, PN_HEIGHT), 2.0);
    EXPECT_EQ(Value<eParamValue>(second, PN_BARLOSMDL), PV_LOSS_THIN);
    ASSERT_EQ(second->GetBarrierPoints().size(), 2u);
    EXPECT_DOUBLE_EQ(second->GetBarrierPoints()[0]->Get(0), 4.0);
    EXPECT_DOUBLE_EQ(second->GetBarrierPoints()[1]->Get(1), 3.0);
    EXPECT_TRUE(Joins(second, air));
    EXPECT_EQ(second->GetVolumeB(), -1);

    // With a thickness, barrierType "thin" keeps the sheets.
    wall->SetParameterValue(PN_THICKNESS, 0.2);
    wall->SetParameterValue(PN_BARTYPE, PV_BARRIER_THIN);
    ASSERT_TRUE(wall->QuickSetToChildren(true));
    EXPECT_EQ(FaceNames(), (Strings{"barrierFace1", "barrierFace2"}));
}

TEST_F(StructureBuild, ThickWallClosesAVolumePerSegment) {
    Barrier* wall = Add<Barrier>({{0, 0}, {4, 0}}, 0.2);
    ASSERT_TRUE(wall->QuickSetToChildren(true));
    EXPECT_EQ(FaceNames(), (Strings{"barrierSide1", "barrierBottom1", "barrierTop1"}));
    ASSERT_EQ(VolumeCount(), 2u);
    Volume* volume = static_cast<OpticElement::Volumes*>(element)->back();
    EXPECT_EQ(volume->GetName(), "barrierVol");
    EXPECT_EQ(wall->GetVolumeId(), volume->GetSimObjectID());
    EXPECT_EQ(Value<eParamValue>(volume, PN_OBJSHAP), PV_SHAPE_WALL);
    EXPECT_EQ(volume->GetResponse(), static_cast<FreqResponseArray*>(wall));
    EXPECT_FALSE(volume->GetSaveToXML());
    EXPECT_EQ(volume->GetMedium(), OpticElement::resources.GetMedium("Brick (ITU)"));

    struct Expected {
        const char* name;
        eParamValue type;
        double base;
        double height;
    };
    for (const Expected& row : {Expected{"barrierSide1", PV_TYPE_POINTPOINTWIDTHHEIGHT, 0.5, 2.5},
                                Expected{"barrierBottom1", PV_TYPE_POINTPOINTWIDTH, 0.5, 0.5},
                                Expected{"barrierTop1", PV_TYPE_POINTPOINTWIDTH, 0.5, 2.5}}) {
        Interface* face = Face(row.name);
        ASSERT_NE(face, nullptr) << row.name;
        EXPECT_EQ(Value<eParamValue>(face, PN_TYP), row.type) << row.name;
        EXPECT_DOUBLE_EQ(Value<double>(face, PN_BASE), row.base) << row.name;
        EXPECT_DOUBLE_EQ(Value<double>(face, PN_HEIGHT), row.height) << row.name;
        EXPECT_DOUBLE_EQ(Value<double>(face, PN_WID), 0.2) << row.name;
        EXPECT_EQ(Value<eParamValue>(face, PN_BARLOSMDL), PV_LOSS_THICK) << row.name;
        EXPECT_TRUE(Joins(face, volume) && Joins(face, air)) << row.name;
        EXPECT_FALSE(face->GetHalfLoss()) << row.name;
        EXPECT_EQ(Value<eParamValue>(face, PN_COLOR), PV_ORANGE) << row.name;
    }
}

TEST_F(StructureBuild, TooFewPointsOrNoElementBuildNothing) {
    Barrier* wall = Add<Barrier>({{1, 1}}, 0.0);
    ASSERT_TRUE(wall->QuickSetToChildren(true));
    EXPECT_TRUE(FaceNames().empty());
    EXPECT_EQ(wall->GetFirstPoint(), 0);

    Barrier loose;
    loose.Initialize();
    loose.AddPoint(Coordinates(0, 0, 0));
    loose.AddPoint(Coordinates(1, 0, 0));
    LogCapture capture;
    EXPECT_FALSE(loose.QuickSetToChildren(true));
    EXPECT_TRUE(capture.Contains("has no OpticElement parent"));
    EXPECT_TRUE(loose.FaceIds::empty());
}

TEST_F(StructureBuild, AParameterChangeRebuildsEverySegmentWithFreshFaces) {
    Barrier* wall = Add<Barrier>({{0, 0}, {2, 0}, {2, 2}}, 0.2);
    ASSERT_TRUE(wall->QuickSetToChildren(true));
    const std::vector<int> before = *static_cast<Structure::FaceIds*>(wall);
    ASSERT_EQ(before.size(), 6u);
    EXPECT_TRUE(wall->QuickSetToChildren(false));
    EXPECT_EQ(*static_cast<Structure::FaceIds*>(wall), before);

    wall->SetParameterValue(PN_THICKNESS, 0.0);
    ASSERT_TRUE(wall->QuickSetToChildren(true));
    EXPECT_EQ(FaceNames(), (Strings{"barrierFace1", "barrierFace2"}));
    EXPECT_EQ(VolumeCount(), 1u);
    for (int id : before) EXPECT_EQ(SimObject::GetObjectGlobally(id), nullptr);
}

TEST_F(StructureBuild, FacesAreNotSavedAndAReloadBuildsFromTheLastSegment) {
    Barrier* wall = Add<Barrier>({{0, 0}, {2, 0}, {2, 2}}, 0.0);
    auto* loss = new FreqResponse();
    loss->Initialize();
    wall->AddChild(loss);
    loss->SetParameterValue(PN_FREQ, 2.4e9, PU_HZ);
    loss->SetParameterValue(PN_TRANSLOSS, 6.0);
    wall->FreqResponseArray::push_back(loss);
    ASSERT_TRUE(wall->QuickSetToChildren(true));

    CElement saved;
    ASSERT_TRUE(element->ToXml(&saved, false));
    std::set<std::string> names;
    CollectNames(&saved, names);
    EXPECT_EQ(names.count("wall"), 1u);
    EXPECT_EQ(names.count("barrierFace1") + names.count("barrierFace2"), 0u);

    OpticElement* other = NewElement();
    auto* loaded = new Barrier();
    loaded->SetParent(other);
    loaded->Initialize();
    ASSERT_TRUE(loaded->FromXml(saved.findSubElementWithAttribute<const char*>(A_NAME, "wall")));
    EXPECT_EQ(loaded->GetPoints().size(), 3u);
    ASSERT_EQ(loaded->FreqResponseArray::size(), 1u);
    EXPECT_DOUBLE_EQ(loaded->getParamAtFreq(PN_TRANSLOSS, 2.4e9), 6.0);
    EXPECT_EQ(loaded->GetFirstPoint(), 2);
    ASSERT_EQ(loaded->Faces::size(), 1u);
    EXPECT_EQ(loaded->Faces::front()->GetName(), "barrierFace2");
    EXPECT_EQ(loaded->Faces::front()->GetResponse(), static_cast<FreqResponseArray*>(loaded));

    loaded->SetParameterValue(PN_BARHGT, 3.0);
    ASSERT_TRUE(loaded->QuickSetToChildren(true));
    EXPECT_EQ(loaded->GetFirstPoint(), 1);
    ASSERT_EQ(loaded->Faces::size(), 2u);
    EXPECT_DOUBLE_EQ(Value<double>(loaded->Faces::back(), PN_HEIGHT), 3.0);
    delete other;
}

TEST_F(StructureBuild, FloorsSpanTheirOutlineAndThickOnesChargeHalfAtEachSide) {
    Barrier* floor = Add<Barrier>({}, 0.0);
    floor->SetParameterValue(PN_ORIENTATION, PV_ORIENT_HORIZONTAL);
    floor->SetParameterValue(PN_XMIN, -2.0);
    floor->SetParameterValue(PN_XMAX, 4.0);
    floor->SetParameterValue(PN_YMIN, 0.0);
    floor->SetParameterValue(PN_YMAX, 3.0);
    ASSERT_TRUE(floor->QuickSetToChildren(true));
    Interface* square = Face("floorFace");
    ASSERT_NE(square, nullptr);
    EXPECT_EQ(Value<eParamValue>(square, PN_TYP), PV_TYPE_APERTUREFUNCTION);
    EXPECT_EQ(Value<eParamValue>(square, PN_APSHAP), PV_APSHAPE_SQUARE);
    EXPECT_DOUBLE_EQ(Value<double>(square, PN_APSIZE), 6.0);
    EXPECT_DOUBLE_EQ(Value<double>(square, PN_SURFOFFSET), 0.5);

    Barrier* slab = Add<Barrier>({{0, 0}, {3, 0}, {3, 3}, {0, 3}}, 0.3);
    slab->SetParameterValue(PN_ORIENTATION, PV_ORIENT_HORIZONTAL);
    slab->SetParameterValue(PN_BARBSE, -1.0);
    slab->SetParameterValue(PN_BARLOSMDL, PV_LOSS_THICK);
    ASSERT_TRUE(slab->QuickSetToChildren(true));
    EXPECT_EQ(slab->Faces::size(), 3u);
    Interface* base = Face("floorBase");
    Interface* top = Face("floorTop");
    Interface* round = Face("floorRound");
    ASSERT_TRUE(base && top && round);
    for (Interface* outline : {base, top}) {
        EXPECT_EQ(Value<eParamValue>(outline, PN_TYP), PV_TYPE_POLYGON);
        EXPECT_EQ(Value<eParamValue>(outline, PN_APSHAP), PV_APSHAPE_POINTOUTLINE);
        EXPECT_EQ(outline->GetBarrierPoints().size(), 4u);
        EXPECT_TRUE(outline->GetHalfLoss());
    }
    EXPECT_DOUBLE_EQ(Value<double>(base, PN_SURFOFFSET), 2.0);
    // Below the ground the top lies under the level.
    EXPECT_DOUBLE_EQ(Value<double>(top, PN_SURFOFFSET), -1.3);
    EXPECT_EQ(Value<eParamValue>(round, PN_TYP), PV_TYPE_APERTUREEXTEND);
    EXPECT_DOUBLE_EQ(Value<double>(round, PN_EXTLENGTH), 0.3);
    EXPECT_EQ(round->GetGuideStart(), base);
    EXPECT_EQ(round->GetGuideEnd(), top);
    EXPECT_FALSE(round->GetHalfLoss());
    EXPECT_EQ(Volume::GetVolumeFromId(slab->GetVolumeId())->GetName(), "barrierVol");
}

TEST_F(StructureBuild, CityPartOutlinesOnlyGuideTheBuildingSide) {
    CityPart* block = Add<CityPart>({}, 0.2);
    block->SetParameterValue(PN_SIZ, 8.0);
    block->SetParameterValue(PN_SHOW, PV_FALSE);
    ASSERT_TRUE(block->QuickSetToChildren(true));
    EXPECT_EQ(FaceNames(), (Strings{"ground", "face1", "face2", "guide", "faceTop"}));
    Volume* building = Volume::GetVolumeFromId(block->GetVolumeId());
    ASSERT_NE(building, nullptr);
    for (Interface* face : FacesOf(block)) {
        const std::string& name = face->GetName();
        EXPECT_EQ(face->GetNoHits(), name == "face1" || name == "face2") << name;
        EXPECT_EQ(face->GetHalfLoss(), name == "face1" || name == "face2" || name == "guide")
            << name;
        EXPECT_EQ(Joins(face, building), name != "ground") << name;
        EXPECT_EQ(Value<eParamValue>(face, PN_SHOW), PV_FALSE) << name;
    }
    EXPECT_DOUBLE_EQ(Value<double>(Face("ground"), PN_APSIZE), 8.0);
    EXPECT_DOUBLE_EQ(Value<double>(Face("faceTop"), PN_SURFOFFSET), 2.5);
    EXPECT_EQ(Face("guide")->GetGuideStart(), Face("face1"));
    EXPECT_EQ(Face("guide")->GetGuideEnd(), Face("face2"));
    // The side of the block stands at x = -4 from 0.5 to 2.5; the roof is hit from above
    // and the outlines never.
    EXPECT_NEAR(HitDistance(Face("guide"), -10, 0, 1, 1, 0, 0), 6.0, 1e-9);
    EXPECT_NEAR(HitDistance(Face("faceTop"), 1, 1, 5, 0, 0, -1), 2.5, 1e-9);
    EXPECT_EQ(HitDistance(Face("face2"), 1, 1, 5, 0, 0, -1), -1.0);
}

TEST_F(StructureBuild, TunnelWallsStandHalfAWidthToEitherSide) {
    Tunnel* tunnel = Add<Tunnel>({{0, 0}, {10, 0}}, 0.2);
    tunnel->SetParameterValue(PN_WID, 3.0);
    ASSERT_TRUE(tunnel->QuickSetToChildren(true));
    EXPECT_EQ(FaceNames(), (Strings{"face1", "face2", "floor", "roof", "guide", "guide"}));
    EXPECT_DOUBLE_EQ(Face("face1")->GetBarrierPoints()[1]->Get(1), 1.5);
    EXPECT_DOUBLE_EQ(Face("face2")->GetBarrierPoints()[1]->Get(1), -1.5);
    EXPECT_DOUBLE_EQ(Value<double>(Face("roof"), PN_HEIGHT), 2.5);
    Volume* inside = Volume::GetVolumeFromId(tunnel->GetVolumeId());
    for (Interface* face : FacesOf(tunnel)) {
        const std::string& name = face->GetName();
        EXPECT_EQ(face->GetHalfLoss(), name == "face1" || name == "face2") << name;
        EXPECT_EQ(face->GetReflect(), name != "guide") << name;
        EXPECT_TRUE(Joins(face, inside) && Joins(face, air)) << name;
    }
    EXPECT_EQ(Value<eParamValue>(Face("face1"), PN_SHOW), PV_FALSE);
    // The exit spans the opening across the last point.
    Interface* exit = tunnel->Faces::back();
    EXPECT_DOUBLE_EQ(exit->GetBarrierPoints()[0]->Get(0), 10.0);
    EXPECT_EQ(exit->GetResponse(), nullptr);
}

TEST_F(StructureBuild, BuiltFacesStopRaysWhereTheStructureStands) {
    // A sheet from 0.5 up to 2.5 between x = 0 and 4.
    Barrier* wall = Add<Barrier>({{0, 0}, {4, 0}}, 0.0);
    ASSERT_TRUE(wall->QuickSetToChildren(true));
    Interface* sheet = Face("barrierFace1");
    EXPECT_NEAR(HitDistance(sheet, 2, -3, 1, 0, 1, 0), 3.0, 1e-9);
    EXPECT_EQ(HitDistance(sheet, 2, -3, 2.6, 0, 1, 0), -1.0);
    EXPECT_EQ(HitDistance(sheet, 5, -3, 1, 0, 1, 0), -1.0);

    // The same wall 0.2 thick: the top strip covers y in [-0.1, 0.1] at 2.5.
    wall->SetParameterValue(PN_THICKNESS, 0.2);
    ASSERT_TRUE(wall->QuickSetToChildren(true));
    EXPECT_NEAR(HitDistance(Face("barrierTop1"), 2, 0.05, 5, 0, 0, -1), 2.5, 1e-9);
    EXPECT_EQ(HitDistance(Face("barrierTop1"), 2, 0.15, 5, 0, 0, -1), -1.0);
    EXPECT_NEAR(HitDistance(Face("barrierBottom1"), 2, 0.05, -5, 0, 0, 1), 5.5, 1e-9);
    EXPECT_NEAR(HitDistance(Face("barrierSide1"), 2, -3, 1, 0, 1, 0), 2.9, 1e-9);

    // A square floor over x in [-2, 4], y in [-1.5, 4.5] at 0.5.
    Barrier* floor = Add<Barrier>({}, 0.0);
    floor->SetParameterValue(PN_ORIENTATION, PV_ORIENT_HORIZONTAL);
    floor->SetParameterValue(PN_XMIN, -2.0);
    floor->SetParameterValue(PN_XMAX, 4.0);
    floor->SetParameterValue(PN_YMAX, 3.0);
    ASSERT_TRUE(floor->QuickSetToChildren(true));
    EXPECT_NEAR(HitDistance(Face("floorFace"), 3.5, 4.0, 5, 0, 0, -1), 4.5, 1e-9);
    EXPECT_EQ(HitDistance(Face("floorFace"), -2.5, 1.5, 5, 0, 0, -1), -1.0);

    // A slab over the square [0, 3] x [0, 3] from 0.5 to 0.8, closed by its rim.
    Barrier* slab = Add<Barrier>({{0, 0}, {3, 0}, {3, 3}, {0, 3}}, 0.3);
    slab->SetParameterValue(PN_ORIENTATION, PV_ORIENT_HORIZONTAL);
    slab->SetParameterValue(PN_BARHGT, 0.5);
    ASSERT_TRUE(slab->QuickSetToChildren(true));
    EXPECT_NEAR(HitDistance(Face("floorBase"), 1, 2, 5, 0, 0, -1), 4.5, 1e-9);
    EXPECT_NEAR(HitDistance(Face("floorTop"), 1, 2, 5, 0, 0, -1), 4.2, 1e-9);
    EXPECT_EQ(HitDistance(Face("floorTop"), 4, 2, 5, 0, 0, -1), -1.0);
    EXPECT_NEAR(HitDistance(Face("floorRound"), -3, 1.5, 0.65, 1, 0, 0), 3.0, 1e-9);
    EXPECT_EQ(HitDistance(Face("floorRound"), -3, 1.5, 1.0, 1, 0, 0), -1.0);
}

TEST_F(StructureBuild, PassToInterfaceHandsOverParametersFlagsAndLosses) {
    Barrier* wall = Add<Barrier>({}, 0.25);
    wall->SetParameterValue(PN_TRCMIN, -110.0);
    wall->SetParameterValue(PN_BARREFMDL, PV_REFLECT_LAMBERTIAN);
    wall->SetParameterValue(PN_BARDIFMDL, PV_DIFFRACT_BERG);
    wall->SetParameterValue(PN_RAYGAP, 0.05);
    wall->SetParameterValue(PN_REFLECT, PV_FALSE);
    wall->SetParameterValue(PN_TRANSMITRAT, 0.4);
    wall->checkParams();
    Interface* face = element->AddInterface("loose");
    ASSERT_TRUE(Structure::PassToInterface(wall, face));
    EXPECT_DOUBLE_EQ(Value<double>(face, PN_TRCMIN), -110.0);
    EXPECT_EQ(Value<eParamValue>(face, PN_BARREFMDL), PV_REFLECT_LAMBERTIAN);
    EXPECT_EQ(Value<eParamValue>(face, PN_BARDIFMDL), PV_DIFFRACT_BERG);
    EXPECT_DOUBLE_EQ(Value<double>(face, PN_RAYGAP), 0.05);
    EXPECT_DOUBLE_EQ(Value<double>(face, PN_THICKNESS), 0.25);
    EXPECT_EQ(Value<std::string>(face, PN_MED), "Brick (ITU)");
    EXPECT_EQ(Value<eParamValue>(face, PN_RDET), PV_RES_MEDIUM);
    EXPECT_FALSE(face->GetReflect());
    EXPECT_TRUE(face->GetTransmit());
    EXPECT_DOUBLE_EQ(face->GetTransmitRatio(), 0.4);
    EXPECT_EQ(face->GetResponse(), static_cast<FreqResponseArray*>(wall));
    EXPECT_FALSE(face->GetSaveToXML());
    EXPECT_EQ(wall->FaceIds::back(), face->GetSimObjectID());
    EXPECT_TRUE(Joins(face, air));
    EXPECT_FALSE(Structure::PassToInterface(wall, nullptr));
}

}  // namespace
