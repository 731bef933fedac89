// The library's hot paths side by side with what Qt offers for the same
// work: argument values against QVariant, posting an action against queued
// invocation, a synchronous answer against a blocking queued call, and the
// ring buffer against a mutex and wait-condition queue of the same buffers.
// After the table, one line per pair gives both times and their ratio.

#include "benchpairs.h"

#include <VeskData>

#include <QtCore/QCoreApplication>
#include <QtCore/QMutex>
#include <QtCore/QQueue>
#include <QtCore/QThread>
#include <QtCore/QVariant>
#include <QtCore/QWaitCondition>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

namespace {

QString const text64(64, QLatin1Char('x'));

// Argument values and QVariant -------------------------------------------

void argCopyString(benchmark::State& state)
{
    VeskArg const value(text64);
    for (auto _ : state) {
        VeskArg copy(value);
        benchmark::DoNotOptimize(copy);
    }
}
BENCHMARK(argCopyString);

void variantCopyString(benchmark::State& state)
{
    QVariant const value(text64);
    for (auto _ : state) {
        QVariant copy(value);
        benchmark::DoNotOptimize(copy);
    }
}
BENCHMARK(variantCopyString);

void argBuildInt(benchmark::State& state)
{
    int i = 0;
    for (auto _ : state) {
        VeskArg value(++i);
        benchmark::DoNotOptimize(value);
    }
}
BENCHMARK(argBuildInt);

void variantBuildInt(benchmark::State& state)
{
    int i = 0;
    for (auto _ : state) {
        QVariant value(++i);
        benchmark::DoNotOptimize(value);
    }
}
BENCHMARK(variantBuildInt);

void argBuildString(benchmark::State& state)
{
    for (auto _ : state) {
        VeskArg value(text64);
        benchmark::DoNotOptimize(value);
    }
}
BENCHMARK(argBuildString);

void variantBuildString(benchmark::State& state)
{
    for (auto _ : state) {
        QVariant value(text64);
        benchmark::DoNotOptimize(value);
    }
}
BENCHMARK(variantBuildString);

void argReadInt(benchmark::State& state)
{
    VeskArg const value(7);
    for (auto _ : state)
        benchmark::DoNotOptimize(value.toInt());
}
BENCHMARK(argReadInt);

void variantReadInt(benchmark::State& state)
{
    QVariant const value(7);
    for (auto _ : state)
        benchmark::DoNotOptimize(value.toInt());
}
BENCHMARK(variantReadInt);

void argBuildList10(benchmark::State& state)
{
    for (auto _ : state) {
        QList<VeskArg> list;
        for (int i = 0; i < 10; ++i)
            list.append(VeskArg(i));
        VeskArg value(list);
        benchmark::DoNotOptimize(value);
    }
}
BENCHMARK(argBuildList10);

void variantBuildList10(benchmark::State& state)
{
    for (auto _ : state) {
        QVariantList list;
        for (int i = 0; i < 10; ++i)
            list.append(QVariant(i));
        QVariant value(list);
        benchmark::DoNotOptimize(value);
    }
}
BENCHMARK(variantBuildList10);

// Posting and delivering a call with three arguments ----------------------
//
// Every iteration posts one call and delivers it with sendPostedEvents()
// for all receivers: a delivery filtered by receiver or type leaves the
// delivered entries in Qt's queue, which then grows with every iteration.

// The plugin side: one method for actions, one slot for invocation by
// name, and a plain method for invocation through a functor. Each checks
// what it got, so that no path can skip the delivery.
class Target : public VeskPlugin
{
    Q_OBJECT
public:
    void take(QList<VeskArg>& args)
    {
        sum += args.at(0).toInt() + int(args.at(1).toString().size()) + int(args.at(2).toBool());
    }
    void takeValues(int number, QString const& text, bool flag)
    {
        sum += number + int(text.size()) + int(flag);
    }

public Q_SLOTS:
    void takeSlot(int number, QString const& text, bool flag) { takeValues(number, text, flag); }

public:
    long sum = 0;
};

// The host's dispatcher: runs the action's method on its plugin.
class Dispatcher : public QObject
{
public:
    bool event(QEvent* e) override
    {
        if (e->type() != VeskCallActionEvent::EventType)
            return QObject::event(e);
        auto* const call = static_cast<VeskCallActionEvent*>(e);
        (call->plugin->*(call->method))(call->args);
        return true;
    }
};

constexpr int postedNumber = 42;
QString const postedText = QStringLiteral("hello");

void checkDelivered(benchmark::State& state, Target const& target)
{
    long const each = postedNumber + postedText.size() + 1;
    if (target.sum != each * long(state.iterations()))
        state.SkipWithError("a call was not delivered");
}

void actionPost(benchmark::State& state)
{
    Target target;
    Dispatcher dispatcher;
    VeskCallActionEvent::dispatcher = &dispatcher;
    VeskPluginAction const action(&target, &Target::take,
                                  {VeskArg(postedNumber), VeskArg(postedText), VeskArg(true)});
    for (auto _ : state) {
        action();
        QCoreApplication::sendPostedEvents();
    }
    VeskCallActionEvent::dispatcher = nullptr;
    checkDelivered(state, target);
}
BENCHMARK(actionPost);

void invokeQueuedByName(benchmark::State& state)
{
    Target target;
    for (auto _ : state) {
        QMetaObject::invokeMethod(&target, "takeSlot", Qt::QueuedConnection, Q_ARG(int, postedNumber),
                                  Q_ARG(QString, postedText), Q_ARG(bool, true));
        QCoreApplication::sendPostedEvents();
    }
    checkDelivered(state, target);
}
BENCHMARK(invokeQueuedByName);

void invokeQueuedFunctor(benchmark::State& state)
{
    Target target;
    Target* const receiver = &target;
    // The functor carries the three values, as the action's event does.
    int const number = postedNumber;
    QString const text = postedText;
    bool const flag = true;
    for (auto _ : state) {
        QMetaObject::invokeMethod(
            receiver, [receiver, number, text, flag] { receiver->takeValues(number, text, flag); },
            Qt::QueuedConnection);
        QCoreApplication::sendPostedEvents();
    }
    checkDelivered(state, target);
}
BENCHMARK(invokeQueuedFunctor);

// A synchronous answer from another thread --------------------------------

// Answers wait events with the question doubled; also offers the same work
// as a plain method for Qt's blocking queued invocation.
class Answerer : public QObject
{
public:
    int answer(int question) const { return question * 2; }

