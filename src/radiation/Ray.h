#pragma once

#include <string>
#include <type_traits>
#include <vector>

#include "framework/ParamTypes.h"
#include "geometry/CoordQUICK.h"
#include "geometry/DirQUICK.h"

class Coordinates;
class Direction;

// One straight segment of one propagation path: origin, direction and length, plus what
// is needed to say how much power arrives at any distance along it.
//
// Every ray carries the full launch power of its source in its own direction
// (sourcePowerDB), the sum of the hit losses met so far (powerLossDB) and the optical path
// length from the source to its origin (startPhaseDist). The distance model is applied
// once to the whole unfolded path, never per segment, and ray density plays no part.
//
// A plain record: no virtual operation and all coordinates held by value. Rays belong to a
// BeamQUICK and know their beam and their parent by ids only, so a parent that has gone
// gives a null look-up and never a dangling pointer. A ray belongs to one task at a time
// and has no lock of its own.
class Ray {
public:
    Ray();
    // A copy with hitDistance -1, refractive index 1 and the volume to be read again; the
    // progress points are copied deeply.
    Ray(const Ray& other);
    Ray(Coordinates& origin, Direction& direction, double length);
    Ray& operator=(const Ray&) = delete;
    // Leaves its beam: the beam found by beamId forgets beamRayId.
    ~Ray();

    // Geometry, ids, counters and every power field including the refractive index; not
    // the progress points, and the volume stays as stale as it was.
    bool Copy(const Ray* other);

    // From two points, or from a point, a direction and a length. Each resets the
    // wavelength and both start phases to -1, clears the hit and the interface ids and
    // sets every counter to 0 and every limit to -1, so the caller sets the wavelength
    // and the limits afterwards.
    bool Set(Coordinates& from, Coordinates& to);
    bool Set(const CoordQUICK& from, const CoordQUICK& to);
    bool Set(Coordinates& from, Direction& direction, double length);
    bool Set(const CoordQUICK& from, const VectorQUICK& direction, double length);

    // Chains this ray to the ray that made it: ids, hit distance (when positive) on the
    // parent, wavelength and phases at the parent's end, counters, limits and powers.
    bool setPrevRay(Ray* prev, double hitDist);
    // The parent, or null when there is none or its beam has gone. Takes no lock.
    Ray* getPrevRay() const;
    // The parent's hit normal, read under the parent beam's lock; false with no parent.
    bool getPrevNormal(VectorQUICK& out) const;
    // The first ray of the path: up the parents to one with no hop or no parent.
    Ray* getOriginalRay();
    // The name of the source that launched the beam; false when the beam has gone.
    bool GetSourceName(std::string& out) const;

    // Phase at dist along the ray in wavelengths, not reduced modulo 1; -1 is the end.
    double GetEndPhase(double dist) const;
    // Optical path length from the source to dist along the ray; -1 is the end.
    double GetEndPhaseDist(double dist);
    // The distance model and any knife-edge term at dist along the ray, as a signed dB
    // change; -1 is the end.
    double GetPowerLossFromDistDB(double dist);
    // Launch power, hit losses, distance loss and the receiver's extra term, in dB.
    double getPowerAtDistDB(double dist, double extraDB);

    // True if p lies in the capsule of radius size / 2 around the segment: a cylinder,
    // a sphere at the origin and a flat reach of size / 2 past the end.
    bool PointIsClose(const CoordQUICK& p, double size) const;
    // True if p lies strictly ahead of the origin.
    bool IsForward(const CoordQUICK& p) const;
    // Origins, ends and directions each closer than tol.
    bool Close(const Ray& other, double tol) const;
    // Same origin, end, direction and hit normal within 0.01, lengths within 0.01.
    bool equals(const Ray* other) const;
    // True if origin, end or length differ.
    bool printDifference(const Ray* other) const;

    // A trace limit of -1 defers to the other two; 0 means any hop is past it.
    bool TraceAgePastLimit() const;
    // A limit of -1 or 0 is no limit.
    bool ReflectAgePastLimit() const;
    bool TransmitAgePastLimit() const;

    // Reads the volume's loss per cm, refractive index and distance model once, after
    // the volume id has changed.
    void checkVolume();

    // Makes the vector of progress points when it is missing; the point is not kept.
    void AddProgressPoint(Coordinates& point);
    const std::vector<CoordQUICK>* GetProgressPoints() const { return progressPoints; }

