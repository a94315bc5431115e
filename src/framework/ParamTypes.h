#pragma once

// The enumerations that type, scale and name a parameter, and the descriptor that carries
// them. Their numbers are fixed: the tables of Parameter key on them, and files and the
// wire carry the matching "PN_", "PT_", "PU_", "PM_" and "PS_" texts, never the numbers.

// Display group of a parameter.
enum eParamGroup : int {
    PG_UNK = 1,
    PG_GENERAL = 2,
    PG_RADPATTERN = 3,
    PG_FDTD = 4,
    PG_TRACE = 5,
    PG_SIGNAL = 6,
    PG_RAYTRACING = 7,
    PG_SURFACE = 8,
    PG_APERTURE = 9,
    PG_RENDER = 10,
    PG_REFINDEX = 11,
    PG_MAPPING = 12,
};

// Which value field of a parameter is the master copy.
enum eParamStoreType : int {
    PS_NON = 1,
    PS_EVA = 2,  // an eParamValue
    PS_ENU = 3,  // an eParamNumber
    PS_STR = 4,
    PS_DBL = 5,
    PS_FLT = 6,
    PS_INT = 7,
    PS_BOL = 8,
};

// Physical kind of a value.
enum eParamType : int {
    PT_INV = 1,
    PT_MASS = 2,
    PT_DIST = 3,
    PT_ANG = 4,
    PT_TIM = 5,
    PT_FRQ = 6,
    PT_PWR = 7,
    PT_CLR = 8,
    PT_CNT = 9,
    PT_PC = 10,
    PT_RAT = 11,
    PT_PNT = 12,
    PT_DIR = 13,
    PT_MULT = 14,
    PT_SCTYP = 15,
    PT_BOOL = 16,
    PT_OTH = 17,
};

enum eParamUnits : int {
    PU_NON = 1,
    PU_G = 2,
    PU_M = 3,
    PU_D = 4,
    PU_R = 5,
    PU_S = 6,
    PU_HZ = 7,
    PU_PC = 8,
    PU_LMD = 9,
    PU_WAT = 10,
    PU_DB = 11,
    PU_DBI = 12,
};

// Decimal prefix of a value. PM_NON means no multiplier at all; PM_ONE is the explicit
// factor 1 with an empty prefix.
enum eParamMultiplier : int {
    PM_NON = 1,
    PM_ATTO = 2,
    PM_FEMTO = 3,
    PM_PICO = 4,
    PM_NANO = 5,
    PM_MICRO = 6,
    PM_MILLI = 7,
    PM_ONE = 8,
    PM_KILO = 9,
    PM_MEGA = 10,
    PM_GIGA = 11,
    PM_TERRA = 12,
    PM_PETA = 13,
};

