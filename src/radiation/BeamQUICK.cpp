#include "radiation/BeamQUICK.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

#include "geometry/MatrixTemplate.h"
#include "logging/Log.h"
#include "propagation/Volume.h"

namespace {

constexpr double PI = 3.14159265358979323846;
constexpr double RADIANS_PER_DEGREE = 0.017453292519943295;

// The table of live beams by id, and the next id to give. Never destroyed, so that a beam
// that outlives the static objects of the process can still leave it.
struct BeamTable {
    std::map<int, BeamQUICK*> beams;
    int nextId = 0;
    Lockable lock;
};

BeamTable& Table() {
    static BeamTable* table = new BeamTable;
    return *table;
}

VectorQUICK Minus(const VectorQUICK& a, const VectorQUICK& b) {
    return VectorQUICK(a.data[0] - b.data[0], a.data[1] - b.data[1], a.data[2] - b.data[2]);
}

VectorQUICK Mean(const VectorQUICK& a, const VectorQUICK& b) {
    return VectorQUICK((a.data[0] + b.data[0]) / 2.0, (a.data[1] + b.data[1]) / 2.0,
                       (a.data[2] + b.data[2]) / 2.0);
}

VectorQUICK Centroid(const VectorQUICK& a, const VectorQUICK& b, const VectorQUICK& c) {
    return VectorQUICK((a.data[0] + b.data[0] + c.data[0]) / 3.0,
                       (a.data[1] + b.data[1] + c.data[1]) / 3.0,
                       (a.data[2] + b.data[2] + c.data[2]) / 3.0);
}

double CrossLength(const VectorQUICK& u, const VectorQUICK& v) {
    VectorQUICK cross(3);
    cross.SetCross(u, v);
    return cross.GetLength();
}

// Area of the triangle x, y, p from two sides at x and the angle between them.
double SubArea(const VectorQUICK& x, const VectorQUICK& y, const VectorQUICK& p) {
    const VectorQUICK side1 = Minus(y, x), side2 = Minus(p, x);
    const double l1 = side1.GetLength(), l2 = side2.GetLength();
    if (l1 == 0.0 || l2 == 0.0) return 0.0;
    return 0.5 * l1 * l2 * std::abs(std::sin(side1.Angle(side2) * RADIANS_PER_DEGREE));
}

double Cosine(const VectorQUICK& u, const VectorQUICK& v) {
    return u.Dot(v) / (u.GetLength() * v.GetLength());
}

CoordQUICK PointOf(Coordinates& c) {
    CoordQUICK point;
    point.Copy(c);
    return point;
}

// The axes of the sectors of a spread beam: elevations -75 to 75 and azimuths 0 to 345,
// in steps of 15 degrees, and the two poles.
std::vector<DirQUICK> SectorAxes() {
    std::vector<DirQUICK> axes;
    for (int elevation = -75; elevation <= 75; elevation += 15) {
        const double el = elevation * PI / 180.0;
        for (int azimuth = 0; azimuth < 360; azimuth += 15) {
            const double az = azimuth * PI / 180.0;
            axes.emplace_back(std::cos(el) * std::cos(az), std::cos(el) * std::sin(az),
                              std::sin(el));
        }
    }
    axes.emplace_back(0.0, 0.0, 1.0);
    axes.emplace_back(0.0, 0.0, -1.0);
    return axes;
}

}  // namespace

// The global table.

BeamQUICK* GETBEAM(int id) {
    BeamTable& table = Table();
    table.lock.lock(true);
    auto entry = table.beams.find(id);
    BeamQUICK* beam = entry == table.beams.end() ? nullptr : entry->second;
    table.lock.unlock();
    return beam;
}

bool DELETEBEAM(int id) {
    BeamQUICK* beam = GETBEAM(id);
    if (beam == nullptr) {
        Log::log(1) << "DELETEBEAM: no beam " << id << "\n";
        return false;
    }
    delete beam;
    return true;
}

bool DELETEALLBEAMS() {
    BeamTable& table = Table();
    std::map<int, BeamQUICK*> beams;
    table.lock.lock(true);
    beams.swap(table.beams);
    table.lock.unlock();
    for (auto& entry : beams) delete entry.second;
    return true;
}

int COUNTBEAMS() {
    BeamTable& table = Table();
    table.lock.lock(true);
    int count = static_cast<int>(table.beams.size());
    table.lock.unlock();
    return count;
}

