#include "propagation/Interface.h"

#include <array>
#include <cmath>
#include <iostream>

#include "control/OpticElement.h"
#include "geometry/Aperture.h"
#include "geometry/Array.h"
#include "geometry/Coordinates.h"
#include "geometry/Direction.h"
#include "geometry/SurfaceShape.h"
#include "logging/Log.h"
#include "propagation/Detection.h"
#include "propagation/DiffractSource.h"
#include "propagation/DistanceToMesh.h"
#include "propagation/FreqResponseArray.h"
#include "propagation/MeshElement.h"
#include "propagation/MeshFromPointSet.h"
#include "propagation/MeshGroup.h"
#include "propagation/RayFaceMiss.h"
#include "propagation/TransmitManage.h"
#include "propagation/Volume.h"
#include "radiation/BeamQUICK.h"
#include "radiation/EMRadiation.h"
#include "radiation/Medium.h"
#include "radiation/Ray.h"

int Interface::nextInterfaceId = 0;
std::map<int, Interface*> Interface::interfaceList;
Lockable Interface::interfaceListLock;

namespace {

constexpr const char* TYPE = "Interface";
constexpr double RADIANS_PER_DEGREE = 3.141592653589793 / 180.0;
// Test-ray distances closer than this to the one held are no improvement.
constexpr double TEST_RAY_MARGIN = 1e-10;
constexpr double NO_POWER_DB = -120.0;
constexpr double DEFAULT_MIN_TRACE_POWER = -140.0;
constexpr double DEFAULT_CUBE_SIZE = 0.1;

// The arbitration of a hit: the closest wins, a tie keeps what the ray holds.
inline void AcceptHit(Ray* ray, double distance, const DirQUICK& normal, int faceId) {
    if (distance <= 0.0) return;
    if (ray->endInterfaceId != -1 && distance >= ray->GetLength()) return;
    ray->SetLength(distance);
    ray->hitNormal = normal;
    ray->endInterfaceId = faceId;
}

// A test-ray distance replaces the one held only by more than the margin.
bool ImprovesOn(double distance, double best) {
    return distance > TEST_RAY_MARGIN && (best == -1.0 || distance < best - TEST_RAY_MARGIN);
}

double ToDB(double factor) { return factor < 1e-12 ? NO_POWER_DB : 10.0 * std::log10(factor); }

CoordQUICK ToQuick(MatrixTemplate<double>& point) {
    CoordQUICK quick;
    quick.Copy(point);
    return quick;
}

void DeletePoints(std::vector<Coordinates*>& points) {
    for (Coordinates* point : points) delete point;
    points.clear();
}

CoordQUICK Lerp(const CoordQUICK& a, const CoordQUICK& b, double f) {
    return CoordQUICK(a.data[0] + f * (b.data[0] - a.data[0]),
                      a.data[1] + f * (b.data[1] - a.data[1]),
                      a.data[2] + f * (b.data[2] - a.data[2]));
}

CoordQUICK Minus(const VectorQUICK& a, const VectorQUICK& b) {
    return CoordQUICK(a.data[0] - b.data[0], a.data[1] - b.data[1], a.data[2] - b.data[2]);
}

CoordQUICK Cross(const VectorQUICK& a, const VectorQUICK& b) {
    CoordQUICK c;
    c.SetCross(a, b);
    return c;
}

// Cosines of the incidence and refraction angles and the two indices, for the Fresnel
// terms. A refraction past grazing is taken as grazing.
struct Fresnel {
    Fresnel(double angle, double permittivity1, double permittivity2)
        : n1(std::sqrt(permittivity1)), n2(std::sqrt(permittivity2)) {
        const double sinT = Interface::GetSinTxAngle(angle, permittivity1, permittivity2);
        cosI = std::cos(angle * RADIANS_PER_DEGREE);
        cosT = std::sqrt(std::max(0.0, 1.0 - sinT * sinT));
    }
    double n1;
    double n2;
    double cosI = 1.0;
    double cosT = 1.0;
};

// Corner j of the triangle i, j, k can be cut off the outline: it turns the way the outline
// runs, is neither too sharp nor too flat, and no other point lies strictly inside.
bool IsEar(const std::vector<CoordQUICK>& points, size_t i, size_t j, size_t k,
           const DirQUICK& normal) {
    const CoordQUICK& a = points[i];
    const CoordQUICK& b = points[j];
    const CoordQUICK& c = points[k];
    const double angle = Minus(a, b).Angle(Minus(c, b));
    if (angle <= 5.0 || angle >= 175.0) return false;
    if (Cross(Minus(b, a), Minus(c, b)).Dot(normal) <= 0.0) return false;
    for (size_t m = 0; m < points.size(); ++m) {
        if (m == i || m == j || m == k) continue;
        const CoordQUICK& p = points[m];
        if (Cross(Minus(b, a), Minus(p, a)).Dot(normal) > 0.0 &&
            Cross(Minus(c, b), Minus(p, b)).Dot(normal) > 0.0 &&
            Cross(Minus(a, c), Minus(p, c)).Dot(normal) > 0.0) {
            return false;
        }
    }
    return true;
}

// A key for a triangle edge that does not depend on its direction; points are compared to
// a millionth of a metre.
using EdgeKey = std::array<long long, 6>;

EdgeKey KeyOf(const CoordQUICK& a, const CoordQUICK& b) {
    std::array<long long, 3> ka{};
    std::array<long long, 3> kb{};
    for (int i = 0; i < 3; ++i) {
        ka[i] = std::llround(a.data[i] * 1e6);
        kb[i] = std::llround(b.data[i] * 1e6);
    }
    if (kb < ka) std::swap(ka, kb);
    return {ka[0], ka[1], ka[2], kb[0], kb[1], kb[2]};
}

}  // namespace

// The volumes on the two sides of a receiving beam and their media.
struct Interface::SideMedia {
    Volume* in = nullptr;
    Volume* out = nullptr;
    Medium* mediumIn = nullptr;
    Medium* mediumOut = nullptr;
};

Interface::Interface() {
    objTypeStr = TYPE;
    Register();
}

Interface::~Interface() {
    DeleteMesh();
    Unregister();
}

void Interface::Register() {
    interfaceListLock.lock(true);
    interfaceId = nextInterfaceId++;
    interfaceList[interfaceId] = this;
    interfaceListLock.unlock();
}

void Interface::Unregister() {
    interfaceListLock.lock(true);
    interfaceList.erase(interfaceId);
    interfaceListLock.unlock();
}

Interface* Interface::GetInterfaceFromId(int id) {
    interfaceListLock.lock(true);
    auto entry = interfaceList.find(id);
    Interface* face = entry == interfaceList.end() ? nullptr : entry->second;
    interfaceListLock.unlock();
    return face;
}

