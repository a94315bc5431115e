#include "radiation/EMSource.h"

#include <algorithm>
#include <mutex>

#include "control/OpticElement.h"
#include "framework/NexoBase.h"
#include "framework/Parameter.h"
#include "geometry/Coordinates.h"
#include "geometry/Direction.h"
#include "logging/Log.h"
#include "propagation/Volume.h"
#include "radiation/Beam.h"
#include "radiation/BeamQUICK.h"
#include "radiation/LaunchParameters.h"
#include "radiation/RadiationPattern.h"
#include "radiation/Ray.h"

namespace {

constexpr const char* TYPE = "EMSource";
constexpr double SPEED_OF_LIGHT = 300000000.0;
// The delay of the signal per metre along the launch axis, in seconds.
constexpr double DELAY_PER_METRE = 3.3333333333333334e-09;

// Every live source, in order of construction.
std::vector<EMSource*>& LiveSources() {
    static std::vector<EMSource*> sources;
    return sources;
}

std::mutex& LiveSourcesLock() {
    static std::mutex lock;
    return lock;
}

struct ChannelRange {
    eParamValue first;
    eParamValue last;
};

// The channels permitted in a band; false for a value that is not a band.
bool ChannelRangeOf(eParamValue band, ChannelRange& range) {
    switch (band) {
        case PV_BAND_NONE:
            range = {PV_CHANNEL_NONE, PV_CHANNEL_NONE};
            return true;
        case PV_BAND_WIFI24:
            range = {PV_CHANNEL_WIFI24_FIRST, PV_CHANNEL_WIFI24_LAST};
            return true;
        case PV_BAND_WIFI50:
            range = {PV_CHANNEL_WIFI50_FIRST, PV_CHANNEL_WIFI50_LAST};
            return true;
        case PV_BAND_LTE:
            range = {PV_CHANNEL_LTE_FIRST, PV_CHANNEL_LTE_LAST};
            return true;
        // The sub-6 GHz band is checked against the range of the mmWave band, so an FR1
        // channel is replaced by the first FR2 channel. This is how the system behaves.
        case PV_BAND_NR_FR1:
        case PV_BAND_NR_FR2:
            range = {PV_CHANNEL_NR_FR2_FIRST, PV_CHANNEL_NR_FR2_LAST};
            return true;
        default:
            return false;
    }
}

}  // namespace

EMSource::EMSource() {
    objTypeStr = TYPE;
    std::lock_guard<std::mutex> guard(LiveSourcesLock());
    LiveSources().push_back(this);
}

EMSource::~EMSource() {
    ReleaseMembers();
    std::lock_guard<std::mutex> guard(LiveSourcesLock());
    auto& sources = LiveSources();
    sources.erase(std::remove(sources.begin(), sources.end(), this), sources.end());
}

void EMSource::ReleaseMembers() {
    RemoveChild(&radiation, false);
    RemoveChild(&signal, false);
}

int EMSource::GetSourceNamedIndex(const std::string& name) {
    std::lock_guard<std::mutex> guard(LiveSourcesLock());
    const auto& sources = LiveSources();
    for (size_t i = 0; i < sources.size(); i++) {
        if (sources[i]->TestName(name)) return static_cast<int>(i);
    }
    return -1;
}

std::vector<EMSource*> EMSource::GetSourceList() {
    std::lock_guard<std::mutex> guard(LiveSourcesLock());
    return LiveSources();
}

bool EMSource::Initialize() {
    Component::Initialize();
    radiation.SetParent(this);
    radiation.Initialize();
    radiation.SetName("radiation");
    signal.SetParent(this);
    signal.Initialize();
    signal.SetName("signal");
    radiationPending = true;
    SetVolume(Volume::GetVolumeFromId(OpticElement::resources.GetDefaultVolumeId()));
    return true;
}

bool EMSource::Empty() {
    ReleaseMembers();
    Component::Empty();
    radiation.Empty();
    return true;
}

bool EMSource::FromXml(CElement* element) {
    if (!Component::FromXml(element)) return false;
    EMRadiation* radiationp = &radiation;
    LoadPointerByType(&radiationp, element, "EMRadiation");
    Signal* signalp = &signal;
    LoadPointerByType(&signalp, element, "Signal");
    return true;
}

bool EMSource::CheckFrequency(Component* component) {
    if (component == nullptr) return false;
    eParamValue band = PV_BAND_NONE;
    if (!component->GetParameterValue<eParamValue>(PN_FREQBAND, band)) return true;
    ChannelRange range{};
    if (!ChannelRangeOf(band, range)) {
        Log::log(1) << "EMSource::CheckFrequency - not a frequency band: " << static_cast<int>(band)
                    << "\n";
        return false;
    }
    // The limits go first, so that a channel held as text is read within its band.
    bool hasChannel = component->GetParameterp(PN_FREQCHAN) != nullptr;
    if (hasChannel) component->SetParameterValRange(PN_FREQCHAN, range.first, range.last);
    eParamValue channel = PV_EMPTY;
    component->GetParameterValue<eParamValue>(PN_FREQCHAN, channel);
    if (channel < range.first || channel > range.last) channel = range.first;
    if (hasChannel) {
        component->UpdateParameterValue<eParamValue>(PN_FREQCHAN, channel);
    } else {
        component->SetParameterValue<eParamValue>(PN_FREQCHAN, channel);
        component->SetParameterValRange(PN_FREQCHAN, range.first, range.last);
    }
    if (band == PV_BAND_NONE) return true;
    auto frequency = Parameter::channelFreqMap.find(channel);
    if (frequency == Parameter::channelFreqMap.end()) return false;
    component->SetParameterValue<double>(PN_FREQ, frequency->second, PU_HZ, PM_MILLI);
    return true;
}

