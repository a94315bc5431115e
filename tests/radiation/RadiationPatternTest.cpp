#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "framework/Parameter.h"
#include "geometry/Array.h"
#include "geometry/Coordinates.h"
#include "geometry/Direction.h"
#include "radiation/RadiationPattern.h"
#include "support/TempDir.h"

namespace {

constexpr double PI = 3.141592653589793;
// The system turns radians into degrees by this factor and back by the true pi / 180.
constexpr double SYSTEM_DEGREES = 57.30210423832149;

// The angle between a and b in the system's degrees.
double SystemAngle(const double (&a)[3], const double (&b)[3]) {
    const double dot = a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
    const double lengths = std::sqrt(a[0] * a[0] + a[1] * a[1] + a[2] * a[2]) *
                           std::sqrt(b[0] * b[0] + b[1] * b[1] + b[2] * b[2]);
    return std::acos(dot / lengths) * SYSTEM_DEGREES;
}

double Radians(double degrees) { return degrees * PI / 180.0; }

std::unique_ptr<RadiationPattern> MakePattern(eParamValue kind, double gainTx) {
    auto pattern = std::make_unique<RadiationPattern>();
    pattern->Initialize();
    pattern->SetParameterValue(PN_RPAT, kind);
    pattern->SetParameterValue(PN_GAINTX, gainTx);
    return pattern;
}

double GainAt(RadiationPattern& pattern, const double (&v)[3]) {
    Direction direction(v[0], v[1], v[2]);
    double out = -999.0;
    EXPECT_TRUE(pattern.getIntensityDB(direction, out));
    return out;
}

void WriteFile(const std::string& name, const std::string& text) { std::ofstream(name) << text; }

const std::string PAT_TEXT =
    "\"Test antenna,10.5,3\n"
    "0,10.5\n90,7.5\n180,0.5\n270,7.5\n"
    "999\n"
    "2,5\n"
    "0\n-60,4.5\n-30,7.5\n0,10.5\n30,8.5\n60,6.5\n"
    "180\n-90,0.5\n-45,2.5\n0,8.5\n45,2.5\n90,-9.5\n";

double PatLinear(double dB) { return std::pow(10.0, (dB - 10.5) / 10.0); }

// Linear interpolation of the file's values (in dB) between two angles.
double Between(double a0, double dB0, double a1, double dB1, double at) {
    return PatLinear(dB0) + (PatLinear(dB1) - PatLinear(dB0)) * (at - a0) / (a1 - a0);
}

}  // namespace

TEST(RadiationPatternTest, PatFileLoadsItsSlicesAndGivesTheirGains) {
    TempDir dir;
    const std::string name = dir.File("antenna.pat");
    WriteFile(name, PAT_TEXT);
    auto pattern = MakePattern(PV_RADPAT_FILE, 1.0);
    pattern->SetParameterValue(PN_RPFIL, name);

    testing::internal::CaptureStdout();
    ASSERT_TRUE(pattern->checkParams());
    const std::string printed = testing::internal::GetCapturedStdout();
    for (const char* line :
         {"desc: Test antenna\n", "gainMax: 10.5\n", "KYPAT: 3\n", "angle, power = 90 , 0.501187",
          "numVertSlices = 2\n", "numValues = 5\n", "offset = 180\n"}) {
        EXPECT_NE(printed.find(line), std::string::npos) << line;
    }
    EXPECT_EQ(pattern->getDescription(), "Test antenna");
    EXPECT_EQ(pattern->getKypat(), 3);
    EXPECT_DOUBLE_EQ(pattern->getGain(), 10.5);
    // The line with "999" ends the horizontal cut and is not part of it.
    const auto& horizontal = pattern->getHorizontalSlice().getValues();
    ASSERT_EQ(horizontal.size(), 4u);
    EXPECT_DOUBLE_EQ(horizontal.at(180), PatLinear(0.5));
    ASSERT_EQ(pattern->getVerticalSlices().size(), 2u);
    EXPECT_EQ(pattern->getVerticalSlices()[1].getOffset(), 180.0);

    // With dir1 = z and dir2 = x: the result is gain * s * 10^(gain / 10), s interpolated in
    // the slice at e = angle(v, dir2) - 90.
    const double peak = 10.5 * std::pow(10.0, 1.05);
    const double x[3] = {1, 0, 0};
    const double upX[3] = {1, 0, 1};  // phi 0: slice 0
    const double e1 = SystemAngle(upX, x) - 90.0;
    EXPECT_NEAR(GainAt(*pattern, upX), peak * Between(-60, 4.5, -30, 7.5, e1), 1e-9);
    const double y[3] = {0, 1, 0};  // phi 90: slice 1
    const double e2 = SystemAngle(y, x) - 90.0;
    EXPECT_NEAR(GainAt(*pattern, y), peak * Between(0, 8.5, 45, 2.5, e2), 1e-9);
    // On the far side of dir1 x dir2 phi counts as 180: slice 1 even near the axis.
    const double behind[3] = {0.5, -0.3, 1};
    const double e3 = SystemAngle(behind, x) - 90.0;
    EXPECT_NEAR(GainAt(*pattern, behind), peak * Between(-45, 2.5, 0, 8.5, e3), 1e-9);
    // Beyond the last entry of slice 0 (60 degrees) there is no value: s = 0.
    const double back[3] = {-0.9, 0, 0.436};
    EXPECT_EQ(GainAt(*pattern, back), 0.0);

    // The file is read once per change of the parameters, not per call.
    WriteFile(name, "broken header\n");
    EXPECT_TRUE(pattern->checkParams());
    pattern->SetParameterValue(PN_GAINTX, 2.0);
    EXPECT_FALSE(pattern->checkParams());
}

