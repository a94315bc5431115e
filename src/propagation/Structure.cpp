#include "propagation/Structure.h"

#include <algorithm>

#include "control/OpticElement.h"
#include "geometry/Aperture.h"
#include "geometry/Coordinates.h"
#include "geometry/Direction.h"
#include "geometry/Function.h"
#include "geometry/Layout.h"
#include "geometry/Transformation.h"
#include "logging/Log.h"
#include "propagation/FreqResponse.h"
#include "propagation/Interface.h"
#include "propagation/PathPoints.h"
#include "propagation/Volume.h"
#include "radiation/Medium.h"

namespace {

// What every face takes from its structure under the same name.
const eParamName kFaceParameters[] = {
    PN_TRCMIN,       PN_SCLL,      PN_BARREFMDL, PN_BARREFSPAR, PN_BARREFALPAR,
    PN_BARTRNMDL,    PN_BARLOSMDL, PN_MED,       PN_THICKNESS,  PN_BARDIFMDL,
    PN_BARDIFANGDEP, PN_BARDIFEXP, PN_RAYGAP,    PN_DIFFANG,    PN_RDET,
};

void AddNamedPoint(SimObject& owner, double x, double y, double z, const char* name) {
    auto* point = new Coordinates(x, y, z);
    point->Initialize();
    owner.AddChild(point);
    point->SetName(name);
}

// A direction of the element's frame turned as the element's transformation turns the
// volume's centre; unchanged when the element has none.
DirQUICK InScene(Volume* volume, const DirQUICK& local) {
    Direction moved(local);
    if (Transformation* upper = volume->GetUpperTransformation()) upper->Transform(moved);
    return DirQUICK(moved.Get(0), moved.Get(1), moved.Get(2));
}

eParamValue AsValue(bool flag) { return flag ? PV_TRUE : PV_FALSE; }

template <typename T>
void Erase(std::vector<T*>& handles, T* item) {
    handles.erase(std::remove(handles.begin(), handles.end(), item), handles.end());
}

}  // namespace

Structure::Structure() { objTypeStr = "Structure"; }

Structure::~Structure() {
    for (int id : static_cast<FaceIds&>(*this)) {
        if (auto* face = dynamic_cast<Interface*>(GetObjectGlobally(id)))
            face->SetResponse(nullptr);
    }
    for (int id : volumeIds) {
        if (Volume* volume = Volume::GetVolumeFromId(id)) volume->SetResponse(nullptr);
    }
}

bool Structure::FromXml(CElement* element) {
    if (!LoadStructure(element)) return false;
    checkParams();
    needsRebuild = false;
    PrepareReload();
    if (!QuickSetToChildren(true)) {
        Log::log(1) << "Structure::FromXml: " << objName << " was loaded but not rebuilt\n";
    }
    return true;
}

bool Structure::LoadStructure(CElement* element) {
    if (!Component::FromXml(element)) return false;
    bool loaded = LoadPathPoints(*this, element);
    FreqResponseArray::clear();
    RemoveChildrenType("FreqResponse", true);
    auto* entries = static_cast<FreqResponseArray*>(this);
    return LoadVectorByType<FreqResponse>(entries, element, "FreqResponse") && loaded;
}

void Structure::PrepareReload() {}

bool Structure::checkParams() {
    if (!paramsChecked) needsRebuild = true;
    GetParameterValue(PN_REFLECT, reflect);
    GetParameterValue(PN_TRANSMIT, transmit);
    GetParameterValue(PN_REFLECTRAT, reflectRatio);
    GetParameterValue(PN_TRANSMITRAT, transmitRatio);
    GetParameterValue(PN_MED, mediumName);
    thickness = ReadOr(PN_THICKNESS, 0.1);
    if (GetParameterp(PN_RDET) == nullptr) SetParameterValue(PN_RDET, PV_RES_MEDIUM);
    paramsChecked = true;
    return true;
}

void Structure::Print() {
    Log::log(4) << objTypeStr << " " << objName << ": " << GetPoints().size() << " points, "
                << FaceIds::size() << " faces, volume " << volumeId << ", thickness " << thickness
                << ", medium \"" << mediumName << "\"\n";
    Component::Print();
}

bool Structure::AddPoint(const Coordinates& point) { return AddPathPoint(*this, point) != nullptr; }

std::vector<Coordinates*> Structure::GetPoints() { return GetPathPoints(*this); }

OpticElement* Structure::GetElement(const char* caller) {
    auto* element = dynamic_cast<OpticElement*>(GetParent());
    if (element == nullptr) {
        Log::log(1) << caller << ": " << objName << " has no OpticElement parent to build in\n";
    }
    return element;
}