    // Sets the length and moves the end.
    void SetLength(double value);
    double GetLength() const { return length; }
    // Zeroes both start phases as well, so it comes before them.
    void SetWavelength(double value);
    double GetWavelength() const { return wavelength; }
    // 3e8 over the wavelength, in Hz.
    double GetFrequency() const { return 3e8 / wavelength; }
    // Marks the volume's parameters to be read again.
    void SetVolumeID(int id);
    int GetVolumeID() const { return volumeId; }
    int GetBeamRayId() const { return beamRayId; }
    void SetBeamRayId(int id) { beamRayId = id; }
    double GetStartPhase() const { return startPhase; }
    void SetStartPhase(double value) { startPhase = value; }
    double GetStartPhaseDist() const { return startPhaseDist; }
    void SetStartPhaseDist(double value) { startPhaseDist = value; }
    int GetTraceCount() const { return traceCount; }
    void SetTraceCount(int value) { traceCount = value; }
    int GetTraceLimit() const { return traceLimit; }
    void SetTraceLimit(int value) { traceLimit = value; }
    int GetReflectCount() const { return reflectCount; }
    void SetReflectCount(int value) { reflectCount = value; }
    int GetReflectLimit() const { return reflectLimit; }
    void SetReflectLimit(int value) { reflectLimit = value; }
    int GetTransmitCount() const { return transmitCount; }
    void SetTransmitCount(int value) { transmitCount = value; }
    int GetTransmitLimit() const { return transmitLimit; }
    void SetTransmitLimit(int value) { transmitLimit = value; }
    double GetPower() const { return power; }
    void SetPower(double value) { power = value; }
    double GetSourcePowerDB() const { return sourcePowerDB; }
    void SetSourcePowerDB(double value) { sourcePowerDB = value; }
    double GetPowerLossDB() const { return powerLossDB; }
    // Both report a NaN argument on the standard output and keep it all the same.
    void SetPowerLossDB(double value);
    void AddPowerLossDB(double value);
    void SetDiffuseSource(bool value) { diffuseSource = value; }
    bool GetIsDiffuseSource() const { return diffuseSource; }
    void SetDiffractSource(bool value) { diffractSource = value; }
    bool GetIsDiffractSource() const { return diffractSource; }
    bool getRaySuccess() const { return raySuccess; }
    void setRaySuccess(bool value) { raySuccess = value; }
    double GetRefractiveIndex() const { return refractiveIndex; }
    eParamValue GetLosModel() const { return losModel; }
    double GetLosExponent() const { return losExponent; }

    // A ray stands for its origin where a point is wanted.
    operator CoordQUICK&() { return origin; }
    operator const CoordQUICK&() const { return origin; }

    // The fields below are written directly by the hit code and the beam.
    CoordQUICK origin{0.0, 0.0, 0.0};
    CoordQUICK end{0.0, 0.0, 0.0};
    DirQUICK dir;
    DirQUICK hitNormal;
    bool hit = false;
    int startInterfaceId = -1;
    // -1 while the ray has hit nothing.
    int endInterfaceId = -1;
    // The diffraction model of the edge that made this ray.
    eParamValue diffractModel = PV_DIFFRACT_OFF;
    int prevBeamId = -1;
    int prevRayId = -1;
    int beamId = -1;
    // Distance along this ray at which a child was made.
    double hitDistance = -1.0;
    // Loss inside the volume, read by the graded-index walk.
    double volumeLossPerCm = 0.0;

private:
    // The distance as given, or the full length for -1.
    double Resolve(double dist) const { return dist == -1.0 ? length : dist; }
    // Shared tail of the four Set forms.
    void ResetAfterSet();
    // The loss of the volume's distance model at optical distance d.
    double ModelLossDB(double d) const;
    // The knife-edge term of a diffracted ray at dist along it (0 when there is no parent).
    double KnifeEdgeDB(double dist) const;
    // Every field but the progress points and the volume's staleness.
    void CopyFields(const Ray& other);

    std::vector<CoordQUICK>* progressPoints = nullptr;
    bool raySuccess = false;
    double length = -1.0;
    double wavelength = -1.0;
    double startPhase = 0.0;
    double startPhaseDist = 0.0;
    int volumeId = -1;
    // The unset value 1 acts as free space.
    eParamValue losModel = PV_EMPTY;
    double losExponent = -1.0;
    int traceCount = 0;
    int traceLimit = -1;
    int transmitCount = 0;
    int transmitLimit = -1;
    int reflectCount = 0;
    int reflectLimit = -1;
    int beamRayId = -1;
    // dB for a source with a pattern, linear for one without; sourcePowerDB is what the
    // received power uses.
    double power = -1.0;
    double sourcePowerDB = -1.0;
    double powerLossDB = 0.0;
    bool diffractSource = false;
    bool diffuseSource = false;
    double refractiveIndex = 1.0;
    bool volumeStale = true;
};

static_assert(!std::is_polymorphic_v<Ray>);
