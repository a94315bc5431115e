#include "server/ClientServerMessage.h"

#include <tinyxml2.h>

#include "logging/Log.h"
#include "system/SystemToXML.h"

using tinyxml2::XMLDocument;
using tinyxml2::XMLElement;

namespace {

const char* const rootName = "libFenwaveMessage";

}  // namespace

ClientServerMessage::~ClientServerMessage() { ReleaseSystem(); }

void ClientServerMessage::ReleaseSystem() {
    DeleteSystem(&system);
    system = nullptr;
}

void ClientServerMessage::Reset() {
    type = MSGTYPE_NONE;
    msg = MSG_NONE;
    string.clear();
    stringList.clear();
    ReleaseSystem();
}

void ClientServerMessage::SetType(eMsgType newType) { type = newType; }
void ClientServerMessage::SetMsg(eMsg newMsg) { msg = newMsg; }
void ClientServerMessage::SetMsg(const std::string& text) { string = text; }
void ClientServerMessage::SetMsg(const char* text) { string = text == nullptr ? "" : text; }
void ClientServerMessage::SetMsg(bool value) { string = value ? "true" : "false"; }
void ClientServerMessage::SetMsg(const std::vector<std::string>& list) { stringList = list; }

template <typename Option>
void ClientServerMessage::SetOptions(const std::vector<Option>& options) {
    stringList.clear();
    for (const Option& option : options) {
        std::string text;
        ObjToString(&option, text);
        stringList.push_back(text);
    }
}

void ClientServerMessage::SetMsg(const std::vector<AccessPointOption>& options) {
    SetOptions(options);
}

void ClientServerMessage::SetMsg(const std::vector<AntennaOption>& options) { SetOptions(options); }

void ClientServerMessage::SetMsg(e_System_* newSystem) {
    if (newSystem == system) return;
    ReleaseSystem();
    system = newSystem;
}

bool ClientServerMessage::GetType(eMsgType& out) const {
    out = type;
    return true;
}

bool ClientServerMessage::GetMsg(eMsg& out) const {
    out = msg;
    return true;
}

bool ClientServerMessage::GetMsg(std::string& out) const {
    out = string;
    return true;
}

bool ClientServerMessage::GetMsg(bool& out) const {
    if (string == "true") {
        out = true;
    } else if (string == "false") {
        out = false;
    } else {
        return false;
    }
    return true;
}

bool ClientServerMessage::GetMsg(std::vector<std::string>& out) const {
    out = stringList;
    return true;
}

template <typename Option>
bool ClientServerMessage::GetOptions(std::vector<Option>& out) const {
    bool allRead = true;
    for (const std::string& text : stringList) {
        out.emplace_back();
        allRead = ObjFromString(&out.back(), text) && allRead;
    }
    return allRead;
}

bool ClientServerMessage::GetMsg(std::vector<AccessPointOption>& out) const {
    return GetOptions(out);
}

bool ClientServerMessage::GetMsg(std::vector<AntennaOption>& out) const { return GetOptions(out); }

bool ClientServerMessage::GetMsg(e_System_** out) {
    if (system == nullptr) {
        Log::log(1) << "ClientServerMessage::GetMsg() - get system from message failed\n";
        return false;
    }
    *out = system;
    system = nullptr;
    return true;
}

bool ClientServerMessage::TestType(const eMsgType& value) const { return type == value; }
bool ClientServerMessage::TestMsg(const eMsg& value) const { return msg == value; }
bool ClientServerMessage::TestMsg(const std::string& value) const { return string == value; }

bool ClientServerMessage::ToString(std::string& text) const {
    XMLDocument document(true, tinyxml2::COLLAPSE_WHITESPACE);
    XMLElement* root = document.NewElement(rootName);
    document.InsertEndChild(root);
    root->SetAttribute("type", static_cast<int>(type));
    root->SetAttribute("msg", static_cast<int>(msg));
    root->SetAttribute("string", string.c_str());
    if (!stringList.empty()) {
        XMLElement* list = root->InsertNewChildElement("stringList");
        for (const std::string& entry : stringList) {
            list->InsertNewChildElement("string")->SetAttribute("val", entry.c_str());
        }
    }
    if (system != nullptr) ObjToXML(system, root->InsertNewChildElement("System_"));
    tinyxml2::XMLPrinter printer(nullptr, false);
    document.Print(&printer);
    text = printer.CStr();
    return true;
}

bool ClientServerMessage::FromString(std::string& text) { return FromString(text.c_str()); }

bool ClientServerMessage::FromString(const char* text) {
    Log::log(4) << "ClientServerMessage::FromString() - enter\n";
    XMLDocument document(true, tinyxml2::COLLAPSE_WHITESPACE);
    if (document.Parse(text == nullptr ? "" : text) != tinyxml2::XML_SUCCESS) {
        Log::log(1) << "ClientServerMessage::FromString() - parse xml failed"
                    << " " << document.ErrorName() << "\n";
        return false;
    }
    const XMLElement* root = document.RootElement();
    if (root == nullptr) {
        Log::log(1) << "ClientServerMessage::FromString() - no root element\n";
        return false;
    }
    int number = type;
    root->QueryIntAttribute("type", &number);
    type = static_cast<eMsgType>(number);
    number = msg;
    root->QueryIntAttribute("msg", &number);
    msg = static_cast<eMsg>(number);
    if (const char* value = root->Attribute("string")) string = value;

    if (const XMLElement* list = root->FirstChildElement("stringList")) {
        for (const XMLElement* entry = list->FirstChildElement("string"); entry != nullptr;
             entry = entry->NextSiblingElement("string")) {
            if (const char* value = entry->Attribute("val")) stringList.emplace_back(value);
        }
    }
    if (const XMLElement* element = root->FirstChildElement("System_")) {
        ReleaseSystem();
        system = NewSystemIndoor(nullptr);
        return ObjFromXML(system, system, element);
    }
    return true;
}

void ClientServerMessage::PrintString(int level, const std::string& prefix) const {
    Log::log(level) << prefix << "________" << string << "\n";
}

void ClientServerMessage::PrintStrings(int level, const std::string& prefix) const {
    for (const std::string& entry : stringList) {
        Log::log(level) << prefix << "________" << entry << "\n";
    }
}