bool Structure::RemoveBuilt() {
    for (int id : static_cast<FaceIds&>(*this)) {
        auto* face = dynamic_cast<Interface*>(GetObjectGlobally(id));
        if (face != nullptr && !face->TestName("outerLimit")) RemoveFace(face);
    }
    for (int id : volumeIds) RemoveVolume(Volume::GetVolumeFromId(id));
    FaceIds::clear();
    Faces::clear();
    volumeIds.clear();
    volumeId = -1;
    return true;
}

void Structure::Join(Interface* face, Volume* volume) {
    if (volume != nullptr && face->AddVolume(volume)) volume->AddInterface(face);
}

bool Structure::RemoveFace(Interface* face) {
    // The face leaves its volumes first, on both sides of the join.
    for (int id : {face->GetVolumeA(), face->GetVolumeB()}) {
        if (Volume* volume = Volume::GetVolumeFromId(id)) volume->RemoveInterface(face);
        face->RemoveVolume(id);
    }
    SimObject* owner = face->GetParent();
    if (auto* element = dynamic_cast<OpticElement*>(owner)) {
        Erase<Interface>(*element, face);
    }
    if (owner == nullptr || !owner->RemoveChild(face, true)) delete face;
    return true;
}

bool Structure::RemoveVolume(Volume* volume) {
    if (volume == nullptr) return false;
    SimObject* owner = volume->GetParent();
    if (auto* element = dynamic_cast<OpticElement*>(owner)) {
        Erase<Volume>(*element, volume);
    }
    if (owner == nullptr || !owner->RemoveChild(volume, true)) delete volume;
    return true;
}

bool Structure::PassToInterface(Structure* from, Interface* face) {
    if (from == nullptr || face == nullptr) {
        Log::log(1) << "Structure::PassToInterface: no structure or no face\n";
        return false;
    }
    eParamValue colour = PV_WHITE;
    eParamNumber bright = PNUM_NONE;
    Medium* medium = OpticElement::resources.GetMedium(from->mediumName);
    if (medium != nullptr && medium->GetColorBrightTrans(colour, bright)) {
        face->SetParameterValue(PN_COLOR, colour);
        face->SetParameterValue(PN_BRGHT, bright);
    }
    for (eParamName name : kFaceParameters) PassParameter(name, from, face, name);
    if (from->passShow) {
        PassParameter(PN_SHOW, from, face, PN_SHOW);
        PassParameter(PN_WHOWAS, from, face, PN_WHOWAS);
    }
    face->SetSaveToXML(false);
    from->FaceIds::push_back(face->GetSimObjectID());
    from->Faces::push_back(face);

    Join(face, Volume::GetVolumeFromId(OpticElement::resources.GetDefaultVolumeId()));
    Join(face, Volume::GetVolumeFromId(from->volumeId));

    // The parameters as well as the fields, so that the face reads the same when it
    // checks its parameters again.
    face->SetParameterValue(PN_REFLECT, AsValue(from->reflect));
    face->SetParameterValue(PN_TRANSMIT, AsValue(from->transmit));
    face->SetParameterValue(PN_REFLECTRAT, from->reflectRatio);
    face->SetParameterValue(PN_TRANSMITRAT, from->transmitRatio);
    face->SetReflect(from->reflect);
    face->SetTransmit(from->transmit);
    face->SetReflectRatio(from->reflectRatio);
    face->SetTransmitRatio(from->transmitRatio);
    face->SetResponse(from);
    return true;
}

Interface* Structure::MakeFace(OpticElement* element, const std::string& name, eParamValue type) {
    Interface* face = element->AddInterface(name);
    face->SetQuickParameterValue(PN_TYP, type);
    return face;
}

Interface* Structure::MakeStripFace(OpticElement* element, const sStrip& strip,
                                    const std::string& name, const Coordinates& from,
                                    const Coordinates& to) {
    Interface* face = MakeFace(element, name, strip.type);
    face->SetQuickParameterValue(PN_BASE, strip.base);
    face->SetQuickParameterValue(PN_HEIGHT, strip.height);
    if (strip.width > 0.0) face->SetQuickParameterValue(PN_WID, strip.width);
    if (strip.type == PV_TYPE_POINTPOINTWIDTH) {
        // A flat strip lies at its height, as wide as its width.
        face->SetQuickParameterValue(PN_APSHAP, PV_APSHAPE_POINTSWIDTH);
        face->SetQuickParameterValue(PN_APSIZE, strip.width);
        face->SetQuickParameterValue(PN_SURFSHAP, PV_SURF_FLAT);
        face->SetQuickParameterValue(PN_SURFOFFSET, strip.height);
    }
    face->AddBarrierPoint(from);
    face->AddBarrierPoint(to);
    PassToInterface(this, face);
    return face;
}