TEST(RadiationPatternTest, BrokenPatFilesFailTheLoad) {
    TempDir dir;
    const std::string headerText = PAT_TEXT.substr(PAT_TEXT.find('\n'));
    const std::string noOffset = PAT_TEXT.substr(0, PAT_TEXT.find("180\n-90"));
    const std::string cases[] = {
        "\"One comma only,10.5" + headerText,
        ",10.5 the first comma is at 0,3" + headerText,
        noOffset,
        "\"No counts,10.5,3\n0,10.5\n999\n2 5\n0\n",
    };
    for (const std::string& text : cases) {
        const std::string name = dir.File("broken.pat");
        WriteFile(name, text);
        auto pattern = MakePattern(PV_RADPAT_FILE, 1.0);
        pattern->SetParameterValue(PN_RPFIL, name);
        testing::internal::CaptureStdout();
        EXPECT_FALSE(pattern->checkParams()) << text;
        testing::internal::GetCapturedStdout();
    }
}

TEST(RadiationPatternTest, ApfFileSetsWavelengthGainsAndSlices) {
    TempDir dir;
    const std::string name = dir.File("antenna.apf");
    WriteFile(name,
              "|MFR|Fenwave Labs|\r\n|MODEL|FW-1|\r\n|FREQ|2400|MHz|\r\n"
              "|POLARIZATION|vertical|\r\n|MaxGain|7.3|dBi|\r\n|MinGain|-20.1|dBi|\r\n"
              "|HORIZ|3|\r\n|0|7.3|\r\n|90|1.3|\r\n|180|-12.7|\r\n"
              "|VERT|0|5|\r\n|-90|-2.7|\r\n|0|7.3|\r\n|90|-2.7|\r\n");
    auto pattern = MakePattern(PV_RADPAT_FILE, 1.0);
    pattern->SetParameterValue(PN_RPFIL, name);
    ASSERT_TRUE(pattern->checkParams());

    EXPECT_EQ(pattern->getManufacturer(), "Fenwave Labs");
    EXPECT_EQ(pattern->getModel(), "FW-1");
    EXPECT_EQ(pattern->getPolarization(), "vertical");
    EXPECT_DOUBLE_EQ(pattern->getWavelength(), 0.125);
    double wavelength = 0;
    ASSERT_TRUE(pattern->GetParameterValue(PN_LMDA, wavelength));
    EXPECT_DOUBLE_EQ(wavelength, 0.125);
    // The gains are single precision numbers.
    EXPECT_EQ(pattern->getGain(), static_cast<double>(7.3f));
    EXPECT_EQ(pattern->getGainMin(), static_cast<double>(-20.1f));

    const double peak = std::pow(10.0, static_cast<double>(7.3f) * 0.1);
    const auto& horizontal = pattern->getHorizontalSlice().getValues();
    ASSERT_EQ(horizontal.size(), 3u);
    EXPECT_EQ(horizontal.at(90), static_cast<float>(std::pow(10.0, 0.13) / peak));
    // A line count beyond the end of the file ends the slice with the file.
    ASSERT_EQ(pattern->getVerticalSlices().size(), 1u);
    const auto& vertical = pattern->getVerticalSlices()[0].getValues();
    ASSERT_EQ(vertical.size(), 3u);
    EXPECT_EQ(vertical.at(-90), static_cast<float>(std::pow(10.0, -0.27) / peak));
}

