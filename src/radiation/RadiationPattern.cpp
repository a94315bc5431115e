#include "radiation/RadiationPattern.h"

#include <cmath>

#include "framework/Parameter.h"
#include "geometry/Array.h"
#include "geometry/Coordinates.h"
#include "geometry/Direction.h"
#include "logging/Log.h"

namespace {

constexpr const char* TYPE = "RadiationPattern";
// Angles come in the system's degrees and go to radians by the true pi / 180.
constexpr double RADIANS_PER_DEGREE = 3.141592653589793 / 180.0;
constexpr double TWO_PI = 6.283185307179586;
// A dipole's power below this is no power at all: -120 dB.
constexpr double SMALLEST_POWER = 1e-12;
constexpr double NO_POWER_DB = -120.0;
// Half-power widths of -1 are not set and cause no drop.
constexpr double WIDTH_NOT_SET = -1.0;
constexpr double FULL_SPHERE_DEGREES = 360.0;

// A pattern axis and the perpendicular reference direction that goes with it.
struct AxisPair {
    double dir1[3];
    double dir2[3];
};

constexpr AxisPair AXIS_Z = {{0, 0, 1}, {1, 0, 0}};
constexpr AxisPair AXIS_X = {{1, 0, 0}, {0, 1, 0}};
constexpr AxisPair AXIS_Y = {{0, 1, 0}, {0, 0, 1}};
constexpr AxisPair AXIS_XY = {{1, 1, 0}, {0, 0, 1}};
constexpr AxisPair AXIS_YZ = {{0, 1, 1}, {1, 0, 0}};
constexpr AxisPair AXIS_ZX = {{1, 0, 1}, {0, 1, 0}};
constexpr AxisPair AXIS_XYZ = {{1, 1, 1}, {1, -1, 0}};

// The axis values come in two families of the same layout: "x", "y", "z"; two unused
// entries; "x" .. "xyz"; two unused entries; "xy" .. "xyz". Each single axis takes the next
// axis in the cycle x, y, z as its reference; each sum of two axes takes the third axis, and
// "xyz" the direction (1, -1, 0). The unused entries give the default, z with x.
constexpr int AXIS_TABLE_SIZE = 18;
constexpr int AXIS_FAMILY_FIRST[] = {217, 245};
constexpr AxisPair AXIS_TABLE[AXIS_TABLE_SIZE] = {
    AXIS_X,  AXIS_Y,  AXIS_Z,   AXIS_Z, AXIS_Z, AXIS_X,  AXIS_Y,  AXIS_Z,  AXIS_XY,
    AXIS_YZ, AXIS_ZX, AXIS_XYZ, AXIS_Z, AXIS_Z, AXIS_XY, AXIS_YZ, AXIS_ZX, AXIS_XYZ,
};

const AxisPair& AxisPairOf(eParamValue value) {
    for (int first : AXIS_FAMILY_FIRST) {
        const int index = static_cast<int>(value) - first;
        if (index >= 0 && index < AXIS_TABLE_SIZE) return AXIS_TABLE[index];
    }
    Log::log(2) << "RadiationPattern: radPatternAxis " << static_cast<int>(value)
                << " is not an axis, z is taken\n";
    return AXIS_Z;
}

// The number of directions a pattern is drawn with, by radPatternRes.
int DrawCountOf(eParamValue resolution) {
    switch (resolution) {
        case PV_PATRES_VERYLOW:
            return 500;
        case PV_PATRES_LOW:
            return 2000;
        case PV_PATRES_HIGH:
            return 50000;
        case PV_PATRES_VERYHIGH:
            return 200000;
        default:
            return 10000;
    }
}

VectorQUICK UnitVector(const double (&values)[3]) {
    VectorQUICK vector(values[0], values[1], values[2]);
    vector.Normalize();
    return vector;
}

// a - (a . b) b: the part of a perpendicular to the unit vector b.
VectorQUICK Perpendicular(const VectorQUICK& a, const VectorQUICK& b) {
    VectorQUICK along = b;
    along *= a.Dot(b);
    return VectorQUICK(a.Get(0) - along.Get(0), a.Get(1) - along.Get(1), a.Get(2) - along.Get(2));
}

// The angle in the system's degrees. A zero vector a, the part of a direction along an axis
// that the direction does not leave, has no angle: it is taken as 0.
double AngleDegrees(const VectorQUICK& a, const VectorQUICK& b) {
    return a.GetLength() == 0.0 ? 0.0 : a.Angle(b);
}

// The value of the listed number "0.5", the default size of a source in wavelengths.
double DefaultSourceSize() {
    for (const auto& [number, text] : Parameter::paramNumStrings) {
        if (text != "0.5") continue;
        auto value = Parameter::paramNumValues.find(number);
        if (value != Parameter::paramNumValues.end()) return value->second;
    }
    return 0.5;
}

// The array's phaseDir, one of "x+", "x-", "y+", "y-", "z+", "z-"; none is the zero vector.
VectorQUICK PhaseDirectionOf(Array& array) {
    constexpr int FIRST = 237;  // "x+"
    constexpr double SIGNED_AXES[6][3] = {{1, 0, 0},  {-1, 0, 0}, {0, 1, 0},
                                          {0, -1, 0}, {0, 0, 1},  {0, 0, -1}};
    eParamValue value = PV_EMPTY;
    array.GetParameterValue<eParamValue>(PN_PHDIR, value);
    const int index = static_cast<int>(value) - FIRST;
    if (index < 0 || index >= 6) return VectorQUICK(0, 0, 0);
    const double(&axis)[3] = SIGNED_AXES[index];
    return VectorQUICK(axis[0], axis[1], axis[2]);
}

bool Contains(const std::string& name, const char* piece) {
    return name.find(piece) != std::string::npos;
}
bool IsPatName(const std::string& name) { return Contains(name, ".pat") || Contains(name, ".PAT"); }
bool IsApfName(const std::string& name) { return Contains(name, ".apf") || Contains(name, ".APF"); }

}  // namespace

