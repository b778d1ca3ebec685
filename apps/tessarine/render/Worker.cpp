#include "apps/tessarine/render/Worker.h"

#include <utility>

namespace App {

Worker::Worker()
{
    if (std::thread::hardware_concurrency() > 1) thread = std::thread([this] { loop(); });
}

Worker::~Worker()
{
    if (!thread.joinable()) return;
    {
        const std::scoped_lock hold(lock);
        stopping = true;
    }
    changed.notify_all();
    thread.join();
}

void Worker::start(std::function<void()> next)
{
    if (!thread.joinable()) return next();
    wait();
    {
        const std::scoped_lock hold(lock);
        task = std::move(next);
    }
    changed.notify_all();
}

void Worker::wait()
{
    std::unique_lock hold(lock);
    changed.wait(hold, [this] { return !task; });
    if (problem) std::rethrow_exception(std::exchange(problem, nullptr));
}

void Worker::loop()
{
    std::unique_lock hold(lock);
    for (;;) {
        changed.wait(hold, [this] { return task || stopping; });
        if (!task) return;
        hold.unlock();
        std::exception_ptr thrown;
        try {
            task();
        } catch (...) {
            thrown = std::current_exception();
        }
        hold.lock();
        problem = thrown;
        task = nullptr;
        changed.notify_all();
    }
}

} // namespace App
