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

// What the tasks of a run share: the threads they ran on, how many have started, and
// whether they may end. A task holds until released, for ten seconds at most: a fault
// shows as a failed expectation, not as a hung test.
struct Meeting {
    std::mutex mutex;
    std::condition_variable changed;
    std::set<std::thread::id> threads;
    int started = 0;
    bool released = false;

    void Release() {
        std::lock_guard<std::mutex> guard(mutex);
        released = true;
        changed.notify_all();
    }
    int Started() {
        std::lock_guard<std::mutex> guard(mutex);
        return started;
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
    meeting.started++;
    meeting.changed.wait_for(lock, std::chrono::seconds(10), [&] { return meeting.released; });
    return nullptr;
}

// A task list of `count` tasks that meet at `meeting`, run on a thread of its own.
struct Section {
    Section(int count, Meeting& meeting) : count(count), list(NexoBase::NewTaskList(count)) {
        for (int i = 0; i < count; i++) {
            contents.push_back(new Content(meeting, deleted));
            list[i] = new NexoBase::ProcessTask(contents.back(), MeetingTask);
        }
    }
    ~Section() {
        if (runner.joinable()) runner.join();
        NexoBase::DeleteTasks(list, count);
    }
    void Start() {
        runner = std::thread([this] { EXPECT_FALSE(NexoBase::ThreadedProcessTasks(list, count)); });
    }
    // Joins the run; true if every task ran exactly once.
    bool EachRanOnce() {
        runner.join();
        for (Content* content : contents) {
            if (content->runs != 1) return false;
        }
        return true;
    }

    int count;
    NexoBase::ProcessTask** list;
    std::vector<Content*> contents;
    std::atomic<int> deleted{0};
    std::thread runner;
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

// Threads = min(processors, tasks); every task runs exactly once; a list whose first entry
// is null runs nothing.
TEST_F(NexoBaseThreads, TaskListsRunOnMinOfProcessorsAndTasks) {
    struct Case {
        int processors, tasks, threads;
        bool firstNull;
    };
    for (Case c :
         {Case{8, 3, 3, false}, Case{3, 8, 3, false}, Case{4, 0, 0, false}, Case{4, 3, 0, true}}) {
        NexoBase::SetNumProcs(c.processors);
        EXPECT_EQ(NexoBase::GetNumProcs(), c.processors);
        Meeting meeting;
        Section section(c.tasks, meeting);
        NexoBase::ProcessTask* first = c.firstNull ? section.list[0] : nullptr;
        if (c.firstNull) section.list[0] = nullptr;
        section.Start();
        EXPECT_TRUE(WaitUntil([&] { return meeting.Started() == c.threads; }));
        EXPECT_TRUE(WaitUntil([&] { return NexoBase::GetThreadCount() == c.threads; }));
        meeting.Release();
        EXPECT_EQ(section.EachRanOnce(), !c.firstNull || c.tasks == 0);
        EXPECT_EQ(meeting.threads.size(), static_cast<size_t>(c.threads));
        if (c.firstNull) section.list[0] = first;
    }
}

// Workers of all sections count against twice the processors.
TEST_F(NexoBaseThreads, CanAddThreadsBelowTwiceTheProcessors) {
    NexoBase::SetNumProcs(4);
    EXPECT_TRUE(NexoBase::CanAddThreads());
    Meeting meeting;
    Section four(4, meeting), three(3, meeting), one(1, meeting);
    four.Start();
    three.Start();
    EXPECT_TRUE(WaitUntil([] { return NexoBase::GetThreadCount() == 7; }));
    EXPECT_TRUE(NexoBase::CanAddThreads());
    one.Start();
    EXPECT_TRUE(WaitUntil([] { return NexoBase::GetThreadCount() == 8; }));
    EXPECT_FALSE(NexoBase::CanAddThreads());
    meeting.Release();
    for (Section* section : {&four, &three, &one}) EXPECT_TRUE(section->EachRanOnce());
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
