#include <VeskData>

#include <QtTest/QtTest>

#include <atomic>

namespace {

struct Recorder : VeskTimerReceiver
{
    QStringList fired;
    void timerFired(QString name) override { fired.append(name); }
};

// A removable object that logs its own deletion.
struct Probe : VeskRemovable
{
    Probe(QStringList* deleted, QString name, bool unused)
        : deleted(deleted)
        , name(std::move(name))
        , unused(unused)
    {
    }
    ~Probe() override { deleted->append(name); }
    bool isUnused() override
    {
        ++asked;
        return unused;
    }

    QStringList* deleted;
    QString name;
    std::atomic<bool> unused;
    std::atomic<int> asked{0};
};

QList<QSize> multiples(int width, int height, int count)
{
    QList<QSize> sizes;
    for (int k = 1; k <= count; ++k)
        sizes.append(QSize(width * k, height * k));
    return sizes;
}

constexpr int tickWait = 3000; // a one-second tick, with room for slow builds

} // namespace

class TestRuntime : public QObject
{
    Q_OBJECT

private slots:
    void timerCallsItsReceiverOnce();
    void collectorTakesOneObjectPerTick();
    void collectorEndsAfterRemove();
    void roundingAndResolutionLists();
    void resolutionLookups();
};

void TestRuntime::timerCallsItsReceiverOnce()
{
    Recorder recorder;
    VeskTimer first, second, stopped, restarted, refused, never;
    first.startTimer(&recorder, 60, QStringLiteral("first"));
    second.startTimer(&recorder, 10, QStringLiteral("second"));
    stopped.startTimer(&recorder, 10, QStringLiteral("stopped"));
    stopped.stopTimer();
    // The handle follows the new timer; the old one runs on by itself.
    restarted.startTimer(&recorder, 20, QStringLiteral("old"));
    restarted.startTimer(&recorder, 40, QStringLiteral("new"));
    restarted.stopTimer();
    refused.startTimer(nullptr, 1, QStringLiteral("refused"));
    never.stopTimer();

    QTRY_COMPARE(recorder.fired.size(), 3);
    QTest::qWait(300);
    QStringList fired = recorder.fired;
    fired.sort();
    QCOMPARE(fired, (QStringList{QStringLiteral("first"), QStringLiteral("old"), QStringLiteral("second")}));
    // The private objects have deleted themselves by now. Under
    // AddressSanitizer a handle that reached one fails here, and a refused
    // start that leaked its object fails at exit.
    first.stopTimer();
    first.stopTimer();
    refused.stopTimer();
    QCOMPARE(recorder.fired.size(), 3);
}

void TestRuntime::collectorTakesOneObjectPerTick()
{
    QStringList deleted;
    VeskGarbageCollector collector;
    auto* const busy = new Probe(&deleted, QStringLiteral("busy"), false);
    auto* const a = new Probe(&deleted, QStringLiteral("a"), true);
    auto* const b = new Probe(&deleted, QStringLiteral("b"), true);
    for (VeskRemovable* object : {static_cast<Probe*>(busy), static_cast<Probe*>(nullptr), a, b})
        collector.add(object);
    VeskGarbageCollector duplicates;
    auto* const twice = new Probe(&deleted, QStringLiteral("twice"), true);
    duplicates.add(twice);
    duplicates.add(twice);
    // A handle that goes forgets its objects: neither asked nor deleted.
    auto* const forgotten = new Probe(&deleted, QStringLiteral("forgotten"), true);
    auto* const dropped = new VeskGarbageCollector;
    dropped->add(forgotten);
    delete dropped;

    QTRY_VERIFY_WITH_TIMEOUT(deleted.contains(QStringLiteral("a")), tickWait);
    QCOMPARE(busy->asked.load(), 1);
    QCOMPARE(b->asked.load(), 0);
    QCOMPARE(twice->asked.load(), 1);
    QTRY_VERIFY_WITH_TIMEOUT(deleted.contains(QStringLiteral("b")), tickWait);
    QCOMPARE(busy->asked.load(), 2);
    QTRY_VERIFY_WITH_TIMEOUT(deleted.contains(QStringLiteral("twice")), tickWait);
    busy->unused = true;
    QTRY_VERIFY_WITH_TIMEOUT(deleted.contains(QStringLiteral("busy")), tickWait);
    QCOMPARE(deleted, (QStringList{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("twice"),
                                   QStringLiteral("busy")}));
    QCOMPARE(forgotten->asked.load(), 0);
    delete forgotten;
}

