#include "radiation/TestPoint.h"

#include <algorithm>
#include <cmath>
#include <iostream>

#include "geometry/Coordinates.h"
#include "logging/Log.h"
#include "radiation/BeamQUICK.h"
#include "radiation/EMRadiation.h"
#include "radiation/PointRaysTask.h"
#include "radiation/Ray.h"

std::vector<TestPoint*> TestPoint::testPointList;
Lockable TestPoint::testPointListLock;

namespace {

constexpr const char* TYPE = "TestPoint";
constexpr const char* MAX_RSSI = "Max RSSI";
constexpr const char* OUTER_LIMIT = "outerLimit";
constexpr double NO_POWER_DB = -120.0;
constexpr double SPEED_OF_LIGHT = 300000000.0;

// Degrees of azimuth from a direction: the arc tangent stays in radians while the quadrant
// offsets are in degrees, which is how the files of this system have always read.
double Azimuth(const VectorQUICK& d) {
    double azimuth = std::atan(d.data[1] / d.data[0]);
    if (d.data[0] < 0.0) azimuth += 180.0;
    if (azimuth < 0.0) azimuth += 360.0;
    return azimuth;
}

// Elevation in radians.
double Elevation(const VectorQUICK& d) { return std::asin(d.data[2]); }

const char* LosMark(const Ray* ray) { return ray->GetTraceCount() == 0 ? "Y" : "N"; }

void WriteTriple(std::ofstream& out, double x, double y, double z) {
    out << ", " << x << ", " << y << ", " << z;
}

std::string SourceNameOf(const Ray* ray) {
    std::string name;
    ray->GetSourceName(name);
    return name;
}

// The name of the interface of that id, read under its lock; false when it is gone.
bool InterfaceName(int id, std::string& name) {
    SimObject* object = SimObject::GetObjectGlobally(id);
    if (object == nullptr) return false;
    auto* lockable = dynamic_cast<Lockable*>(object);
    if (lockable != nullptr) lockable->lock(true);
    name = object->GetName();
    if (lockable != nullptr) lockable->unlock();
    return true;
}

// What the catch needs to know of an interface, looked up once for each run of rays that
// share it rather than once per ray.
struct InterfaceLookup {
    void Update(int newId) {
        if (newId == id) return;
        id = newId;
        std::string name;
        exists = InterfaceName(newId, name);
        outer = exists && name == OUTER_LIMIT;
    }
    int id = -2;
    bool exists = false;
    bool outer = false;
};

// Whether p lies on the side of the start surface that the ray leaves towards. A ray whose
// parent is gone has no normal to go by and is refused.
bool PassesStartSide(const Ray* ray, const CoordQUICK& p, InterfaceLookup& start) {
    if (ray->startInterfaceId == -1) return true;
    start.Update(ray->startInterfaceId);
    if (!start.exists) return true;
    VectorQUICK normal(0.0, 0.0, 0.0);
    if (!ray->getPrevNormal(normal)) normal.SetValues(0.0, 0.0, 0.0);
    const double a = normal.Dot(ray->dir);
    const double b = normal.Dot(p.data[0] - ray->origin.data[0], p.data[1] - ray->origin.data[1],
                                p.data[2] - ray->origin.data[2]);
    return a * b > 0.0;
}

// Whether p lies before the surface that ended the ray; the outer boundary is no surface.
bool PassesEndSide(const Ray* ray, const CoordQUICK& p, InterfaceLookup& end) {
    if (ray->endInterfaceId == -1) return true;
    end.Update(ray->endInterfaceId);
    if (!end.exists || end.outer) return true;
    const double a = ray->hitNormal.Dot(ray->dir);
    const double b = ray->hitNormal.Dot(ray->end.data[0] - p.data[0], ray->end.data[1] - p.data[1],
                                        ray->end.data[2] - p.data[2]);
    return a * b > 0.0;
}

}  // namespace

TestPoint::TestPoint() {
    objTypeStr = TYPE;
    testPointListLock.lock(true);
    testPointList.push_back(this);
    testPointListLock.unlock();
}

TestPoint::~TestPoint() {
    testPointListLock.lock(true);
    testPointList.erase(std::remove(testPointList.begin(), testPointList.end(), this),
                        testPointList.end());
    testPointListLock.unlock();
}

std::vector<TestPoint*> TestPoint::GetTestPointList() {
    testPointListLock.lock(true);
    std::vector<TestPoint*> copy = testPointList;
    testPointListLock.unlock();
    return copy;
}

bool TestPoint::Initialize() {
    if (!Component::Initialize()) return false;
    GetCentre();
    return true;
}

