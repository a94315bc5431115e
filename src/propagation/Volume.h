#pragma once

#include <map>
#include <vector>

#include "framework/Component.h"
#include "framework/Lockable.h"

class BeamQUICK;
class Coordinates;
class FreqResponseArray;
class Interface;
class Medium;

// A region between interfaces: the air of a scene, the inside of a thick wall, a
// graded-index body. Beams live in a volume and are traced from it to its faces, which
// the volume holds in order as its vector of interfaces.
//
// Every initialised volume is entered in a process-wide map under its object id, the id
// that rays carry. Rays read its parameters under its lock.
class Volume : public Component, public std::vector<Interface*>, public Lockable {
public:
    using Faces = std::vector<Interface*>;

    Volume();
    ~Volume() override;

    // Takes a fresh object id and re-enters the map under it; sets the default
    // parameters where they are missing.
    bool Initialize() override;
    // Forgets faces, beams and radiation, then empties the component.
    bool Empty() override;

    // The live volume with that id, or null.
    static Volume* GetVolumeFromId(int id);

    // False for a null face or one held already.
    bool AddInterface(Interface* face);
    // False when the face is not held.
    bool RemoveInterface(Interface* face);

    Medium* GetMedium() const { return medium; }
    void SetMedium(Medium* value) { medium = value; }
    double getRefIndex() const { return refIndex; }
    void setRefIndex(double value) { refIndex = value; }
    // The per-frequency losses of the structure that made this volume; not owned.
    FreqResponseArray* GetResponse() const { return response; }
    void SetResponse(FreqResponseArray* value) { response = value; }

    // Takes the beam in: notes its id and sets its volume. The first beam makes the
    // volume's radiation, a child that is not saved, which then holds every beam received.
    // Callers hold the volume's lock. A null beam is ignored.
    bool ReceiveBeam(BeamQUICK* beam);

    const std::vector<int>& GetRadiationIds() const { return radiationIds; }
    const std::vector<int>& GetBeamIds() const { return beamIds; }

protected:
    std::vector<int> radiationIds;
    std::vector<int> beamIds;
    // Made on demand as children.
    Coordinates* centre = nullptr;
    Coordinates* axis = nullptr;
    Coordinates* axis2 = nullptr;
    double sizeRadius = 0.0;
    double sizeInner = 0.0;
    double sizeLength = 0.0;
    double ratio1 = 1.0;
    double ratio2 = 1.0;
    double ratio3 = 1.0;
    // Not owned: media live in the simulation's resources.
    Medium* medium = nullptr;
    double refIndex = 1.0;
    FreqResponseArray* response = nullptr;

private:
    void Register();
    void Unregister();

    static std::map<int, Volume*> volumesById;
    static Lockable volumesLock;
};
