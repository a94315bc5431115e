#include "propagation/TransmitManage.h"

#include <cmath>
#include <numbers>
#include <sstream>

#include "control/OpticElement.h"
#include "geometry/Array.h"
#include "geometry/Coordinates.h"
#include "geometry/SurfaceShape.h"
#include "logging/Log.h"
#include "propagation/FreqResponseArray.h"
#include "propagation/Interface.h"
#include "propagation/Loss.h"
#include "propagation/LossManage.h"
#include "radiation/Medium.h"
#include "radiation/Ray.h"

namespace {

// Degrees to radians for the incidence angle, as the loss formulas expect it.
constexpr double INCIDENCE_TO_RADIANS = 0.017453292519943295;
// The diffracted fan's angles come from VectorQUICK::Angle in degrees; the turn back
// uses the true pi.
constexpr double RADIANS_PER_DEGREE = std::numbers::pi / 180.0;
constexpr double PI_LITERAL = 3.141592653589793;
// How far a child starts past its point, so that it leaves the surface it was made on.
constexpr double LEAVE_OFFSET = 0.01;
// A ray this close to the normal (degrees) ends on the face.
constexpr double NORMAL_INCIDENCE_LIMIT = 0.1;
// The number "2D" of the Dimensions list; any other value is a three-dimensional scene.
constexpr eParamNumber DIMENSIONS_2D = static_cast<eParamNumber>(4);

// 10 log10(x), with -120 standing for no power when x is under 1e-12.
double DbOrFloor(double x) { return x < 1e-12 ? -120.0 : 10.0 * std::log10(x); }

template <typename T>
T ReadParameter(Component* owner, eParamName name, T fallback) {
    T value = fallback;
    if (owner == nullptr || !owner->GetParameterValue<T>(name, value)) return fallback;
    return value;
}

bool IsDiffuseModel(eParamValue model) {
    return model == PV_REFLECT_UNIFORMDIFFUSE || model == PV_REFLECT_LAMBERTIAN ||
           model == PV_REFLECT_DIRECTIVE || model == PV_REFLECT_SCATTERING;
}

// Everything a face contributes to its children, read once per task: parameter reads
// are look-ups in the face's map, too slow to repeat per ray.
struct FaceSettings {
    eParamValue type = PV_EMPTY;
    eParamValue reflectModel = PV_REFLECT_SPECULAR;
    eParamValue transmitModel = PV_TRANSMIT_CONDUCTIVE;
    eParamValue lossModel = PV_EMPTY;
    bool reflect = true;
    bool transmit = true;
    double reflectRatio = 1.0;
    double diffuseAngle = 45.0;
    double diffuseGap = 1.0;
    double minTracePower = -200.0;
    bool twoDimensions = false;
    // The sheet of a thin wall: the face's medium and its thickness.
    Medium* wallMedium = nullptr;
    double thickness = 0.0;
    FreqResponseArray* response = nullptr;
    int faceId = -1;

