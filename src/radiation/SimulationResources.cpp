#include "radiation/SimulationResources.h"

#include <algorithm>
#include <cstdlib>
#include <mutex>
#include <set>

#include "framework/Parameter.h"
#include "logging/Log.h"
#include "radiation/Medium.h"

namespace {

// Listed brightness numbers: "0.0", "0.2" and "0.5" of the tenths list.
constexpr auto kBrightNone = static_cast<eParamNumber>(15);
constexpr auto kBrightLow = static_cast<eParamNumber>(17);
constexpr auto kBrightHalf = static_cast<eParamNumber>(20);

// A built-in medium: the ITU numbers, relative permeability 1, and how it is drawn.
struct sBuiltInMedium {
    eMedia which;
    const char* name;
    double a;
    double b;
    double c;
    double d;
    eParamValue colour;
    eParamNumber bright;
};

const sBuiltInMedium kBuiltIn[MEDIA_COUNT] = {
    {MEDIA_VACUUM, "Vacuum/ air", 1.0, 0, 0, 0, PV_WHITE, kBrightNone},
    {MEDIA_CONCRETE, "Concrete (ITU)", 5.31, 0, 0.0326, 0.8095, PV_WHITE, kBrightHalf},
    {MEDIA_BRICK, "Brick (ITU)", 3.75, 0, 0.038, 0, PV_ORANGE, kBrightHalf},
    {MEDIA_PLASTERBOARD, "Plasterboard (ITU)", 2.94, 0, 0.0116, 0.7076, PV_WHITE, kBrightHalf},
    {MEDIA_WOOD, "Wood (ITU)", 1.99, 0, 0.0047, 1.0718, PV_ORANGE, kBrightLow},
    {MEDIA_GLASS, "Glass (ITU)", 6.27, 0, 0.0043, 1.1925, PV_WHITE, kBrightLow},
    {MEDIA_CEILINGBOARD, "Ceiling board (ITU)", 1.5, 0, 0.0005, 1.1634, PV_WHITE, kBrightHalf},
    {MEDIA_CHIPBOARD, "Chipboard (ITU)", 2.58, 0, 0.0217, 0.78, PV_ORANGE, kBrightHalf},
    {MEDIA_FLOORBOARD, "Floorboard (ITU)", 3.66, 0, 0.0044, 1.3515, PV_ORANGE, kBrightLow},
    {MEDIA_METAL, "Metal (ITU)", 1.0, 0, 10000000.0, 0, PV_WHITE, kBrightLow},
    {MEDIA_VERYDRYGROUND, "Very dry ground (ITU)", 3.0, 0, 0.00015, 2.52, PV_ORANGE, kBrightHalf},
    {MEDIA_MEDIUMDRYGROUND, "Medium dry ground (ITU)", 15.0, -0.1, 0.035, 1.63, PV_ORANGE,
     kBrightLow},
    {MEDIA_WETGROUND, "Wet ground (ITU)", 30.0, -0.4, 0.15, 1.3, PV_ORANGE, kBrightLow},
};

// Every library alive. A library that lives as long as the process has its media deleted by
// an exit handler, which runs while the object registry that the media sign out of still
// exists; static destruction would come too late for that.
std::set<SimulationResources*>& LiveLibraries() {
    static std::set<SimulationResources*> live;
    return live;
}

std::mutex& LiveLibrariesLock() {
    static std::mutex lock;
    return lock;
}

void ClearLiveLibraries() {
    std::set<SimulationResources*> live;
    {
        std::lock_guard<std::mutex> guard(LiveLibrariesLock());
        live = LiveLibraries();
    }
    for (SimulationResources* library : live) library->Clear();
}

// Whether a library other than self holds a medium of that name.
bool NameHeldElsewhere(SimulationResources* self, const std::string& name) {
    std::lock_guard<std::mutex> guard(LiveLibrariesLock());
    for (SimulationResources* library : LiveLibraries()) {
        if (library != self && library->GetMedium(name) != nullptr) return true;
    }
    return false;
}

void ClearAtExit() {
    static std::once_flag registered;
    std::call_once(registered, [] { std::atexit(ClearLiveLibraries); });
}

// The value of a listed brightness number, from 0 to 1.
double BrightnessLevel(eParamNumber bright) {
    Parameter probe;
    probe.setValue(bright);
    double level = 0;
    probe.getValue(&level);
    return level;
}

}  // namespace

