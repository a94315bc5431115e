#include "system/SystemBuilder.h"

#include "logging/Log.h"
#include "system/SystemToXML.h"

bool SystemBuilder::FilehasSystem(const std::string& file) const {
    return ::FilehasSystem(file.c_str());
}

e_System_* SystemBuilder::SystemFromFile(const std::string& file) const {
    e_System_* system = NewSystemIndoor(nullptr);
    if (::SystemFromFile(system, file.c_str())) return system;
    DeleteSystem(&system);
    Log::log(1) << "SystemBuilder::SystemFromFile() - no system in " << file << "\n";
    return nullptr;
}
