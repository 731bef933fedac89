#include "threads.h"

#include <VeskData>

#include <QtTest/QtTest>

#include <atomic>
#include <cstring>

namespace {

// Releases buffer from another thread after a pause; released turns true
// just before the release, so a caller that waited for it must see it set.
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

QList<int> ids(QList<VeskBuffer*> const& buffers)
{
    QList<int> result;
    for (VeskBuffer const* buffer : buffers)
        result.append(buffer->getId());
    return result;
}

} // namespace

class TestBuffer : public QObject
{
    Q_OBJECT

private slots:
    // Runs first: no buffer exists before it.
    void idsCountFromZero();
    void validityAndResize();
    void unsynchronisedInUseFlag();
    void ringHandsOutInStrictRotation();
    void ringResizeAndRemove();
    void emptyRings();
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
    QCOMPARE(VeskBuffer().getId(), 3);
}

void TestBuffer::validityAndResize()
{
    unsigned char bytes[16] = {};
    QVERIFY(!VeskBuffer().isValid());
    QVERIFY(!VeskBuffer(0, bytes, false).isValid());
    QVERIFY(!VeskBuffer(-5, bytes, false).isValid());
    QVERIFY(!VeskBuffer(16, nullptr, false).isValid());
    QVERIFY(!VeskBuffer(0, false).isValid());
    QVERIFY(!VeskBuffer(-1, true).isValid());
    QVERIFY(VeskBuffer(16, bytes, false).isValid());

    VeskBuffer owning(16, false);
    int const id = owning.getId();
    unsigned char* const first = owning.getData();
    owning.resize(16);
    QCOMPARE(owning.getData(), first);
    owning.resize(64);
    QCOMPARE(owning.getSize(), 64L);
    // Under AddressSanitizer this fails unless 64 new bytes were allocated.
    std::memset(owning.getData(), 0xab, 64);
    QCOMPARE(owning.getId(), id);

    // Same size: the given bytes are not taken over.
    unsigned char* const current = owning.getData();
    owning.resize(64, bytes, false);
    QCOMPARE(owning.getData(), current);
    // Another size: they are, and the old bytes are freed.
    owning.resize(16, bytes, false);
    QCOMPARE(owning.getData(), bytes);
    QVERIFY(owning.isValid());
    // Wrapped bytes are never reused: even the same size allocates.
    owning.resize(16);
    QVERIFY(owning.getData() != bytes);
    std::memset(owning.getData(), 0xcd, 16);
    owning.resize(32, new unsigned char[32], true);
    QCOMPARE(owning.getSize(), 32L);
}

void TestBuffer::unsynchronisedInUseFlag()
{
    VeskBuffer plain(8, false);
    QVERIFY(!plain.isInUse());
    plain.setInUse();
    QVERIFY(plain.isInUse());
    plain.waitForRelease(); // nobody could ever wake it: returns at once
    QVERIFY(plain.isInUse());
    plain.release();
    QVERIFY(!plain.isInUse());
}

void TestBuffer::ringHandsOutInStrictRotation()
{
    VeskRingBuffer ring(3, 1024);
    QCOMPARE(ring.count(), 3);
    QCOMPARE(ring.getSize(), 1024);

    QList<VeskBuffer*> handed;
    for (int i = 0; i < 3; ++i) {
        handed.append(ring.getBuffer());
        QCOMPARE(handed.last()->getSize(), 1024L);
        QVERIFY(handed.last()->isInUse());
    }
    QCOMPARE(ring.countUsed(), 3);
    QCOMPARE(QSet<VeskBuffer*>(handed.begin(), handed.end()).size(), 3);
    QVERIFY(ids(handed).at(0) < ids(handed).at(1) && ids(handed).at(1) < ids(handed).at(2));

    handed.at(1)->release();
    handed.at(2)->release();
    QCOMPARE(ring.countUsed(), 1);
    QVERIFY(!ring.isUnused());

    // Buffer 0's turn: it is still in use, so the ring waits for it even
    // though buffers 1 and 2 are free.
    {
        LateRelease consumer(handed.at(0));
        QCOMPARE(ring.getBuffer(), handed.at(0));
        QVERIFY(consumer.released);
    }
    QCOMPARE(ring.getBuffer(), handed.at(1));
    QCOMPARE(ring.countUsed(), 2);
    handed.at(0)->release();
    handed.at(1)->release();
    QVERIFY(ring.isUnused());
    QCOMPARE(ring.getBuffer(), handed.at(2));
    handed.at(2)->release();
}

void TestBuffer::ringResizeAndRemove()
{
    VeskRingBuffer ring(2, 64);
    VeskBuffer* const a = ring.getBuffer();
    VeskBuffer* const b = ring.getBuffer();
    a->release();
    b->release();
    ring.resize(2, 64);
    QCOMPARE(ring.getBuffer(), a); // same objects, rotation not restarted
    QCOMPARE(ring.getBuffer(), b);
    b->release();
    int const lastOldId = b->getId();

    // Another count: waits for every release, makes new buffers and starts
    // again with the first one.
    {
        LateRelease consumer(a);
        ring.resize(3, 128);
        QVERIFY(consumer.released);
    }
    QCOMPARE(ring.count(), 3);
    QCOMPARE(ring.getSize(), 128);
    QList<VeskBuffer*> const fresh{ring.getBuffer(), ring.getBuffer(), ring.getBuffer()};
    QVERIFY(ids(fresh).at(0) > lastOldId);
    QCOMPARE(ids(fresh), (QList<int>{ids(fresh).at(0), ids(fresh).at(0) + 1, ids(fresh).at(0) + 2}));
    QCOMPARE(fresh.at(2)->getSize(), 128L);
    fresh.at(1)->release();
    fresh.at(2)->release();

    {
        LateRelease consumer(fresh.at(0));
        ring.remove();
        QVERIFY(consumer.released);
    }
    QCOMPARE(ring.getBuffer(), static_cast<VeskBuffer*>(nullptr));
    QCOMPARE(ring.count(), 3); // remove() keeps the figures
    QVERIFY(ring.isUnused());

    // create() appends and restarts the rotation.
    ring.create(1, 8);
    VeskBuffer* const only = ring.getBuffer();
    only->release();
    QCOMPARE(ring.getBuffer(), only);
    only->release();
}

void TestBuffer::emptyRings()
{
    VeskRingBuffer empty;
    VeskRingBuffer none(0, 100);
    VeskRingBuffer negative(-2, 100);
    for (VeskRingBuffer* ring : {&empty, &none, &negative}) {
        QCOMPARE(ring->count(), 0);
        QCOMPARE(ring->countUsed(), 0);
        QVERIFY(ring->isUnused());
        QCOMPARE(ring->getBuffer(), static_cast<VeskBuffer*>(nullptr));
        ring->waitForRelese();
    }
    QCOMPARE(empty.getSize(), 0);
    QCOMPARE(none.getSize(), 100);
}

QTEST_GUILESS_MAIN(TestBuffer)
#include "tst_buffer.moc"