std::vector<Interface*> Interface::GetInterfaceList() {
    std::vector<Interface*> faces;
    interfaceListLock.lock(true);
    for (const auto& entry : interfaceList) faces.push_back(entry.second);
    interfaceListLock.unlock();
    return faces;
}

bool Interface::Empty() {
    exactChecked = false;
    DeleteMesh();
    hasExactMesh = false;
    needsMesh = true;
    boundRadius = -1.0;
    barrierPoints.clear();
    volumes.clear();
    receivedBeams.clear();
    transmittedBeams.clear();
    diffractSources.clear();
    guideStart = nullptr;
    guideEnd = nullptr;
    // The base deletes the children, these among them.
    shape = nullptr;
    aperture = nullptr;
    hasShape = false;
    hasAperture = false;
    detection = nullptr;
    diffuseArray = nullptr;
    return Component::Empty();
}

bool Interface::FromXml(CElement* element) {
    if (!Component::FromXml(element)) return false;
    LoadVectorByName(&barrierPoints, element, "barrierPoint");
    hasShape = LoadPointerByType(&shape, element, "SurfaceShape");
    hasAperture = LoadPointerByType(&aperture, element, "Aperture");
    const size_t known = volumes.size();
    LoadVectorByType(&volumes, element, "Volume");
    if (volumes.size() == known) Log::log(4) << "hasVolumes == false\n";
    if (!hasShape) Log::log(4) << "hasShape = " << hasShape << "\n";
    if (!hasAperture) Log::log(4) << "hasAperture = " << hasAperture << "\n";
    if (hasAperture && aperture->GetChildNamed("Axis") == nullptr) {
        // The axis is the interface's gift to its aperture, which reloads only its function.
        Coordinates* axis = nullptr;
        aperture->LoadPointerByName(&axis, element->findElementp("Aperture", false), "Axis");
    }
    if (hasShape && hasAperture) {
        aperture->SetShape(shape);
        shape->SetAperture(aperture);
    }
    ResetMesh();
    return checkParams();
}

bool Interface::checkParams() {
    surfaceType = GetSurfaceType();
    GetParameterValue(PN_REFLECT, reflect);
    GetParameterValue(PN_TRANSMIT, transmit);
    GetParameterValue(PN_REFLECTRAT, reflectRatio);
    GetParameterValue(PN_TRANSMITRAT, transmitRatio);
    double lowLimit = 0.0;
    limitRatio = GetParameterValue(PN_SCLL, lowLimit) ? std::pow(10.0, lowLimit / 10.0) : -1.0;
    double largest = -1.0;
    for (eParamName name : {PN_SIZ, PN_APSIZE, PN_APSIZEOUT}) {
        double size = 0.0;
        if (GetParameterValue(name, size)) largest = std::max(largest, std::abs(size));
    }
    apertureOuterSize = largest < 0.0 ? -1.0 : largest / 2.0 * 1.5;
    paramsChecked = true;
    return true;
}

bool Interface::QuickSetToChildren(bool force) {
    checkParams();
    if (IsApertureKind() || IsType(PV_TYPE_APERTUREEXTEND) || IsType(PV_TYPE_CLOSEDSURFACE) ||
        IsType(PV_TYPE_POLYGON)) {
        MakeShapeAndAperture();
    }
    const bool done = Component::QuickSetToChildren(force);
    lock(true);
    ResetMesh();
    unlock();
    return done;
}

bool Interface::MakeShapeAndAperture() {
    MakeChild(&shape, "SurfaceShape");
    MakeChild(&aperture, "Aperture");
    hasShape = true;
    hasAperture = true;
    aperture->SetShape(shape);
    shape->SetAperture(aperture);
    return true;
}

eParamValue Interface::GetSurfaceType() {
    eParamValue type = PV_EMPTY;
    GetParameterValue(PN_TYP, type);
    return type;
}

// "pointPointWidth" is a flat strip given by a surface and its aperture, and is tested
// like "apertureFunction".
bool Interface::IsApertureKind() {
    return surfaceType == PV_TYPE_APERTUREFUNCTION || surfaceType == PV_TYPE_POINTPOINTWIDTH;
}

Array* Interface::GetDiffuseArray() {
    MakeChild(&diffuseArray, "diffuseArray");
    return diffuseArray;
}

bool Interface::AddBarrierPoint(const Coordinates& point) {
    auto* copy = new Coordinates(point);
    copy->Initialize();
    AddChild(copy);
    copy->SetName("barrierPoint");
    barrierPoints.push_back(copy);
    ResetMesh();
    return true;
}

bool Interface::ClearBarrierPoints() {
    for (Coordinates* point : barrierPoints) RemoveChild(point, true);
    barrierPoints.clear();
    ResetMesh();
    return true;
}

// --- Hit testing ---

double Interface::TestRayHit(Ray* ray, double limit) {
    if (ray == nullptr || noHits || ray->TraceAgePastLimit()) return -1.0;
    if (!exactChecked) {
        lock(true);
        CheckForExactPointSet();
        unlock();
    }
    if (hasExactMesh) {
        const double distance = TestHitDistance(ray->origin, ray->dir, &ray->hitNormal, limit);
        ray->hit = true;
        return distance;
    }
    switch (static_cast<int>(surfaceType)) {
        case PV_TYPE_APERTUREFUNCTION:
        case PV_TYPE_POINTPOINTWIDTH:
            // A ray leaving the surface may not meet it again at once.
            if (ray->startInterfaceId == GetSimObjectID()) return -1.0;
            Log::log(4) << "check distance of all hits\n";
            return TestHitDistance(ray->origin, ray->dir, &ray->hitNormal, limit);
        case PV_TYPE_APERTUREEXTEND:
        case PV_TYPE_CLOSEDSURFACE:
            return TestHitDistance(ray->origin, ray->dir, &ray->hitNormal, limit);
        case PV_TYPE_3DMODEL:
            return TestHitDistance(ray->origin, ray->dir, &ray->hitNormal, -1.0);
        default:
            // The point-to-point kinds have no hits without a mesh.
            return -1.0;
    }
}

bool Interface::TestRaysHit(std::vector<Ray*>* list, int first, int last) {
    if (list == nullptr || noHits) return false;
    first = std::max(first, 0);
    last = std::min(last, static_cast<int>(list->size()));
    if (first >= last) return false;
    lock(true);
    const bool onMesh = ContinueMeshTest();
    if (!onMesh) {
        // The surface code keeps scratch state: the lock is held for the whole slice.
        TestRaysOnSurface(*list, first, last);
        unlock();
        return true;
    }
    unlock();
    TestRaysOnMesh(*list, first, last);
    return true;
}

