#include "platform/System.h"

#include <windows.h>

namespace Platform {
namespace {

struct CloseHandleOf {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using Handle = std::unique_ptr<void, CloseHandleOf>;

} // namespace

struct LowPriorityThread::State {
    Handle stopEvent{CreateEventA(nullptr, TRUE, FALSE, nullptr)};
    Handle thread;
    std::function<void()> body;

    bool stopWithin(DWORD milliseconds) const
    {
        return WaitForSingleObject(stopEvent.get(), milliseconds) == WAIT_OBJECT_0;
    }
    static DWORD WINAPI run(void *state)
    {
        static_cast<State *>(state)->body();
        return 0;
    }
};

LowPriorityThread::LowPriorityThread() : state(std::make_unique<State>()) {}

LowPriorityThread::~LowPriorityThread()
{
    requestStop();
    join(INFINITE);
}

bool LowPriorityThread::start(std::function<void()> body)
{
    if (!join(0) || !state->stopEvent) return false;
    ResetEvent(state->stopEvent.get());
    state->body = std::move(body);
    state->thread.reset(CreateThread(nullptr, 0, &State::run, state.get(), 0, nullptr));
    if (!state->thread) return false;
    SetThreadPriority(state->thread.get(), THREAD_PRIORITY_LOWEST);
    return true;
}

void LowPriorityThread::requestStop() { SetEvent(state->stopEvent.get()); }

bool LowPriorityThread::stopRequested() const { return state->stopWithin(0); }

bool LowPriorityThread::sleep(uint32_t milliseconds) { return !state->stopWithin(milliseconds); }

bool LowPriorityThread::join(uint32_t milliseconds)
{
    if (!state->thread) return true;
    if (WaitForSingleObject(state->thread.get(), milliseconds) != WAIT_OBJECT_0) return false;
    state->thread.reset();
    return true;
}

} // namespace Platform
