#pragma once

#include <vector>

#include "framework/ParamTypes.h"
#include "geometry/CoordQUICK.h"
#include "geometry/VectorQUICK.h"

class BeamQUICK;
class Interface;
class Ray;

// Vertical walls as "pointPointHeight" interfaces, and beams of rays to trace at them, for
// the trace tests and benchmarks. Everything made here is deleted with the scene.
class WallScene {
public:
    WallScene() = default;
    WallScene(const WallScene&) = delete;
    WallScene& operator=(const WallScene&) = delete;
    ~WallScene();

    // A wall from one foot point to another, standing from base to base + height.
    Interface* AddWall(const CoordQUICK& from, const CoordQUICK& to, double base, double height,
                       eParamValue diffractModel = PV_DIFFRACT_OFF);
    // count walls 2 long, 3 high, placed and turned at random within a square of side
    // extent around the origin, clear of the origin itself.
    void AddRandomWalls(int count, double extent, unsigned seed,
                        eParamValue diffractModel = PV_DIFFRACT_OFF);
    BeamQUICK* AddBeam();
    // A ray of the beam with the next free id.
    static Ray* AddRay(BeamQUICK* beam, const CoordQUICK& origin, const VectorQUICK& direction,
                       double length);
    // count rays from the origin over a horizontal fan of full circle, tilted by up to 10
    // degrees, each of the length given.
    static void AddFan(BeamQUICK* beam, const CoordQUICK& origin, int count, double length);
    // Every ray of the beam back to the length given, with no hit, and back in the beam.
    static void ResetRays(BeamQUICK* beam, double length);
    // Forgets what each wall received, deleting the receiving beams.
    void ClearReceived();

    std::vector<Interface*> walls;
    std::vector<BeamQUICK*> beams;
};
