// The transformation accessors of SimObject: an object with a layout moves, turns and
// repeats through it, and passes its global transformation down to its children.
#include <vector>

#include "framework/SimObject.h"
#include "geometry/Array.h"
#include "geometry/Coordinates.h"
#include "geometry/Layout.h"
#include "geometry/Transformation.h"
#include "logging/Log.h"

Transformation* SimObject::GetGlobalTransformation() {
    if (!hasLayout) return nullptr;
    if (layout == nullptr) InitLayout();
    layout->Update();
    return &layout->GetGlobalTransformation();
}

Transformation* SimObject::GetLocalTransformation() {
    if (layout == nullptr) return nullptr;
    layout->Update();
    return &layout->GetLocalTransformation();
}

// An ancestor without a layout passes on the placement of the one above it, so that a
// source's position reaches the launch layouts of its radiation and beams.
Transformation* SimObject::GetUpperTransformation() {
    for (SimObject* up = parent; up != nullptr; up = up->parent) {
        if (up->hasLayout) return up->GetGlobalTransformation();
    }
    return nullptr;
}

bool SimObject::InitLayout() {
    hasLayout = true;
    if (layout != nullptr) return true;
    layout = new Layout(3);
    layout->Initialize();
    AddChild(layout);
    return true;
}

bool SimObject::UpdateLayout() {
    if (layout == nullptr) return true;
    return layout->Update();
}

namespace {

// A position of the array, generated when the array is out of date; null when the array
// has no such position.
Coordinates* ArrayPosition(Array* array, int position) {
    std::vector<Coordinates*> positions;
    if (array == nullptr || !array->getPositions(positions, false, nullptr, nullptr, -1)) {
        return nullptr;
    }
    if (position < 0 || position >= static_cast<int>(positions.size())) return nullptr;
    return positions[position];
}

}  // namespace

int SimObject::GetLayoutPositionCount() {
    Array* array = layout == nullptr ? nullptr : layout->GetArray();
    std::vector<Coordinates*> positions;
    if (array == nullptr || !array->getPositions(positions, false, nullptr, nullptr, -1)) return 1;
    return static_cast<int>(positions.size());
}

bool SimObject::SetLayoutPosition(int position) {
    Coordinates* point = ArrayPosition(layout == nullptr ? nullptr : layout->GetArray(), position);
    if (point == nullptr) {
        Log::log(1) << "SimObject::SetLayoutPosition() - " << objName << " has no position "
                    << position << "\n";
        return false;
    }
    return layout->setToCentre(*point) && layout->Update();
}

void SimObject::TakeTranslationFromParentArray() {
    if (parent == nullptr || parent->layout == nullptr || !hasLayout) return;
    Coordinates* point = ArrayPosition(parent->layout->GetArray(), 0);
    if (point == nullptr) return;
    InitLayout();
    layout->setToCentre(*point);
    layout->Update();
}