// The mesh walk takes no lock but the groups' own, and allocates nothing: the normal goes
// to one scratch vector for the whole slice.
void Interface::TestRaysOnMesh(std::vector<Ray*>& list, int first, int last) {
    const int faceId = GetSimObjectID();
    DirQUICK scratch;
    DirQUICK* normal = &scratch;
    for (int i = first; i < last; ++i) {
        Ray* ray = list[i];
        if (ray == nullptr || ray->TraceAgePastLimit()) continue;
        const double distance = DistanceToMesh(ray->origin, ray->dir, &normal, meshGroups);
        AcceptHit(ray, distance, *normal, faceId);
    }
}

void Interface::TestRaysOnSurface(std::vector<Ray*>& list, int first, int last) {
    const int faceId = GetSimObjectID();
    const bool apertureKind = IsApertureKind();
    DirQUICK scratch;
    for (int i = first; i < last; ++i) {
        Ray* ray = list[i];
        if (ray == nullptr || ray->TraceAgePastLimit()) continue;
        if (apertureKind && ray->startInterfaceId == faceId) continue;
        const double distance = TestHitDistance(ray->origin, ray->dir, &scratch, -1.0);
        AcceptHit(ray, distance, scratch, faceId);
    }
}

double Interface::TestHitDistance(CoordQUICK& origin, DirQUICK& dir, DirQUICK* normal,
                                  double limit) {
    // Callers that share the interface between threads hold its lock or come after the
    // first ray, which has run the check.
    if (!exactChecked) CheckForExactPointSet();
    if (hasExactMesh || IsType(PV_TYPE_3DMODEL)) return MeshDistance(origin, dir, normal, limit);
    double distance = -1.0;
    switch (static_cast<int>(surfaceType)) {
        case PV_TYPE_APERTUREFUNCTION:
        case PV_TYPE_POINTPOINTWIDTH:
            distance = ApertureFunctionDistance(origin, dir, limit);
            break;
        case PV_TYPE_APERTUREEXTEND:
            distance = ApertureExtendDistance(origin, dir, limit);
            break;
        case PV_TYPE_CLOSEDSURFACE:
            distance = ClosedSurfaceDistance(origin, dir, limit);
            break;
        default:
            return -1.0;
    }
    if (distance > 0.0 && normal != nullptr) {
        CoordQUICK point = origin;
        point.PlusProd(dir, distance);
        GetNormal(point, *normal);
    }
    return distance;
}

double Interface::MeshDistance(CoordQUICK& origin, DirQUICK& dir, DirQUICK* normal, double limit) {
    double best = -1.0;
    DirQUICK scratch;
    DirQUICK* groupNormal = &scratch;
    for (MeshGroup* group : meshGroups) {
        double distance = -1.0;
        const double groupLimit = best > 0.0 ? best : limit;
        if (!group->distance(distance, origin, dir, &groupNormal, groupLimit)) continue;
        if (distance <= 0.0 || (limit != -1.0 && distance > limit)) continue;
        if (best != -1.0 && distance >= best) continue;
        best = distance;
        if (normal != nullptr) *normal = *groupNormal;
    }
    return best;
}

double Interface::ApertureFunctionDistance(CoordQUICK& origin, DirQUICK& dir, double limit) {
    if (!hasShape || !hasAperture) return -1.0;
    Coordinates from(origin);
    Direction along(dir);
    std::vector<double> crossings;
    shape->Intersect(from, along, crossings, 0.0, -1.0, 0.0, false, false);
    double best = limit;
    for (double t : crossings) {
        if (t <= 0.0 || (limit != -1.0 && t > limit)) continue;
        if (best != -1.0 && t >= best) continue;
        Coordinates point(origin.data[0] + t * dir.data[0], origin.data[1] + t * dir.data[1],
                          origin.data[2] + t * dir.data[2]);
        if (aperture->Contains(point)) best = t;
    }
    return best == limit ? -1.0 : best;
}

double Interface::ApertureExtendDistance(CoordQUICK& origin, DirQUICK& dir, double limit) {
    if (!hasAperture) return -1.0;
    Coordinates from(origin);
    Direction along(dir);
    double distance = -1.0;
    if (!aperture->Distance(from, along, distance, 0.0, limit)) return -1.0;
    if (distance <= 0.0 || (limit != -1.0 && distance > limit)) return -1.0;
    Coordinates point(origin.data[0] + distance * dir.data[0],
                      origin.data[1] + distance * dir.data[1],
                      origin.data[2] + distance * dir.data[2]);
    return BetweenGuides(point) ? distance : -1.0;
}

bool Interface::BetweenGuides(Coordinates& point) {
    if (guideStart == nullptr || guideEnd == nullptr) return true;
    if (guideStart->shape == nullptr || guideEnd->shape == nullptr) return false;
    Direction axis;
    if (!guideStart->GetAxis(axis)) return false;
    Coordinates onStart(3);
    Coordinates onEnd(3);
    if (!guideStart->shape->Intersect(point, axis, onStart, -1.0, -1.0, 0.0, true, true) ||
        !guideEnd->shape->Intersect(point, axis, onEnd, -1.0, -1.0, 0.0, true, true)) {
        return false;
    }
    const CoordQUICK p = ToQuick(point);
    const CoordQUICK a = ToQuick(onStart);
    const CoordQUICK b = ToQuick(onEnd);
    const double between = a.diff(b);
    return !(between < p.diff(a) || between < p.diff(b));
}

double Interface::ClosedSurfaceDistance(CoordQUICK& origin, DirQUICK& dir, double limit) {
    if (!hasShape) return -1.0;
    Coordinates from(origin);
    Direction along(dir);
    std::vector<double> crossings;
    shape->Intersect(from, along, crossings, 0.0, limit, 0.0, false, false);
    double best = -1.0;
    for (double t : crossings) {
        if (t > 0.0 && (best == -1.0 || t < best)) best = t;
    }
    return best;
}

double Interface::TestHitDistance(CoordQUICK& point) {
    if (!exactChecked) CheckForExactPointSet();
    if (!IsType(PV_TYPE_CLOSEDSURFACE) || !hasShape) return -1.0;
    return shape->TestDistance(point);
}

// Only a closed surface has an inside.
bool Interface::Contains(CoordQUICK& point) {
    return IsType(PV_TYPE_CLOSEDSURFACE) && TestHitDistance(point) < 0.0;
}