    bool ReflectOn() const { return reflectModel == PV_REFLECT_SPECULAR || Diffuse(); }
    bool TransmitOn() const {
        return transmitModel == PV_TRANSMIT_CONDUCTIVE || transmitModel == PV_TRANSMIT_LINEAR;
    }
    bool Diffuse() const { return IsDiffuseModel(reflectModel); }
};

// The face's medium by name; the default medium when the name is unknown.
Medium* NamedMedium(Interface* face) {
    std::string name;
    if (face != nullptr && face->GetParameterValue<std::string>(PN_MED, name)) {
        if (Medium* medium = OpticElement::resources.GetMedium(name)) return medium;
    }
    return OpticElement::resources.GetDefaultMedium();
}

FaceSettings ReadFaceSettings(Interface* face) {
    FaceSettings s;
    if (face == nullptr) return s;
    s.type = ReadParameter<eParamValue>(face, PN_TYP, PV_EMPTY);
    s.reflectModel = ReadParameter<eParamValue>(face, PN_BARREFMDL, PV_REFLECT_SPECULAR);
    s.transmitModel = ReadParameter<eParamValue>(face, PN_BARTRNMDL, PV_TRANSMIT_CONDUCTIVE);
    s.lossModel = ReadParameter<eParamValue>(face, PN_BARLOSMDL, PV_EMPTY);
    s.reflect = face->GetReflect();
    s.transmit = face->GetTransmit();
    s.reflectRatio = face->GetReflectRatio();
    s.diffuseAngle = ReadParameter<double>(face, PN_DIFFANG, 45.0);
    s.diffuseGap = ReadParameter<double>(face, PN_RAYGAP, 1.0);
    s.minTracePower = ReadParameter<double>(face, PN_TRCMIN, -200.0);
    s.twoDimensions = ReadParameter<eParamNumber>(face, PN_TRACEDIM, PNUM_NONE) == DIMENSIONS_2D;
    s.wallMedium = NamedMedium(face);
    s.thickness = ReadParameter<double>(face, PN_THICKNESS, 0.0);
    s.response = face->GetResponse();
    s.faceId = face->GetSimObjectID();
    return s;
}

// A medium's numbers at one frequency; free space when there is no medium.
struct MediumNumbers {
    double permittivity = 1.0;
    double conductivity = 0.0;
    double index = 1.0;
};

MediumNumbers ReadMedium(Medium* medium, double frequencyHz) {
    MediumNumbers n;
    if (medium == nullptr) return n;
    const double ghz = frequencyHz / 1e9;
    double permeability = 1.0;
    medium->GetRelPtPbCond_fromFreq(ghz, n.permittivity, permeability, n.conductivity, false);
    n.index = medium->GetRefractiveIndex(ghz);
    return n;
}

// Both sides of the face and the wall's sheet at the frequency of the rays. Reading a
// medium takes its lock, so the numbers are read again only when the frequency changes.
struct SideNumbers {
    double frequency = -1.0;
    MediumNumbers in;
    MediumNumbers out;
    MediumNumbers wall;
    double indexRatio = 1.0;

