#include "radiation/TraceVolume.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <iostream>
#include <vector>

#include "control/OpticElement.h"
#include "geometry/Coordinates.h"
#include "logging/Log.h"
#include "radiation/TestPoint.h"

namespace {

constexpr const char* TYPE = "TraceVolume";
constexpr double NO_POWER_DB = -120.0;
constexpr double EARTH_RADIUS = 6371000.0;
constexpr double EARTH_RADIUS_SQUARED = 40589641000000.0;

struct Rgb {
    double r, g, b;
};

// The colour scales of the "colorScale" options, as colour stops from the low end of the
// power range to the high end.
const std::map<int, std::vector<Rgb>>& ColourScales() {
    static const std::map<int, std::vector<Rgb>> scales = {
        {516, {{0, 0, 0}, {1, 1, 1}}},             // grey
        {517, {{0, 0, 0}, {1, 0, 0}}},             // red
        {518, {{0, 0, 0}, {0, 1, 0}}},             // green
        {519, {{0, 0, 0}, {0, 0, 1}}},             // blue
        {520, {{0, 0, 1}, {1, 0, 0}}},             // blue-red
        {521, {{0, 0, 1}, {1, 1, 0}}},             // blue-yellow
        {522, {{1, 0, 0}, {1, 1, 0}}},             // red-yellow
        {523, {{1, 0, 0}, {0, 1, 0}, {1, 1, 0}}},  // red-green-yellow
        {524, {{0, 0, 1}, {0, 1, 0}, {1, 0, 0}}},  // blue-green-red
        {525, {{1, 0, 0}, {1, 1, 0}, {0, 0, 1}}},  // red-yellow-blue
        {526, {{0, 1, 0}, {1, 1, 0}, {1, 0, 0}}},  // green-yellow-red
        {527, {{0, 0, 1}, {1, 1, 0}, {1, 0, 0}}},  // blue-yellow-red
    };
    return scales;
}

// Without a known scale the map runs from blue through green to red.
const std::vector<Rgb>& ScaleOf(eParamValue scale) {
    auto found = ColourScales().find(scale);
    return found == ColourScales().end() ? ColourScales().at(524) : found->second;
}

// The cell-centre coordinate of cell index of count cells over [low, high].
double CellCentre(int index, int count, double low, double high) {
    return ((index + 0.5) / count) * (high - low) + low;
}

// The lower cell corner of index over [low, high].
double CellCorner(int index, int count, double low, double high) {
    return index * (high - low) / count + low;
}

// A point on the sphere of the earth, from radians, in the earth-centred frame.
Coordinates EarthPoint(double longitude, double latitude) {
    const double a = EARTH_RADIUS * std::sin(latitude);
    const double rho = std::sqrt(EARTH_RADIUS_SQUARED - a * a);
    return Coordinates(rho * std::cos(longitude), rho * std::sin(longitude), a);
}

bool WithinAxis(double value, double low, double high) {
    return (low < value && value < high) || low == high;
}

double LogOrFloor(double value) { return value < 1e-12 ? NO_POWER_DB : 10.0 * std::log10(value); }

}  // namespace

TraceVolume::TraceVolume() { objTypeStr = TYPE; }

TraceVolume::~TraceVolume() = default;

bool TraceVolume::SetLimits(double xMinIn, double yMinIn, double zMinIn, double xMaxIn,
                            double yMaxIn, double zMaxIn) {
    xMin = xMinIn;
    yMin = yMinIn;
    zMin = zMinIn;
    xMax = xMaxIn;
    yMax = yMaxIn;
    zMax = zMaxIn;
    return true;
}

bool TraceVolume::SetDim(int nxIn, int nyIn, int nzIn) {
    nx = nxIn;
    ny = nyIn;
    nz = std::max(nzIn, 1);
    return true;
}

bool TraceVolume::Contains(double x, double y, double z) const {
    return WithinAxis(x, xMin, xMax) && WithinAxis(y, yMin, yMax) && WithinAxis(z, zMin, zMax);
}

bool TraceVolume::SetPowerRange(double min, double max) {
    powerMin = min;
    powerMax = max;
    return true;
}

bool TraceVolume::SetRendThreshold(double) { return true; }

bool TraceVolume::SetRendProperty(eParamValue property) {
    renderBy = property;
    return true;
}

bool TraceVolume::SetColorScale(eParamValue scale) {
    colorScale = scale;
    return true;
}

bool TraceVolume::ResetTestPoints() { return true; }

bool TraceVolume::checkParams() {
    if (paramsChecked) return true;
    GetParameterValue(PN_TRACERENDERAS, renderBy);
    hasLayerHeight = GetParameterValue(PN_TRACELAYHEIGHT, renderLayerHeight);
    GetParameterValue(PN_COLSCA, colorScale);
    paramsChecked = true;
    return true;
}

int TraceVolume::GetPointId(int i, int j, int k) const {
    if (i < 0 || i >= nx || j < 0 || j >= ny || k < 0 || k >= nz) return -1;
    auto found = pointIds.find(GridIndex(i, j, k));
    return found == pointIds.end() ? -1 : found->second;
}

bool TraceVolume::InitTestPoints(OpticElement* parent) {
    if (parent == nullptr) {
        Log::log(1) << "TraceVolume::InitTestPoints: no element to hold the points\n";
        return false;
    }
    pointIds.clear();
    if (xMax - xMin > 1.0) return InitCartesianPoints(parent);
    return InitGeographicPoints(parent);
}

