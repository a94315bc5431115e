#pragma once

#include <vector>

#include "framework/Lockable.h"
#include "framework/NexoBase.h"
#include "geometry/CoordQUICK.h"
#include "geometry/DirQUICK.h"

class MeshElement;
class Ray;
struct RayFaceMiss;

// A flat bag of triangles culled as a whole by one bounding sphere. The group owns its
// elements. It is lockable because its elements keep scratch state: threads that share a
// mesh hold the group for the length of a distance call (see DistanceToMesh).
class MeshGroup : public Lockable, public virtual NexoBase {
public:
    MeshGroup() = default;
    MeshGroup(const MeshGroup&) = delete;
    MeshGroup& operator=(const MeshGroup&) = delete;
    ~MeshGroup() override;

    // Takes ownership; the bound is recomputed at the next use.
    bool addElement(MeshElement* element);
    int count() const { return static_cast<int>(elements.size()); }
    // Recomputes centre and radius from the elements' box when they changed. A group with
    // no elements keeps the bound it had.
    bool update();
    // Nearest hit of the ray over the elements, unless the bounding sphere rules the group
    // out. limit -1 means unlimited; a group whose centre lies behind the origin is always
    // tested. True on a hit at or beyond 1e-8, with the distance in result and the hit
    // element's normal in *normal, which is allocated when null. Allocates nothing else.
    bool distance(double& result, CoordQUICK& origin, DirQUICK& dir, DirQUICK** normal,
                  double limit);
    // Near misses of the ray with every element, no culling. Always true.
    bool missDistance(Ray* ray, std::vector<RayFaceMiss*>& misses, double gap);

    std::vector<MeshElement*> elements;
    bool needsUpdate = true;
    CoordQUICK centre{0.0, 0.0, 0.0};
    // -1 until a bound has been computed.
    double radius = -1.0;

private:
    // True when the ray may reach the bounding sphere within limit.
    bool SphereReachable(CoordQUICK& origin, DirQUICK& dir, double limit) const;
};
