#include "framework/Renderable.h"

#include "documents/CElement.h"

int Renderable::nextRenderObjectID = 0;
std::set<int> Renderable::RenderObjectIDSet;
Renderable* Renderable::trackedObject = nullptr;
Renderable* Renderable::selectedObject = nullptr;
Lockable Renderable::rendableLock;

Renderable::Renderable(const Renderable& other)
    : NexoBase(),
      willRender(other.willRender),
      highlighted(other.highlighted),
      pointThickness(other.pointThickness),
      lineThickness(other.lineThickness),
      filled(other.filled) {}

Renderable::~Renderable() {
    rendableLock.lock(true);
    if (trackedObject == this) trackedObject = nullptr;
    if (selectedObject == this) selectedObject = nullptr;
    rendableLock.unlock();
    ReleaseRenderId();
}

bool Renderable::Initialize() {
    rendableLock.lock(true);
    if (renderObjectID != -1) RenderObjectIDSet.erase(renderObjectID);
    while (RenderObjectIDSet.count(nextRenderObjectID) > 0) nextRenderObjectID++;
    renderObjectID = nextRenderObjectID++;
    RenderObjectIDSet.insert(renderObjectID);
    rendableLock.unlock();
    return true;
}

bool Renderable::FromXml(CElement* element) {
    if (element == nullptr) return false;
    element->getAttributeValue(A_WILREND, willRender);
    element->getAttributeValue(A_HILIGHT, highlighted);
    element->getAttributeValue(A_PNTTHICK, pointThickness);
    element->getAttributeValue(A_LINTHICK, lineThickness);
    element->getAttributeValue(A_FILL, filled);
    return true;
}

Renderable* Renderable::GetTracked() {
    rendableLock.lock(true);
    Renderable* object = trackedObject;
    rendableLock.unlock();
    return object;
}

void Renderable::SetTracked(Renderable* object) {
    rendableLock.lock(true);
    trackedObject = object;
    rendableLock.unlock();
}

Renderable* Renderable::GetSelected() {
    rendableLock.lock(true);
    Renderable* object = selectedObject;
    rendableLock.unlock();
    return object;
}

void Renderable::SetSelected(Renderable* object) {
    rendableLock.lock(true);
    selectedObject = object;
    rendableLock.unlock();
}

bool Renderable::RenderIdInUse(int id) {
    rendableLock.lock(true);
    bool inUse = RenderObjectIDSet.count(id) > 0;
    rendableLock.unlock();
    return inUse;
}

void Renderable::ReleaseRenderId() {
    if (renderObjectID == -1) return;
    rendableLock.lock(true);
    RenderObjectIDSet.erase(renderObjectID);
    rendableLock.unlock();
    renderObjectID = -1;
}
