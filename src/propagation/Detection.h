#pragma once

#include <vector>

#include "framework/Component.h"
#include "propagation/HitProfile.h"

class BeamQUICK;
class EMRadiation;
class Ray;
struct TriRay;

// What an interface collects when detection is on: copies of the rays it received, held in
// one beam of its own radiation, and the profile evaluated over them. Callers serialise
// the calls (the interface does so under its lock).
class Detection : public Component {
public:
    Detection();
    ~Detection() override;

    // Forgets the collected rays, then empties the component.
    bool Empty() override;

    // Keeps a copy of the ray in the current beam, made at first use, and as a hit.
    bool DetectRay(Ray* ray);
    // Gives the current beam copies of the triangles.
    bool copyTriRays(std::vector<TriRay*>* triangles);
    // Evaluates the profile with this object's profile parameters.
    bool Evaluate();
    // Deletes the collected rays and the beam holding them.
    bool Clear();

    HitProfile& GetProfile() { return profile; }
    // The beam of collected rays, or null before the first.
    BeamQUICK* GetBeam();

private:
    // The radiation child and its beam, made when missing.
    BeamQUICK* CurrentBeam();

    HitProfile profile;
    EMRadiation* radiation = nullptr;
    int beamId = -1;
};
