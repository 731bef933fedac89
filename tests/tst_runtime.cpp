#include <VeskData>

#include "veskgarbagecollector_p.h"

#include <QtTest/QtTest>

#include <atomic>
#include <limits>
#include <thread>

namespace {

// What happened, in order: timers firing, probes asked ("?name") and probes deleted ("name").
QStringList events;

// "a b" gives {"a", "b"}.
QStringList names(char const* spaced)
{
    return QString::fromLatin1(spaced).split(QLatin1Char(' '));
}

struct Recorder : VeskTimerReceiver
{
    void timerFired(QString name) override { events.append(name); }
};

struct Probe : VeskRemovable
{
    Probe(char const* name, bool unused) : name(QLatin1String(name)), unused(unused) {}
    ~Probe() override { events.append(name); }
    bool isUnused() override { events.append(QLatin1Char('?') + name); return unused; }
    QString name;
    std::atomic<bool> unused;
};

// Asks for the collector while the collector asks it.
VeskGarbageCollector* asked = nullptr;

struct AskingProbe : Probe
{
    using Probe::Probe;
    bool isUnused() override
    {
        asked = VeskGarbageCollector::getInstance();
        return Probe::isUnused();
    }
};

QList<QSize> multiples(int width, int height, int count)
{
    QList<QSize> sizes;
    for (int k = 1; k <= count; ++k)
        sizes.append(QSize(width * k, height * k));
    return sizes;
}

// Runs one collector tick now, in this thread, as its timer would.
void tick(VeskGarbageCollector* handle)
{
    QObject* const worker = veskCollectorWorker(handle);
    QVERIFY(worker);
    QVERIFY(QMetaObject::invokeMethod(worker, "timeout", Qt::DirectConnection));
}

} // namespace

class TestRuntime : public QObject
{
    Q_OBJECT

private slots:
    void init() { events.clear(); }
    void timerCallsItsReceiverOnce();
    void collectorTakesOneObjectPerTick();
    void collectorEndsAfterRemove();
    void collectorTicksOnItsOwn();
    void resolutions();
};

void TestRuntime::timerCallsItsReceiverOnce()
{
    Recorder recorder;
    VeskTimer stopped, restarted, refused, late;
    stopped.startTimer(&recorder, 10, QStringLiteral("stopped"));
    stopped.stopTimer();
    // The handle follows the new timer; the old one runs on by itself.
    restarted.startTimer(&recorder, 20, QStringLiteral("old"));
    restarted.startTimer(&recorder, 40, QStringLiteral("new"));
    restarted.stopTimer();
    refused.startTimer(nullptr, 1, QStringLiteral("refused"));
    refused.stopTimer();
    VeskTimer().stopTimer(); // never started
    // A delay that has already passed fires at once rather than never.
    late.startTimer(&recorder, -5, QStringLiteral("late"));

    QTRY_COMPARE(events, names("late old"));
    QTest::qWait(100);
    QCOMPARE(events, names("late old"));
    // The private objects have deleted themselves by now: AddressSanitizer fails a handle
    // that still reaches one, and a refused start that leaked its object, at exit.
    restarted.stopTimer();
}

void TestRuntime::collectorTakesOneObjectPerTick()
{
    VeskGarbageCollector collector;
    auto* const busy = new Probe("busy", false);
    for (Probe* probe : {busy, static_cast<Probe*>(nullptr), new Probe("a", true), new Probe("b", true)})
        collector.add(probe);
    VeskGarbageCollector duplicates;
    auto* const twice = new Probe("twice", true);
    duplicates.add(twice);
    duplicates.add(twice);
    // A handle that goes forgets its objects: neither asked nor deleted.
    auto* const forgotten = new Probe("forgotten", true);
    auto* const dropped = new VeskGarbageCollector;
    dropped->add(forgotten);
    QPointer<QObject> const droppedWorker = veskCollectorWorker(dropped);
    delete dropped;
    QVERIFY(droppedWorker.isNull());

    // One object per tick and collector; the last stage finds the busy one released.
    QStringList const stages[] = {names("?busy ?a a ?twice"), names("?busy ?b b ?twice twice"),
                                  names("?busy busy")};
    for (int i = 0; i < 3; ++i) {
        busy->unused = i == 2;
        events.clear();
        tick(&collector);
        tick(&duplicates);
        QCOMPARE(events, stages[i]);
    }
    // Without remove() an empty collector keeps its working part.
    tick(&collector);
    QVERIFY(veskCollectorWorker(&collector));
    delete forgotten;

    // A handle destroyed in another thread leaves its working part to this one, where its
    // timer lives, to delete.
    auto* const elsewhere = new VeskGarbageCollector;
    QPointer<QObject> const worker = veskCollectorWorker(elsewhere);
    std::thread([elsewhere] { delete elsewhere; }).join();
    QVERIFY(!worker.isNull());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(worker.isNull());
}

