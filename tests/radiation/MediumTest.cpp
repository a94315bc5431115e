#include <gtest/gtest.h>

#include <cmath>

#include "documents/CElement.h"
#include "radiation/Medium.h"

namespace {

Medium* ItuMedium(double a, double b, double c, double d) {
    auto* medium = new Medium("test");
    medium->Initialize();
    medium->SetRelPtPbCond(a, b, 1.0, c, d);
    return medium;
}

}  // namespace

TEST(Medium, ItuFormGivesConductivityPermittivityAndIndex) {
    double eps = 0, mu = 0, sigma = 0;
    Medium* metal = ItuMedium(1.0, 0, 1e7, 0);
    EXPECT_TRUE(metal->GetRelPtPbCond_fromFreq(1.0, eps, mu, sigma, false));
    EXPECT_DOUBLE_EQ(sigma, 1e7);
    EXPECT_NEAR(eps, 179800000.0, 1e-3);
    EXPECT_DOUBLE_EQ(mu, 1.0);
    EXPECT_NEAR(metal->GetRefractiveIndex(1.0), std::sqrt(179800000.0), 1e-6);
    // At 0 GHz the conductive part divides by zero: reported, with no finite value.
    EXPECT_FALSE(metal->GetRelPtPbCond_fromFreq(0.0, eps, mu, sigma, false));
    EXPECT_FALSE(std::isfinite(eps));
    EXPECT_FALSE(metal->isLocked());

    // Both exponents act on the frequency in GHz: medium dry ground at 2.4 GHz.
    Medium* ground = ItuMedium(15.0, -0.1, 0.035, 1.63);
    ground->GetRelPtPbCond_fromFreq(2.4, eps, mu, sigma, false);
    const double expectedSigma = 0.035 * std::pow(2.4, 1.63);
    EXPECT_DOUBLE_EQ(sigma, expectedSigma);
    EXPECT_DOUBLE_EQ(eps, std::hypot(15.0 * std::pow(2.4, -0.1), expectedSigma * 17.98 / 2.4));

    // Vacuum is 1 whatever the frequency, in whatever unit it comes.
    Medium* vacuum = ItuMedium(1.0, 0, 0, 0);
    for (double f : {0.9, 2.4e9}) EXPECT_DOUBLE_EQ(vacuum->GetRefractiveIndex(f), 1.0);
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
    double transmission = -5, reflection = -5;
    EXPECT_FALSE(medium.GetTransRef(2.0, transmission, reflection));
    EXPECT_DOUBLE_EQ(transmission, -5);

    // One entry answers for every frequency.
    medium.SetTransRef(1.0, 0.1, 0.9);
    EXPECT_TRUE(medium.GetTransRef(7.0, transmission, reflection));
    EXPECT_DOUBLE_EQ(reflection, 0.1);
    EXPECT_DOUBLE_EQ(transmission, 0.9);

    medium.SetTransRef(2.0, 0.2, 0.8);
    medium.SetTransRef(5.0, 0.5, 0.5);
    const double cases[][2] = {{2.0, 0.2}, {2.9, 0.2}, {4.0, 0.5}, {1.4, 0.1},
                               {1.6, 0.2}, {0.2, 0.1}, {9.0, 0.5}};
    for (const auto& [f, expected] : cases) {
        ASSERT_TRUE(medium.GetTransRef(f, transmission, reflection)) << f;
        EXPECT_DOUBLE_EQ(reflection, expected) << f;
        EXPECT_DOUBLE_EQ(transmission, 1.0 - expected) << f;
    }
}
