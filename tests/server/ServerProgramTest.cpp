#include <gtest/gtest.h>

#include <csignal>
#include <string>
#include <vector>

#include "server/ServerProgram.h"

namespace {

// Runs ProcessArgs over the given arguments; the help output is captured and returned.
bool parse(std::vector<std::string> args, RunSettings& settings, std::string* output = nullptr) {
    std::vector<char*> argv{const_cast<char*>("LibServerMain")};
    for (std::string& arg : args) argv.push_back(arg.data());
    testing::internal::CaptureStdout();
    bool result = ProcessArgs(static_cast<int>(argv.size()), argv.data(), settings);
    std::string printed = testing::internal::GetCapturedStdout();
    if (output != nullptr) *output = printed;
    return result;
}

int exceptionSettingAfter(const std::string& arg) {
    RunSettings settings;
    showException = -1;
    parse({arg}, settings);
    int value = showException;
    showException = 2;
    return value;
}

#if defined(__x86_64__) || defined(__i386__)
// A real integer division by zero, which the processor traps; written as an instruction
// so that no optimiser can reason it away.
void crashByIntegerDivision() {
    SetupHandlers();
    executionPoint.store("test - divide");
    int zero = 0;
    asm volatile("movl $1, %%eax\n\tcltd\n\tidivl %0" : : "r"(zero) : "eax", "edx");
}
#endif

}  // namespace

TEST(ProcessArgs, ReadsEachOptionAsTheProgramDoes) {
    RunSettings settings;
    EXPECT_EQ(settings.port, 12000);
    EXPECT_TRUE(settings.localOnly);
    EXPECT_FALSE(settings.multiProcess);
    EXPECT_EQ(settings.outputLevel, 1);

    EXPECT_TRUE(parse({"-p12001", "-o4", "-m"}, settings));
    EXPECT_EQ(settings.port, 12001);
    EXPECT_EQ(settings.outputLevel, 4);
    EXPECT_TRUE(settings.multiProcess);

    // Numbers are read by atoi: nothing readable is 0.
    EXPECT_TRUE(parse({"-p0"}, settings));
    EXPECT_EQ(settings.port, 0);
    settings.port = 5;
    EXPECT_TRUE(parse({"-pabc", "-o"}, settings));
    EXPECT_EQ(settings.port, 0);
    EXPECT_EQ(settings.outputLevel, 0);

    EXPECT_EQ(exceptionSettingAfter("-x"), 2);
    EXPECT_EQ(exceptionSettingAfter("-x0"), 0);
    EXPECT_EQ(exceptionSettingAfter("-x1"), 1);
    EXPECT_EQ(exceptionSettingAfter("-x2"), 2);
    EXPECT_EQ(exceptionSettingAfter("-x7"), 2);
}

TEST(ProcessArgs, VisitsEveryArgumentEvenAfterABadOne) {
    RunSettings settings;
    std::string output;
    EXPECT_FALSE(parse({"-z", "-p4242", "-h"}, settings, &output));
    EXPECT_EQ(settings.port, 4242);
    EXPECT_EQ(output.rfind("unknown command line option: -z\n-----", 0), 0u);
    // The help block is printed once.
    EXPECT_EQ(output.find("valid command line options are:"),
              output.rfind("valid command line options are:"));
}

TEST(CrashHandlerDeathTest, ReportsTheExecutionPointAndTheFault) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
#if defined(__x86_64__) || defined(__i386__)
    EXPECT_EXIT(crashByIntegerDivision(), testing::KilledBySignal(SIGFPE),
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
}

TEST(CrashHandlerDeathTest, SegmentationFaultIsReportedAndEndsTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            SetupHandlers();
            raise(SIGSEGV);
        },
        testing::KilledBySignal(SIGSEGV), "signalHandler\\(\\) caught signal SIGSEGV, exiting\n");
}