// The sphere is written before exactChecked is set with release order: a thread that reads
// the flag true with acquire order reads the finished sphere, without the lock.
bool Interface::hasCentreAndSize() {
    return exactChecked.load(std::memory_order_acquire) && boundRadius > 0.0;
}

bool Interface::getCentreAndSize(CoordQUICK& outCentre, double& outSize) {
    if (!hasCentreAndSize()) return false;
    outCentre = centre;
    outSize = boundRadius;
    return true;
}

bool Interface::TestRayCentreSize(Ray* ray) {
    if (ray == nullptr) return false;
    CoordQUICK sphereCentre;
    double radius = 0.0;
    if (!getCentreAndSize(sphereCentre, radius)) return true;
    return RayReachesSphere(ray, sphereCentre, radius);
}

bool Interface::RayReachesSphere(Ray* ray, const CoordQUICK& sphereCentre, double radius) {
    if (ray == nullptr) return false;
    const CoordQUICK toCentre = Minus(sphereCentre, ray->origin);
    const double squared = toCentre.Dot(toCentre);
    const double radiusSquared = radius * radius;
    if (squared < radiusSquared) return true;
    const double along = toCentre.Dot(ray->dir);
    if (along < 0.0) return false;
    // A ray that has hit nothing yet takes hits beyond its length, so only a held hit
    // limits the reach.
    if (ray->endInterfaceId != -1 && along - radius > ray->GetLength()) return false;
    return squared - along * along <= radiusSquared;
}

double Interface::TestRayMiss(Ray* ray, std::vector<RayFaceMiss*>& misses, double gap) {
    if (ray == nullptr || noHits) return 0.0;
    if (!exactChecked) CheckForExactPointSet();
    if (!hasExactMesh) {
        std::cout << "ERROR!!! TestRayMiss() called on interface without exact mesh\n";
        return -1.0;
    }
    return TestMissDistance(ray, misses, gap);
}

double Interface::TestMissDistance(Ray* ray, std::vector<RayFaceMiss*>& misses, double& gap) {
    const size_t before = misses.size();
    for (MeshGroup* group : meshGroups) group->missDistance(ray, misses, gap);
    return static_cast<double>(misses.size() - before);
}

double Interface::TestMissDistance(CoordQUICK&) {
    std::cout << "ERROR!!! TestMissDistance(CoordQUICK& point) called..?\n";
    return -1.0;
}

double Interface::TestRadiation(EMRadiation* radiation) {
    if (radiation == nullptr) return -1.0;
    double best = -1.0;
    for (int id : radiation->GetBeamIds()) best = TestBeamRays(GETBEAM(id), best);
    return best;
}

double Interface::TestRadiation(BeamQUICK* beam) { return TestBeamRays(beam, -1.0); }

double Interface::TestBeamRays(BeamQUICK* beam, double best) {
    if (beam == nullptr) return best;
    if (CanTestRad()) return TestRad(beam, best);
    for (auto& entry : *beam->GetTestRaysp()) {
        const double distance = TestRayHit(entry.second, -1.0);
        if (ImprovesOn(distance, best)) best = distance;
    }
    return best;
}

bool Interface::CanTestRad() { return hasExactMesh || IsType(PV_TYPE_3DMODEL); }

double Interface::TestRad(EMRadiation* radiation, double best) {
    if (radiation == nullptr) return best;
    for (int id : radiation->GetBeamIds()) {
        BeamQUICK* beam = GETBEAM(id);
        if (beam != nullptr) best = TestRad(beam, best);
    }
    return best;
}

double Interface::TestRad(BeamQUICK* beam, double best) {
    if (beam == nullptr) return best;
    lock(true);
    if (!exactChecked) CheckForExactPointSet();
    if (needsMesh) GenerateMesh();
    unlock();
    DirQUICK scratch;
    DirQUICK* normal = &scratch;
    for (auto& entry : *beam->GetTestRaysp()) {
        Ray* ray = entry.second;
        if (ray == nullptr) continue;
        for (MeshGroup* group : meshGroups) {
            double distance = -1.0;
            if (!group->distance(distance, ray->origin, ray->dir, &normal, best)) continue;
            if (ImprovesOn(distance, best)) best = distance;
        }
    }
    return best;
}

bool Interface::GetNormal(CoordQUICK& point, DirQUICK& normal) {
    if (!exactChecked) CheckForExactPointSet();
    switch (static_cast<int>(surfaceType)) {
        case PV_TYPE_CLOSEDSURFACE:
        case PV_TYPE_APERTUREFUNCTION:
        case PV_TYPE_POINTPOINTWIDTH:
            return hasShape && shape->GetNormal(point, normal);
        case PV_TYPE_APERTUREEXTEND:
            return hasAperture && aperture->GetNormal(point, normal);
        case PV_TYPE_3DMODEL:
            return true;
        default:
            return false;
    }
}

// --- Meshes ---

bool Interface::ContinueMeshTest() {
    if (!exactChecked) CheckForExactPointSet();
    if (!hasExactMesh && !IsType(PV_TYPE_3DMODEL)) return false;
    if (needsMesh) GenerateMesh();
    return true;
}

bool Interface::CheckForExactPointSet() {
    if (exactChecked) return hasExactMesh;
    surfaceType = GetSurfaceType();
    bool built = false;
    switch (static_cast<int>(surfaceType)) {
        case PV_TYPE_POINTPOINTHEIGHT:
            built = MeshPointPoint(-1.0);
            break;
        case PV_TYPE_POINTPOINTWIDTHHEIGHT: {
            double width = 0.0;
            built = GetParameterValue(PN_WID, width) && MeshPointPoint(width);
            break;
        }
        case PV_TYPE_APERTUREFUNCTION:
        case PV_TYPE_POINTPOINTWIDTH:
            built = MeshApertureFan();
            break;
        case PV_TYPE_POLYGON:
            built = MeshPolygon();
            break;
        case PV_TYPE_APERTUREEXTEND:
            built = MeshGuidedSide(1);
            break;
        case PV_TYPE_CLOSEDSURFACE: {
            eParamValue surface = PV_EMPTY;
            built =
                GetParameterValue(PN_SURFSHAP, surface) && surface == PV_SURF_CUBE && MeshCube();
            break;
        }
        default:
            break;
    }
    if (built) {
        hasExactMesh = true;
        needsMesh = false;
    }
    ComputeBoundingSphere();
    exactChecked.store(true, std::memory_order_release);
    return built;
}

bool Interface::MeshPointPoint(double width) {
    double base = 0.0;
    double height = 0.0;
    if (!GetParameterValue(PN_BASE, base) || !GetParameterValue(PN_HEIGHT, height)) return false;
    if (barrierPoints.size() < 2) return false;
    CoordQUICK up(0.0, 0.0, 1.0);
    return MeshFromPointSet(meshGroups, GetSimObjectID(), barrierPoints, up, base, height, width);
}

