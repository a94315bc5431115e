#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "documents/CElement.h"
#include "framework/Parameter.h"
#include "geometry/Coordinates.h"
#include "propagation/Volume.h"
#include "radiation/Beam.h"
#include "radiation/BeamQUICK.h"
#include "radiation/EMRadiation.h"
#include "radiation/EMSource.h"
#include "radiation/Ray.h"

namespace {

constexpr double PI = 3.141592653589793;
constexpr double SYSTEM_DEGREES = 57.30210423832149;
// The angle the system's rotation matrix takes for one degree.
constexpr double ROTATION_RADIANS = 3.1412459 / 180.0;

struct Vec {
    double x, y, z;
};

double Dot(Vec a, Vec b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
double Length(Vec a) { return std::sqrt(Dot(a, a)); }
double SystemAngle(Vec a, Vec b) {
    return std::acos(Dot(a, b) / (Length(a) * Length(b))) * SYSTEM_DEGREES;
}
Vec DirOf(const Ray& ray) { return {ray.dir.Get(0), ray.dir.Get(1), ray.dir.Get(2)}; }

// The half-power-width gain with the pattern axis along z and its reference along x.
double HpbwGain(Vec v, double gain, double hpbwHoriz, double hpbwVert, double gainMin) {
    double out = gain;
    double a = (std::abs(SystemAngle(v, {0, 0, 1})) - 90.0) * PI / 180.0;
    out -= 3.0 * std::abs(a) / std::abs(hpbwVert * PI / 180.0 / 2.0);
    Vec u{v.x, v.y, 0.0};
    double b = SystemAngle(u, {1, 0, 0}) * PI / 180.0;
    out -= 3.0 * std::abs(b) / std::abs(hpbwHoriz * PI / 180.0 / 2.0);
    return out < gainMin ? gainMin : out;
}

std::unique_ptr<Volume> MakeVolume() {
    auto volume = std::make_unique<Volume>();
    volume->Initialize();
    return volume;
}

// A source fanning count rays on a cone of 45 degrees about z, at 2 W.
std::unique_ptr<EMSource> MakeSource(Volume* volume, const char* name, int count) {
    auto source = std::make_unique<EMSource>();
    source->Initialize();
    source->PassName(name);
    source->SetVolume(volume);
    source->SetQuickParameterValue(PN_TYP, PV_POINT);
    source->SetQuickParameterValue(PN_ARRSHA, PV_CIRCLEEMPTY);
    source->SetQuickParameterValue(PN_ANG, 90.0);
    source->SetQuickParameterValue(PN_CNT, count);
    source->SetQuickParameterValue(PN_PWRWATT, 2.0, PU_WAT);
    source->SetQuickParameterValue(PN_LMDA, 0.125, PU_M);
    source->SetQuickParameterValue(PN_TRLIM, 4);
    source->SetQuickParameterValue(PN_REFLIM, 2);
    source->SetQuickParameterValue(PN_TRANLIM, 1);
    return source;
}

EMRadiation* ReceivedRadiation(Volume& volume) {
    if (volume.GetRadiationIds().empty()) return nullptr;
    return dynamic_cast<EMRadiation*>(SimObject::GetObjectGlobally(volume.GetRadiationIds()[0]));
}

// The rays of the first beam of the radiation.
std::vector<Ray*> FirstBeamRays(EMRadiation& radiation) {
    if (radiation.GetBeamRaysCount() == 0) return {};
    BeamQUICK* beam = GETBEAM(*radiation.GetBeamRaysBeginIt());
    return beam == nullptr ? std::vector<Ray*>{} : *beam->GetRaysVecp();
}

TEST(EMSourceTest, FirstRadiationCarriesPowerPlusPatternGain) {
    auto volume = MakeVolume();
    auto source = MakeSource(volume.get(), "ap1", 8);
    source->SetQuickParameterValue(PN_RPAT, PV_RADPAT_HPBW);
    source->SetQuickParameterValue(PN_HPBWH, 60.0);
    source->SetQuickParameterValue(PN_HPBWV, 40.0);
    source->SetQuickParameterValue(PN_GAINTX, 5.0);
    source->SetQuickParameterValue(PN_GAINMIN, -30.0);
    source->QuickSetToChildren(true);

    ASSERT_TRUE(source->TransmitRadiation());
    EXPECT_FALSE(source->TransmitRadiation());

    // The source keeps the beam it loaded; the volume received a copy of it.
    EXPECT_EQ(source->GetRadiation()->GetBeamRaysCount(), 1);
    EMRadiation* received = ReceivedRadiation(*volume);
    ASSERT_NE(received, nullptr);
    ASSERT_EQ(received->GetBeamRaysCount(), 1);
    EXPECT_NE(*received->GetBeamRaysBeginIt(), *source->GetRadiation()->GetBeamRaysBeginIt());

    std::vector<Ray*> rays = FirstBeamRays(*received);
    ASSERT_EQ(rays.size(), 8u);
    for (size_t i = 0; i < rays.size(); i++) {
        const Ray& ray = *rays[i];
        double expected = HpbwGain(DirOf(ray), 5.0, 60.0, 40.0, -30.0) + 10.0 * std::log10(2.0);
        EXPECT_NEAR(ray.GetSourcePowerDB(), expected, 1e-9) << "ray " << i;
        EXPECT_NEAR(ray.GetPower(), expected, 1e-9);
        EXPECT_DOUBLE_EQ(ray.GetWavelength(), 0.125);
        EXPECT_EQ(ray.GetTraceLimit(), 4);
        EXPECT_EQ(ray.GetReflectLimit(), 2);
        EXPECT_EQ(ray.GetTransmitLimit(), 1);
        EXPECT_EQ(ray.GetVolumeID(), volume->GetSimObjectID());
        std::string sourceName;
        EXPECT_TRUE(ray.GetSourceName(sourceName));
        EXPECT_EQ(sourceName, "ap1");
    }
}

TEST(EMSourceTest, PlainPowerWithoutPattern) {
    Beam beam;
    beam.Initialize();
    beam.SetParameterValue(PN_TYP, PV_POINT);
    beam.SetParameterValue(PN_ARRSHA, PV_SINGLE);
    beam.SetParameterValue(PN_CNT, 1);
    beam.SetParameterValue(PN_PWRWATT, 0.0, PU_WAT);
    beam.QuickSetToChildren(true);
    beam.SetRadiationPattern(nullptr);

    BeamQUICK rays;
    ASSERT_TRUE(beam.LoadRaysFromLayout(&rays));
    ASSERT_EQ(rays.GetRaysCount(), 1);
    EXPECT_DOUBLE_EQ(rays.getRayFromSeq(0)->GetSourcePowerDB(), -120.0);

    beam.SetParameterValue(PN_PWRWATT, 2.0, PU_WAT);
    ASSERT_TRUE(beam.LoadRaysFromLayout(&rays));
    ASSERT_EQ(rays.GetRaysCount(), 1);
    EXPECT_DOUBLE_EQ(rays.getRayFromSeq(0)->GetSourcePowerDB(), 10.0 * std::log10(2.0));
    EXPECT_DOUBLE_EQ(rays.getRayFromSeq(0)->GetPower(), 2.0);
}

// v turned by tilt degrees about y, then by rotation degrees about z, as the system's
// rotation matrix turns it.
Vec Turn(Vec v, double tilt, double rotation) {
    double ct = std::cos(tilt * ROTATION_RADIANS), st = std::sin(tilt * ROTATION_RADIANS);
    Vec t{ct * v.x + st * v.z, v.y, -st * v.x + ct * v.z};
    double cr = std::cos(rotation * ROTATION_RADIANS), sr = std::sin(rotation * ROTATION_RADIANS);
    return {cr * t.x - sr * t.y, sr * t.x + cr * t.y, t.z};
}

void ExpectTurned(const Ray& before, const Ray& after, double tilt, double rotation) {
    Vec expected = Turn(DirOf(before), tilt, rotation);
    Vec got = DirOf(after);
    EXPECT_NEAR(got.x, expected.x, 1e-9);
    EXPECT_NEAR(got.y, expected.y, 1e-9);
    EXPECT_NEAR(got.z, expected.z, 1e-9);
}

TEST(EMSourceTest, BeamRotationAndTiltTurnRaysAndTestRays) {
    auto volume = MakeVolume();
    auto straight = MakeSource(volume.get(), "straight", 8);
    auto turned = MakeSource(volume.get(), "turned", 8);
    for (EMSource* source : {straight.get(), turned.get()}) {
        source->SetQuickParameterValue(PN_RPAT, PV_RADPAT_OMNI);
        source->SetQuickParameterValue(PN_TRAT, 0.2);
    }
    turned->SetQuickParameterValue(PN_GAINROT, 90.0);
    turned->SetQuickParameterValue(PN_GAINTLT, 30.0);
    straight->QuickSetToChildren(true);
    turned->QuickSetToChildren(true);
    ASSERT_TRUE(straight->TransmitRadiation());
    ASSERT_TRUE(turned->TransmitRadiation());

    std::vector<Ray*> before = FirstBeamRays(*straight->GetRadiation());
    std::vector<Ray*> after = FirstBeamRays(*turned->GetRadiation());
    ASSERT_EQ(before.size(), 8u);
    ASSERT_EQ(after.size(), before.size());
    for (size_t i = 0; i < before.size(); i++) {
        ExpectTurned(*before[i], *after[i], 30.0, 90.0);
        EXPECT_DOUBLE_EQ(after[i]->GetSourcePowerDB(), before[i]->GetSourcePowerDB());
    }
    BeamQUICK* straightBeam = GETBEAM(*straight->GetRadiation()->GetBeamRaysBeginIt());
    BeamQUICK* turnedBeam = GETBEAM(*turned->GetRadiation()->GetBeamRaysBeginIt());
    ASSERT_EQ(turnedBeam->GetTestRaysCount(), 1);
    ASSERT_EQ(straightBeam->GetTestRaysCount(), 1);
    ExpectTurned(*straightBeam->TestRaysBeginIt()->second, *turnedBeam->TestRaysBeginIt()->second,
                 30.0, 90.0);
}

TEST(EMSourceTest, TestCountFollowsTestRatio) {
    auto volume = MakeVolume();
    auto source = MakeSource(volume.get(), "tester", 7);
    source->SetQuickParameterValue(PN_TRAT, 0.2);
    source->QuickSetToChildren(true);
    EXPECT_TRUE(source->HasTestRays());

    Beam* launch = *source->GetRadiation()->GetBeamsBeginIt();
    int testCount = -1;
    ASSERT_TRUE(launch->GetParameterValue(PN_TCNT, testCount));
    EXPECT_EQ(testCount, 1);

    std::vector<Ray*> testRays;
    EXPECT_FALSE(source->TransmitTestRays(testRays));
    source->InitialTransmit(true);
    ASSERT_TRUE(source->TransmitRadiation());
    EXPECT_EQ(source->GetRadiation()->GetTestRayCount(), 1);
    EXPECT_EQ(source->GetRadiation()->GetRayCount(), 7);
    ASSERT_TRUE(source->TransmitTestRays(testRays));
    ASSERT_EQ(testRays.size(), 1u);
    EXPECT_EQ(testRays[0]->GetVolumeID(), volume->GetSimObjectID());
    EXPECT_FALSE(source->TransmitTestRays(testRays));
    EXPECT_EQ(testRays.size(), 1u);
    for (Ray* ray : testRays) delete ray;
}

TEST(EMSourceTest, SavedSourceLoadsItsRadiationAndLaunches) {
    auto volume = MakeVolume();
    auto original = MakeSource(volume.get(), "saved", 8);
    original->SetQuickParameterValue(PN_RPAT, PV_RADPAT_OMNI);
    original->SetQuickParameterValue(PN_GAINTX, 3.0);
    original->QuickSetToChildren(true);
    CElement element;
    ASSERT_TRUE(original->ToXml(&element, false));

    EMSource loaded;
    loaded.Initialize();
    ASSERT_TRUE(loaded.FromXml(&element));
    loaded.SetVolume(volume.get());
    EMRadiation* radiation = loaded.GetRadiation();
    EXPECT_EQ(radiation->GetParent(), &loaded);
    ASSERT_EQ(radiation->GetBeamsCount(), 1);
    EXPECT_NE((*radiation->GetBeamsBeginIt())->GetRayLayoutp(), nullptr);

    ASSERT_TRUE(loaded.TransmitRadiation());
    std::vector<Ray*> rays = FirstBeamRays(*radiation);
    ASSERT_EQ(rays.size(), 8u);
    EXPECT_DOUBLE_EQ(rays[0]->GetSourcePowerDB(), 3.0 + 10.0 * std::log10(2.0));
}

TEST(EMSourceTest, WavelengthWinsOverFrequency) {
    auto source = MakeSource(nullptr, "both", 4);
    source->SetQuickParameterValue(PN_FREQ, 1e9, PU_HZ);
    source->QuickSetToChildren(true);
    EXPECT_DOUBLE_EQ(source->GetWavelength(), 0.125);

    source->RemoveParameter(PN_LMDA);
    source->QuickSetToChildren(true);
    EXPECT_DOUBLE_EQ(source->GetWavelength(), 0.3);
    double radiationWavelength = 0.0;
    ASSERT_TRUE(source->GetRadiation()->GetParameterValue(PN_LMDA, radiationWavelength));
    EXPECT_DOUBLE_EQ(radiationWavelength, 0.3);
}

// The channel and frequency a component has after CheckFrequency.
struct Checked {
    eParamValue channel;
    double frequency;
    eParamMultiplier mult;
};

Checked CheckChannel(eParamValue band, eParamValue channel) {
    Component component;
    component.Initialize();
    component.SetParameterValue(PN_FREQBAND, band);
    component.SetParameterValue(PN_FREQCHAN, channel);
    EXPECT_TRUE(EMSource::CheckFrequency(&component));
    Checked out{PV_EMPTY, -1.0, PM_NON};
    component.GetParameterValue(PN_FREQCHAN, out.channel);
    sParamDesc* desc = nullptr;
    if (component.GetParameterValue(PN_FREQ, out.frequency, &desc)) out.mult = desc->mult;
    return out;
}

TEST(EMSourceTest, CheckFrequencyKeepsChannelsInTheirBand) {
    // "6" of 2.4 GHz stays, at 2437 MHz.
    Checked wifi24 = CheckChannel(PV_BAND_WIFI24, static_cast<eParamValue>(290));
    EXPECT_EQ(wifi24.channel, 290);
    EXPECT_DOUBLE_EQ(wifi24.frequency, 2437.0);
    EXPECT_EQ(wifi24.mult, PM_MILLI);

    // "14" is no 5 GHz channel: it becomes "7", at 5035 MHz.
    Checked wifi50 = CheckChannel(PV_BAND_WIFI50, PV_CHANNEL_WIFI24_LAST);
    EXPECT_EQ(wifi50.channel, PV_CHANNEL_WIFI50_FIRST);
    EXPECT_DOUBLE_EQ(wifi50.frequency, 5035.0);

    // An FR1 channel ends up in the FR2 range, at the first mmWave channel.
    Checked fr1 = CheckChannel(PV_BAND_NR_FR1, PV_CHANNEL_NR_FR1_FIRST);
    EXPECT_EQ(fr1.channel, PV_CHANNEL_NR_FR2_FIRST);
    EXPECT_DOUBLE_EQ(fr1.frequency, 28000.0);

    // The band "none" takes the channel "none" and sets no frequency.
    Checked none = CheckChannel(PV_BAND_NONE, PV_CHANNEL_WIFI24_FIRST);
    EXPECT_EQ(none.channel, PV_CHANNEL_NONE);
    EXPECT_DOUBLE_EQ(none.frequency, -1.0);
}

TEST(EMSourceTest, SourcesAreFoundByName) {
    EXPECT_EQ(EMSource::GetSourceNamedIndex("no such source"), -1);
    {
        auto source = MakeSource(nullptr, "findMe", 4);
        EXPECT_GE(EMSource::GetSourceNamedIndex("findMe"), 0);
    }
    EXPECT_EQ(EMSource::GetSourceNamedIndex("findMe"), -1);
}

TEST(SignalTest, WaveformsEnvelopesAndDelay) {
    Signal signal;
    signal.Initialize();
    signal.SetParameterValue(PN_LMDA, 0.3);
    signal.SetParameterValue(PN_WAVFRM, PV_WAVE_SIN);
    signal.SetParameterValue(PN_WAVLOP, PV_ENV_FLAT);
    EXPECT_NEAR(signal.getValueAtTime(0.25e-9, nullptr, 0.0), 1.0, 1e-12);
    EXPECT_NEAR(signal.getValueAtTime(0.125e-9, nullptr, 0.0), std::sqrt(0.5), 1e-12);

    // A gaussian of width w = 0.3 * 4 * 0.5 / 3e8 = 2 ns peaks at 2w.
    signal.SetParameterValue(PN_WAVFRM, PV_WAVE_FLAT);
    signal.SetParameterValue(PN_WAVLOP, PV_ENV_GAUSSIAN);
    signal.SetParameterValue(PN_WAVDUR, 4.0);
    EXPECT_NEAR(signal.getValueAtTime(4e-9, nullptr, 0.0), 1.0, 1e-12);
    EXPECT_NEAR(signal.getValueAtTime(6e-9, nullptr, 0.0), std::exp(-1.0), 1e-12);
    EXPECT_NEAR(signal.getValueAtTime(0.0, nullptr, 0.0), std::exp(-4.0), 1e-12);

    // A source delays its signal by the distance along its axis, 1 / 3e8 seconds a metre.
    auto source = MakeSource(nullptr, "pulse", 4);
    source->SetQuickParameterValue(PN_LMDA, 0.3, PU_M);
    source->SetQuickParameterValue(PN_WAVFRM, PV_WAVE_FLAT);
    source->SetQuickParameterValue(PN_WAVLOP, PV_ENV_GAUSSIAN);
    source->SetQuickParameterValue(PN_WAVDUR, 4.0);
    source->QuickSetToChildren(true);
    Coordinates onAxis(1.0, 0.0, 3.0);
    double delayed = 6e-9 - 3.0 * 3.3333333333333334e-09;
    EXPECT_NEAR(source->GetFieldValue(&onAxis, 6e-9),
                std::exp(-std::pow(delayed - 4e-9, 2) / 4e-18), 1e-12);
}

TEST(VolumeTest, ReceiveBeamMakesOneReceivedRadiation) {
    auto volume = MakeVolume();
    EXPECT_FALSE(volume->ReceiveBeam(nullptr));
    EXPECT_TRUE(volume->GetRadiationIds().empty());
    EXPECT_TRUE(volume->GetBeamIds().empty());

    auto* first = new BeamQUICK();
    auto* second = new BeamQUICK();
    EXPECT_TRUE(volume->ReceiveBeam(first));
    EXPECT_TRUE(volume->ReceiveBeam(second));
    ASSERT_EQ(volume->GetRadiationIds().size(), 1u);
    EXPECT_EQ(volume->GetBeamIds(), (std::vector<int>{first->GetBeamId(), second->GetBeamId()}));
    EXPECT_EQ(second->GetVolume(), volume.get());
    EXPECT_FALSE(second->getRayOrigin());

    EMRadiation* radiation = ReceivedRadiation(*volume);
    ASSERT_NE(radiation, nullptr);
    EXPECT_EQ(radiation->GetVolume(), volume.get());
    EXPECT_EQ(radiation->GetBeamRaysCount(), 2);
    EXPECT_TRUE(radiation->AddInterfaceInLine(nullptr));
    EXPECT_TRUE(radiation->GetInterfaces().empty());

    // The radiation owns the beams it holds.
    int firstId = first->GetBeamId();
    volume.reset();
    EXPECT_EQ(GETBEAM(firstId), nullptr);
}

}  // namespace