    void Update(double f, Medium* mediumIn, Medium* mediumOut, Medium* wallMedium) {
        if (f == frequency) return;
        frequency = f;
        in = ReadMedium(mediumIn, f);
        out = ReadMedium(mediumOut, f);
        wall = ReadMedium(wallMedium, f);
        indexRatio = mediumIn == nullptr || mediumOut == nullptr ? 1.0 : in.index / out.index;
    }
};

// What the power functions need beyond their arguments.
struct HitContext {
    Interface* face;
    const FaceSettings& settings;
    const SideNumbers& sides;
};

// A new ray from point along direction, started LEAVE_OFFSET past the point.
Ray* NewChild(const VectorQUICK& point, const VectorQUICK& direction) {
    const DirQUICK unit(direction.data[0], direction.data[1], direction.data[2]);
    CoordQUICK start(point.data[0], point.data[1], point.data[2]);
    start.PlusProd(unit, LEAVE_OFFSET);
    Ray* child = new Ray();
    child->Set(start, unit, LEAVE_OFFSET);
    return child;
}

DirQUICK MirrorDirection(const Ray* ray, const DirQUICK& normal) {
    const double along = ray->dir.Dot(normal);
    return DirQUICK(ray->dir.data[0] - 2.0 * along * normal.data[0],
                    ray->dir.data[1] - 2.0 * along * normal.data[1],
                    ray->dir.data[2] - 2.0 * along * normal.data[2]);
}

// Two unit axes at right angles to axis and to each other.
void FrameAround(const DirQUICK& axis, DirQUICK& e1, DirQUICK& e2) {
    const VectorQUICK helper =
        std::abs(axis.data[0]) < 0.9 ? VectorQUICK(1.0, 0.0, 0.0) : VectorQUICK(0.0, 1.0, 0.0);
    VectorQUICK c;
    c.SetCross(helper, axis);
    e1.SetValues(c.data[0], c.data[1], c.data[2]);
    c.SetCross(axis, e1);
    e2.SetValues(c.data[0], c.data[1], c.data[2]);
}

// Reused per thread, so that making children allocates nothing but the children.
std::vector<Coordinates*>& ScratchPositions() {
    thread_local std::vector<Coordinates*> positions;
    positions.clear();
    return positions;
}

std::vector<Ray*>& ScratchRays() {
    thread_local std::vector<Ray*> rays;
    rays.clear();
    return rays;
}

// The face's fan layout as a cone of half angle diffuseAngle / 2 about +z at spacing
// rayGap; the parameters are written only when they differ, so the cached directions
// survive from hit to hit.
Array* FanArray(Interface* face, const FaceSettings& s) {
    Array* array = face == nullptr ? nullptr : face->GetDiffuseArray();
    if (array == nullptr) return nullptr;
    array->checkParams();
    if (array->GetArrayType() != PV_POINT) array->SetParameterValue(PN_ARRTYP, PV_POINT);
    if (array->GetArrayShape() != PV_CIRCLEFULL) {
        array->SetParameterValue(PN_ARRSHA, PV_CIRCLEFULL);
    }
    if (array->GetAngle() != s.diffuseAngle) array->SetParameterValue(PN_ANG, s.diffuseAngle);
    if (std::abs(array->GetRayGap() - s.diffuseGap * RADIANS_PER_DEGREE) > 1e-12) {
        array->SetParameterValue(PN_RAYGAP, s.diffuseGap);
    }
    return array;
}

// Children along the fan's directions turned onto axis, for the directions whose dot
// with keepSide is not negative.
void FanAbout(Interface* face, const FaceSettings& s, const VectorQUICK& point,
              const DirQUICK& axis, const VectorQUICK& keepSide, std::vector<Ray*>& out,
              Ray* inheritFrom) {
    Array* array = FanArray(face, s);
    std::vector<Coordinates*>& positions = ScratchPositions();
    if (array == nullptr || !array->getPositions(positions, false, nullptr, nullptr, -1)) return;
    DirQUICK e1;
    DirQUICK e2;
    FrameAround(axis, e1, e2);
    for (Coordinates* position : positions) {
        const double x = position->quickGet(0);
        const double y = position->quickGet(1);
        const double z = position->quickGet(2);
        const VectorQUICK d(x * e1.data[0] + y * e2.data[0] + z * axis.data[0],
                            x * e1.data[1] + y * e2.data[1] + z * axis.data[1],
                            x * e1.data[2] + y * e2.data[2] + z * axis.data[2]);
        if (d.Dot(keepSide) < 0.0) continue;
        Ray* child = NewChild(point, d);
        if (inheritFrom == nullptr) {
            child->SetDiffuseSource(true);
        } else {
            child->SetBeamRayId(inheritFrom->GetBeamRayId());
            child->SetPowerLossDB(inheritFrom->GetPowerLossDB());
        }
        out.push_back(child);
    }
}

// The flat fan of a two-dimensional scene: n + 1 directions over diffuseAngle in the plane
// of incidence, whose axis is mirror x normal (+z for a scene in the x-y plane), centred on
// the in-plane direction u; for +z, u is -x. Directions behind the face are dropped.
void FlatFan(Ray* ray, const FaceSettings& s, const DirQUICK& normal, const DirQUICK& mirror,
             std::vector<Ray*>& out) {
    VectorQUICK axis;
    axis.SetCross(mirror, normal);
    if (axis.GetLength() == 0.0 || s.diffuseGap <= 0.0) return;
    axis.Normalize();
    const int n = static_cast<int>(std::lround(s.diffuseAngle / s.diffuseGap));
    if (n < 1) return;
    const VectorQUICK x(1.0, 0.0, 0.0);
    const VectorQUICK y(0.0, 1.0, 0.0);
    const bool nearX = std::abs(axis.Dot(x)) < 0.2;
    VectorQUICK u;
    u.SetCross(axis, nearX ? y : x);
    // An axis along the chosen helper has no cross with it: the other helper serves.
    if (u.GetLength() < 1e-12) u.SetCross(axis, nearX ? x : y);
    u.Normalize();
    VectorQUICK v;
    v.SetCross(axis, u);
    v.Normalize();
    for (int i = 0; i <= n; ++i) {
        const double phi = (i * s.diffuseAngle / n - s.diffuseAngle / 2.0) * RADIANS_PER_DEGREE;
        const VectorQUICK d(std::cos(phi) * u.data[0] + std::sin(phi) * v.data[0],
                            std::cos(phi) * u.data[1] + std::sin(phi) * v.data[1],
                            std::cos(phi) * u.data[2] + std::sin(phi) * v.data[2]);
        if (d.Dot(normal) < 0.0) continue;
        out.push_back(NewChild(ray->end, d));
    }
}

// Counts, volume and previous face of a child of a hit; the chain to the parent is set.
void MarkReflected(Ray* child, int volumeId, int faceId) {
    child->SetVolumeID(volumeId);
    child->SetTraceCount(child->GetTraceCount() + 1);
    child->SetReflectCount(child->GetReflectCount() + 1);
    child->startInterfaceId = faceId;
}

// The two-dimensional fan's own charge: the face's ratio and loss, and the deletion of rays
// that start under minTracePower.
void ChargeFlatFan(Ray* ray, std::vector<Ray*>& out, size_t first, const HitContext& c,
                   eParamValue lossModel, double angle, int volumeId) {
    size_t kept = first;
    for (size_t k = first; k < out.size(); ++k) {
        Ray* child = out[k];
        child->setPrevRay(ray, -1.0);
        MarkReflected(child, volumeId, c.settings.faceId);
        child->SetPower(c.settings.reflectRatio * ray->GetPower());
        const double r = c.face->getReflectPowerLossREL(
            lossModel, child, angle, c.sides.in.permittivity, c.sides.out.permittivity);
        child->AddPowerLossDB(DbOrFloor(r));
        if (child->getPowerAtDistDB(0.0, 0.0) <= c.settings.minTracePower) {
            delete child;
            continue;
        }
        out[kept++] = child;
    }
    out.resize(kept);
}

void ReflectDiffuseWith(Ray* ray, std::vector<Ray*>& out, eParamValue lossModel,
                        const DirQUICK& normal, int volumeId, const HitContext& c) {
    const DirQUICK mirror = MirrorDirection(ray, normal);
    if (!c.settings.twoDimensions) {
        FanAbout(c.face, c.settings, ray->end, mirror, normal, out, nullptr);
        return;
    }
    const size_t first = out.size();
    FlatFan(ray, c.settings, normal, mirror, out);
    DirQUICK n = normal;
    ChargeFlatFan(ray, out, first, c, lossModel, TransmitManage::GetIncidenceAngle(ray, n),
                  volumeId);
}

// The pattern factor of a diffuse model for incoming d, outgoing r and mirror m.
double PatternFactor(eParamValue model, const VectorQUICK& normal, const VectorQUICK& d,
                     const VectorQUICK& r, const VectorQUICK& m) {
    switch (model) {
        case PV_REFLECT_UNIFORMDIFFUSE:
            return 1.0 / PI_LITERAL;
        case PV_REFLECT_LAMBERTIAN:
            return -normal.Dot(d) * normal.Dot(r) / PI_LITERAL;
        case PV_REFLECT_DIRECTIVE: {
            const double lobe = (1.0 + r.Dot(m)) / 2.0;
            return lobe * lobe * lobe * -normal.Dot(d);
        }
        case PV_REFLECT_SCATTERING:
            return 0.5 * -normal.Dot(d) * normal.Dot(r);
        default:
            return 1.0;
    }
}

void AdjustReflectedWith(Ray* ray, std::vector<Ray*>& out, eParamValue reflectModel,
                         eParamValue lossModel, const DirQUICK& normal, int volumeId,
                         const HitContext& c) {
    TransmitManage::CheckRaysFromPrevious(out, ray);
    for (Ray* child : out) MarkReflected(child, volumeId, c.settings.faceId);
    DirQUICK n = normal;
    const double angle = TransmitManage::GetIncidenceAngle(ray, n);
    const double e1 = c.sides.in.permittivity;
    const double e2 = c.sides.out.permittivity;
    Loss loss;
    if (reflectModel == PV_REFLECT_SPECULAR) {
        // The face formulas take radians and are given degrees here; only dB[2], which
        // they leave at 0, reaches the ray, so a specular child carries no face loss.
        double t = 0.0;
        LossManage::GetTheta2RAD(e1, e2, angle, t);
        LossManage::AddFaceReflectLoss(e1, e2, angle, t, loss);
    } else if (IsDiffuseModel(reflectModel)) {
        const DirQUICK mirror = MirrorDirection(ray, normal);
        const double ratio = c.settings.reflectRatio;
        for (Ray* child : out) {
            child->SetPower(ratio * child->GetPower());
            child->SetPowerLossDB(DbOrFloor(ratio));
            child->AddPowerLossDB(
                DbOrFloor(c.face->getReflectPowerLossREL(lossModel, child, angle, e1, e2)));
            child->AddPowerLossDB(
                DbOrFloor(PatternFactor(reflectModel, normal, ray->dir, child->dir, mirror)));
        }
    }
    for (Ray* child : out) child->AddPowerLossDB(loss.dB[2]);
}

// Writes the thin wall's dB after each stage to the log.
void LogThinWall(const Loss& face1, const Loss& sheet, const Loss& face2) {
    if (Log::getLevel() < OUTPUT_INFORMATIVE) return;
    std::ostringstream text;
    text << "from face1 : " << face1.dB[0] << ", " << face1.dB[1] << " through : " << sheet.dB[0]
         << ", " << sheet.dB[1] << " to face2 : " << face2.dB[0] << ", " << face2.dB[1] << "\n";
    Log::log(OUTPUT_INFORMATIVE) << text.str();
}

// One sheet of the face's medium and thickness: in to sheet, through it, sheet to in.
void AddThinWallLoss(double angle, const HitContext& c, Loss& loss) {
    const double ein = c.sides.in.permittivity;
    const MediumNumbers& m = c.sides.wall;
    double t = 0.0;
    LossManage::GetTheta2RAD(ein, m.permittivity, angle, t);
    LossManage::AddFaceTransmitLoss(ein, m.permittivity, angle, t, loss);
    const Loss face1 = loss;
    LossManage::AddVolumeLoss(m.conductivity, m.permittivity, c.settings.thickness / std::cos(t),
                              loss);
    const Loss sheet = loss;
    LossManage::AddFaceTransmitLoss(m.permittivity, ein, t, angle, loss);
    LogThinWall(face1, sheet, loss);
}

// A thick wall is charged when the ray leaves its volume, by the length it ran inside.
void AddThickWallLoss(Ray* ray, double angle, const HitContext& c, double e1, double e2,
                      Loss& loss) {
    double t = 0.0;
    LossManage::GetTheta2RAD(e1, e2, angle, t);
    LossManage::AddVolumeLoss(c.sides.in.conductivity, e1, ray->GetLength(), loss);
    LossManage::AddFaceTransmitLoss(e1, e2, angle, t, loss);
}

void AdjustTransmittedWith(Ray* ray, std::vector<Ray*>& out, eParamValue lossModel,
                           const DirQUICK& normal, int volumeId, double e1, double e2,
                           const HitContext& c) {
    TransmitManage::CheckRaysFromPrevious(out, ray);
    DirQUICK n = normal;
    const double angle = TransmitManage::GetGrazingAngle(ray, n);
    Loss loss;
    if (lossModel == PV_LOSS_THICK) {
        AddThickWallLoss(ray, angle, c, e1, e2, loss);
    } else if (lossModel == PV_LOSS_THIN) {
        AddThinWallLoss(angle, c, loss);
    } else if (lossModel == PV_LOSS_DB && c.settings.response != nullptr &&
               c.settings.response->hasParamAtFreq(PN_TRANSLOSS, ray->GetFrequency())) {
        loss += c.settings.response->getParamAtFreq(PN_TRANSLOSS, ray->GetFrequency());
    }
    const double change = (loss.dB[0] + loss.dB[1]) * 0.5;
    for (Ray* child : out) {
        child->SetVolumeID(volumeId);
        child->SetTraceCount(child->GetTraceCount() + 1);
        child->SetTransmitCount(child->GetTransmitCount() + 1);
        child->startInterfaceId = c.settings.faceId;
        child->AddPowerLossDB(change);
    }
}

// The normal at the ray's end, turned against the ray.
DirQUICK NormalAgainst(Ray* ray, Interface* face, eParamValue type) {
    DirQUICK normal(ray->hitNormal.data[0], ray->hitNormal.data[1], ray->hitNormal.data[2]);
    SurfaceShape* shape = face == nullptr ? nullptr : face->GetShape();
    if (shape != nullptr && (type == PV_TYPE_APERTUREFUNCTION || type == PV_TYPE_CLOSEDSURFACE)) {
        DirQUICK fromShape;
        if (shape->GetNormal(ray->end, fromShape)) normal = fromShape;
    }
    if (normal.Dot(ray->dir) > 0.0) normal *= -1.0;
    return normal;
}

void Append(std::vector<Ray*>& to, const std::vector<Ray*>& from) {
    to.insert(to.end(), from.begin(), from.end());
}

// The children of one ray: the transmitted ray or fan, then the reflected ones.
void TransmitOne(TransmitTask& task, Ray* ray, const HitContext& c) {
    const FaceSettings& s = c.settings;
    DirQUICK normal = NormalAgainst(ray, task.face, s.type);
    const double along = normal.Dot(ray->dir);
    CoordQUICK perp(normal.data[0] * along, normal.data[1] * along, normal.data[2] * along);
    VectorQUICK tang(ray->dir.data[0] - perp.data[0], ray->dir.data[1] - perp.data[1],
                     ray->dir.data[2] - perp.data[2]);
    const double sinOut = tang.GetLength() * c.sides.indexRatio;
    const double e1 = c.sides.in.permittivity;
    const double e2 = c.sides.out.permittivity;
    const bool tir = TransmitManage::TotalInternalReflection(ray, normal, e1, e2);
    if (TransmitManage::GetIncidenceAngle(ray, normal) <= NORMAL_INCIDENCE_LIMIT) return;
    std::vector<Ray*>& children = ScratchRays();
    if (!tir && s.TransmitOn() && s.transmit) {
        perp.PlusProd(tang, c.sides.indexRatio);
        if (s.Diffuse()) {
            FanAbout(task.face, s, ray->end, DirQUICK(perp.data[0], perp.data[1], perp.data[2]),
                     perp, children, ray);
        } else {
            children.push_back(NewChild(ray->end, perp));
        }
        AdjustTransmittedWith(ray, children, s.lossModel, normal, task.volumeOut, e1, e2, c);
        Append(task.transmitted, children);
        children.clear();
    }
    if ((s.ReflectOn() && s.reflect) || sinOut >= 1.0 || sinOut <= -1.0) {
        if (s.Diffuse()) {
            ReflectDiffuseWith(ray, children, s.lossModel, normal, task.volumeIn, c);
        } else {
            children.push_back(NewChild(ray->end, MirrorDirection(ray, normal)));
        }
        AdjustReflectedWith(ray, children, s.reflectModel, s.lossModel, normal, task.volumeIn, c);
        Append(task.reflected, children);
    }
}

// A context for the single-ray operations: the face's settings and the given
// permittivities, with the incoming medium's conductivity at the ray's frequency.
struct SingleHit {
    FaceSettings settings;
    SideNumbers sides;

