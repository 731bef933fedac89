#include "threads.h"

#include <VeskData>

#include <QtTest/QtTest>

#include <atomic>

namespace {

// A question travelling in a wait event: the answer is a list of `answers`
// values, value * 10, value * 10 + 1, ...
struct Question : VeskWaitEvent
{
    Question(int value, int answers)
        : VeskWaitEvent(new VeskWait)
        , value(value)
        , answers(answers)
    {
    }
    int value;
    int answers;
};

class Answerer : public QObject
{
public:
    std::atomic<int> handled{0};
    QThread* handledIn = nullptr;
    PostGate gate;

    bool event(QEvent* e) override
    {
        gate.pass();
        if (e->type() != VeskWaitEvent::DefaultType)
            return QObject::event(e);
        auto* const question = static_cast<Question*>(e);
        QList<VeskArg> answer;
        for (int i = 0; i < question->answers; ++i)
            answer.append(VeskArg(question->value * 10 + i));
        question->waitObject->setRetValue(answer);
        handledIn = QThread::currentThread();
        ++handled;
        question->waitObject->wakeUp();
        return true;
    }
};

} // namespace

class TestWait : public QObject
{
    Q_OBJECT

private slots:
    void wakeUpIsNeverLost();
    void returnValues();
    void sendMessageInTheSameThread();
    void sendMessageToAnotherThread();
};

void TestWait::wakeUpIsNeverLost()
{
    VeskWait notWoken;
    QVERIFY(!notWoken.wait(0));
    QVERIFY(!notWoken.wait(20));
    // A wake-up after a timed-out wait still counts.
    notWoken.wakeUp();
    QVERIFY(notWoken.wait(0));

    VeskWait early;
    early.wakeUp();
    QVERIFY(early.wait(VeskWait::Forever));
    QVERIFY(early.wait(VeskWait::Forever));

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

void TestWait::returnValues()
{
    VeskWait wait;
    QVERIFY(wait.getRetValue().isEmpty());
    QList<VeskArg> const three{VeskArg(1), VeskArg("two"), VeskArg(3.0)};
    wait.setRetValue(three);
    QCOMPARE(wait.getRetValue(), three);
    wait.setRetValue(VeskArg(true));
    QCOMPARE(wait.getRetValue(), QList<VeskArg>{VeskArg(true)});
    // A list value is one value, not a list of values.
    wait.setRetValue(VeskArg(three));
    QCOMPARE(wait.getRetValue().size(), 1);
    QCOMPARE(wait.getRetValue().at(0).toArgList(), three);
}

void TestWait::sendMessageInTheSameThread()
{
    Answerer answerer;
    VeskArg const first = VeskWait::sendMessage(new Question(4, 2), &answerer);
    // Delivered synchronously: the handler has run before the call returns.
    QCOMPARE(answerer.handled.load(), 1);
    QCOMPARE(answerer.handledIn, QThread::currentThread());
    QCOMPARE(first.getType(), VeskArg::Int);
    QCOMPARE(first.toInt(), 40);

    QCOMPARE(VeskWait::sendMessage(new Question(4, 0), &answerer).getType(), VeskArg::None);
    QCOMPARE(answerer.handled.load(), 2);

    // Refused without delivery; event and wait object are freed all the same.
    QCOMPARE(VeskWait::sendMessage(new Question(1, 1), nullptr).getType(), VeskArg::None);
    QCOMPARE(VeskWait::sendMessage(new VeskWaitEvent(nullptr), &answerer).getType(), VeskArg::None);
    QCOMPARE(VeskWait::sendMessage(nullptr, &answerer).getType(), VeskArg::None);
    QCOMPARE(answerer.handled.load(), 2);
}

void TestWait::sendMessageToAnotherThread()
{
    QThread thread;
    auto* const answerer = new Answerer;
    answerer->moveToThread(&thread);
    thread.start();

    for (int i = 0; i < 20; ++i) {
        auto* const question = new Question(i, 3);
        answerer->gate.pass();
        VeskArg const answer = VeskWait::sendMessage(question, answerer);
        QCOMPARE(answer.toInt(), i * 10);
        // The sender only comes back once the receiver has handled the event.
        QCOMPARE(answerer->handled.load(), i + 1);
    }
    QCOMPARE(answerer->handledIn, &thread);

    thread.quit();
    QVERIFY(thread.wait(10000));
    delete answerer;
}

QTEST_GUILESS_MAIN(TestWait)
#include "tst_wait.moc"
