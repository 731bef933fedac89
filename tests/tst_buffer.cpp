#include <VeskData>

#include "vesktest.h"

#include <QtTest/QtTest>

#include <atomic>
#include <cstring>
#include <functional>
#include <thread>

namespace {

// Runs blocking() while another thread releases buffer after a pause; true when
// blocking() returned only after that release.
bool waitsForLateRelease(VeskBuffer* buffer, std::function<void()> const& blocking)
{
    std::atomic<bool> released{false};
    std::thread consumer([&] {
        QThread::msleep(50);
        released = true;
        buffer->release();
    });
    {
        WaitLimit const limit("a wait for a released buffer", 10000);
        blocking();
    }
    bool const waited = released;
    consumer.join();
    return waited;
}

} // namespace

class TestBuffer : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void idsValidityResizeAndFlag();
    void ringRotationResizeAndRemove();
};

void TestBuffer::initTestCase()
{
    // The first buffers of the process, whichever constructors make them, are 0, 1 and 2.
    unsigned char byte = 0;
    VeskBuffer const first, second(1, &byte, false), third(1, false);
    QCOMPARE(first.getId(), 0);
    QCOMPARE(second.getId(), 1);
    QCOMPARE(third.getId(), 2);
    QVERIFY(second.isValid() && third.isValid()); // one byte is enough
}

void TestBuffer::idsValidityResizeAndFlag()
{
    // Every constructor draws the next id.
    unsigned char bytes[16] = {};
    VeskBuffer const empty, wrapped(16, bytes, false);
    VeskBuffer buffer(16, false);
    QCOMPARE(wrapped.getId(), empty.getId() + 1);
    QCOMPARE(buffer.getId(), empty.getId() + 2);

    QVERIFY(!VeskBuffer(0, bytes, false).isValid());
    QVERIFY(!VeskBuffer(16, nullptr, false).isValid());
    QVERIFY(!VeskBuffer(-1, true).isValid());
    QVERIFY(wrapped.isValid());

    unsigned char* const first = buffer.getData();
    buffer.resize(16);
    QCOMPARE(buffer.getData(), first);
    buffer.resize(64);
    // Under AddressSanitizer this fails unless 64 new bytes were allocated.
    std::memset(buffer.getData(), 0xab, 64);
    QCOMPARE(buffer.getSize(), 64L);
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

void TestBuffer::ringRotationResizeAndRemove()
{
    VeskRingBuffer ring(3, 1024);
    QList<VeskBuffer*> const handed{ring.getBuffer(), ring.getBuffer(), ring.getBuffer()};
    QCOMPARE(handed.at(1)->getId(), handed.at(0)->getId() + 1);
    QCOMPARE(handed.at(2)->getId(), handed.at(0)->getId() + 2);
    int const nextId = handed.at(2)->getId() + 1;
    QCOMPARE(ring.countUsed(), 3);
    handed.at(1)->release();
    handed.at(2)->release();
    QCOMPARE(ring.countUsed(), 1);
    QVERIFY(!ring.isUnused());
    // Buffer 0's turn: the ring waits for it although 1 and 2 are free.
    QVERIFY(waitsForLateRelease(handed.at(0), [&] { QCOMPARE(ring.getBuffer(), handed.at(0)); }));
    handed.at(0)->release();
    QVERIFY(ring.isUnused());

    ring.resize(3, 1024); // unchanged: same buffers, rotation goes on
    VeskBuffer* const kept = ring.getBuffer();
    QCOMPARE(kept, handed.at(1));
    QVERIFY(waitsForLateRelease(kept, [&] { ring.resize(3, 128); })); // rebuilt after the release
    VeskBuffer* const fresh = ring.getBuffer();
    QCOMPARE(fresh->getId(), nextId); // the first new buffer comes first
    QCOMPARE(fresh->getSize(), 128L);
    QVERIFY(waitsForLateRelease(fresh, [&] { ring.remove(); }));
    QCOMPARE(ring.count(), 3); // remove() keeps the figures
    ring.resize(2, 128); // a new count alone rebuilds too
    VeskBuffer* const rebuilt = ring.getBuffer();
    QCOMPARE(rebuilt->getId(), nextId + 3);
    rebuilt->release();
    ring.remove();

    VeskRingBuffer single(1, 8); // its one buffer comes round every time
    VeskBuffer* const only = single.getBuffer();
    only->release();
    QCOMPARE(single.getBuffer(), only);
    only->release();

    VeskRingBuffer empty;
    VeskRingBuffer none(0, 100);
    VeskRingBuffer negative(-2, 100); // the count is kept as given
    QCOMPARE(negative.count(), -2);
    for (VeskRingBuffer* r : {&ring, &empty, &none, &negative}) {
        QCOMPARE(r->getBuffer(), static_cast<VeskBuffer*>(nullptr));
        QVERIFY(r->isUnused());
        r->waitForRelese();
    }
}

QTEST_GUILESS_MAIN(TestBuffer)
#include "tst_buffer.moc"
