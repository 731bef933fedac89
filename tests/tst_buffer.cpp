#include <VeskData>

#include <QtTest/QtTest>

#include <atomic>
#include <cstring>
#include <thread>

namespace {

// Releases a buffer from another thread after a pause. released is set just
// before the release, so whoever waited for the release must see it set.
class LateRelease
{
public:
    explicit LateRelease(VeskBuffer* buffer)
        : thread([this, buffer] {
            QThread::msleep(50);
            released = true;
            buffer->release();
        })
    {
    }
    ~LateRelease() { thread.join(); }

    std::atomic<bool> released{false};

private:
    std::thread thread;
};

} // namespace

class TestBuffer : public QObject
{
    Q_OBJECT

private slots:
    void idsCountFromZero(); // first: no buffer exists before it
    void validityResizeAndFlag();
    void ringHandsOutInStrictRotation();
    void ringResizeRemoveAndEmptyRings();
};

void TestBuffer::idsCountFromZero()
{
    unsigned char bytes[4] = {};
    VeskBuffer const empty;
    VeskBuffer const wrapped(4, bytes, false);
    VeskBuffer const owned(8, true);
    QCOMPARE(empty.getId(), 0);
    QCOMPARE(wrapped.getId(), 1);
    QCOMPARE(owned.getId(), 2);
}

void TestBuffer::validityResizeAndFlag()
{
    unsigned char bytes[16] = {};
    QVERIFY(!VeskBuffer().isValid());
    QVERIFY(!VeskBuffer(0, bytes, false).isValid());
    QVERIFY(!VeskBuffer(-5, bytes, false).isValid());
    QVERIFY(!VeskBuffer(16, nullptr, false).isValid());
    QVERIFY(!VeskBuffer(-1, true).isValid());
    QVERIFY(VeskBuffer(16, bytes, false).isValid());

    VeskBuffer buffer(16, false);
    int const id = buffer.getId();
    unsigned char* const first = buffer.getData();
    buffer.resize(16);
    QCOMPARE(buffer.getData(), first);
    buffer.resize(64);
    // Under AddressSanitizer this fails unless 64 new bytes were allocated.
    std::memset(buffer.getData(), 0xab, 64);
    QCOMPARE(buffer.getSize(), 64L);
    QCOMPARE(buffer.getId(), id);
    unsigned char* const current = buffer.getData();
    buffer.resize(64, bytes, false); // same size: the given bytes are not taken
    QCOMPARE(buffer.getData(), current);
    buffer.resize(16, bytes, false);
    QCOMPARE(buffer.getData(), bytes);
    buffer.resize(16); // wrapped bytes are never reused, even for the same size
    QVERIFY(buffer.getData() != bytes);
    std::memset(buffer.getData(), 0xcd, 16);

    // Not synchronised: nobody could wake a waiter, so waiting returns at once.
    buffer.setInUse();
    buffer.waitForRelease();
    QVERIFY(buffer.isInUse());
    buffer.release();
    QVERIFY(!buffer.isInUse());
}

void TestBuffer::ringHandsOutInStrictRotation()
{
    VeskRingBuffer ring(3, 1024);
    QList<VeskBuffer*> const handed{ring.getBuffer(), ring.getBuffer(), ring.getBuffer()};
    QCOMPARE(QSet<VeskBuffer*>(handed.begin(), handed.end()).size(), 3);
    QVERIFY(handed.at(0)->getId() < handed.at(1)->getId());
    QVERIFY(handed.at(1)->getId() < handed.at(2)->getId());
    QCOMPARE(handed.at(2)->getSize(), 1024L);
    QCOMPARE(ring.countUsed(), 3);

    handed.at(1)->release();
    handed.at(2)->release();
    QCOMPARE(ring.countUsed(), 1);
    QVERIFY(!ring.isUnused());
    {
        // Buffer 0's turn: the ring waits for it although 1 and 2 are free.
        LateRelease consumer(handed.at(0));
        QCOMPARE(ring.getBuffer(), handed.at(0));
        QVERIFY(consumer.released);
    }
    QCOMPARE(ring.getBuffer(), handed.at(1));
    handed.at(0)->release();
    handed.at(1)->release();
    QVERIFY(ring.isUnused());
}

void TestBuffer::ringResizeRemoveAndEmptyRings()
{
    VeskRingBuffer ring(2, 64);
    VeskBuffer* const a = ring.getBuffer();
    VeskBuffer* const b = ring.getBuffer();
    a->release();
    b->release();
    ring.resize(2, 64); // unchanged: same buffers, rotation goes on
    QCOMPARE(ring.getBuffer(), a);
    int const lastOldId = b->getId();

    {
        LateRelease consumer(a);
        ring.resize(3, 128); // waits for the release, then rebuilds
        QVERIFY(consumer.released);
    }
    QCOMPARE(ring.count(), 3);
    QCOMPARE(ring.getSize(), 128);
    VeskBuffer* const fresh = ring.getBuffer();
    QCOMPARE(fresh->getId(), lastOldId + 1); // the first new buffer comes first
    QCOMPARE(fresh->getSize(), 128L);
    {
        LateRelease consumer(fresh);
        ring.remove();
        QVERIFY(consumer.released);
    }
    QCOMPARE(ring.count(), 3); // remove() keeps the figures

    VeskRingBuffer empty;
    VeskRingBuffer none(0, 100);
    for (VeskRingBuffer* r : {&ring, &empty, &none}) {
        QCOMPARE(r->getBuffer(), static_cast<VeskBuffer*>(nullptr));
        QCOMPARE(r->countUsed(), 0);
        QVERIFY(r->isUnused());
        r->waitForRelese();
    }
    QCOMPARE(empty.count(), 0);
    QCOMPARE(empty.getSize(), 0);
}

QTEST_GUILESS_MAIN(TestBuffer)
#include "tst_buffer.moc"
