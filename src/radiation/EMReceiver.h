#pragma once

#include "framework/Component.h"

// A receiver as an object of the scene. It marks where reception is wanted and holds no
// power logic: test points catch the rays and compute what arrives.
class EMReceiver : public Component {
public:
    EMReceiver();
    ~EMReceiver() override;
};