void TestRuntime::collectorEndsAfterRemove()
{
    VeskGarbageCollector empty;
    empty.remove();
    VeskGarbageCollector* const instance = VeskGarbageCollector::getInstance();
    QCOMPARE(VeskGarbageCollector::getInstance(), instance);
    auto* const held = new Probe("held", false);
    instance->add(held);
    instance->remove();

    // The first tick ends the empty collector; its working part deletes itself.
    QPointer<QObject> const ended = veskCollectorWorker(&empty);
    tick(&empty);
    QCOMPARE(veskCollectorWorker(&empty), static_cast<QObject*>(nullptr));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(ended.isNull());

    tick(instance);
    QCOMPARE(events, names("?held"));
    // Added after remove() but before the end: delays the end. It asks for the collector
    // while being asked, which must not wait for the tick.
    instance->add(new AskingProbe("late", true));
    tick(instance);
    QCOMPARE(events, names("?held ?held ?late late"));
    QCOMPARE(asked, instance);
    held->unused = true;
    tick(instance);
    QCOMPARE(events, names("?held ?held ?late late ?held held"));
    events.clear();

    // The next tick ends the instance's working part. Objects handed over afterwards, to
    // it or to the collector that ended first, start a new one rather than being dropped.
    tick(instance);
    QCOMPARE(veskCollectorWorker(instance), static_cast<QObject*>(nullptr));
    QCOMPARE(VeskGarbageCollector::getInstance(), instance);
    instance->add(new Probe("renewed", true));
    empty.add(new Probe("restarted", true));
    tick(instance);
    tick(&empty);
    QCOMPARE(events, names("?renewed renewed ?restarted restarted"));
    delete instance;
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    events.clear();

    // A handle dropped in another thread leaves its working part to this
    // thread, which asks nothing more before the part goes.
    Probe kept("kept", true);
    auto* const far = new VeskGarbageCollector;
    far->add(&kept);
    QPointer<QObject> const orphan = veskCollectorWorker(far);
    std::thread([far] { delete far; }).join();
    QVERIFY(orphan && QMetaObject::invokeMethod(orphan, "timeout", Qt::DirectConnection));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(orphan.isNull() && events.isEmpty());
    // A handle whose working part has ended is dropped without one.
    auto* const idle = new VeskGarbageCollector;
    idle->remove();
    tick(idle);
    QVERIFY(!veskCollectorWorker(idle));
    delete idle;
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(events.isEmpty());
}

void TestRuntime::collectorTicksOnItsOwn()
{
    // The one check on the real clock: a tick comes by itself within about a second.
    VeskGarbageCollector collector;
    collector.add(new Probe("timed", true));
    QTRY_COMPARE_WITH_TIMEOUT(events, names("?timed timed"), 3000);
}

void TestRuntime::resolutions()
{
    for (QPair<double, double> const& r : QList<QPair<double, double>>{
             {2.5, 2.0}, {2.5000001, 3.0}, {3.6, 4.0}, {-2.5, -3.0}, {-2.4, -2.0}})
        QCOMPARE(round2(r.first), r.second);

    VeskResolution const fourThirds(4.0f / 3.0f, 0);
    QVERIFY(fourThirds.getRatio() == 4.0f / 3.0f && VeskResolution(1.0f, 1600).getStartWidth() == 1600);
    QCOMPARE(fourThirds.getResolutions(), multiples(64, 48, 25));
    QCOMPARE(VeskResolution(100.0f, 0).getResolutions(),
             (QList<QSize>{{16, 0}, {32, 0}, {48, 0}, {1552, 16}, {1568, 16}, {1584, 16}, {1600, 16}}));
    QCOMPARE(VeskResolution(1.0f, 1600).getResolutions(), multiples(16, 16, 200).mid(100));
    // Near the end of the int range the widths stop instead of overflowing.
    QVERIFY(VeskResolution(1.0f, std::numeric_limits<int>::max() - 20).getResolutions().size() <= 1);

    // Given size, then the next, previous and nearest entries.
    QSize const rows[][4] = {
        {{640, 480}, {704, 528}, {576, 432}, {64, 48}},
        {{650, 490}, {704, 528}, {640, 480}, {640, 480}},
        {{660, 470}, {704, 528}, {640, 480}, {576, 432}},
        {{64, 48}, {128, 96}, {64, 48}, {64, 48}},
        {{128, 100}, {192, 144}, {64, 48}, {64, 48}}, // 128x96 is not below in width
        {{1600, 1200}, {1600, 1200}, {1536, 1152}, {64, 48}},
    };
    for (auto const& row : rows) {
        QCOMPARE(fourThirds.getNextResolution(row[0]), row[1]);
        QCOMPARE(fourThirds.getPreviousResolution(row[0]), row[2]);
        QCOMPARE(fourThirds.getNearestResolution(row[0]), row[3]);
    }
    for (VeskResolution const& none :
         {VeskResolution(4.0f / 3.0f, 8), VeskResolution(0.0f, 0), VeskResolution(-1.0f, 0)}) {
        QCOMPARE(none.getNextResolution(QSize(640, 480)), QSize());
        QCOMPARE(none.getPreviousResolution(QSize(640, 480)), QSize());
        QCOMPARE(none.getNearestResolution(QSize(640, 480)), QSize());
    }
}

QTEST_GUILESS_MAIN(TestRuntime)
#include "tst_runtime.moc"
