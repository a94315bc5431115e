#include "framework/ActionAble.h"

#include <algorithm>

bool ActionAble::SelectedAction(int) { return false; }

bool ActionAble::ReceiveAction(const std::string&, double, double) { return false; }

bool ActionAble::ForceSelected(bool) { return false; }

bool ActionAble::ReceiveTrackEvent(double, double) { return false; }

bool ActionAble::ReceivePressEvent(int, double, double) { return false; }

bool ActionAble::ReceiveReleaseEvent(int, double, double) { return false; }

bool ActionAble::GetActionable() { return false; }

bool ActionAble::AddChildAction(ActionAble* target) {
    if (target == nullptr || HasChildAction(target)) return false;
    childActions.push_back(target);
    return true;
}

bool ActionAble::RemoveChildAction(ActionAble* target) {
    auto found = std::find(childActions.begin(), childActions.end(), target);
    if (found == childActions.end()) return false;
    childActions.erase(found);
    return true;
}

void ActionAble::ClearChildActions() { childActions.clear(); }

int ActionAble::GetChildActionCount() const { return static_cast<int>(childActions.size()); }

bool ActionAble::HasChildAction(const ActionAble* target) const {
    return std::find(childActions.begin(), childActions.end(), target) != childActions.end();
}
