#pragma once

// A display client attached to an evaluation. The evaluation marks it active while a
// threaded run is under way, so that the display knows to keep polling for new results.
class GuiRender {
public:
    bool active = false;
};
