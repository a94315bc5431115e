#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "control/OpticElement.h"
#include "framework/Parameter.h"
#include "radiation/Medium.h"
#include "radiation/SimulationResources.h"

namespace {

const std::vector<std::string> builtInNames = {
    "Vacuum/ air",      "Concrete (ITU)", "Brick (ITU)",           "Plasterboard (ITU)",
    "Wood (ITU)",       "Glass (ITU)",    "Ceiling board (ITU)",   "Chipboard (ITU)",
    "Floorboard (ITU)", "Metal (ITU)",    "Very dry ground (ITU)", "Medium dry ground (ITU)",
    "Wet ground (ITU)"};

std::vector<std::string> NamesOf(const SimulationResources& library) {
    std::vector<std::string> names;
    for (Medium* medium : library.GetMedia()) names.push_back(medium->GetName());
    return names;
}

std::vector<std::string> MediumOptions() {
    Parameter medium;
    medium.setParName(PN_MED);
    std::vector<std::string> options;
    bool isNumber = true;
    medium.GetValueOptions(options, isNumber);
    return options;
}

}  // namespace

TEST(SimulationResources, BuiltInMediaFillOnceAndAreOfferedForMedium) {
    // The process-wide library may have been filled by other code in this process; its names
    // stay offered whatever this test does, so it is filled here to fix the starting point.
    OpticElement::resources.init();
    SimulationResources library;
    EXPECT_EQ(library.GetDefaultMedium(), nullptr);
    EXPECT_EQ(library.GetDefaultVolumeId(), -1);
    EXPECT_EQ(library.GetMediaName(MEDIA_METAL), "Metal (ITU)");

    ASSERT_TRUE(library.init());
    ASSERT_TRUE(library.init());
    EXPECT_EQ(NamesOf(library), builtInNames);
    EXPECT_EQ(MediumOptions(), builtInNames);
    ASSERT_NE(library.GetDefaultMedium(), nullptr);
    EXPECT_EQ(library.GetDefaultMedium()->GetName(), "Vacuum/ air");
    EXPECT_FALSE(library.GetMedium("Glass (ITU)")->HasFixedIndex());
    EXPECT_EQ(library.GetMedium("glass (ITU)"), nullptr);

    // An added medium is found and offered too; a second library keeps the names it shares.
    auto* extra = new Medium();
    extra->Initialize();
    extra->SetName("Ice");
    ASSERT_TRUE(library.AddMedium(extra));
    EXPECT_FALSE(library.AddMedium(nullptr));
    EXPECT_EQ(library.GetMedium("Ice"), extra);
    {
        SimulationResources other;
        other.init();
    }
    EXPECT_EQ(MediumOptions().size(), 14u);

    ASSERT_TRUE(library.Clear());
    EXPECT_TRUE(library.GetMedia().empty());
    EXPECT_EQ(library.GetDefaultMedium(), nullptr);
    EXPECT_EQ(MediumOptions(), builtInNames);
    library.init();
    EXPECT_EQ(NamesOf(library), builtInNames);
}

TEST(SimulationResources, DisplayHelpersAnswerForKnownMediaOnly) {
    SimulationResources library;
    library.init();
    eParamValue colour = PV_EMPTY;
    EXPECT_TRUE(library.GetColorFromMedium("Brick (ITU)", colour));
    EXPECT_EQ(colour, PV_ORANGE);
    EXPECT_FALSE(library.GetColorFromMedium("Cheese", colour));

    double transparency = -1, specularity = -1;
    EXPECT_TRUE(library.GetTransSpecFromMedium("Vacuum/ air", transparency, specularity));
    EXPECT_DOUBLE_EQ(transparency, 1.0);
    EXPECT_TRUE(library.GetTransSpecFromMedium("Brick (ITU)", transparency, specularity));
    EXPECT_DOUBLE_EQ(transparency, 0.0);
    EXPECT_DOUBLE_EQ(specularity, 0.5);
    EXPECT_FALSE(library.GetTransSpecFromMedium("Cheese", transparency, specularity));

    // Brightness "1.0" gives the whole shade.
    double red = 0, green = 0, blue = 0;
    const auto full = static_cast<eParamNumber>(25);
    EXPECT_TRUE(SimulationResources::GetRGBFromColorBrightness(PV_WHITE, full, red, green, blue));
    EXPECT_DOUBLE_EQ(red + green + blue, 3.0);
    EXPECT_FALSE(SimulationResources::GetRGBFromColorBrightness(PV_TRUE, full, red, green, blue));
}
