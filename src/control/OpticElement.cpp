#include "control/OpticElement.h"

#include "geometry/Coordinates.h"
#include "logging/Log.h"
#include "propagation/Interface.h"
#include "propagation/Volume.h"

SimulationResources OpticElement::resources;

const std::vector<eParamName> OpticElement::volumeProfileParameters = {
    PN_VOLTYP,      PN_RINDPROF,   PN_RINDMIN,       PN_RINDMAX,
    PN_RINDPEAKWID, PN_RINDOFFSET, PN_RINDPROFPARAM, PN_VOLSTEPDIST,
};

const std::vector<eParamName> OpticElement::volumeShapeParameters = {
    PN_OBJSHAP, PN_SIZ,    PN_SHAPRATIO1, PN_SHAPRATIO2, PN_SHAPRATIO3,    PN_WID,
    PN_BASE,    PN_BARHGT, PN_VOLPROPMDL, PN_VOLPROPEXP, PN_TRACERENDERAS,
};

OpticElement::OpticElement() { objTypeStr = "OpticElement"; }

bool OpticElement::Empty() {
    Interfaces::clear();
    Volumes::clear();
    return Component::Empty();
}

Interface* OpticElement::AddInterface(const std::string& name) {
    auto* face = new Interface();
    Interfaces::push_back(face);
    face->Initialize();
    AddChild(face);
    face->SetName(name);
    face->SetAvailableVolumes(*static_cast<Volumes*>(this));
    return face;
}

Volume* OpticElement::AddVolume() {
    auto* volume = new Volume();
    Volumes::push_back(volume);
    AddChild(volume);
    volume->Initialize();
    volume->SetName("vol" + std::to_string(Volumes::size()));

    std::string mediumName;
    if (GetParameterValue(PN_MED, mediumName)) {
        Medium* medium = resources.GetMedium(mediumName);
        if (medium == nullptr) {
            Log::log(2) << "OpticElement::AddVolume: no medium \"" << mediumName << "\"\n";
        }
        volume->SetMedium(medium);
    }
    PassParameters(volumeProfileParameters, volume);
    volume->SetParameterValue(PN_COORDSYS, PV_COORD_SPHERICAL);
    auto* centre = new Coordinates(0.0, 0.0, 0.0);
    centre->Initialize();
    volume->AddChild(centre);
    centre->SetName("centre");
    PassParameters(volumeShapeParameters, volume);
    return volume;
}

void OpticElement::PassParameters(const std::vector<eParamName>& names, Component* to) {
    for (eParamName name : names) PassParameter(name, this, to, name);
}
