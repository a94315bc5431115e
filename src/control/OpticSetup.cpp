#include "control/OpticSetup.h"

#include <utility>
#include <variant>
#include <vector>

#include "control/OpticElement.h"
#include "framework/Parameter.h"
#include "logging/Log.h"
#include "propagation/FreqResponse.h"
#include "propagation/FreqResponseArray.h"

namespace {

// One quick parameter of a preset. A text is an entry of the parameter's own option list
// (a value such as "circleFull", or a listed number such as "2400"); a number is written as
// it stands, in its own kind.
using PresetValue = std::variant<const char*, int, double>;
struct sPresetRow {
    eParamName name;
    PresetValue value;
    eParamUnits units = PU_NON;
    eParamMultiplier mult = PM_NON;
};
using PresetRows = std::vector<sPresetRow>;

// A family of presets: rows every preset writes first, the rows of each preset by name, and
// rows every preset writes last.
struct sPresetFamily {
    const char* setupName;
    PresetRows common;
    std::vector<std::pair<std::string, PresetRows>> presets;
    PresetRows last;
};

// The entry of the table whose text is text, searched from first to last; false when none.
template <typename K>
bool FindEntry(const std::map<K, std::string>& table, const std::string& text, int first, int last,
               K& out) {
    for (auto it = table.lower_bound(static_cast<K>(first)); it != table.end() && it->first <= last;
         ++it) {
        if (it->second != text) continue;
        out = it->first;
        return true;
    }
    return false;
}

// Stores the text, then turns it into the listed value or number it names, so that the
// parameter holds what a choice from its list would hold. A text outside the list stays a
// text, which reads as its number.
bool WriteText(Component* element, eParamName name, const char* text, eParamUnits units,
               eParamMultiplier mult) {
    element->SetQuickParameterValue(name, std::string(text), units, mult);
    Parameter* parameter = element->GetParameterp(name);
    std::vector<std::string> offered;
    bool isNumber = false;
    parameter->GetValueOptions(offered, isNumber);
    int first = 0;
    int last = PV_END;
    const bool limited = parameter->getParamLimits(first, last);
    if (isNumber) {
        eParamNumber number = PNUM_NONE;
        if (FindEntry(Parameter::paramNumStrings, text, first, last, number)) {
            parameter->setValue(number);
        }
        return true;
    }
    // A kind without limits that offers values may hold any entry of the value table.
    if (!limited && offered.empty()) return true;
    if (!limited) {
        first = PV_EMPTY;
        last = PV_END;
    }
    eParamValue value = PV_EMPTY;
    if (FindEntry(Parameter::paramValStrings, text, first, last, value)) parameter->setValue(value);
    return true;
}

bool WriteRows(Component* element, const PresetRows& rows) {
    for (const sPresetRow& row : rows) {
        if (const auto* text = std::get_if<const char*>(&row.value)) {
            WriteText(element, row.name, *text, row.units, row.mult);
        } else if (const auto* whole = std::get_if<int>(&row.value)) {
            element->SetQuickParameterValue(row.name, *whole, row.units, row.mult);
        } else {
            element->SetQuickParameterValue(row.name, std::get<double>(row.value), row.units,
                                            row.mult);
        }
    }
    return true;
}

// The rows of the preset of that name, or null.
const PresetRows* FindPreset(const sPresetFamily& family, const std::string& preset) {
    for (const auto& [name, rows] : family.presets) {
        if (name == preset) return &rows;
    }
    return nullptr;
}

// A name that is not a preset of the family, or no element: nothing is written.
bool UnknownPreset(const char* setupName, const std::string& preset) {
    Log::log(1) << "OpticSetup::" << setupName << ": no preset \"" << preset << "\"\n";
    return false;
}

// Writes the common rows, the preset's rows and the last rows. False, with nothing
// written, for a name that is not a preset of the family or for no element.
bool ApplyPreset(const sPresetFamily& family, const std::string& preset, OpticElement* element) {
    const PresetRows* rows = FindPreset(family, preset);
    if (element == nullptr || rows == nullptr) return UnknownPreset(family.setupName, preset);
    Log::log(4) << "OpticSetup::" << family.setupName << "(" << preset << ")\n";
    return WriteRows(element, family.common) && WriteRows(element, *rows) &&
           WriteRows(element, family.last);
}

// What every element draws: its layout and axes, not its scale.
const PresetRows renderRows = {
    {PN_RENDLAY, "true"}, {PN_RENDAX, "true"},  {PN_RENDSCA, "false"},
    {PN_SHOW, "true"},    {PN_WHOWAS, "solid"},
};

// Sources: every preset launches 1 um rays of 5 W from a 10 mm source with an
// omnidirectional pattern; the point presets fan their rays over the angle, the planar ones
// lay them out on a plane. "Planar" is a plane source of a single position.
PresetRows PointSource(const char* angle, const char* count) {
    return {{PN_SRC, "point"}, {PN_LAY, "circleFull"},       {PN_ANG, angle, PU_D},
            {PN_CNT, count},   {PN_FIELDDIST, "sinusoidal"}, {PN_RPATAX, "z"}};
}

PresetRows PlanarSource(const char* shape, const char* count) {
    return {{PN_SRC, "plane"},
            {PN_LAY, shape},
            {PN_CNT, count},
            {PN_FIELDDIST, "sinusoidal"},
            {PN_RPATAX, "y"}};
}

PresetRows WithRows(PresetRows rows, const PresetRows& more) {
    rows.insert(rows.end(), more.begin(), more.end());
    return rows;
}

const sPresetFamily& SourceFamily() {
    static const sPresetFamily family = {
        "SetupSource",
        {
            {PN_TYP, "source"},
            {PN_LMDA, "1000", PU_M, PM_NANO},
            {PN_PWRWATT, "5", PU_WAT},
            {PN_GAINTX, "+8", PU_DBI},
            {PN_HPBWH, "45", PU_D},
            {PN_HPBWV, "15", PU_D},
            {PN_GAINMIN, "-2", PU_DBI},
            {PN_GAINROT, "0", PU_D},
            {PN_GAINTLT, "0", PU_D},
            {PN_TRLIM, "10"},
            {PN_REFLIM, "0"},
            {PN_TRANLIM, "0"},
            {PN_TRAT, "20", PU_PC},
            {PN_SIZ, "10", PU_M, PM_MILLI},
            {PN_RPAT, "radPattern_omnidirectional"},
            {PN_RPFIL, "# pythonScript \n"},
            {PN_RPATRES, "low"},
            {PN_RPATCOLOR, "red"},
            {PN_RPATSIZ, "1.0"},
            {PN_SCA, "linear"},
            {PN_RPATAPP_ARRAY, "false"},
            {PN_RPATAPP_SRC, "false"},
            {PN_RPATAPP_TORAYS, "false"},
            {PN_SRCSIZ, "0.5", PU_LMD},
            {PN_WAVLOP, "flat"},
            {PN_WAVDUR, "20"},
        },
        {
            {"Point360deg", PointSource("360", "1000")},
            {"Point180deg", PointSource("180", "200")},
            {"Point90deg", PointSource("90", "100")},
            {"Point45deg", PointSource("45", "20")},
            {"Point15deg", PointSource("15", "10")},
            {"Point5deg", PointSource("5", "10")},
            {"Point1deg", PointSource("1", "10")},
            {"PlanarSquare", PlanarSource("squareFull", "100")},
            {"PlanarCircle", PlanarSource("circleFull", "100")},
            {"PlanarLine", PlanarSource("line", "10")},
            {"PlanarCross", WithRows(PlanarSource("star", "20"), {{PN_ARMS, "5"}})},
            {"Planar", PlanarSource("single", "1")},
        },
        {
            {PN_RENDLAY, "true"},
            {PN_RENDAX, "true"},
            {PN_RENDSCA, "false"},
            {PN_RENDRAD, "false"},
            {PN_WHOWAS, "solid"},
        },
    };
    return family;
}

// Mirrors: a 50 mm round aperture that reflects all and transmits nothing, in air; the
// shape and its sign (+1 concave, -1 convex) by preset, with focal ratio 2.
PresetRows MirrorShape(const char* surface, const char* sign) {
    return {{PN_SURFSHAP, surface}, {PN_FNUM, "2.0"}, {PN_FACEMULT, sign}};
}

const sPresetFamily& MirrorFamily() {
    static const sPresetFamily family = {
        "SetupMirror",
        {
            {PN_TYP, "mirror"},
            {PN_APSIZE, "50", PU_M, PM_MILLI},
            {PN_APSHAP, "circle"},
            {PN_MED, "Vacuum/ air"},
            {PN_REFLECT, "true"},
            {PN_TRANSMIT, "false"},
            {PN_REFLECTRAT, "1.0"},
            {PN_TRANSMITRAT, "0.0"},
        },
        {
            {"Planar", {{PN_SURFSHAP, "surfaceFlat"}, {PN_FNUM, "0"}, {PN_FACEMULT, "+1"}}},
            {"CVParabolic", MirrorShape("surfacePolynomial", "+1")},
            {"CVSpherical", MirrorShape("surfaceSpherical", "+1")},
            {"CXParabolic", MirrorShape("surfacePolynomial", "-1")},
            {"CXSpherical", MirrorShape("surfaceSpherical", "-1")},
        },
        renderRows,
    };
    return family;
}

// Lenses: a 50 mm round glass lens (index 1.5, homogeneous) of focal ratio 2 and 10 mm
// thickness between its faces; the face sequence (double or plano, convex or concave) and
// the surface by preset.
PresetRows LensShape(const char* sequence, const char* surface) {
    return {{PN_SEQ, sequence}, {PN_SURFSHAP, surface}};
}

const sPresetFamily& LensFamily() {
    static const sPresetFamily family = {
        "SetupLens",
        {
            {PN_TYP, "lens"},
            {PN_APSIZE, "50", PU_M, PM_MILLI},
            {PN_APSHAP, "circle"},
            {PN_FNUM, "2.0"},
            {PN_EXTLENGTH, "10", PU_M, PM_MILLI},
            {PN_VOLTYP, "homogeneous"},
            {PN_VOLSTEPS, "1"},
            {PN_RINDPROF, "refIndex_Flat"},
            {PN_RIND, 1.5},
            {PN_RINDMIN, 1.5},
            {PN_RINDMAX, 1.5},
            {PN_REFLECT, "true"},
            {PN_TRANSMIT, "true"},
            {PN_REFLECTRAT, "0.1"},
            {PN_TRANSMITRAT, "0.9"},
        },
        {
            {"DCXParabolic", LensShape("DCX", "surfacePolynomial")},
            {"DCXSpherical", LensShape("DCX", "surfaceSpherical")},
            {"DCVParabolic", LensShape("DCV", "surfacePolynomial")},
            {"DCVSpherical", LensShape("DCV", "surfaceSpherical")},
            {"PCXParabolic", LensShape("PCX", "surfacePolynomial")},
            {"PCXSpherical", LensShape("PCX", "surfaceSpherical")},
            {"PCVParabolic", LensShape("PCV", "surfacePolynomial")},
            {"PCVSpherical", LensShape("PCV", "surfaceSpherical")},
        },
        renderRows,
    };
    return family;
}

// Waveguides: a 100 mm long stepped guide, core index 1.46 and cladding 1.44; the core is
// as wide as the preset says, the cladding twice that, in millimetres.
PresetRows GuideShape(const char* shape, double coreMillimetres) {
    return {{PN_APSHAP, shape},
            {PN_APSIZEIN, coreMillimetres, PU_M, PM_MILLI},
            {PN_APSIZEOUT, 2.0 * coreMillimetres, PU_M, PM_MILLI}};
}

const sPresetFamily& WaveguideFamily() {
    static const sPresetFamily family = {
        "SetupWaveguide",
        {
            {PN_TYP, "waveguide"},
            {PN_SEQ, "DCX"},
            {PN_SURFSHAP, "surfaceFlat"},
            {PN_EXTLENGTH, "100", PU_M, PM_MILLI},
            {PN_VOLTYP, "stepped"},
            {PN_VOLSTEPS, "2"},
            {PN_RINDPROF, "refIndex_Flat"},
            {PN_RIND, 1.46},
            {PN_RINDMIN, 1.44},
            {PN_RINDMAX, 1.46},
            {PN_REFLECT, "true"},
            {PN_TRANSMIT, "true"},
            {PN_REFLECTRAT, "1.0"},
            {PN_TRANSMITRAT, "1.0"},
        },
        {
            {"Circle2mm", GuideShape("circle", 2.0)},
            {"Circle10mm", GuideShape("circle", 10.0)},
            {"Circle25mm", GuideShape("circle", 25.0)},
            {"Circle100mm", GuideShape("circle", 100.0)},
            {"Square2mm", GuideShape("square", 2.0)},
            {"Square10mm", GuideShape("square", 10.0)},
            {"Square25mm", GuideShape("square", 25.0)},
            {"Square100mm", GuideShape("square", 100.0)},
        },
        renderRows,
    };
    return family;
}

// Objects: a 100 mm glass body (index 1.5) of equal proportions; the shape by preset.
const sPresetFamily& ObjectFamily() {
    static const sPresetFamily family = {
        "SetupObject",
        {
            {PN_TYP, "object"},
            {PN_SIZ, "100", PU_M, PM_MILLI},
            {PN_SHAPRATIO1, "1.0"},
            {PN_SHAPRATIO2, "1.0"},
            {PN_SHAPRATIO3, "1.0"},
            {PN_VOLTYP, "homogeneous"},
            {PN_RINDPROF, "refIndex_Flat"},
            {PN_RIND, 1.5},
            {PN_RINDMIN, 1.5},
            {PN_RINDMAX, 1.5},
            {PN_REFLECT, "true"},
            {PN_TRANSMIT, "true"},
            {PN_REFLECTRAT, "0.1"},
            {PN_TRANSMITRAT, "0.9"},
        },
        {
            {"Sphere", {{PN_OBJSHAP, "Sphere"}}},
            {"Cylinder", {{PN_OBJSHAP, "Cylinder"}}},
            {"Block", {{PN_OBJSHAP, "Block"}}},
        },
        renderRows,
    };
    return family;
}

// Importers: no file yet, at unit scale and no raise, forward along +y and up along +z; a
// model becomes a three-dimensional model, an image a picture.
const sPresetFamily& ImporterFamily() {
    static const sPresetFamily family = {
        "SetupImporter",
        {
            {PN_FNAM, ""},
            {PN_SCL, "1.0"},
            {PN_RSE, "0", PU_M},
            {PN_FWRD, "y+"},
            {PN_UP, "z+"},
        },
        {
            {"3Dmodel", {{PN_TYP, "import3d"}, {PN_IMPTYP, "3dModel"}}},
            {"Image", {{PN_TYP, "importImage"}}},
        },
        renderRows,
    };
    return family;
}

// Detectors: a flat 50 mm square that records what crosses it, with a receive gain of
// +2 dBi and a target power of -20 dB.
const sPresetFamily& DetectorFamily() {
    static const sPresetFamily family = {
        "SetupDetector",
        {
            {PN_TYP, "detector"},
            {PN_APSIZE, "50", PU_M, PM_MILLI},
            {PN_APSHAP, "square"},
            {PN_SURFSHAP, "surfaceFlat"},
            {PN_GAINRX, "+2", PU_DBI},
            {PN_RXPWR, "-20", PU_DB},
        },
        {{"detector", {}}},
        renderRows,
    };
    return family;
}

// Systems. The common block, then the building or the city column.
const PresetRows systemCommon = {
    {PN_SHOW, "true"},
    {PN_WHOWAS, "solid"},
    {PN_COLOR, "white"},
    {PN_BRGHT, "0.5"},
    {PN_BARTYPE, "thin"},
    {PN_BARREFMDL, "specular"},
    {PN_BARREFSPAR, "0.5"},
    {PN_BARREFALPAR, "5"},
    {PN_BARLOSMDL, "thin"},
    {PN_BARDIFMDL, "off"},
    {PN_BARDIFANGDEP, 0.03},
    {PN_BARDIFEXP, 3.5},
    {PN_DIFFANG, "360"},
    {PN_COLSCA, "blue-yellow-red"},
    {PN_TRACERENDERAS, "TX-RX Propagation Path"},
    {PN_RENDGRD, "false"},
    {PN_FREQ, "2400", PU_HZ, PM_MEGA},
    {PN_FREQBAND, "2.4 GHz WiFi"},
    {PN_FREQCHAN, "1"},
    {PN_GAINTX, "+8", PU_DBI},
    {PN_GAINRX, "+2", PU_DBI},
    {PN_HPBWH, "45", PU_D},
    {PN_HPBWV, "15", PU_D},
    {PN_GAINMIN, "-2", PU_DBI},
    {PN_GAINROT, "0"},
    {PN_GAINTLT, "0"},
    {PN_PWRWATT, "20", PU_WAT, PM_MILLI},
    {PN_REFLIM, "0"},
    {PN_TRANLIM, "0"},
    {PN_RXPWRSCL, "dB"},
    {PN_TRCMIN, -150, PU_DB},
    {PN_SCLL, "-100"},
    {PN_SCLH, "-20"},
    {PN_RPAT, "radPattern_dipole"},
    {PN_RPATAPP_SRC, "true"},
    {PN_RPATAPP_TORAYS, "true"},
    {PN_RENDRAD, "true"},
    {PN_SCA, "logarithmic"},
    {PN_RPATRES, "medium"},
    {PN_RPATCOLOR, "blue-yellow"},
    {PN_RPATAX, "z"},
};

// A three-dimensional building of 3 m storeys in a 20 m square, traced from 1.5 m with the
// indoor model and free-space exponent 2; the display layer at 1 m, test points 0.5 m wide
// on a 2 m grid.
const PresetRows buildingRows = {
    {PN_TRACELAYHEIGHT, 1.0, PU_M},
    {PN_VOLPROPEXP, "2.0"},
    {PN_TRACEDIM, "3D"},
    {PN_SYSTYP, "building"},
    {PN_RAYGAP, "2.0"},
    {PN_VOLPROPMDL, "(Indoor Hotspot) ITU-R M.2135 InH LOS"},
    {PN_BARTRNMDL, "conductive"},
    {PN_SNSIZ, "0.2", PU_M},
    {PN_SIZ, "20", PU_M},
    {PN_REFLECT, "true"},
    {PN_TRANSMIT, "true"},
    {PN_BARBSE, 0.0, PU_M},
    {PN_BARHGT, 3.0, PU_M},
    {PN_THICKNESS, "200", PU_M, PM_MILLI},
    {PN_HEIGHT, 3.0, PU_M},
    {PN_RXSIZ, 0.5},
    {PN_TRACEGAP, 2.0, PU_M},
    {PN_SHOWFPLAN, "true"},
    {FLTHK, "200", PU_M, PM_MILLI},
    {CETHK, "20", PU_M, PM_MILLI},
    {PN_TRLIM, 5},
    {PN_RXHGT, 1.5, PU_M},
};

// A three-dimensional city of 20 m blocks and 20 m buildings in a 200 m square, traced from
// 1.5 m with the urban micro-cell model and free-space exponent 2; the display layer at
// 1.5 m.
const PresetRows cityRows = {
    {PN_TRACELAYHEIGHT, 1.5, PU_M},
    {PN_VOLPROPEXP, "2.0"},
    {PN_TRACEDIM, "3D"},
    {PN_SYSTYP, "urban city"},
    {PN_RAYGAP, "2.0"},
    {PN_VOLPROPMDL, "(Urban Micro cell) ITU-R M.2135 UMi LOS"},
    {PN_BARTRNMDL, "off"},
    {PN_SNSIZ, "2.0", PU_M},
    {PN_SIZ, "200", PU_M},
    {PN_REFLECT, "true"},
    {PN_TRANSMIT, "true"},
    {PN_BARBSE, "0", PU_M},
    {PN_BARHGT, "20", PU_M},
    {PN_THICKNESS, "0", PU_M, PM_MILLI},
    {PN_HEIGHT, "100", PU_M},
    {PN_RXSIZ, 2.0},
    {PN_TRACEGAP, 5.0, PU_M},
    {FLTHK, "0"},
    {PN_TRLIM, 4},
    {PN_RXHGT, 1.5, PU_M},
    {PN_BLKSZE, "20"},
    {PN_SHAPRATIO1, "1.0"},
    {PN_SHAPRATIO2, "1.0"},
    {PN_SHAPRATIO3, "1.0"},
    {PN_LONMAX, "0"},
    {PN_LONMIN, "0"},
    {PN_LATMAX, "0"},
    {PN_LATMIN, "0"},
};

const sPresetFamily& SystemFamily() {
    static const sPresetFamily family = {
        "SetupSystem",
        systemCommon,
        {
            {"Building", buildingRows},
            {"urban city", cityRows},
            {"suburban city", cityRows},
            {"rural area", cityRows},
            {"tunnel", cityRows},
        },
        {
            {PN_TYP, "system"},
            {PN_SYSOUT, "true"},
            {PN_RENDLAY, "true"},
            {PN_RENDAX, "true"},
            {PN_RENDSCA, "false"},
            {PN_RENDGRD, "false"},
        },
    };
    return family;
}

// The edit options of setLossValues that pick the default wall, floor and ceiling materials.
constexpr int wallLossOption = 4;
constexpr int floorLossOption = 23;
constexpr int ceilingLossOption = 30;

// The three loss tables of a system, filled with the default materials.
bool MakeLossTables(OpticElement* element) {
    bool filled = element->setLossValues(element->NewWallResponse(), wallLossOption);
    filled = element->setLossValues(element->NewFloorResponse(), floorLossOption) && filled;
    return element->setLossValues(element->NewCeilingResponse(), ceilingLossOption) && filled;
}

// A grid gap of a volume preset: the text of the gap and its multiplier of metres.
struct sGridGap {
    const char* preset;
    const char* gap;
    eParamMultiplier mult;
};

const sGridGap* FindGridGap(const std::vector<sGridGap>& gaps, const std::string& preset) {
    for (const sGridGap& gap : gaps) {
        if (preset == gap.preset) return &gap;
    }
    return nullptr;
}

const std::vector<sGridGap> traceGaps = {
    {"TraceVolume - 1mm", "1", PM_MILLI},     {"TraceVolume - 10mm", "10", PM_MILLI},
    {"TraceVolume - 100mm", "100", PM_MILLI}, {"TraceVolume - 1m", "1", PM_NON},
    {"TraceVolume - 10m", "10", PM_NON},      {"TraceVolume - 100m", "100", PM_NON},
};

const PresetRows traceVolumeRows = {
    {PN_TYP, "TraceVolume"},  {PN_RENDLAY, "true"},         {PN_RENDAX, "false"},
    {PN_RENDSCA, "false"},    {PN_COLSCA, "blue"},          {PN_TRACEDIM, "3D"},
    {PN_TRACEREND, "0.01"},   {PN_VOLPROPMDL, "FreeSpace"}, {PN_VOLPROPEXP, "2.0"},
    {PN_TRCMIN, -150, PU_DB}, {PN_SCLL, "-20", PU_DB},      {PN_SCLH, "0", PU_DB},
};

// The receive gain of a trace volume at a frequency in MHz, as an entry of its loss table.
bool AddReceiveGain(OpticElement* element, FreqResponseArray* table, const char* megahertz,
                    const char* gain) {
    Parameter frequency;
    frequency.setParName(PN_FREQ);
    frequency.setValue(megahertz);
    frequency.setUnits(PU_HZ);
    frequency.setMult(PM_MEGA);
    FreqResponse* entry = table->getResponse(&frequency, true);
    if (entry == nullptr) return false;
    element->AdoptResponse(entry);
    return WriteText(entry, PN_GAINRX, gain, PU_DBI, PM_NON);
}

const std::vector<sGridGap> fdtdGaps = {
    {"FDTDVolume - 1um", "1", PM_MICRO},     {"FDTDVolume - 10um", "10", PM_MICRO},
    {"FDTDVolume - 100um", "100", PM_MICRO}, {"FDTDVolume - 1mm", "1", PM_MILLI},
    {"FDTDVolume - 10mm", "10", PM_MILLI},   {"FDTDVolume - 100mm", "100", PM_MILLI},
};

// The solver's grid is 100 cells of the preset's gap on each side of a plane; the time step
// is half the time light takes over one cell, below the stability limit of a plane grid, and
// the sources ramp up over 20 steps. The absorbing border takes a tenth of the size, second
// order; the display shows the field magnitude above a tenth of its peak.
PresetRows FDTDRows(const sGridGap& gap) {
    const double metres = std::stod(gap.gap) * (gap.mult == PM_MICRO ? 1e-6 : 1e-3);
    const double timeStep = 0.5 * metres / 3e8;
    return {
        {PN_TYP, "FDTDVolume"},
        {PN_FDTDGAP, gap.gap, PU_M, gap.mult},
        {PN_SIZ, 100.0 * std::stod(gap.gap), PU_M, gap.mult},
        {PN_FDTDDIM, "2D"},
        {PN_TMSTP, timeStep, PU_S},
        {PN_RMPTM, 20.0 * timeStep, PU_S},
        {PN_PMLRAT, "0.1"},
        {PN_PMLORD, "2"},
        {PN_FDTDREND, "0.10"},
        {PN_FDTDRENDPROP, "E_magnitude"},
        {PN_COLSCA, "blue-red"},
        {PN_RENDLAY, "true"},
        {PN_RENDAX, "true"},
        {PN_RENDSCA, "true"},
    };
}

}  // namespace

