#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>

#include "control/SimEvaluation.h"
#include "documents/SimulationDocument.h"
#include "documents/SimulationResults.h"
#include "radiation/BeamQUICK.h"
#include "radiation/EMRadiation.h"
#include "radiation/Ray.h"
#include "radiation/TestPoint.h"

namespace {

constexpr double DEGREES_PER_RADIAN_EXACT = 180.0 / M_PI;
constexpr double SPEED_OF_LIGHT = 3e8;
constexpr const char* FILE_PREFIX = "/Fenwave_export_";

// Azimuth of the direction in degrees, from 0 up to 360.
double AzimuthDegrees(const VectorQUICK& dir) {
    double azimuth = std::atan2(dir.data[1], dir.data[0]) * DEGREES_PER_RADIAN_EXACT;
    if (azimuth < 0.0) azimuth += 360.0;
    return azimuth;
}

double ElevationDegrees(const VectorQUICK& dir) {
    return std::asin(std::clamp(dir.data[2], -1.0, 1.0)) * DEGREES_PER_RADIAN_EXACT;
}

// The electric field of a vertically polarised antenna along the direction: the vertical
// axis with its part along the direction taken away. Rays do not carry a polarisation of
// their own, and every antenna of the library radiates with its axis vertical.
VectorQUICK VerticalPolarisation(const VectorQUICK& dir) {
    VectorQUICK field(0.0, 0.0, 1.0);
    const double along = dir.data[2];
    for (int i = 0; i < 3; i++) field.data[i] -= along * dir.data[i];
    if (field.GetLength() < 1e-12) field.SetValues(1.0, 0.0, 0.0);
    field.Normalize();
    return field;
}

void WriteTriple(std::ostream& out, const VectorQUICK& v) {
    out << v.data[0] << ", " << v.data[1] << ", " << v.data[2] << ", ";
}

void WriteRayLine(std::ostream& out, const std::string& sourceName, Ray* ray) {
    out << sourceName << ", ";
    WriteTriple(out, ray->origin);
    WriteTriple(out, ray->dir);
    WriteTriple(out, VerticalPolarisation(ray->dir));
    // The wave reaches the ray's origin after its optical path from the source.
    out << AzimuthDegrees(ray->dir) << ", " << ElevationDegrees(ray->dir) << ", "
        << ray->GetStartPhaseDist() / SPEED_OF_LIGHT << ", " << ray->GetPower() << ", "
        << ray->GetStartPhase() << ", ";
    WriteTriple(out, ray->end);
    Ray* original = ray->getOriginalRay();
    out << AzimuthDegrees(original->dir) << ", " << ElevationDegrees(original->dir) << ", "
        << original->GetPower() << ", " << ray->GetFrequency() << "\n";
}

}  // namespace

std::string SimEvaluation::HomeDirectory() {
    for (const char* name : {"HOMEPATH", "HOME"}) {
        const char* value = std::getenv(name);
        if (value != nullptr && value[0] != '\0') return value;
    }
    return ".";
}

std::string SimEvaluation::ExportDirectory() { return HomeDirectory() + "/Desktop"; }

bool SimEvaluation::ExportSimResults() {
    const std::string base = ExportDirectory();
    const std::vector<TestPoint*> points = TestPoint::GetTestPointList();
    for (TestPoint* point : points) point->Export(base + FILE_PREFIX + point->GetName() + ".csv");

    std::ofstream maxFile(base + FILE_PREFIX + "rxMaxRayPower.csv", std::ios::trunc);
    if (maxFile.is_open()) {
        maxFile << "export Max rx ray power\n";
        TestPoint::writeLineHeader(maxFile);
        for (TestPoint* point : points) point->writeMaxLine(maxFile);
    }
    std::ofstream sumFile(base + FILE_PREFIX + "rxSumRayPower.csv", std::ios::trunc);
    if (sumFile.is_open()) {
        sumFile << "export Sum rx power\n";
        TestPoint::writeSumHeader(sumFile);
        for (TestPoint* point : points) point->writeSumRayPowerLine(sumFile);
    }
    std::ofstream raysFile(base + FILE_PREFIX + "allRays.csv", std::ios::trunc);
    if (raysFile.is_open()) WriteAllRays(raysFile);
    return true;
}

void SimEvaluation::WriteAllRays(std::ostream& out) {
    out << "export all ray data\n";
    out << "sourceName, "
        << "start_x, start_y, start_z, "
        << "dir_x, dir_y, dir_z, "
        << "polE_x, polE_y, polE_z, "
        << "start_az, start_el, start_time, start_power, start_phase, "
        << "end_x, end_y, end_z, "
        << "orig_az, orig_el, orig_power"
        << ", frequency"
        << "\n";
    SimulationResults* results = FirstResults();
    if (results == nullptr) return;
    for (EMRadiation* radp : static_cast<std::vector<EMRadiation*>&>(*results)) {
        for (int id : radp->GetBeamIds()) {
            BeamQUICK* beam = GETBEAM(id);
            if (beam == nullptr) continue;
            // The beam knows the source that its rays came from; the radiation of a volume
            // gathers beams of every source.
            const std::string& name =
                beam->GetSourceName().empty() ? radp->GetName() : beam->GetSourceName();
            for (auto& entry : *beam->GetRaysp()) WriteRayLine(out, name, entry.second);
        }
    }
}
