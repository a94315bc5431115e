#include "support/SystemScene.h"

#include <cmath>
#include <cstring>
#include <filesystem>

SystemScene::SystemScene() {
    record = NewSystemIndoor(nullptr);
    record->xMin = -20;
    record->xMax = 20;
    record->yMin = -20;
    record->yMax = 20;
    record->height = 3;
    record->only2d = true;
    record->pathLoss_model = 0;
    record->pathLoss_Exp = 2;
    record->rayGap = 1;
    record->traceLimit = 5;
    record->reflect = true;
    record->transmit = true;
    record->diffract = false;
}

e_Barrier_* SystemScene::AddWall(double x1, double y1, double x2, double y2, int medium,
                                 double thickness) {
    e_Barrier_* wall = NewBarrier(record);
    wall->height_lower = 0;
    wall->height_upper = 3;
    wall->thickness = thickness;
    wall->medium = medium;
    wall->vertical = true;
    wall->thinBarrier = true;
    wall->vectors = NewVectorXYZ(x1, y1, 0);
    wall->vectors->next = NewVectorXYZ(x2, y2, 0);
    return wall;
}

e_AccessPoint_* SystemScene::AddAccessPoint(const std::string& name, double x, double y,
                                            double power, double gain) {
    e_AccessPoint_* ap = NewAccessPoint(record, name.c_str());
    SetVecXYZ(&ap->location, x, y, 1.5);
    ap->channel = 6;
    ap->power = power;
    ap->gain = gain;
    ap->radPattern = 1;
    return ap;
}

e_SamplePoint_* SystemScene::AddSamplePoint(const std::string& name, double x, double y,
                                            double gain) {
    e_SamplePoint_* sp = NewSamplePoint(record, name.c_str());
    SetVecXYZ(&sp->location, x, y, 1.5);
    sp->size = 1;
    sp->gain = gain;
    return sp;
}

e_System_* SystemScene::Release() {
    e_System_* released = record;
    record = nullptr;
    return released;
}

double SystemScene::Wavelength() { return 3e8 / 2437e6; }

double SystemScene::FreeSpacePowerDBW(double powerWatts, double gains, double d) {
    return 10 * std::log10(powerWatts) + gains +
           20 * std::log10(Wavelength() / (4 * 3.141592653589793 * d));
}

const e_ReceivedSignal_* SignalFrom(const e_SamplePoint_* point, const std::string& apName) {
    for (const e_ReceivedSignal_* signal = point->signals; signal != nullptr;
         signal = signal->next) {
        if (signal->apName != nullptr && apName == signal->apName) return signal;
    }
    return nullptr;
}

e_SamplePoint_* SamplePointNamed(e_System_* system, const std::string& name) {
    for (e_SamplePoint_* point = system->samplePoints; point != nullptr; point = point->next) {
        if (point->name != nullptr && name == point->name) return point;
    }
    return nullptr;
}

std::string ExampleFile(const std::string& name) {
    std::filesystem::path root = std::filesystem::path(__FILE__).parent_path().parent_path();
    return (root.parent_path() / "examples" / name).string();
}