// What GetValueOptions offers for a parameter. The kinds PO_NUM_... offer a fixed range of
// the eParamNumber table, named here after its entries.
enum eParamOptions : int {
    PO_FREE = 1,                // nothing: a free value
    PO_VALUES = 2,              // eParamValue texts from the first to the last limit
    PO_FILE = 3,                // a file chooser
    PO_DIRECTORY = 4,           // a directory chooser
    PO_STRINGS = 5,             // the string options of the name, or of the object
    PO_BOOL = 6,                // "true" or "false"
    PO_NUM_DIMS = 7,            // 1D .. 3D
    PO_NUM_1_FIVE = 8,          // 0.0 .. 1.0 in five steps
    PO_NUM_1_TENTHS = 9,        // 0.0 .. 1.0 by 0.1
    PO_NUM_1_HUNDREDTHS = 10,   // 0.00 .. 1.00
    PO_NUM_PM10_COARSE = 11,    // -10 .. +10 in nine steps
    PO_NUM_PM10 = 12,           // -10 .. +10 by 1
    PO_NUM_10_FRACT = 13,       // 0 .. 10 by 1, 2, 5 and their tenths
    PO_NUM_10 = 14,             // 0 .. 10 by 1
    PO_NUM_100 = 15,            // 0 .. 100 by 1, 2, 5
    PO_NUM_100_TENS = 16,       // 0 .. 100 by 10
    PO_NUM_1000 = 17,           // 0 .. 1000 by 1, 2, 5
    PO_NUM_1000_HUNDREDS = 18,  // 0 .. 1000 by 100
    PO_NUM_1E6 = 19,            // 0 .. 1000000 by 1, 2, 5
    PO_NUM_1E6_STEPS = 20,      // 0 .. 1000000 by 100000
    PO_NUM_DEG360 = 21,         // 0 .. 360 by 30
    PO_NUM_WIDTH360 = 22,       // 1 .. 360, angular widths
    PO_NUM_DEG_PM90 = 23,       // -90 .. +90 by 30
    PO_NUM_DEG_PM180 = 24,      // -180 .. +180 by 30
    PO_NUM_FREQ_MHZ = 25,       // 700 .. 5000, frequencies in MHz
    PO_NUM_100_FRACT = 26,      // 0.0 .. 100.0 by 1, 2, 5 and their tenths
    PO_NUM_SIGN = 27,           // -1, 0, +1
    PO_NUM_PM10_EVEN = 28,      // -10 .. +10 by 2
    PO_NUM_PM100 = 29,          // -100 .. +100 by 1, 2, 5
    PO_NUM_PM1000 = 30,         // -1000 .. +1000 by 1, 2, 5
    PO_VALUES_31 = 31,          // 31 .. 37 but 34: like PO_VALUES
    PO_VALUES_32 = 32,
    PO_VALUES_33 = 33,
    PO_NONE_34 = 34,  // nothing
    PO_VALUES_35 = 35,
    PO_VALUES_36 = 36,
    PO_VALUES_37 = 37,
};

