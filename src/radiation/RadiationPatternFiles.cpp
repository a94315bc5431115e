// The readers of the pattern files: ".pat" (comma-separated: a header, the horizontal cut
// ended by a line with "999", the slice counts, then each vertical cut after its offset)
// and ".apf" (fields between vertical bars: key, value, unit).
#include <cmath>
#include <cstdlib>
#include <iostream>
#include <utility>

#include "framework/Parameter.h"
#include "logging/Log.h"
#include "radiation/RadiationPattern.h"

namespace {

// Drops the carriage return that a file with CR LF line ends leaves on each line.
std::string WithoutLineEnd(const std::string& line) {
    if (!line.empty() && line.back() == '\r') return line.substr(0, line.size() - 1);
    return line;
}

// The text between bar number n (from 1) and the next bar, or the end of the line; empty
// when the line has fewer than n bars. Surrounding blanks are dropped.
std::string BarField(const std::string& line, int n) {
    size_t bar = std::string::npos;
    for (int i = 0; i < n; ++i) {
        bar = line.find('|', bar == std::string::npos ? 0 : bar + 1);
        if (bar == std::string::npos) return "";
    }
    const size_t end = line.find('|', bar + 1);
    std::string field = line.substr(bar + 1, end == std::string::npos ? end : end - bar - 1);
    const size_t first = field.find_first_not_of(" \t");
    if (first == std::string::npos) return "";
    return field.substr(first, field.find_last_not_of(" \t") - first + 1);
}

// The first comma at index 1 or later, or npos.
size_t CommaAfterFirst(const std::string& line) { return line.find(',', 1); }

double ToDouble(const std::string& text) { return std::atof(text.c_str()); }

// The factor of the first multiplied frequency unit ("aHz" .. "PHz") found in unit; 1.0
// when none is.
double FrequencyFactor(const std::string& unit) {
    const auto hz = Parameter::paramUnitGUIStrings.find(PU_HZ);
    const std::string hzText = hz == Parameter::paramUnitGUIStrings.end() ? "Hz" : hz->second;
    for (const auto& [mult, prefix] : Parameter::paramMultiplierStrings) {
        if (prefix.empty() || unit.find(prefix + hzText) == std::string::npos) continue;
        const auto factor = Parameter::paramMultiplierValues.find(mult);
        if (factor != Parameter::paramMultiplierValues.end()) return factor->second;
    }
    return 1.0;
}

}  // namespace

bool RadiationPattern::readFileWith(bool (RadiationPattern::*reader)()) {
    fileStream.close();
    fileStream.clear();
    fileStream.open(fileName);
    const bool loaded = (this->*reader)();
    fileStream.close();
    fileStream.clear();
    if (!loaded) Log::log(1) << "RadiationPattern: loading \"" << fileName << "\" failed\n";
    return loaded;
}

bool RadiationPattern::readPatSections() {
    std::string line;
    if (!std::getline(fileStream, line)) {
        Log::log(1) << "RadiationPattern::readPatSections: no header line\n";
        return false;
    }
    if (!readPatHeader(WithoutLineEnd(line))) return false;
    readPatHorizontalSlice();
    int numValues = 0;
    if (!readPatSliceCounts(numValues)) return false;
    for (int i = 0; i < numVertSlices; ++i) {
        if (!readPatVerticalSlice(numValues)) return false;
    }
    return true;
}

bool RadiationPattern::readPatHeader(const std::string& line) {
    const size_t first = CommaAfterFirst(line);
    const size_t second = first == std::string::npos ? first : line.find(',', first + 1);
    if (second == std::string::npos) {
        Log::log(1) << "RadiationPattern::readPatHeader: the header needs two commas: \"" << line
                    << "\"\n";
        return false;
    }
    // The first character, a quote as a rule, is not part of the description.
    description = line.substr(1, first - 1);
    gain = ToDouble(line.substr(first + 1, second - first - 1));
    gainTxParam = gain;
    kypat = std::atoi(line.substr(second + 1).c_str());
    std::cout << "desc: " << description << "\n";
    std::cout << "gainMax: " << gain << "\n";
    std::cout << "KYPAT: " << kypat << "\n";
    return true;
}

void RadiationPattern::readPatHorizontalSlice() {
    horizontalSlice.clear();
    horizontalSlice.init(SLICE_HORIZONTAL, PatternSlice::OFFSET_NOT_GIVEN);
    std::string line;
    while (std::getline(fileStream, line) && line.find("999") == std::string::npos) {
        addPatValue(WithoutLineEnd(line), horizontalSlice);
    }
}