void TestRuntime::collectorEndsAfterRemove()
{
    QStringList deleted;
    VeskGarbageCollector* const instance = VeskGarbageCollector::getInstance();
    QVERIFY(instance);
    QCOMPARE(VeskGarbageCollector::getInstance(), instance);
    auto* const held = new Probe(&deleted, QStringLiteral("held"), false);
    instance->add(held);
    instance->remove();
    VeskGarbageCollector empty;
    empty.remove();

    // The first tick ends the empty collector, which takes nothing after it.
    QTRY_COMPARE_WITH_TIMEOUT(held->asked.load(), 1, tickWait);
    auto* const ignored = new Probe(&deleted, QStringLiteral("ignored"), true);
    empty.add(ignored);
    // Added after remove() but before the end: delays the end.
    instance->add(new Probe(&deleted, QStringLiteral("late"), true));
    QTRY_VERIFY_WITH_TIMEOUT(deleted.contains(QStringLiteral("late")), tickWait);
    held->unused = true;
    QTRY_VERIFY_WITH_TIMEOUT(deleted.contains(QStringLiteral("held")), tickWait);
    QCOMPARE(ignored->asked.load(), 0);
    delete ignored;

    // The next tick ends the instance's private object by itself; destroying
    // the handle afterwards must not delete that object again.
    QTest::qWait(1200);
    delete instance;
    VeskGarbageCollector* const renewed = VeskGarbageCollector::getInstance();
    QVERIFY(renewed);
    renewed->add(new Probe(&deleted, QStringLiteral("renewed"), true));
    QTRY_VERIFY_WITH_TIMEOUT(deleted.contains(QStringLiteral("renewed")), tickWait);
    delete renewed;
}

void TestRuntime::roundingAndResolutionLists()
{
    QCOMPARE(round2(2.5), 2.0);
    QCOMPARE(round2(2.5000001), 3.0);
    QCOMPARE(round2(2.4), 2.0);
    QCOMPARE(round2(3.6), 4.0);
    QCOMPARE(round2(-2.5), -3.0);
    QCOMPARE(round2(-2.4), -2.0);

    QCOMPARE(VeskResolution(4.0f / 3.0f, 0).getResolutions(), multiples(64, 48, 25));
    QCOMPARE(VeskResolution(16.0f / 9.0f, 0).getResolutions(), multiples(256, 144, 6));
    QCOMPARE(VeskResolution(16.0f / 10.0f, 0).getResolutions(), multiples(128, 80, 12));
    QCOMPARE(VeskResolution(5.0f / 4.0f, 0).getResolutions(), multiples(80, 64, 20));
    QCOMPARE(VeskResolution(1.0f, 0).getResolutions(), multiples(16, 16, 100));
    QCOMPARE(VeskResolution(100.0f, 0).getResolutions(),
             (QList<QSize>{{16, 0}, {32, 0}, {48, 0}, {1552, 16}, {1568, 16}, {1584, 16}, {1600, 16}}));
    QList<QSize> const shifted = VeskResolution(1.0f, 1600).getResolutions();
    QCOMPARE(shifted.size(), 100);
    QCOMPARE(shifted.first(), QSize(1616, 1616));
    QCOMPARE(shifted.last(), QSize(3200, 3200));
    // Near the end of the int range the widths stop instead of overflowing.
    QVERIFY(VeskResolution(1.0f, std::numeric_limits<int>::max() - 20).getResolutions().size() <= 1);

    for (VeskResolution const& none :
         {VeskResolution(4.0f / 3.0f, 8), VeskResolution(0.0f, 0), VeskResolution(-1.0f, 0)}) {
        QVERIFY(none.getResolutions().isEmpty());
        QCOMPARE(none.getFirstResolution(), QSize());
        QCOMPARE(none.getNextResolution(QSize(640, 480)), QSize());
        QCOMPARE(none.getPreviousResolution(QSize(640, 480)), QSize());
        QCOMPARE(none.getNearestResolution(QSize(640, 480)), QSize());
    }
}

void TestRuntime::resolutionLookups()
{
    VeskResolution const fourThirds(4.0f / 3.0f, 0);
    struct Row
    {
        QSize given, next, previous, nearest;
    };
    Row const rows[] = {
        {{640, 480}, {704, 528}, {576, 432}, {64, 48}},
        {{650, 490}, {704, 528}, {640, 480}, {640, 480}},
        {{660, 470}, {704, 528}, {640, 480}, {576, 432}},
        {{700, 400}, {704, 528}, {640, 480}, {512, 384}},
        {{10, 10}, {64, 48}, {64, 48}, {64, 48}},
        {{64, 48}, {128, 96}, {64, 48}, {64, 48}},
        {{1600, 1200}, {1600, 1200}, {1536, 1152}, {64, 48}},
        {{2000, 2000}, {1600, 1200}, {1600, 1200}, {64, 48}},
    };
    for (Row const& row : rows) {
        QCOMPARE(fourThirds.getNextResolution(row.given), row.next);
        QCOMPARE(fourThirds.getPreviousResolution(row.given), row.previous);
        QCOMPARE(fourThirds.getNearestResolution(row.given), row.nearest);
    }
}

QTEST_GUILESS_MAIN(TestRuntime)
#include "tst_runtime.moc"
