#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

#include "framework/NexoBase.h"

namespace {

using namespace std::chrono_literals;

// What the tasks of one section share: how many have arrived, on which threads, and
// whether the held ones may go on.
struct Meeting {
    std::mutex mutex;
    std::condition_variable changed;
    int arrived = 0;
    // The first this many tasks wait until that many have arrived.
    int waitFor = 0;
    // Tasks hold until released.
    bool hold = false;
    bool released = false;
    std::set<std::thread::id> threads;

    void Release() {
        std::lock_guard<std::mutex> guard(mutex);
        released = true;
        changed.notify_all();
    }
};

struct CountedContent : NexoBase::ContentBase {
    CountedContent(Meeting& at, std::atomic<int>& deletions) : meeting(at), deleted(deletions) {}
    ~CountedContent() override { deleted++; }

    Meeting& meeting;
    std::atomic<int>& deleted;
    std::atomic<int> runs{0};
};

void* MeetingTask(void* argument) {
    auto* content = static_cast<CountedContent*>(argument);
    content->runs++;
    Meeting& meeting = content->meeting;
    std::unique_lock<std::mutex> lock(meeting.mutex);
    meeting.threads.insert(std::this_thread::get_id());
    bool waits = meeting.arrived++ < meeting.waitFor;
    meeting.changed.notify_all();
    // Bounded waits: a fault shows as a failed expectation, not as a hung test.
    if (waits) {
        meeting.changed.wait_for(lock, 5s, [&] { return meeting.arrived >= meeting.waitFor; });
    }
    if (meeting.hold) meeting.changed.wait_for(lock, 10s, [&] { return meeting.released; });
    return nullptr;
}

// A task list of count tasks meeting at the given meeting point.
class Section {
  public:
    Section(int count, Meeting& meeting) : count(count), list(NexoBase::NewTaskList(count)) {
        for (int i = 0; i < count; i++) {
            auto* content = new CountedContent(meeting, deleted);
            contents.push_back(content);
            list[i] = new NexoBase::ProcessTask(content, MeetingTask);
        }
    }
    Section(const Section&) = delete;
    Section& operator=(const Section&) = delete;
    ~Section() { NexoBase::DeleteTasks(list, count); }

    bool Run() { return NexoBase::ThreadedProcessTasks(list, count); }

    bool EachRanOnce() const {
        for (CountedContent* content : contents) {
            if (content->runs != 1) return false;
        }
        return true;
    }

    int count;
    NexoBase::ProcessTask** list;
    std::vector<CountedContent*> contents;
    std::atomic<int> deleted{0};
};

bool WaitForThreadCount(int expected) {
    for (int tries = 0; tries < 5000; tries++) {
        if (NexoBase::GetThreadCount() == expected) return true;
        std::this_thread::sleep_for(1ms);
    }
    return false;
}

// The processor count is overridden by some tests and asked anew afterwards.
class NexoBaseThreads : public ::testing::Test {
  protected:
    void SetUp() override { baseline = NexoBase::GetThreadCount(); }
    void TearDown() override {
        NexoBase::SetNumProcs(-1);
        EXPECT_EQ(NexoBase::GetThreadCount(), baseline);
    }

    int baseline = 0;
};

}  // namespace

TEST(NexoBase, LogTypeSelectsLog) {
    EXPECT_EQ(&NexoBase::log(NexoBase::logStatus), &NexoBase::statusLog_p);
    EXPECT_EQ(&NexoBase::log(1), &NexoBase::warningLog_p);
    EXPECT_EQ(&NexoBase::log(2), &NexoBase::errorLog_p);
    EXPECT_EQ(&NexoBase::log(7), &NexoBase::statusLog_p);
    EXPECT_EQ(&NexoBase::log(-1), &NexoBase::statusLog_p);

    std::vector<std::string> names;
    struct NameWriter : LogWriter {
        explicit NameWriter(std::vector<std::string>& into) : names(into) {}
        void Write(std::vector<LogLine>& lines) override {
            for (const LogLine& line : lines) names.push_back(line.logName);
        }
        std::vector<std::string>& names;
    } writer(names);
    NexoBase::errorLog_p.AddWriter(&writer);
    for (int type : {0, 1, 2}) {
        NexoBase::log(type) << "x\n";
        NexoBase::log(type).ToStream(nullptr);
    }
    NexoBase::errorLog_p.ClearWriters();
    EXPECT_EQ(names, (std::vector<std::string>{"st", "wa", "er"}));
}

TEST_F(NexoBaseThreads, NoTasksStartNoThread) {
    Meeting meeting;
    Section none(0, meeting);
    EXPECT_FALSE(none.Run());
    EXPECT_TRUE(meeting.threads.empty());
}