// Which parameter this is; the enumerators are the parameters' file names.
enum eParamName : int {
    PN_UNK = 1,
    PN_NAM = 2,
    PN_TYP = 3,
    PN_SIZ = 4,
    PN_SNSIZ = 5,
    PN_WID = 6,
    PN_LEN = 7,
    PN_BASE = 8,
    PN_HEIGHT = 9,
    PN_THICKNESS = 10,
    PN_ORIENTATION = 11,
    PN_FDTDGAP = 12,
    PN_TRACEGAP = 13,
    PN_TRACECHAN = 14,
    PN_RDET = 15,
    PN_FNAM = 16,
    PN_DNAM = 17,
    PN_SHOW = 18,
    PN_WHOWAS = 19,
    PN_COLOR = 20,
    PN_BRGHT = 21,
    PN_TRANS = 22,
    PN_SPEC = 23,
    PN_ONWLNE = 24,
    PN_SPD = 25,
    PN_DLY = 26,
    PN_SCL = 27,
    PN_RSE = 28,
    PN_FWRD = 29,
    PN_UP = 30,
    PN_SRC = 31,
    PN_LAY = 32,
    PN_RPAT = 33,
    PN_RPFIL = 34,
    PN_RPATAX = 35,
    PN_RPATRES = 36,
    PN_RPATAPP_ARRAY = 37,
    PN_RPATAPP_SRC = 38,
    PN_RPATAPP_TORAYS = 39,
    PN_RPATCOLOR = 40,
    PN_RPATSIZ = 41,
    PN_SCA = 42,
    PN_WAVFRM = 43,
    PN_WAVLOP = 44,
    PN_WAVDUR = 45,
    PN_FIELDDIST = 46,
    PN_SRCSIZ = 47,
    PN_ARRTYP = 48,
    PN_ARRSHA = 49,
    PN_ARMS = 50,
    PN_ANG = 51,
    PN_CNT = 52,
    PN_LMDA = 53,
    PN_FREQ = 54,
    PN_FREQBAND = 55,
    PN_FREQCHAN = 56,
    PN_PWRWATT = 57,
    PN_PWRDB = 58,
    PN_GAINTX = 59,
    PN_GAINTXMIN = 60,
    PN_GAINRX = 61,
    PN_GAINRXMIN = 62,
    PN_HPBWH = 63,
    PN_HPBWV = 64,
    PN_GAINMIN = 65,
    PN_GAINROT = 66,
    PN_GAINTLT = 67,
    PN_TXCHGT = 68,
    PN_RXHGT = 69,
    PN_RXSIZ = 70,
    PN_RXPWR = 71,
    PN_BARBSE = 72,
    PN_BARHGT = 73,
    PN_TRCMIN = 74,
    PN_SCLL = 75,
    PN_SCLH = 76,
    PN_TRLIM = 77,
    PN_REFLIM = 78,
    PN_TRANLIM = 79,
    PN_TRAT = 80,
    PN_TCNT = 81,
    PN_PHDIR = 82,
    PN_PHPNT = 83,
    PN_RMPTM = 84,
    PN_TMSTP = 85,
    PN_RXPWRSCL = 86,
    PN_IMPTYP = 87,
    PN_SYSTYP = 88,
    PN_NTKTYP = 89,
    PN_PRPMDL = 90,
    PN_SYSOUT = 91,
    PN_SOLVTYP = 92,
    PN_USEOSM = 93,
    PN_USETER = 94,
    PN_USESAT = 95,
    PN_USEBAK = 96,
    PN_OSMFILE = 97,
    PN_OSMCONTENT = 98,
    PN_LOADBLDG = 99,
    PN_LOADROAD = 100,
    PN_LOADLAKES = 101,
    PN_LOADPARKS = 102,
    PN_LOADRAIL = 103,
    PN_LOADWALKWAYS = 104,
    PN_LOADTREES = 105,
    PN_LOADBENCHES = 106,
    PN_FNUM = 107,
    PN_SEQ = 108,
    PN_VOL = 109,
    PN_MED = 110,
    PN_RIND = 111,
    PN_VOLTYP = 112,
    PN_VOLSTEPS = 113,
    PN_RINDPROF = 114,
    PN_RINDMIN = 115,
    PN_RINDMAX = 116,
    PN_RINDPEAKWID = 117,
    PN_RINDOFFSET = 118,
    PN_RINDPROFPARAM = 119,
    PN_REFLECT = 120,
    PN_TRANSMIT = 121,
    PN_REFLECTRAT = 122,
    PN_TRANSMITRAT = 123,
    PN_VOLSTEPDIST = 124,
    PN_PMLRAT = 125,
    PN_PMLORD = 126,
    PN_FDTDDIM = 127,
    PN_FDTDREND = 128,
    PN_FDTDRENDPROP = 129,
    PN_TRACEDIM = 130,
    PN_TRACEREND = 131,
    PN_TRACELAYHEIGHT = 132,
    PN_TRACERENDERAS = 133,
    PN_ACCPNT = 134,
    PN_ANTNA = 135,
    PN_VOLPROPMDL = 136,
    PN_VOLPROPEXP = 137,
    PN_REFLOSS = 138,
    PN_TRANSLOSS = 139,
    PN_BARTYPE = 140,
    PN_BARREFMDL = 141,
    PN_BARREFSPAR = 142,
    PN_BARREFALPAR = 143,
    PN_BARTRNMDL = 144,
    PN_BARLOSMDL = 145,
    PN_BARDIFMDL = 146,
    PN_BARDIFANGDEP = 147,
    PN_BARDIFEXP = 148,
    PN_RAYGAP = 149,
    PN_DIFFANG = 150,
    PN_VOLLOSS = 151,
    PN_RELPERM = 152,
    PN_RELCOND = 153,
    PN_RELROUGH = 154,
    FLMAT = 155,
    FLTHK = 156,
    CEMAT = 157,
    CETHK = 158,
    PN_BLKSZE = 159,
    PN_MDLDIR = 160,
    PN_MDLHGT = 161,
    PN_MDLBLD = 162,
    PN_LONMAX = 163,
    PN_LONMIN = 164,
    PN_LATMAX = 165,
    PN_LATMIN = 166,
    PN_XMAX = 167,
    PN_XMIN = 168,
    PN_YMAX = 169,
    PN_YMIN = 170,
    PN_FACEMULT = 171,
    PN_APSIZE = 172,
    PN_APSIZEIN = 173,
    PN_APSIZEOUT = 174,
    PN_APSHAP = 175,
    PN_SURFSHAP = 176,
    PN_OBJSHAP = 177,
    PN_SHAPRATIO1 = 178,
    PN_SHAPRATIO2 = 179,
    PN_SHAPRATIO3 = 180,
    PN_EXTLENGTH = 181,
    PN_SPHERRAD = 182,
    PN_SURFOFFSET = 183,
    PN_RAD = 184,
    PN_OFFSET = 185,
    PN_MULT = 186,
    PN_FLEN = 187,
    PN_COORDSYS = 188,
    PN_FUNCPARCNT = 189,
    FUNCPAR = 190,
    PN_CIN = 191,
    PN_COUT = 192,
    PN_2DVSGN = 193,
    PN_COEFF = 194,
    PN_PROFTYP = 195,
    PN_PROFRES = 196,
    PN_PROFHGHTRAT = 197,
    PN_PROFCOL = 198,
    PN_COLSCA = 199,
    PN_COLSCATYP = 200,
    PN_DIM1 = 201,
    PN_DIM2 = 202,
    PN_VAL = 203,
    PN_RENDLAY = 204,
    PN_RENDAX = 205,
    PN_RENDSCA = 206,
    PN_RENDGRD = 207,
    PN_RENDRAD = 208,
    PN_SHOWFPLAN = 209,
};

