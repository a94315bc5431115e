#include "propagation/CityPart.h"

#include "control/OpticElement.h"
#include "propagation/Interface.h"

CityPart::CityPart() {
    objTypeStr = "CityPart";
    passShow = true;
}

bool CityPart::QuickSetToChildren(bool rebuild) {
    if (!rebuild) return true;
    OpticElement* element = GetElement("CityPart::QuickSetToChildren");
    if (element == nullptr) return false;
    RemoveBuilt();
    checkParams();
    needsRebuild = false;
    points = GetPoints();
    BuildBlock(element);
    return true;
}

void CityPart::BuildBlock(OpticElement* element) {
    const double level = ReadOr(PN_BARBSE, 0.0);
    const double tall = ReadOr(PN_BARHGT, 2.0);
    height = level + tall;
    const sSquare square = {0.0, 0.0, ReadOr(PN_SIZ, 10.0)};

    // The ground comes before the building's volume, which it does not join.
    FinishFace(MakeOutlineFace(element, "ground", level, square));
    MakeVolume(element);
    Interface* face1 = MakeOutlineFace(element, "face1", level, square);
    Interface* face2 = MakeOutlineFace(element, "face2", height, square);
    for (Interface* outline : {face1, face2}) {
        outline->SetNoHits(true);
        outline->SetHalfLoss(true);
        FinishFace(outline);
    }
    MakeGuidedSide(element, "guide", tall, face1, face2)->SetHalfLoss(true);
    FinishFace(MakeOutlineFace(element, "faceTop", height, square));
}
