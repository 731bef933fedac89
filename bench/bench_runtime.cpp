// Cross-thread costs of the runtime helpers: a VeskWait::sendMessage round
// trip against Qt's blocking queued invocation, and buffers handed from a
// producer thread to a consumer thread through a VeskRingBuffer.

#include <VeskData>

#include <QtCore/QCoreApplication>
#include <QtCore/QThread>

#include <benchmark/benchmark.h>

#include <atomic>
#include <thread>
#include <vector>

namespace {

// Answers wait events with the question doubled; also offers the same work
// as a plain method for Qt's own blocking invocation.
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

void sendMessageRoundTrip(benchmark::State& state)
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
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(sendMessageRoundTrip)->UseRealTime();

void blockingQueuedInvocation(benchmark::State& state)
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
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(blockingQueuedInvocation)->UseRealTime();

// Single producer, single consumer queue of buffer pointers. It never holds
// more than the ring's count and the final null, since the ring hands out no
// more buffers than it has until some are released; one cell stays empty to
// tell a full queue from an empty one.
class Handoff
{
public:
    explicit Handoff(int ringCount)
        : cells(size_t(ringCount) + 2)
    {
    }
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

// Producer in the benchmark's thread, consumer in another: every iteration
// takes the next buffer in rotation (waiting for its release when the
// consumer lags), writes into it and hands it over; the consumer reads it and
// releases it.
void ringHandoff(benchmark::State& state)
{
    int const count = int(state.range(0));
    long const size = 4096;
    VeskRingBuffer ring(count, int(size));
    Handoff handoff(count);
    std::atomic<long> checksum{0};

    std::thread consumer([&] {
        long sum = 0;
        for (VeskBuffer* buffer = handoff.pop(); buffer; buffer = handoff.pop()) {
            sum += buffer->getData()[size - 1];
            buffer->release();
        }
        checksum = sum;
    });
    unsigned char frame = 0;
    for (auto _ : state) {
        VeskBuffer* const buffer = ring.getBuffer();
        buffer->getData()[0] = ++frame;
        buffer->getData()[size - 1] = frame;
        handoff.push(buffer);
    }
    handoff.push(nullptr);
    consumer.join();
    benchmark::DoNotOptimize(checksum.load());
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(ringHandoff)->Arg(2)->Arg(8)->Arg(32)->UseRealTime();

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    QCoreApplication app(argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
