#include "radiation/EMReceiver.h"

namespace {

constexpr const char* TYPE = "EMReceiver";

}  // namespace

EMReceiver::EMReceiver() { objTypeStr = TYPE; }

EMReceiver::~EMReceiver() = default;