Interface* Structure::MakeOutlineFace(OpticElement* element, const std::string& name, double level,
                                      const sSquare& square) {
    Interface* face =
        MakeFace(element, name, points.empty() ? PV_TYPE_APERTUREFUNCTION : PV_TYPE_POLYGON);
    face->SetQuickParameterValue(PN_SURFSHAP, PV_SURF_FLAT);
    face->SetQuickParameterValue(PN_SURFOFFSET, level);
    if (points.empty()) {
        face->SetQuickParameterValue(PN_APSHAP, PV_APSHAPE_SQUARE);
        face->SetQuickParameterValue(PN_APSIZE, square.size);
        // The square stands around the centre point of its outline.
        face->MakeShapeAndAperture();
        auto* centre = dynamic_cast<Coordinates*>(
            face->GetAperture()->GetFunction()->GetChildNamed("centrePoint"));
        if (centre != nullptr) {
            centre->SetValue(0, square.x);
            centre->SetValue(1, square.y);
        }
    } else {
        face->SetQuickParameterValue(PN_APSHAP, PV_APSHAPE_POINTOUTLINE);
        for (Coordinates* point : points) face->AddBarrierPoint(*point);
    }
    PassToInterface(this, face);
    return face;
}

Interface* Structure::MakeGuidedSide(OpticElement* element, const std::string& name, double length,
                                     Interface* start, Interface* end) {
    Interface* side = MakeFace(element, name, PV_TYPE_APERTUREEXTEND);
    side->SetQuickParameterValue(PN_EXTLENGTH, length);
    PassToInterface(this, side);
    side->SetGuideInterfaces_outer(start, end);
    FinishFace(side);
    return side;
}

Volume* Structure::MakeVolume(OpticElement* element) {
    Volume* volume = element->AddVolume();
    volume->SetName("barrierVol");
    volume->SetResponse(this);
    volume->SetSaveToXML(false);
    if (!mediumName.empty()) {
        volume->SetParameterValue(PN_MED, mediumName);
        if (Medium* medium = OpticElement::resources.GetMedium(mediumName)) {
            volume->SetMedium(medium);
        }
    }
    volumeId = volume->GetSimObjectID();
    volumeIds.push_back(volumeId);
    return volume;
}

// The wall shape measures length along the main axis, apertureSizeInner + size along the
// second and apertureSizeInner along the third. So the box's length goes to length, its
// thickness to apertureSizeInner and what its span exceeds the thickness by to size. The
// volume's centre is zeroed and moved by the volume's transformation whenever it is read
// again, so the box's centre becomes the translation of the volume's own layout, on top of
// which the element's transformation applies.
void Structure::PlaceBox(Volume* volume, const sBox& box) {
    volume->SetParameterValue(PN_LEN, box.length);
    volume->SetParameterValue(PN_APSIZEIN, box.thickness);
    volume->SetParameterValue(PN_SIZ, box.span - box.thickness);
    volume->InitLayout();
    Coordinates centre(box.centre.data[0], box.centre.data[1], box.centre.data[2]);
    volume->GetLayout()->setToCentre(centre);
    volume->UpdateSize();
    volume->SetAxes(InScene(volume, box.along), InScene(volume, box.second));
}

void Structure::FinishFace(Interface* face) {
    eParamValue type = PV_EMPTY;
    face->GetParameterValue(PN_TYP, type);
    if (type != PV_TYPE_POINTPOINTHEIGHT && type != PV_TYPE_POINTPOINTWIDTHHEIGHT) {
        // The surface kinds: an outline on a flat surface, projected along the vertical.
        face->MakeShapeAndAperture();
        Aperture* aperture = face->GetAperture();
        if (aperture->GetChildNamed("Axis") == nullptr) AddNamedPoint(*aperture, 0, 0, 1, "Axis");
        if (type == PV_TYPE_POINTPOINTWIDTH || type == PV_TYPE_POLYGON) {
            for (Coordinates* point : face->GetBarrierPoints()) {
                AddNamedPoint(*aperture->GetFunction(), point->Get(0), point->Get(1), point->Get(2),
                              "outlinePoint");
            }
        }
    }
    face->QuickSetToChildren(true);
    face->ApplyTransformation(true);
}
