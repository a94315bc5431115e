#include "documents/ElementGroup.h"

ElementGroup::ElementGroup() { objTypeStr = "ElementGroup"; }
bool ElementGroup::Empty() { return false; }
bool ElementGroup::FromXml(CElement*) { return false; }
bool ElementGroup::ToXml(CElement*, bool) { return false; }
bool ElementGroup::CheckEq(ElementGroup*) { return false; }
void ElementGroup::Print() {}
bool ElementGroup::ResetDetection() { return false; }
bool ElementGroup::TransmitSourceToVolume() { return false; }
bool ElementGroup::TransmitVolumeToInterface(std::vector<EMRadiation*>*) { return false; }
bool ElementGroup::TransmitInterfaceToVolume() { return false; }
bool ElementGroup::ClearReceivedRadiation() { return false; }
bool ElementGroup::InitialTransmit(bool) { return false; }
bool ElementGroup::RemoveElement(OpticElement*) { return false; }