bool Interface::GetAxis(Direction& axis) {
    SimObject* child = hasAperture ? aperture->GetChildNamed("Axis") : nullptr;
    auto* vector = dynamic_cast<MatrixTemplate<double>*>(child);
    if (vector == nullptr) {
        Log::log(1) << "aperture->GetChild(axisName); failed\n";
        return false;
    }
    DirQUICK unit(vector->Get(0), vector->Get(1), vector->Get(2));
    axis.Copy(unit);
    return true;
}

bool Interface::ProjectOntoSurface(std::vector<Coordinates*>& points, Direction& axis,
                                   std::vector<Coordinates*>& projected) {
    if (!hasShape || points.empty()) return false;
    if (shape->Intersect(points, axis, projected, -1.0, -1.0, 0.0, true, true) &&
        projected.size() == points.size()) {
        return true;
    }
    DeletePoints(projected);
    return false;
}

bool Interface::ProjectedAperturePoints(bool meshPoints, std::vector<CoordQUICK>& points) {
    if (!hasShape || !hasAperture) return false;
    Direction axis;
    if (!GetAxis(axis)) return false;
    std::vector<Coordinates*> raw;
    std::vector<Coordinates*> projected;
    const bool got =
        meshPoints ? aperture->GetMeshPointSet(raw) : aperture->GetOutlinePointSet(raw);
    const bool done = got && ProjectOntoSurface(raw, axis, projected);
    for (Coordinates* point : projected) points.push_back(ToQuick(*point));
    DeletePoints(raw);
    DeletePoints(projected);
    return done;
}

bool Interface::MeshApertureFan() {
    if (!hasShape || !hasAperture) return false;
    if (!aperture->HasExactPointSet() || !shape->HasExactPointSet()) return false;
    std::vector<CoordQUICK> outline;
    if (!ProjectedAperturePoints(false, outline) || outline.size() < 3) return false;
    std::vector<CoordQUICK> corners;
    for (size_t i = 1; i + 1 < outline.size(); ++i) {
        corners.insert(corners.end(), {outline[0], outline[i], outline[i + 1]});
    }
    AddTriangleGroup(corners);
    return true;
}

bool Interface::getOutlineNormal(const std::vector<CoordQUICK>& points, DirQUICK& normal) {
    // The sum of the cross products of neighbouring points around the outline: its length
    // is twice the enclosed area, and its sense follows the way the outline runs.
    CoordQUICK sum(0.0, 0.0, 0.0);
    for (size_t i = 0; i < points.size(); ++i) {
        sum += Cross(points[i], points[(i + 1) % points.size()]);
    }
    if (sum.GetLength() < 1e-12) return false;
    normal.SetValues(sum.data[0], sum.data[1], sum.data[2]);
    return true;
}

// Ear clipping: a corner is cut off when it turns the way the outline runs, is neither
// too sharp nor too flat, and no other point lies inside the triangle it makes.
bool Interface::MeshPolygon() {
    std::vector<CoordQUICK> points;
    for (Coordinates* point : barrierPoints) points.push_back(ToQuick(*point));
    DirQUICK normal;
    if (points.size() < 3 || !getOutlineNormal(points, normal)) return false;
    double offset = 0.0;
    GetParameterValue(PN_SURFOFFSET, offset);
    // The offset lifts the surface on the upper side, whichever way the outline runs.
    const double lift = normal.data[2] < 0.0 ? -offset : offset;
    std::vector<CoordQUICK> corners;
    bool removed = true;
    while (points.size() >= 3 && removed) {
        removed = false;
        for (size_t i = 0; i < points.size() && points.size() >= 3;) {
            const size_t j = (i + 1) % points.size();
            const size_t k = (i + 2) % points.size();
            if (!IsEar(points, i, j, k, normal)) {
                ++i;
                continue;
            }
            for (size_t c : {i, j, k}) {
                CoordQUICK corner = points[c];
                corner.PlusProd(normal, lift);
                corners.push_back(corner);
            }
            points.erase(points.begin() + static_cast<long>(j));
            removed = true;
            if (j < i) --i;
        }
    }
    if (!corners.empty()) AddTriangleGroup(corners);
    return true;
}

bool Interface::GuideOutline(Interface* guide, std::vector<CoordQUICK>& outline) {
    return guide != nullptr && guide->ProjectedAperturePoints(false, outline);
}

bool Interface::MeshGuidedSide(int segments) {
    std::vector<CoordQUICK> start;
    std::vector<CoordQUICK> end;
    if (!GuideOutline(guideStart, start) || !GuideOutline(guideEnd, end)) return false;
    const size_t n = std::min(start.size(), end.size());
    if (n < 2) return false;
    auto* group = new MeshGroup();
    const int owner = GetSimObjectID();
    // Two points make one band; more make a closed ring of bands.
    const size_t steps = n == 2 ? 1 : n;
    for (size_t i = 0; i < steps; ++i) {
        const size_t j = (i + 1) % n;
        for (int s = 0; s < segments; ++s) {
            const double f0 = static_cast<double>(s) / segments;
            const double f1 = static_cast<double>(s + 1) / segments;
            CoordQUICK a0 = Lerp(start[i], end[i], f0);
            CoordQUICK a1 = Lerp(start[j], end[j], f0);
            CoordQUICK b0 = Lerp(start[i], end[i], f1);
            CoordQUICK b1 = Lerp(start[j], end[j], f1);
            // Only the bands at the guides end on a real edge along the outline.
            auto* lower = new MeshElement(owner, a0, a1, b1);
            lower->setDiffEdge(s == 0, true, false);
            auto* upper = new MeshElement(owner, b1, b0, a0);
            upper->setDiffEdge(s == segments - 1, true, false);
            group->addElement(lower);
            group->addElement(upper);
        }
    }
    meshGroups.push_back(group);
    return true;
}

