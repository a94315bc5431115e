#include "radiation/Beam.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <vector>

#include "framework/NexoBase.h"
#include "geometry/Coordinates.h"
#include "geometry/Direction.h"
#include "geometry/Rotation.h"
#include "geometry/Transformation.h"
#include "logging/Log.h"
#include "radiation/BeamQUICK.h"
#include "radiation/LaunchParameters.h"
#include "radiation/RadiationPattern.h"
#include "radiation/Ray.h"
#include "radiation/RayLayout.h"
#include "radiation/TriRay.h"

namespace {

constexpr const char* TYPE = "Beam";
// The share of a layout's rays that are also made as test rays, unless told otherwise.
constexpr double DEFAULT_TEST_RATIO = 0.2;
// The dB figure that stands for no power.
constexpr double NO_POWER_DB = -120.0;

double PowerToDB(double power) { return power < 1e-12 ? NO_POWER_DB : 10.0 * std::log10(power); }

// The shape actions of a beam, under the names its layout knows them by.
const std::map<std::string, std::string>& LayoutActions() {
    static const std::map<std::string, std::string> actions = {
        {"line", "shapeLine"}, {"star6", "shapeStar6"}, {"square", "shapeSquare"}};
    return actions;
}

// Copies the ray's direction through the transformation.
void TurnDirection(Transformation& turn, Direction& scratch, Ray& ray) {
    scratch.SetValues(ray.dir.Get(0), ray.dir.Get(1), ray.dir.Get(2));
    turn.Transform(scratch);
    ray.dir.Copy(scratch);
}

}  // namespace

Beam::Beam() { objTypeStr = TYPE; }

Beam::~Beam() = default;

bool Beam::ReceiveAction(const std::string& action, double x, double y) {
    auto renamed = LayoutActions().find(action);
    if (renamed == LayoutActions().end()) return Component::ReceiveAction(action, x, y);
    return rayLayout != nullptr && rayLayout->ReceiveAction(renamed->second, x, y);
}

bool Beam::Empty() {
    Component::Empty();
    rayLayout = nullptr;
    radPattern = nullptr;
    return true;
}

bool Beam::FromXml(CElement* element) {
    if (!Component::FromXml(element)) return false;
    bool loaded = LoadPointerByType(&rayLayout, element, "RayLayout");
    LoadPointerByType(&radPattern, element, "RadiationPattern");
    return loaded;
}

bool Beam::Initialize() {
    Component::Initialize();
    InitializeLayout();
    InitializePattern();
    return true;
}

bool Beam::InitializeLayout() {
    RemoveChildrenType("RayLayout", true);
    rayLayout = nullptr;
    MakeChild(&rayLayout, "RayLayout");
    return rayLayout->InitializeDefault();
}

void Beam::InitializePattern() {
    RemoveChildrenType("RadiationPattern", true);
    radPattern = nullptr;
    MakeChild(&radPattern, "RadiationPattern");
}

bool Beam::QuickSetToChildren(bool force) {
    Component::QuickSetToChildren(force);
    Initialize();
    SetTestCount();
    PassParameters(LAYOUT_PARAMETERS, this, rayLayout);
    static constexpr eParamName COUNTS[] = {PN_CNT, PN_TCNT};
    PassParameters(COUNTS, this, rayLayout);
    PassParameters(PATTERN_PARAMETERS, this, radPattern);
    return true;
}

void Beam::SetTestCount() {
    int count = -1;
    if (!GetParameterValue<int>(PN_CNT, count) || count <= 0) return;
    double testRatio = DEFAULT_TEST_RATIO;
    bool ratioFound = GetParameterValue<double>(PN_TRAT, testRatio);
    int testCount = static_cast<int>(testRatio * count);
    if (testCount < 0 || !ratioFound) testCount = 0;
    testCount = std::min(testCount, count);
    SetParameterValue<int>(PN_CNT, count);
    SetParameterValue<int>(PN_TCNT, testCount);
}

bool Beam::SetActions(int actions) {
    return rayLayout != nullptr && rayLayout->SetActions(actions);
}

void Beam::Print() {
    Log::log(4) << "Beam " << objName << (rayLayout == nullptr ? ", no layout" : ", with layout")
                << (radPattern == nullptr ? ", no pattern" : ", with pattern") << "\n";
    Component::Print();
}

Direction* Beam::GetLayoutDirection() {
    return rayLayout == nullptr ? nullptr : rayLayout->GetDirection();
}

