#include <gtest/gtest.h>

#include <string>

#include "control/OpticElement.h"
#include "geometry/Coordinates.h"
#include "propagation/Interface.h"
#include "propagation/Volume.h"
#include "radiation/Medium.h"

TEST(OpticElement, AddVolumeTakesTheElementsMediumAndVolumeParameters) {
    OpticElement::resources.init();
    OpticElement element;
    element.Initialize();
    element.SetParameterValue(PN_MED, std::string("Concrete (ITU)"));
    element.SetParameterValue(PN_VOLTYP, PV_VOL_STEPPED);
    element.SetParameterValue(PN_RINDMIN, 1.5);
    element.SetParameterValue(PN_VOLSTEPDIST, 0.25);
    element.SetParameterValue(PN_OBJSHAP, PV_SHAPE_BLOCK);
    element.SetParameterValue(PN_BARHGT, 3.0);
    element.SetParameterValue(PN_VOLPROPEXP, 2.5);

    Volume* first = element.AddVolume();
    Volume* second = element.AddVolume();
    EXPECT_EQ(first->GetName(), "vol1");
    EXPECT_EQ(second->GetName(), "vol2");
    EXPECT_EQ(first->GetParent(), &element);
    EXPECT_EQ(static_cast<OpticElement::Volumes&>(element).back(), second);
    EXPECT_EQ(first->GetMedium(), OpticElement::resources.GetMedium("Concrete (ITU)"));

    eParamValue value = PV_EMPTY;
    double number = 0.0;
    EXPECT_TRUE(first->GetParameterValue(PN_VOLTYP, value));
    EXPECT_EQ(value, PV_VOL_STEPPED);
    EXPECT_TRUE(first->GetParameterValue(PN_OBJSHAP, value));
    EXPECT_EQ(value, PV_SHAPE_BLOCK);
    EXPECT_TRUE(first->GetParameterValue(PN_COORDSYS, value));
    EXPECT_EQ(value, PV_COORD_SPHERICAL);
    for (auto [name, expected] : {std::pair{PN_RINDMIN, 1.5}, std::pair{PN_VOLSTEPDIST, 0.25},
                                  std::pair{PN_BARHGT, 3.0}, std::pair{PN_VOLPROPEXP, 2.5}}) {
        EXPECT_TRUE(first->GetParameterValue(name, number)) << name;
        EXPECT_DOUBLE_EQ(number, expected) << name;
    }
    // What the element does not have, the volume keeps at its default.
    EXPECT_TRUE(first->GetParameterValue(PN_RINDMAX, number));
    EXPECT_DOUBLE_EQ(number, 250.0);
    auto* centre = dynamic_cast<Coordinates*>(first->GetChildNamed("centre"));
    ASSERT_NE(centre, nullptr);
    EXPECT_DOUBLE_EQ(centre->Get(0) + centre->Get(1) + centre->Get(2), 0.0);

    // The wall's box has no text, but the shape parameter holds it.
    first->SetParameterValue(PN_OBJSHAP, PV_SHAPE_WALL);
    EXPECT_TRUE(first->GetParameterValue(PN_OBJSHAP, value));
    EXPECT_EQ(value, PV_SHAPE_WALL);
}

TEST(OpticElement, AddInterfaceNamesAndHoldsTheFace) {
    OpticElement element;
    element.Initialize();
    Volume* inside = element.AddVolume();
    Interface* face = element.AddInterface("face1");
    EXPECT_EQ(face->GetName(), "face1");
    EXPECT_EQ(element.GetChildNamed("face1"), face);
    ASSERT_EQ(static_cast<OpticElement::Interfaces&>(element).size(), 1u);
    ASSERT_EQ(face->GetAvailableVolumes().size(), 1u);
    EXPECT_EQ(face->GetAvailableVolumes().front(), inside);

    // Empty forgets the handles along with the children.
    element.Empty();
    EXPECT_TRUE(static_cast<OpticElement::Interfaces&>(element).empty());
    EXPECT_TRUE(static_cast<OpticElement::Volumes&>(element).empty());
}
