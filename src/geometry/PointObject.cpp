#include "geometry/PointObject.h"

#include "geometry/Coordinates.h"
#include "geometry/Direction.h"
#include "geometry/Transformation.h"
#include "logging/Log.h"

template <typename Self>
bool PointObject<Self>::ReceiveAction(const std::string& action, double x, double y) {
    return MoveByAction(action, x, y) || MatrixTemplate<double>::ReceiveAction(action, x, y);
}

template <typename Self>
bool PointObject<Self>::ApplyTransformation(bool forward) {
    Transformation* upper = GetUpperTransformation();
    if (upper == nullptr) return false;
    Self& self = static_cast<Self&>(*this);
    return forward ? upper->Transform(self) : upper->TransformInv(self);
}

template <typename Self>
void PointObject<Self>::Print() {
    Log::log(4) << objTypeStr << "::Print()\n";
    MatrixTemplate<double>::Print();
}

template class PointObject<Coordinates>;
template class PointObject<Direction>;