RadiationPattern::RadiationPattern() { objTypeStr = TYPE; }

RadiationPattern::~RadiationPattern() = default;

bool RadiationPattern::Initialize() {
    if (!Component::Initialize()) return false;
    MakeChild(&array, "array");
    MakeChild(&dir1, "dir1", 0.0, 0.0, 1.0);
    MakeChild(&dir2, "dir2", 1.0, 0.0, 0.0);
    return true;
}

bool RadiationPattern::Empty() {
    Component::Empty();
    array = nullptr;
    dir1 = nullptr;
    dir2 = nullptr;
    paramsChecked = false;
    return true;
}

bool RadiationPattern::FromXml(CElement* element) {
    if (!Component::FromXml(element)) return false;
    LoadPointerByType<Array>(&array, element, "Array");
    LoadPointerByName<Direction>(&dir1, element, "dir1");
    LoadPointerByName<Direction>(&dir2, element, "dir2");
    paramsChecked = false;
    return true;
}

bool RadiationPattern::checkParams() {
    bool arrayChanged = false;
    if (sourceArray != nullptr) {
        sourceArray->checkParams();
        arrayChanged = sourceArray->PositionsChanged();
    }
    if (paramsChecked) {
        if (arrayChanged) cacheArrayFactor();
        return checkResult;
    }
    readSettings();
    checkResult = kind != PV_RADPAT_FILE || readPatternFile();
    readSourceSize();
    setAxes();
    setDrawing();
    cacheArrayFactor();
    paramsChecked = true;
    return checkResult;
}

void RadiationPattern::readSettings() {
    size = -1.0;
    GetParameterValue<double>(PN_SIZ, size);
    gainTxParam = 1.0;
    GetParameterValue<double>(PN_GAINTX, gainTxParam);
    gain = gainTxParam;
    gainMin = gainTxParam;
    GetParameterValue<double>(PN_GAINMIN, gainMin);
    hpbwHoriz = WIDTH_NOT_SET;
    hpbwVert = WIDTH_NOT_SET;
    GetParameterValue<double>(PN_HPBWH, hpbwHoriz);
    GetParameterValue<double>(PN_HPBWV, hpbwVert);
    kind = PV_EMPTY;
    GetParameterValue<eParamValue>(PN_RPAT, kind);
    fileName.clear();
    GetParameterValue<std::string>(PN_RPFIL, fileName);
    wavelength = -1.0;
    wavelengthFound = GetParameterValue<double>(PN_LMDA, wavelength);
}

