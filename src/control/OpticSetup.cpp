#include "control/OpticSetup.h"

bool OpticSetup::SetupSource(int, OpticElement*) { return false; }
bool OpticSetup::SetupMirror(int, OpticElement*) { return false; }
bool OpticSetup::SetupLens(int, OpticElement*) { return false; }
bool OpticSetup::SetupWaveguide(int, OpticElement*) { return false; }
bool OpticSetup::SetupObject(int, OpticElement*) { return false; }
bool OpticSetup::SetupDetector(int, OpticElement*) { return false; }
bool OpticSetup::SetupImporter(int, OpticElement*) { return false; }
bool OpticSetup::SetupSystem(int, OpticElement*) { return false; }
bool OpticSetup::SetupFDTDVolume(int, OpticElement*) { return false; }
bool OpticSetup::SetupTRACEVolume(int, OpticElement*) { return false; }
bool OpticSetup::SetupSource(const std::string&, OpticElement*) { return false; }
bool OpticSetup::SetupMirror(const std::string&, OpticElement*) { return false; }
bool OpticSetup::SetupLens(const std::string&, OpticElement*) { return false; }
bool OpticSetup::SetupWaveguide(const std::string&, OpticElement*) { return false; }
bool OpticSetup::SetupObject(const std::string&, OpticElement*) { return false; }
bool OpticSetup::SetupDetector(const std::string&, OpticElement*) { return false; }
bool OpticSetup::SetupImporter(const std::string&, OpticElement*) { return false; }
bool OpticSetup::SetupSystem(const std::string&, OpticElement*) { return false; }
bool OpticSetup::SetupFDTDVolume(const std::string&, OpticElement*) { return false; }
bool OpticSetup::SetupTRACEVolume(const std::string&, OpticElement*) { return false; }
std::string OpticSetup::PresetName(int) { return std::string(); }
