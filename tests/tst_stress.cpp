// Concurrent paths driven hard from several threads; the ThreadSanitizer build also fails
// them on any race. Workers are std::threads, whose start and join the sanitizer sees.

#include <VeskData>

#include "veskgarbagecollector_p.h"
#include "vesktest.h"

#include <QtTest/QtTest>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace {

// Generous: the ThreadSanitizer build runs these many times slower.
constexpr int stressLimit = 120000;

// Runs body(0) .. body(count - 1), each in a thread of its own, and meanwhile() in this one;
// joins them all before it returns, whatever meanwhile() did.
void runThreads(int count, std::function<void(int)> const& body,
                std::function<void()> const& meanwhile = [] {})
{
    WaitLimit const limit("stress threads", stressLimit);
    std::vector<std::thread> threads;
    for (int i = 0; i < count; ++i)
        threads.emplace_back(body, i);
    meanwhile();
    for (std::thread& thread : threads)
        thread.join();
}

// Event-loop threads that are stopped and joined on every way out of a test, so that a
// failed check does not leave a running QThread to abort the program.
struct LoopThreads
{
    explicit LoopThreads(int count) : threads(count) {}
    ~LoopThreads()
    {
        for (QThread& thread : threads) {
            thread.quit();
            thread.wait();
        }
    }
    std::vector<QThread> threads;
};

// Answers with the first value of the wait object doubled, or -1 outside its own thread.
struct Doubler : QObject
{
    EventGate gate;

    bool event(QEvent* e) override
    {
        gate.pass();
        if (e->type() != VeskWaitEvent::DefaultType)
            return QObject::event(e);
        VeskWait* const wait = static_cast<VeskWaitEvent*>(e)->waitObject;
        bool const here = QThread::currentThread() == thread();
        wait->setRetValue(VeskArg(here ? wait->getRetValue().value(0).toInt() * 2 : -1));
        wait->wakeUp();
        return true;
    }
};

// Notes how many of its buffers were in use when it was deleted.
struct WatchedRing : VeskRingBuffer
{
    explicit WatchedRing(std::atomic<int>* used) : VeskRingBuffer(3, 256), usedAtDeletion(used) {}
    ~WatchedRing() override { *usedAtDeletion = countUsed(); }
    std::atomic<int>* usedAtDeletion;
};

} // namespace

class TestStress : public QObject
{
    Q_OBJECT

private slots:
    void waitRoundTrips();
    void ringProducerAndConsumers();
    void collectorPollsRingsThatConsumersRelease();
    void valuesAndIdsMadeInSeveralThreads();
};

void TestStress::waitRoundTrips()
{
    // One receiver per sender: a shared receiver would mostly exercise QtCore's event queue.
    constexpr int pairs = 3, trips = 300;
    Doubler doublers[pairs];
    LoopThreads receivers(pairs); // declared after the doublers: stopped before they go
    for (int i = 0; i < pairs; ++i) {
        doublers[i].moveToThread(&receivers.threads[i]);
        receivers.threads[i].start();
    }
    std::atomic<int> wrong{0};
    runThreads(pairs, [&](int sender) {
        for (int i = 0; i < trips; ++i) {
            int const question = sender * 100000 + i;
            auto* const event = new VeskWaitEvent(new VeskWait);
            event->waitObject->setRetValue(VeskArg(question));
            doublers[sender].gate.pass();
            wrong += VeskWait::sendMessage(event, &doublers[sender]).toInt() != question * 2;
        }
    });
    QCOMPARE(wrong.load(), 0);
}

void TestStress::ringProducerAndConsumers()
{
    constexpr int frames = 3000, size = 512;
    VeskRingBuffer ring(3, size);
    // Frame n is handed[n], filled with the byte n; consumers claim frames in turn.
    std::vector<VeskBuffer*> handed(frames);
    std::atomic<int> published{0}, claimed{0}, damaged{0};

    runThreads(3, [&](int role) {
        if (role == 0) {
            // Refilling a buffer that a consumer still reads shows as damage.
            for (int n = 0; n < frames; ++n) {
                handed[n] = ring.getBuffer();
                std::memset(handed[n]->getData(), n & 0xff, size);
                published = n + 1;
            }
            return;
        }
        for (int n = claimed++; n < frames; n = claimed++) {
            while (published <= n)
                std::this_thread::yield();
            unsigned char const* const data = handed[n]->getData();
            damaged += std::count(data, data + size, static_cast<unsigned char>(n & 0xff)) != size;
            handed[n]->release();
        }
    });
    QCOMPARE(damaged.load(), 0);
    QVERIFY(ring.isUnused());
}

void TestStress::collectorPollsRingsThatConsumersRelease()
{
    // Made here, so that the collector ticks in this thread's event loop.
    VeskGarbageCollector* const collector = VeskGarbageCollector::getInstance();
    std::atomic<int> usedAtDeletion[2] = {{-1}, {-1}};
    auto const bothDeleted = [&] { return usedAtDeletion[0] >= 0 && usedAtDeletion[1] >= 0; };
    // Each producer stops while its consumers still hold every buffer; they release them one
    // by one while this thread's event loop polls the rings.
    runThreads(2, [&](int r) {
        auto* const ring = new WatchedRing(&usedAtDeletion[r]);
        QList<VeskBuffer*> const held{ring->getBuffer(), ring->getBuffer(), ring->getBuffer()};
        collector->add(ring);
        for (int i = 0; i < held.size(); ++i) {
            QThread::msleep(50 + 20 * i);
            held.at(i)->release();
        }
    }, [&] {
        // Ticks run here, as fast as the event loop turns, rather than once a second.
        QDeadlineTimer const deadline(20000);
        while (!bothDeleted() && !deadline.hasExpired()) {
            if (QObject* const worker = veskCollectorWorker(collector))
                QMetaObject::invokeMethod(worker, "timeout", Qt::DirectConnection);
            QTest::qWait(10);
        }
    });
    std::unique_ptr<VeskGarbageCollector> const owned(collector);
    QVERIFY(bothDeleted());
    QVERIFY(usedAtDeletion[0] == 0 && usedAtDeletion[1] == 0); // none deleted while in use
}

void TestStress::valuesAndIdsMadeInSeveralThreads()
{
    QList<VeskArg> const shared{
        VeskArg(7), VeskArg(QStringLiteral("text")),
        VeskArg(QList<VeskArg>{VeskArg(1.5), VeskArg(QList<VeskArg>{VeskArg(true)})})};
    VeskArg const whole(shared);
    constexpr int threads = 4, rounds = 4000;
    std::atomic<int> mismatches{0};
    QVector<int> ids[threads];

    runThreads(threads, [&](int thread) {
        for (int i = 0; i < rounds; ++i) {
            QList<VeskArg> copy = shared;
            VeskArg const nested = whole;
            VeskArg const single = copy.at(i % copy.size());
            mismatches += nested.toArgList() != shared || single != shared.at(i % shared.size());
            copy.removeAt((i + thread) % copy.size()); // dropped in another order than taken
            ids[thread].append(VeskBuffer().getId());
        }
    });
    QCOMPARE(mismatches.load(), 0);
    QCOMPARE(whole.toArgList(), shared);
    QSet<int> distinct;
    for (QVector<int> const& list : ids)
        distinct.unite(QSet<int>(list.begin(), list.end()));
    QCOMPARE(distinct.size(), threads * rounds);
}

QTEST_GUILESS_MAIN(TestStress)
#include "tst_stress.moc"
