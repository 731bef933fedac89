#include "snippets.h"

#include <VeskData>

#include <QtCore/QEventLoop>
#include <QtCore/QTimer>

#include <atomic>
#include <cstring>
#include <mutex>
#include <queue>
#include <thread>

namespace {

// Full buffers on their way from the producer to the consumer.
class Queue
{
public:
    void push(VeskBuffer* buffer)
    {
        std::lock_guard<std::mutex> const locker(mutex);
        buffers.push(buffer);
    }
    VeskBuffer* pop()
    {
        std::lock_guard<std::mutex> const locker(mutex);
        if (buffers.empty())
            return nullptr;
        VeskBuffer* const buffer = buffers.front();
        buffers.pop();
        return buffer;
    }

private:
    std::mutex mutex;
    std::queue<VeskBuffer*> buffers;
};

// A ring that reports its own deletion.
class WatchedRing : public VeskRingBuffer
{
public:
    WatchedRing(int count, int size, std::atomic<bool>* deleted)
        : VeskRingBuffer(count, size)
        , deleted(deleted)
    {
    }
    ~WatchedRing() override { *deleted = true; }

private:
    std::atomic<bool>* deleted;
};

} // namespace

bool mediaGuide()
{
    constexpr int frames = 20;
    std::atomic<bool> ringDeleted{false};
    std::atomic<int> damaged{0};
    Queue queue;
    VeskGarbageCollector* const collector = VeskGarbageCollector::getInstance();
    auto* const ring = new WatchedRing(3, 640 * 480, &ringDeleted);

    //! [producer]
    // One producer thread takes the buffers in strict rotation: getBuffer()
    // waits until the consumer has released the buffer whose turn it is.
    std::thread producer([&] {
        for (int i = 0; i < frames; ++i) {
            VeskBuffer* const buffer = ring->getBuffer(); // marked in use
            std::memset(buffer->getData(), i, size_t(buffer->getSize()));
            queue.push(buffer);
        }
        // The consumer may still hold buffers: the collector deletes the
        // ring once every one of them is released.
        collector->add(ring);
    });
    //! [producer]

    //! [consumer]
    std::thread consumer([&] {
        for (int i = 0; i < frames;) {
            VeskBuffer* const buffer = queue.pop();
            if (!buffer) {
                std::this_thread::yield();
                continue;
            }
            unsigned char const* const data = buffer->getData();
            if (data[0] != i || data[buffer->getSize() - 1] != i)
                ++damaged;
            buffer->release(); // from any thread; wakes a waiting producer
            ++i;
        }
    });
    //! [consumer]

    producer.join();
    consumer.join();
    bool ok = expect(damaged == 0, "a frame was overwritten before it was released");

    // The collector works in this thread's event loop.
    QEventLoop loop;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &loop, [&] {
        if (ringDeleted)
            loop.quit();
    });
    QTimer::singleShot(10000, &loop, &QEventLoop::quit);
    poll.start(10);
    loop.exec();
    ok &= expect(ringDeleted, "the collector never deleted the ring");
    collector->remove();
    delete collector;
    return ok;
}
