#include "radiation/Ray.h"

#include <algorithm>
#include <cmath>
#include <iostream>

#include "geometry/Coordinates.h"
#include "geometry/Direction.h"
#include "logging/Log.h"
#include "propagation/FreqResponseArray.h"
#include "propagation/Volume.h"
#include "radiation/BeamQUICK.h"
#include "radiation/Medium.h"

namespace {

constexpr double PI = 3.14159265358979323846;
constexpr double FOUR_PI = 12.566370614359172;

// Base and mobile heights of the two-slope models: fixed, never taken from the scene.
constexpr double UMI_HBS = 10.0;
constexpr double UMI_HMS = 1.5;

CoordQUICK PointOf(Coordinates& c) {
    CoordQUICK point;
    point.Copy(c);
    return point;
}

DirQUICK DirectionOf(Direction& d) {
    DirQUICK direction;
    direction.Copy(d);
    return direction;
}

// The larger of two positive losses, as a signed change.
double WorseOf(double a, double b) { return -std::max(a, b); }

void ReportNaN(double value) {
    if (std::isnan(value)) std::cout << "invalid pIn\n";
}

}  // namespace

Ray::Ray() { dir.dim = 3; }

Ray::Ray(const Ray& other) {
    CopyFields(other);
    if (other.progressPoints != nullptr) {
        progressPoints = new std::vector<CoordQUICK>(*other.progressPoints);
    }
    hitDistance = -1.0;
    refractiveIndex = 1.0;
    volumeStale = true;
}

Ray::Ray(Coordinates& from, Direction& direction, double rayLength) {
    Set(from, direction, rayLength);
}

Ray::~Ray() {
    delete progressPoints;
    if (beamId == -1) return;
    BeamQUICK* beam = GETBEAM(beamId);
    // Only this ray's own entry goes: a copy that kept the ids must not remove the original.
    if (beam != nullptr && beam->getRayFromId(beamRayId) == this) beam->RemoveRay(beamRayId);
}

void Ray::CopyFields(const Ray& other) {
    origin = other.origin;
    end = other.end;
    dir = other.dir;
    hitNormal = other.hitNormal;
    hit = other.hit;
    raySuccess = other.raySuccess;
    startInterfaceId = other.startInterfaceId;
    endInterfaceId = other.endInterfaceId;
    diffractModel = other.diffractModel;
    length = other.length;
    wavelength = other.wavelength;
    startPhase = other.startPhase;
    startPhaseDist = other.startPhaseDist;
    volumeId = other.volumeId;
    losModel = other.losModel;
    losExponent = other.losExponent;
    traceCount = other.traceCount;
    traceLimit = other.traceLimit;
    transmitCount = other.transmitCount;
    transmitLimit = other.transmitLimit;
    reflectCount = other.reflectCount;
    reflectLimit = other.reflectLimit;
    prevBeamId = other.prevBeamId;
    prevRayId = other.prevRayId;
    beamId = other.beamId;
    beamRayId = other.beamRayId;
    hitDistance = other.hitDistance;
    power = other.power;
    sourcePowerDB = other.sourcePowerDB;
    powerLossDB = other.powerLossDB;
    diffractSource = other.diffractSource;
    diffuseSource = other.diffuseSource;
    volumeLossPerCm = other.volumeLossPerCm;
    refractiveIndex = other.refractiveIndex;
}

bool Ray::Copy(const Ray* other) {
    if (other == nullptr) {
        Log::log(1) << "Ray::Copy: no ray to copy\n";
        return false;
    }
    if (other != this) CopyFields(*other);
    return true;
}

// Setting the geometry.

bool Ray::Set(Coordinates& from, Coordinates& to) { return Set(PointOf(from), PointOf(to)); }

bool Ray::Set(const CoordQUICK& from, const CoordQUICK& to) {
    origin.SetValues(from.data[0], from.data[1], from.data[2]);
    end.SetValues(to.data[0], to.data[1], to.data[2]);
    dir.CopyDiff(origin, end);
    length = origin.diff(end);
    ResetAfterSet();
    return true;
}

