#include <gtest/gtest.h>

#include <string>

#include "control/OpticElement.h"
#include "geometry/Coordinates.h"
#include "propagation/Interface.h"
#include "propagation/Volume.h"

TEST(OpticElement, AddsInterfacesAndVolumesWithTheElementsParameters) {
    OpticElement::resources.init();
    OpticElement element;
    element.Initialize();
    element.SetParameterValue(PN_MED, std::string("Concrete (ITU)"));
    element.SetParameterValue(PN_VOLTYP, PV_VOL_STEPPED);
    element.SetParameterValue(PN_OBJSHAP, PV_SHAPE_BLOCK);
    element.SetParameterValue(PN_VOLPROPEXP, 2.5);

    Volume* first = element.AddVolume();
    EXPECT_EQ(first->GetName(), "vol1");
    EXPECT_EQ(first->GetMedium(), OpticElement::resources.GetMedium("Concrete (ITU)"));
    eParamValue value = PV_EMPTY;
    for (auto [name, expected] :
         {std::pair{PN_VOLTYP, PV_VOL_STEPPED}, std::pair{PN_OBJSHAP, PV_SHAPE_BLOCK},
          std::pair{PN_COORDSYS, PV_COORD_SPHERICAL}}) {
        EXPECT_TRUE(first->GetParameterValue(name, value) && value == expected) << name;
    }
    double number = 0.0;
    EXPECT_TRUE(first->GetParameterValue(PN_VOLPROPEXP, number) && number == 2.5);
    EXPECT_NE(dynamic_cast<Coordinates*>(first->GetChildNamed("centre")), nullptr);
    first->SetParameterValue(PN_OBJSHAP, PV_SHAPE_WALL);
    EXPECT_TRUE(first->GetParameterValue(PN_OBJSHAP, value) && value == PV_SHAPE_WALL);

    Interface* face = element.AddInterface("face1");
    EXPECT_EQ(face->GetAvailableVolumes().size(), 1u);
    element.Empty();
    EXPECT_TRUE(static_cast<OpticElement::Interfaces&>(element).empty());
    EXPECT_TRUE(static_cast<OpticElement::Volumes&>(element).empty());
}
