#include "framework/NexoBase.h"

#include <limits.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "logging/Log.h"

std::atomic<int32_t> NexoBase::numProc{-1};
Lockable NexoBase::procLock;
int32_t NexoBase::threadCount = 0;
Lockable NexoBase::threadCountLock;
Lockable NexoBase::taskListMutex;
ParallelSelect NexoBase::parallelSelected(true);
Logging NexoBase::statusLog_p("st");
Logging NexoBase::warningLog_p("wa");
Logging NexoBase::errorLog_p("er");
std::string NexoBase::buildTimestamp;

NexoBase::ProcessTask::ProcessTask(ContentBase* taskContent, TaskFunction taskFunction)
    : content(taskContent), function(taskFunction) {}

NexoBase::ProcessTask::~ProcessTask() {
    delete content;
    content = nullptr;
}

Logging& NexoBase::log(int type) {
    switch (type) {
        case logWarning:
            return warningLog_p;
        case logError:
            return errorLog_p;
        default:
            return statusLog_p;
    }
}

int NexoBase::GetNumProcs() {
    if (numProc == -1) {
        procLock.lock(true);
        long online = sysconf(_SC_NPROCESSORS_ONLN);
        numProc = online > 0 ? static_cast<int32_t>(online) : 1;
        procLock.unlock();
    }
    return numProc;
}

void NexoBase::SetNumProcs(int processors) {
    procLock.lock(true);
    numProc = processors > 0 ? processors : -1;
    procLock.unlock();
}

bool NexoBase::CanAddThreads() {
    int limit = 2 * GetNumProcs();
    threadCountLock.lock(true);
    bool room = threadCount < limit;
    threadCountLock.unlock();
    return room;
}

int NexoBase::GetThreadCount() {
    threadCountLock.lock(true);
    int running = threadCount;
    threadCountLock.unlock();
    return running;
}

void NexoBase::AddThreads(int change) {
    threadCountLock.lock(true);
    threadCount += change;
    threadCountLock.unlock();
}

pthread_t* NexoBase::ThreadFunction(TaskFunction function, void* argument) {
    auto* handle = new pthread_t{};
    int result = pthread_create(handle, nullptr, function, argument);
    if (result != 0) {
        fprintf(stderr, "Error - pthread_create() return code: %d\n", result);
        exit(1);
    }
    return handle;
}

bool NexoBase::ThreadClose(pthread_t** handle) {
    if (handle == nullptr || *handle == nullptr) return true;
    pthread_join(**handle, nullptr);
    delete *handle;
    *handle = nullptr;
    return true;
}

NexoBase::ProcessTask** NexoBase::NewTaskList(int count) {
    size_t entries = static_cast<size_t>(std::max(count, 0)) + 1;
    return static_cast<ProcessTask**>(calloc(entries, sizeof(ProcessTask*)));
}

template <typename Task>
bool NexoBase::ThreadedProcessTasks(Task** tasks, int count) {
    int threads = std::min(GetNumProcs(), count);
    if (threads <= 0) return false;
    // A slot keeps a null handle when its thread could not be started.
    std::vector<pthread_t*> handles(static_cast<size_t>(threads), nullptr);
    for (pthread_t*& handle : handles) {
        auto* started = new pthread_t{};
        if (pthread_create(started, nullptr, ProcessTaskList, tasks) == 0) {
            handle = started;
            AddThreads(1);
        } else {
            delete started;
        }
    }
    for (pthread_t*& handle : handles) {
        // A slot that never started is counted down like the others.
        ThreadClose(&handle);
        AddThreads(-1);
    }
    return false;
}

template bool NexoBase::ThreadedProcessTasks<NexoBase::ProcessTask>(ProcessTask** tasks, int count);

void* NexoBase::ProcessTaskList(void* tasks) {
    auto** list = static_cast<ProcessTask**>(tasks);
    // Claims are never given back, so every entry before the one this worker took last is
    // claimed already: the scan resumes there and still finds the first unclaimed task,
    // without walking a long list from its start at each claim.
    ProcessTask** resume = list;
    for (;;) {
        ProcessTask* taken = nullptr;
        taskListMutex.lock(true);
        for (ProcessTask** entry = resume; *entry != nullptr; entry++) {
            if (!(*entry)->claimed) {
                taken = *entry;
                taken->claimed = true;
                resume = entry + 1;
                break;
            }
        }
        taskListMutex.unlock();
        if (taken == nullptr) return nullptr;
        taken->function(taken->content);
    }
}

void NexoBase::DeleteTasks(ProcessTask** tasks, int count) {
    if (tasks == nullptr) return;
    for (int i = 0; i < count && tasks[i] != nullptr; i++) delete tasks[i];
    free(tasks);
}

bool NexoBase::GetLocalAddress(std::string& out) {
    char path[PATH_MAX];
    ssize_t length = readlink("/proc/self/exe", path, sizeof(path) - 1);
    if (length <= 0) {
        Log::log(OUTPUT_ERROR) << "NexoBase::GetLocalAddress() failed: " << strerror(errno) << "\n";
        return false;
    }
    std::string program(path, static_cast<size_t>(length));
    std::string::size_type slash = program.rfind('/');
    if (slash == std::string::npos) {
        Log::log(OUTPUT_ERROR) << "NexoBase::GetLocalAddress() got no directory in " << program
                               << "\n";
        return false;
    }
    out = program.substr(0, slash) + "/";
    return true;
}

std::string NexoBase::GetBuildTimeStamp() { return buildTimestamp; }
