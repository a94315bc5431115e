#pragma once

#include "system/SystemRecords.h"
#include "system/SystemWrapper.h"

// A sample point in the wrappers' dialect: element "SP_" with "size", "gain", the
// values of its first signal ("receivedPower_dBW", "receivedPower_dBm",
// "receivedPathLoss_dB", "expectedPower_dBm", "expectedPathLoss_dB",
// "receivedPathCount"), "simElementID", and its location as the child "Vector_".
class SamplePoint_ : public SystemWrapper<e_SamplePoint_> {
  public:
    explicit SamplePoint_(e_SamplePoint_* record);

    // Without signals the signal attributes are left out.
    bool ToXML(tinyxml2::XMLElement* element) const override;
    // The signal attributes go into the first signal; a sample point without one gets a
    // signal with an empty access-point name when the element carries them.
    bool FromXML(tinyxml2::XMLElement* element) override;
};
