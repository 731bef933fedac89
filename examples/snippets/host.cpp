#include "snippets.h"

#include <VeskData>

#include <QtCore/QEventLoop>
#include <QtCore/QThread>
#include <QtCore/QTimer>

#include <cstdio>
#include <mutex>

//! [dispatcher]
bool Dispatcher::event(QEvent* e)
{
    if (e->type() != VeskCallActionEvent::EventType)
        return QObject::event(e);
    auto* const call = static_cast<VeskCallActionEvent*>(e);
    // An exception must not travel through Qt's event loop: a method that
    // reads an argument of the wrong type is stopped here.
    try {
        (call->plugin->*call->method)(call->args);
    } catch (std::runtime_error const& error) {
        std::fprintf(stderr, "a plugin call was refused: %s\n", error.what());
    }
    return true;
}
//! [dispatcher]

namespace {

//! [worker answers]
// An object in a worker thread that answers questions about that thread.
class ThreadReporter : public QObject
{
public:
    // Qt's event queue orders a posted event under a lock inside QtCore,
    // where ThreadSanitizer does not look. Passing this gate on both sides
    // shows it that order; without a race detector it is one lock more.
    void passGate() { std::lock_guard<std::mutex> const locker(gate); }

    bool event(QEvent* e) override
    {
        passGate();
        if (e->type() != VeskWaitEvent::DefaultType)
            return QObject::event(e);
        VeskWait* const wait = static_cast<VeskWaitEvent*>(e)->waitObject;
        wait->setRetValue(VeskArg(QThread::currentThread() == thread()));
        wait->wakeUp();
        return true;
    }

private:
    std::mutex gate;
};
//! [worker answers]

//! [timer receiver]
class Reminder : public VeskTimerReceiver
{
public:
    void timerFired(QString name) override { fired.append(name); }

    QStringList fired;
};
//! [timer receiver]

// A removable object that says when the collector deletes it.
class Scratch : public VeskRemovable
{
public:
    explicit Scratch(bool* deleted)
        : deleted(deleted)
    {
    }
    ~Scratch() override { *deleted = true; }
    bool isUnused() override { return true; }

private:
    bool* deleted;
};

// Runs the event loop until done() holds, for at most ten seconds.
template<typename Done>
bool spinUntil(Done done)
{
    QEventLoop loop;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &loop, [&] {
        if (done())
            loop.quit();
    });
    QTimer::singleShot(10000, &loop, &QEventLoop::quit);
    poll.start(10);
    loop.exec();
    return done();
}

} // namespace

bool hostGuide()
{
    //! [worker thread]
    QThread worker;
    ThreadReporter reporter;
    reporter.moveToThread(&worker);
    worker.start();
    // Blocks until the worker's event loop has delivered the event and the
    // reporter has called wakeUp().
    auto* const question = new VeskWaitEvent(new VeskWait);
    reporter.passGate();
    VeskArg const inWorker = VeskWait::sendMessage(question, &reporter);
    worker.quit();
    worker.wait();
    //! [worker thread]
    bool ok = expect(inWorker.getType() == VeskArg::Bool && inWorker.toBool(),
                     "the worker's answer did not come from its thread");

    //! [timer]
    Reminder reminder;
    VeskTimer timer;
    // Fires once, in this thread, once its event loop runs.
    timer.startTimer(&reminder, 10, QStringLiteral("check mail"));
    //! [timer]
    ok &= expect(reminder.fired.isEmpty(), "the timer fired before the event loop ran");
    ok &= expect(spinUntil([&] { return !reminder.fired.isEmpty(); })
                     && reminder.fired == QStringList{QStringLiteral("check mail")},
                 "the timer did not fire once with its name");

    //! [collector]
    // The collector lives in the thread of the first getInstance() call,
    // which must run an event loop; it asks its objects once a second.
    VeskGarbageCollector* const collector = VeskGarbageCollector::getInstance();
    bool deleted = false;
    collector->add(new Scratch(&deleted));
    //! [collector]
    ok &= expect(!deleted, "the collector deleted an object at once");
    ok &= expect(spinUntil([&] { return deleted; }), "the collector never deleted its object");
    //! [collector end]
    collector->remove();
    delete collector;
    //! [collector end]
    return ok;
}