bool TraceVolume::StorePoint(int i, int j, int k, TestPoint* point) {
    if (point == nullptr) {
        Log::log(1) << "TraceVolume::InitTestPoints: no test point for cell (" << i << ", " << j
                    << ", " << k << ")\n";
        return false;
    }
    pointIds[GridIndex(i, j, k)] = point->GetSimObjectID();
    return true;
}

bool TraceVolume::InitCartesianPoints(OpticElement* parent) {
    bool ok = true;
    int counter = 0;
    for (int i = 0; i < nx; i++) {
        for (int j = 0; j < ny; j++) {
            for (int k = 0; k < nz; k++) {
                Coordinates point(CellCentre(i, nx, xMin, xMax), CellCentre(j, ny, yMin, yMax),
                                  CellCentre(k, nz, zMin, zMax));
                const std::string name = "testPoint" + std::to_string(counter++);
                ok = StorePoint(i, j, k, parent->AddTestPoint(&point, true, name.c_str())) && ok;
            }
        }
    }
    return ok;
}

bool TraceVolume::InitGeographicPoints(OpticElement* parent) {
    float lonMax = 0.0f, lonMin = 0.0f, latMax = 0.0f, latMin = 0.0f;
    const bool found = parent->GetParameterValue(PN_LONMAX, lonMax) |
                       parent->GetParameterValue(PN_LONMIN, lonMin) |
                       parent->GetParameterValue(PN_LATMAX, latMax) |
                       parent->GetParameterValue(PN_LATMIN, latMin);
    if (!found) return true;
    Coordinates shift(0.0, 0.0, 0.0);
    const bool shifted = parent->GetGPSToXYZCentre(shift);
    bool ok = true;
    for (int i = 0; i < nx; i++) {
        for (int j = 0; j < ny; j++) {
            for (int k = 0; k < nz; k++) {
                const float longitude = ((i + 0.5f) / nx) * (lonMax - lonMin) + lonMin;
                const float latitude = ((j + 0.5f) / ny) * (latMax - latMin) + latMin;
                Coordinates point = EarthPoint(longitude * M_PI / 180.0, latitude * M_PI / 180.0);
                if (shifted) point += shift;
                ok = StorePoint(i, j, k, parent->AddTestPoint(&point, true, nullptr)) && ok;
            }
        }
    }
    return ok;
}

bool TraceVolume::HasSources() const {
    return parent != nullptr && parent->GetChildTyped("EMSource") != nullptr;
}

void TraceVolume::LayerRange(int& first, int& last) const {
    first = 0;
    last = nz - 1;
    if (!hasLayerHeight) return;
    first = nz == 1 ? 0 : static_cast<int>(nz * (renderLayerHeight - zMin) / (zMax - zMin));
    last = first;
}

bool TraceVolume::Export(const std::string& path) {
    checkParams();
    if (renderBy != PV_HEATMAP) return false;
    std::ofstream out(path);
    if (!out.is_open()) {
        std::cout << "file open failed\n";
        return true;
    }
    out << "x, y, z, "
        << "power(linear), power(dB), power(dBm)"
        << "\n";
    if (!HasSources()) return true;
    int firstLayer = 0;
    int lastLayer = 0;
    LayerRange(firstLayer, lastLayer);
    for (int i = 0; i <= nx; i++) {
        for (int j = 0; j <= ny; j++) {
            for (int k = firstLayer; k <= lastLayer; k++) {
                // The power is not gathered from the points here: the coverage is shown by
                // the colours of the cells, and the file keeps its columns at no power.
                const double p = 0.0;
                out << CellCorner(i, nx, xMin, xMax) << ", " << CellCorner(j, ny, yMin, yMax)
                    << ", " << CellCorner(k, nz, zMin, zMax) << ", " << p << ", " << LogOrFloor(p)
                    << ", " << LogOrFloor(p / 0.001) << "\n";
            }
        }
    }
    return true;
}

void TraceVolume::PowerToColour(double powerDB, double& r, double& g, double& b) const {
    const std::vector<Rgb>& stops = ScaleOf(colorScale);
    const double span = powerMax - powerMin;
    double t = span > 0.0 ? (powerDB - powerMin) / span : 0.0;
    t = std::clamp(t, 0.0, 1.0) * static_cast<double>(stops.size() - 1);
    const size_t low = std::min(static_cast<size_t>(t), stops.size() - 2);
    const double f = t - static_cast<double>(low);
    r = stops[low].r + f * (stops[low + 1].r - stops[low].r);
    g = stops[low].g + f * (stops[low + 1].g - stops[low].g);
    b = stops[low].b + f * (stops[low + 1].b - stops[low].b);
}

bool TraceVolume::GetXYZRGBFromIJK(int i, int j, int k, double& x, double& y, double& z, double& r,
                                   double& g, double& b) {
    auto* point = dynamic_cast<TestPoint*>(SimObject::GetObjectGlobally(GetPointId(i, j, k)));
    if (point == nullptr) return false;
    x = CellCentre(i, nx, xMin, xMax);
    y = CellCentre(j, ny, yMin, yMax);
    z = CellCentre(k, nz, zMin, zMax);
    PowerToColour(point->GetPowerDB("Max RSSI"), r, g, b);
    return true;
}

bool TraceVolume::GetCoordColorFromIJK(int i, int j, int k, Coordinates& position,
                                       Coordinates& colour) {
    double x, y, z, r, g, b;
    if (!GetXYZRGBFromIJK(i, j, k, x, y, z, r, g, b)) return false;
    position.SetValues(x, y, z);
    colour.SetValues(r, g, b);
    return true;
}