bool RadiationPattern::readPatternFile() {
    horizontalSlice.clear();
    verticalSlices.clear();
    numVertSlices = 0;
    if (!isPatternFile(fileName)) {
        Log::log(1) << "RadiationPattern::checkParams: \"" << fileName
                    << "\" is not a pattern file\n";
        return false;
    }
    // A name that has both extensions is read as both.
    bool loaded = true;
    if (IsPatName(fileName)) loaded = readFileWith(&RadiationPattern::readPatSections);
    if (IsApfName(fileName)) loaded = readFileWith(&RadiationPattern::readApfLines) && loaded;
    return loaded;
}

void RadiationPattern::readSourceSize() {
    sourceSize = DefaultSourceSize();
    GetParameterValue<double>(PN_SRCSIZ, sourceSize);
}

void RadiationPattern::setAxes() {
    eParamValue axisValue = PV_EMPTY;
    const AxisPair& axes =
        GetParameterValue<eParamValue>(PN_RPATAX, axisValue) ? AxisPairOf(axisValue) : AXIS_Z;
    axis1 = UnitVector(axes.dir1);
    axis2 = UnitVector(axes.dir2);
    axisCross.SetCross(axis1, axis2);
    if (dir1 != nullptr) dir1->SetValues(axis1.Get(0), axis1.Get(1), axis1.Get(2));
    if (dir2 != nullptr) dir2->SetValues(axis2.Get(0), axis2.Get(1), axis2.Get(2));
}

void RadiationPattern::setDrawing() {
    eParamValue resolution = PV_EMPTY;
    GetParameterValue<eParamValue>(PN_RPATRES, resolution);
    drawCount = DrawCountOf(resolution);
    if (array == nullptr) return;
    array->SetParameterValue(PN_ARRTYP, PV_POINT);
    array->SetParameterValue(PN_ARRSHA, PV_CIRCLEFULL);
    array->SetParameterValue(PN_SIZ, size);
    array->SetParameterValue(PN_CNT, drawCount);
    // A full sphere of directions.
    array->SetParameterValue(PN_ANG, FULL_SPHERE_DEGREES);
}

void RadiationPattern::cacheArrayFactor() {
    arrayFactorReady = false;
    arrayElements.clear();
    if (!applyArray || sourceArray == nullptr) return;
    // The pattern's own wavelength, else the array's.
    arrayWavelength =
        wavelengthFound && wavelength > 0.0 ? wavelength : sourceArray->GetWavelength();
    std::vector<Coordinates*> positions;
    if (arrayWavelength <= 0.0 ||
        !sourceArray->getPositions(positions, false, nullptr, nullptr, -1)) {
        Log::log(2) << "RadiationPattern::checkParams: " << objName
                    << " leaves out the array factor: the array has no positions or no "
                       "wavelength\n";
        return;
    }
    const VectorQUICK phaseDir = PhaseDirectionOf(*sourceArray);
    for (Coordinates* position : positions) {
        const VectorQUICK e(position->Get(0), position->Get(1), position->Get(2));
        arrayElements.push_back({e, e.Dot(phaseDir)});
    }
    arrayFactorReady = true;
}

bool RadiationPattern::getIntensityDB(MatrixTemplate<double>& v, double& out) {
    if (v.GetDim(1) * v.GetDim(2) < 3) {
        Log::log(1) << "RadiationPattern::getIntensityDB: a direction needs three elements\n";
        return false;
    }
    checkParams();
    out = intensityDB(VectorQUICK(v.Get(0), v.Get(1), v.Get(2)));
    return true;
}

bool RadiationPattern::getIntensityDB(MatrixTemplate<double>* v, double& out) {
    if (v == nullptr) {
        Log::log(1) << "RadiationPattern::getIntensityDB: no direction\n";
        return false;
    }
    return getIntensityDB(*v, out);
}

bool RadiationPattern::getIntensitiesDB(std::vector<Coordinates*>& directions,
                                        std::vector<double>& intensities) {
    intensities.assign(directions.size(), 0.0);
    bool all = true;
    for (size_t i = 0; i < directions.size(); ++i) {
        all = getIntensityDB(directions[i], intensities[i]) && all;
    }
    return all;
}

double RadiationPattern::intensityDB(const VectorQUICK& v) const {
    double out = gain;
    switch (kind) {
        case PV_RADPAT_DIPOLE:
            out = dipoleDB(v, out);
            break;
        case PV_RADPAT_HPBW:
            out = hpbwDB(v, out);
            break;
        case PV_RADPAT_FILE:
            out = fromFileDB(v, out);
            break;
        default:
            break;
    }
    return arrayFactorReady ? out * arrayFactor(v) : out;
}

