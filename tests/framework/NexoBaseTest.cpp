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
#include "support/WaitUntil.h"

namespace {

using namespace std::chrono_literals;

// What the tasks of one run share: the threads they ran on, how many have arrived, and
// whether held tasks may go on. Waits are bounded: a fault shows as a failed expectation,
// not as a hung test.
struct Meeting {
    std::mutex mutex;
    std::condition_variable changed;
    std::set<std::thread::id> threads;
    int arrived = 0;
    int waitFor = 0;    // the first this many tasks wait until that many have arrived
    bool hold = false;  // every task waits until released
    bool released = false;

    void Release() {
        std::lock_guard<std::mutex> guard(mutex);
        released = true;
        changed.notify_all();
    }
};

struct Content : NexoBase::ContentBase {
    Content(Meeting& at, std::atomic<int>& deletions) : meeting(at), deleted(deletions) {}
    ~Content() override { deleted++; }
    Meeting& meeting;
    std::atomic<int>& deleted;
    std::atomic<int> runs{0};
};

void* MeetingTask(void* argument) {
    auto* content = static_cast<Content*>(argument);
    content->runs++;
    Meeting& meeting = content->meeting;
    std::unique_lock<std::mutex> lock(meeting.mutex);
    meeting.threads.insert(std::this_thread::get_id());
    if (meeting.arrived++ < meeting.waitFor) {
        meeting.changed.notify_all();
        meeting.changed.wait_for(lock, 5s, [&] { return meeting.arrived >= meeting.waitFor; });
    }
    meeting.changed.notify_all();
    if (meeting.hold) meeting.changed.wait_for(lock, 10s, [&] { return meeting.released; });
    return nullptr;
}

// A task list of `count` tasks that meet at `meeting`.
struct Section {
    Section(int count, Meeting& meeting) : count(count), list(NexoBase::NewTaskList(count)) {
        for (int i = 0; i < count; i++) {
            contents.push_back(new Content(meeting, deleted));
            list[i] = new NexoBase::ProcessTask(contents.back(), MeetingTask);
        }
    }
    ~Section() { NexoBase::DeleteTasks(list, count); }
    bool Run() { return NexoBase::ThreadedProcessTasks(list, count); }
    bool EachRanOnce() const {
        for (Content* content : contents) {
            if (content->runs != 1) return false;
        }
        return true;
    }

    int count;
    NexoBase::ProcessTask** list;
    std::vector<Content*> contents;
    std::atomic<int> deleted{0};
};

// The processor count is overridden by the tests and asked anew afterwards.
class NexoBaseThreads : public ::testing::Test {
protected:
    void TearDown() override {
        NexoBase::SetNumProcs(-1);
        EXPECT_EQ(NexoBase::GetThreadCount(), 0);
    }
};

}  // namespace

// Threads = min(processors, tasks), and every task runs exactly once.
TEST_F(NexoBaseThreads, TaskListsRunOnMinOfProcessorsAndTasks) {
    struct Case {
        int processors, tasks;
        size_t threads;
    };
    for (Case c : {Case{8, 3, 3}, Case{3, 8, 3}, Case{4, 0, 0}}) {
        NexoBase::SetNumProcs(c.processors);
        EXPECT_EQ(NexoBase::GetNumProcs(), c.processors);
        Meeting meeting;
        meeting.waitFor = std::min(c.processors, c.tasks);
        Section section(c.tasks, meeting);
        EXPECT_FALSE(section.Run());
        EXPECT_EQ(meeting.threads.size(), c.threads) << c.processors << " " << c.tasks;
        EXPECT_TRUE(section.EachRanOnce());
    }

    // A list whose first entry is null runs nothing.
    Meeting meeting;
    Section section(3, meeting);
    NexoBase::ProcessTask* first = section.list[0];
    section.list[0] = nullptr;
    EXPECT_FALSE(section.Run());
    EXPECT_TRUE(meeting.threads.empty());
    section.list[0] = first;
}

// Workers of all sections count against twice the processors.
TEST_F(NexoBaseThreads, CanAddThreadsBelowTwiceTheProcessors) {
    NexoBase::SetNumProcs(4);
    EXPECT_TRUE(NexoBase::CanAddThreads());
    Meeting meeting;
    meeting.hold = true;
    Section four(4, meeting), three(3, meeting), one(1, meeting);
    std::thread runFour([&] { four.Run(); });
    std::thread runThree([&] { three.Run(); });
    bool reachedSeven = WaitUntil([] { return NexoBase::GetThreadCount() == 7; });
    bool canAtSeven = NexoBase::CanAddThreads();
    std::thread runOne([&] { one.Run(); });
    bool reachedEight = WaitUntil([] { return NexoBase::GetThreadCount() == 8; });
    bool canAtEight = NexoBase::CanAddThreads();
    meeting.Release();
    runFour.join();
    runThree.join();
    runOne.join();

    EXPECT_TRUE(reachedSeven && canAtSeven);
    EXPECT_TRUE(reachedEight);
    EXPECT_FALSE(canAtEight);
    EXPECT_TRUE(four.EachRanOnce() && three.EachRanOnce() && one.EachRanOnce());
    EXPECT_TRUE(NexoBase::CanAddThreads());
}

// DeleteTasks deletes up to the count or the first null entry, and takes a null list.
TEST(NexoBase, DeleteTasksStopsAtFirstNullOrCount) {
    for (bool nullThird : {false, true}) {
        Meeting meeting;
        Section section(4, meeting);
        std::vector<NexoBase::ProcessTask*> behind(section.list + 2, section.list + 4);
        if (nullThird) section.list[2] = nullptr;
        NexoBase::DeleteTasks(section.list, nullThird ? 4 : 2);
        section.list = nullptr;
        EXPECT_EQ(section.deleted, 2);
        for (NexoBase::ProcessTask* task : behind) delete task;
    }
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
    std::filesystem::path buildDir =
        std::filesystem::canonical(std::filesystem::path(FENWAVE_SERVER_PATH).parent_path());
    EXPECT_EQ(address, buildDir.string() + "/");
}