    SingleHit(Interface* face, Ray* ray, Medium* mediumIn, double e1, double e2)
        : settings(ReadFaceSettings(face)) {
        const double f = ray->GetFrequency();
        sides.frequency = f;
        sides.in = ReadMedium(mediumIn, f);
        sides.wall = ReadMedium(settings.wallMedium, f);
        sides.in.permittivity = e1;
        sides.out.permittivity = e2;
    }
};

// The diffracted ray's loss by the model of its edge.
void ChargeDiffracted(Ray* parent, Ray* child, const DiffractSource& source, eParamValue model,
                      double angleDependence, double exponent) {
    if (model == PV_DIFFRACT_BERG) {
        const double a = parent->dir.Angle(child->dir);
        const double s =
            std::pow(a / 90.0, exponent) * std::sqrt(angleDependence / child->GetWavelength());
        const double d = parent->origin.diff(child->origin);
        child->SetStartPhaseDist((1.0 + s) * (child->GetStartPhaseDist() + d));
    } else if (model == PV_DIFFRACT_KED) {
        child->SetStartPhaseDist(parent->GetEndPhaseDist(parent->origin.diff(source.edgePoint)));
        child->AddPowerLossDB(child->GetPowerLossFromDistDB(-1.0));
    }
}

}  // namespace

