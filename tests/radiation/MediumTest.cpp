#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "documents/CElement.h"
#include "radiation/Medium.h"

namespace {

struct Itu {
    double permittivity = 0;
    double permeability = 0;
    double conductivity = 0;
};

Itu ItuAt(Medium& medium, double ghz, bool& ok) {
    Itu got;
    ok = medium.GetRelPtPbCond_fromFreq(ghz, got.permittivity, got.permeability, got.conductivity,
                                        false);
    return got;
}

Medium* ItuMedium(double a, double b, double c, double d) {
    auto* medium = new Medium("test");
    medium->Initialize();
    medium->SetRelPtPbCond(a, b, 1.0, c, d);
    return medium;
}

}  // namespace

TEST(Medium, ItuFormGivesConductivityPermittivityAndIndex) {
    bool ok = false;
    Medium* metal = ItuMedium(1.0, 0, 1e7, 0);
    Itu got = ItuAt(*metal, 1.0, ok);
    EXPECT_TRUE(ok);
    EXPECT_DOUBLE_EQ(got.conductivity, 1e7);
    EXPECT_NEAR(got.permittivity, 179800000.0, 1e-3);
    EXPECT_DOUBLE_EQ(got.permeability, 1.0);
    EXPECT_NEAR(metal->GetRefractiveIndex(1.0), std::sqrt(179800000.0), 1e-6);

    // Both exponents act on the frequency in GHz: medium dry ground at 2.4 GHz.
    Medium* ground = ItuMedium(15.0, -0.1, 0.035, 1.63);
    got = ItuAt(*ground, 2.4, ok);
    const double sigma = 0.035 * std::pow(2.4, 1.63);
    const double real = 15.0 * std::pow(2.4, -0.1);
    const double imaginary = sigma * 17.98 / 2.4;
    EXPECT_DOUBLE_EQ(got.conductivity, sigma);
    EXPECT_DOUBLE_EQ(got.permittivity, std::hypot(real, imaginary));
    EXPECT_DOUBLE_EQ(ground->GetRefractiveIndex(2.4), std::sqrt(std::hypot(real, imaginary)));

    // Vacuum is 1 whatever the frequency, in whatever unit it comes.
    Medium* vacuum = ItuMedium(1.0, 0, 0, 0);
    for (double f : {0.9, 5.0, 2.4e9}) {
        got = ItuAt(*vacuum, f, ok);
        EXPECT_DOUBLE_EQ(got.permittivity, 1.0);
        EXPECT_DOUBLE_EQ(vacuum->GetRefractiveIndex(f), 1.0);
    }

    // At 0 GHz the conductive part divides by zero: reported, with no finite value.
    got = ItuAt(*metal, 0.0, ok);
    EXPECT_FALSE(ok);
    EXPECT_FALSE(std::isfinite(got.permittivity));
    // The lock was given back after every read.
    EXPECT_FALSE(metal->isLocked());
    delete metal;
    delete ground;
    delete vacuum;
}

TEST(Medium, FixedIndexOverridesTheItuFormAndSurvivesSaveAndLoad) {
    Medium* glass = ItuMedium(6.27, 0, 0.0043, 1.1925);
    glass->SetRefractiveIndex(1.5);
    EXPECT_DOUBLE_EQ(glass->GetRefractiveIndex(2.4), 1.5);

    CElement saved;
    ASSERT_TRUE(glass->ToXml(&saved, false));
    Medium loaded;
    loaded.Initialize();
    ASSERT_TRUE(loaded.FromXml(&saved));
    EXPECT_TRUE(loaded.HasFixedIndex());
    EXPECT_FALSE(loaded.HasName());
    EXPECT_EQ(loaded.GetName(), "test");
    EXPECT_DOUBLE_EQ(loaded.GetRefractiveIndex(2.4), 1.5);

    // New ITU numbers make the index follow them again; a save then carries no fixed index.
    glass->SetRelPtPbCond(4.0, 0, 1.0, 0, 0);
    EXPECT_DOUBLE_EQ(glass->GetRefractiveIndex(2.4), 2.0);
    CElement resaved;
    ASSERT_TRUE(glass->ToXml(&resaved, false));
    Medium reloaded;
    reloaded.Initialize();
    ASSERT_TRUE(reloaded.FromXml(&resaved));
    EXPECT_FALSE(reloaded.HasFixedIndex());
    delete glass;
}

TEST(Medium, TransRefTakesTheExactOrTheNearerNeighbour) {
    Medium medium("table");
    medium.Initialize();
    double transmission = -5;
    double reflection = -5;
    EXPECT_FALSE(medium.GetTransRef(2.0, transmission, reflection));
    EXPECT_DOUBLE_EQ(transmission, -5);

    medium.SetTransRef(1.0, 0.1, 0.9);
    // One entry answers for every frequency.
    EXPECT_TRUE(medium.GetTransRef(7.0, transmission, reflection));
    EXPECT_DOUBLE_EQ(reflection, 0.1);
    EXPECT_DOUBLE_EQ(transmission, 0.9);

    medium.SetTransRef(2.0, 0.2, 0.8);
    medium.SetTransRef(5.0, 0.5, 0.5);
    struct Case {
        double f;
        double reflection;
    };
    for (Case c : {Case{2.0, 0.2}, Case{2.9, 0.2}, Case{4.0, 0.5}, Case{1.4, 0.1}, Case{1.6, 0.2},
                   Case{0.2, 0.1}, Case{9.0, 0.5}}) {
        ASSERT_TRUE(medium.GetTransRef(c.f, transmission, reflection)) << c.f;
        EXPECT_DOUBLE_EQ(reflection, c.reflection) << c.f;
        EXPECT_DOUBLE_EQ(transmission, 1.0 - c.reflection) << c.f;
    }

    // Attenuation is not a property of a medium.
    double attenuation = -1;
    EXPECT_TRUE(medium.SetAtten(2.0, 30.0));
    EXPECT_TRUE(medium.GetAtten(2.0, attenuation));
    EXPECT_DOUBLE_EQ(attenuation, 0.0);
}