BeamQUICK::BeamQUICK() {
    BeamTable& table = Table();
    table.lock.lock(true);
    beamId = table.nextId++;
    table.beams[beamId] = this;
    table.lock.unlock();
}

BeamQUICK::~BeamQUICK() {
    Empty();
    BeamTable& table = Table();
    table.lock.lock(true);
    auto entry = table.beams.find(beamId);
    if (entry != table.beams.end() && entry->second == this) table.beams.erase(entry);
    table.lock.unlock();
    delete limits;
}

// Ray containers.

bool BeamQUICK::AddRay(Ray* ray) {
    if (ray == nullptr) {
        Log::log(1) << "BeamQUICK::AddRay: no ray\n";
        return false;
    }
    lock(true);
    int id = ray->GetBeamRayId();
    auto entry = raysById.find(id);
    const bool held = entry != raysById.end() && entry->second == ray;
    if (!held) {
        if (entry != raysById.end()) id = raysById.rbegin()->first + 1;
        rays.push_back(ray);
        raysById[id] = ray;
        ray->SetBeamRayId(id);
        ray->beamId = beamId;
    }
    unlock();
    if (held) Log::log(1) << "BeamQUICK::AddRay: ray " << id << " is in the beam already\n";
    return !held;
}

bool BeamQUICK::AddRays(std::vector<Ray*>* list) {
    if (list == nullptr) return false;
    bool all = true;
    for (Ray* ray : *list) all = AddRay(ray) && all;
    return all;
}

bool BeamQUICK::AddTestRay(Ray* ray) {
    if (ray == nullptr) {
        Log::log(1) << "BeamQUICK::AddTestRay: no ray\n";
        return false;
    }
    testRays.push_back(ray);
    int id = ray->GetBeamRayId();
    if (testRaysById.count(id) == 0) {
        id = testRaysById.empty() ? 0 : testRaysById.rbegin()->first;
        ray->SetBeamRayId(id);
    }
    testRaysById[id] = ray;
    hasTestRays = true;
    return true;
}

bool BeamQUICK::AddTestRays(std::vector<Ray*>* list) {
    if (list == nullptr) return false;
    bool all = true;
    for (Ray* ray : *list) all = AddTestRay(ray) && all;
    return all;
}

bool BeamQUICK::AddTriRays(std::vector<TriRay*>* list) {
    ClearTriRays();
    if (list == nullptr || list->empty()) {
        Log::log(1) << "BeamQUICK::AddTriRays: no triangles\n";
        return false;
    }
    for (TriRay* triangle : *list) {
        if (triangle != nullptr) triRays.push_back(new TriRay(*triangle));
    }
    hasTriRays = true;
    return true;
}

bool BeamQUICK::ClearRays() {
    if (rayOwn) {
        lock(true);
        // Each ray's destructor takes it out of raysById, so the walk follows the vector.
        clearing = true;
        for (Ray* ray : rays) delete ray;
        clearing = false;
        unlock();
    }
    rays.clear();
    raysById.clear();
    return true;
}

bool BeamQUICK::ClearTestRays() {
    // A receiving beam shares its test rays with the beam that launched them.
    if (rayOwn) {
        for (Ray* ray : testRays) delete ray;
    }
    testRays.clear();
    testRaysById.clear();
    hasTestRays = false;
    return true;
}

bool BeamQUICK::ClearTriRays() {
    for (TriRay* triangle : triRays) delete triangle;
    triRays.clear();
    hasTriRays = false;
    return true;
}

bool BeamQUICK::RemoveRay(int id) {
    auto entry = raysById.find(id);
    if (entry == raysById.end()) return false;
    Ray* ray = entry->second;
    raysById.erase(entry);
    // Outside the delete walk the ray leaves the vector too, so that it is not deleted
    // again; the walk itself clears the vector when it is done.
    if (!clearing) rays.erase(std::remove(rays.begin(), rays.end(), ray), rays.end());
    return true;
}

Ray* BeamQUICK::getRayFromId(int id) {
    auto entry = raysById.find(id);
    return entry == raysById.end() ? nullptr : entry->second;
}

Ray* BeamQUICK::getRayFromSeq(unsigned n) {
    lock(true);
    Ray* ray = n < raysById.size() ? std::next(raysById.begin(), n)->second : nullptr;
    unlock();
    return ray;
}

