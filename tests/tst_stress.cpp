// Concurrent paths driven hard from several threads at once. They check their
// results in every build; the ThreadSanitizer build (make test-tsan) also
// fails them on any data race.
//
// Worker threads are std::threads, whose start and join the sanitizer sees.
// QtCore is normally built without it, so the ordering its own locks give
// (a QThread's end before wait() returns, the posted-event queue) is hidden.

#include <VeskData>

#include <QtTest/QtTest>

#include <atomic>
#include <condition_variable>
#include <cstring>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace {

// Runs body(0) .. body(count - 1), each in a thread of its own.
void runThreads(int count, std::function<void(int)> const& body)
{
    std::vector<std::thread> threads;
    for (int i = 0; i < count; ++i)
        threads.emplace_back(body, i);
    for (std::thread& thread : threads)
        thread.join();
}

// A blocking queue between threads.
template<typename T>
class Channel
{
public:
    void push(T const& value)
    {
        std::lock_guard<std::mutex> const locker(mutex);
        queue.enqueue(value);
        condition.notify_one();
    }
    T pop()
    {
        std::unique_lock<std::mutex> locker(mutex);
        condition.wait(locker, [this] { return !queue.isEmpty(); });
        return queue.dequeue();
    }

private:
    std::mutex mutex;
    std::condition_variable condition;
    QQueue<T> queue;
};

// Answers with the first value of the wait object doubled. Passing the gate
// shows the sanitizer the order that the posted-event queue gives: the
// sender passes it after making the event, the receiver before reading it.
struct Doubler : QObject
{
    std::atomic<int> handled{0};
    std::atomic<int> wrongThread{0};
    std::mutex gate;

    void passGate() { std::lock_guard<std::mutex> const locker(gate); }

    bool event(QEvent* e) override
    {
        passGate();
        if (e->type() != VeskWaitEvent::DefaultType)
            return QObject::event(e);
        if (QThread::currentThread() != thread())
            ++wrongThread;
        VeskWait* const wait = static_cast<VeskWaitEvent*>(e)->waitObject;
        wait->setRetValue(VeskArg(wait->getRetValue().value(0).toInt() * 2));
        ++handled;
        wait->wakeUp();
        return true;
    }
};

struct Frame
{
    VeskBuffer* buffer;
    int number;
};

// Notes how many of its buffers were in use when it was deleted.
struct WatchedRing : VeskRingBuffer
{
    WatchedRing(std::atomic<int>* usedAtDeletion)
        : VeskRingBuffer(3, 256)
        , usedAtDeletion(usedAtDeletion)
    {
    }
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
    void argumentValuesSharedBetweenThreads();
    void bufferIdsFromSeveralThreads();
};

void TestStress::waitRoundTrips()
{
    // Pairs of threads: several senders posting to one receiver would mostly
    // exercise QtCore's event queue.
    constexpr int pairs = 3;
    constexpr int trips = 300;
    QThread receiverThreads[pairs];
    Doubler doublers[pairs];
    for (int i = 0; i < pairs; ++i) {
        doublers[i].moveToThread(&receiverThreads[i]);
        receiverThreads[i].start();
    }

    std::atomic<int> wrong{0};
    runThreads(pairs, [&](int sender) {
        for (int i = 0; i < trips; ++i) {
            int const question = sender * 100000 + i;
            auto* const wait = new VeskWait;
            wait->setRetValue(VeskArg(question));
            auto* const event = new VeskWaitEvent(wait);
            doublers[sender].passGate();
            if (VeskWait::sendMessage(event, &doublers[sender]).toInt() != question * 2)
                ++wrong;
        }
    });
    QCOMPARE(wrong.load(), 0);
    for (int i = 0; i < pairs; ++i) {
        QCOMPARE(doublers[i].handled.load(), trips);
        QCOMPARE(doublers[i].wrongThread.load(), 0);
        receiverThreads[i].quit();
        QVERIFY(receiverThreads[i].wait(10000));
    }
}

