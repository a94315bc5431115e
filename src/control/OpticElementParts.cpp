// The parts an optic element builds from its parameters: a source, a mirror, a lens, a
// waveguide, an object, a detector and a trace volume.
#include "control/OpticElement.h"
#include "geometry/Layout.h"
#include "logging/Log.h"
#include "propagation/Interface.h"
#include "propagation/Volume.h"
#include "radiation/EMSource.h"
#include "radiation/RadiationPattern.h"
#include "radiation/TraceVolume.h"

namespace {

// What a part's source takes from the element under the same name.
const std::vector<eParamName> kPartSourceParameters = {
    PN_SIZ,    PN_ANG,     PN_CNT,    PN_ARMS,   PN_LMDA,    PN_WAVFRM,  PN_WAVLOP,
    PN_WAVDUR, PN_PWRWATT, PN_GAINTX, PN_TRLIM,  PN_REFLIM,  PN_TRANLIM, PN_TRAT,
    PN_RPAT,   PN_RPFIL,   PN_SRCSIZ, PN_RPATAX, PN_RENDRAD,
};

// What a source's pattern takes from the element.
const std::vector<eParamName> kPatternParameters = {
    PN_RPAT, PN_RPFIL, PN_RPATAX, PN_RPATRES, PN_SCA, PN_GAINTX, PN_HPBWH, PN_HPBWV, PN_GAINMIN,
};

// What the faces of a part take from the element.
const std::vector<eParamName> kApertureParameters = {PN_APSIZE, PN_APSHAP, PN_SURFSHAP, PN_FNUM};

}  // namespace

bool OpticElement::RebuildPart(bool force) {
    Log::log(4) << "OpticElement::RebuildPart(bool force) type " << elementType
                << (force ? ", forced\n" : "\n");
    switch (static_cast<int>(elementType)) {
        case PV_ELEM_SOURCE:
            return RebuildSource();
        case PV_ELEM_MIRROR:
            return RebuildMirror();
        case PV_ELEM_LENS:
            return RebuildLens(false);
        case PV_ELEM_WAVEGUIDE:
            return RebuildLens(true);
        case PV_ELEM_OBJECT:
            return RebuildObject();
        case PV_ELEM_DETECTOR:
            return RebuildDetector();
        case PV_ELEM_TRACEVOLUME:
            return RebuildTraceVolume();
        case PV_ELEM_IMPORTER:
        case PV_ELEM_FDTDVOLUME:
            Log::log(2) << "OpticElement::RebuildPart: " << objName << " of type " << elementType
                        << " is not available\n";
            return false;
        default:
            Log::log(2) << "OpticElement::RebuildPart: " << objName << " has no part of type "
                        << elementType << "\n";
            return false;
    }
}

Interface* OpticElement::MakePartFace(const std::string& name, eParamValue type, Volume* inside) {
    Interface* face = AddInterface(name);
    face->SetQuickParameterValue(PN_TYP, type);
    PassParameters({PN_REFLECT, PN_TRANSMIT, PN_REFLECTRAT, PN_TRANSMITRAT}, face);
    face->SetReflect(ReadOr(PN_REFLECT, true));
    face->SetTransmit(ReadOr(PN_TRANSMIT, true));
    face->SetReflectRatio(ReadOr(PN_REFLECTRAT, 1.0));
    face->SetTransmitRatio(ReadOr(PN_TRANSMITRAT, 1.0));
    if (type != PV_TYPE_CLOSEDSURFACE) PassParameters(kApertureParameters, face);
    face->SetParameterValue(PN_VOL, inside != nullptr ? inside->GetName() : std::string());
    return face;
}

void OpticElement::FinishPartFace(Interface* face, Volume* inside) {
    face->QuickSetToChildren(true);
    face->ApplyTransformation(true);
    if (inside != nullptr && face->AddVolume(inside)) inside->AddInterface(face);
    Volume* surrounding = SurroundingVolume();
    if (face->AddVolume(surrounding->GetSimObjectID())) surrounding->AddInterface(face);
}

bool OpticElement::RebuildSource() {
    auto* source = new EMSource();
    Sources::push_back(source);
    AddChild(source);
    source->Initialize();
    source->SetName(NextFreeName("source"));
    PassParameters(kPartSourceParameters, source);
    PassParameter(PN_SRC, this, source, PN_TYP);
    PassParameter(PN_LAY, this, source, PN_ARRSHA);
    if (ReadOr(PN_RPATAPP_SRC, PV_FALSE) == PV_TRUE) {
        auto* pattern = new RadiationPattern();
        pattern->Initialize();
        source->AddChild(pattern);
        pattern->SetName("radPattern");
        PassParameters(kPatternParameters, pattern);
        pattern->checkParams();
        if (ReadOr(PN_RPATAPP_ARRAY, PV_FALSE) == PV_TRUE && GetLayout() != nullptr) {
            pattern->setRadPatternArray(GetLayout()->GetArray());
        }
        source->setRadPattern(pattern);
    } else {
        source->setRadPattern(nullptr);
    }
    source->setQuickSet(true);
    return source->QuickSetToChildren(true);
}

bool OpticElement::RebuildMirror() {
    Volume* inside = AddVolume();
    // The surface of the mirror; a three-dimensional aperture makes it two-sided, the back
    // face curving the other way.
    Interface* front = MakePartFace("inerface1", PV_TYPE_APERTUREFUNCTION, inside);
    PassParameter(PN_FACEMULT, this, front, PN_FACEMULT);
    FinishPartFace(front, inside);
    const eParamValue shape = ReadOr(PN_APSHAP, PV_APSHAPE_CIRCLE);
    if (shape == PV_APSHAPE_CIRCLE3D || shape == PV_APSHAPE_SQUARE3D) {
        Interface* back = MakePartFace("inerface2", PV_TYPE_APERTUREFUNCTION, inside);
        back->SetQuickParameterValue(PN_FACEMULT, -ReadOr(PN_FACEMULT, 1.0));
        FinishPartFace(back, inside);
    }
    return true;
}

