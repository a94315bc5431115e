#include "geometry/ShapeForwarder.h"

#include "geometry/Function.h"
#include "geometry/SurfaceFunction.h"

template <typename Child>
ShapeForwarder<Child>::ShapeForwarder(const char* type, const char* childName,
                                      const char* childType)
    : childName(childName), childType(childType) {
    objTypeStr = type;
}

template <typename Child>
bool ShapeForwarder<Child>::Initialize() {
    if (!Component::Initialize()) return false;
    MakeChild(&child, childName);
    return true;
}

template <typename Child>
bool ShapeForwarder<Child>::FromXml(CElement* element) {
    if (!Component::FromXml(element)) return false;
    return LoadPointerByType<Child>(&child, element, childType);
}

template <typename Child>
bool ShapeForwarder<Child>::QuickSetToChildren(bool force) {
    if (child != nullptr) {
        // A Function only reads its parameters; a component passes the call down.
        if constexpr (requires(Child & c) { c.Recheck(); }) {
            child->Recheck();
        } else {
            child->QuickSetToChildren(force);
        }
    }
    return Component::QuickSetToChildren(force);
}

template <typename Child>
bool ShapeForwarder<Child>::GetNormal(CoordQUICK& point, DirQUICK& normal) {
    return child != nullptr && child->GetNormal(point, normal);
}

template <typename Child>
bool ShapeForwarder<Child>::GetRenderPointSet(std::vector<Coordinates*>& points) {
    return child != nullptr && child->GetRenderPointSet(points);
}

template <typename Child>
bool ShapeForwarder<Child>::GetMeshPointSet(std::vector<Coordinates*>& points) {
    return child != nullptr && child->GetMeshPointSet(points);
}

template <typename Child>
bool ShapeForwarder<Child>::GetOutlinePointSet(std::vector<Coordinates*>& points) {
    return child != nullptr && child->GetOutlinePointSet(points);
}

template class ShapeForwarder<Function>;
template class ShapeForwarder<SurfaceFunction>;
