#pragma once

#include <vector>

#include "framework/Component.h"
#include "geometry/CoordQUICK.h"
#include "geometry/DirQUICK.h"

class CElement;
class Coordinates;

// A component whose shape is one owned child of type Child: made under childName when
// missing, loaded from the sub-element named childType, refreshed with this object, and
// answering the normal and the point sets in its place.
template <typename Child>
class ShapeForwarder : public Component {
public:
    ~ShapeForwarder() override = default;

    // Makes the child when it is missing.
    bool Initialize() override;
    bool FromXml(CElement* element) override;
    // The child reads its parameters again, then the base behaviour.
    bool QuickSetToChildren(bool force) override;

    bool GetNormal(CoordQUICK& point, DirQUICK& normal);
    bool GetRenderPointSet(std::vector<Coordinates*>& points);
    bool GetMeshPointSet(std::vector<Coordinates*>& points);
    bool GetOutlinePointSet(std::vector<Coordinates*>& points);

protected:
    ShapeForwarder(const char* type, const char* childName, const char* childType);

    Child* child = nullptr;

private:
    const char* childName;
    const char* childType;
};

class Function;
class SurfaceFunction;
extern template class ShapeForwarder<Function>;
extern template class ShapeForwarder<SurfaceFunction>;