    bool event(QEvent* e) override
    {
        if (e->type() != VeskWaitEvent::DefaultType)
            return QObject::event(e);
        VeskWait* const wait = static_cast<VeskWaitEvent*>(e)->waitObject;
        wait->setRetValue(VeskArg(answer(wait->getRetValue().value(0).toInt())));
        wait->wakeUp();
        return true;
    }
};

// An Answerer living in a thread of its own with a running event loop.
class AnswererThread
{
public:
    AnswererThread()
    {
        answerer.moveToThread(&thread);
        thread.start();
    }
    ~AnswererThread()
    {
        thread.quit();
        thread.wait();
    }

    QThread thread;
    Answerer answerer;
};

void waitRoundTrip(benchmark::State& state)
{
    AnswererThread remote;
    int question = 0;
    for (auto _ : state) {
        auto* const wait = new VeskWait;
        wait->setRetValue(VeskArg(++question));
        VeskArg const answer = VeskWait::sendMessage(new VeskWaitEvent(wait), &remote.answerer);
        if (answer.toInt() != question * 2)
            state.SkipWithError("wrong answer");
    }
}
BENCHMARK(waitRoundTrip)->UseRealTime();

void blockingQueuedRoundTrip(benchmark::State& state)
{
    AnswererThread remote;
    Answerer* const answerer = &remote.answerer;
    int question = 0;
    for (auto _ : state) {
        ++question;
        int answer = 0;
        QMetaObject::invokeMethod(
            answerer, [answerer, question] { return answerer->answer(question); },
            Qt::BlockingQueuedConnection, &answer);
        if (answer != question * 2)
            state.SkipWithError("wrong answer");
    }
}
BENCHMARK(blockingQueuedRoundTrip)->UseRealTime();

// Buffers handed from a producer thread to a consumer thread ---------------

constexpr int bufferCount = 8;
constexpr long bufferSize = 4096;

// Single producer, single consumer queue of buffer pointers, the same for
// both sides of the pair; it holds at most the buffers and the final null.
class Handoff
{
public:
    explicit Handoff(int count) : cells(size_t(count) + 2) {}
    void push(VeskBuffer* buffer)
    {
        size_t const tail = this->tail.load(std::memory_order_relaxed);
        cells[tail] = buffer;
        this->tail.store((tail + 1) % cells.size(), std::memory_order_release);
    }
    VeskBuffer* pop()
    {
        size_t const head = this->head.load(std::memory_order_relaxed);
        while (head == tail.load(std::memory_order_acquire))
            std::this_thread::yield();
        VeskBuffer* const buffer = cells[head];
        this->head.store((head + 1) % cells.size(), std::memory_order_release);
        return buffer;
    }

private:
    std::vector<VeskBuffer*> cells;
    std::atomic<size_t> head{0};
    std::atomic<size_t> tail{0};
};

// The producer loop shared by both sides: take a buffer, fill its ends,
// hand it over; the consumer reads it and gives it back.
template<typename Take, typename GiveBack>
void handBuffers(benchmark::State& state, int count, Take take, GiveBack giveBack)
{
    Handoff handoff(count);
    long sum = 0;
    std::thread consumer([&] {
        for (VeskBuffer* buffer = handoff.pop(); buffer; buffer = handoff.pop()) {
            sum += buffer->getData()[bufferSize - 1];
            giveBack(buffer);
        }
    });
    unsigned char frame = 0;
    long expected = 0;
    for (auto _ : state) {
        VeskBuffer* const buffer = take();
        buffer->getData()[0] = ++frame;
        buffer->getData()[bufferSize - 1] = frame;
        expected += frame;
        handoff.push(buffer);
    }
    handoff.push(nullptr);
    consumer.join();
    if (sum != expected)
        state.SkipWithError("a buffer was lost or overwritten");
}

void handRing(benchmark::State& state, int count)
{
    VeskRingBuffer ring(count, int(bufferSize));
    handBuffers(state, count, [&ring] { return ring.getBuffer(); }, [](VeskBuffer* b) { b->release(); });
}

void ringHandoff(benchmark::State& state)
{
    handRing(state, bufferCount);
}
BENCHMARK(ringHandoff)->UseRealTime();

// The same hand-off with fewer and more buffers in the ring: a short ring
// makes the producer wait for releases more often.
void ringHandoffByCount(benchmark::State& state)
{
    handRing(state, int(state.range(0)));
}
BENCHMARK(ringHandoffByCount)->Arg(2)->Arg(32)->UseRealTime();

// The free buffers wait in a queue guarded by a mutex; the producer sleeps
// on the condition while the queue is empty.
class LockedPool
{
public:
    LockedPool()
    {
        for (int i = 0; i < bufferCount; ++i) {
            owned.emplace_back(new VeskBuffer(bufferSize, false));
            free.enqueue(owned.back().get());
        }
    }
    VeskBuffer* take()
    {
        QMutexLocker locker(&mutex);
        while (free.isEmpty())
            returned.wait(&mutex);
        return free.dequeue();
    }
    void giveBack(VeskBuffer* buffer)
    {
        QMutexLocker locker(&mutex);
        free.enqueue(buffer);
        returned.wakeOne();
    }

private:
    std::vector<std::unique_ptr<VeskBuffer>> owned;
    QQueue<VeskBuffer*> free;
    QMutex mutex;
    QWaitCondition returned;
};

void lockedQueueHandoff(benchmark::State& state)
{
    LockedPool pool;
    handBuffers(state, bufferCount, [&pool] { return pool.take(); }, [&pool](VeskBuffer* b) { pool.giveBack(b); });
}
BENCHMARK(lockedQueueHandoff)->UseRealTime();

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    QCoreApplication app(argc, argv);
    VeskBench::runWithPairs({
        {"copy a value holding a 64-character string", {"VeskArg", "argCopyString"},
         {"QVariant", "variantCopyString"}},
        {"build an Int value", {"VeskArg", "argBuildInt"}, {"QVariant", "variantBuildInt"}},
        {"build a String value (64 characters)", {"VeskArg", "argBuildString"},
         {"QVariant", "variantBuildString"}},
        {"read an Int", {"VeskArg", "argReadInt"}, {"QVariant", "variantReadInt"}},
        {"build an ArgList of 10 Int values", {"VeskArg", "argBuildList10"},
         {"QVariantList", "variantBuildList10"}},
        {"post an action with 3 arguments and deliver it", {"action", "actionPost"},
         {"invokeMethod by name", "invokeQueuedByName"}},
        {"post an action with 3 arguments and deliver it", {"action", "actionPost"},
         {"invokeMethod with a functor", "invokeQueuedFunctor"}},
        {"synchronous answer from another thread", {"VeskWait", "waitRoundTrip/real_time"},
         {"BlockingQueuedConnection", "blockingQueuedRoundTrip/real_time"}},
        {"hand 4 KiB buffers, 8 in rotation, to another thread", {"VeskRingBuffer", "ringHandoff/real_time"},
         {"QMutex+QWaitCondition queue", "lockedQueueHandoff/real_time"}},
    });
    benchmark::Shutdown();
    return 0;
}

#include "bench_peers.moc"