TEST(RadiationPatternTest, HalfPowerWidthsFallOffLinearlyDownToGainMin) {
    auto pattern = MakePattern(PV_RADPAT_HPBW, 10.0);
    pattern->SetParameterValue(PN_GAINMIN, -5.0);
    const double z[3] = {0, 0, 1};
    const double x[3] = {1, 0, 0};
    // Neither width set: the gain in every direction.
    EXPECT_EQ(GainAt(*pattern, z), 10.0);
    EXPECT_EQ(GainAt(*pattern, {0.3, -0.4, 0.5}), 10.0);

    pattern->SetParameterValue(PN_HPBWV, 30.0);
    // Across the axis the drop is only what the degree factor leaves of 90 degrees.
    const double across = 3.0 * Radians(SystemAngle(x, z) - 90.0) / Radians(15.0);
    EXPECT_NEAR(GainAt(*pattern, x), 10.0 - across, 1e-12);
    EXPECT_NEAR(GainAt(*pattern, x), 10.0, 0.01);
    // 15 degrees above the plane: 3 dB down; along the axis, 18 dB down, held at gainMin.
    const double raised[3] = {std::sin(Radians(75)), 0, std::cos(Radians(75))};
    const double vertical = 3.0 * std::fabs(Radians(SystemAngle(raised, z) - 90.0)) / Radians(15);
    EXPECT_NEAR(GainAt(*pattern, raised), 10.0 - vertical, 1e-12);
    EXPECT_NEAR(vertical, 3.0, 0.01);
    EXPECT_EQ(GainAt(*pattern, z), -5.0);

    // The horizontal width measures from dir2 (x) within the plane across dir1.
    pattern->SetParameterValue(PN_HPBWH, 60.0);
    const double turned[3] = {std::cos(Radians(30)), std::sin(Radians(30)), 0};
    const double horizontal = 3.0 * Radians(SystemAngle(turned, x)) / Radians(30.0);
    EXPECT_NEAR(GainAt(*pattern, turned), 10.0 - across - horizontal, 1e-12);
}

TEST(RadiationPatternTest, DipoleFollowsItsSourceSize) {
    auto pattern = MakePattern(PV_RADPAT_DIPOLE, 2.0);
    const double z[3] = {0, 0, 1};
    const double x[3] = {1, 0, 0};
    const double slanted[3] = {std::sin(Radians(60)), 0, std::cos(Radians(60))};
    auto expected = [&](const double(&v)[3], double sizeInWavelengths) {
        const double theta = Radians(SystemAngle(v, z));
        const double half = PI * sizeInWavelengths;
        const double f = (std::cos(half * std::cos(theta)) - std::cos(half)) / std::sin(theta);
        return 2.0 + 10.0 * std::log10(f * f);
    };
    // Along the axis nothing; a half-wave source (the default size) has its peak across it.
    EXPECT_EQ(GainAt(*pattern, z), 0.0);
    EXPECT_NEAR(GainAt(*pattern, x), expected(x, 0.5), 1e-12);
    EXPECT_NEAR(GainAt(*pattern, x), 2.0, 1e-6);
    EXPECT_NEAR(GainAt(*pattern, slanted), expected(slanted, 0.5), 1e-12);
    // A full-wave source doubles the field across the axis: 6 dB more.
    pattern->SetParameterValue(PN_SRCSIZ, 1.0);
    EXPECT_NEAR(GainAt(*pattern, x), expected(x, 1.0), 1e-12);
    EXPECT_NEAR(GainAt(*pattern, x), 2.0 + 10.0 * std::log10(4.0), 1e-6);
}

