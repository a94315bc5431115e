#include "documents/DocumentChange.h"

DocumentChange::DocumentChange(int32_t id, const std::string& name)
    : changeType(CHANGE_NAME), objectId(id), name(name) {}

DocumentChange::DocumentChange(int32_t id, const std::string& name, const std::string& attribute,
                               const std::string& extra, const std::string& value)
    : changeType(CHANGE_VALUE),
      objectId(id),
      name(name),
      attribute(attribute),
      extra(extra),
      value(value) {}
