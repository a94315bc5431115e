// What each parameter name implies: its type, the kind of choice it offers, its display
// group, the range of the value or number table it takes, whether a zero entry is offered,
// and how a change of it affects the results of a simulation.
#include "framework/Parameter.h"

// Row order is name order: the row of name n is at n - 1. Columns: name, type, option kind,
// group, first and last limit (-1 leaves the limits as they are), then, where they differ
// from ZERO_KEEP, RESIM_KEEP, true, true: includeZero, re-simulation rule, showOptions,
// showInDataTree. The shape ranges of apertureShape and objectShapeName end in a value
// without text (the outline through a list of points, the box around a thick wall): code
// sets it, and a value without text is never offered as a choice.
const Parameter::sNameRule* Parameter::FindNameRule(eParamName parName) {
    static const sNameRule rules[] = {
        {PN_UNK, PT_INV, PO_FREE, PG_UNK, -1, -1},                                  // "unknown"
        {PN_NAM, PT_OTH, PO_FREE, PG_GENERAL, -1, -1},                              // "name"
        {PN_TYP, PT_INV, PO_VALUES, PG_UNK, 1, 549, ZERO_KEEP, RESIM_KEEP, false},  // "type"
        {PN_SIZ, PT_DIST, PO_NUM_1000, PG_GENERAL, -1, -1, ZERO_NO},                // "size"
        {PN_SNSIZ, PT_DIST, PO_NUM_10_FRACT, PG_GENERAL, -1, -1, ZERO_YES},         // "snap size"
        {PN_WID, PT_DIST, PO_NUM_1000, PG_GENERAL, -1, -1, ZERO_NO},                // "width"
        {PN_LEN, PT_DIST, PO_NUM_1000, PG_GENERAL, -1, -1, ZERO_NO},                // "length"
        {PN_BASE, PT_DIST, PO_NUM_1000, PG_GENERAL, -1, -1, ZERO_NO},               // "base"
        {PN_HEIGHT, PT_DIST, PO_NUM_1000, PG_GENERAL, -1, -1, ZERO_NO},             // "height"
        {PN_THICKNESS, PT_DIST, PO_NUM_1000, PG_GENERAL, -1, -1, ZERO_YES,
         RESIM_SYSTEM},  // "thickness"
        {PN_ORIENTATION, PT_INV, PO_VALUES, PG_UNK, 125, 126, ZERO_KEEP, RESIM_KEEP,
         false},                                                         // "orientation"
        {PN_FDTDGAP, PT_DIST, PO_NUM_1000, PG_FDTD, -1, -1, ZERO_NO},    // "FDTD grid gap"
        {PN_TRACEGAP, PT_DIST, PO_NUM_1000, PG_TRACE, -1, -1, ZERO_NO},  // "Trace grid gap"
        {PN_TRACECHAN, PT_FRQ, PO_STRINGS, PG_SIGNAL, -1, -1, ZERO_KEEP,
         RESIM_SYSTEM},                                                  // "Trace channel"
        {PN_RDET, PT_OTH, PO_VALUES, PG_RENDER, 36, 40, ZERO_NO},        // "renderDetail"
        {PN_FNAM, PT_OTH, PO_FILE, PG_GENERAL, -1, -1},                  // "fileLocation"
        {PN_DNAM, PT_OTH, PO_DIRECTORY, PG_GENERAL, -1, -1},             // "dirname"
        {PN_SHOW, PT_BOOL, PO_BOOL, PG_RENDER, 547, 548},                // "show"
        {PN_WHOWAS, PT_OTH, PO_VALUES, PG_RENDER, 265, 266},             // "showAs"
        {PN_COLOR, PT_CLR, PO_VALUES, PG_RENDER, 530, 531},              // "color"
        {PN_BRGHT, PT_RAT, PO_NUM_1_TENTHS, PG_RENDER, -1, -1},          // "brightness"
        {PN_TRANS, PT_RAT, PO_NUM_1_TENTHS, PG_RENDER, -1, -1},          // "transparency"
        {PN_SPEC, PT_RAT, PO_NUM_1_TENTHS, PG_RENDER, -1, -1},           // "specularity"
        {PN_ONWLNE, PT_BOOL, PO_BOOL, PG_GENERAL, 547, 548},             // "onWayline"
        {PN_SPD, PT_OTH, PO_NUM_1000, PG_GENERAL, -1, -1},               // "speed"
        {PN_DLY, PT_TIM, PO_NUM_1000, PG_GENERAL, -1, -1},               // "delay"
        {PN_SCL, PT_MULT, PO_NUM_10_FRACT, PG_MAPPING, -1, -1},          // "modelScale"
        {PN_RSE, PT_DIST, PO_NUM_1000, PG_MAPPING, -1, -1},              // "modelRaise"
        {PN_FWRD, PT_DIR, PO_VALUES, PG_MAPPING, 237, 242},              // "modelForward"
        {PN_UP, PT_DIR, PO_VALUES, PG_MAPPING, 237, 242},                // "upDirection"
        {PN_SRC, PT_OTH, PO_VALUES, PG_RAYTRACING, 43, 44},              // "sourceType"
        {PN_LAY, PT_OTH, PO_VALUES, PG_RAYTRACING, 73, 79},              // "layoutShape"
        {PN_RPAT, PT_OTH, PO_VALUES, PG_RADPATTERN, 67, 70},             // "radPattern"
        {PN_RPFIL, PT_OTH, PO_FILE, PG_RADPATTERN, -1, -1},              // "radPatternFilename"
        {PN_RPATAX, PT_DIR, PO_VALUES, PG_RADPATTERN, 217, 219},         // "radPatternAxis"
        {PN_RPATRES, PT_OTH, PO_VALUES, PG_RADPATTERN, 203, 207},        // "radPatternRes"
        {PN_RPATAPP_ARRAY, PT_BOOL, PO_BOOL, PG_RADPATTERN, 547, 548},   // "radPatternApplyArray"
        {PN_RPATAPP_SRC, PT_BOOL, PO_BOOL, PG_RADPATTERN, 547, 548},     // "radPatternApplySource"
        {PN_RPATAPP_TORAYS, PT_BOOL, PO_BOOL, PG_RADPATTERN, 547, 548},  // "radPatternApplyToRays"
        {PN_RPATCOLOR, PT_OTH, PO_VALUES, PG_RENDER, 516, 527, ZERO_KEEP,
         RESIM_NEVER},                                                  // "radPatternColor"
        {PN_RPATSIZ, PT_MULT, PO_NUM_10_FRACT, PG_RADPATTERN, -1, -1},  // "radPatternSize"
        {PN_SCA, PT_SCTYP, PO_VALUES, PG_RADPATTERN, 543, 544},         // "radPatternScale"
        {PN_WAVFRM, PT_OTH, PO_VALUES, PG_SIGNAL, 51, 52},              // "waveform"
        {PN_WAVLOP, PT_OTH, PO_VALUES, PG_SIGNAL, 55, 56},              // "waveEnvelope"
        {PN_WAVDUR, PT_TIM, PO_NUM_1000, PG_SIGNAL, -1, -1},            // "waveDuration"
        {PN_FIELDDIST, PT_OTH, PO_VALUES, PG_RADPATTERN, 59, 60},       // "radSourceFieldDist"
        {PN_SRCSIZ, PT_DIST, PO_NUM_1_FIVE, PG_RADPATTERN, -1, -1},     // "radSourceSize"
        {PN_ARRTYP, PT_OTH, PO_VALUES, PG_RAYTRACING, 43, 44},          // "arrayType"
        {PN_ARRSHA, PT_OTH, PO_VALUES, PG_RAYTRACING, 73, 79},          // "arrayShape"
        {PN_ARMS, PT_CNT, PO_NUM_10, PG_RAYTRACING, -1, -1},            // "armCount"
        {PN_ANG, PT_ANG, PO_NUM_WIDTH360, PG_RAYTRACING, -1, -1},       // "angle"
        {PN_CNT, PT_CNT, PO_NUM_1000, PG_RAYTRACING, -1, -1, ZERO_KEEP, RESIM_CITY},  // "count"
        {PN_LMDA, PT_DIST, PO_NUM_1000, PG_SIGNAL, -1, -1},  // "wavelength"
        {PN_FREQ, PT_FRQ, PO_NUM_FREQ_MHZ, PG_SIGNAL, -1, -1, ZERO_NO,
         RESIM_SYSTEM},  // "frequency"
        {PN_FREQBAND, PT_FRQ, PO_VALUES, PG_SIGNAL, 274, 279, ZERO_KEEP,
         RESIM_SYSTEM},  // "frequencyBand"
        {PN_FREQCHAN, PT_FRQ, PO_VALUES, PG_SIGNAL, -1, -1, ZERO_KEEP,
         RESIM_SYSTEM},  // "frequencyChannel"
        {PN_PWRWATT, PT_PWR, PO_NUM_1000, PG_SIGNAL, -1, -1, ZERO_YES, RESIM_SYSTEM},  // "power"
        {PN_PWRDB, PT_PWR, PO_NUM_PM100, PG_SIGNAL, -1, -1, ZERO_YES, RESIM_SYSTEM},   // "power"
        {PN_GAINTX, PT_PWR, PO_NUM_PM10_EVEN, PG_SIGNAL, -1, -1},                      // "gainTx"
        {PN_GAINTXMIN, PT_PWR, PO_NUM_PM10_EVEN, PG_SIGNAL, -1, -1},  // "gainTxMin"
        {PN_GAINRX, PT_PWR, PO_NUM_PM10_EVEN, PG_SIGNAL, -1, -1},     // "gainRx"
        {PN_GAINRXMIN, PT_PWR, PO_NUM_PM10_EVEN, PG_SIGNAL, -1, -1},  // "gainRxMin"
        {PN_HPBWH, PT_ANG, PO_NUM_WIDTH360, PG_SIGNAL, -1, -1, ZERO_KEEP,
         RESIM_SYSTEM},  // "halfBeamWidthHoriz"
        {PN_HPBWV, PT_ANG, PO_NUM_WIDTH360, PG_SIGNAL, -1, -1, ZERO_KEEP,
         RESIM_SYSTEM},                                             // "halfBeamWidthVert"
        {PN_GAINMIN, PT_PWR, PO_NUM_PM10_EVEN, PG_SIGNAL, -1, -1},  // "gainMin"
        {PN_GAINROT, PT_ANG, PO_NUM_DEG_PM180, PG_SIGNAL, -1, -1, ZERO_KEEP,
         RESIM_SYSTEM},  // "beamRotation"
        {PN_GAINTLT, PT_ANG, PO_NUM_DEG_PM90, PG_SIGNAL, -1, -1, ZERO_KEEP,
         RESIM_SYSTEM},                                                       // "beamTilt"
        {PN_TXCHGT, PT_DIST, PO_NUM_1000, PG_SIGNAL, -1, -1},                 // "TXHeight"
        {PN_RXHGT, PT_DIST, PO_NUM_1000, PG_TRACE, -1, -1},                   // "RXHeight"
        {PN_RXSIZ, PT_DIST, PO_NUM_10_FRACT, PG_TRACE, -1, -1},               // "RXCatchSize"
        {PN_RXPWR, PT_PWR, PO_NUM_PM100, PG_TRACE, -1, -1},                   // "RXTargetPower"
        {PN_BARBSE, PT_DIST, PO_NUM_1000, PG_GENERAL, -1, -1},                // "barrierBase"
        {PN_BARHGT, PT_DIST, PO_NUM_1000, PG_GENERAL, -1, -1},                // "barrierHeight"
        {PN_TRCMIN, PT_PWR, PO_NUM_PM1000, PG_RAYTRACING, -1, -1, ZERO_YES},  // "minTracePower"
        {PN_SCLL, PT_PWR, PO_NUM_PM100, PG_RENDER, -1, -1, ZERO_KEEP,
         RESIM_SYSTEM},  // "scaleLowLimit"
        {PN_SCLH, PT_PWR, PO_NUM_PM100, PG_RENDER, -1, -1, ZERO_KEEP,
         RESIM_SYSTEM},  // "scaleHighLimit"
        {PN_TRLIM, PT_CNT, PO_NUM_1000, PG_RAYTRACING, -1, -1, ZERO_YES,
         RESIM_SYSTEM},  // "traceLimit"
        {PN_REFLIM, PT_CNT, PO_NUM_1000, PG_RAYTRACING, -1, -1, ZERO_YES,
         RESIM_SYSTEM},  // "reflectLimit"
        {PN_TRANLIM, PT_CNT, PO_NUM_1000, PG_RAYTRACING, -1, -1, ZERO_YES,
         RESIM_SYSTEM},                                            // "transmitLimit"
        {PN_TRAT, PT_PC, PO_NUM_100_TENS, PG_RAYTRACING, -1, -1},  // "testRatio"
        {PN_TCNT, PT_CNT, PO_NUM_1000, PG_RAYTRACING, -1, -1, ZERO_KEEP,
         RESIM_SYSTEM},                                      // "testCount"
        {PN_PHDIR, PT_DIR, PO_VALUES, PG_SIGNAL, 237, 242},  // "phaseDir"
        {PN_PHPNT, PT_PNT, PO_FREE, PG_SIGNAL, -1, -1},      // "phasePoint"
        {PN_RMPTM, PT_TIM, PO_NUM_1000, PG_FDTD, -1, -1},    // "rampTime"
        {PN_TMSTP, PT_TIM, PO_NUM_1000, PG_FDTD, -1, -1},    // "timeStep"
        {PN_RXPWRSCL, PT_SCTYP, PO_VALUES, PG_TRACE, 63, 64, ZERO_KEEP,
         RESIM_SYSTEM},                                      // "receivePowerScale"
        {PN_IMPTYP, PT_OTH, PO_VALUES, PG_MAPPING, 31, 33},  // "importerType"
        {PN_SYSTYP, PT_OTH, PO_FREE, PG_UNK, 4, 33, ZERO_KEEP, RESIM_KEEP, true,
         false},                                                  // "systemType"
        {PN_NTKTYP, PT_OTH, PO_VALUES, PG_GENERAL, 17, 20},       // "networkType"
        {PN_PRPMDL, PT_OTH, PO_VALUES, PG_RAYTRACING, 145, 149},  // "propagationModel"
        {PN_SYSOUT, PT_BOOL, PO_VALUES, PG_UNK, 547, 548, ZERO_KEEP, RESIM_KEEP, true,
         false},                                                    // "systemHasOuter"
        {PN_SOLVTYP, PT_OTH, PO_VALUES, PG_GENERAL, 47, 48},        // "solverType"
        {PN_USEOSM, PT_BOOL, PO_BOOL, PG_MAPPING, 547, 548},        // "useOpenStreetMap"
        {PN_USETER, PT_BOOL, PO_BOOL, PG_MAPPING, 547, 548},        // "useTerrain"
        {PN_USESAT, PT_BOOL, PO_BOOL, PG_MAPPING, 547, 548},        // "useSatelliteImage"
        {PN_USEBAK, PT_BOOL, PO_BOOL, PG_MAPPING, 547, 548},        // "useLocalBackup"
        {PN_OSMFILE, PT_OTH, PO_FILE, PG_MAPPING, -1, -1},          // "OSMFile"
        {PN_OSMCONTENT, PT_OTH, PO_FREE, PG_MAPPING, -1, -1},       // "OSMContent"
        {PN_LOADBLDG, PT_BOOL, PO_BOOL, PG_MAPPING, 547, 548},      // "LoadBuildings"
        {PN_LOADROAD, PT_BOOL, PO_BOOL, PG_MAPPING, 547, 548},      // "LoadRoads"
        {PN_LOADLAKES, PT_BOOL, PO_BOOL, PG_MAPPING, 547, 548},     // "LoadLakes"
        {PN_LOADPARKS, PT_BOOL, PO_BOOL, PG_MAPPING, 547, 548},     // "LoadParks"
        {PN_LOADRAIL, PT_BOOL, PO_BOOL, PG_MAPPING, 547, 548},      // "LoadRail"
        {PN_LOADWALKWAYS, PT_BOOL, PO_BOOL, PG_MAPPING, 547, 548},  // "LoadWalkWays"
        {PN_LOADTREES, PT_BOOL, PO_BOOL, PG_MAPPING, 547, 548},     // "LoadTrees"
        {PN_LOADBENCHES, PT_BOOL, PO_BOOL, PG_MAPPING, 547, 548},   // "LoadBenches"
        {PN_FNUM, PT_RAT, PO_NUM_10_FRACT, PG_SURFACE, -1, -1},     // "FNumber"
        {PN_SEQ, PT_OTH, PO_VALUES, PG_SURFACE, 113, 116},          // "shapeSequence"
        {PN_VOL, PT_OTH, PO_FREE, PG_GENERAL, -1, -1},              // "volume"
        {PN_MED, PT_OTH, PO_STRINGS, PG_REFINDEX, -1, -1},          // "medium"
        {PN_RIND, PT_RAT, PO_FREE, PG_REFINDEX, -1, -1},            // "refractiveIndex"
        {PN_VOLTYP, PT_OTH, PO_VALUES, PG_REFINDEX, 119, 122},      // "vlumeType"
        {PN_VOLSTEPS, PT_CNT, PO_NUM_10, PG_REFINDEX, -1, -1},      // "vlumeSteps"
        {PN_RINDPROF, PT_OTH, PO_VALUES, PG_REFINDEX, 129, 132},    // "refIndexProfile"
        {PN_RINDMIN, PT_RAT, PO_FREE, PG_REFINDEX, -1, -1},         // "refIndexMin"
        {PN_RINDMAX, PT_RAT, PO_FREE, PG_REFINDEX, -1, -1},         // "refIndexMax"
        {PN_RINDPEAKWID, PT_DIST, PO_FREE, PG_REFINDEX, -1, -1},    // "refIndexPeakHalfWidth"
        {PN_RINDOFFSET, PT_DIST, PO_FREE, PG_REFINDEX, -1, -1},     // "refIndexPeakOffset"
        {PN_RINDPROFPARAM, PT_RAT, PO_FREE, PG_REFINDEX, -1, -1},   // "refIndexProfileParameter"
        {PN_REFLECT, PT_BOOL, PO_BOOL, PG_RAYTRACING, 547, 548},    // "reflect"
        {PN_TRANSMIT, PT_BOOL, PO_BOOL, PG_RAYTRACING, 547, 548},   // "transmit"
        {PN_REFLECTRAT, PT_RAT, PO_NUM_1_TENTHS, PG_RAYTRACING, -1, -1},   // "reflectRatio"
        {PN_TRANSMITRAT, PT_RAT, PO_NUM_1_TENTHS, PG_RAYTRACING, -1, -1},  // "transmitRatio"
        {PN_VOLSTEPDIST, PT_DIST, PO_FREE, PG_REFINDEX, -1, -1},           // "volumeStepDistance"
        {PN_PMLRAT, PT_RAT, PO_NUM_1_TENTHS, PG_FDTD, -1, -1},             // "PMLRatio"
        {PN_PMLORD, PT_CNT, PO_NUM_10, PG_FDTD, -1, -1},                   // "PMLOrder"
        {PN_FDTDDIM, PT_OTH, PO_NUM_DIMS, PG_FDTD, -1, -1},                // "Dimensions"
        {PN_FDTDREND, PT_RAT, PO_NUM_1_HUNDREDTHS, PG_FDTD, -1, -1, ZERO_KEEP,
         RESIM_NEVER},  // "RenderLevel"
        {PN_FDTDRENDPROP, PT_OTH, PO_VALUES, PG_FDTD, 135, 142, ZERO_KEEP,
         RESIM_NEVER},                                         // "RenderProperty"
        {PN_TRACEDIM, PT_OTH, PO_NUM_DIMS, PG_TRACE, -1, -1},  // "Dimensions"
        {PN_TRACEREND, PT_RAT, PO_NUM_1_HUNDREDTHS, PG_TRACE, -1, -1, ZERO_KEEP,
         RESIM_NEVER},                                                    // "RenderLevel"
        {PN_TRACELAYHEIGHT, PT_DIST, PO_NUM_1000, PG_TRACE, -1, -1},      // "RenderLayerHeight"
        {PN_TRACERENDERAS, PT_OTH, PO_VALUES, PG_TRACE, 269, 271},        // "RenderBy"
        {PN_ACCPNT, PT_OTH, PO_STRINGS, PG_SIGNAL, -1, -1},               // "AccessPoint"
        {PN_ANTNA, PT_OTH, PO_STRINGS, PG_SIGNAL, -1, -1},                // "Antenna"
        {PN_VOLPROPMDL, PT_OTH, PO_VALUES, PG_RAYTRACING, 152, 162},      // "LOSPowerLossModel"
        {PN_VOLPROPEXP, PT_RAT, PO_NUM_10_FRACT, PG_RAYTRACING, -1, -1},  // "LOSExponent"
        {PN_REFLOSS, PT_PWR, PO_NUM_PM100, PG_RAYTRACING, -1, -1},        // "reflectLoss"
        {PN_TRANSLOSS, PT_PWR, PO_NUM_PM100, PG_RAYTRACING, -1, -1},      // "transmitLoss"
        {PN_BARTYPE, PT_OTH, PO_VALUES, PG_RAYTRACING, 165, 166},         // "barrierType"
        {PN_BARREFMDL, PT_OTH, PO_VALUES, PG_RAYTRACING, 169, 174},       // "barrierReflectModel"
        {PN_BARREFSPAR, PT_RAT, PO_NUM_1_TENTHS, PG_RAYTRACING, -1,
         -1},  // "barrierReflectSParameter"
        {PN_BARREFALPAR, PT_RAT, PO_NUM_10, PG_RAYTRACING, -1,
         -1},  // "barrierReflectAlphaParameter"
        {PN_BARTRNMDL, PT_OTH, PO_VALUES, PG_RAYTRACING, 177, 179},      // "barrierTransmitModel"
        {PN_BARLOSMDL, PT_OTH, PO_VALUES, PG_RAYTRACING, 182, 184},      // "barrierLossModel"
        {PN_BARDIFMDL, PT_OTH, PO_VALUES, PG_RAYTRACING, 187, 189},      // "barrierDiffractModel"
        {PN_BARDIFANGDEP, PT_RAT, PO_FREE, PG_RAYTRACING, -1, -1},       // "diffAngleDep"
        {PN_BARDIFEXP, PT_RAT, PO_FREE, PG_RAYTRACING, -1, -1},          // "diffExp"
        {PN_RAYGAP, PT_ANG, PO_NUM_10_FRACT, PG_RAYTRACING, -1, -1},     // "rayGap"
        {PN_DIFFANG, PT_ANG, PO_NUM_WIDTH360, PG_RAYTRACING, -1, -1},    // "diffuseAngle"
        {PN_VOLLOSS, PT_PWR, PO_FREE, PG_REFINDEX, -1, -1},              // "volumeLoss/cm"
        {PN_RELPERM, PT_RAT, PO_FREE, PG_REFINDEX, -1, -1},              // "relativePermitivity"
        {PN_RELCOND, PT_RAT, PO_FREE, PG_REFINDEX, -1, -1},              // "conductivity"
        {PN_RELROUGH, PT_OTH, PO_VALUES, PG_SURFACE, 210, 214},          // "surfaceRoughness"
        {FLMAT, PT_OTH, PO_STRINGS, PG_GENERAL, -1, -1},                 // "floorMaterial"
        {FLTHK, PT_DIST, PO_NUM_1000, PG_GENERAL, -1, -1, ZERO_YES},     // "floorThickness"
        {CEMAT, PT_OTH, PO_STRINGS, PG_GENERAL, -1, -1},                 // "ceilingMaterial"
        {CETHK, PT_DIST, PO_NUM_1000, PG_GENERAL, -1, -1, ZERO_YES},     // "ceilingThickness"
        {PN_BLKSZE, PT_DIST, PO_NUM_1000, PG_GENERAL, -1, -1, ZERO_NO},  // "blockSize"
        {PN_MDLDIR, PT_OTH, PO_DIRECTORY, PG_MAPPING, -1, -1},           // "modelDirectory"
        {PN_MDLHGT, PT_DIST, PO_NUM_1000, PG_MAPPING, -1, -1},           // "modelHeight"
        {PN_MDLBLD, PT_BOOL, PO_BOOL, PG_MAPPING, 547, 548},             // "modelBuildings"
        {PN_LONMAX, PT_ANG, PO_FREE, PG_MAPPING, -1, -1},                // "longitudeMax"
        {PN_LONMIN, PT_ANG, PO_FREE, PG_MAPPING, -1, -1},                // "longitudeMin"
        {PN_LATMAX, PT_ANG, PO_FREE, PG_MAPPING, -1, -1},                // "latitudeMax"
        {PN_LATMIN, PT_ANG, PO_FREE, PG_MAPPING, -1, -1},                // "latitudeMin"
        {PN_XMAX, PT_DIST, PO_FREE, PG_MAPPING, -1, -1},                 // "xMax"
        {PN_XMIN, PT_DIST, PO_FREE, PG_MAPPING, -1, -1},                 // "xMin"
        {PN_YMAX, PT_DIST, PO_FREE, PG_MAPPING, -1, -1},                 // "yMax"
        {PN_YMIN, PT_DIST, PO_FREE, PG_MAPPING, -1, -1},                 // "yMin"
        {PN_FACEMULT, PT_MULT, PO_NUM_SIGN, PG_SURFACE, -1, -1},         // "surfaceMultiplier"
        {PN_APSIZE, PT_DIST, PO_NUM_1000, PG_APERTURE, -1, -1},          // "apertureSize"
        {PN_APSIZEIN, PT_DIST, PO_NUM_1000, PG_APERTURE, -1, -1},        // "apertureSizeInner"
        {PN_APSIZEOUT, PT_DIST, PO_NUM_1000, PG_APERTURE, -1, -1},       // "apertureSizeOuter"
        {PN_APSHAP, PT_OTH, PO_VALUES, PG_APERTURE, 82, 87},             // "apertureShape"
        {PN_SURFSHAP, PT_OTH, PO_VALUES, PG_SURFACE, 90, 94},            // "surfaceShapeName"
        {PN_OBJSHAP, PT_OTH, PO_VALUES, PG_SURFACE, 97, 100},            // "objectShapeName"
        {PN_SHAPRATIO1, PT_RAT, PO_NUM_10_FRACT, PG_APERTURE, -1, -1},   // "ratio1"
        {PN_SHAPRATIO2, PT_RAT, PO_NUM_10_FRACT, PG_APERTURE, -1, -1},   // "ratio2"
        {PN_SHAPRATIO3, PT_RAT, PO_NUM_10_FRACT, PG_APERTURE, -1, -1},   // "ratio3"
        {PN_EXTLENGTH, PT_DIST, PO_NUM_1000, PG_APERTURE, -1, -1},       // "extendLength"
        {PN_SPHERRAD, PT_DIST, PO_NUM_1000, PG_SURFACE, -1, -1},         // "sphericalRadius"
        {PN_SURFOFFSET, PT_DIST, PO_FREE, PG_SURFACE, -1, -1},           // "surfaceOffset"
        {PN_RAD, PT_DIST, PO_NUM_1000, PG_SURFACE, -1, -1},              // "radius"
        {PN_OFFSET, PT_DIST, PO_FREE, PG_SURFACE, -1, -1},               // "offset"
        {PN_MULT, PT_MULT, PO_FREE, PG_SURFACE, -1, -1},                 // "multiplier"
        {PN_FLEN, PT_DIST, PO_NUM_1000, PG_SURFACE, -1, -1},             // "focalLength"
        {PN_COORDSYS, PT_OTH, PO_VALUES, PG_SURFACE, 103, 105},          // "coordSystem"
        {PN_FUNCPARCNT, PT_CNT, PO_NUM_10, PG_SURFACE, -1, -1},          // "functionParCount"
        {FUNCPAR, PT_OTH, PO_FREE, PG_SURFACE, -1, -1},                  // "functionParameter"
        {PN_CIN, PT_DIST, PO_FREE, PG_SURFACE, -1, -1},                  // "centreIn"
        {PN_COUT, PT_DIST, PO_FREE, PG_SURFACE, -1, -1},                 // "centreOut"
        {PN_2DVSGN, PT_OTH, PO_NUM_SIGN, PG_SURFACE, -1, -1},            // "2ndDerivSign"
        {PN_COEFF, PT_RAT, PO_FREE, PG_SURFACE, -1, -1},                 // "coefficient"
        {PN_PROFTYP, PT_OTH, PO_VALUES, PG_RENDER, 192, 200},            // "profileType"
        {PN_PROFRES, PT_CNT, PO_NUM_1000, PG_RENDER, -1, -1},            // "profileResolution"
        {PN_PROFHGHTRAT, PT_RAT, PO_NUM_10_FRACT, PG_RENDER, -1, -1},    // "profileHeightRatio"
        {PN_PROFCOL, PT_CLR, PO_VALUES, PG_RENDER, 533, 536},            // "profileHeightColor"
        {PN_COLSCA, PT_CLR, PO_VALUES, PG_RENDER, 516, 527, ZERO_KEEP,
         RESIM_NEVER},  // "colorScale"
        {PN_COLSCATYP, PT_SCTYP, PO_VALUES, PG_RENDER, 543, 544, ZERO_KEEP,
         RESIM_NEVER},                                          // "colorScaleType"
        {PN_DIM1, PT_DIR, PO_VALUES, PG_RENDER, 245, 247},      // "dim1"
        {PN_DIM2, PT_DIR, PO_VALUES, PG_RENDER, 245, 247},      // "dim2"
        {PN_VAL, PT_OTH, PO_FREE, PG_GENERAL, -1, -1},          // "value"
        {PN_RENDLAY, PT_BOOL, PO_BOOL, PG_RENDER, 547, 548},    // "renderLayout"
        {PN_RENDAX, PT_BOOL, PO_BOOL, PG_RENDER, 547, 548},     // "renderAxes"
        {PN_RENDSCA, PT_BOOL, PO_BOOL, PG_RENDER, 547, 548},    // "renderScale"
        {PN_RENDGRD, PT_BOOL, PO_BOOL, PG_RENDER, 547, 548},    // "renderGrid"
        {PN_RENDRAD, PT_BOOL, PO_BOOL, PG_RENDER, 547, 548},    // "renderRadPattern"
        {PN_SHOWFPLAN, PT_BOOL, PO_BOOL, PG_RENDER, 547, 548},  // "showFloorPlan"
    };
    const int at = parName - 1;
    if (at < 0 || at >= static_cast<int>(std::size(rules)) || rules[at].name != parName) {
        return nullptr;
    }
    return &rules[at];
}

