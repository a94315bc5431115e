#pragma once

#include <pthread.h>

#include <atomic>
#include <cstdint>
#include <string>

#include "framework/Lockable.h"
#include "framework/ParallelSelect.h"
#include "logging/Logging.h"

// The root of the class tree. It carries the process-wide logs and the thread kit: a
// parallel section builds a null-terminated task list, ThreadedProcessTasks starts
// min(processors, tasks) workers that claim tasks from it first come first served, and
// joins them again.
class NexoBase {
public:
    // Values for log(): anything else gives the status log.
    enum logType : int { logStatus = 0, logWarning = 1, logError = 2 };

    // Base of a task's input and output.
    class ContentBase {
    public:
        virtual ~ContentBase() = default;
    };

    using TaskFunction = void* (*)(void*);

    // One unit of work: function(content) on a worker thread. Owns its content.
    struct ProcessTask {
        ProcessTask(ContentBase* content = nullptr, TaskFunction function = nullptr);
        ProcessTask(const ProcessTask&) = delete;
        ProcessTask& operator=(const ProcessTask&) = delete;
        ~ProcessTask();

        ContentBase* content;
        TaskFunction function;
        bool claimed = false;
    };

    virtual ~NexoBase() = default;

    // 1 the warning log, 2 the error log, any other value the status log.
    static Logging& log(int type);

    // The number of processors, asked once and cached.
    static int GetNumProcs();
    // Overrides the processor count (for tests and constrained hosts); a value below 1
    // makes the next GetNumProcs ask the system again.
    static void SetNumProcs(int processors);
    // True while the running workers of all sections are fewer than twice the processors.
    static bool CanAddThreads();
    // Workers of all parallel sections now running.
    static int GetThreadCount();

    // Starts a thread running function(argument); ends the process if that fails.
    static pthread_t* ThreadFunction(TaskFunction function, void* argument);
    // Joins the thread, deletes its handle and nulls the caller's pointer.
    static bool ThreadClose(pthread_t** handle);

    // A task list for count tasks: count + 1 null entries made with malloc, to be filled
    // from the front and released by DeleteTasks.
    static ProcessTask** NewTaskList(int count);
    // Runs every task of the list once on min(processors, count) workers and joins them.
    // Always false.
    template <typename Task>
    static bool ThreadedProcessTasks(Task** tasks, int count);
    // The body of each worker: claims and runs tasks until none is left. Returns null.
    static void* ProcessTaskList(void* tasks);
    // Deletes the tasks up to the first null entry or count, then frees the list.
    static void DeleteTasks(ProcessTask** tasks, int count);

    // The directory of the running program, with a trailing "/". False, and out left as
    // it was, if it cannot be found.
    static bool GetLocalAddress(std::string& out);
    static std::string GetBuildTimeStamp();

    static Lockable procLock;
    static Lockable threadCountLock;
    // Guards the claiming step of every task list of the process.
    static Lockable taskListMutex;
    // The selection of the current run.
    static ParallelSelect parallelSelected;
    static Logging statusLog_p;
    static Logging warningLog_p;
    static Logging errorLog_p;
    static std::string buildTimestamp;

private:
    static void AddThreads(int change);

    static std::atomic<int32_t> numProc;
    static int32_t threadCount;
};

// Defined once, for ProcessTask, beside the other thread helpers.
extern template bool NexoBase::ThreadedProcessTasks<NexoBase::ProcessTask>(
    NexoBase::ProcessTask** tasks, int count);
