#pragma once

#include <string>
#include <vector>

#include "framework/NexoBase.h"

// Edit choices that a menu of actions offers on an object.
enum eActionEditOptions : int {
    AEO_NONE = 1,
    AEO_EDIT = 2,
    AEO_COPY = 3,
    AEO_REMOVE = 4,
};

// The receiving side of user actions. A build without a user interface keeps only the
// bookkeeping: the list of child action targets that the object tree maintains, so that an
// action can be passed down from a parent. The event handlers do nothing by default and
// report that nothing was handled.
class ActionAble : public virtual NexoBase {
public:
    ActionAble() = default;
    // A copy is a new target: it has no child targets of its own.
    ActionAble(const ActionAble&) : NexoBase() {}
    ActionAble& operator=(const ActionAble&) = delete;
    ~ActionAble() override = default;

    virtual bool SelectedAction(int action);
    virtual bool ReceiveAction(const std::string& action, double x, double y);
    virtual bool ForceSelected(bool selected);
    virtual bool ReceiveTrackEvent(double x, double y);
    virtual bool ReceivePressEvent(int button, double x, double y);
    virtual bool ReceiveReleaseEvent(int button, double x, double y);
    // True when the object offers actions of its own.
    virtual bool GetActionable();

    // False when the target is null or listed already.
    bool AddChildAction(ActionAble* target);
    // False when the target is not listed.
    bool RemoveChildAction(ActionAble* target);
    void ClearChildActions();
    int GetChildActionCount() const;
    bool HasChildAction(const ActionAble* target) const;

private:
    std::vector<ActionAble*> childActions;
};