bool BeamQUICK::GetRays(std::vector<Ray*>& out, int first, int last) {
    if (first < 0 || last < first || last >= GetRaysCount()) {
        Log::log(1) << "BeamQUICK::GetRays: " << first << " to " << last << " is outside "
                    << GetRaysCount() << " rays\n";
        return false;
    }
    out.insert(out.end(), rays.begin() + first, rays.begin() + last + 1);
    return true;
}

std::vector<TriRay*> BeamQUICK::getTriRays(int rayId) {
    std::vector<TriRay*> found;
    for (TriRay* triangle : triRays) {
        if (triangle->HasCorner(rayId)) found.push_back(triangle);
    }
    return found;
}

std::vector<int> BeamQUICK::getConnectedRays(int rayId) {
    std::set<int> ids;
    for (TriRay* triangle : getTriRays(rayId)) {
        for (int corner : {triangle->rayA, triangle->rayB, triangle->rayC}) {
            if (corner != rayId) ids.insert(corner);
        }
    }
    return std::vector<int>(ids.begin(), ids.end());
}

bool BeamQUICK::SetVolume(Volume* newVolume) {
    volume = newVolume;
    const int id = volume == nullptr ? -1 : volume->GetSimObjectID();
    for (Ray* ray : testRays) ray->SetVolumeID(id);
    for (Ray* ray : rays) ray->SetVolumeID(id);
    return true;
}

BeamLimits* BeamQUICK::GetLimits() {
    if (limits == nullptr) limits = new BeamLimits();
    return limits;
}

Ray* BeamQUICK::CopyOf(const Ray* ray) { return new Ray(*ray); }

bool BeamQUICK::Copy(BeamQUICK& other) {
    if (&other == this) return false;
    Empty();
    for (Ray* ray : other.rays) AddRay(CopyOf(ray));
    for (Ray* ray : other.testRays) AddTestRay(CopyOf(ray));
    volume = other.volume;
    if (other.limits != nullptr) *GetLimits() = *other.limits;
    return true;
}

bool BeamQUICK::Empty() {
    ClearRays();
    ClearTestRays();
    ClearTriRays();
    return true;
}

void BeamQUICK::Print() {
    for (Ray* ray : rays) {
        Log::log(4) << "in beam: " << beamId << ", ray: " << ray->GetBeamRayId() << " from "
                    << ray->origin.data[0] << ", " << ray->origin.data[1] << ", "
                    << ray->origin.data[2] << ", "
                    << " toward " << ray->dir.data[0] << ", " << ray->dir.data[1] << ", "
                    << ray->dir.data[2] << ", "
                    << "len = " << ray->GetLength() << "\n";
    }
}

// Box and ranges.

bool BeamQUICK::CheckRayLimits() {
    if (rays.empty()) return false;
    const CoordQUICK& first = rays.front()->origin;
    coordLimits.xMin = coordLimits.xMax = first.data[0];
    coordLimits.yMin = coordLimits.yMax = first.data[1];
    coordLimits.zMin = coordLimits.zMax = first.data[2];
    auto widen = [this](const CoordQUICK& p) {
        coordLimits.xMin = std::min(coordLimits.xMin, p.data[0]);
        coordLimits.xMax = std::max(coordLimits.xMax, p.data[0]);
        coordLimits.yMin = std::min(coordLimits.yMin, p.data[1]);
        coordLimits.yMax = std::max(coordLimits.yMax, p.data[1]);
        coordLimits.zMin = std::min(coordLimits.zMin, p.data[2]);
        coordLimits.zMax = std::max(coordLimits.zMax, p.data[2]);
    };
    for (Ray* ray : rays) {
        widen(ray->origin);
        widen(ray->end);
    }
    return true;
}