bool TransmitManage::TransmitRays(TransmitTask& task) {
    if (task.rays.empty()) return false;
    if (task.face == nullptr) {
        Log::log(1) << "TransmitManage::TransmitRays: no face\n";
        return false;
    }
    const FaceSettings settings = ReadFaceSettings(task.face);
    // On equal media both sides are one volume: the far side is the face's own medium.
    Medium* mediumOut = task.mediumIn == task.mediumOut ? settings.wallMedium : task.mediumOut;
    SideNumbers sides;
    const HitContext context{task.face, settings, sides};
    for (auto& entry : task.rays) {
        Ray* ray = entry.second;
        if (ray == nullptr || ray->TransmitAgePastLimit()) continue;
        sides.Update(ray->GetFrequency(), task.mediumIn, mediumOut, settings.wallMedium);
        TransmitOne(task, ray, context);
    }
    return true;
}

bool TransmitManage::Reflect(Ray* ray, std::vector<Ray*>& out, DirQUICK& normal) {
    if (ray == nullptr) return false;
    out.push_back(NewChild(ray->end, MirrorDirection(ray, normal)));
    return true;
}

bool TransmitManage::ReflectDiffuse(Ray* ray, std::vector<Ray*>& out, eParamValue lossModel,
                                    Interface* face, DirQUICK& normal, int volumeId,
                                    double permittivityIn, double permittivityOut) {
    if (ray == nullptr || face == nullptr) return false;
    const SingleHit hit(face, ray, nullptr, permittivityIn, permittivityOut);
    ReflectDiffuseWith(ray, out, lossModel, normal, volumeId,
                       HitContext{face, hit.settings, hit.sides});
    return true;
}

