#pragma once

#include <string>
#include <vector>

#include "framework/Component.h"
#include "radiation/EMRadiation.h"
#include "radiation/Signal.h"

class BeamQUICK;
class CElement;
class Coordinates;
class RadiationPattern;
class Ray;
class Volume;

// One transmitter of the scene. Its parameters flow down to its radiation (the launch
// layouts and the beams made from them) and its signal (the waveform). At the start of a
// trace it turns its layouts into rays once and hands a copy of each beam to the volume
// that holds it; the beams it made itself stay as the record of the launch.
//
// Every live source is listed process-wide, so that a source can be found by its name.
class EMSource : public Component {
public:
    EMSource();
    ~EMSource() override;

    // Initialises and adopts the radiation and the signal, arms the next launch and places
    // the source in the default volume.
    bool Initialize() override;
    // Drops every child and empties the radiation.
    bool Empty() override;
    // The parameters, then the children "EMRadiation" and "Signal".
    bool FromXml(CElement* element) override;
    // Rebuilds the radiation and the signal from this source's parameters.
    bool QuickSetToChildren(bool force) override;

    // Keeps the channel of the component within the channels of its band, and sets its
    // frequency from the channel. Without a band there is nothing to check.
    static bool CheckFrequency(Component* component);
    // The source's name, which the radiation gives to every beam it makes.
    bool PassName(const std::string& name);
    // Arms (or disarms) both the test rays and the radiation for the next trace.
    bool InitialTransmit(bool value);
    // Loads the rays of the layouts and hands a copy of each beam to the volume. Once per
    // arming: false when it has been done already.
    bool TransmitRadiation();
    // Appends copies of the test rays of every beam; once per arming.
    bool TransmitTestRays(std::vector<Ray*>& rays);
    EMRadiation* GetRadiation() { return &radiation; }
    // The signal at point p and time t, delayed by the distance of p along the launch axis.
    double GetFieldValue(Coordinates* p, double t);
    double GetWavelength();
    void setRadPattern(RadiationPattern* pattern) { radPattern = pattern; }
    void SetVolume(Volume* newVolume);
    Volume* GetVolume() const { return volume; }
    bool HasTestRays() const { return hasTestRays; }
    void SetUseTriRays(bool value) { useTriRays = value; }

    // The index in the list of live sources of the first with this name, or -1.
    static int GetSourceNamedIndex(const std::string& name);
    // A copy of the list of live sources, in order of construction, taken under its lock.
    static std::vector<EMSource*> GetSourceList();

private:
    // Empties the radiation, adopts it again and fills it from this source's parameters.
    void FeedRadiation(double wavelength, bool wavelengthFound);
    void FeedSignal(double wavelength, bool wavelengthFound);
    void FeedSourcePattern();
    // Gives the volume a copy of a loaded beam, under the volume's lock.
    void HandCopyToVolume(BeamQUICK* loaded);
    // Takes the two children off the list of children, so that no generic walk deletes
    // members of this object.
    void ReleaseMembers();

    EMRadiation radiation;
    Signal signal;
    Volume* volume = nullptr;
    bool testRaysPending = false;
    bool radiationPending = false;
    RadiationPattern* radPattern = nullptr;
    bool hasTestRays = false;
    bool useTriRays = false;
};