bool BeamQUICK::EvaluateLimits() {
    if (rays.empty()) {
        Log::log(1) << "BeamQUICK::EvaluateLimits: beam " << beamId << " has no rays\n";
        return false;
    }
    BeamLimits& l = *GetLimits();
    const Ray& first = *rays.front();
    l.phaseMin = l.phaseMax = first.GetEndPhase(-1.0);
    l.xMin = l.xMax = first.end.data[0];
    l.yMin = l.yMax = first.end.data[1];
    l.zMin = l.zMax = first.end.data[2];
    double phaseSum = 0.0;
    for (Ray* ray : rays) {
        const double phase = ray->GetEndPhase(-1.0);
        phaseSum += phase;
        l.phaseMin = std::min(l.phaseMin, phase);
        l.phaseMax = std::max(l.phaseMax, phase);
        l.xMin = std::min(l.xMin, ray->end.data[0]);
        l.xMax = std::max(l.xMax, ray->end.data[0]);
        l.yMin = std::min(l.yMin, ray->end.data[1]);
        l.yMax = std::max(l.yMax, ray->end.data[1]);
        l.zMin = std::min(l.zMin, ray->end.data[2]);
        l.zMax = std::max(l.zMax, ray->end.data[2]);
    }
    l.phaseMean = phaseSum / static_cast<double>(rays.size());
    l.phaseMid = (l.phaseMin + l.phaseMax) / 2.0;
    l.phaseRange = l.phaseMax - l.phaseMin;
    l.xRange = l.xMax - l.xMin;
    l.yRange = l.yMax - l.yMin;
    l.zRange = l.zMax - l.zMin;
    l.maxRange = std::max({l.xRange, l.yRange, l.zRange});
    return true;
}

bool BeamQUICK::updateBeamRange(bool spread) {
    if (!ranges.empty()) return false;
    if (!spread) {
        if (rays.size() > 5) {
            ranges.emplace_back();
            for (Ray* ray : rays) ranges.back().addRay(ray);
        }
        return true;
    }
    const std::vector<DirQUICK> axes = SectorAxes();
    std::vector<beamRange> sectors(axes.size());
    for (Ray* ray : rays) {
        size_t nearest = 0;
        for (size_t i = 1; i < axes.size(); ++i) {
            if (axes[i].Dot(ray->dir) > axes[nearest].Dot(ray->dir)) nearest = i;
        }
        sectors[nearest].addRay(ray);
    }
    for (beamRange& sector : sectors) {
        if (!sector.rays.empty()) ranges.push_back(std::move(sector));
    }
    return true;
}

// Intensity.

bool BeamQUICK::Corners(const TriRay& triangle, Ray* corners[3]) {
    corners[0] = getRayFromId(triangle.rayA);
    corners[1] = getRayFromId(triangle.rayB);
    corners[2] = getRayFromId(triangle.rayC);
    return corners[0] != nullptr && corners[1] != nullptr && corners[2] != nullptr;
}

bool BeamQUICK::Distinct(Ray* const corners[3]) {
    return corners[0] != corners[1] && corners[1] != corners[2] && corners[0] != corners[2];
}

template <typename Weigh>
void BeamQUICK::SpreadToRays(Weigh weigh, bool withPower) {
    // Per ray id, the weighted intensity sum S and the weight sum W of its triangles.
    std::map<int, std::pair<double, double>> sums;
    for (TriRay* triangle : triRays) {
        Ray* corners[3];
        if (!Corners(*triangle, corners) || !Distinct(corners)) {
            continue;
        }
        for (int k = 0; k < 3; ++k) {
            const VectorQUICK& a = corners[k]->end;
            const VectorQUICK& b = corners[(k + 1) % 3]->end;
            const VectorQUICK& c = corners[(k + 2) % 3]->end;
            const VectorQUICK toCentroid = Minus(Centroid(a, b, c), a);
            auto& [s, w] = sums[corners[k]->GetBeamRayId()];
            weigh(triangle->intensity, a, toCentroid, Minus(Mean(a, b), a), s, w);
            weigh(triangle->intensity, a, toCentroid, Minus(Mean(a, c), a), s, w);
        }
    }
    rayIntensities.clear();
    for (Ray* ray : rays) {
        auto entry = sums.find(ray->GetBeamRayId());
        if (entry == sums.end()) continue;
        const double factor = withPower ? ray->GetPower() : 1.0;
        rayIntensities[entry->first] = factor * entry->second.first / entry->second.second;
    }
    SetIntensityLimits();
}

bool BeamQUICK::EvaluateIntensity() {
    for (TriRay* triangle : triRays) {
        Ray* corners[3];
        if (!Corners(*triangle, corners) || !Distinct(corners)) {
            continue;
        }
        const VectorQUICK &a = corners[0]->end, &b = corners[1]->end, &c = corners[2]->end;
        const VectorQUICK centre = Centroid(a, b, c);
        triangle->centre.SetValues(centre.data[0], centre.data[1], centre.data[2]);
        triangle->intensity = triangle->power / (0.5 * CrossLength(Minus(b, a), Minus(c, b)));
    }
    SpreadToRays(
        [](double intensity, const VectorQUICK&, const VectorQUICK& toCentroid,
           const VectorQUICK& toMid, double& s, double& w) {
            const double area = 0.5 * CrossLength(toCentroid, toMid);
            s += intensity * area;
            w += area;
        },
        true);
    return true;
}