bool TransmitManage::AdjustReflectedPower(Ray* ray, std::vector<Ray*>& out,
                                          eParamValue reflectModel, eParamValue lossModel,
                                          Interface* face, DirQUICK& normal, int volumeId,
                                          double permittivityIn, double permittivityOut) {
    if (ray == nullptr || face == nullptr) return false;
    const SingleHit hit(face, ray, nullptr, permittivityIn, permittivityOut);
    AdjustReflectedWith(ray, out, reflectModel, lossModel, normal, volumeId,
                        HitContext{face, hit.settings, hit.sides});
    return true;
}

bool TransmitManage::Transmit(Ray* ray, std::vector<Ray*>& out, CoordQUICK& direction) {
    if (ray == nullptr) return false;
    out.push_back(NewChild(ray->end, direction));
    return true;
}

bool TransmitManage::TransmitDiffuse(Ray* ray, std::vector<Ray*>& out, Interface* face,
                                     CoordQUICK& point, CoordQUICK& direction) {
    if (ray == nullptr || face == nullptr) return false;
    const FaceSettings settings = ReadFaceSettings(face);
    FanAbout(face, settings, point,
             DirQUICK(direction.data[0], direction.data[1], direction.data[2]), direction, out,
             ray);
    return true;
}

bool TransmitManage::AdjustTramnsmittedPower(Ray* ray, std::vector<Ray*>& out,
                                             eParamValue lossModel, Interface* face,
                                             DirQUICK& normal, Medium* mediumIn, int volumeId,
                                             double permittivityIn, double permittivityOut) {
    if (ray == nullptr || face == nullptr) return false;
    const SingleHit hit(face, ray, mediumIn, permittivityIn, permittivityOut);
    AdjustTransmittedWith(ray, out, lossModel, normal, volumeId, permittivityIn, permittivityOut,
                          HitContext{face, hit.settings, hit.sides});
    return true;
}