bool TestPoint::Empty() {
    lock(true);
    raysByBeam.clear();
    centre = nullptr;
    unlock();
    return Component::Empty();
}

bool TestPoint::checkParams() {
    lock(true);
    if (!paramsChecked) {
        GetParameterValue(PN_RXSIZ, catchSize);
        GetParameterValue(PN_RXPWR, targetPower);
        GetParameterValue(PN_GAINRX, gainRx);
        paramsChecked = true;
    }
    unlock();
    return true;
}

void TestPoint::Print() {
    Component::Print();
    CoordQUICK c = CentreQUICK();
    Log::log(4) << "TestPoint " << objName << " at (" << c.data[0] << ", " << c.data[1] << ", "
                << c.data[2] << "), catch size " << catchSize << ", gainRx " << gainRx << ", "
                << GetRayCount() << " rays from " << raysByBeam.size() << " beams\n";
}

Coordinates* TestPoint::GetCentre() {
    lock(true);
    // Looked up each time: a load from XML may replace the child.
    centre = dynamic_cast<Coordinates*>(GetChildNamed("centrePoint"));
    Coordinates* found = centre;
    unlock();
    return found;
}

bool TestPoint::SetCentre(double x, double y, double z) {
    Coordinates* point = GetCentre();
    lock(true);
    bool done = point != nullptr && point->SetValues(x, y, z);
    unlock();
    if (!done) Log::log(1) << "TestPoint::SetCentre: " << objName << " has no centre\n";
    return done;
}

int TestPoint::GetRayCount() {
    lock(true);
    size_t count = 0;
    for (const auto& entry : raysByBeam) count += entry.second.size();
    unlock();
    return static_cast<int>(count);
}

CoordQUICK TestPoint::CentreQUICK() {
    Coordinates* point = GetCentre();
    lock(true);
    CoordQUICK c(0.0, 0.0, 0.0);
    if (point != nullptr) c.SetValues(point->Get(0), point->Get(1), point->Get(2));
    unlock();
    return c;
}

bool TestPoint::BeamsFromIDs(std::vector<BeamLimitPair>& pairs, const std::vector<int>& ids) {
    pairs.reserve(pairs.size() + ids.size());
    for (int id : ids) {
        BeamQUICK* beam = GETBEAM(id);
        if (beam != nullptr) pairs.emplace_back(beam);
    }
    return true;
}

bool TestPoint::updateFromBeams(std::vector<int>& beamIds) {
    std::vector<BeamLimitPair> pairs;
    BeamsFromIDs(pairs, beamIds);
    return updateFromBeams(pairs);
}

bool TestPoint::updateFromRadiation(std::vector<EMRadiation*>& radiations) {
    ClearRays();
    bool ok = true;
    for (EMRadiation* radiation : radiations) {
        if (radiation == nullptr) continue;
        std::vector<BeamLimitPair> pairs;
        BeamsFromIDs(pairs, radiation->GetBeamIds());
        ok = updateFromBeams(pairs) && ok;
    }
    return ok;
}

bool TestPoint::updateFromBeams(std::vector<BeamLimitPair>& pairs) {
    checkParams();
    const CoordQUICK p = CentreQUICK();
    for (BeamLimitPair& pair : pairs) {
        if (pair.beam == nullptr || !pair.limits.Contains(p, catchSize)) continue;
        MarkBeamRays(pair.beam);
        ProcessRays(pair.beam, 0, pair.beam->GetRaysCount() - 1, p);
    }
    return true;
}

void TestPoint::MarkBeamRays(BeamQUICK* beam) {
    lock(true);
    beam->lock(true);
    for (Ray* ray : *beam->GetRaysVecp()) {
        ray->setRaySuccess(false);
        ray->hitDistance = -1.0;
    }
    beam->unlock();
    unlock();
}

bool TestPoint::ProcessRays(BeamQUICK* beam, int first, int last) {
    return ProcessRays(beam, first, last, CentreQUICK());
}

bool TestPoint::ProcessRays(BeamQUICK* beam, int first, int last, const CoordQUICK& p) {
    if (beam == nullptr) return false;
    PointRaysTask task(p, this, GetRayCatchSize());
    if (last >= first) {
        task.rays.reserve(last - first + 1);
        beam->GetRays(task.rays, first, last);
    }
    return RaysToPoint(&task);
}

bool TestPoint::RaysToPointTaskList(std::vector<PointRaysTask*>& tasks) {
    bool ok = true;
    for (PointRaysTask* task : tasks) {
        if (task == nullptr || !task->lock(false)) continue;
        if (!task->done) {
            ok = RaysToPoint(task) && ok;
            task->done = true;
        }
        task->unlock();
    }
    return ok;
}

