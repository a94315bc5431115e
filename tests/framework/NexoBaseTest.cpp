#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

#include "framework/NexoBase.h"
#include "support/WaitUntil.h"

namespace {

// What the tasks of a run share. A task notes its thread and holds until released, for ten
// seconds at most: a fault shows as a failed expectation, not as a hung test.
struct Meeting {
    std::mutex mutex;
    std::condition_variable changed;
    std::set<std::thread::id> threads;
    std::atomic<int> started{0};
    bool released = false;
    std::atomic<int> deleted{0};

    void Release() {
        std::lock_guard<std::mutex> guard(mutex);
        released = true;
        changed.notify_all();
    }
};

struct Task : NexoBase::ContentBase {
    explicit Task(Meeting& at) : meeting(at) {}
    ~Task() override { meeting.deleted++; }
    Meeting& meeting;
    int runs = 0;
};

void* Meet(void* argument) {
    auto* task = static_cast<Task*>(argument);
    Meeting& meeting = task->meeting;
    std::unique_lock<std::mutex> lock(meeting.mutex);
    task->runs++;
    meeting.threads.insert(std::this_thread::get_id());
    meeting.started++;
    meeting.changed.wait_for(lock, std::chrono::seconds(10), [&] { return meeting.released; });
    return nullptr;
}

NexoBase::ProcessTask** MakeTasks(int count, Meeting& meeting) {
    NexoBase::ProcessTask** list = NexoBase::NewTaskList(count);
    for (int i = 0; i < count; i++) list[i] = new NexoBase::ProcessTask(new Task(meeting), Meet);
    return list;
}

bool EachRanOnce(NexoBase::ProcessTask** list, int count) {
    for (int i = 0; i < count; i++) {
        if (static_cast<Task*>(list[i]->content)->runs != 1) return false;
    }
    return true;
}

std::thread RunInThread(NexoBase::ProcessTask** list, int count) {
    return std::thread([=] { EXPECT_FALSE(NexoBase::ThreadedProcessTasks(list, count)); });
}

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
        NexoBase::ProcessTask** list = MakeTasks(c.tasks, meeting);
        NexoBase::ProcessTask* first = c.firstNull ? list[0] : nullptr;
        if (c.firstNull) list[0] = nullptr;
        std::thread runner = RunInThread(list, c.tasks);
        EXPECT_TRUE(WaitUntil([&] { return meeting.started == c.threads; }));
        EXPECT_TRUE(WaitUntil([&] { return NexoBase::GetThreadCount() == c.threads; }));
        meeting.Release();
        runner.join();
        EXPECT_EQ(meeting.threads.size(), static_cast<size_t>(c.threads));
        if (c.firstNull) list[0] = first;
        EXPECT_EQ(EachRanOnce(list, c.tasks), !c.firstNull);
        NexoBase::DeleteTasks(list, c.tasks);
        EXPECT_EQ(meeting.deleted, c.tasks);
    }
}

// Workers of all sections count against twice the processors: room at 7 of 8, none at 8.
TEST_F(NexoBaseThreads, CanAddThreadsBelowTwiceTheProcessors) {
    NexoBase::SetNumProcs(4);
    EXPECT_TRUE(NexoBase::CanAddThreads());
    Meeting meeting;
    const int counts[] = {4, 3, 1};
    NexoBase::ProcessTask** lists[3];
    std::thread runners[3];
    int running = 0;
    for (int i = 0; i < 3; ++i) {
        lists[i] = MakeTasks(counts[i], meeting);
        runners[i] = RunInThread(lists[i], counts[i]);
        running += counts[i];
        EXPECT_TRUE(WaitUntil([&] { return NexoBase::GetThreadCount() == running; }));
        EXPECT_EQ(NexoBase::CanAddThreads(), running < 8) << running;
    }
    meeting.Release();
    for (int i = 0; i < 3; ++i) {
        runners[i].join();
        EXPECT_TRUE(EachRanOnce(lists[i], counts[i]));
        NexoBase::DeleteTasks(lists[i], counts[i]);
    }
    EXPECT_TRUE(NexoBase::CanAddThreads());
}

// DeleteTasks deletes up to the count or the first null entry, and takes a null list.
TEST(NexoBase, DeleteTasksStopsAtFirstNullOrCount) {
    for (bool nullThird : {false, true}) {
        Meeting meeting;
        NexoBase::ProcessTask** list = MakeTasks(4, meeting);
        NexoBase::ProcessTask* behind[] = {list[2], list[3]};
        if (nullThird) list[2] = nullptr;
        NexoBase::DeleteTasks(list, nullThird ? 4 : 2);
        EXPECT_EQ(meeting.deleted, 2);
        for (NexoBase::ProcessTask* task : behind) delete task;
    }
    NexoBase::DeleteTasks(nullptr, 3);
}

TEST(NexoBase, ThreadFunctionRunsAndThreadCloseJoins) {
    std::atomic<int> value{0};
    pthread_t* handle = NexoBase::ThreadFunction(
        [](void* argument) -> void* {
            *static_cast<std::atomic<int>*>(argument) = 5;
            return nullptr;
        },
        &value);
    EXPECT_TRUE(NexoBase::ThreadClose(&handle));
    EXPECT_EQ(handle, nullptr);
    EXPECT_EQ(value, 5);
    EXPECT_TRUE(NexoBase::ThreadClose(&handle));
}
