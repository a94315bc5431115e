#pragma once

#include <map>
#include <string>
#include <vector>

#include "framework/Component.h"

class Beam;
class BeamQUICK;
class CElement;
class Direction;
class Interface;
class RadiationPattern;
class Ray;
class Volume;

// Everything one source has radiated. It holds the launch descriptions (Beam children, one
// per layout) and the ids of the beams of rays made from them or received by a volume; the
// beams of those ids belong to it. Test points find the rays of a source through it.
class EMRadiation : public Component {
public:
    using BeamIterator = std::vector<Beam*>::iterator;
    using BeamIdIterator = std::vector<int>::iterator;

    EMRadiation();
    ~EMRadiation() override;

    // Deletes the launch descriptions and the beams of rays.
    bool Empty() override;
    // The parameters, then every "Beam" child.
    bool FromXml(CElement* element) override;
    using Component::CheckEq;
    // Same parameters and children, and beams of the same ray counts.
    bool CheckEq(Component* other) override;
    // Replaces the launch descriptions by one Beam fed with this radiation's parameters.
    bool QuickSetToChildren(bool force) override;
    void Print() override;
    // Every ray of every beam, on the status log.
    void PrintRays();
    // Takes over the other's launch descriptions, settings and beams, the beams as copies.
    bool Copy(EMRadiation* other);

    // The pattern handed to every Beam at the next load; null leaves each Beam its own.
    void setRadPattern(RadiationPattern* pattern) { radPattern = pattern; }
    // Makes one beam of rays from each launch description, replacing the beams held.
    bool LoadFromRayLayouts();
    int GetTestRayCount();
    int GetRayCount();
    // The sum of the axes of the launch layouts, normalised; false without a layout.
    bool GetDirection(Direction& out);
    // Stores the volume and hands it to every beam held.
    bool SetVolume(Volume* newVolume);
    Volume* GetVolume() const { return volume; }
    // A null interface is ignored, and still counts as success.
    bool AddInterfaceInLine(Interface* face);
    // The direct hit loop, beam by beam, for beams not traced here before: each test ray,
    // then each ray, is cut at the nearest interface of list (of the radiation's own list
    // when null, which is cleared afterwards) and received there as a test ray or a ray.
    // Each interface is told this radiation's id before the first ray it receives.
    bool TransmitToInterfaces(std::vector<Interface*>* list);
    // Gives every launch description a fresh default layout.
    bool InitializeLayout();
    // Marks the beams held, and those added later, as launched here (true) or received
    // (false).
    void setRayOrigin(bool value);
    int getRadId() const { return radId; }
    // The name of the source, given to every beam made here.
    bool PassName(const std::string& name);
    const std::string& GetSourceName() const { return sourceName; }
    void SetUseTriRays(bool value) { useTriRays = value; }

    BeamIterator GetBeamsBeginIt() { return beams.begin(); }
    BeamIterator GetBeamsEndIt() { return beams.end(); }
    int GetBeamsCount() const { return static_cast<int>(beams.size()); }
    std::vector<int>& GetBeamIds() { return beamIds; }
    // Takes the beam over: its id is noted, and the radiation deletes it when done with it.
    bool AddBeamRaysp(BeamQUICK* beam);
    BeamIdIterator GetBeamRaysBeginIt() { return beamIds.begin(); }
    BeamIdIterator GetBeamRaysEndIt() { return beamIds.end(); }
    int GetBeamRaysCount() const { return static_cast<int>(beamIds.size()); }
    const std::vector<Interface*>& GetInterfaces() const { return interfaces; }

private:
    // Deletes the beams of the ids held and forgets the ids.
    void DeleteBeams();
    // Cuts each ray at its nearest interface and hands it over; false when none was hit.
    bool RaysToInterfaces(std::map<int, Ray*>& list, std::vector<Interface*>& faces, bool test,
                          std::vector<Interface*>& told);
    // Deletes the Beam children.
    void DeleteLaunches();
    // Appends a new, initialised Beam child.
    Beam* AddLaunch();

    std::vector<Beam*> beams;
    Volume* volume = nullptr;
    std::vector<int> beamIds;
    // The beams TransmitToInterfaces has traced.
    std::vector<int> tracedBeamIds;
    std::vector<Interface*> interfaces;
    RadiationPattern* radPattern = nullptr;
    bool useTriRays = false;
    bool rayOrigin = true;
    std::string sourceName;
    int radId;
};