bool TestPoint::RaysToPoint(PointRaysTask* task) {
    if (task == nullptr || task->testPoint == nullptr) return false;
    std::vector<Ray*> kept;
    InterfaceLookup start, end;
    for (Ray* ray : task->rays) {
        if (ray == nullptr || !ray->PointIsClose(task->point, task->catchSize)) continue;
        if (!PassesStartSide(ray, task->point, start) || !PassesEndSide(ray, task->point, end)) {
            continue;
        }
        kept.push_back(ray);
    }
    return kept.empty() || task->testPoint->AddRays(kept);
}

bool TestPoint::AddRays(std::vector<Ray*>& rays) {
    lock(true);
    for (Ray* ray : rays) {
        if (ray != nullptr) raysByBeam[ray->beamId].push_back(ray);
    }
    unlock();
    return true;
}

bool TestPoint::ClearRays() {
    lock(true);
    raysByBeam.clear();
    unlock();
    return true;
}

double TestPoint::DistanceFromOrigin(const Ray* ray, const CoordQUICK& c) {
    const double dx = c.data[0] - ray->origin.data[0];
    const double dy = c.data[1] - ray->origin.data[1];
    const double dz = c.data[2] - ray->origin.data[2];
    return std::sqrt(dx * dx + dy * dy + dz * dz);
}

bool TestPoint::Qualifies(const Ray* ray, const CoordQUICK& c) {
    return ray->IsForward(c) && DistanceFromOrigin(ray, c) < ray->GetLength();
}

double TestPoint::PowerAt(Ray* ray, const CoordQUICK& c, double extraDB) {
    return ray->getPowerAtDistDB(DistanceFromOrigin(ray, c), extraDB);
}

double TestPoint::LogOrFloor(double value) {
    return value < 1e-12 ? NO_POWER_DB : 10.0 * std::log10(value);
}

template <typename Visit>
void TestPoint::ForEachRay(Visit visit) {
    static const std::string noSource;
    lock(true);
    for (auto& entry : raysByBeam) {
        // The source is looked up once per beam rather than once per ray.
        BeamQUICK* beam = GETBEAM(entry.first);
        const std::string& source = beam == nullptr ? noSource : beam->GetSourceName();
        for (Ray* ray : entry.second) {
            if (ray == nullptr) {
                std::cerr << "null ray error\n";
                continue;
            }
            visit(ray, source);
        }
    }
    unlock();
}

bool TestPoint::GetMaxPowerdB(double& out, const std::string& source) {
    checkParams();
    const CoordQUICK c = CentreQUICK();
    const bool anySource = source == MAX_RSSI;
    bool found = false;
    ForEachRay([&](Ray* ray, const std::string& raySource) {
        if (!Qualifies(ray, c) || (!anySource && raySource != source)) return;
        const double power = PowerAt(ray, c, gainRx);
        if (!found || power > out) out = power;
        found = true;
    });
    return found;
}

double TestPoint::GetPowerDB(const std::string& source) {
    double power = NO_POWER_DB;
    GetMaxPowerdB(power, source);
    return power;
}

bool TestPoint::GetMaxSourcePowerdB(SourcePowers& out) {
    checkParams();
    const CoordQUICK c = CentreQUICK();
    ForEachRay([&](Ray* ray, const std::string& raySource) {
        if (!Qualifies(ray, c)) return;
        const double power = PowerAt(ray, c, gainRx);
        auto [entry, added] = out.emplace(raySource, std::make_pair(power, 1));
        if (added) return;
        entry->second.second++;
        entry->second.first = std::max(entry->second.first, power);
    });
    return true;
}

bool TestPoint::tracebackRaySuccess() {
    const CoordQUICK c = CentreQUICK();
    ForEachRay([&](Ray* ray, const std::string&) {
        ray->hitDistance = DistanceFromOrigin(ray, c);
        ray->setRaySuccess(true);
        for (Ray *child = ray, *parent = ray->getPrevRay(); parent != nullptr;
             child = parent, parent = parent->getPrevRay()) {
            parent->setRaySuccess(true);
            parent->hitDistance =
                std::max(parent->hitDistance, DistanceFromOrigin(parent, child->origin));
        }
    });
    return true;
}

bool TestPoint::Export(std::string path) {
    std::ofstream out(path);
    if (!out.is_open()) {
        std::cout << "file open failed\n";
        return false;
    }
    writeLineHeader(out);
    std::vector<Ray*> rays;
    ForEachRay([&](Ray* ray, const std::string&) { rays.push_back(ray); });
    for (Ray* ray : rays) writeLine(out, ray);
    return true;
}

