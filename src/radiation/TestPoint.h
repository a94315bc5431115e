#pragma once

#include <fstream>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "framework/Component.h"
#include "framework/Lockable.h"
#include "geometry/CoordQUICK.h"
#include "radiation/BeamLimitPair.h"

class BeamQUICK;
class Coordinates;
class EMRadiation;
class PointRaysTask;
class Ray;

// A receiver of the scene: a sample point, or one cell of a trace volume. Rays are not aimed
// at it. After the trace it sweeps the beams, keeps the rays that pass within its catch size
// (a capsule test around each ray) and computes the received power from what it kept.
//
// The power of one source is the strongest qualifying ray of that source, never a sum. The
// rays kept belong to their beams and are valid only while the beams live, so results must
// clear the points before the beams go.
//
// Every point enters itself in testPointList at construction and leaves it at destruction.
// The point's lock guards the centre, the parameters and the list of caught rays; the catch
// itself runs without it, so that tiles of beams can reach one point from several threads.
class TestPoint : public Component, public Lockable {
public:
    using SourcePowers = std::map<std::string, std::pair<double, int>>;

    TestPoint();
    ~TestPoint() override;

    // The standard children, then the centre is taken from "centrePoint".
    bool Initialize() override;
    // Forgets the caught rays and the centre before the children go.
    bool Empty() override;
    // Reads RXCatchSize, RXTargetPower and gainRx once per parameter change, under the lock.
    bool checkParams() override;
    void Print() override;

    // The sweep: each beam whose box holds the point within the catch size has its rays
    // marked unsuccessful and tested; the others are skipped untouched.
    bool updateFromBeams(std::vector<BeamLimitPair>& pairs);
    bool updateFromBeams(std::vector<int>& beamIds);
    // Forgets what was caught, then sweeps the beams of every radiation.
    bool updateFromRadiation(std::vector<EMRadiation*>& radiations);
    // Tests rays first .. last (both included) of the beam, in this thread.
    bool ProcessRays(BeamQUICK* beam, int first, int last);
    // The capsule catch with its start- and end-side tests; the kept rays go to AddRays.
    static bool RaysToPoint(PointRaysTask* task);
    // Runs every task of the list that no other thread has taken.
    static bool RaysToPointTaskList(std::vector<PointRaysTask*>& tasks);
    // Pairs for the beams of these ids that still exist.
    static bool BeamsFromIDs(std::vector<BeamLimitPair>& pairs, const std::vector<int>& ids);

    // Appends each ray to the list of its beam, under the lock.
    bool AddRays(std::vector<Ray*>& rays);
    // Forgets the caught rays; the rays stay with their beams.
    bool ClearRays();

    // The strongest qualifying ray of the source ("Max RSSI": of any source). out is written
    // only when some ray qualified; false when none did.
    bool GetMaxPowerdB(double& out, const std::string& source);
    // The same, reading -120 when no ray qualified.
    double GetPowerDB(const std::string& source);
    // Per source name, the strongest qualifying power and the number of qualifying rays.
    bool GetMaxSourcePowerdB(SourcePowers& out);

    // Marks the paths of the caught rays successful, up to their sources, and sets the
    // length to which each ray of them is drawn.
    bool tracebackRaySuccess();

    // One line per caught ray, in beam-id order, after the header of writeLine.
    bool Export(std::string path);
    static bool writeLineHeader(std::ofstream& out);
    bool writeLine(std::ofstream& out, Ray* ray);
    // writeLine for the strongest caught ray; nothing when there is none.
    bool writeMaxLine(std::ofstream& out);
    static bool writeSumHeader(std::ofstream& out);
    // The incoherent sum of the strongest ray of each beam; false when nothing was caught.
    bool writeSumRayPowerLine(std::ofstream& out);

    // The position (the child "centrePoint"); null before Initialize.
    Coordinates* GetCentre();
    // Moves the point.
    bool SetCentre(double x, double y, double z);
    double GetRayCatchSize() const { return catchSize; }
    double GetTargetPower() const { return targetPower; }
    double GetGainRx() const { return gainRx; }
    void SetInTraceVolume(bool value) { inTraceVolume = value; }
    bool IsInTraceVolume() const { return inTraceVolume; }
    // The number of rays caught, over all beams.
    int GetRayCount();

    // A copy of the list of live points, taken under its lock.
    static std::vector<TestPoint*> GetTestPointList();

    // Every live test point, in order of construction, and its lock.
    static std::vector<TestPoint*> testPointList;
    static Lockable testPointListLock;

private:
    // The centre as a plain point, under the lock; the origin without a centre.
    CoordQUICK CentreQUICK();
    // ProcessRays with the centre already read, as the sweep does once for all beams.
    bool ProcessRays(BeamQUICK* beam, int first, int last, const CoordQUICK& p);
    // Distance from the ray's origin to c.
    static double DistanceFromOrigin(const Ray* ray, const CoordQUICK& c);
    // Ahead of the origin and strictly closer than the ray's end.
    static bool Qualifies(const Ray* ray, const CoordQUICK& c);
    // Received power of the ray at the centre, with the extra gain.
    static double PowerAt(Ray* ray, const CoordQUICK& c, double extraDB);
    // Marks every ray of the beam unsuccessful with no hit distance, under both locks.
    void MarkBeamRays(BeamQUICK* beam);
    // Calls visit(ray, source name) for every caught ray in beam-id order; a null ray is
    // reported.
    template <typename Visit>
    void ForEachRay(Visit visit);
    // The strongest caught ray by P, qualifying or not; null when nothing was caught.
    Ray* StrongestRay(const CoordQUICK& c);
    // -120 for a figure below 1e-12, else 10 log10 of it.
    static double LogOrFloor(double value);

    Coordinates* centre = nullptr;
    std::map<int, std::vector<Ray*>> raysByBeam;
    double catchSize = 1.0;
    double targetPower = 0.0;
    double gainRx = 0.0;
    bool inTraceVolume = false;
};