TEST(RadiationPatternTest, OmniAxesDrawingAndMissingFile) {
    auto pattern = MakePattern(PV_RADPAT_OMNI, 4.0);
    EXPECT_EQ(GainAt(*pattern, {0.2, -0.7, 0.1}), 4.0);
    MatrixTemplate<double>* none = nullptr;
    double out = 0;
    EXPECT_FALSE(pattern->getIntensityDB(none, out));

    // The axis "x" makes dir1 x, and a dipole then has no gain along x.
    pattern->SetParameterValue(PN_RPAT, PV_RADPAT_DIPOLE);
    pattern->SetParameterValue(PN_RPATAX, static_cast<eParamValue>(217));
    pattern->SetParameterValue(PN_RPATRES, PV_PATRES_HIGH);
    EXPECT_EQ(GainAt(*pattern, {1, 0, 0}), 0.0);
    EXPECT_DOUBLE_EQ(pattern->getDir1()->Get(0), 1.0);
    EXPECT_DOUBLE_EQ(pattern->getDir2()->Get(1), 1.0);
    int count = 0;
    ASSERT_TRUE(pattern->getArray()->GetParameterValue(PN_CNT, count));
    EXPECT_EQ(count, 50000);
    eParamValue shape = PV_EMPTY;
    pattern->getArray()->GetParameterValue(PN_ARRSHA, shape);
    EXPECT_EQ(shape, PV_CIRCLEFULL);

    // A file that cannot be read fails the load; the result is then gain * 10^(gain / 10).
    pattern->SetParameterValue(PN_RPAT, PV_RADPAT_FILE);
    pattern->SetParameterValue(PN_RPFIL, std::string("/nonexistent/antenna.pat"));
    EXPECT_FALSE(pattern->checkParams());
    EXPECT_NEAR(GainAt(*pattern, {0, 1, 0}), 4.0 * std::pow(10.0, 0.4), 1e-12);
    EXPECT_TRUE(RadiationPattern::isPatternFile("dir/ANT.APF"));
    EXPECT_FALSE(RadiationPattern::isPatternFile("antenna.txt"));
}

TEST(RadiationPatternTest, ArrayFactorSumsThePhasesOfTheElements) {
    auto pattern = MakePattern(PV_RADPAT_OMNI, 3.0);
    pattern->SetParameterValue(PN_LMDA, 1.0);
    // A "line" of two points on a plane: x = -size / 2 and x = +size / 2.
    Array elements;
    elements.Initialize();
    elements.SetParameterValue(PN_ARRTYP, PV_PLANE);
    elements.SetParameterValue(PN_ARRSHA, PV_LINE);
    elements.SetParameterValue(PN_CNT, 2);
    elements.SetParameterValue(PN_SIZ, 0.5);
    pattern->setRadPatternArray(&elements);

    // Along the line the two are a half wave apart: cos(pi / 2) twice. Across it, in phase.
    EXPECT_NEAR(GainAt(*pattern, {1, 0, 0}), 0.0, 1e-12);
    EXPECT_NEAR(GainAt(*pattern, {0, 0, 1}), 6.0, 1e-12);
    const double tilted[3] = {std::cos(Radians(60)), 0, std::sin(Radians(60))};
    EXPECT_NEAR(GainAt(*pattern, tilted), 3.0 * 2.0 * std::cos(PI / 4.0), 1e-12);
    // A change of the array reaches the pattern: a full wave apart, in antiphase.
    elements.SetParameterValue(PN_SIZ, 1.0);
    EXPECT_NEAR(GainAt(*pattern, {1, 0, 0}), -6.0, 1e-12);
    // Steered along x ("x+") the elements add up in that direction.
    elements.SetParameterValue(PN_PHDIR, static_cast<eParamValue>(237));
    EXPECT_NEAR(GainAt(*pattern, {1, 0, 0}), 6.0, 1e-12);
    pattern->setRadPatternArray(nullptr);
    EXPECT_EQ(GainAt(*pattern, {1, 0, 0}), 3.0);
}

TEST(RadiationPatternTest, PatternIsDrawnOverASphereOfDirections) {
    auto pattern = MakePattern(PV_RADPAT_DIPOLE, 2.0);
    pattern->SetParameterValue(PN_RPATRES, PV_PATRES_VERYLOW);
    std::vector<Coordinates*> directions;
    std::vector<triLink*> links;
    ASSERT_TRUE(pattern->getPatternDirSet(directions, links));
    // The rings of a sphere hold about as many directions as asked for.
    EXPECT_GT(directions.size(), 300u);
    EXPECT_LT(directions.size(), 700u);
    EXPECT_FALSE(links.empty());
    // From the pole of dir1 round to the opposite one.
    EXPECT_NEAR(directions.front()->Get(2), 1.0, 1e-9);
    EXPECT_NEAR(directions.back()->Get(2), -1.0, 0.01);

    std::vector<double> intensities;
    ASSERT_TRUE(pattern->getIntensitiesDB(directions, intensities));
    ASSERT_EQ(intensities.size(), directions.size());
    double single = 0;
    pattern->getIntensityDB(directions[100], single);
    EXPECT_EQ(intensities[100], single);
    EXPECT_EQ(intensities.front(), 0.0);
}
