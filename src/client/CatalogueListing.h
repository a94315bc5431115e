#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "client/LibProcessor.h"

// What a server reported about itself, as text for a person: its version and its
// catalogues of materials, access points and antennas.
class CatalogueListing {
  public:
    explicit CatalogueListing(const LibProcessor& processor);

    void Print(std::ostream& out) const;

  private:
    static void PrintList(std::ostream& out, const char* title,
                          const std::vector<std::string>& entries);

    std::string libVersion;
    std::vector<std::string> materialNames;
    std::vector<std::string> materialDescriptions;
    std::vector<std::string> apNames;
    std::vector<std::string> apDescriptions;
    std::vector<AccessPointOption> apOptions;
    std::vector<std::string> antennaNames;
    std::vector<std::string> antennaDescriptions;
    std::vector<AntennaOption> antennaOptions;
};
