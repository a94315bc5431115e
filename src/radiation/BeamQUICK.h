#pragma once

#include <map>
#include <string>
#include <vector>

#include "framework/Lockable.h"
#include "framework/NexoBase.h"
#include "geometry/CoordLimits.h"
#include "geometry/Coordinates.h"
#include "radiation/BeamLimits.h"
#include "radiation/Ray.h"
#include "radiation/TriRay.h"
#include "radiation/beamRange.h"

class Interface;
class Volume;

// The bundle of rays of one source, or of one generation after a hit. It owns its rays,
// the triangles of neighbouring rays and a second list of test rays, which are for display
// and probing only and never enter the trace. From the triangles it computes a smooth
// field of phase and intensity over the points where the rays end.
//
// Every beam has an id unique in the process and is entered in the global beam table
// under it while it lives; rays refer to their beam and their parent's beam by these ids.
// The beam's lock guards AddRay, getRayFromSeq and the delete walk of ClearRays.
class BeamQUICK : public NexoBase, public Lockable {
public:
    // Takes the next id and enters the beam in the table.
    BeamQUICK();
    BeamQUICK(const BeamQUICK&) = delete;
    BeamQUICK& operator=(const BeamQUICK&) = delete;
    // Empties the beam and leaves the table.
    ~BeamQUICK() override;

    int GetBeamId() const { return beamId; }

    // Enters the ray under its id; an id already taken becomes the last key plus 1. The
    // ray takes this beam's id.
    bool AddRay(Ray* ray);
    bool AddRays(std::vector<Ray*>* list);
    // A test ray whose id is new takes the last key (replacing that entry), or 0 in an
    // empty map.
    bool AddTestRay(Ray* ray);
    bool AddTestRays(std::vector<Ray*>* list);
    // Replaces the triangles by copies of those given; false for a null or empty list.
    bool AddTriRays(std::vector<TriRay*>* list);
    // Deletes the rays when the beam owns them, and forgets them in any case.
    bool ClearRays();
    // The same for the test rays.
    bool ClearTestRays();
    bool ClearTriRays();
    // Forgets the ray of this id, in the map and in the vector; called by the ray's
    // destructor.
    bool RemoveRay(int id);

    // Null if absent. Takes no lock: callers that race hold the beam's lock.
    Ray* getRayFromId(int id);
    // The n-th ray in id order, or null.
    Ray* getRayFromSeq(unsigned n);
    // Appends rays[first] to rays[last], both included.
    bool GetRays(std::vector<Ray*>& out, int first, int last);
    std::vector<Ray*>* GetRaysVecp() { return &rays; }
    std::map<int, Ray*>* GetRaysp() { return &raysById; }
    std::vector<TriRay*>* GetTriRaysp() { return &triRays; }
    std::map<int, Ray*>* GetTestRaysp() { return &testRaysById; }
    std::map<int, Ray*>::iterator RaysBeginIt() { return raysById.begin(); }
    std::map<int, Ray*>::iterator RaysEndIt() { return raysById.end(); }
    std::vector<TriRay*>::iterator TriRaysBeginIt() { return triRays.begin(); }
    std::vector<TriRay*>::iterator TriRaysEndIt() { return triRays.end(); }
    std::map<int, Ray*>::iterator TestRaysBeginIt() { return testRaysById.begin(); }
    std::map<int, Ray*>::iterator TestRaysEndIt() { return testRaysById.end(); }
    int GetRaysCount() const { return static_cast<int>(rays.size()); }
    int GetTriRaysCount() const { return static_cast<int>(triRays.size()); }
    int GetTestRaysCount() const { return static_cast<int>(testRays.size()); }
    bool HasTestRays() const { return hasTestRays; }
    bool HasTriRays() const { return hasTriRays; }

    // Every triangle with this ray at a corner.
    std::vector<TriRay*> getTriRays(int rayId);
    // The sorted distinct ids of the other corners of those triangles.
    std::vector<int> getConnectedRays(int rayId);

    // Stores the volume and gives its id to every ray and test ray.
    bool SetVolume(Volume* newVolume);
    Volume* GetVolume() const { return volume; }
    void setRayOrigin(bool value) { rayOrigin = value; }
    bool getRayOrigin() const { return rayOrigin; }
    void setRayOwn(bool value) { rayOwn = value; }
    bool getRayOwn() const { return rayOwn; }
    // Made on first use.
    BeamLimits* GetLimits();
    // The box from the last CheckRayLimits.
    void CopyCoordLimits(CoordLimits& out) const { out = coordLimits; }
    const std::string& GetSourceName() const { return sourceName; }
    void SetSourceName(const std::string& name) { sourceName = name; }
    std::vector<Interface*>& GetInterfaces() { return interfaces; }

    // Takes copies of the other beam's rays and test rays, its volume and its limits.
    bool Copy(BeamQUICK& other);
    bool Empty();
    // One line per ray on the log.
    void Print();