bool BeamQUICK::intensityTriraysToRays() {
    SpreadToRays(
        [](double intensity, const VectorQUICK& a, const VectorQUICK& toCentroid,
           const VectorQUICK& toMid, double& s, double& w) {
            const double angle = MatrixTemplate<double>::GetSolidAngle(a, toCentroid, toMid);
            s += std::abs(angle) * intensity;
            w += angle;
        },
        false);
    return true;
}

void BeamQUICK::SetIntensityLimits() {
    if (rayIntensities.empty()) return;
    BeamLimits& l = *GetLimits();
    l.intensityMin = l.intensityMax = rayIntensities.begin()->second;
    for (const auto& entry : rayIntensities) {
        l.intensityMin = std::min(l.intensityMin, entry.second);
        l.intensityMax = std::max(l.intensityMax, entry.second);
    }
    l.intensityMid = (l.intensityMin + l.intensityMax) / 2.0;
}

double BeamQUICK::GetEndIntensity(int id) const {
    auto entry = rayIntensities.find(id);
    return entry == rayIntensities.end() ? 0.0 : entry->second;
}

// Gradients.

double BeamQUICK::ValueAt(Field field, Ray& ray) const {
    return field == Field::phase ? ray.GetEndPhase(-1.0) : GetEndIntensity(ray.GetBeamRayId());
}

void BeamQUICK::FitGradients(Field field) {
    std::map<int, std::set<int>> neighbours;
    for (TriRay* triangle : triRays) {
        const int corners[3] = {triangle->rayA, triangle->rayB, triangle->rayC};
        for (int k = 0; k < 3; ++k) {
            neighbours[corners[k]].insert(corners[(k + 1) % 3]);
            neighbours[corners[k]].insert(corners[(k + 2) % 3]);
        }
    }
    std::map<int, Coordinates>& gradients = Gradients(field);
    gradients.clear();
    for (Ray* ray : rays) {
        const int id = ray->GetBeamRayId();
        auto entry = neighbours.find(id);
        if (entry == neighbours.end()) continue;
        double sxv = 0.0, syv = 0.0, sxy = 0.0, sxx = 0.0, syy = 0.0;
        const double value = ValueAt(field, *ray);
        for (int other : entry->second) {
            Ray* neighbour = getRayFromId(other);
            if (neighbour == nullptr || other == id) continue;
            const double dv = value - ValueAt(field, *neighbour);
            const double dx = neighbour->end.data[0] - ray->end.data[0];
            const double dy = neighbour->end.data[1] - ray->end.data[1];
            const double scaledX = dx * std::sqrt(dx * dx / (dx * dx + dy * dy));
            const double scaledY = dy * std::sqrt(dy * dy / (dx * dx + dy * dy));
            sxv += dv * scaledX;
            syv += dv * scaledY;
            sxy += scaledX * scaledY;
            sxx += scaledX * scaledX;
            syy += scaledY * scaledY;
        }
        const double gx = ((4.0 * syv * sxy) / (2.0 * syy) - 2.0 * sxv) /
                          (2.0 * sxx - (4.0 * sxy * sxy) / (2.0 * syy));
        const double gy = (-2.0 * syv - 2.0 * gx * sxy) / (2.0 * syy);
        gradients.emplace(std::piecewise_construct, std::forward_as_tuple(id),
                          std::forward_as_tuple(gx, gy, 0.0));
    }
}

bool BeamQUICK::EvaluateGradients() {
    FitGradients(Field::phase);
    FitGradients(Field::intensity);
    return true;
}

Coordinates* BeamQUICK::GetPhaseGradient(int id) {
    auto entry = phaseGradients.find(id);
    return entry == phaseGradients.end() ? nullptr : &entry->second;
}

Coordinates* BeamQUICK::GetIntensityGradient(int id) {
    auto entry = intensityGradients.find(id);
    return entry == intensityGradients.end() ? nullptr : &entry->second;
}

// Points in triangles and interpolation.

