#pragma once

#include "framework/Component.h"
#include "geometry/Transformation.h"

class Array;
class CElement;
class Coordinates;
class Direction;
class Rotation;
class Translation;

// Where an object stands: the optional child of a SimObject that holds one rotation, one
// translation and one array, and keeps two transformations for its owner: the local one
// (scale, rotation, translation) and the global one (the same followed by all the
// ancestors' transformations).
class Layout : public Component {
public:
    explicit Layout(int dimension = 3);
    ~Layout() override;

    bool FromXml(CElement* element) override;

    // Each makes its part as a child when it is missing.
    bool InitTranslation();
    // The axis point and direction are copied into the rotation when given.
    bool InitRotation(Coordinates* point, Direction* axis);
    bool InitArray();

    // The translation takes the other's move and speed.
    bool setToTranslation(Translation& other);
    // The translation moves the owner's origin to the centre.
    bool setToCentre(Coordinates& centre);
    // Where the owner's origin stands in the world: the origin through the global
    // transformation.
    bool GetCentre(Coordinates& centre);

    // Rebuilds both transformations: scale, rotation, translation, then (global only) the
    // transformation of the owner's parent. Marks the owner as transformed.
    bool buildTransformations();
    bool Update();
    // The scale of the owner, applied first.
    bool SetSize(double size);
    // Rebuilds an optic element's children when its array has new positions.
    bool ApplyTransformation(bool forward) override;

    Transformation& GetLocalTransformation() { return localTransformation; }
    Transformation& GetGlobalTransformation() { return globalTransformation; }
    Translation* GetTranslation() { return translation; }
    Rotation* GetRotation() { return rotation; }
    Array* GetArray() { return array; }
    double GetScale() const { return scale; }

private:
    // Initialises the new part and adds it as a child of the given name.
    template <typename T>
    T* AddPart(T* part, const char* name);

    int dimension;
    Transformation localTransformation;
    Transformation globalTransformation;
    Translation* translation = nullptr;
    Rotation* rotation = nullptr;
    Array* array = nullptr;
    double scale = 1.0;
};
