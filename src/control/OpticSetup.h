#pragma once

#include <string>

class OpticElement;

// The factory presets of new elements. Each Setup function writes a full set of quick
// parameters into the element, so that a new element is valid before anyone sets anything;
// the presets of a system are the defaults of every wireless system.
//
// A preset is chosen by its index in OpticElement::newElementNames, or directly by its
// name. A name that the function has no preset for is an error and writes nothing.
class OpticSetup {
public:
    OpticSetup() = default;
    ~OpticSetup() = default;

    static bool SetupSource(int index, OpticElement* element);
    static bool SetupMirror(int index, OpticElement* element);
    static bool SetupLens(int index, OpticElement* element);
    static bool SetupWaveguide(int index, OpticElement* element);
    static bool SetupObject(int index, OpticElement* element);
    static bool SetupDetector(int index, OpticElement* element);
    static bool SetupImporter(int index, OpticElement* element);
    static bool SetupSystem(int index, OpticElement* element);
    static bool SetupFDTDVolume(int index, OpticElement* element);
    static bool SetupTRACEVolume(int index, OpticElement* element);

    static bool SetupSource(const std::string& preset, OpticElement* element);
    static bool SetupMirror(const std::string& preset, OpticElement* element);
    static bool SetupLens(const std::string& preset, OpticElement* element);
    static bool SetupWaveguide(const std::string& preset, OpticElement* element);
    static bool SetupObject(const std::string& preset, OpticElement* element);
    static bool SetupDetector(const std::string& preset, OpticElement* element);
    static bool SetupImporter(const std::string& preset, OpticElement* element);
    static bool SetupSystem(const std::string& preset, OpticElement* element);
    static bool SetupFDTDVolume(const std::string& preset, OpticElement* element);
    static bool SetupTRACEVolume(const std::string& preset, OpticElement* element);

    // The preset name at that index of OpticElement::newElementNames; empty when none.
    static std::string PresetName(int index);
};
