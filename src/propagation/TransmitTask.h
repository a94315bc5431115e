#pragma once

#include <map>
#include <vector>

class Interface;
class Medium;
class Ray;

// The work of one face on one beam: the rays that ended on the face, keyed by their id in
// the beam, and the lists that receive the children made from them. The lists are not
// owned: the caller turns them into new beams. Volume ids are those of the volumes on the
// ray's side (in) and the far side (out); a missing medium stands for free space.
struct TransmitTask {
    std::map<int, Ray*> rays;
    Interface* face = nullptr;
    std::vector<Ray*> reflected;
    // One list per diffuse source; null for test rays, which make no diffuse fans.
    std::vector<std::vector<Ray*>>* diffuse = nullptr;
    std::vector<Ray*> transmitted;
    int volumeIn = -1;
    int volumeOut = -1;
    Medium* mediumIn = nullptr;
    Medium* mediumOut = nullptr;
};
