#pragma once
#include <condition_variable>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>

namespace App {

/// Runs one task at a time on a thread of its own. On a machine with one processor, tasks run in `start`.
class Worker {
public:
    Worker();
    ~Worker();
    Worker(const Worker &) = delete;
    Worker &operator=(const Worker &) = delete;

    /// Waits for the previous task, then starts this one.
    void start(std::function<void()> task);
    /// Waits until the latest task ends. Throws its exception, if any.
    void wait();

private:
    void loop();

    std::mutex lock;
    std::condition_variable changed;
    std::function<void()> task; // empty while idle
    std::exception_ptr problem;
    bool stopping = false;
    std::thread thread;
};

} // namespace App
