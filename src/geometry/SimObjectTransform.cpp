// The transformation accessors of SimObject: an object with a layout moves, turns and
// repeats through it, and passes its global transformation down to its children.
#include "framework/SimObject.h"
#include "geometry/Array.h"
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

Transformation* SimObject::GetUpperTransformation() {
    if (parent == nullptr) return nullptr;
    return parent->GetGlobalTransformation();
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

int SimObject::GetLayoutPositionCount() {
    if (layout == nullptr || layout->GetArray() == nullptr) return 1;
    return layout->GetArray()->GetPositionCount();
}

bool SimObject::SetLayoutPosition(int position) {
    Array* array = layout == nullptr ? nullptr : layout->GetArray();
    Coordinates* point = array == nullptr ? nullptr : array->GetPosition(position);
    if (point == nullptr) {
        Log::log(1) << "SimObject::SetLayoutPosition() - " << objName << " has no position "
                    << position << "\n";
        return false;
    }
    return layout->setToCentre(*point) && layout->Update();
}
