#pragma once

#include <cstdint>
#include <string>

// One edit of a simulation document, addressed to the element of that name and object id:
// either a new value for one attribute, or a new name.
struct DocumentChange {
    enum eChangeType : int { CHANGE_VALUE = 1, CHANGE_NAME = 2 };

    // A change of name.
    DocumentChange(int32_t id, const std::string& name);
    // A change of the attribute's value; extra is free for the caller.
    DocumentChange(int32_t id, const std::string& name, const std::string& attribute,
                   const std::string& extra, const std::string& value);

    int changeType;
    int32_t objectId;
    std::string name;
    std::string attribute;
    std::string extra;
    std::string value;
};
