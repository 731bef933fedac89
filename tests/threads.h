#ifndef TESTS_THREADS_H
#define TESTS_THREADS_H

// Thread helpers shared by the tests that run code in several threads.
//
// Worker threads are std::threads: starting and joining them is visible to
// ThreadSanitizer. QtCore is normally not built with the sanitizer, so the
// ordering that its own locks give (the end of a QThread before wait()
// returns, the posted-event queue between postEvent() and delivery) is
// invisible to it.

#include <functional>
#include <mutex>
#include <thread>
#include <vector>

// Runs body(i) for i = 0 .. count - 1, each in a thread of its own, and waits
// for all of them.
inline void runThreads(int count, std::function<void(int)> const& body)
{
    std::vector<std::thread> threads;
    for (int i = 0; i < count; ++i)
        threads.emplace_back(body, i);
    for (std::thread& thread : threads)
        thread.join();
}

// Shows ThreadSanitizer the order that Qt's posted-event queue gives: a
// sender passes the gate after it has made an event and before it posts it;
// the receiver passes it before it reads the event.
class PostGate
{
public:
    void pass()
    {
        std::lock_guard<std::mutex> const locker(mutex);
    }

private:
    std::mutex mutex;
};

#endif // TESTS_THREADS_H