bool TransmitManage::TransmitDiffractSources(std::vector<DiffractSource>& sources,
                                             std::vector<Ray*>* out, Interface* face) {
    if (out == nullptr || face == nullptr) {
        Log::log(1) << "TransmitManage::TransmitDiffractSources: no face or no list\n";
        return false;
    }
    const eParamValue model = ReadParameter<eParamValue>(face, PN_BARDIFMDL, PV_DIFFRACT_OFF);
    if (model != PV_DIFFRACT_BERG && model != PV_DIFFRACT_KED) {
        sources.clear();
        return true;
    }
    const double gap = ReadParameter<double>(face, PN_RAYGAP, 2.0);
    const double angleDependence = ReadParameter<double>(face, PN_BARDIFANGDEP, 0.0);
    const double exponent = ReadParameter<double>(face, PN_BARDIFEXP, 0.0);
    std::vector<Ray*>& fan = ScratchRays();
    for (DiffractSource& source : sources) {
        fan.clear();
        Diffract(source, fan, face, gap, model);
        AdjustDiffractPower(source, fan, model, face, angleDependence, exponent);
        Append(*out, fan);
    }
    return true;
}

bool TransmitManage::Diffract(DiffractSource& source, std::vector<Ray*>& out, Interface* /*face*/,
                              double gap, eParamValue model) {
    Ray* ray = source.ray;
    if (ray == nullptr || gap <= 0.0) return false;
    const DirQUICK& e = source.edgeDir;
    const double along = ray->dir.Dot(e);
    // p: the ray's direction less its part along the edge; q at right angles to p and
    // the edge, on the side of inward and as long as p, so every direction of the fan
    // keeps the ray's slope along the edge.
    const VectorQUICK p(ray->dir.data[0] - along * e.data[0], ray->dir.data[1] - along * e.data[1],
                        ray->dir.data[2] - along * e.data[2]);
    // A ray along the edge has no cone to sweep.
    if (p.GetLength() < 1e-12) return false;
    VectorQUICK q;
    q.SetCross(e, p);
    if (q.Dot(source.inward) < 0.0) q *= -1.0;
    const double total = p.Angle(source.inward);
    const int n = static_cast<int>(std::lround(source.sweepAngle / gap));
    for (int i = 1; i < n; ++i) {
        const double alpha = static_cast<double>(i) / n * total * RADIANS_PER_DEGREE;
        const double cs = std::cos(alpha);
        const double sn = std::sin(alpha);
        const VectorQUICK d(cs * p.data[0] + sn * q.data[0] + along * e.data[0],
                            cs * p.data[1] + sn * q.data[1] + along * e.data[1],
                            cs * p.data[2] + sn * q.data[2] + along * e.data[2]);
        Ray* child = NewChild(source.edgePoint, d);
        child->diffractModel = model;
        out.push_back(child);
    }
    return true;
}

