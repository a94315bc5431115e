#pragma once

#include <set>

#include "framework/Lockable.h"
#include "framework/NexoBase.h"

class CElement;

// Records that a renderer fills from the object tree. Drawing is done outside this library,
// which only hands such records through; their contents are the renderer's own.
struct ObjectRenderData;
struct TextRenderData;

// The drawing side of an object: an id among render objects and the process-wide notion of
// the object under the pointer (tracked) and the selected one. It carries no simulation
// state; its render hints are read from a saved element for the benefit of a viewer.
class Renderable : public virtual NexoBase {
public:
    Renderable() = default;
    // A copy is a new render object: it has no render id until it is initialised.
    Renderable(const Renderable& other);
    Renderable& operator=(const Renderable&) = delete;
    ~Renderable() override;

    // Takes a fresh render id, giving back the previous one.
    bool Initialize();
    // Reads the render hints "A_WILREND", "A_HILIGHT", "A_PNTTHICK", "A_LINTHICK" and
    // "A_FILL" where present; missing ones keep their values. False for a null element.
    bool FromXml(CElement* element);

    int GetRenderObjectID() const { return renderObjectID; }
    bool GetWillRender() const { return willRender; }
    void SetWillRender(bool value) { willRender = value; }
    bool GetHighlighted() const { return highlighted; }
    void SetHighlighted(bool value) { highlighted = value; }
    int GetPointThickness() const { return pointThickness; }
    int GetLineThickness() const { return lineThickness; }
    bool GetFilled() const { return filled; }

    static Renderable* GetTracked();
    static void SetTracked(Renderable* object);
    static Renderable* GetSelected();
    static void SetSelected(Renderable* object);
    // True while the id is held by some render object.
    static bool RenderIdInUse(int id);

private:
    void ReleaseRenderId();

    int renderObjectID = -1;
    bool willRender = true;
    bool highlighted = false;
    int pointThickness = 1;
    int lineThickness = 1;
    bool filled = false;

    static int nextRenderObjectID;
    static std::set<int> RenderObjectIDSet;
    static Renderable* trackedObject;
    static Renderable* selectedObject;
    // Guards the render ids and the tracked and selected pointers.
    static Lockable rendableLock;
};