bool RadiationPattern::readPatSliceCounts(int& numValues) {
    std::string line;
    if (!std::getline(fileStream, line) || CommaAfterFirst(line) == std::string::npos) {
        Log::log(1) << "RadiationPattern::readPatSliceCounts: no line of slice counts\n";
        return false;
    }
    const size_t comma = CommaAfterFirst(line);
    numVertSlices = static_cast<int>(ToDouble(line.substr(0, comma)));
    numValues = static_cast<int>(ToDouble(line.substr(comma + 1)));
    std::cout << "numVertSlices = " << numVertSlices << "\n";
    std::cout << "numValues = " << numValues << "\n";
    return true;
}

bool RadiationPattern::readPatVerticalSlice(int numValues) {
    std::string line;
    if (!std::getline(fileStream, line)) {
        Log::log(1) << "RadiationPattern::readPatVerticalSlice: no offset line for slice "
                    << verticalSlices.size() << "\n";
        return false;
    }
    const double offset = ToDouble(line);
    std::cout << "offset = " << offset << "\n";
    PatternSlice slice;
    slice.init(SLICE_VERTICAL, offset);
    for (int i = 0; i < numValues && std::getline(fileStream, line); ++i) {
        addPatValue(WithoutLineEnd(line), slice);
    }
    verticalSlices.push_back(std::move(slice));
    return true;
}

void RadiationPattern::addPatValue(const std::string& line, PatternSlice& slice) {
    const size_t comma = CommaAfterFirst(line);
    if (comma == std::string::npos) return;
    const double angle = ToDouble(line.substr(0, comma));
    const double value = std::pow(10.0, (ToDouble(line.substr(comma + 1)) - gain) / 10.0);
    slice.add(angle, value);
    std::cout << "angle, power = " << angle << " , " << value << "\n";
}

bool RadiationPattern::readApfLines() {
    std::string line;
    if (!std::getline(fileStream, line)) {
        Log::log(1) << "RadiationPattern::readApfLines: nothing to read\n";
        return false;
    }
    do {
        readApfLine(WithoutLineEnd(line));
    } while (std::getline(fileStream, line));
    numVertSlices = static_cast<int>(verticalSlices.size());
    return true;
}

void RadiationPattern::readApfLine(const std::string& line) {
    const std::string key = BarField(line, 1);
    const std::string value = BarField(line, 2);
    if (key == "MFR") {
        manufacturer = value;
    } else if (key == "MODEL") {
        model = value;
    } else if (key == "FREQ") {
        frequencyText = value;
        setWavelengthFromFrequency(value, BarField(line, 3));
    } else if (key == "POLARIZATION") {
        polarization = value;
    } else if (key == "MaxGain") {
        gain = std::strtof(value.c_str(), nullptr);
        gainTxParam = gain;
    } else if (key == "MinGain") {
        gainMin = std::strtof(value.c_str(), nullptr);
    } else if (key == "HORIZ") {
        horizontalSlice.clear();
        horizontalSlice.init(SLICE_HORIZONTAL, PatternSlice::OFFSET_NOT_GIVEN);
        readApfSlice(horizontalSlice, std::atoi(value.c_str()));
    } else if (key == "VERT") {
        PatternSlice slice;
        slice.init(SLICE_VERTICAL, PatternSlice::OFFSET_NOT_GIVEN);
        readApfSlice(slice, std::atoi(BarField(line, 3).c_str()));
        verticalSlices.push_back(std::move(slice));
    }
}

void RadiationPattern::readApfSlice(PatternSlice& slice, int lineCount) {
    const double peak = std::pow(10.0, gain * 0.1);
    std::string line;
    for (int i = 0; i < lineCount && std::getline(fileStream, line); ++i) {
        const std::string data = WithoutLineEnd(line);
        const double dB = ToDouble(BarField(data, 2));
        slice.add(ToDouble(BarField(data, 1)), static_cast<float>(std::pow(10.0, dB * 0.1) / peak));
    }
}

void RadiationPattern::setWavelengthFromFrequency(const std::string& value,
                                                  const std::string& unit) {
    wavelength = 300000000.0 / (ToDouble(value) * FrequencyFactor(unit));
    wavelengthFound = true;
    SetParameterValue(PN_LMDA, wavelength, PU_M);
}
