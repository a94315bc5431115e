// The static tables of Parameter: texts of groups, names, values and numbers, the file
// texts of types, units and store types, and the multipliers.
#include <cstdlib>
#include <initializer_list>

#include "framework/Parameter.h"

std::map<eParamGroup, std::string> Parameter::paramGroupStrings;
std::map<eParamName, std::string> Parameter::paramNameGUIStrings;
std::map<eParamName, std::string> Parameter::paramNameFILEStrings;
std::map<eParamValue, std::string> Parameter::paramValStrings;
std::map<eParamNumber, std::string> Parameter::paramNumStrings;
std::map<eParamNumber, double> Parameter::paramNumValues;
std::map<eParamType, std::string> Parameter::paramTypFILEStrings;
std::map<eParamUnits, std::string> Parameter::paramUnitGUIStrings;
std::map<eParamUnits, std::string> Parameter::paramUnitFILEStrings;
std::map<eParamStoreType, std::string> Parameter::paramStoreTypFILEStrings;
std::map<eParamMultiplier, std::string> Parameter::paramMultiplierDesc;
std::map<eParamMultiplier, std::string> Parameter::paramMultiplierStrings;
std::map<eParamMultiplier, std::string> Parameter::paramMultiplierFILEStrings;
std::map<eParamMultiplier, double> Parameter::paramMultiplierValues;
std::map<eParamName, std::vector<std::string>> Parameter::paramStringOptions;
std::map<eParamValue, double> Parameter::channelFreqMap;
bool Parameter::loadedStringArrays = false;
bool Parameter::channelFreqMapSet = false;
std::mutex Parameter::tablesLock;

