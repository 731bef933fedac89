#ifndef VESKTEST_H
#define VESKTEST_H

// Helpers shared by the test programs.

#include <QtCore/QDebug>
#include <QtCore/QString>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <stdexcept>
#include <thread>

// The debug text of value, exactly as the stream writes it.
template<typename T>
QString debugText(T const& value)
{
    QString out;
    QDebug(&out) << value;
    return out;
}

// Runs f, which must throw, and returns the exception's text.
template<typename F>
QString thrownText(F&& f)
{
    try {
        f();
    } catch (std::runtime_error const& error) {
        return QString::fromUtf8(error.what());
    }
    return QStringLiteral("<nothing thrown>");
}

// Qt's event queue orders a posted event under a lock inside QtCore, where
// ThreadSanitizer does not look. A sender that passes the gate after making an
// event, and a receiver that passes it before reading one, show it that order;
// without a race detector it is one lock more.
class EventGate
{
public:
    void pass() { std::lock_guard<std::mutex> const locker(mutex); }

private:
    std::mutex mutex;
};

// Ends the program with a message when the blocking section it guards has not
// ended within msec, so that a lost wake-up fails a test at once rather than
// at the test driver's timeout.
class WaitLimit
{
public:
    WaitLimit(char const* what, int msec)
        : watcher([this, what, msec] {
            std::unique_lock<std::mutex> locker(mutex);
            if (!ended.wait_for(locker, std::chrono::milliseconds(msec), [this] { return done; }))
                qFatal("%s: still blocked after %d ms", what, msec);
        })
    {
    }
    ~WaitLimit()
    {
        {
            std::lock_guard<std::mutex> const locker(mutex);
            done = true;
        }
        ended.notify_one();
        watcher.join();
    }
    WaitLimit(WaitLimit const&) = delete;
    WaitLimit& operator=(WaitLimit const&) = delete;

private:
    std::mutex mutex;
    std::condition_variable ended;
    bool done = false;
    std::thread watcher; // last: started once the members above exist
};

#endif // VESKTEST_H