// An enumerated value: an index into Parameter::paramValStrings. Only the entries that
// code refers to by name have enumerators; any other number of the table is valid too.
enum eParamValue : int {
    PV_EMPTY = 1,                        // ""
    PV_ELEM_SOURCE = 4,                  // element type "source"
    PV_ELEM_MIRROR = 5,                  // "mirror"
    PV_ELEM_LENS = 6,                    // "lens"
    PV_ELEM_WAVEGUIDE = 7,               // "waveguide"
    PV_ELEM_OBJECT = 8,                  // "object"
    PV_ELEM_IMPORTER = 9,                // "importer"
    PV_ELEM_SYSTEM = 12,                 // "system"
    PV_BUILDING = 13,                    // "building"
    PV_URBAN_CITY = 14,                  // "urban city"
    PV_SUBURBAN_CITY = 15,               // "suburban city"
    PV_ELEM_DETECTOR = 22,               // element type "detector"
    PV_ELEM_FDTDVOLUME = 23,             // "FDTDVolume"
    PV_ELEM_TRACEVOLUME = 24,            // "TraceVolume"
    PV_TYPE_POINTPOINTHEIGHT = 26,       // interface type "pointPointHeight"
    PV_TYPE_POINTPOINTWIDTHHEIGHT = 27,  // "pointPointWidthHeight"
    PV_TYPE_POINTPOINTWIDTH = 28,        // "pointPointWidth"
    PV_TYPE_APERTUREFUNCTION = 29,       // "apertureFunction"
    PV_TYPE_POLYGON = 30,                // a point list on a flat surface; it has no text
    PV_TYPE_APERTUREEXTEND = 31,         // "apertureExtend"
    PV_TYPE_CLOSEDSURFACE = 32,          // "closedSurface"
    PV_TYPE_3DMODEL = 33,                // "3dModel"
    PV_RES_VERYLOW = 36,                 // renderDetail "veryLow"
    PV_RES_LOW = 37,                     // "low"
    PV_RES_MEDIUM = 38,                  // "medium"
    PV_RES_HIGH = 39,                    // "high"
    PV_RES_VERYHIGH = 40,                // "veryHigh"
    PV_POINT = 43,                    // arrayType "point": positions are directions from one point
    PV_PLANE = 44,                    // arrayType "plane": positions are points on a plane
    PV_SOLVER_FDTD = 48,              // solverType "fdtd"
    PV_WAVE_SIN = 51,                 // waveform "sin"
    PV_WAVE_FLAT = 52,                // waveform "flat"
    PV_ENV_FLAT = 55,                 // waveEnvelope "flat"
    PV_ENV_GAUSSIAN = 56,             // waveEnvelope "gaussian"
    PV_RADPAT_OMNI = 67,              // "radPattern_omnidirectional"
    PV_RADPAT_DIPOLE = 68,            // "radPattern_dipole"
    PV_RADPAT_HPBW = 69,              // "radPattern_hpbw"
    PV_RADPAT_FILE = 70,              // "radPattern_fromFile"
    PV_SINGLE = 73,                   // arrayShape "single"
    PV_LINE = 74,                     // "line"
    PV_STAR = 75,                     // "star"
    PV_CIRCLEFULL = 76,               // "circleFull"
    PV_CIRCLEEMPTY = 77,              // "circleEmpty"
    PV_SQUAREFULL = 78,               // "squareFull"
    PV_SQUAREEMPTY = 79,              // "squareEmpty"
    PV_APSHAPE_CIRCLE = 82,           // apertureShape "circle"
    PV_APSHAPE_SQUARE = 83,           // "square"
    PV_APSHAPE_POINTSWIDTH = 84,      // "pointsWidth"
    PV_APSHAPE_CIRCLE3D = 85,         // "circle3d"
    PV_APSHAPE_SQUARE3D = 86,         // "square3d"
    PV_APSHAPE_POINTOUTLINE = 87,     // the outline through a list of points; it has no text
    PV_SURF_FLAT = 90,                // surfaceShapeName "surfaceFlat"
    PV_SURF_POLYNOMIAL = 91,          // "surfacePolynomial"
    PV_SURF_SPHERICAL = 92,           // "surfaceSpherical"
    PV_SURF_CUBE = 93,                // "surfaceCube"
    PV_SURF_APERTUREEXTEND = 94,      // "surfaceApertureExtend"
    PV_SHAPE_SPHERE = 97,             // objectShapeName "Sphere"
    PV_SHAPE_CYLINDER = 98,           // "Cylinder"
    PV_SHAPE_BLOCK = 99,              // "Block"
    PV_SHAPE_WALL = 100,              // the box around a thick wall; it has no text
    PV_COORD_CYLINDRICAL = 103,       // coordSystem "cylindrical"
    PV_COORD_SPHERICAL = 104,         // "spherical"
    PV_COORD_CARTESIAN = 105,         // "cartesian"
    PV_SEQ_DCX = 113,                 // shapeSequence "DCX"
    PV_SEQ_DCV = 114,                 // "DCV"
    PV_SEQ_PCX = 115,                 // "PCX"
    PV_SEQ_PCV = 116,                 // "PCV"
    PV_VOL_HOLLOW = 119,              // vlumeType "hollow"
    PV_VOL_HOMOGENEOUS = 120,         // "homogeneous"
    PV_VOL_STEPPED = 121,             // "stepped"
    PV_ORIENT_VERTICAL = 125,         // orientation "vertical"
    PV_ORIENT_HORIZONTAL = 126,       // "horizontal"
    PV_REFINDEX_FLAT = 129,           // refIndexProfile "refIndex_Flat"
    PV_REFINDEX_CONE = 130,           // "refIndex_cone"
    PV_REFINDEX_GAUSSIAN = 131,       // "refIndex_gaussian"
    PV_REFINDEX_POWERLAW = 132,       // "refIndex_powerLaw"
    PV_FREESPACE = 152,               // LOSPowerLossModel "FreeSpace"
    PV_FREESPACE_EXP = 153,           // "FreeSpace with Exponent"
    PV_INH_LOS = 154,                 // "(Indoor Hotspot) ITU-R M.2135 InH LOS"
    PV_INH_NLOS = 155,                // "(Indoor Hotspot) ITU-R M.2135 InH NLOS"
    PV_UMI_LOS = 156,                 // "(Urban Micro cell) ITU-R M.2135 UMi LOS"
    PV_UMI_NLOS = 157,                // "(Urban Micro cell) ITU-R M.2135 UMi NLOS"
    PV_UMA_LOS = 158,                 // "(Urban Macro cell) ITU-R M.2135 UMa LOS"
    PV_UMA_NLOS = 159,                // "(Urban Macro cell) ITU-R M.2135 UMa NLOS"
    PV_WINNER_A1 = 160,               // "(In building) WINNER II A1 "
    PV_WINNER_B1 = 161,               // "(Typical urban microcell) WINNER II B1 "
    PV_WINNER_PLUS = 162,             // "(Urban microcell LOS) WINNER + "
    PV_BARRIER_THIN = 165,            // barrierType "thin"
    PV_BARRIER_THICK = 166,           // "thick"
    PV_REFLECT_OFF = 169,             // barrierReflectModel "off"
    PV_REFLECT_SPECULAR = 170,        // "specular"
    PV_REFLECT_UNIFORMDIFFUSE = 171,  // "uniformDiffuse"
    PV_REFLECT_LAMBERTIAN = 172,      // "lambertian"
    PV_REFLECT_DIRECTIVE = 173,       // "directive"
    PV_REFLECT_SCATTERING = 174,      // "scattering"
    PV_TRANSMIT_OFF = 177,            // barrierTransmitModel "off"
    PV_TRANSMIT_CONDUCTIVE = 178,     // "conductive"
    PV_TRANSMIT_LINEAR = 179,         // "linearAttenuation"
    PV_LOSS_DB = 182,                 // barrierLossModel "dBLoss"
    PV_LOSS_THICK = 183,              // "thick"
    PV_LOSS_THIN = 184,               // "thin"
    PV_DIFFRACT_OFF = 187,            // barrierDiffractModel "off"
    PV_DIFFRACT_BERG = 188,           // "BERG"
    PV_DIFFRACT_KED = 189,            // "KED (knife-edge)"
    PV_PATRES_VERYLOW = 203,          // radPatternRes "veryLow"
    PV_PATRES_LOW = 204,              // "low"
    PV_PATRES_MEDIUM = 205,           // "medium"
    PV_PATRES_HIGH = 206,             // "high"
    PV_PATRES_VERYHIGH = 207,         // "veryHigh"
    PV_HEATMAP = 269,                 // RenderBy "heatmap"
    PV_BAND_NONE = 274,               // frequencyBand "none"
    PV_BAND_WIFI24 = 275,             // "2.4 GHz WiFi"
    PV_BAND_WIFI50 = 276,             // "5.0 GHz WiFi"
    PV_BAND_LTE = 277,                // "4G LTE"
    PV_BAND_NR_FR1 = 278,             // "5GNR FR1 (sub-6GHz)"
    PV_BAND_NR_FR2 = 279,             // "5GNR FR2 (mmWave)"
    PV_CHANNEL_NONE = 282,            // frequencyChannel "none"
    PV_CHANNEL_WIFI24_FIRST = 285,    // "1"
    PV_CHANNEL_WIFI24_LAST = 298,     // "14"
    PV_CHANNEL_WIFI50_FIRST = 301,    // "7"
    PV_CHANNEL_WIFI50_LAST = 365,     // "196"
    PV_CHANNEL_LTE_FIRST = 368,       // "E-UTRA FDD 1 uplink"
    PV_CHANNEL_LTE_LAST = 421,        // "E-UTRA TDD 40 downlink"
    PV_CHANNEL_NR_FR1_FIRST = 424,    // "5GNR n1 FDD UL"
    PV_CHANNEL_NR_FR1_LAST = 503,     // "5GNR n90 TDD DL"
    PV_CHANNEL_NR_FR2_FIRST = 506,    // "5GNR n257 TDD UL"
    PV_CHANNEL_NR_FR2_LAST = 513,     // "5GNR n261 TDD DL"
    PV_WHITE = 530,                   // color "white"
    PV_ORANGE = 531,                  // "orange"
    PV_TRUE = 547,                    // "true"
    PV_FALSE = 548,                   // "false"
    PV_END = 549,  // one past the last text; the end of a search through the table
};

// A listed number: an index into Parameter::paramNumStrings and paramNumValues. Only the
// bounds have enumerators.
enum eParamNumber : int {
    PNUM_NONE = 0,   // "None", value 0
    PNUM_END = 314,  // one past the last text; the end of a search through the table
};

// The descriptor handed in and out by the value functions of Parameter. limits holds the
// first and the last allowed entry of the eParamValue or eParamNumber table, -1 when there
// is no such range.
struct sParamDesc {
    eParamType type = PT_INV;
    eParamUnits units = PU_NON;
    eParamMultiplier mult = PM_NON;
    int limits[2] = {-1, -1};
};
