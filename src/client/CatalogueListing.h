#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "client/LibProcessor.h"

// What a server reported about itself, as text for a person: its version and its
// catalogues of materials, access points and antennas, as the replies left them.
class CatalogueListing {
  public:
    explicit CatalogueListing(const LibProcessor& processor);

    void Print(std::ostream& out) const;

  private:
    static void PrintList(std::ostream& out, const char* title,
                          const std::vector<std::string>& entries);

    const LibProcessor& processor;
};
