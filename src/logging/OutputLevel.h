#pragma once

// Verbosity of the logs: 0 nothing, 1 errors, 2 warnings, 3 debug, 4 informative.
enum eOutputLevel : int {
    OUTPUT_NOTHING = 0,
    OUTPUT_ERROR = 1,
    OUTPUT_WARNING = 2,
    OUTPUT_DEBUG = 3,
    OUTPUT_INFORMATIVE = 4,
};
