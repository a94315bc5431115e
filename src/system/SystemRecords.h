#pragma once

// The plain records of a wireless installation. They are allocated with malloc and
// linked into singly linked lists so that a C program can build and read them; their
// strings are calloc'ed and owned by the record. All lengths are metres.

struct e_Vector_ {
    int coordSystem;  // 0 cartesian, 1 geographic
    double x, y, z;
    double lon, lat, height;
    e_Vector_* next;
};

struct e_Barrier_ {
    e_Vector_* vectors;
    double height_lower;
    double height_upper;
    double thickness;
    int medium;
    bool vertical;
    bool thinBarrier;
    bool reflect;
    bool transmit;
    bool diffract;
    e_Barrier_* next;
};

struct e_Building_ {
    e_Vector_* vectors;
    double height;
    int levelCount;
    double wallThickness;
    int wallMedium;
    double roofThickness;
    int roofMedium;
    double floorThickness;
    int floorMedium;
    bool thinBarrier;
    bool reflect;
    bool transmit;
    bool diffract;
    e_Building_* next;
};

struct e_Furniture_ {
    int type;
    double length, width, height;
    e_Vector_ location, forward, up;
    e_Furniture_* next;
};

struct e_AccessPoint_ {
    char* name;
    e_Vector_ location;
    int channel;
    double frequency_GHz;
    double power;  // watts
    double size;
    double gain;
    int radPattern;
    double gainBeamWidth;
    double gainBeamHeight;
    double rotateVertical;
    double rotateHorizontal;
    e_AccessPoint_* next;
};

struct e_ReceivedSignal_ {
    char* apName;
    double receivedPower_dBW;
    double receivedPower_dBm;
    double receivedPathLoss_dB;
    int receivedPathCount;
    double expectedPower_dBm;
    double expectedPathLoss_dB;
    e_ReceivedSignal_* next;
};

struct e_SamplePoint_ {
    char* name;
    e_Vector_ location;
    double size;
    double gain;
    e_ReceivedSignal_* signals;
    int simElementID;
    e_SamplePoint_* next;
};

struct e_System_ {
    bool isIndoorOnly;
    double xMin, xMax, yMin, yMax;
    double height;
    int ceilingMaterial;
    double ceilingThickness;
    double floorThickness;
    double lonMin, lonMax, latMin, latMax;
    char* osmFile;
    char* osmContent;
    bool loadBuildings, loadRoads, loadSignals, loadTrees, loadTerrain;
    e_Building_* buildings;
    int floorMaterial;
    e_Barrier_* barriers;
    e_AccessPoint_* accessPoints;
    e_SamplePoint_* samplePoints;
    e_Furniture_* furniture;
    bool only2d;
    bool held;  // set while a System_ wrapper owns the record
    int pathLoss_model;
    double pathLoss_Exp;
    double rayGap;
    int traceLimit;
    bool reflect;
    bool transmit;
    bool diffract;
    double failPowerValue;
};

// Makers: each mallocs a record, sets its defaults and, given a system, appends it at
// the end of the system's list. Barriers and buildings copy reflect, transmit and
// diffract from the system.
e_Barrier_* NewBarrier(e_System_* system);
e_Building_* NewBuilding(e_System_* system);
e_Furniture_* NewFurniture(e_System_* system);
e_AccessPoint_* NewAccessPoint(e_System_* system, const char* name);
e_SamplePoint_* NewSamplePoint(e_System_* system, const char* name);
e_ReceivedSignal_* NewReceivedSignal(e_SamplePoint_* samplePoint, const char* apName);
// The argument is ignored; the record is new.
e_System_* NewSystemIndoor(e_System_* ignored);
e_System_* NewSystemUrban(e_System_* ignored);
e_Vector_* NewVectorXYZ(double x, double y, double z);
e_Vector_* NewVectorLLH(double lon, double lat, double height);

void NewPiece(e_Barrier_** piece, e_System_* system);
void NewPiece(e_Building_** piece, e_System_* system);
void NewPiece(e_Furniture_** piece, e_System_* system);
void NewPiece(e_AccessPoint_** piece, e_System_* system);
void NewPiece(e_SamplePoint_** piece, e_System_* system);

// A calloc'ed copy of text, or null for null text (or when memory is out).
char* CopyString(const char* text);

void SetVecXYZ(e_Vector_* vector, double x, double y, double z);
void SetVecLLH(e_Vector_* vector, double lon, double lat, double height);
// Euclidean distance of the cartesian parts; -1 if either vector is missing.
double pointDistance(const e_Vector_* a, const e_Vector_* b);

// Release: each walks and frees a list with its strings and sublists.
void DeleteList(e_Vector_* list);
void DeleteList(e_Barrier_* list);
void DeleteList(e_Building_* list);
void DeleteList(e_Furniture_* list);
void DeleteList(e_AccessPoint_* list);
void DeleteList(e_ReceivedSignal_* list);
void DeleteList(e_SamplePoint_* list);
// Does nothing for a null pointer or a held record; otherwise frees the record with its
// lists and its strings (osmFile and osmContent included) and nulls the pointer.
void DeleteSystem(e_System_** system);

// Debug dumps to the log.
void Print(const e_Vector_* vector);
void Print(const e_Barrier_* barrier);
void Print(const e_Building_* building);
void Print(const e_AccessPoint_* accessPoint);
void Print(const e_SamplePoint_* samplePoint);
void Print(const e_Furniture_* furniture);
void Print(const e_System_* system);
