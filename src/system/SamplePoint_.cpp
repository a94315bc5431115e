#include "system/SamplePoint_.h"

#include "system/Vector_.h"
#include "system/XmlAttributeReader.h"
#include "system/XmlAttributeWriter.h"

namespace {

template <typename Signal, typename Visit>
void SignalAttributes(Signal& signal, Visit& visit) {
    visit("receivedPower_dBW", signal.receivedPower_dBW);
    visit("receivedPower_dBm", signal.receivedPower_dBm);
    visit("receivedPathLoss_dB", signal.receivedPathLoss_dB);
    visit("expectedPower_dBm", signal.expectedPower_dBm);
    visit("expectedPathLoss_dB", signal.expectedPathLoss_dB);
    visit("receivedPathCount", signal.receivedPathCount);
}

template <typename SamplePoint, typename Visit>
void SamplePointAttributes(SamplePoint& samplePoint, Visit& visit) {
    visit("size", samplePoint.size);
    visit("gain", samplePoint.gain);
    if (samplePoint.signals != nullptr) SignalAttributes(*samplePoint.signals, visit);
    visit("simElementID", samplePoint.simElementID);
}

}  // namespace

SamplePoint_::SamplePoint_(e_SamplePoint_* record) : SystemWrapper(record) {}

bool SamplePoint_::ToXML(tinyxml2::XMLElement* element) const {
    if (!CheckElement(record, element, nullptr, "SamplePoint_::ToXML() failed")) return false;
    XmlAttributeWriter write(element);
    SamplePointAttributes(*record, write);
    return Vector_::ChildToXML(&record->location, element);
}

bool SamplePoint_::FromXML(tinyxml2::XMLElement* element) {
    if (!CheckElement(record, element, nullptr, "SamplePoint_::FromXML() failed")) return false;
    if (record->signals == nullptr && element->Attribute("receivedPower_dBW") != nullptr &&
        NewReceivedSignal(record, "") == nullptr) {
        return false;
    }
    XmlAttributeReader read(element);
    SamplePointAttributes(*record, read);
    return Vector_::ChildFromXML(&record->location, element);
}
