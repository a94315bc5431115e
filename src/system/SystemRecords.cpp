#include "system/SystemRecords.h"

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <new>

#include "logging/Log.h"

namespace {

// A malloc'ed record with every field zero, or null (logged) when memory is out.
template <typename T>
T* AllocateRecord(const char* maker) {
    void* memory = std::malloc(sizeof(T));
    if (memory == nullptr) {
        Log::log(1) << maker << "() failed - out of memory\n";
        return nullptr;
    }
    return new (memory) T{};
}

template <typename T>
void AppendToList(T*& head, T* record) {
    T** link = &head;
    while (*link != nullptr) link = &(*link)->next;
    *link = record;
}

// Walls and buildings interact with rays as the system says by default.
template <typename T>
void CopyInteractions(const e_System_* system, T* record) {
    record->reflect = system->reflect;
    record->transmit = system->transmit;
    record->diffract = system->diffract;
}

template <typename T, typename FreeContent>
void FreeList(T* list, FreeContent freeContent) {
    while (list != nullptr) {
        T* next = list->next;
        freeContent(list);
        std::free(list);
        list = next;
    }
}

void PrintVectors(const e_Vector_* list) {
    for (; list != nullptr; list = list->next) Print(list);
}

}  // namespace

char* CopyString(const char* text) {
    if (text == nullptr) return nullptr;
    size_t length = std::strlen(text);
    auto* copy = static_cast<char*>(std::calloc(length + 1, 1));
    if (copy == nullptr) {
        Log::log(1) << "CopyString() failed - out of memory\n";
        return nullptr;
    }
    std::memcpy(copy, text, length);
    return copy;
}

e_Barrier_* NewBarrier(e_System_* system) {
    auto* barrier = AllocateRecord<e_Barrier_>("NewBarrier");
    if (barrier == nullptr) return nullptr;
    barrier->vertical = true;
    barrier->thinBarrier = true;
    barrier->transmit = true;
    if (system != nullptr) {
        CopyInteractions(system, barrier);
        AppendToList(system->barriers, barrier);
    }
    return barrier;
}

e_Building_* NewBuilding(e_System_* system) {
    auto* building = AllocateRecord<e_Building_>("NewBuilding");
    if (building == nullptr) return nullptr;
    building->levelCount = 1;
    building->wallThickness = 0.3;
    building->wallMedium = 1;
    building->roofThickness = 0.3;
    building->roofMedium = 1;
    building->floorThickness = 0.3;
    building->floorMedium = 1;
    building->thinBarrier = true;
    building->reflect = true;
    building->diffract = true;
    if (system != nullptr) {
        CopyInteractions(system, building);
        AppendToList(system->buildings, building);
    }
    return building;
}

e_Furniture_* NewFurniture(e_System_* system) {
    auto* furniture = AllocateRecord<e_Furniture_>("NewFurniture");
    if (furniture != nullptr && system != nullptr) AppendToList(system->furniture, furniture);
    return furniture;
}

e_AccessPoint_* NewAccessPoint(e_System_* system, const char* name) {
    auto* accessPoint = AllocateRecord<e_AccessPoint_>("NewAccessPoint");
    if (accessPoint == nullptr) return nullptr;
    accessPoint->name = CopyString(name);
    accessPoint->channel = 1;
    accessPoint->frequency_GHz = -1;
    accessPoint->power = 0.1;
    accessPoint->size = 0.12;
    accessPoint->gain = 8;
    accessPoint->radPattern = 1;
    accessPoint->gainBeamWidth = 45;
    accessPoint->gainBeamHeight = 360;
    if (system != nullptr) AppendToList(system->accessPoints, accessPoint);
    return accessPoint;
}

e_SamplePoint_* NewSamplePoint(e_System_* system, const char* name) {
    auto* samplePoint = AllocateRecord<e_SamplePoint_>("NewSamplePoint");
    if (samplePoint == nullptr) return nullptr;
    samplePoint->name = CopyString(name);
    samplePoint->size = 1;
    samplePoint->gain = 1;
    samplePoint->simElementID = -1;
    if (system != nullptr) AppendToList(system->samplePoints, samplePoint);
    return samplePoint;
}

e_ReceivedSignal_* NewReceivedSignal(e_SamplePoint_* samplePoint, const char* apName) {
    auto* signal = AllocateRecord<e_ReceivedSignal_>("NewReceivedSignal");
    if (signal == nullptr) return nullptr;
    signal->apName = CopyString(apName);
    if (samplePoint != nullptr) AppendToList(samplePoint->signals, signal);
    return signal;
}

e_System_* NewSystemIndoor(e_System_*) {
    auto* system = AllocateRecord<e_System_>("NewSystemIndoor");
    if (system == nullptr) return nullptr;
    system->isIndoorOnly = true;
    system->height = 3;
    system->ceilingMaterial = 6;
    system->ceilingThickness = 0.02;
    system->floorThickness = 0.02;
    system->floorMaterial = 8;
    system->only2d = true;
    system->pathLoss_model = 2;
    system->pathLoss_Exp = 2;
    system->rayGap = 1;
    system->traceLimit = 5;
    system->transmit = true;
    system->failPowerValue = -100;
    return system;
}

e_System_* NewSystemUrban(e_System_*) {
    e_System_* system = NewSystemIndoor(nullptr);
    if (system == nullptr) return nullptr;
    system->isIndoorOnly = false;
    system->reflect = true;
    system->transmit = false;
    system->diffract = true;
    return system;
}

