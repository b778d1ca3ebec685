#include "platform/System.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <sys/resource.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace Platform {
namespace {

constexpr int kLowestNiceness = 19;

} // namespace

struct LowPriorityThread::State {
    std::thread thread;
    std::mutex mutex;
    std::condition_variable changed;
    bool stopping = false, ended = false;

    void run(const std::function<void()> &body)
    {
        // Only if the thread has its own ID, as on Linux; otherwise this would slow down the whole process.
        if (gettid() != getpid()) setpriority(PRIO_PROCESS, static_cast<id_t>(gettid()), kLowestNiceness);
        body();
        const std::lock_guard hold(mutex);
        ended = true;
        changed.notify_all();
    }
};

LowPriorityThread::LowPriorityThread() : state(std::make_unique<State>()) {}

LowPriorityThread::~LowPriorityThread()
{
    requestStop();
    if (state->thread.joinable()) state->thread.join();
}

bool LowPriorityThread::start(std::function<void()> body)
{
    if (state->thread.joinable() && !join(0)) return false;
    {
        const std::lock_guard hold(state->mutex);
        state->stopping = state->ended = false;
    }
    try {
        state->thread = std::thread([this, work = std::move(body)] { state->run(work); });
    } catch (const std::system_error &) {
        return false;
    }
    return true;
}

void LowPriorityThread::requestStop()
{
    const std::lock_guard hold(state->mutex);
    state->stopping = true;
    state->changed.notify_all();
}

bool LowPriorityThread::stopRequested() const
{
    const std::lock_guard hold(state->mutex);
    return state->stopping;
}

bool LowPriorityThread::sleep(uint32_t milliseconds)
{
    std::unique_lock hold(state->mutex);
    return !state->changed.wait_for(hold, std::chrono::milliseconds(milliseconds),
                                    [this] { return state->stopping; });
}

bool LowPriorityThread::join(uint32_t milliseconds)
{
    if (!state->thread.joinable()) return true;
    {
        std::unique_lock hold(state->mutex);
        if (!state->changed.wait_for(hold, std::chrono::milliseconds(milliseconds),
                                     [this] { return state->ended; }))
            return false;
    }
    state->thread.join();
    return true;
}

} // namespace Platform
