#include "client/CatalogueListing.h"

#include <sstream>

namespace {

// Each line of `text` indented, so that a many-line entry stays under its title.
void PrintIndented(std::ostream& out, const std::string& text) {
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) out << "    " << line << "\n";
}

template <typename Option>
std::vector<std::string> OptionLines(const std::vector<Option>& options) {
    std::vector<std::string> lines;
    for (const Option& option : options) {
        std::string line = option.brand.empty() ? option.name : option.brand + " " + option.name;
        if (!option.description.empty()) line += ": " + option.description;
        lines.push_back(line);
    }
    return lines;
}

}  // namespace

CatalogueListing::CatalogueListing(const LibProcessor& processor)
    : libVersion(processor.Read(&LibProcessor::libVersion)),
      materialNames(processor.Read(&LibProcessor::materialNames)),
      materialDescriptions(processor.Read(&LibProcessor::materialDescriptions)),
      apNames(processor.Read(&LibProcessor::apNames)),
      apDescriptions(processor.Read(&LibProcessor::apDescriptions)),
      apOptions(processor.Read(&LibProcessor::apOptions)),
      antennaNames(processor.Read(&LibProcessor::antennaNames)),
      antennaDescriptions(processor.Read(&LibProcessor::antennaDescriptions)),
      antennaOptions(processor.Read(&LibProcessor::antennaOptions)) {}

void CatalogueListing::PrintList(std::ostream& out, const char* title,
                                 const std::vector<std::string>& entries) {
    out << title << " (" << entries.size() << ")\n";
    for (const std::string& entry : entries) PrintIndented(out, entry);
}

void CatalogueListing::Print(std::ostream& out) const {
    out << "server version: " << libVersion << "\n";
    PrintList(out, "materials", materialNames);
    PrintList(out, "material descriptions", materialDescriptions);
    PrintList(out, "access points", apNames);
    PrintList(out, "access point descriptions", apDescriptions);
    PrintList(out, "access point details", OptionLines(apOptions));
    PrintList(out, "antennas", antennaNames);
    PrintList(out, "antenna descriptions", antennaDescriptions);
    PrintList(out, "antenna details", OptionLines(antennaOptions));
}
