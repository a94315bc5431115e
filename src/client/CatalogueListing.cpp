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

CatalogueListing::CatalogueListing(const LibProcessor& processor) : processor(processor) {}

void CatalogueListing::PrintList(std::ostream& out, const char* title,
                                 const std::vector<std::string>& entries) {
    out << title << " (" << entries.size() << ")\n";
    for (const std::string& entry : entries) PrintIndented(out, entry);
}

void CatalogueListing::Print(std::ostream& out) const {
    const LibProcessor& p = processor;
    out << "server version: " << p.Read(&LibProcessor::libVersion) << "\n";
    PrintList(out, "materials", p.Read(&LibProcessor::materialNames));
    PrintList(out, "material descriptions", p.Read(&LibProcessor::materialDescriptions));
    PrintList(out, "access points", p.Read(&LibProcessor::apNames));
    PrintList(out, "access point descriptions", p.Read(&LibProcessor::apDescriptions));
    PrintList(out, "access point details", OptionLines(p.Read(&LibProcessor::apOptions)));
    PrintList(out, "antennas", p.Read(&LibProcessor::antennaNames));
    PrintList(out, "antenna descriptions", p.Read(&LibProcessor::antennaDescriptions));
    PrintList(out, "antenna details", OptionLines(p.Read(&LibProcessor::antennaOptions)));
}
