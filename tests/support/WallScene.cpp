#include "support/WallScene.h"

#include <cmath>
#include <random>

#include "geometry/Coordinates.h"
#include "propagation/Interface.h"
#include "radiation/BeamQUICK.h"
#include "radiation/Ray.h"

WallScene::~WallScene() {
    for (Interface* wall : walls) {
        wall->ClearReceivedRadiation(true);
        delete wall;
    }
    for (BeamQUICK* beam : beams) delete beam;
}

Interface* WallScene::AddWall(const CoordQUICK& from, const CoordQUICK& to, double base,
                              double height, eParamValue diffractModel) {
    auto* wall = new Interface();
    wall->Initialize();
    wall->SetName("wall");
    wall->SetParameterValue(PN_TYP, PV_TYPE_POINTPOINTHEIGHT);
    wall->SetParameterValue(PN_BASE, base);
    wall->SetParameterValue(PN_HEIGHT, height);
    wall->SetParameterValue(PN_BARDIFMDL, diffractModel);
    wall->AddBarrierPoint(Coordinates(from.data[0], from.data[1], from.data[2]));
    wall->AddBarrierPoint(Coordinates(to.data[0], to.data[1], to.data[2]));
    walls.push_back(wall);
    return wall;
}

void WallScene::AddRandomWalls(int count, double extent, unsigned seed, eParamValue diffractModel) {
    std::mt19937 generator(seed);
    std::uniform_real_distribution<double> place(-extent / 2.0, extent / 2.0);
    std::uniform_real_distribution<double> turn(0.0, 2.0 * M_PI);
    while (static_cast<int>(walls.size()) < count) {
        const double x = place(generator), y = place(generator), angle = turn(generator);
        if (std::hypot(x, y) < 2.0) continue;
        const double dx = std::cos(angle), dy = std::sin(angle);
        AddWall(CoordQUICK(x - dx, y - dy, 0.0), CoordQUICK(x + dx, y + dy, 0.0), 0.0, 3.0,
                diffractModel);
    }
}

BeamQUICK* WallScene::AddBeam() {
    beams.push_back(new BeamQUICK());
    return beams.back();
}

Ray* WallScene::AddRay(BeamQUICK* beam, const CoordQUICK& origin, const VectorQUICK& direction,
                       double length) {
    auto* ray = new Ray();
    ray->Set(origin, direction, length);
    ray->SetWavelength(0.125);
    ray->SetBeamRayId(beam->GetRaysCount());
    beam->AddRay(ray);
    return ray;
}

void WallScene::AddFan(BeamQUICK* beam, const CoordQUICK& origin, int count, double length) {
    for (int i = 0; i < count; i++) {
        const double azimuth = 2.0 * M_PI * i / count;
        const double tilt = 0.17 * std::sin(7.0 * azimuth);
        AddRay(beam, origin,
               VectorQUICK(std::cos(azimuth) * std::cos(tilt), std::sin(azimuth) * std::cos(tilt),
                           std::sin(tilt)),
               length);
    }
}

void WallScene::ResetRays(BeamQUICK* beam, double length) {
    for (Ray* ray : *beam->GetRaysVecp()) {
        ray->SetLength(length);
        ray->endInterfaceId = -1;
        // Reception moved the ray into a receiving beam.
        ray->beamId = beam->GetBeamId();
    }
}

void WallScene::ClearReceived() {
    for (Interface* wall : walls) wall->ClearReceivedRadiation(true);
}
