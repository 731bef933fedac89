#include "runtime.h"
#include "sampleplugin.h"
#include "say.h"

#include <VeskData>

#include <QtCore/QThread>
#include <QtCore/QTimer>

#include <atomic>
#include <condition_variable>
#include <cstring>
#include <mutex>
#include <queue>
#include <thread>

namespace {

constexpr int framesPerSize = 8;
constexpr int ringCount = 3;

struct Frame
{
    VeskBuffer* buffer;
    int number;
    bool last;
};

// Frames on their way from the producer to the consumer.
class FrameQueue
{
public:
    void push(Frame const& frame)
    {
        std::lock_guard<std::mutex> const locker(mutex);
        frames.push(frame);
        condition.notify_one();
    }
    Frame pop()
    {
        std::unique_lock<std::mutex> locker(mutex);
        condition.wait(locker, [this] { return !frames.empty(); });
        Frame const frame = frames.front();
        frames.pop();
        return frame;
    }

private:
    std::mutex mutex;
    std::condition_variable condition;
    std::queue<Frame> frames;
};

// A ring that says when the garbage collector deletes it.
class AnnouncedRing : public VeskRingBuffer
{
public:
    explicit AnnouncedRing(std::atomic<bool>* deleted)
        : deleted(deleted)
    {
    }
    ~AnnouncedRing() override
    {
        say(QStringLiteral("  collector (%1 thread): the ring reports itself unused and is deleted")
                .arg(threadName()));
        *deleted = true;
    }

private:
    std::atomic<bool>* deleted;
};

class TimerAnnouncer : public VeskTimerReceiver
{
public:
    void timerFired(QString name) override
    {
        ++fired;
        say(QStringLiteral("  timer: \"%1\" fired in the %2 thread").arg(name, threadName()));
    }
    int fired = 0;
};

QString sizeText(QSize const& size)
{
    return QStringLiteral("%1x%2").arg(size.width()).arg(size.height());
}

class RuntimeDemo
{
public:
    explicit RuntimeDemo(std::function<void()> done)
        : done(std::move(done))
        , sizes(16.0f / 9.0f, 0)
    {
    }

    void start()
    {
        say(QStringLiteral("== Runtime helpers"));
        QStringList listed;
        for (QSize const& size : sizes.getResolutions())
            listed.append(sizeText(size));
        say(QStringLiteral("  16:9 sizes from a width of 0: %1").arg(listed.join(QStringLiteral(", "))));

        // Made here, so that it polls in this thread.
        collector = VeskGarbageCollector::getInstance();
        timer.startTimer(&announcer, 200, QStringLiteral("one-shot"));

        pluginThread.setObjectName(QStringLiteral("plugin"));
        answerer.moveToThread(&pluginThread);
        pluginThread.start();

        ring = new AnnouncedRing(&ringDeleted);
        consumer = std::thread([this] { consume(); });
        producer = std::thread([this] { produce(); });

        QObject::connect(&poll, &QTimer::timeout, [this] { step(); });
        poll.start(20);
    }

private:
    // Producer thread: steps through the sizes, resizing the ring for each.
    void produce()
    {
        int number = 0;
        QSize size = sizes.getFirstResolution();
        for (;;) {
            QSize const next = sizes.getNextResolution(size);
            long const bytes = long(size.width()) * size.height() * 3 / 2;
            ring->resize(ringCount, int(bytes)); // waits for every release
            for (int i = 0; i < framesPerSize; ++i) {
                VeskBuffer* const buffer = ring->getBuffer();
                std::memset(buffer->getData(), number & 0xff, size_t(buffer->getSize()));
                frames.push({buffer, number++, next == size && i == framesPerSize - 1});
            }
            say(QStringLiteral("  producer: %1 frames of %2, %3 bytes each, through %4 buffers")
                    .arg(framesPerSize).arg(sizeText(size)).arg(bytes).arg(ringCount));
            if (next == size)
                break;
            size = next;
        }
        frames.push({nullptr, number, true});
        say(QStringLiteral("  producer: stops with %1 of %2 buffers still in use and hands the ring "
                           "to the garbage collector").arg(ring->countUsed()).arg(ring->count()));
        collector->add(ring);
        producerDone = true;
    }

    // Consumer thread: checks every frame; holds on to the last one a while.
    void consume()
    {
        int received = 0;
        int damaged = 0;
        VeskBuffer* last = nullptr;
        for (Frame frame = frames.pop(); frame.buffer; frame = frames.pop()) {
            ++received;
            unsigned char const* const data = frame.buffer->getData();
            if (data[0] != (frame.number & 0xff) || data[frame.buffer->getSize() - 1] != data[0])
                ++damaged;
            if (frame.last)
                last = frame.buffer;
            else
                frame.buffer->release();
        }
        say(QStringLiteral("  consumer: %1 frames received, %2 damaged; keeps the last one a while")
                .arg(received).arg(damaged));
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        last->release();
    }

    // Main thread, every 20 ms, until everything is over.
    void step()
    {
        if (producerDone && producer.joinable()) {
            producer.join();
            consumer.join();
            VeskArg const answer = VeskWait::sendMessage(
                new SampleQuestion(QStringLiteral("who are you?")), &answerer);
            say(QStringLiteral("  host (%1 thread): the answer is \"%2\"").arg(threadName(), answer.toString()));
        }
        if (producer.joinable() || !ringDeleted || announcer.fired == 0)
            return;
        poll.stop();
        pluginThread.quit();
        pluginThread.wait();
        delete collector;
        auto finish = std::move(done);
        delete this;
        finish();
    }

    std::function<void()> done;
    VeskResolution const sizes;
    VeskGarbageCollector* collector = nullptr;
    AnnouncedRing* ring = nullptr;
    FrameQueue frames;
    std::thread producer;
    std::thread consumer;
    std::atomic<bool> producerDone{false};
    std::atomic<bool> ringDeleted{false};
    QThread pluginThread;
    SampleAnswerer answerer;
    TimerAnnouncer announcer;
    VeskTimer timer;
    QTimer poll;
};

} // namespace

void showRuntimeHelpers(std::function<void()> done)
{
    (new RuntimeDemo(std::move(done)))->start();
}
