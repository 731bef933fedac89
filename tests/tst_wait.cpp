#include <VeskData>

#include "vesktest.h"

#include <QtTest/QtTest>

#include <atomic>
#include <mutex>
#include <thread>

namespace {

// Stores answer in each wait event, in the thread it lives in (the cross-thread case
// is in tst_stress). Calls no wakeUp(): a sender in the same thread waits for none.
struct Answerer : QObject
{
    int handled = 0;
    QList<VeskArg> answer;

    bool event(QEvent* e) override
    {
        if (e->type() != VeskWaitEvent::DefaultType)
            return QObject::event(e);
        static_cast<VeskWaitEvent*>(e)->waitObject->setRetValue(answer);
        ++handled;
        return true;
    }
};

// Answers in its own thread after a pause, noting that it did before waking the sender.
struct SlowAnswerer : QObject
{
    std::atomic<bool> answered{false};
    std::mutex gate;

    // Qt's event queue orders a posted event under a lock inside QtCore, where
    // ThreadSanitizer does not look; the sender and this handler both pass
    // the gate, which shows it that order.
    void passGate() { std::lock_guard<std::mutex> const locker(gate); }

    bool event(QEvent* e) override
    {
        passGate();
        if (e->type() != VeskWaitEvent::DefaultType)
            return QObject::event(e);
        QThread::msleep(1100);
        VeskWait* const wait = static_cast<VeskWaitEvent*>(e)->waitObject;
        wait->setRetValue(VeskArg(QStringLiteral("late")));
        answered = true;
        wait->wakeUp();
        return true;
    }
};

} // namespace

class TestWait : public QObject
{
    Q_OBJECT

private slots:
    void wakeUpIsNeverLost();
    void sendMessageInTheSameThread();
    void sendMessageFromAWorker();
};

void TestWait::wakeUpIsNeverLost()
{
    VeskWait notWoken;
    QVERIFY(!notWoken.wait(20));
    notWoken.wakeUp(); // still counts after a timed-out wait, and stays
    QVERIFY(notWoken.wait(0));
    QVERIFY(notWoken.wait(VeskWait::Forever));

    VeskWait late;
    std::atomic<bool> woke{false};
    std::thread waker([&] {
        QThread::msleep(50);
        woke = true;
        late.wakeUp();
    });
    QVERIFY(late.wait(VeskWait::Forever));
    QVERIFY(woke);
    waker.join();
}

void TestWait::sendMessageInTheSameThread()
{
    Answerer answerer;
    answerer.answer = {VeskArg(40), VeskArg(41)};
    QCOMPARE(VeskWait::sendMessage(new VeskWaitEvent(new VeskWait), &answerer), VeskArg(40));
    answerer.answer.clear();
    QCOMPARE(VeskWait::sendMessage(new VeskWaitEvent(new VeskWait), &answerer), VeskArg());

    VeskWait wait;
    wait.setRetValue(QList<VeskArg>{VeskArg(1), VeskArg(2), VeskArg(3)});
    wait.setRetValue(VeskArg(true)); // replaces all three
    QCOMPARE(wait.getRetValue(), QList<VeskArg>{VeskArg(true)});

    // Refused without delivery; AddressSanitizer checks that nothing leaks.
    QCOMPARE(VeskWait::sendMessage(new VeskWaitEvent(new VeskWait), nullptr), VeskArg());
    QCOMPARE(VeskWait::sendMessage(new VeskWaitEvent(nullptr), &answerer), VeskArg());
    QCOMPARE(VeskWait::sendMessage(nullptr, &answerer), VeskArg());
    QCOMPARE(answerer.handled, 2);
}

void TestWait::sendMessageFromAWorker()
{
    // A receiver in another thread that answers after more than a second: the sender
    // blocks for as long as it takes, with no timeout of its own.
    QThread receiverThread;
    SlowAnswerer slow;
    slow.moveToThread(&receiverThread);
    receiverThread.start();
    VeskArg slowAnswer;
    bool answeredFirst = false;
    {
        WaitLimit const limit("sendMessage to a slow receiver", 20000);
        auto* const question = new VeskWaitEvent(new VeskWait);
        slow.passGate();
        slowAnswer = VeskWait::sendMessage(question, &slow);
        answeredFirst = slow.answered;
    }
    receiverThread.quit();
    receiverThread.wait();
    QCOMPARE(slowAnswer, VeskArg(QStringLiteral("late")));
    QVERIFY(answeredFirst);

    // A worker without an event loop sending to a receiver it owns: delivered at once, as
    // a posted event would never be.
    VeskArg localAnswer;
    int handled = 0;
    {
        WaitLimit const limit("sendMessage within a worker", 10000);
        std::thread worker([&] {
            Answerer local;
            local.answer = {VeskArg(7)};
            localAnswer = VeskWait::sendMessage(new VeskWaitEvent(new VeskWait), &local);
            handled = local.handled;
        });
        worker.join();
    }
    QCOMPARE(localAnswer, VeskArg(7));
    QCOMPARE(handled, 1);
}

QTEST_GUILESS_MAIN(TestWait)
#include "tst_wait.moc"
