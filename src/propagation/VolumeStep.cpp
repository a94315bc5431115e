// The graded-index walk: rays bent step by step through the volume's refractive-index
// profile until they meet a face.
#include "geometry/Coordinates.h"
#include "logging/Log.h"
#include "propagation/Interface.h"
#include "propagation/Volume.h"
#include "radiation/Ray.h"

namespace {

// Steps per ray when vlumeSteps is not set.
constexpr int DEFAULT_STEP_COUNT = 1000;

}  // namespace

bool Volume::ReadStepSettings(StepSettings& settings) {
    // Parameters are read under the volume's lock: beams of one volume may step in parallel.
    lock(true);
    GetParameterValue(PN_VOLSTEPDIST, settings.step);
    settings.count = DEFAULT_STEP_COUNT;
    GetParameterValue(PN_VOLSTEPS, settings.count);
    eParamValue system = PV_COORD_CYLINDRICAL;
    GetParameterValue(PN_COORDSYS, system);
    RefIndexProfile& profile = settings.profile;
    GetParameterValue(PN_RINDPROF, profile.shape);
    GetParameterValue(PN_RINDMIN, profile.indexMin);
    GetParameterValue(PN_RINDMAX, profile.indexMax);
    GetParameterValue(PN_RINDOFFSET, profile.peakOffset);
    GetParameterValue(PN_RINDPROFPARAM, profile.exponent);
    unlock();
    if (settings.step <= 0.0) return false;
    if (profile.exponent <= 0.0) profile.exponent = RefIndexProfile::DEFAULT_EXPONENT;
    profile.radius = sizeRadius * ratio1 / 2.0;
    // A set axis, or cylindrical coordinates about the default one, make the profile radial.
    settings.radialOnly = axis != nullptr || system == PV_COORD_CYLINDRICAL;
    return true;
}

bool Volume::stepTransmit(std::map<int, Ray*>* rays, bool test) {
    StepSettings settings;
    if (!ReadStepSettings(settings)) return false;
    double n = 0.0;
    double slope = 0.0;
    if (!settings.profile.At(0.0, n, slope)) {
        Log::log(1) << "Volume::stepTransmit: " << objName
                    << " has a shaped refractive-index profile and no radius\n";
        return false;
    }
    if (rays == nullptr) return true;
    for (auto& entry : *rays) StepRay(entry.second, settings, test);
    return true;
}

VectorQUICK Volume::Radial(const CoordQUICK& point, bool radialOnly) const {
    VectorQUICK r(point.data[0] - centrePoint.data[0], point.data[1] - centrePoint.data[1],
                  point.data[2] - centrePoint.data[2]);
    if (!radialOnly) return r;
    const double along = r.Dot(axisDir);
    r.data[0] -= along * axisDir.data[0];
    r.data[1] -= along * axisDir.data[1];
    r.data[2] -= along * axisDir.data[2];
    return r;
}

// Each step bends the direction by the index gradient, D += g step / n with g along the
// radial offset at length dn/da, then tests the faces along the new direction within the
// step, so that a step never passes a face, and moves on. The nearest face met ends the
// walk: the ray is left as the last straight piece, from the last step point to the face,
// with the face's normal and id, and is received by the face unless past its trace limit.
// A walk that meets no face leaves the ray at the last point, in the last direction.
void Volume::StepRay(Ray* ray, const StepSettings& settings, bool test) {
    if (ray == nullptr) return;
    CoordQUICK point = ray->origin;
    DirQUICK direction = ray->dir;
    Coordinates progress(0.0, 0.0, 0.0);
    DirQUICK normal;
    double n = 0.0;
    double slope = 0.0;
    for (int step = 0; step < settings.count; step++) {
        const VectorQUICK r = Radial(point, settings.radialOnly);
        const double a = r.GetLength();
        settings.profile.At(a, n, slope);
        if (a > 0.0 && slope != 0.0) {
            const double scale = slope / a * settings.step / n;
            direction.SetValues(direction.data[0] + scale * r.data[0],
                                direction.data[1] + scale * r.data[1],
                                direction.data[2] + scale * r.data[2]);
        }
        double distance = 0.0;
        Interface* face = NearestFace(point, direction, settings.step, distance, normal);
        if (face != nullptr) {
            ray->origin = point;
            ray->dir = direction;
            ray->SetLength(distance);
            ray->hitNormal = normal;
            ray->endInterfaceId = face->GetSimObjectID();
            progress.SetValues(ray->end.data[0], ray->end.data[1], ray->end.data[2]);
            ray->AddProgressPoint(progress);
            if (ray->TraceAgePastLimit()) return;
            if (test) {
                face->ReceiveTestRay(ray);
            } else {
                face->ReceiveRay(ray, nullptr);
            }
            return;
        }
        point.PlusProd(direction, settings.step);
        progress.SetValues(point.data[0], point.data[1], point.data[2]);
        ray->AddProgressPoint(progress);
    }
    ray->origin = point;
    ray->dir = direction;
    ray->SetLength(ray->GetLength());
}