bool Interface::MeshCube() {
    double size = DEFAULT_CUBE_SIZE;
    GetParameterValue(PN_SIZ, size);
    const double s = size / 2.0;
    CoordQUICK middle(0.0, 0.0, 0.0);
    if (auto* point = dynamic_cast<MatrixTemplate<double>*>(GetChildNamed("centrePoint"))) {
        middle = ToQuick(*point);
    }
    // Corner k has x, y and z on the plus side where bits 0, 1 and 2 are set.
    std::array<CoordQUICK, 8> corner;
    for (int k = 0; k < 8; ++k) {
        corner[k] =
            CoordQUICK(middle.data[0] + ((k & 1) ? s : -s), middle.data[1] + ((k & 2) ? s : -s),
                       middle.data[2] + ((k & 4) ? s : -s));
    }
    const int faces[6][4] = {{0, 2, 3, 1}, {4, 5, 7, 6}, {0, 1, 5, 4},
                             {2, 6, 7, 3}, {0, 4, 6, 2}, {1, 3, 7, 5}};
    auto* group = new MeshGroup();
    const int owner = GetSimObjectID();
    for (const auto& face : faces) {
        CoordQUICK& a = corner[face[0]];
        CoordQUICK& b = corner[face[1]];
        CoordQUICK& c = corner[face[2]];
        CoordQUICK& d = corner[face[3]];
        // The quad's diagonal a-c is the third edge of both triangles.
        auto* first = new MeshElement(owner, a, b, c);
        first->setDiffEdge(true, true, false);
        auto* second = new MeshElement(owner, c, d, a);
        second->setDiffEdge(true, true, false);
        group->addElement(first);
        group->addElement(second);
    }
    meshGroups.push_back(group);
    return true;
}

void Interface::AddTriangleGroup(const std::vector<CoordQUICK>& corners) {
    std::map<EdgeKey, int> uses;
    for (size_t t = 0; t + 2 < corners.size(); t += 3) {
        for (int e = 0; e < 3; ++e) ++uses[KeyOf(corners[t + e], corners[t + (e + 1) % 3])];
    }
    auto* group = new MeshGroup();
    const int owner = GetSimObjectID();
    for (size_t t = 0; t + 2 < corners.size(); t += 3) {
        CoordQUICK a = corners[t];
        CoordQUICK b = corners[t + 1];
        CoordQUICK c = corners[t + 2];
        auto* element = new MeshElement(owner, a, b, c);
        element->setDiffEdge(uses[KeyOf(a, b)] == 1, uses[KeyOf(b, c)] == 1,
                             uses[KeyOf(c, a)] == 1);
        group->addElement(element);
    }
    meshGroups.push_back(group);
}

bool Interface::GenerateMesh() {
    needsMesh = false;
    bool built = false;
    switch (static_cast<int>(surfaceType)) {
        case PV_TYPE_APERTUREFUNCTION:
        case PV_TYPE_POINTPOINTWIDTH:
            DeleteMesh();
            built = MeshApertureTriangles();
            break;
        case PV_TYPE_APERTUREEXTEND:
            DeleteMesh();
            built = MeshGuidedSide(GuidedSideSegments());
            break;
        case PV_TYPE_3DMODEL:
            DeleteMesh();
            Log::log(2) << "Interface::GenerateMesh() - no model reader: " << objName
                        << " stays without a mesh\n";
            break;
        default:
            // The other kinds keep the mesh their exact check built.
            return hasExactMesh;
    }
    ComputeBoundingSphere();
    return built;
}

bool Interface::MeshApertureTriangles() {
    std::vector<CoordQUICK> corners;
    if (!ProjectedAperturePoints(true, corners) || corners.size() < 3) return false;
    corners.resize(corners.size() - corners.size() % 3);
    AddTriangleGroup(corners);
    return true;
}

// The side is cut into bands about as long as the guides are wide: round(2 b / a) bands
// for a guide size a no larger than the length b, one band otherwise.
int Interface::GuidedSideSegments() {
    double startSize = 0.0;
    double endSize = 0.0;
    double length = 0.0;
    if (guideStart == nullptr || guideEnd == nullptr ||
        !guideStart->GetParameterValue(PN_SIZ, startSize) ||
        !guideEnd->GetParameterValue(PN_SIZ, endSize) || !GetParameterValue(PN_EXTLENGTH, length)) {
        return 1;
    }
    const double a = (startSize + endSize) / 2.0;
    const double b = std::abs(length);
    if (a <= 0.0 || a > b) return 1;
    return std::max(1, static_cast<int>(std::lround(b / a + b / a)));
}

void Interface::DeleteMesh() {
    for (MeshGroup* group : meshGroups) delete group;
    meshGroups.clear();
}

void Interface::ResetMesh() {
    exactChecked = false;
    DeleteMesh();
    hasExactMesh = false;
    boundRadius = -1.0;
    needsMesh = true;
}

void Interface::ComputeBoundingSphere() {
    CoordQUICK low;
    CoordQUICK high;
    int spheres = 0;
    double single = -1.0;
    for (MeshGroup* group : meshGroups) {
        if (group->count() == 0) continue;
        group->update();
        for (int i = 0; i < 3; ++i) {
            const double lo = group->centre.data[i] - group->radius;
            const double hi = group->centre.data[i] + group->radius;
            low.data[i] = spheres == 0 ? lo : std::min(low.data[i], lo);
            high.data[i] = spheres == 0 ? hi : std::max(high.data[i], hi);
        }
        single = group->radius;
        ++spheres;
    }
    if (spheres == 0) {
        boundRadius = -1.0;
        return;
    }
    centre = CoordQUICK((low.data[0] + high.data[0]) / 2.0, (low.data[1] + high.data[1]) / 2.0,
                        (low.data[2] + high.data[2]) / 2.0);
    // Generous on purpose: twice the group's radius, or the whole diagonal of the box around
    // all group spheres.
    boundRadius = spheres == 1 ? 2.0 * single : low.diff(high);
}

// --- Reception ---

BeamQUICK* Interface::GetReceivingBeam(int sourceBeamId) {
    lock(true);
    BeamQUICK* beam = nullptr;
    auto entry = receivedBeams.find(sourceBeamId);
    if (entry != receivedBeams.end()) beam = GETBEAM(entry->second);
    if (beam == nullptr) beam = NextReceivedBeam(GETBEAM(sourceBeamId));
    unlock();
    return beam;
}

BeamQUICK* Interface::NextReceivedBeam(BeamQUICK* source) {
    if (source == nullptr) {
        Log::log(1) << "Interface::NextReceivedBeam() - no source beam for " << objName << "\n";
        return nullptr;
    }
    auto* beam = new BeamQUICK();
    beam->setRayOrigin(false);
    beam->setRayOwn(false);
    beam->SetVolume(source->GetVolume());
    beam->SetSourceName(source->GetSourceName());
    receivedBeams[source->GetBeamId()] = beam->GetBeamId();
    return beam;
}

