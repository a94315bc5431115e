#include "propagation/Detection.h"

#include "logging/Log.h"
#include "radiation/BeamQUICK.h"
#include "radiation/EMRadiation.h"
#include "radiation/Ray.h"

Detection::Detection() { objTypeStr = "Detection"; }

Detection::~Detection() { profile.Clear(); }

bool Detection::Empty() {
    profile.Clear();
    // The radiation is a child: the component deletes it with its beams.
    radiation = nullptr;
    beamId = -1;
    return Component::Empty();
}

BeamQUICK* Detection::GetBeam() { return beamId < 0 ? nullptr : GETBEAM(beamId); }

BeamQUICK* Detection::CurrentBeam() {
    if (radiation == nullptr) {
        radiation = new EMRadiation();
        radiation->Initialize();
        AddChild(radiation);
        radiation->SetName("detectedRadiation");
        radiation->SetSaveToXML(false);
        radiation->setRayOrigin(false);
    }
    BeamQUICK* beam = GetBeam();
    if (beam == nullptr) {
        beam = new BeamQUICK();
        beam->setRayOrigin(false);
        radiation->AddBeamRaysp(beam);
        beamId = beam->GetBeamId();
    }
    return beam;
}

bool Detection::DetectRay(Ray* ray) {
    if (ray == nullptr) return false;
    auto* copy = new Ray(*ray);
    CurrentBeam()->AddRay(copy);
    return profile.Addhit(copy);
}

bool Detection::copyTriRays(std::vector<TriRay*>* triangles) {
    return CurrentBeam()->AddTriRays(triangles);
}

bool Detection::Evaluate() {
    eParamValue type = PV_EMPTY;
    double resolution = 0.0;
    double heightRatio = 0.0;
    eParamValue heightColor = PV_EMPTY;
    eParamValue colorScale = PV_EMPTY;
    GetParameterValue(PN_PROFTYP, type);
    GetParameterValue(PN_PROFRES, resolution);
    GetParameterValue(PN_PROFHGHTRAT, heightRatio);
    GetParameterValue(PN_PROFCOL, heightColor);
    GetParameterValue(PN_COLSCA, colorScale);
    return profile.Evaluate(GetBeam(), type, resolution, heightRatio, heightColor, colorScale);
}

bool Detection::Clear() {
    profile.Clear();
    if (radiation != nullptr) {
        RemoveChild(radiation, true);
        radiation = nullptr;
    }
    beamId = -1;
    return true;
}