namespace {

// A run of consecutive table entries starting at first.
struct TextGroup {
    int first;
    std::initializer_list<const char*> texts;
};

// Each enumerator's file text is its own identifier.
#define FILE_TEXT(id) \
    { id, #id }

// Number texts that stand for zero at the head of a group have no value entry.
bool IsZeroText(const std::string& text) { return text == "0" || text == "0.0" || text == "0.00"; }

}  // namespace

void Parameter::LoadStringArrays() {
    std::lock_guard<std::mutex> guard(tablesLock);
    if (!loadedStringArrays) {
        LoadDescStrings();
        LoadNameStrings();
        LoadValueStrings();
        LoadNumberStrings();
        loadedStringArrays = true;
    }
    if (!channelFreqMapSet) {
        LoadChannelFreqMap();
        channelFreqMapSet = true;
    }
}

void Parameter::ClearStaticSpace() {
    std::lock_guard<std::mutex> guard(tablesLock);
    paramGroupStrings.clear();
    paramNameGUIStrings.clear();
    paramNameFILEStrings.clear();
    paramValStrings.clear();
    paramNumStrings.clear();
    paramNumValues.clear();
    paramTypFILEStrings.clear();
    paramUnitGUIStrings.clear();
    paramUnitFILEStrings.clear();
    paramStoreTypFILEStrings.clear();
    paramMultiplierDesc.clear();
    paramMultiplierStrings.clear();
    paramMultiplierFILEStrings.clear();
    paramMultiplierValues.clear();
    paramStringOptions.clear();
    channelFreqMap.clear();
    loadedStringArrays = false;
    channelFreqMapSet = false;
}

void Parameter::LoadDescStrings() {
    paramGroupStrings = {
        {PG_UNK, "error - unkown group"}, {PG_GENERAL, "general .."},
        {PG_RADPATTERN, "radPattern .."}, {PG_FDTD, "FDTD .."},
        {PG_TRACE, "TRACE .."},           {PG_SIGNAL, "Signal .."},
        {PG_RAYTRACING, "RayTracing .."}, {PG_SURFACE, "Surface .."},
        {PG_APERTURE, "Aperture .."},     {PG_RENDER, "Render .."},
        {PG_REFINDEX, "RefIndex .."},     {PG_MAPPING, "Mapping .."},
    };
    paramStoreTypFILEStrings = {
        FILE_TEXT(PS_NON), FILE_TEXT(PS_EVA), FILE_TEXT(PS_ENU), FILE_TEXT(PS_STR),
        FILE_TEXT(PS_DBL), FILE_TEXT(PS_FLT), FILE_TEXT(PS_INT), FILE_TEXT(PS_BOL),
    };
    paramTypFILEStrings = {
        FILE_TEXT(PT_INV), FILE_TEXT(PT_MASS), FILE_TEXT(PT_DIST),  FILE_TEXT(PT_ANG),
        FILE_TEXT(PT_TIM), FILE_TEXT(PT_FRQ),  FILE_TEXT(PT_PWR),   FILE_TEXT(PT_CLR),
        FILE_TEXT(PT_CNT), FILE_TEXT(PT_PC),   FILE_TEXT(PT_RAT),   FILE_TEXT(PT_PNT),
        FILE_TEXT(PT_DIR), FILE_TEXT(PT_MULT), FILE_TEXT(PT_SCTYP), FILE_TEXT(PT_BOOL),
        FILE_TEXT(PT_OTH),
    };

    struct UnitRow {
        eParamUnits units;
        const char* file;
        const char* display;
    };
    static const UnitRow units[] = {
        {PU_NON, "PU_NON", ""},  {PU_G, "PU_G", "g"},    {PU_M, "PU_M", "m"},
        {PU_D, "PU_D", "deg"},   {PU_R, "PU_R", "rad"},  {PU_S, "PU_S", "s"},
        {PU_HZ, "PU_HZ", "Hz"},  {PU_PC, "PU_PC", "%"},  {PU_LMD, "PU_LMD", "lamda"},
        {PU_WAT, "PU_WAT", "W"}, {PU_DB, "PU_DB", "dB"}, {PU_DBI, "PU_DBI", "dBi"},
    };
    for (const UnitRow& row : units) {
        paramUnitFILEStrings[row.units] = row.file;
        paramUnitGUIStrings[row.units] = row.display;
    }

    // PM_NON, no multiplier, has no entry.
    struct MultiplierRow {
        eParamMultiplier mult;
        const char* word;
        const char* prefix;
        const char* file;
        double factor;
    };
    static const MultiplierRow multipliers[] = {
        {PM_ATTO, "atto", "a", "PM_ATTO", 1e-18},   {PM_FEMTO, "femto", "f", "PM_FEMTO", 1e-15},
        {PM_PICO, "pico", "p", "PM_PICO", 1e-12},   {PM_NANO, "nano", "n", "PM_NANO", 1e-9},
        {PM_MICRO, "micro", "u", "PM_MICRO", 1e-6}, {PM_MILLI, "milli", "m", "PM_MILLI", 1e-3},
        {PM_ONE, "one", "", "PM_ONE", 1},           {PM_KILO, "kilo", "k", "PM_KILO", 1e3},
        {PM_MEGA, "Mega", "M", "PM_MEGA", 1e6},     {PM_GIGA, "Giga", "G", "PM_GIGA", 1e9},
        {PM_TERRA, "Terra", "T", "PM_TERRA", 1e12}, {PM_PETA, "Peta", "P", "PM_PETA", 1e15},
    };
    for (const MultiplierRow& row : multipliers) {
        paramMultiplierDesc[row.mult] = row.word;
        paramMultiplierStrings[row.mult] = row.prefix;
        paramMultiplierFILEStrings[row.mult] = row.file;
        paramMultiplierValues[row.mult] = row.factor;
    }
}

// Number, file text (the enumerator itself) and display text of every name. Two pairs
// share a display text, so only the file text is unique.
void Parameter::LoadNameStrings() {
    struct NameRow {
        eParamName name;
        const char* file;
        const char* display;
    };
#define NAME(id, display) \
    { id, #id, display }
    static const NameRow names[] = {
        NAME(PN_UNK, "unknown"),
        NAME(PN_NAM, "name"),
        NAME(PN_TYP, "type"),
        NAME(PN_SIZ, "size"),
        NAME(PN_SNSIZ, "snap size"),
        NAME(PN_WID, "width"),
        NAME(PN_LEN, "length"),
        NAME(PN_BASE, "base"),
        NAME(PN_HEIGHT, "height"),
        NAME(PN_THICKNESS, "thickness"),
        NAME(PN_ORIENTATION, "orientation"),
        NAME(PN_FDTDGAP, "FDTD grid gap"),
        NAME(PN_TRACEGAP, "Trace grid gap"),
        NAME(PN_TRACECHAN, "Trace channel"),
        NAME(PN_RDET, "renderDetail"),
        NAME(PN_FNAM, "fileLocation"),
        NAME(PN_DNAM, "dirname"),
        NAME(PN_SHOW, "show"),
        NAME(PN_WHOWAS, "showAs"),
        NAME(PN_COLOR, "color"),
        NAME(PN_BRGHT, "brightness"),
        NAME(PN_TRANS, "transparency"),
        NAME(PN_SPEC, "specularity"),
        NAME(PN_ONWLNE, "onWayline"),
        NAME(PN_SPD, "speed"),
        NAME(PN_DLY, "delay"),
        NAME(PN_SCL, "modelScale"),
        NAME(PN_RSE, "modelRaise"),
        NAME(PN_FWRD, "modelForward"),
        NAME(PN_UP, "upDirection"),
        NAME(PN_SRC, "sourceType"),
        NAME(PN_LAY, "layoutShape"),
        NAME(PN_RPAT, "radPattern"),
        NAME(PN_RPFIL, "radPatternFilename"),
        NAME(PN_RPATAX, "radPatternAxis"),
        NAME(PN_RPATRES, "radPatternRes"),
        NAME(PN_RPATAPP_ARRAY, "radPatternApplyArray"),
        NAME(PN_RPATAPP_SRC, "radPatternApplySource"),
        NAME(PN_RPATAPP_TORAYS, "radPatternApplyToRays"),
        NAME(PN_RPATCOLOR, "radPatternColor"),
        NAME(PN_RPATSIZ, "radPatternSize"),
        NAME(PN_SCA, "radPatternScale"),
        NAME(PN_WAVFRM, "waveform"),
        NAME(PN_WAVLOP, "waveEnvelope"),
        NAME(PN_WAVDUR, "waveDuration"),
        NAME(PN_FIELDDIST, "radSourceFieldDist"),
        NAME(PN_SRCSIZ, "radSourceSize"),
        NAME(PN_ARRTYP, "arrayType"),
        NAME(PN_ARRSHA, "arrayShape"),
        NAME(PN_ARMS, "armCount"),
        NAME(PN_ANG, "angle"),
        NAME(PN_CNT, "count"),
        NAME(PN_LMDA, "wavelength"),
        NAME(PN_FREQ, "frequency"),
        NAME(PN_FREQBAND, "frequencyBand"),
        NAME(PN_FREQCHAN, "frequencyChannel"),
        NAME(PN_PWRWATT, "power"),
        NAME(PN_PWRDB, "power"),
        NAME(PN_GAINTX, "gainTx"),
        NAME(PN_GAINTXMIN, "gainTxMin"),
        NAME(PN_GAINRX, "gainRx"),
        NAME(PN_GAINRXMIN, "gainRxMin"),
        NAME(PN_HPBWH, "halfBeamWidthHoriz"),
        NAME(PN_HPBWV, "halfBeamWidthVert"),
        NAME(PN_GAINMIN, "gainMin"),
        NAME(PN_GAINROT, "beamRotation"),
        NAME(PN_GAINTLT, "beamTilt"),
        NAME(PN_TXCHGT, "TXHeight"),
        NAME(PN_RXHGT, "RXHeight"),
        NAME(PN_RXSIZ, "RXCatchSize"),
        NAME(PN_RXPWR, "RXTargetPower"),
        NAME(PN_BARBSE, "barrierBase"),
        NAME(PN_BARHGT, "barrierHeight"),
        NAME(PN_TRCMIN, "minTracePower"),
        NAME(PN_SCLL, "scaleLowLimit"),
        NAME(PN_SCLH, "scaleHighLimit"),
        NAME(PN_TRLIM, "traceLimit"),
        NAME(PN_REFLIM, "reflectLimit"),
        NAME(PN_TRANLIM, "transmitLimit"),
        NAME(PN_TRAT, "testRatio"),
        NAME(PN_TCNT, "testCount"),
        NAME(PN_PHDIR, "phaseDir"),
        NAME(PN_PHPNT, "phasePoint"),
        NAME(PN_RMPTM, "rampTime"),
        NAME(PN_TMSTP, "timeStep"),
        NAME(PN_RXPWRSCL, "receivePowerScale"),
        NAME(PN_IMPTYP, "importerType"),
        NAME(PN_SYSTYP, "systemType"),
        NAME(PN_NTKTYP, "networkType"),
        NAME(PN_PRPMDL, "propagationModel"),
        NAME(PN_SYSOUT, "systemHasOuter"),
        NAME(PN_SOLVTYP, "solverType"),
        NAME(PN_USEOSM, "useOpenStreetMap"),
        NAME(PN_USETER, "useTerrain"),
        NAME(PN_USESAT, "useSatelliteImage"),
        NAME(PN_USEBAK, "useLocalBackup"),
        NAME(PN_OSMFILE, "OSMFile"),
        NAME(PN_OSMCONTENT, "OSMContent"),
        NAME(PN_LOADBLDG, "LoadBuildings"),
        NAME(PN_LOADROAD, "LoadRoads"),
        NAME(PN_LOADLAKES, "LoadLakes"),
        NAME(PN_LOADPARKS, "LoadParks"),
        NAME(PN_LOADRAIL, "LoadRail"),
        NAME(PN_LOADWALKWAYS, "LoadWalkWays"),
        NAME(PN_LOADTREES, "LoadTrees"),
        NAME(PN_LOADBENCHES, "LoadBenches"),
        NAME(PN_FNUM, "FNumber"),
        NAME(PN_SEQ, "shapeSequence"),
        NAME(PN_VOL, "volume"),
        NAME(PN_MED, "medium"),
        NAME(PN_RIND, "refractiveIndex"),
        NAME(PN_VOLTYP, "vlumeType"),
        NAME(PN_VOLSTEPS, "vlumeSteps"),
        NAME(PN_RINDPROF, "refIndexProfile"),
        NAME(PN_RINDMIN, "refIndexMin"),
        NAME(PN_RINDMAX, "refIndexMax"),
        NAME(PN_RINDPEAKWID, "refIndexPeakHalfWidth"),
        NAME(PN_RINDOFFSET, "refIndexPeakOffset"),
        NAME(PN_RINDPROFPARAM, "refIndexProfileParameter"),
        NAME(PN_REFLECT, "reflect"),
        NAME(PN_TRANSMIT, "transmit"),
        NAME(PN_REFLECTRAT, "reflectRatio"),
        NAME(PN_TRANSMITRAT, "transmitRatio"),
        NAME(PN_VOLSTEPDIST, "volumeStepDistance"),
        NAME(PN_PMLRAT, "PMLRatio"),
        NAME(PN_PMLORD, "PMLOrder"),
        NAME(PN_FDTDDIM, "Dimensions"),
        NAME(PN_FDTDREND, "RenderLevel"),
        NAME(PN_FDTDRENDPROP, "RenderProperty"),
        NAME(PN_TRACEDIM, "Dimensions"),
        NAME(PN_TRACEREND, "RenderLevel"),
        NAME(PN_TRACELAYHEIGHT, "RenderLayerHeight"),
        NAME(PN_TRACERENDERAS, "RenderBy"),
        NAME(PN_ACCPNT, "AccessPoint"),
        NAME(PN_ANTNA, "Antenna"),
        NAME(PN_VOLPROPMDL, "LOSPowerLossModel"),
        NAME(PN_VOLPROPEXP, "LOSExponent"),
        NAME(PN_REFLOSS, "reflectLoss"),
        NAME(PN_TRANSLOSS, "transmitLoss"),
        NAME(PN_BARTYPE, "barrierType"),
        NAME(PN_BARREFMDL, "barrierReflectModel"),
        NAME(PN_BARREFSPAR, "barrierReflectSParameter"),
        NAME(PN_BARREFALPAR, "barrierReflectAlphaParameter"),
        NAME(PN_BARTRNMDL, "barrierTransmitModel"),
        NAME(PN_BARLOSMDL, "barrierLossModel"),
        NAME(PN_BARDIFMDL, "barrierDiffractModel"),
        NAME(PN_BARDIFANGDEP, "diffAngleDep"),
        NAME(PN_BARDIFEXP, "diffExp"),
        NAME(PN_RAYGAP, "rayGap"),
        NAME(PN_DIFFANG, "diffuseAngle"),
        NAME(PN_VOLLOSS, "volumeLoss/cm"),
        NAME(PN_RELPERM, "relativePermitivity"),
        NAME(PN_RELCOND, "conductivity"),
        NAME(PN_RELROUGH, "surfaceRoughness"),
        NAME(FLMAT, "floorMaterial"),
        NAME(FLTHK, "floorThickness"),
        NAME(CEMAT, "ceilingMaterial"),
        NAME(CETHK, "ceilingThickness"),
        NAME(PN_BLKSZE, "blockSize"),
        NAME(PN_MDLDIR, "modelDirectory"),
        NAME(PN_MDLHGT, "modelHeight"),
        NAME(PN_MDLBLD, "modelBuildings"),
        NAME(PN_LONMAX, "longitudeMax"),
        NAME(PN_LONMIN, "longitudeMin"),
        NAME(PN_LATMAX, "latitudeMax"),
        NAME(PN_LATMIN, "latitudeMin"),
        NAME(PN_XMAX, "xMax"),
        NAME(PN_XMIN, "xMin"),
        NAME(PN_YMAX, "yMax"),
        NAME(PN_YMIN, "yMin"),
        NAME(PN_FACEMULT, "surfaceMultiplier"),
        NAME(PN_APSIZE, "apertureSize"),
        NAME(PN_APSIZEIN, "apertureSizeInner"),
        NAME(PN_APSIZEOUT, "apertureSizeOuter"),
        NAME(PN_APSHAP, "apertureShape"),
        NAME(PN_SURFSHAP, "surfaceShapeName"),
        NAME(PN_OBJSHAP, "objectShapeName"),
        NAME(PN_SHAPRATIO1, "ratio1"),
        NAME(PN_SHAPRATIO2, "ratio2"),
        NAME(PN_SHAPRATIO3, "ratio3"),
        NAME(PN_EXTLENGTH, "extendLength"),
        NAME(PN_SPHERRAD, "sphericalRadius"),
        NAME(PN_SURFOFFSET, "surfaceOffset"),
        NAME(PN_RAD, "radius"),
        NAME(PN_OFFSET, "offset"),
        NAME(PN_MULT, "multiplier"),
        NAME(PN_FLEN, "focalLength"),
        NAME(PN_COORDSYS, "coordSystem"),
        NAME(PN_FUNCPARCNT, "functionParCount"),
        NAME(FUNCPAR, "functionParameter"),
        NAME(PN_CIN, "centreIn"),
        NAME(PN_COUT, "centreOut"),
        NAME(PN_2DVSGN, "2ndDerivSign"),
        NAME(PN_COEFF, "coefficient"),
        NAME(PN_PROFTYP, "profileType"),
        NAME(PN_PROFRES, "profileResolution"),
        NAME(PN_PROFHGHTRAT, "profileHeightRatio"),
        NAME(PN_PROFCOL, "profileHeightColor"),
        NAME(PN_COLSCA, "colorScale"),
        NAME(PN_COLSCATYP, "colorScaleType"),
        NAME(PN_DIM1, "dim1"),
        NAME(PN_DIM2, "dim2"),
        NAME(PN_VAL, "value"),
        NAME(PN_RENDLAY, "renderLayout"),
        NAME(PN_RENDAX, "renderAxes"),
        NAME(PN_RENDSCA, "renderScale"),
        NAME(PN_RENDGRD, "renderGrid"),
        NAME(PN_RENDRAD, "renderRadPattern"),
        NAME(PN_SHOWFPLAN, "showFloorPlan"),
    };
#undef NAME
    paramNameGUIStrings[static_cast<eParamName>(0)] = "";
    for (const NameRow& row : names) {
        paramNameFILEStrings[row.name] = row.file;
        paramNameGUIStrings[row.name] = row.display;
    }
}

// The value lists, one group per parameter that offers them; a gap of two numbers separates
// the groups. The channel entries follow from the channel list.
void Parameter::LoadValueStrings() {
    static const TextGroup groups[] = {
        {1, {"", "value"}},
        {4,
         {"source", "mirror", "lens", "waveguide", "object", "importer", "import3d", "importImage",
          "system", "building", "urban city", "suburban city"}},
        {17, {"wireless", "wifi", "4G", "5G"}},
        {22,
         {"detector", "FDTDVolume", "TraceVolume", "elementGroup", "pointPointHeight",
          "pointPointWidthHeight", "pointPointWidth", "apertureFunction"}},
        {31, {"apertureExtend", "closedSurface", "3dModel"}},
        {36, {"veryLow", "low", "medium", "high", "veryHigh"}},
        {43, {"point", "plane"}},
        {47, {"trace", "fdtd"}},
        {51, {"sin", "flat"}},
        {55, {"flat", "gaussian"}},
        {59, {"uniform", "sinusoidal"}},
        {63, {"dB", "dBm"}},
        {67,
         {"radPattern_omnidirectional", "radPattern_dipole", "radPattern_hpbw",
          "radPattern_fromFile"}},
        {73, {"single", "line", "star", "circleFull", "circleEmpty", "squareFull", "squareEmpty"}},
        {82, {"circle", "square", "pointsWidth", "circle3d", "square3d"}},
        {90,
         {"surfaceFlat", "surfacePolynomial", "surfaceSpherical", "surfaceCube",
          "surfaceApertureExtend"}},
        {97, {"Sphere", "Cylinder", "Block"}},
        {103, {"cylindrical", "spherical", "cartesian"}},
        {108, {"radius", "angle", "height"}},
        {113, {"DCX", "DCV", "PCX", "PCV"}},
        {119, {"hollow", "homogeneous", "stepped", "Radial"}},
        {125, {"vertical", "horizontal"}},
        {129, {"refIndex_Flat", "refIndex_cone", "refIndex_gaussian", "refIndex_powerLaw"}},
        {135, {"E_x", "E_y", "E_z", "E_magnitude", "B_x", "B_y", "B_z", "B_magnitude"}},
        {145, {"WINNERII", "WINNER+", "ITU-R", "3GPP", "Ray tracing"}},
        {152,
         {"FreeSpace", "FreeSpace with Exponent", "(Indoor Hotspot) ITU-R M.2135 InH LOS",
          "(Indoor Hotspot) ITU-R M.2135 InH NLOS", "(Urban Micro cell) ITU-R M.2135 UMi LOS",
          "(Urban Micro cell) ITU-R M.2135 UMi NLOS", "(Urban Macro cell) ITU-R M.2135 UMa LOS",
          "(Urban Macro cell) ITU-R M.2135 UMa NLOS", "(In building) WINNER II A1 ",
          "(Typical urban microcell) WINNER II B1 ", "(Urban microcell LOS) WINNER + "}},
        {165, {"thin", "thick"}},
        {169, {"off", "specular", "uniformDiffuse", "lambertian", "directive", "scattering"}},
        {177, {"off", "conductive", "linearAttenuation"}},
        {182, {"dBLoss", "thick", "thin"}},
        {187, {"off", "BERG", "KED (knife-edge)"}},
        {192,
         {"points", "phase", "triRayMesh", "triRayIntensity", "triRayIntensityInterpolateflat",
          "triRayIntensityInterpolateSmooth", "triRayPhase", "triRayPhaseInterpolateFlat",
          "triRayPhaseInterpolateSmooth"}},
        {203, {"veryLow", "low", "medium", "high", "veryHigh"}},
        {210, {"veryLow-0.00", "low-0.05", "medium-0.10", "high-0.20", "veryHigh-0.50"}},
        {217, {"x", "y", "z"}},
        {222, {"x", "y", "z", "xy", "yz", "zx", "xyz"}},
        {231, {"xy", "yz", "zx", "xyz"}},
        {237, {"x+", "x-", "y+", "y-", "z+", "z-"}},
        {245, {"x", "y", "z"}},
        {250, {"x", "y", "z", "xy", "yz", "zx", "xyz"}},
        {259, {"xy", "yz", "zx", "xyz"}},
        {265, {"solid", "wire"}},
        {269, {"heatmap", "TX-RX Propagation Path", "allRays"}},
        {274,
         {"none", "2.4 GHz WiFi", "5.0 GHz WiFi", "4G LTE", "5GNR FR1 (sub-6GHz)",
          "5GNR FR2 (mmWave)"}},
        {282, {"none"}},
        {516,
         {"grey", "red", "green", "blue", "blue-red", "blue-yellow", "red-yellow",
          "red-green-yellow", "blue-green-red", "red-yellow-blue", "green-yellow-red",
          "blue-yellow-red"}},
        {530, {"white", "orange"}},
        {533, {"red", "green", "blue", "purple"}},
        {543, {"linear", "logarithmic"}},
        {547, {"true", "false"}},
    };
    for (const TextGroup& group : groups) {
        int key = group.first;
        for (const char* text : group.texts)
            paramValStrings[static_cast<eParamValue>(key++)] = text;
    }
    ForEachChannel([](eParamValue channel, const std::string& text, double) {
        paramValStrings[channel] = text;
    });
}

// The number lists. Each entry's value is the number its text shows ("1D" shows 1), but for
// a zero at the head of a group, which has no value entry and so reads 0.
void Parameter::LoadNumberStrings() {
    static const TextGroup groups[] = {
        {3, {"1D", "2D", "3D"}},
        {8, {"0.0", "0.1", "0.2", "0.5", "1.0"}},
        {15, {"0.0", "0.1", "0.2", "0.3", "0.4", "0.5", "0.6", "0.7", "0.8", "0.9", "1.0"}},
        {28, {"0.00", "0.01", "0.02", "0.05", "0.10", "0.20", "0.50", "1.00"}},
        {38, {"-10", "-5", "-2", "-1", "0", "+1", "+2", "+5", "+10"}},
        {49, {"-10", "-9", "-8", "-7", "-6", "-5", "-4", "-3", "-2", "-1", "0",
              "+1",  "+2", "+3", "+4", "+5", "+6", "+7", "+8", "+9", "+10"}},
        {72, {"0", "0.1", "0.2", "0.5", "1.0", "2.0", "5.0", "10"}},
        {82, {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "10"}},
        {95, {"0", "1", "2", "5", "10", "20", "50", "100"}},
        {105, {"0", "10", "20", "30", "40", "50", "60", "70", "80", "90", "100"}},
        {118, {"0", "1", "2", "5", "10", "20", "50", "100", "200", "500", "1000"}},
        {131, {"0", "100", "200", "300", "400", "500", "600", "700", "800", "900", "1000"}},
        {144, {"0",     "1",     "2",      "5",      "10",     "20",     "50",
               "100",   "200",   "500",    "1000",   "2000",   "5000",   "10000",
               "20000", "50000", "100000", "200000", "500000", "1000000"}},
        {166,
         {"0", "100000", "200000", "300000", "400000", "500000", "600000", "700000", "800000",
          "900000", "1000000"}},
        {179,
         {"0", "30", "60", "90", "120", "150", "180", "210", "240", "270", "300", "330", "360"}},
        {195, {"1", "5", "15", "45", "90", "180", "360"}},
        {204, {"-90", "-60", "-30", "0", "+30", "+60", "+90"}},
        {213,
         {"-180", "-150", "-120", "-90", "-60", "-30", "0", "+30", "+60", "+90", "+120", "+150",
          "+180"}},
        {228,
         {"700", "800", "850", "900", "1500", "1700", "1800", "1900", "2100", "2300", "2400",
          "2500", "2600", "3500", "5000"}},
        {245, {"0.0", "0.1", "0.2", "0.5", "1.0", "2.0", "5.0", "10.0", "20.0", "50.0", "100.0"}},
        {258, {"-1", "0", "+1"}},
        {263, {"-10", "-8", "-6", "-4", "-2", "0", "+2", "+4", "+6", "+8", "+10"}},
        {276,
         {"-100", "-50", "-20", "-10", "-5", "-2", "-1", "0", "+1", "+2", "+5", "+10", "+20", "+50",
          "+100"}},
        {293, {"-1000", "-500", "-200", "-100", "-50", "-20", "-10",  "-5",   "-2",   "-1",   "0",
               "+1",    "+2",   "+5",   "+10",  "+20", "+50", "+100", "+200", "+500", "+1000"}},
    };
    paramNumStrings[PNUM_NONE] = "None";
    paramNumValues[PNUM_NONE] = 0;
    for (const TextGroup& group : groups) {
        int key = group.first;
        for (const char* text : group.texts) {
            const eParamNumber number = static_cast<eParamNumber>(key++);
            paramNumStrings[number] = text;
            if (number != group.first || !IsZeroText(text)) {
                paramNumValues[number] = std::strtod(text, nullptr);
            }
        }
    }
}