bool EMSource::QuickSetToChildren(bool force) {
    paramsChecked = false;
    CheckFrequency(this);
    double frequency = -1.0;
    bool frequencyFound = GetParameterValue<double>(PN_FREQ, frequency) && frequency > 0.0;
    double wavelength = SPEED_OF_LIGHT / frequency;
    bool wavelengthFound = GetParameterValue<double>(PN_LMDA, wavelength) || frequencyFound;
    double testRatio = -1.0;
    GetParameterValue<double>(PN_TRAT, testRatio);
    hasTestRays = testRatio > 0.0;

    FeedRadiation(wavelength, wavelengthFound);
    radiation.QuickSetToChildren(force);
    FeedSignal(wavelength, wavelengthFound);
    FeedSourcePattern();
    return true;
}

void EMSource::FeedRadiation(double wavelength, bool wavelengthFound) {
    radiation.Empty();
    radiation.SetParent(this);
    radiation.Initialize();
    radiation.PassName(GetName());
    radiation.SetVolume(volume);
    QuickCopyParameters(LAUNCH_PARAMETERS, this, &radiation);
    if (wavelengthFound) radiation.SetQuickParameterValue<double>(PN_LMDA, wavelength, PU_M);
    PassParameters(BEAM_SHAPE_PARAMETERS, this, &radiation);
}

void EMSource::FeedSignal(double wavelength, bool wavelengthFound) {
    static constexpr eParamName SIGNAL_PARAMETERS[] = {PN_WAVFRM, PN_WAVLOP, PN_WAVDUR, PN_PWRWATT,
                                                       PN_GAINTX};
    signal.Empty();
    signal.SetParent(this);
    signal.Initialize();
    if (wavelengthFound) signal.SetParameterValue<double>(PN_LMDA, wavelength, PU_M);
    PassParameters(SIGNAL_PARAMETERS, this, &signal);
}

void EMSource::FeedSourcePattern() {
    if (radPattern != nullptr) PassParameters(PATTERN_PARAMETERS, this, radPattern);
}

bool EMSource::PassName(const std::string& name) {
    SetName(name);
    return radiation.PassName(name);
}

bool EMSource::InitialTransmit(bool value) {
    testRaysPending = value;
    radiationPending = value;
    return true;
}

bool EMSource::TransmitRadiation() {
    if (!radiationPending) {
        Log::log(1) << "EMSource::TransmitRadiation - initial radiation already transmitted\n";
        return false;
    }
    Log::log(4) << "TransmitRadiation enter\n";
    NexoBase::statusLog_p.PrintTime("TransmitRadiation enter");
    NexoBase::statusLog_p.IndentIncrease(2);

    radiation.setRadPattern(radPattern);
    radiation.SetUseTriRays(useTriRays);
    radiation.LoadFromRayLayouts();
    Log::log(4) << "after loadFromRayLayouts()\n";
    bool handedOver = volume != nullptr;
    if (handedOver) {
        for (int id : radiation.GetBeamIds()) HandCopyToVolume(GETBEAM(id));
    } else {
        Log::log(1) << "EMSource::TransmitRadiation - no volume to receive the beams of "
                    << GetName() << "\n";
    }

    radiationPending = false;
    NexoBase::statusLog_p.IndentDecrease(2);
    Log::log(4) << "EMSource::TransmitRadiation exit\n";
    return handedOver;
}

void EMSource::HandCopyToVolume(BeamQUICK* loaded) {
    if (loaded == nullptr) return;
    auto* copy = new BeamQUICK();
    copy->Copy(*loaded);
    copy->SetSourceName(GetName());
    volume->lock(true);
    volume->ReceiveBeam(copy);
    volume->unlock();
    copy->setRayOwn(true);
}

bool EMSource::TransmitTestRays(std::vector<Ray*>& rays) {
    if (!testRaysPending) {
        Log::log(3) << "EMSource::TransmitTestRays - no test rays pending for " << GetName()
                    << "\n";
        return false;
    }
    int volumeId = volume == nullptr ? -1 : volume->GetSimObjectID();
    for (int id : radiation.GetBeamIds()) {
        BeamQUICK* beam = GETBEAM(id);
        if (beam == nullptr) continue;
        for (auto it = beam->TestRaysBeginIt(); it != beam->TestRaysEndIt(); ++it) {
            auto* ray = new Ray();
            ray->Copy(it->second);
            ray->SetVolumeID(volumeId);
            rays.push_back(ray);
        }
    }
    testRaysPending = false;
    return true;
}

double EMSource::GetFieldValue(Coordinates* p, double t) {
    double distance = 0.0;
    Direction* axis = nullptr;
    if (radiation.GetBeamsCount() > 0) axis = (*radiation.GetBeamsBeginIt())->GetLayoutDirection();
    if (p != nullptr && axis != nullptr) distance = p->Dot(*axis);
    return signal.getValueAtTime(t - distance * DELAY_PER_METRE, p, distance);
}

double EMSource::GetWavelength() { return signal.GetWavelength(); }

void EMSource::SetVolume(Volume* newVolume) {
    volume = newVolume;
    radiation.SetVolume(newVolume);
}
