#include <VeskData>

#include <QtTest/QtTest>

#include <atomic>
#include <thread>

namespace {

// Asks for `answers` values: value * 10, value * 10 + 1, ...
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

// Answers in the thread it lives in; the cross-thread case is in tst_stress.
class Answerer : public QObject
{
public:
    int handled = 0;

    bool event(QEvent* e) override
    {
        if (e->type() != VeskWaitEvent::DefaultType)
            return QObject::event(e);
        auto* const question = static_cast<Question*>(e);
        QList<VeskArg> answer;
        for (int i = 0; i < question->answers; ++i)
            answer.append(VeskArg(question->value * 10 + i));
        question->waitObject->setRetValue(answer);
        ++handled; // no wakeUp(): not needed in the sender's own thread
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
    QVERIFY(!notWoken.wait(0));
    QVERIFY(!notWoken.wait(20));
    notWoken.wakeUp(); // still counts after a timed-out wait
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

void TestWait::sendMessageInTheSameThread()
{
    Answerer answerer;
    VeskArg const first = VeskWait::sendMessage(new Question(4, 2), &answerer);
    QCOMPARE(answerer.handled, 1); // delivered before sendMessage returned
    QCOMPARE(first.getType(), VeskArg::Int);
    QCOMPARE(first.toInt(), 40);
    QCOMPARE(VeskWait::sendMessage(new Question(4, 0), &answerer).getType(), VeskArg::None);

    VeskWait wait;
    wait.setRetValue(QList<VeskArg>{VeskArg(1), VeskArg(2), VeskArg(3)});
    wait.setRetValue(VeskArg(true)); // replaces all three
    QCOMPARE(wait.getRetValue(), QList<VeskArg>{VeskArg(true)});

    // Refused without delivery; AddressSanitizer checks that nothing leaks.
    QCOMPARE(VeskWait::sendMessage(new Question(1, 1), nullptr).getType(), VeskArg::None);
    QCOMPARE(VeskWait::sendMessage(new VeskWaitEvent(nullptr), &answerer).getType(), VeskArg::None);
    QCOMPARE(VeskWait::sendMessage(nullptr, &answerer).getType(), VeskArg::None);
    QCOMPARE(answerer.handled, 2);
}

QTEST_GUILESS_MAIN(TestWait)
#include "tst_wait.moc"