std::string OpticSetup::PresetName(int index) { return OpticElement::GetNewElementName(index); }

bool OpticSetup::SetupSource(int index, OpticElement* element) {
    return SetupSource(PresetName(index), element);
}
bool OpticSetup::SetupMirror(int index, OpticElement* element) {
    return SetupMirror(PresetName(index), element);
}
bool OpticSetup::SetupLens(int index, OpticElement* element) {
    return SetupLens(PresetName(index), element);
}
bool OpticSetup::SetupWaveguide(int index, OpticElement* element) {
    return SetupWaveguide(PresetName(index), element);
}
bool OpticSetup::SetupObject(int index, OpticElement* element) {
    return SetupObject(PresetName(index), element);
}
bool OpticSetup::SetupDetector(int index, OpticElement* element) {
    return SetupDetector(PresetName(index), element);
}
bool OpticSetup::SetupImporter(int index, OpticElement* element) {
    return SetupImporter(PresetName(index), element);
}
bool OpticSetup::SetupSystem(int index, OpticElement* element) {
    return SetupSystem(PresetName(index), element);
}
bool OpticSetup::SetupFDTDVolume(int index, OpticElement* element) {
    return SetupFDTDVolume(PresetName(index), element);
}
bool OpticSetup::SetupTRACEVolume(int index, OpticElement* element) {
    return SetupTRACEVolume(PresetName(index), element);
}