SimulationResources::SimulationResources() {
    for (const sBuiltInMedium& row : kBuiltIn) mediaNames[row.which] = row.name;
    std::lock_guard<std::mutex> guard(LiveLibrariesLock());
    LiveLibraries().insert(this);
}

SimulationResources::~SimulationResources() {
    Clear();
    std::lock_guard<std::mutex> guard(LiveLibrariesLock());
    LiveLibraries().erase(this);
}

bool SimulationResources::init() {
    if (!media.empty()) return true;
    ClearAtExit();
    for (const sBuiltInMedium& row : kBuiltIn) {
        auto* medium = new Medium();
        medium->Initialize();
        medium->SetName(row.name);
        medium->SetRelPtPbCond(row.a, row.b, 1.0, row.c, row.d);
        medium->SetColorBrightTrans(row.colour, row.bright);
        AddMedium(medium);
    }
    defaultMedium = media.front();
    return true;
}

bool SimulationResources::AddMedium(Medium* medium) {
    if (medium == nullptr) {
        Log::log(OUTPUT_ERROR) << "SimulationResources::AddMedium: no medium given\n";
        return false;
    }
    media.push_back(medium);
    std::vector<std::string>& names = Parameter::paramStringOptions[PN_MED];
    if (std::find(names.begin(), names.end(), medium->GetName()) == names.end()) {
        names.push_back(medium->GetName());
    }
    return true;
}

Medium* SimulationResources::GetMedium(const std::string& name) {
    for (Medium* medium : media) {
        if (medium->TestName(name)) return medium;
    }
    return nullptr;
}

const std::string& SimulationResources::GetMediaName(eMedia which) const {
    static const std::string none;
    auto found = mediaNames.find(which);
    return found == mediaNames.end() ? none : found->second;
}

bool SimulationResources::GetColorFromMedium(const std::string& name, eParamValue& colour) {
    Medium* medium = GetMedium(name);
    if (medium == nullptr) return false;
    eParamNumber bright = PNUM_NONE;
    return medium->GetColorBrightTrans(colour, bright);
}

bool SimulationResources::GetRGBFromColorBrightness(eParamValue colour, eParamNumber bright,
                                                    double& red, double& green, double& blue) {
    // Half the shade at brightness 0, the full shade at 1.
    const double scale = 0.5 + 0.5 * BrightnessLevel(bright);
    red = green = blue = 0.5 * scale;
    switch (colour) {
        case PV_WHITE:
            red = green = blue = scale;
            return true;
        case PV_ORANGE:
            red = scale;
            green = 0.55 * scale;
            blue = 0;
            return true;
        default:
            return false;
    }
}

bool SimulationResources::GetTransSpecFromMedium(const std::string& name, double& transparency,
                                                 double& specularity) {
    Medium* medium = GetMedium(name);
    if (medium == nullptr) return false;
    eParamValue colour = PV_WHITE;
    eParamNumber bright = PNUM_NONE;
    medium->GetColorBrightTrans(colour, bright);
    transparency = medium == defaultMedium ? 1.0 : 0.0;
    specularity = BrightnessLevel(bright);
    return true;
}

bool SimulationResources::Clear() {
    if (media.empty()) return true;
    std::vector<Medium*> gone;
    gone.swap(media);
    defaultMedium = nullptr;
    auto options = Parameter::paramStringOptions.find(PN_MED);
    for (Medium* medium : gone) {
        const bool offered = options != Parameter::paramStringOptions.end();
        if (offered && !NameHeldElsewhere(this, medium->GetName())) {
            std::erase(options->second, medium->GetName());
        }
        delete medium;
    }
    return true;
}