bool Beam::LoadRaysFromLayout(BeamQUICK* beam) {
    Log::log(4) << "bool Beam::LoadRaysFromLayout() - start\n";
    NexoBase::statusLog_p.PrintTime("Beam::LoadRaysFromLayout() .. enter");
    if (beam == nullptr) {
        Log::log(1) << "bool Beam::LoadRaysFromLayout() - no beam to fill\n";
        return false;
    }
    beam->ClearRays();
    beam->ClearTriRays();
    if (rayLayout == nullptr) {
        Log::log(1) << "bool Beam::LoadRaysFromLayout() - no layout in " << objName << "\n";
        return false;
    }

    std::vector<Ray*> testRays;
    rayLayout->SetTestRays(testRays);
    beam->AddTestRays(&testRays);

    std::vector<Ray*> rays;
    std::vector<TriRay*> triRays;
    if (!rayLayout->SetInitialRays(rays, useTriRays ? &triRays : nullptr)) {
        Log::log(1) << "bool Beam::LoadRaysFromLayout() - fail - setInitialRays\n";
        return false;
    }
    // The beam enters each ray under its id and gives it the beam's id.
    beam->AddRays(&rays);
    if (useTriRays) {
        beam->AddTriRays(&triRays);
        for (TriRay* triRay : triRays) delete triRay;
        beam->intensityTriraysToRays();
    }

    if (radPattern != nullptr) {
        StampPatternPower(beam);
        TurnRays(beam);
    } else {
        StampPlainPower(beam);
    }
    Log::log(4) << "Beam::LoadRaysFromLayout() .. exit\n";
    NexoBase::statusLog_p.PrintTime("Beam::LoadRaysFromLayout() .. exit");
    Log::log(4) << "bool Beam::LoadRaysFromLayout() - end\n";
    return true;
}

double Beam::SourcePower() {
    double power = 1.0;
    // Read in the parameter's own unit, so that the dB figure follows it.
    sParamDesc* desc = nullptr;
    GetParameterValue<double>(PN_PWRWATT, power, &desc);
    return power;
}

void Beam::StampPatternPower(BeamQUICK* beam) {
    double power = SourcePower();
    eParamValue type = PV_POINT;
    GetParameterValue<eParamValue>(PN_TYP, type);
    double powerDB = PowerToDB(power);
    // One vector serves every ray: a direction for a fan of rays, the origin for a plane.
    Coordinates toward(3);
    for (Ray* ray : *beam->GetRaysVecp()) {
        const VectorQUICK& v = type == PV_PLANE ? static_cast<VectorQUICK&>(ray->origin)
                                                : static_cast<VectorQUICK&>(ray->dir);
        toward.SetValues(v.Get(0), v.Get(1), v.Get(2));
        double gain = 1.0;
        radPattern->getIntensityDB(toward, gain);
        ray->SetPower(gain + powerDB);
        ray->SetSourcePowerDB(gain + powerDB);
    }
}

void Beam::StampPlainPower(BeamQUICK* beam) {
    double power = SourcePower();
    double powerDB = PowerToDB(power);
    for (Ray* ray : *beam->GetRaysVecp()) {
        ray->SetPower(power);
        ray->SetSourcePowerDB(powerDB);
    }
}

void Beam::TurnRays(BeamQUICK* beam) {
    double rotation = 0.0;
    double tilt = 0.0;
    GetParameterValue<double>(PN_GAINROT, rotation);
    GetParameterValue<double>(PN_GAINTLT, tilt);
    if (rotation == 0.0 && tilt == 0.0) return;

    Rotation aboutZ(3);
    aboutZ.Initialize();
    aboutZ.GetDir()->SetValues(0.0, 0.0, 1.0);
    aboutZ.SetStartAngle(rotation);
    aboutZ.buildTrans();
    Rotation aboutY(3);
    aboutY.Initialize();
    aboutY.GetDir()->SetValues(0.0, 1.0, 0.0);
    aboutY.SetStartAngle(tilt);
    aboutY.buildTrans();
    Transformation turn(3);
    turn.Initialize();
    turn.Add(aboutY);
    turn.Add(aboutZ);

    Direction scratch(3);
    for (Ray* ray : *beam->GetRaysVecp()) TurnDirection(turn, scratch, *ray);
    for (auto it = beam->TestRaysBeginIt(); it != beam->TestRaysEndIt(); ++it) {
        TurnDirection(turn, scratch, *it->second);
    }
}

bool Beam::Copy(Beam& other) {
    if (&other == this) return false;
    PassAllParameters(&other, this);
    useTriRays = other.useTriRays;
    if (other.rayLayout != nullptr) {
        if (rayLayout == nullptr) InitializeLayout();
        rayLayout->Copy(other.rayLayout);
    }
    if (other.radPattern != nullptr) {
        if (radPattern == nullptr) InitializePattern();
        PassParameters(PATTERN_PARAMETERS, other.radPattern, radPattern);
    }
    return true;
}
