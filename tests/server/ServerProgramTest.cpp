#include <gtest/gtest.h>

#include <csignal>
#include <string>
#include <vector>

#include "server/ServerProgram.h"

namespace {

// Runs ProcessArgs over one argument; returns its result, with stdout swallowed.
bool Parse(std::string arg, RunSettings& settings) {
    char* argv[] = {const_cast<char*>("LibServerMain"), arg.data()};
    testing::internal::CaptureStdout();
    bool result = ProcessArgs(2, argv, settings);
    testing::internal::GetCapturedStdout();
    return result;
}

#if defined(__x86_64__) || defined(__i386__)
// A real integer division by zero, which the processor traps; written as an instruction
// so that no optimiser can reason it away.
void CrashByIntegerDivision() {
    SetupHandlers();
    executionPoint.store("test - divide");
    int zero = 0;
    asm volatile("movl $1, %%eax\n\tcltd\n\tidivl %0" : : "r"(zero) : "eax", "edx");
}
#endif

}  // namespace

// -h, -p, -o, -l and -m are run in ServerTest. Numbers are read by atoi, so nothing
// readable is 0; -x takes 0, 1 or 2 and means 2 otherwise.
TEST(ProcessArgs, ReadsNumbersAsTheProgramDoes) {
    struct Case {
        const char* arg;
        int port, level, exception;
    };
    for (const Case& c : std::vector<Case>{{"-pabc", 0, 1, -1},
                                           {"-o", 12000, 0, -1},
                                           {"-x", 12000, 1, 2},
                                           {"-x0", 12000, 1, 0},
                                           {"-x1", 12000, 1, 1},
                                           {"-x7", 12000, 1, 2}}) {
        RunSettings settings;
        showException = -1;
        EXPECT_TRUE(Parse(c.arg, settings)) << c.arg;
        EXPECT_EQ(settings.port, c.port) << c.arg;
        EXPECT_EQ(settings.outputLevel, c.level) << c.arg;
        EXPECT_EQ(showException, c.exception) << c.arg;
    }
    showException = 2;
}

TEST(CrashHandlerDeathTest, ReportsTheExecutionPointAndTheFault) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
#if defined(__x86_64__) || defined(__i386__)
    EXPECT_EXIT(CrashByIntegerDivision(), testing::KilledBySignal(SIGFPE),
                "at test - divide\nError: EXCEPTION_INT_DIVIDE_BY_ZERO\n");
#endif
    EXPECT_EXIT(
        {
            SetupHandlers();
            executionPoint.store("test - abort");
            std::abort();
        },
        testing::KilledBySignal(SIGABRT), "at test - abort\nError: Unrecognized Exception\n");
    EXPECT_EXIT(
        {
            SetupHandlers();
            showException = 0;
            std::abort();
        },
        testing::KilledBySignal(SIGABRT), "^$");
    EXPECT_EXIT(
        {
            SetupHandlers();
            raise(SIGSEGV);
        },
        testing::KilledBySignal(SIGSEGV), "signalHandler\\(\\) caught signal SIGSEGV, exiting\n");
}
