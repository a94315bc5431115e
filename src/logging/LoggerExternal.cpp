#include "logging/LoggerExternal.h"

void LoggerExternal::LogLine(const char*) {}

void LoggerExternal::SetLogLevel(eOutputLevel) {}