    // The box around the origins and ends of all rays; false with no rays.
    bool CheckRayLimits();
    // Traces the rays to the interfaces of list (the beam's own list when null, which is
    // cleared afterwards): each ray goes to its nearest interface, which receives it. Where
    // an interface diffracts, each ray yields at most one edge event, on the face of the
    // edge it passes nearest the start of its path; near-duplicate events on a face are
    // then merged. Last, the box of the rays is updated. False with no rays.
    bool TransmitToInterfaces(std::vector<Interface*>* list);
    // Whether the interface may lie within the range's sphere or cone: true when it has no
    // exact mesh, or when its bounding sphere is near the range's sphere or inside or
    // beside its cone.
    bool TestFaceAndRange(Interface* face, beamRange& range);
    // Phase and position ranges over the rays' ends; false with no rays.
    bool EvaluateLimits();
    // Triangle intensities from their power and end-point area, then each ray's intensity
    // as the area-weighted mean of its triangles times its power.
    bool EvaluateIntensity();
    // The launch form of EvaluateIntensity: solid angles for areas, triangle intensities
    // as they stand, and no power factor.
    bool intensityTriraysToRays();
    // Per ray, a plane gradient in x and y of phase and of intensity, fitted to the
    // connected rays.
    bool EvaluateGradients();
    // Phase or intensity at p from the first triangle that holds p; false if none does.
    // Flat weighs the corners by the opposite sub-triangle areas; smooth also blends in
    // each corner's gradient and needs all three gradients.
    bool InterpolatePhaseFlat(Coordinates& p, double& out);
    bool InterpolatePhaseSmooth(Coordinates& p, double& out);
    bool InterpolateIntensityFlat(Coordinates& p, double& out);
    bool InterpolateIntensitySmooth(Coordinates& p, double& out);
    // The intensity of a ray from the last evaluation, or 0.
    double GetEndIntensity(int id) const;
    Coordinates* GetPhaseGradient(int id);
    Coordinates* GetIntensityGradient(int id);
    // True if p lies within the triangle of end points (on a corner included); false if a
    // corner ray has gone.
    static bool pointInTriRay(Coordinates& p, BeamQUICK* beam, TriRay* triangle);

    // Groups the rays into cones: all of them in one (spread false, more than 5 rays), or
    // each to the nearest of a fixed set of sector axes (spread true). Does nothing and
    // is false once ranges exist.
    bool updateBeamRange(bool spread);
    const std::vector<beamRange>& GetRanges() const { return ranges; }

private:
    enum class Field { phase, intensity };

    // The three corner rays; false if one has gone.
    bool Corners(const TriRay& triangle, Ray* corners[3]);
    static bool Distinct(Ray* const corners[3]);
    // The phase or intensity at the end of a ray.
    double ValueAt(Field field, Ray& ray) const;
    std::map<int, Coordinates>& Gradients(Field field) {
        return field == Field::phase ? phaseGradients : intensityGradients;
    }
    // The first triangle holding p with its three corners; false if none.
    bool FindTriangle(Coordinates& p, Ray* corners[3]);
    bool InterpolateFlat(Field field, Coordinates& p, double& out);
    bool InterpolateSmooth(Field field, Coordinates& p, double& out);
    // Fits and stores one gradient per ray for the field.
    void FitGradients(Field field);
    // The walk shared by the two intensity evaluations: each triangle's intensity goes to
    // its corners, weighed by weigh over the two halves at each corner; withPower scales
    // each ray's mean by its power.
    template <typename Weigh>
    void SpreadToRays(Weigh weigh, bool withPower);
    void SetIntensityLimits();
    static Ray* CopyOf(const Ray* ray);

    std::vector<TriRay*> triRays;
    std::vector<Ray*> rays;
    std::map<int, Ray*> raysById;
    std::vector<Ray*> testRays;
    std::map<int, Ray*> testRaysById;
    std::vector<beamRange> ranges;
    std::map<int, Coordinates> phaseGradients;
    std::map<int, double> rayIntensities;
    std::map<int, Coordinates> intensityGradients;
    CoordLimits coordLimits;
    int beamId = -1;
    bool hasTestRays = false;
    bool hasTriRays = false;
    BeamLimits* limits = nullptr;
    Volume* volume = nullptr;
    std::vector<Interface*> interfaces;
    bool rayOrigin = true;
    bool rayOwn = true;
    std::string sourceName;
    // True during the delete walk of ClearRays.
    bool clearing = false;
};

// The global beam table, under one lock. Null when no beam has the id.
BeamQUICK* GETBEAM(int id);
// Deletes the beam of that id; false if there is none.
bool DELETEBEAM(int id);
// Deletes every beam in the table.
bool DELETEALLBEAMS();
// The number of beams in the table.
int COUNTBEAMS();
