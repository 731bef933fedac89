#include <VeskData>

#include <QtTest/QtTest>

#include <atomic>
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

} // namespace

class TestWait : public QObject
{
    Q_OBJECT

private slots:
    void wakeUpIsNeverLost();
    void sendMessageInTheSameThread();
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

QTEST_GUILESS_MAIN(TestWait)
#include "tst_wait.moc"