e_Vector_* NewVectorXYZ(double x, double y, double z) {
    auto* vector = AllocateRecord<e_Vector_>("NewVectorXYZ");
    if (vector != nullptr) SetVecXYZ(vector, x, y, z);
    return vector;
}

e_Vector_* NewVectorLLH(double lon, double lat, double height) {
    auto* vector = AllocateRecord<e_Vector_>("NewVectorLLH");
    if (vector != nullptr) SetVecLLH(vector, lon, lat, height);
    return vector;
}

void NewPiece(e_Barrier_** piece, e_System_* system) { *piece = NewBarrier(system); }
void NewPiece(e_Building_** piece, e_System_* system) { *piece = NewBuilding(system); }
void NewPiece(e_Furniture_** piece, e_System_* system) { *piece = NewFurniture(system); }
void NewPiece(e_AccessPoint_** piece, e_System_* system) {
    *piece = NewAccessPoint(system, nullptr);
}
void NewPiece(e_SamplePoint_** piece, e_System_* system) {
    *piece = NewSamplePoint(system, nullptr);
}

void SetVecXYZ(e_Vector_* vector, double x, double y, double z) {
    if (vector == nullptr) return;
    vector->x = x;
    vector->y = y;
    vector->z = z;
    vector->coordSystem = 0;
}

void SetVecLLH(e_Vector_* vector, double lon, double lat, double height) {
    if (vector == nullptr) return;
    vector->lon = lon;
    vector->lat = lat;
    vector->height = height;
    vector->coordSystem = 1;
}

double pointDistance(const e_Vector_* a, const e_Vector_* b) {
    if (a == nullptr || b == nullptr) {
        Log::log(1) << "pointDistance() failed - missing vector\n";
        return -1;
    }
    return std::sqrt((a->x - b->x) * (a->x - b->x) + (a->y - b->y) * (a->y - b->y) +
                     (a->z - b->z) * (a->z - b->z));
}

void DeleteList(e_Vector_* list) {
    FreeList(list, [](e_Vector_*) {});
}

void DeleteList(e_Barrier_* list) {
    FreeList(list, [](e_Barrier_* barrier) { DeleteList(barrier->vectors); });
}

void DeleteList(e_Building_* list) {
    FreeList(list, [](e_Building_* building) { DeleteList(building->vectors); });
}

void DeleteList(e_Furniture_* list) {
    FreeList(list, [](e_Furniture_*) {});
}

void DeleteList(e_AccessPoint_* list) {
    FreeList(list, [](e_AccessPoint_* accessPoint) { std::free(accessPoint->name); });
}

void DeleteList(e_ReceivedSignal_* list) {
    FreeList(list, [](e_ReceivedSignal_* signal) { std::free(signal->apName); });
}

void DeleteList(e_SamplePoint_* list) {
    FreeList(list, [](e_SamplePoint_* samplePoint) {
        std::free(samplePoint->name);
        DeleteList(samplePoint->signals);
    });
}

void DeleteSystem(e_System_** system) {
    if (system == nullptr || *system == nullptr || (*system)->held) return;
    e_System_* record = *system;
    DeleteList(record->buildings);
    DeleteList(record->barriers);
    DeleteList(record->accessPoints);
    DeleteList(record->samplePoints);
    DeleteList(record->furniture);
    std::free(record->osmFile);
    std::free(record->osmContent);
    std::free(record);
    *system = nullptr;
}

void Print(const e_Vector_* vector) {
    if (vector == nullptr) return;
    Log::log(3) << "print vector: "
                << "coordSystem = " << vector->coordSystem << ", x = " << vector->x
                << ", y = " << vector->y << ", z = " << vector->z << ", lon = " << vector->lon
                << ", lat = " << vector->lat << ", height = " << vector->height << "\n";
}

void Print(const e_Barrier_* barrier) {
    if (barrier == nullptr) return;
    Log::log(3) << "print barrier: "
                << "height_lower = " << barrier->height_lower
                << ", height_upper = " << barrier->height_upper
                << ", thickness = " << barrier->thickness << ", medium = " << barrier->medium
                << ", vertical = " << barrier->vertical
                << ", thinBarrier = " << barrier->thinBarrier << ", reflect = " << barrier->reflect
                << ", transmit = " << barrier->transmit << ", diffract = " << barrier->diffract
                << "\n";
    PrintVectors(barrier->vectors);
}

void Print(const e_Building_* building) {
    if (building == nullptr) return;
    Log::log(3) << "print building: "
                << "height = " << building->height << ", levelCount = " << building->levelCount
                << ", wallThickness = " << building->wallThickness
                << ", wallMedium = " << building->wallMedium
                << ", roofThickness = " << building->roofThickness
                << ", roofMedium = " << building->roofMedium
                << ", floorThickness = " << building->floorThickness
                << ", floorMedium = " << building->floorMedium
                << ", thinBarrier = " << building->thinBarrier
                << ", reflect = " << building->reflect << ", transmit = " << building->transmit
                << ", diffract = " << building->diffract << "\n";
    PrintVectors(building->vectors);
}

// Access points, sample points, furniture and systems have no dump.
void Print(const e_AccessPoint_*) {}
void Print(const e_SamplePoint_*) {}
void Print(const e_Furniture_*) {}
void Print(const e_System_*) {}