void TestStress::ringProducerAndConsumers()
{
    constexpr int frames = 3000;
    constexpr int consumers = 2;
    constexpr long size = 512;
    VeskRingBuffer ring(3, int(size));
    Channel<Frame> channel;
    std::atomic<int> consumed{0};
    std::atomic<int> damaged{0};

    runThreads(consumers + 1, [&](int role) {
        if (role == 0) {
            // Refilling a buffer that a consumer still reads shows as damage.
            for (int number = 0; number < frames; ++number) {
                VeskBuffer* const buffer = ring.getBuffer();
                std::memset(buffer->getData(), number & 0xff, size);
                channel.push({buffer, number});
            }
            for (int i = 0; i < consumers; ++i)
                channel.push({nullptr, -1});
            return;
        }
        for (Frame frame = channel.pop(); frame.buffer; frame = channel.pop()) {
            unsigned char const* const data = frame.buffer->getData();
            for (long i = 0; i < size; ++i) {
                if (data[i] != (frame.number & 0xff)) {
                    ++damaged;
                    break;
                }
            }
            ++consumed;
            frame.buffer->release();
        }
    });
    QCOMPARE(consumed.load(), frames);
    QCOMPARE(damaged.load(), 0);
    QVERIFY(ring.isUnused());
}

void TestStress::collectorPollsRingsThatConsumersRelease()
{
    // Made here, so that the collector ticks in this thread's event loop.
    VeskGarbageCollector* const collector = VeskGarbageCollector::getInstance();
    constexpr int rings = 2;
    std::atomic<int> usedAtDeletion[rings] = {{-1}, {-1}};
    std::atomic<int> stillHeld{0};
    std::vector<std::thread> producers;
    for (int r = 0; r < rings; ++r) {
        producers.emplace_back([&, r] {
            auto* const ring = new WatchedRing(&usedAtDeletion[r]);
            QList<VeskBuffer*> const held{ring->getBuffer(), ring->getBuffer(), ring->getBuffer()};
            stillHeld += held.size();
            // The producer stops while its consumers still hold every buffer.
            collector->add(ring);
            for (int i = 0; i < held.size(); ++i) {
                QThread::msleep(300 + 200 * i);
                --stillHeld;
                held.at(i)->release();
            }
        });
    }
    QTRY_VERIFY_WITH_TIMEOUT(usedAtDeletion[0] != -1 && usedAtDeletion[1] != -1, 8000);
    for (std::thread& producer : producers)
        producer.join();
    QCOMPARE(stillHeld.load(), 0);
    QCOMPARE(usedAtDeletion[0].load(), 0);
    QCOMPARE(usedAtDeletion[1].load(), 0);
    delete collector;
}

void TestStress::argumentValuesSharedBetweenThreads()
{
    QList<VeskArg> const shared{
        VeskArg(7), VeskArg(QStringLiteral("shared text")), VeskArg(QByteArray("bytes")),
        VeskArg(QStringList{QStringLiteral("a"), QStringLiteral("b")}),
        VeskArg(QList<VeskArg>{VeskArg(1.5), VeskArg(QList<VeskArg>{VeskArg(true)})})};
    VeskArg const whole(shared);
    std::atomic<int> mismatches{0};

    runThreads(4, [&](int thread) {
        for (int i = 0; i < 4000; ++i) {
            QList<VeskArg> copy = shared;
            VeskArg const nested = whole;
            auto single = std::make_unique<VeskArg>(copy.at(i % copy.size()));
            if (nested.toArgList() != shared || *single != shared.at(i % shared.size()))
                ++mismatches;
            // Dropped in another order than taken.
            copy.removeAt((i + thread) % copy.size());
            single.reset();
        }
    });
    QCOMPARE(mismatches.load(), 0);
    QCOMPARE(whole.toArgList(), shared);
}

void TestStress::bufferIdsFromSeveralThreads()
{
    constexpr int perThread = 2000;
    QVector<QVector<int>> ids(4);
    runThreads(4, [&](int thread) {
        for (int i = 0; i < perThread; ++i)
            ids[thread].append(VeskBuffer().getId());
    });
    QSet<int> distinct;
    for (QVector<int> const& list : ids)
        distinct.unite(QSet<int>(list.begin(), list.end()));
    QCOMPARE(distinct.size(), 4 * perThread);
}

QTEST_GUILESS_MAIN(TestStress)
#include "tst_stress.moc"
