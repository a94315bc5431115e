#include "geometry/Array.h"

#include "geometry/Coordinates.h"
#include "geometry/Rotation.h"
#include "geometry/triLink.h"

namespace {

constexpr const char* TYPE = "Array";
// rayGap is given in degrees and kept in radians.
constexpr double RADIANS_PER_DEGREE = 0.017453292519943295;

}  // namespace

Array::Array() { objTypeStr = TYPE; }

Array::~Array() { ClearPositions(); }

bool Array::checkParams() {
    if (paramsChecked) return false;
    GetParameterValue<eParamValue>(PN_ARRTYP, arrayType);
    GetParameterValue<eParamValue>(PN_ARRSHA, arrayShape);
    GetParameterValue<int>(PN_CNT, count);
    GetParameterValue<int>(PN_ARMS, armCount);
    GetParameterValue<double>(PN_ANG, angle);
    double gapDegrees = -1.0;
    if (GetParameterValue<double>(PN_RAYGAP, gapDegrees)) rayGap = gapDegrees * RADIANS_PER_DEGREE;
    GetParameterValue<double>(PN_SIZ, size);
    GetParameterValue<double>(PN_LMDA, wavelength);
    rotation = dynamic_cast<Rotation*>(GetChildTyped("Rotation"));
    positionsChanged = true;
    paramsChecked = true;
    return true;
}

int Array::GetPositionCount() const { return positions.empty() ? 1 : positionCount; }

Coordinates* Array::GetPosition(int index) const {
    if (index < 0 || index >= static_cast<int>(positions.size())) return nullptr;
    return positions[index];
}

void Array::ClearPositions() {
    for (Coordinates* position : positions) delete position;
    for (triLink* link : links) delete link;
    positions.clear();
    links.clear();
    solidAngles.clear();
    positionCount = 0;
}
