#pragma once

#include <string>

#include "system/SystemRecords.h"

// Small indoor systems for the tests and benchmarks of a whole run: one owned record, flat
// (two-dimensional) unless told otherwise, with free-space distance loss of exponent 2 and no
// walls, to which walls, access points and sample points are added.
class SystemScene {
public:
    SystemScene();
    ~SystemScene() { DeleteSystem(&record); }
    SystemScene(const SystemScene&) = delete;
    SystemScene& operator=(const SystemScene&) = delete;

    // A thin vertical wall from (x1, y1) to (x2, y2), 3 m high, of the medium number.
    e_Barrier_* AddWall(double x1, double y1, double x2, double y2, int medium,
                        double thickness = 0.1);
    // An omnidirectional access point of that power (watts) on a channel of 2.4 GHz.
    e_AccessPoint_* AddAccessPoint(const std::string& name, double x, double y, double power = 0.1,
                                   double gain = 2);
    e_SamplePoint_* AddSamplePoint(const std::string& name, double x, double y, double gain = 1);

    // The record, handed over: the scene no longer deletes it.
    e_System_* Release();

    // The free-space power in dBW at distance d from an access point of the scene's
    // frequency: power in dB + both gains + 20 log10(wavelength / (4 pi d)).
    static double FreeSpacePowerDBW(double powerWatts, double gains, double d);
    // The wavelength of channel 6, the scene's channel, in metres.
    static double Wavelength();

    e_System_* record = nullptr;
};

// The first signal of the sample point from the access point of that name, or null.
const e_ReceivedSignal_* SignalFrom(const e_SamplePoint_* point, const std::string& apName);
// The path of a file of the examples directory of the source tree.
std::string ExampleFile(const std::string& name);
// The sample point of that name in the system, or null.
e_SamplePoint_* SamplePointNamed(e_System_* system, const std::string& name);
