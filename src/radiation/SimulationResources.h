#pragma once

#include <map>
#include <string>
#include <vector>

#include "framework/ParamTypes.h"

class Medium;

// The built-in media, in the order in which the library lists them.
enum eMedia : int {
    MEDIA_VACUUM = 0,
    MEDIA_CONCRETE = 1,
    MEDIA_BRICK = 2,
    MEDIA_PLASTERBOARD = 3,
    MEDIA_WOOD = 4,
    MEDIA_GLASS = 5,
    MEDIA_CEILINGBOARD = 6,
    MEDIA_CHIPBOARD = 7,
    MEDIA_FLOORBOARD = 8,
    MEDIA_METAL = 9,
    MEDIA_VERYDRYGROUND = 10,
    MEDIA_MEDIUMDRYGROUND = 11,
    MEDIA_WETGROUND = 12,
    MEDIA_COUNT = 13,
};

// The library of media that a simulation draws on, and the id of the volume that surrounds
// every scene. The media belong to the library; each name is also offered as a value of
// the parameter "medium".
class SimulationResources {
public:
    SimulationResources();
    ~SimulationResources();
    SimulationResources(const SimulationResources&) = delete;
    SimulationResources& operator=(const SimulationResources&) = delete;

    // Fills the built-in media, unless the list holds media already.
    bool init();
    // Takes ownership of the medium and offers its name for "medium".
    bool AddMedium(Medium* medium);
    // The first medium of that name, or null.
    Medium* GetMedium(const std::string& name);
    const std::vector<Medium*>& GetMedia() const { return media; }
    // "Vacuum/ air" once the list is filled, null before.
    Medium* GetDefaultMedium() const { return defaultMedium; }
    // The name of a built-in medium; an empty text for a value outside the list.
    const std::string& GetMediaName(eMedia which) const;

    int GetDefaultVolumeId() const { return defaultVolumeId; }
    void SetDefaultVolumeId(int id) { defaultVolumeId = id; }

    // Display helpers. The colour of the named medium; false when there is no such medium.
    bool GetColorFromMedium(const std::string& name, eParamValue& colour);
    // Red, green and blue from 0 to 1; false, with grey, for a colour without a shade.
    static bool GetRGBFromColorBrightness(eParamValue colour, eParamNumber bright, double& red,
                                          double& green, double& blue);
    // Transparency 1 for the surrounding medium and 0 for any other; specularity is the
    // medium's brightness. False when there is no such medium.
    bool GetTransSpecFromMedium(const std::string& name, double& transparency, double& specularity);

    // Deletes the media and withdraws their names from "medium".
    bool Clear();

private:
    std::vector<Medium*> media;
    std::map<eMedia, std::string> mediaNames;
    int defaultVolumeId = -1;
    Medium* defaultMedium = nullptr;
};