// The number entries that a number option kind offers. Kinds 11 and 12 have entries in the
// number table (38..46 and 49..69) but no range here.
const Parameter::sNumberRange* Parameter::FindNumberRange(eParamOptions kind) {
    static const sNumberRange ranges[] = {
        {PO_NUM_DIMS, 3, 5},         {PO_NUM_1_FIVE, 8, 12},
        {PO_NUM_1_TENTHS, 15, 25},   {PO_NUM_1_HUNDREDTHS, 28, 35},
        {PO_NUM_10_FRACT, 72, 79},   {PO_NUM_10, 82, 92},
        {PO_NUM_100, 95, 102},       {PO_NUM_100_TENS, 105, 115},
        {PO_NUM_1000, 118, 128},     {PO_NUM_1000_HUNDREDS, 131, 141},
        {PO_NUM_1E6, 144, 163},      {PO_NUM_1E6_STEPS, 166, 176},
        {PO_NUM_DEG360, 179, 191},   {PO_NUM_WIDTH360, 194, 201},
        {PO_NUM_DEG_PM90, 204, 210}, {PO_NUM_DEG_PM180, 213, 225},
        {PO_NUM_FREQ_MHZ, 228, 242}, {PO_NUM_100_FRACT, 245, 255},
        {PO_NUM_SIGN, 258, 260},     {PO_NUM_PM10_EVEN, 263, 273},
        {PO_NUM_PM100, 276, 290},    {PO_NUM_PM1000, 293, 313},
    };
    for (const sNumberRange& range : ranges) {
        if (range.options == kind) return &range;
    }
    return nullptr;
}
