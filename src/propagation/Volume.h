#pragma once

#include <map>
#include <vector>

#include "framework/Component.h"
#include "framework/Lockable.h"
#include "geometry/CoordQUICK.h"
#include "geometry/DirQUICK.h"
#include "propagation/RefIndexProfile.h"

class BeamQUICK;
class Coordinates;
class EMRadiation;
class FreqResponseArray;
class Interface;
class Medium;
class Ray;

// A region between interfaces: the air of a scene, the inside of a thick wall, a
// graded-index body. Beams live in a volume and are traced from it to its faces, which
// the volume holds in order as its vector of interfaces.
//
// Every initialised volume is entered in a process-wide map under its object id, the id
// that rays carry. Rays read its parameters under its lock.
//
// The shape (objectShapeName with size, apertureSizeInner, length and ratio1..3) and the
// placement (the centre, made as a child and moved by the volume's transformation, and the
// axes) are read by checkParams, or by UpdateSize and UpdateCentre, into plain fields that
// the inside test and the graded-index walk read from any thread.
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

    // Reads size and placement: UpdateSize, then UpdateCentre.
    bool checkParams() override;

    // Traces every beam held to the faces and forgets the beams; the beams of a
    // "homogeneous" volume go in parallel when that pays (see ParallelBeams). Appends each
    // radiation of this volume not yet in out (out may be null). False with no beam held.
    virtual bool TransmitRadiation(std::vector<EMRadiation*>* out);
    // The beams held and not yet traced.
    virtual int CountReceivedRadiation();
    // Deletes the beams of the volume's radiation and forgets the beams held; the
    // radiation itself stays, empty, under its id. True when there was something.
    virtual bool ClearReceivedRadiation();

    // The graded-index walk: each ray is bent step by step through the refractive-index
    // profile until it meets a face, which receives it (as a test ray with test), or until
    // vlumeSteps steps are taken. False, touching nothing, when volumeStepDistance is -1
    // (or not positive): the caller then traces the rays straight.
    bool stepTransmit(std::map<int, Ray*>* rays, bool test);

    // Signed distance of the point from the volume's boundary, negative inside.
    double DistanceOutside(Coordinates& point);
    double DistanceOutside(const CoordQUICK& point);
    // DistanceOutside below 0: a point on the boundary is not contained.
    bool Contains(Coordinates& point);
    bool Contains(const CoordQUICK& point);
    // The normal of the face nearest the point, by |Interface::TestHitDistance(point)|;
    // false with no faces or when that face has no normal there.
    bool GetNormal(CoordQUICK& point, DirQUICK& normal);
    // Makes the centre child when missing, zeroes it and moves it by the volume's
    // transformation; reads the axes from their children when they exist.
    bool UpdateCentre();
    // Reads size, apertureSizeInner, length and ratio1..3 into the size fields; a missing
    // parameter leaves its field as it was.
    bool UpdateSize();
    // The main and second axes, in the frame of the scene, kept as the children "axis" and
    // "axis2"; the third is their cross product. Without them the axes are z, x and y.
    bool SetAxes(const DirQUICK& main, const DirQUICK& second);

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
    // What the graded-index walk reads from the parameters, once per call.
    struct StepSettings {
        double step = -1.0;
        int count = 0;
        bool radialOnly = true;
        RefIndexProfile profile;
    };

    void Register();
    void Unregister();
    // The parallel rule of TransmitRadiation for this many beams and rays per beam.
    bool ParallelBeams(int beams, int raysPerBeam);
    // Appends each radiation of this volume that out lacks.
    void ReportRadiation(std::vector<EMRadiation*>* out);
    // Half extents along the three axes by shape, and the rule that combines them.
    double CylinderDistance(const CoordQUICK& point) const;
    double BlockDistance(const CoordQUICK& point) const;
    double WallDistance(const CoordQUICK& point) const;
    // Casts along a fixed direction and counts the faces crossed: an odd count is inside.
    double RayCastDistance(const CoordQUICK& point);
    // The face's distance along dir from origin, with the face and its mesh held; -1 for
    // none.
    static double FaceDistance(Interface* face, CoordQUICK& origin, DirQUICK& dir,
                               DirQUICK* normal);
    // The nearest face over 1e-10 and under limit along dir; null when none.
    Interface* NearestFace(CoordQUICK& origin, DirQUICK& dir, double limit, double& distance,
                           DirQUICK& normal);
    // False when the volume does not step rays.
    bool ReadStepSettings(StepSettings& settings);
    // The part of point - centre that the profile reads.
    VectorQUICK Radial(const CoordQUICK& point, bool radialOnly) const;
    void StepRay(Ray* ray, const StepSettings& settings, bool test);
    // The child of that name into *child when the pointer is null; made when missing.
    void FindOrMakeChild(Coordinates** child, const char* name);

    // The placement as the inside test and the walk read it.
    CoordQUICK centrePoint{0.0, 0.0, 0.0};
    DirQUICK axisDir{0.0, 0.0, 1.0};
    DirQUICK axis2Dir{1.0, 0.0, 0.0};
    DirQUICK axis3Dir{0.0, 1.0, 0.0};
    eParamValue shapeName = PV_EMPTY;

    static std::map<int, Volume*> volumesById;
    static Lockable volumesLock;
};