bool OpticElement::RebuildLens(bool waveguide) {
    const eParamValue sequence = ReadOr(PN_SEQ, PV_EMPTY);
    if (sequence < PV_SEQ_DCX || sequence > PV_SEQ_PCV) {
        Log::log(1) << "OpticElement::RebuildPart: " << objName << " has no shapeSequence\n";
        return false;
    }
    // A concave lens curves both faces the other way; a plano lens has a flat second face.
    const double sign = sequence == PV_SEQ_DCV || sequence == PV_SEQ_PCV ? -1.0 : 1.0;
    const bool plano = sequence == PV_SEQ_PCX || sequence == PV_SEQ_PCV;
    const double thickness = ReadOr(PN_THICKNESS, 0.01);
    const bool stepped = waveguide && ReadOr(PN_VOLTYP, PV_VOL_HOMOGENEOUS) == PV_VOL_STEPPED;
    const int steps = stepped ? std::max(1, ReadOr(PN_VOLSTEPS, 1)) : 1;
    for (int step = 0; step < steps; step++) {
        Volume* inside = AddVolume();
        if (step > 0) {
            // Each further step has the mean index of the two sides.
            inside->setRefIndex(0.5 * (ReadOr(PN_RINDMIN, 1.0) + ReadOr(PN_RINDMAX, 1.0)));
        }
        const double offset = step * thickness;
        Interface* first = MakePartFace("face1", PV_TYPE_APERTUREFUNCTION, inside);
        first->SetQuickParameterValue(PN_FACEMULT, sign);
        first->SetQuickParameterValue(PN_SURFOFFSET, offset);
        Interface* second = MakePartFace("face2", PV_TYPE_APERTUREFUNCTION, inside);
        second->SetQuickParameterValue(PN_FACEMULT, -sign);
        second->SetQuickParameterValue(PN_SURFOFFSET, offset + thickness);
        if (plano) second->SetQuickParameterValue(PN_SURFSHAP, PV_SURF_FLAT);
        if (waveguide) {
            PassParameter(PN_APSIZEIN, this, first, PN_APSIZE);
            PassParameter(PN_APSIZEOUT, this, second, PN_APSIZE);
        }
        FinishPartFace(first, inside);
        FinishPartFace(second, inside);
        const std::string guideName = steps > 1 ? "guide" + std::to_string(step + 1) : "guide";
        Interface* guide = MakePartFace(guideName, PV_TYPE_APERTUREEXTEND, inside);
        guide->SetQuickParameterValue(PN_EXTLENGTH, thickness);
        guide->SetGuideInterfaces_outer(first, second);
        FinishPartFace(guide, inside);
    }
    return true;
}

bool OpticElement::RebuildObject() {
    const eParamValue shape = ReadOr(PN_OBJSHAP, PV_EMPTY);
    if (shape != PV_SHAPE_SPHERE && shape != PV_SHAPE_CYLINDER && shape != PV_SHAPE_BLOCK) {
        Log::log(1) << "OpticElement::RebuildPart: " << objName << " has no objectShapeName\n";
        return false;
    }
    Volume* inside = AddVolume();
    if (shape == PV_SHAPE_SPHERE) {
        Interface* face = MakePartFace("face1", PV_TYPE_CLOSEDSURFACE, inside);
        face->SetQuickParameterValue(PN_SURFSHAP, PV_SURF_SPHERICAL);
        PassParameter(PN_SIZ, this, face, PN_SIZ);
        FinishPartFace(face, inside);
        return true;
    }
    // A cylinder or a block: two end faces of the shape's outline joined by a side.
    const eParamValue outline = shape == PV_SHAPE_CYLINDER ? PV_APSHAPE_CIRCLE : PV_APSHAPE_SQUARE;
    const double size = ReadOr(PN_SIZ, 1.0);
    Interface* ends[2] = {nullptr, nullptr};
    for (int i = 0; i < 2; i++) {
        ends[i] = MakePartFace("face" + std::to_string(i + 1), PV_TYPE_APERTUREFUNCTION, inside);
        ends[i]->SetQuickParameterValue(PN_APSHAP, outline);
        ends[i]->SetQuickParameterValue(PN_APSIZE, size);
        ends[i]->SetQuickParameterValue(PN_SURFSHAP, PV_SURF_FLAT);
        ends[i]->SetQuickParameterValue(PN_SURFOFFSET, i * size);
        FinishPartFace(ends[i], inside);
    }
    Interface* guide = MakePartFace("guide", PV_TYPE_APERTUREEXTEND, inside);
    guide->SetQuickParameterValue(PN_EXTLENGTH, size);
    guide->SetGuideInterfaces_outer(ends[0], ends[1]);
    FinishPartFace(guide, inside);
    return true;
}

bool OpticElement::RebuildDetector() {
    Interface* face = MakePartFace("interface1", PV_TYPE_APERTUREFUNCTION, nullptr);
    FinishPartFace(face, nullptr);
    return face->SetDetection(true);
}

bool OpticElement::RebuildTraceVolume() {
    auto* grid = new TraceVolume();
    grid->Initialize();
    AddChild(grid);
    grid->SetName("traceVolume");
    TraceVolumes::push_back(grid);
    SizeTraceVolume(grid);
    SetTraceVolumePowerRange(grid);
    return grid->InitTestPoints(this);
}