bool OpticSetup::SetupSource(const std::string& preset, OpticElement* element) {
    return ApplyPreset(SourceFamily(), preset, element);
}
bool OpticSetup::SetupMirror(const std::string& preset, OpticElement* element) {
    return ApplyPreset(MirrorFamily(), preset, element);
}
bool OpticSetup::SetupLens(const std::string& preset, OpticElement* element) {
    return ApplyPreset(LensFamily(), preset, element);
}
bool OpticSetup::SetupWaveguide(const std::string& preset, OpticElement* element) {
    return ApplyPreset(WaveguideFamily(), preset, element);
}
bool OpticSetup::SetupObject(const std::string& preset, OpticElement* element) {
    return ApplyPreset(ObjectFamily(), preset, element);
}
bool OpticSetup::SetupDetector(const std::string& preset, OpticElement* element) {
    return ApplyPreset(DetectorFamily(), preset, element);
}
bool OpticSetup::SetupImporter(const std::string& preset, OpticElement* element) {
    return ApplyPreset(ImporterFamily(), preset, element);
}

bool OpticSetup::SetupSystem(const std::string& preset, OpticElement* element) {
    const sPresetFamily& family = SystemFamily();
    const PresetRows* rows = FindPreset(family, preset);
    if (element == nullptr || rows == nullptr) return UnknownPreset(family.setupName, preset);
    Log::log(4) << "OpticSetup::SetupSystem(" << preset << ")\n";
    // The loss tables come after every parameter, so that a system read back from its file,
    // which loads its parameters first, has its children in the same order.
    WriteRows(element, family.common);
    WriteRows(element, *rows);
    WriteRows(element, family.last);
    const bool filled = MakeLossTables(element);
    if (!filled) Log::log(1) << "OpticSetup::SetupSystem: the default materials are missing\n";
    return filled;
}

bool OpticSetup::SetupFDTDVolume(const std::string& preset, OpticElement* element) {
    const sGridGap* gap = FindGridGap(fdtdGaps, preset);
    if (element == nullptr || gap == nullptr) return UnknownPreset("SetupFDTDVolume", preset);
    return WriteRows(element, FDTDRows(*gap));
}

bool OpticSetup::SetupTRACEVolume(const std::string& preset, OpticElement* element) {
    const sGridGap* gap = FindGridGap(traceGaps, preset);
    if (element == nullptr || gap == nullptr) return UnknownPreset("SetupTRACEVolume", preset);
    WriteRows(element, traceVolumeRows);
    WriteText(element, PN_TRACEGAP, gap->gap, PU_M, gap->mult);
    // The receive gain per frequency is kept in the element's own loss table.
    FreqResponseArray* table = element->NewWallResponse();
    return AddReceiveGain(element, table, "2400", "+2") &&
           AddReceiveGain(element, table, "5000", "+4");
}