bool TransmitManage::AdjustDiffractPower(DiffractSource& source, std::vector<Ray*>& out,
                                         eParamValue model, Interface* /*face*/,
                                         double angleDependence, double exponent) {
    Ray* parent = source.ray;
    if (parent == nullptr) return false;
    CheckRaysFromPrevious(out, parent);
    for (Ray* child : out) {
        child->SetVolumeID(parent->GetVolumeID());
        child->SetTraceCount(child->GetTraceCount() + 1);
        // A diffraction counts as a reflection.
        child->SetReflectCount(child->GetReflectCount() + 1);
        child->SetDiffractSource(true);
        ChargeDiffracted(parent, child, source, model, angleDependence, exponent);
    }
    return true;
}

bool TransmitManage::CheckRaysFromPrevious(std::vector<Ray*>& out, Ray* parent) {
    if (parent == nullptr) return false;
    for (Ray* child : out) {
        child->setPrevRay(parent, -1.0);
        child->SetPower(parent->GetPower());
    }
    return true;
}

bool TransmitManage::TotalInternalReflection(Ray* ray, DirQUICK& normal, double permittivityIn,
                                             double permittivityOut) {
    if (ray == nullptr) return false;
    return LossManage::TotalInternalReflection(permittivityIn, permittivityOut,
                                               GetGrazingAngle(ray, normal));
}

double TransmitManage::GetIncidenceAngle(Ray* ray, DirQUICK& normal) {
    if (ray == nullptr) return 0.0;
    double a = ray->dir.Angle(normal);
    if (a > 90.0) a -= 90.0;
    return 90.0 - a;
}

double TransmitManage::GetGrazingAngle(Ray* ray, DirQUICK& normal) {
    return GetIncidenceAngle(ray, normal) * INCIDENCE_TO_RADIANS;
}
