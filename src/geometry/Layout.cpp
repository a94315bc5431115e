#include "geometry/Layout.h"

#include "geometry/Array.h"
#include "geometry/Coordinates.h"
#include "geometry/Direction.h"
#include "geometry/Rotation.h"
#include "geometry/Translation.h"

namespace {

constexpr const char* TYPE = "Layout";

}  // namespace

Layout::Layout(int n) : dimension(n), localTransformation(n), globalTransformation(n) {
    objTypeStr = TYPE;
    objName = TYPE;
}

Layout::~Layout() = default;

bool Layout::FromXml(CElement* element) {
    if (!Component::FromXml(element)) return false;
    LoadPointerByType<Translation>(&translation, element, "Translation");
    LoadPointerByType<Rotation>(&rotation, element, "Rotation");
    LoadPointerByType<Array>(&array, element, "Array");
    return buildTransformations();
}

template <typename T>
T* Layout::AddPart(T* part, const char* name) {
    part->Initialize();
    AddChild(part);
    part->SetName(name);
    return part;
}

bool Layout::InitTranslation() {
    if (translation == nullptr) translation = AddPart(new Translation(dimension), "translation");
    return true;
}

bool Layout::InitRotation(Coordinates* point, Direction* axis) {
    if (rotation == nullptr) rotation = AddPart(new Rotation(dimension), "rotation");
    if (point != nullptr) rotation->GetCoord()->CopyTr(*point);
    if (axis != nullptr) rotation->GetDir()->CopyTr(*axis);
    return true;
}

bool Layout::InitArray() {
    if (array == nullptr) array = AddPart(new Array(), "array");
    return true;
}

bool Layout::setToTranslation(Translation& other) {
    InitTranslation();
    if (other.GetCoord() == nullptr) return false;
    translation->SetSpeed(other.GetSpeed());
    return translation->Set(*other.GetCoord());
}

bool Layout::setToCentre(Coordinates& centre) {
    InitTranslation();
    return translation->Set(centre);
}

bool Layout::GetCentre(Coordinates& centre) {
    Update();
    Coordinates origin(dimension);
    return globalTransformation.Transform(origin, centre);
}

bool Layout::buildTransformations() {
    localTransformation.Initialize();
    globalTransformation.Initialize();
    if (scale != 1.0) {
        localTransformation.AddScale(scale);
        globalTransformation.AddScale(scale);
    }
    if (rotation != nullptr) {
        rotation->buildTrans();
        localTransformation.Add(*rotation);
        globalTransformation.Add(*rotation);
    }
    if (translation != nullptr) {
        translation->buildTrans();
        localTransformation.Add(*translation);
        globalTransformation.Add(*translation);
    }
    if (parent == nullptr) return true;
    Transformation* upper = parent->GetUpperTransformation();
    if (upper != nullptr) globalTransformation.Add(*upper);
    parent->SetTransformationApplied(true);
    return true;
}

bool Layout::Update() { return buildTransformations(); }

bool Layout::SetSize(double size) {
    scale = size;
    return buildTransformations();
}

bool Layout::ApplyTransformation(bool) {
    if (array != nullptr && array->PositionsChanged() && parent != nullptr &&
        parent->TestType("OpticElement")) {
        parent->QuickSetToChildren(true);
    }
    return true;
}