double RadiationPattern::arrayFactor(const VectorQUICK& v) const {
    double sum = 0.0;
    for (const ArrayElement& element : arrayElements) {
        sum += std::cos(TWO_PI * (element.position.Dot(v) - element.phase) / arrayWavelength);
    }
    return sum;
}

double RadiationPattern::dipoleDB(const VectorQUICK& v, double out) const {
    const double theta = v.Angle(axis1) * RADIANS_PER_DEGREE;
    // The second test compares radians with 180, so only the first ever holds.
    if (std::fabs(theta) < 0.01 || std::fabs(theta - 180.0) < 0.01) return 0.0;
    const double kL = sourceSize * TWO_PI;
    const double f = (std::cos(kL / 2 * std::cos(theta)) - std::cos(kL / 2)) / std::sin(theta);
    const double p = f * f;
    return out + (p < SMALLEST_POWER ? NO_POWER_DB : 10.0 * std::log10(p));
}

double RadiationPattern::hpbwDB(const VectorQUICK& v, double out) const {
    // Linear in angle, 3 dB down at each half-width: first away from the plane across dir1,
    // then, within that plane, away from dir2.
    if (hpbwVert != WIDTH_NOT_SET) {
        const double a = (std::fabs(v.Angle(axis1)) - 90.0) * RADIANS_PER_DEGREE;
        const double w = hpbwVert * RADIANS_PER_DEGREE;
        out -= 3.0 * std::fabs(a) / std::fabs(w / 2);
    }
    if (hpbwHoriz != WIDTH_NOT_SET) {
        const double b = AngleDegrees(Perpendicular(v, axis1), axis2) * RADIANS_PER_DEGREE;
        const double w = hpbwHoriz * RADIANS_PER_DEGREE;
        out -= 3.0 * std::fabs(b) / std::fabs(w / 2);
    }
    return out < gainMin ? gainMin : out;
}

double RadiationPattern::fromFileDB(const VectorQUICK& v, double out) const {
    double s = 1.0;
    if (!verticalSlices.empty()) {
        const VectorQUICK u = Perpendicular(v, axis2);
        double phi = AngleDegrees(u, axis1);
        if (u.Dot(axisCross) < 0) phi = -phi;
        if (phi < 0) phi += 360.0;
        if (phi > 180.0) phi = 180.0;
        double e = v.Angle(axis2) - 90.0;
        if (e > 90.0) e = 90.0;
        const size_t slice = std::fabs(phi) >= 90.0 ? 1 : 0;
        s = 0.0;
        if (slice < verticalSlices.size()) verticalSlices[slice].interpolate(e, s);
    }
    // A linear product used as dB: the file's shape scales the peak gain's power ratio.
    return out * s * std::pow(10.0, gain * 0.1);
}

bool RadiationPattern::getPatternDirSet(std::vector<Coordinates*>& directions,
                                        std::vector<triLink*>& links) {
    checkParams();
    if (array == nullptr) {
        Log::log(1) << "RadiationPattern::getPatternDirSet: " << objName << " has no array\n";
        return false;
    }
    return array->getPositions(directions, false, &links, nullptr, drawCount);
}

bool RadiationPattern::setRadPatternArray(Array* newArray) {
    sourceArray = newArray;
    applyArray = newArray != nullptr;
    paramsChecked = false;
    return true;
}

bool RadiationPattern::isPatternFile(const std::string& name) {
    return IsPatName(name) || IsApfName(name);
}

void RadiationPattern::print() {
    const auto kindText = Parameter::paramValStrings.find(kind);
    Log::log(4) << "RadiationPattern " << objName << ": "
                << (kindText == Parameter::paramValStrings.end() ? "" : kindText->second)
                << ", gain " << gain << ", gainMin " << gainMin << ", hpbw " << hpbwHoriz << " / "
                << hpbwVert << ", sourceSize " << sourceSize << ", wavelength " << wavelength
                << ", array " << (applyArray ? "applied" : "none") << "\n";
    Log::log(4) << "RadiationPattern " << objName << ": file \"" << fileName << "\" \""
                << description << "\", " << horizontalSlice.getValues().size()
                << " horizontal values, " << verticalSlices.size() << " vertical slices\n";
}