bool Interface::ReceiveRay(Ray* ray, std::map<int, BeamQUICK*>* beams) {
    if (ray == nullptr) return false;
    const int sourceBeamId = ray->beamId;
    BeamQUICK* beam = nullptr;
    if (beams != nullptr) {
        auto known = beams->find(sourceBeamId);
        if (known != beams->end()) beam = known->second;
    }
    if (beam == nullptr) beam = GetReceivingBeam(sourceBeamId);
    if (beam == nullptr) return false;
    if (beams != nullptr) (*beams)[sourceBeamId] = beam;
    beam->AddRay(ray);
    if (detection != nullptr) {
        lock(true);
        detection->DetectRay(ray);
        if (parent != nullptr) parent->SetWillRender(true);
        unlock();
    }
    return true;
}

bool Interface::ReceiveTestRay(Ray* ray) {
    if (ray == nullptr) return false;
    BeamQUICK* beam = GetReceivingBeam(ray->beamId);
    if (beam == nullptr) return false;
    beam->lock(true);
    beam->AddTestRay(ray);
    beam->unlock();
    return true;
}

bool Interface::ReceiveTriRays(std::vector<TriRay*>* triangles) {
    if (detection == nullptr) return false;
    lock(true);
    const bool copied = detection->copyTriRays(triangles);
    unlock();
    return copied;
}

// --- Transmission ---

bool Interface::TransmitRadiation() {
    double minTracePower = DEFAULT_MIN_TRACE_POWER;
    lock(true);
    GetParameterValue(PN_TRCMIN, minTracePower);
    std::vector<int> beamIds;
    for (const auto& entry : receivedBeams) {
        // A beam is transmitted once.
        if (transmittedBeams.insert(entry.second).second) beamIds.push_back(entry.second);
    }
    unlock();
    bool made = false;
    for (int id : beamIds) {
        BeamQUICK* beam = GETBEAM(id);
        if (beam != nullptr) made = TransmitBeam(beam, minTracePower) || made;
    }
    return TransmitDiffraction(minTracePower) || made;
}

bool Interface::ResolveSides(BeamQUICK* beam, SideMedia& sides) {
    sides.in = beam->GetVolume();
    if (sides.in == nullptr) {
        sides.in = Volume::GetVolumeFromId(OpticElement::resources.GetDefaultVolumeId());
    }
    if (sides.in == nullptr) {
        Log::log(1) << "Interface::TransmitRadiation() - no volume for a beam of " << objName
                    << "\n";
        return false;
    }
    Medium* fallback = OpticElement::resources.GetDefaultMedium();
    sides.in->lock(true);
    if (sides.in->GetMedium() == nullptr) sides.in->SetMedium(fallback);
    sides.mediumIn = sides.in->GetMedium();
    sides.in->unlock();
    const int inId = sides.in->GetSimObjectID();
    const int otherId = volumeA != -1 && volumeA != inId   ? volumeA
                        : volumeB != -1 && volumeB != inId ? volumeB
                                                           : inId;
    sides.out = Volume::GetVolumeFromId(otherId);
    if (sides.out == nullptr) sides.out = sides.in;
    sides.out->lock(true);
    sides.mediumOut = sides.out->GetMedium() != nullptr ? sides.out->GetMedium() : fallback;
    sides.out->unlock();
    if (sides.mediumIn == nullptr) sides.mediumIn = fallback;
    return true;
}

bool Interface::TransmitBeam(BeamQUICK* beam, double minTracePower) {
    SideMedia sides;
    if (!ResolveSides(beam, sides)) return false;
    auto fill = [&](TransmitTask& task) {
        task.face = this;
        task.volumeIn = sides.in->GetSimObjectID();
        task.volumeOut = sides.out->GetSimObjectID();
        task.mediumIn = sides.mediumIn;
        task.mediumOut = sides.mediumOut;
    };
    TransmitTask probe;
    fill(probe);
    bool goOn = true;
    if (beam->HasTestRays() && beam->GetTestRaysCount() > 0) {
        probe.rays = *beam->GetTestRaysp();
        TransmitManage::TransmitRays(probe);
        // Real rays follow only where the test rays found a way on.
        goOn = !probe.reflected.empty() || !probe.transmitted.empty();
    }
    TransmitTask task;
    fill(task);
    std::vector<std::vector<Ray*>> diffuse;
    task.diffuse = &diffuse;
    if (goOn) {
        task.rays = *beam->GetRaysp();
        TransmitManage::TransmitRays(task);
    }
    const std::string& name = beam->GetSourceName();
    for (std::vector<Ray*>* list :
         {&task.reflected, &probe.reflected, &task.transmitted, &probe.transmitted}) {
        CheckPowerLevel(*list, minTracePower);
    }
    bool made = AddBeamFromRays(task.reflected, &probe.reflected, sides.in, name);
    for (std::vector<Ray*>& fan : diffuse) {
        CheckPowerLevel(fan, minTracePower);
        made = AddBeamFromRays(fan, nullptr, sides.in, name) || made;
    }
    made = AddBeamFromRays(task.transmitted, &probe.transmitted, sides.out, name) || made;
    return made;
}

// Edge events are not tied to a receiving beam: the rays that made them passed the face. Each
// diffracted fan goes back to the volume its ray ran in.
bool Interface::TransmitDiffraction(double minTracePower) {
    lock(true);
    std::vector<DiffractSource> sources;
    sources.swap(diffractSources);
    unlock();
    std::map<int, std::vector<DiffractSource>> byVolume;
    for (DiffractSource& source : sources) {
        if (source.ray != nullptr) byVolume[source.ray->GetVolumeID()].push_back(source);
    }
    bool made = false;
    for (auto& [volumeId, group] : byVolume) {
        Volume* volume = Volume::GetVolumeFromId(volumeId);
        if (volume == nullptr) {
            volume = Volume::GetVolumeFromId(OpticElement::resources.GetDefaultVolumeId());
        }
        std::vector<Ray*> diffracted;
        TransmitManage::TransmitDiffractSources(group, &diffracted, this);
        CheckPowerLevel(diffracted, minTracePower);
        std::string name;
        if (!group.empty()) group.front().ray->GetSourceName(name);
        if (volume == nullptr) {
            Log::log(1) << "Interface::TransmitRadiation() - no volume for the diffraction of "
                        << objName << "\n";
            for (Ray* ray : diffracted) delete ray;
            continue;
        }
        made = AddBeamFromRays(diffracted, nullptr, volume, name) || made;
    }
    return made;
}

void Interface::CheckPowerLevel(std::vector<Ray*>& rays, double minTracePower) {
    size_t kept = 0;
    for (Ray* ray : rays) {
        if (ray->getPowerAtDistDB(0.0, 0.0) < minTracePower) {
            delete ray;
        } else {
            rays[kept++] = ray;
        }
    }
    rays.resize(kept);
}