bool TestPoint::writeLineHeader(std::ofstream& out) {
    out << "TX, RX"
        << ", end_x, end_y, end_z"
        << ", end_dx, end_dy, end_dz"
        << ", end_az, end_el, tNum, LOS"
        << ", ray_power, expect_power"
        << ", LOS_dist, powerLoss"
        << ", start_x, start_y, start_z"
        << ", dir_x, dir_y, dir_z"
        << ", start_az, start_el"
        << ", start_time, start_power, start_phase"
        << ", end_phase_distance"
        << ", end_delay"
        << "\n";
    return true;
}

bool TestPoint::writeLine(std::ofstream& out, Ray* ray) {
    if (ray == nullptr) return false;
    checkParams();
    const CoordQUICK c = CentreQUICK();
    Ray* original = ray->getOriginalRay();
    const double distance = DistanceFromOrigin(ray, c);
    const double power = PowerAt(ray, c, gainRx);
    const double phaseDistance = ray->GetEndPhaseDist(distance);
    out << SourceNameOf(original) << ", " << objName;
    WriteTriple(out, ray->end.data[0], ray->end.data[1], ray->end.data[2]);
    WriteTriple(out, ray->dir.data[0], ray->dir.data[1], ray->dir.data[2]);
    out << ", " << Azimuth(ray->dir) << ", " << Elevation(ray->dir) << ", " << ray->GetTraceCount()
        << ", " << LosMark(ray);
    out << ", " << power << ", " << targetPower;
    out << ", " << DistanceFromOrigin(original, c) << ", "
        << LogOrFloor(ray->GetSourcePowerDB()) - power;
    WriteTriple(out, original->origin.data[0], original->origin.data[1], original->origin.data[2]);
    WriteTriple(out, original->dir.data[0], original->dir.data[1], original->dir.data[2]);
    out << ", " << Azimuth(original->dir) << ", " << Elevation(original->dir);
    out << ", " << 0 << ", " << original->GetPower() << ", " << original->GetStartPhase();
    out << ", " << phaseDistance << ", " << phaseDistance / SPEED_OF_LIGHT << " \n";
    return true;
}

Ray* TestPoint::StrongestRay(const CoordQUICK& c) {
    Ray* strongest = nullptr;
    double best = 0.0;
    ForEachRay([&](Ray* ray, const std::string&) {
        const double power = PowerAt(ray, c, gainRx);
        if (strongest == nullptr || power > best) {
            strongest = ray;
            best = power;
        }
    });
    return strongest;
}

bool TestPoint::writeMaxLine(std::ofstream& out) {
    checkParams();
    Ray* strongest = StrongestRay(CentreQUICK());
    return strongest != nullptr && writeLine(out, strongest);
}

bool TestPoint::writeSumHeader(std::ofstream& out) {
    out << "TX, RX"
        << ", end_x, end_y, end_z"
        << ", LOS"
        << ", sum_power, expect_power"
        << ", LOS_dist, powerLoss"
        << ", beamCount"
        << ", start_x, start_y, start_z"
        << ", start_time, start_power, start_phase"
        << "\n";
    return true;
}

bool TestPoint::writeSumRayPowerLine(std::ofstream& out) {
    checkParams();
    const CoordQUICK c = CentreQUICK();
    // The strongest ray of each beam that still exists, by beam.
    std::map<BeamQUICK*, Ray*> strongest;
    Ray* last = nullptr;
    ForEachRay([&](Ray* ray, const std::string&) {
        last = ray;
        BeamQUICK* beam = GETBEAM(ray->beamId);
        if (beam == nullptr) return;
        auto [entry, added] = strongest.emplace(beam, ray);
        if (!added && PowerAt(ray, c, gainRx) > PowerAt(entry->second, c, gainRx)) {
            entry->second = ray;
        }
    });
    if (last == nullptr) return false;
    double sum = 0.0;
    for (const auto& entry : strongest) sum += std::pow(10.0, PowerAt(entry.second, c, 0.0) / 10.0);
    const double sumPower = LogOrFloor(sum) - gainRx;
    Ray* original = last->getOriginalRay();
    out << SourceNameOf(original) << ", " << objName;
    WriteTriple(out, c.data[0], c.data[1], c.data[2]);
    out << ", " << LosMark(last);
    out << ", " << sumPower << ", " << targetPower;
    out << ", " << DistanceFromOrigin(original, c) << ", "
        << LogOrFloor(last->GetSourcePowerDB()) - sumPower;
    out << ", " << strongest.size();
    WriteTriple(out, original->origin.data[0], original->origin.data[1], original->origin.data[2]);
    out << ", " << 0 << ", " << original->GetPower() << ", " << original->GetStartPhase() << "\n";
    return true;
}
