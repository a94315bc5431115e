#include "propagation/PathPoints.h"

#include <string>

#include "documents/CElement.h"
#include "geometry/Coordinates.h"
#include "logging/Log.h"

namespace {

bool IsStandardName(const std::string& name) {
    return name == "centrePoint" || name == "startPoint";
}

}  // namespace

std::vector<Coordinates*> GetPathPoints(SimObject& owner) {
    std::vector<Coordinates*> points;
    for (int position = 0; position < owner.GetChildCount(); ++position) {
        SimObject* child = owner.GetChild(position, true);
        if (child == nullptr || !child->TestType("Coordinates")) continue;
        if (IsStandardName(child->GetName())) continue;
        if (auto* point = dynamic_cast<Coordinates*>(child)) points.push_back(point);
    }
    return points;
}

Coordinates* AddPathPoint(SimObject& owner, const Coordinates& point) {
    auto* copy = new Coordinates(point);
    copy->Initialize();
    owner.AddChild(copy);
    copy->SetName("point");
    copy->setQuickSet(true);
    return copy;
}

bool LoadPathPoints(SimObject& owner, CElement* element) {
    if (element == nullptr) return false;
    for (Coordinates* point : GetPathPoints(owner)) owner.RemoveChild(point, true);
    bool loadedAll = true;
    auto range = element->elements().equal_range("Coordinates");
    for (auto entry = range.first; entry != range.second; ++entry) {
        std::string name;
        entry->second->getAttributeValue(A_NAME, name);
        if (IsStandardName(name)) continue;
        auto* point = new Coordinates();
        point->SetParent(&owner);
        point->Initialize();
        if (!point->FromXml(entry->second)) {
            Log::log(1) << "LoadPathPoints: a point of " << owner.GetName() << " failed to load\n";
            owner.RemoveChild(point, true);
            loadedAll = false;
        }
    }
    return loadedAll;
}