bool Ray::Set(Coordinates& from, Direction& direction, double rayLength) {
    return Set(PointOf(from), DirectionOf(direction), rayLength);
}

bool Ray::Set(const CoordQUICK& from, const VectorQUICK& direction, double rayLength) {
    origin.SetValues(from.data[0], from.data[1], from.data[2]);
    dir.SetValues(direction.data[0], direction.data[1], direction.data[2]);
    SetLength(rayLength);
    ResetAfterSet();
    return true;
}

void Ray::ResetAfterSet() {
    wavelength = -1.0;
    startPhase = -1.0;
    startPhaseDist = -1.0;
    hit = false;
    startInterfaceId = -1;
    endInterfaceId = -1;
    traceCount = 0;
    traceLimit = -1;
    transmitCount = 0;
    transmitLimit = -1;
    reflectCount = 0;
    reflectLimit = -1;
}

void Ray::SetLength(double value) {
    length = value;
    end = origin;
    end.PlusProd(dir, value);
}

void Ray::SetWavelength(double value) {
    wavelength = value;
    startPhase = 0.0;
    startPhaseDist = 0.0;
}

void Ray::SetVolumeID(int id) {
    volumeId = id;
    volumeStale = true;
}

void Ray::SetPowerLossDB(double value) {
    ReportNaN(value);
    powerLossDB = value;
}

void Ray::AddPowerLossDB(double value) {
    ReportNaN(value);
    powerLossDB += value;
}

void Ray::AddProgressPoint(Coordinates& /*point*/) {
    if (progressPoints == nullptr) progressPoints = new std::vector<CoordQUICK>();
}

// The chain of parents.

bool Ray::setPrevRay(Ray* prev, double hitDist) {
    if (prev == nullptr) {
        Log::log(1) << "Ray::setPrevRay: no parent ray\n";
        return false;
    }
    prevBeamId = prev->beamId;
    prevRayId = prev->beamRayId;
    if (hitDist > 0.0) prev->hitDistance = hitDist;
    wavelength = prev->wavelength;
    startPhase = prev->GetEndPhase(-1.0);
    startPhaseDist = prev->GetEndPhaseDist(-1.0);
    traceLimit = prev->traceLimit;
    traceCount = prev->traceCount;
    reflectLimit = prev->reflectLimit;
    reflectCount = prev->reflectCount;
    transmitLimit = prev->transmitLimit;
    transmitCount = prev->transmitCount;
    sourcePowerDB = prev->sourcePowerDB;
    powerLossDB = prev->powerLossDB;
    return true;
}

Ray* Ray::getPrevRay() const {
    if (prevBeamId == -1 || prevRayId == -1) return nullptr;
    BeamQUICK* beam = GETBEAM(prevBeamId);
    return beam == nullptr ? nullptr : beam->getRayFromId(prevRayId);
}

bool Ray::getPrevNormal(VectorQUICK& out) const {
    if (prevBeamId == -1 || prevRayId == -1) return false;
    BeamQUICK* beam = GETBEAM(prevBeamId);
    if (beam == nullptr) return false;
    beam->lock(true);
    const Ray* prev = beam->getRayFromId(prevRayId);
    if (prev != nullptr) out.Copy(prev->hitNormal);
    beam->unlock();
    return prev != nullptr;
}

Ray* Ray::getOriginalRay() {
    Ray* ray = this;
    while (ray->traceCount != 0) {
        Ray* prev = ray->getPrevRay();
        if (prev == nullptr) break;
        ray = prev;
    }
    return ray;
}

bool Ray::GetSourceName(std::string& out) const {
    BeamQUICK* beam = beamId == -1 ? nullptr : GETBEAM(beamId);
    if (beam == nullptr) return false;
    out = beam->GetSourceName();
    return true;
}

// Phase and power along the ray.