bool Interface::AddBeamFromRays(std::vector<Ray*>& rays, std::vector<Ray*>* testRays,
                                Volume* volume, const std::string& sourceName) {
    const bool noTests = testRays == nullptr || testRays->empty();
    if (rays.empty() && noTests) return false;
    auto* beam = new BeamQUICK();
    beam->SetSourceName(sourceName);
    int id = 0;
    for (Ray* ray : rays) {
        ray->SetBeamRayId(id++);
        beam->AddRay(ray);
    }
    if (!noTests) beam->AddTestRays(testRays);
    volume->lock(true);
    volume->ReceiveBeam(beam);
    volume->unlock();
    return !rays.empty();
}

bool Interface::ClearReceivedRadiation(bool deleteBeams) {
    lock(true);
    if (deleteBeams) {
        for (const auto& entry : receivedBeams) DELETEBEAM(entry.second);
    }
    receivedBeams.clear();
    transmittedBeams.clear();
    diffractSources.clear();
    unlock();
    return true;
}

// --- Loss ---

double Interface::GetSinTxAngle(double angle, double permittivity1, double permittivity2) {
    return std::sqrt(permittivity1) * std::sin(angle * RADIANS_PER_DEGREE) /
           std::sqrt(permittivity2);
}

bool Interface::IsTotalInternalReflection(double angle, double permittivity1,
                                          double permittivity2) {
    return GetSinTxAngle(angle, permittivity1, permittivity2) >= 1.0;
}

double Interface::getReflectPowerLossREL(eParamValue model, Ray* ray, double angle,
                                         double permittivity1, double permittivity2) {
    if (model == PV_LOSS_DB) {
        const double frequency = ray != nullptr ? ray->GetFrequency() : 0.0;
        if (response == nullptr || !response->hasParamAtFreq(PN_REFLOSS, frequency)) return 0.5;
        const double factor =
            std::pow(10.0, -response->getParamAtFreq(PN_REFLOSS, frequency) / 10.0);
        return halfLoss ? factor * 0.5 : factor;
    }
    if (model != PV_LOSS_THICK && model != PV_LOSS_THIN) return 0.5;
    if (model == PV_LOSS_THICK && IsTotalInternalReflection(angle, permittivity1, permittivity2)) {
        return 1.0;
    }
    // The mean of the two amplitude coefficients, not of their squares.
    const Fresnel f(angle, permittivity1, permittivity2);
    const double parallel = (f.n2 * f.cosI - f.n1 * f.cosT) / (f.n2 * f.cosI + f.n1 * f.cosT);
    const double perpendicular = (f.n1 * f.cosI - f.n2 * f.cosT) / (f.n1 * f.cosI + f.n2 * f.cosT);
    return 0.5 * (std::abs(parallel) + std::abs(perpendicular));
}

double Interface::getTransmitPowerLossDB(eParamValue model, Ray* ray, double angle,
                                         double permittivity1, double permittivity2) {
    if (model == PV_LOSS_DB) {
        const double frequency = ray != nullptr ? ray->GetFrequency() : 0.0;
        if (response == nullptr || !response->hasParamAtFreq(PN_TRANSLOSS, frequency)) return 0.0;
        const double value = response->getParamAtFreq(PN_TRANSLOSS, frequency);
        return halfLoss ? -value / 2.0 : -value;
    }
    if (model == PV_LOSS_THICK && IsTotalInternalReflection(angle, permittivity1, permittivity2)) {
        return 0.0;
    }
    const Fresnel f(angle, permittivity1, permittivity2);
    const double scale = std::sqrt(permittivity2 / permittivity1);
    const double first = 2.0 * f.n1 * f.cosI / (f.n2 * f.cosT + f.n1 * f.cosI);
    const double second = 2.0 * f.n1 * f.cosI / (f.n2 * f.cosI + f.n1 * f.cosT);
    return (ToDB(scale * first * first) + ToDB(scale * second * second)) / 2.0;
}

// --- Setup ---

bool Interface::SetGuides(Interface* start, Interface* end) {
    guideStart = start;
    guideEnd = end;
    guideEdge = 2;
    for (Interface* guide : {start, end}) {
        if (guide != nullptr && guide->hasAperture) guide->aperture->SetGuideEdge(guideEdge);
    }
    lock(true);
    ResetMesh();
    unlock();
    return true;
}

bool Interface::SetGuideInterfaces_outer(Interface* start, Interface* end) {
    return SetGuides(start, end);
}

bool Interface::SetGuideInterfaces_inner(Interface* start, Interface* end) {
    return SetGuides(start, end);
}

bool Interface::AddVolume(Volume* volume) {
    if (volume == nullptr) {
        Log::log(1) << "Interface::AddVolume() - no volume for " << objName << "\n";
        return false;
    }
    return AddVolume(volume->GetSimObjectID());
}

bool Interface::AddVolume(int volumeId) {
    if (Volume::GetVolumeFromId(volumeId) == nullptr) {
        Log::log(1) << "Interface::AddVolume() - no volume " << volumeId << " for " << objName
                    << "\n";
        return false;
    }
    if (volumeA == volumeId || volumeB == volumeId) return false;
    if (volumeA == -1) {
        volumeA = volumeId;
    } else if (volumeB == -1) {
        volumeB = volumeId;
    } else {
        Log::log(1) << "Interface::AddVolume() - both sides of " << objName << " are taken\n";
        return false;
    }
    return true;
}

bool Interface::RemoveVolume(Volume* volume) {
    return volume != nullptr && RemoveVolume(volume->GetSimObjectID());
}

bool Interface::RemoveVolume(int volumeId) {
    if (volumeId == -1) return false;
    if (volumeA == volumeId) {
        volumeA = -1;
    } else if (volumeB == volumeId) {
        volumeB = -1;
    } else {
        return false;
    }
    return true;
}

bool Interface::SetAvailableVolumes(const std::vector<Volume*>& available) {
    volumes = available;
    return true;
}

bool Interface::PassProfileParameters(Component* to) {
    for (eParamName name : {PN_PROFTYP, PN_PROFRES, PN_PROFHGHTRAT, PN_PROFCOL, PN_COLSCA}) {
        if (GetParameterp(name) != nullptr) PassParameter(name, this, to, name);
    }
    return true;
}

bool Interface::SetDetection(bool on) {
    if (!on) {
        if (detection == nullptr) return true;
        Detection* old = detection;
        detection = nullptr;
        return RemoveChild(old, true);
    }
    MakeChild(&detection, "detection");
    return PassProfileParameters(detection);
}

bool Interface::ClearDetection() { return detection == nullptr || detection->Clear(); }

bool Interface::SetModel(Importer* newModel) {
    model = newModel;
    lock(true);
    ResetMesh();
    unlock();
    return true;
}