// Threads = min(processors, tasks): with more processors than tasks one thread per task,
// with fewer every task still runs exactly once.
TEST_F(NexoBaseThreads, ThreadsFollowProcessorsAndTasks) {
    NexoBase::SetNumProcs(8);
    EXPECT_EQ(NexoBase::GetNumProcs(), 8);
    Meeting fewTasks;
    fewTasks.waitFor = 3;
    Section three(3, fewTasks);
    EXPECT_FALSE(three.Run());
    EXPECT_EQ(fewTasks.threads.size(), 3u);
    EXPECT_TRUE(three.EachRanOnce());

    NexoBase::SetNumProcs(3);
    Meeting manyTasks;
    manyTasks.waitFor = 3;
    Section eight(8, manyTasks);
    EXPECT_FALSE(eight.Run());
    EXPECT_EQ(manyTasks.threads.size(), 3u);
    EXPECT_TRUE(eight.EachRanOnce());
}

TEST_F(NexoBaseThreads, ListStartingWithNullRunsNothing) {
    Meeting meeting;
    Section section(3, meeting);
    NexoBase::ProcessTask* first = section.list[0];
    section.list[0] = nullptr;
    EXPECT_FALSE(section.Run());
    EXPECT_TRUE(meeting.threads.empty());
    for (int i = 1; i < 3; i++) {
        delete section.list[i];
        section.list[i] = nullptr;
    }
    delete first;
    EXPECT_EQ(section.deleted, 3);
}

// Workers of all sections count against twice the processors.
TEST_F(NexoBaseThreads, CanAddThreadsBelowTwiceTheProcessors) {
    ASSERT_EQ(baseline, 0);
    NexoBase::SetNumProcs(4);
    EXPECT_TRUE(NexoBase::CanAddThreads());
    Meeting meeting;
    meeting.hold = true;
    Section four(4, meeting);
    Section three(3, meeting);
    Section one(1, meeting);

    std::thread runFour([&] { four.Run(); });
    std::thread runThree([&] { three.Run(); });
    bool reachedSeven = WaitForThreadCount(7);
    bool canAtSeven = NexoBase::CanAddThreads();
    std::thread runOne([&] { one.Run(); });
    bool reachedEight = WaitForThreadCount(8);
    bool canAtEight = NexoBase::CanAddThreads();
    meeting.Release();
    runFour.join();
    runThree.join();
    runOne.join();

    EXPECT_TRUE(reachedSeven);
    EXPECT_TRUE(canAtSeven);
    EXPECT_TRUE(reachedEight);
    EXPECT_FALSE(canAtEight);
    EXPECT_TRUE(four.EachRanOnce() && three.EachRanOnce() && one.EachRanOnce());
    EXPECT_TRUE(NexoBase::CanAddThreads());
}

TEST(NexoBase, DeleteTasksStopsAtFirstNullOrCount) {
    Meeting meeting;
    std::atomic<int> deleted{0};
    auto fill = [&](int count) {
        NexoBase::ProcessTask** list = NexoBase::NewTaskList(count);
        for (int i = 0; i < count; i++) {
            list[i] = new NexoBase::ProcessTask(new CountedContent(meeting, deleted), MeetingTask);
        }
        return list;
    };

    NexoBase::ProcessTask** list = fill(4);
    std::vector<NexoBase::ProcessTask*> behind = {list[2], list[3]};
    list[2] = nullptr;
    NexoBase::DeleteTasks(list, 4);
    EXPECT_EQ(deleted, 2);
    for (NexoBase::ProcessTask* task : behind) delete task;

    deleted = 0;
    list = fill(3);
    behind = {list[1], list[2]};
    NexoBase::DeleteTasks(list, 1);
    EXPECT_EQ(deleted, 1);
    for (NexoBase::ProcessTask* task : behind) delete task;
    NexoBase::DeleteTasks(nullptr, 3);
}

TEST(NexoBase, ThreadFunctionRunsAndThreadCloseJoins) {
    std::atomic<int> value{0};
    pthread_t* handle = NexoBase::ThreadFunction(
        [](void* argument) -> void* {
            static_cast<std::atomic<int>*>(argument)->store(5);
            return nullptr;
        },
        &value);
    ASSERT_NE(handle, nullptr);
    EXPECT_TRUE(NexoBase::ThreadClose(&handle));
    EXPECT_EQ(handle, nullptr);
    EXPECT_EQ(value, 5);
    EXPECT_TRUE(NexoBase::ThreadClose(&handle));
}

// The test program is built beside the server, so both share one directory.
TEST(NexoBase, LocalAddressIsProgramDirectory) {
    std::string address;
    ASSERT_TRUE(NexoBase::GetLocalAddress(address));
    ASSERT_FALSE(address.empty());
    EXPECT_EQ(address.back(), '/');
    std::filesystem::path buildDir =
        std::filesystem::canonical(std::filesystem::path(FENWAVE_SERVER_PATH).parent_path());
    EXPECT_EQ(address, buildDir.string() + "/");
    EXPECT_TRUE(std::filesystem::exists(address + "fenwave_tests"));
}