double Ray::GetEndPhase(double dist) const { return startPhase + Resolve(dist) / wavelength; }

double Ray::GetEndPhaseDist(double dist) {
    checkVolume();
    return startPhaseDist + Resolve(dist) * refractiveIndex;
}

void Ray::checkVolume() {
    if (!volumeStale) return;
    volumeLossPerCm = 0.0;
    refractiveIndex = 1.0;
    auto* volume =
        volumeId == -1 ? nullptr : dynamic_cast<Volume*>(SimObject::GetObjectGlobally(volumeId));
    if (volume != nullptr) {
        const double frequency = GetFrequency();
        volume->lock(true);
        eParamValue lossModel = PV_EMPTY;
        volume->GetParameterValue<eParamValue>(PN_BARLOSMDL, lossModel);
        FreqResponseArray* response = volume->GetResponse();
        if (lossModel == PV_LOSS_DB && response != nullptr &&
            response->hasParamAtFreq(PN_TRANSLOSS, frequency)) {
            volumeLossPerCm = response->getParamAtFreq(PN_VOLLOSS, frequency);
        }
        if (volume->GetMedium() != nullptr) {
            refractiveIndex = volume->GetMedium()->GetRefractiveIndex(frequency);
        }
        volume->GetParameterValue<eParamValue>(PN_VOLPROPMDL, losModel);
        volume->GetParameterValue<double>(PN_VOLPROPEXP, losExponent);
        volume->unlock();
    }
    volumeStale = false;
}

double Ray::GetPowerLossFromDistDB(double dist) {
    double loss = 0.0;
    checkVolume();
    if (diffractSource && diffractModel == PV_DIFFRACT_KED) loss -= KnifeEdgeDB(dist);
    return loss + ModelLossDB(GetEndPhaseDist(dist));
}

double Ray::getPowerAtDistDB(double dist, double extraDB) {
    return sourcePowerDB + powerLossDB + GetPowerLossFromDistDB(dist) + extraDB;
}

double Ray::KnifeEdgeDB(double dist) const {
    const Ray* prev = getPrevRay();
    if (prev == nullptr) return 0.0;
    CoordQUICK point = origin;
    point.PlusProd(dir, Resolve(dist));
    DirQUICK toPoint;
    toPoint.CopyDiff(prev->origin, point);
    const double a1 = toPoint.Angle(dir) * PI / 180.0;
    const double a2 = toPoint.Angle(prev->dir) * PI / 180.0;
    const double r = point.diff(prev->origin);
    const double v = std::sqrt((2.0 * r / wavelength) * a1 * a2);
    return 6.9 + 20.0 * std::log10(std::sqrt((v - 0.1) * (v - 0.1) + 1.0) + v - 0.1);
}

