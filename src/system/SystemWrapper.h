#pragma once

#include "system/SystemBase.h"

// A wrapper that refers to one record. It does not own the record.
template <typename Record>
class SystemWrapper : public SystemBase {
  public:
    using RecordType = Record;

    explicit SystemWrapper(Record* record) : record(record) {}

    Record* GetRecord() const { return record; }

  protected:
    Record* record;
};