bool BeamQUICK::pointInTriRay(Coordinates& p, BeamQUICK* beam, TriRay* triangle) {
    Ray* corners[3];
    if (beam == nullptr || triangle == nullptr || !beam->Corners(*triangle, corners)) {
        return false;
    }
    const CoordQUICK point = PointOf(p);
    const VectorQUICK &a = corners[0]->end, &b = corners[1]->end, &c = corners[2]->end;
    const VectorQUICK* ends[3] = {&a, &b, &c};
    const VectorQUICK centroid = Centroid(a, b, c);
    double reach = 0.0;
    for (const VectorQUICK* end : ends) reach = std::max(reach, Minus(*end, centroid).GetLength());
    if (Minus(point, centroid).GetLength() > reach) return false;
    for (const VectorQUICK* end : ends) {
        if (Minus(*end, point).GetLength() < reach / 100000.0) return true;
    }
    const VectorQUICK toA = Minus(a, point), toB = Minus(b, point), toC = Minus(c, point);
    VectorQUICK crossAB(3), crossBC(3), crossCA(3);
    crossAB.SetCross(toA, toB);
    crossBC.SetCross(toB, toC);
    crossCA.SetCross(toC, toA);
    // A point on an edge makes one cross product vanish and its cosines undefined; only a
    // cosine clearly below 0 puts the point outside.
    const double tolerance = -1e-6;
    return !(Cosine(crossAB, crossBC) < tolerance || Cosine(crossBC, crossCA) < tolerance ||
             Cosine(crossCA, crossAB) < tolerance);
}

bool BeamQUICK::FindTriangle(Coordinates& p, Ray* corners[3]) {
    for (TriRay* triangle : triRays) {
        if (pointInTriRay(p, this, triangle) && Corners(*triangle, corners)) {
            return true;
        }
    }
    return false;
}

namespace {

// The weight of each corner: the area of the sub-triangle opposite it.
void CornerWeights(Ray* corners[3], const VectorQUICK& p, double weights[3]) {
    for (int k = 0; k < 3; ++k) {
        weights[k] = SubArea(corners[(k + 1) % 3]->end, corners[(k + 2) % 3]->end, p);
    }
}

}  // namespace

bool BeamQUICK::InterpolateFlat(Field field, Coordinates& p, double& out) {
    Ray* corners[3];
    if (!FindTriangle(p, corners)) return false;
    double weights[3];
    CornerWeights(corners, PointOf(p), weights);
    double sum = 0.0, total = 0.0;
    for (int k = 0; k < 3; ++k) {
        sum += weights[k] * ValueAt(field, *corners[k]);
        total += weights[k];
    }
    out = sum / total;
    return true;
}

bool BeamQUICK::InterpolateSmooth(Field field, Coordinates& p, double& out) {
    Ray* corners[3];
    if (!FindTriangle(p, corners)) return false;
    const CoordQUICK point = PointOf(p);
    std::map<int, Coordinates>& gradients = Gradients(field);
    double weights[3];
    CornerWeights(corners, point, weights);
    const double total = weights[0] + weights[1] + weights[2];
    double sum = 0.0, blendSum = 0.0;
    for (int k = 0; k < 3; ++k) {
        auto entry = gradients.find(corners[k]->GetBeamRayId());
        if (entry == gradients.end()) return false;
        const double t = weights[k] / total;
        const double blend = 3.0 * t * t - 2.0 * t * t * t;
        Coordinates& g = entry->second;
        const VectorQUICK offset = Minus(point, corners[k]->end);
        const double slope =
            g.Get(0) * offset.data[0] + g.Get(1) * offset.data[1] + g.Get(2) * offset.data[2];
        sum += blend * (ValueAt(field, *corners[k]) + slope);
        blendSum += blend;
    }
    out = sum / blendSum;
    return true;
}

bool BeamQUICK::InterpolatePhaseFlat(Coordinates& p, double& out) {
    return InterpolateFlat(Field::phase, p, out);
}

bool BeamQUICK::InterpolatePhaseSmooth(Coordinates& p, double& out) {
    return InterpolateSmooth(Field::phase, p, out);
}

bool BeamQUICK::InterpolateIntensityFlat(Coordinates& p, double& out) {
    return InterpolateFlat(Field::intensity, p, out);
}

bool BeamQUICK::InterpolateIntensitySmooth(Coordinates& p, double& out) {
    return InterpolateSmooth(Field::intensity, p, out);
}