double Ray::ModelLossDB(double d) const {
    const double lambda = wavelength;
    const double f = GetFrequency() / 1e9;
    switch (losModel) {
        case PV_EMPTY:
        case PV_FREESPACE: {
            const double x = lambda / (FOUR_PI * d);
            return x < 1e-12 ? -240.0 : 20.0 * std::log10(x);
        }
        case PV_FREESPACE_EXP: {
            const double x = lambda / (FOUR_PI * d);
            return losExponent * (x < 1e-12 ? -120.0 : 10.0 * std::log10(x));
        }
        case PV_INH_LOS:
            return -(16.9 * std::log10(d) + 32.8 + 20.0 * std::log10(f));
        case PV_INH_NLOS:
            return -(43.3 * std::log10(d) + 11.5 + 20.0 * std::log10(f));
        case PV_UMI_LOS:
            return WorseOf(22.0 * std::log10(d) + 28.0 + 20.0 * std::log10(f),
                           40.0 * std::log10(d) + 7.8 - 18.0 * std::log10(UMI_HBS) -
                               18.0 * std::log10(UMI_HMS) + 2.0 * std::log10(f));
        case PV_UMI_NLOS:
            return -(36.7 * std::log10(d) + 22.7 + 26.0 * std::log10(f));
        case PV_UMA_LOS:
        case PV_UMA_NLOS:
            return 0.0;
        case PV_WINNER_A1:
            return -(18.7 * std::log10(d) + 46.8 + 20.0 * std::log10(f / 5.0));
        case PV_WINNER_B1:
            return WorseOf(22.7 * std::log10(d) + 41.0 + 20.0 * std::log10(f / 5.0),
                           40.0 * std::log10(d) + 9.45 - 17.3 * std::log10(UMI_HBS) -
                               17.3 * std::log10(UMI_HMS) + 2.7 * std::log10(f / 5.0));
        case PV_WINNER_PLUS: {
            const double breakpoint = 4.0 * (UMI_HBS - 1.0) * (UMI_HMS - 1.0) / lambda;
            if (breakpoint > d) return -(22.7 * std::log10(d) + 27.0 + 20.0 * std::log10(f));
            return -(40.0 * std::log10(d) + 7.56 - 17.3 * std::log10(UMI_HBS) -
                     17.3 * std::log10(UMI_HMS) + 2.7 * std::log10(f));
        }
        default: {
            const double y = std::pow(lambda / (FOUR_PI * d), losExponent);
            return y < 1e-12 ? -120.0 : 10.0 * std::log10(y);
        }
    }
}

// Geometric tests.

bool Ray::PointIsClose(const CoordQUICK& p, double size) const {
    const double h = size / 2.0;
    const VectorQUICK offset(p.data[0] - origin.data[0], p.data[1] - origin.data[1],
                             p.data[2] - origin.data[2]);
    const double distance = offset.GetLength();
    if (distance < h) return true;
    if (!(dir.Dot(offset) > 0.0)) return false;
    if (!(distance < length + h)) return false;
    const double theta = dir.Angle(offset);
    return h > std::sin(theta * PI / 180.0) * distance;
}

bool Ray::IsForward(const CoordQUICK& p) const {
    return dir.Dot(p.data[0] - origin.data[0], p.data[1] - origin.data[1],
                   p.data[2] - origin.data[2]) > 0.0;
}

bool Ray::Close(const Ray& other, double tol) const {
    return origin.diff(other.origin) < tol && end.diff(other.end) < tol &&
           dir.diff(other.dir) < tol;
}

bool Ray::equals(const Ray* other) const {
    return other != nullptr && origin.equals(other->origin) && end.equals(other->end) &&
           dir.equals(other->dir) && hitNormal.equals(other->hitNormal) &&
           std::abs(length - other->length) < 0.01;
}

bool Ray::printDifference(const Ray* other) const {
    if (other == nullptr) {
        Log::log(1) << "Ray::printDifference: no ray to compare\n";
        return false;
    }
    bool differ = false;
    if (!origin.equals(other->origin)) {
        Log::log(3) << "Ray::printDifference: origins differ by " << origin.diff(other->origin)
                    << "\n";
        differ = true;
    }
    if (!end.equals(other->end)) {
        Log::log(3) << "Ray::printDifference: ends differ by " << end.diff(other->end) << "\n";
        differ = true;
    }
    if (std::abs(length - other->length) >= 0.01) {
        Log::log(3) << "Ray::printDifference: lengths " << length << " and " << other->length
                    << "\n";
        differ = true;
    }
    return differ;
}

// Limits.

namespace {

// A limit of -1 or 0 is no limit.
bool PastLimit(int count, int limit) { return limit != -1 && limit != 0 && count > limit; }

}  // namespace

bool Ray::TraceAgePastLimit() const {
    if (traceLimit != -1) return traceCount > traceLimit;
    return TransmitAgePastLimit() && ReflectAgePastLimit();
}

bool Ray::ReflectAgePastLimit() const { return PastLimit(reflectCount, reflectLimit); }

bool Ray::TransmitAgePastLimit() const { return PastLimit(transmitCount, transmitLimit); }
