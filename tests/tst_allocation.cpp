#include <VeskData>

#include <QtTest/QtTest>

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <new>

// This program replaces the global allocation functions so that a chosen
// allocation throws std::bad_alloc, as it would when memory runs out. Only
// requests of one unusual size fail, so that nothing but the buffers' own
// byte blocks is affected.

namespace {

std::atomic<std::size_t> failingSize{0};
// How many more requests of failingSize succeed before one fails.
std::atomic<int> successesLeft{0};

void* allocate(std::size_t size)
{
    if (size != 0 && size == failingSize.load() && successesLeft.fetch_sub(1) == 0) {
        failingSize = 0;
        throw std::bad_alloc();
    }
    if (void* const block = std::malloc(size ? size : 1))
        return block;
    throw std::bad_alloc();
}

void failAllocation(std::size_t size, int successesBefore)
{
    successesLeft = successesBefore;
    failingSize = size;
}

template<typename F>
bool throwsBadAlloc(F&& f)
{
    try {
        f();
    } catch (std::bad_alloc const&) {
        return true;
    }
    return false;
}

constexpr long oddSize = 4093;

} // namespace

void* operator new(std::size_t size) { return allocate(size); }
void* operator new[](std::size_t size) { return allocate(size); }
void* operator new(std::size_t size, std::nothrow_t const&) noexcept
{
    try {
        return allocate(size);
    } catch (...) {
        return nullptr;
    }
}
void* operator new[](std::size_t size, std::nothrow_t const& tag) noexcept
{
    return operator new(size, tag);
}
void operator delete(void* block) noexcept { std::free(block); }
void operator delete[](void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
void operator delete[](void* block, std::size_t) noexcept { std::free(block); }

class TestAllocation : public QObject
{
    Q_OBJECT

private slots:
    void failedResizeLeavesAnEmptyBuffer_data();
    void failedResizeLeavesAnEmptyBuffer();
    void failedRingCreationKeepsNothing();
};

void TestAllocation::failedResizeLeavesAnEmptyBuffer_data()
{
    QTest::addColumn<bool>("owned");
    QTest::newRow("wrapped memory") << false;
    QTest::newRow("own memory") << true;
}

void TestAllocation::failedResizeLeavesAnEmptyBuffer()
{
    QFETCH(bool, owned);
    unsigned char outside[16] = {};
    VeskBuffer buffer(16, owned ? new unsigned char[16] : outside, owned);

    failAllocation(oddSize, 0);
    QVERIFY(throwsBadAlloc([&] { buffer.resize(oddSize); }));
    // A caller trusting the size must not reach past the data.
    QCOMPARE(buffer.getSize(), 0L);
    QCOMPARE(buffer.getData(), static_cast<unsigned char*>(nullptr));
    QVERIFY(!buffer.isValid());

    buffer.resize(32);
    QCOMPARE(buffer.getSize(), 32L);
    std::memset(buffer.getData(), 1, 32);
}

void TestAllocation::failedRingCreationKeepsNothing()
{
    // The third buffer fails: the two made before it must not leak (the leak
    // checker reports them at exit otherwise).
    failAllocation(oddSize, 2);
    QVERIFY(throwsBadAlloc([] { VeskRingBuffer ring(4, oddSize); }));

    // A ring that grows and fails part-way keeps exactly what it had.
    VeskRingBuffer ring(2, 64);
    failAllocation(oddSize, 1);
    QVERIFY(throwsBadAlloc([&] { ring.create(3, oddSize); }));
    QCOMPARE(ring.count(), 2);
    QCOMPARE(ring.getSize(), 64);
    for (int i = 0; i < 4; ++i) {
        VeskBuffer* const buffer = ring.getBuffer();
        QCOMPARE(buffer->getSize(), 64L);
        buffer->release();
    }

    // Every allocation failure in the constructor, whichever buffer it hits.
    for (int successes = 0; successes < 3; ++successes) {
        failAllocation(oddSize, successes);
        QVERIFY(throwsBadAlloc([] { VeskRingBuffer(3, oddSize); }));
    }
    failingSize = 0;
    QCOMPARE(VeskRingBuffer(3, oddSize).count(), 3);

    // A synchronised buffer whose mutex or wait condition cannot be made
    // gives back its bytes and the mutex (the leak checker reports them).
    failAllocation(sizeof(QMutex), 0);
    QVERIFY(throwsBadAlloc([] { VeskBuffer(oddSize, true); }));
    failAllocation(sizeof(QWaitCondition), sizeof(QWaitCondition) == sizeof(QMutex) ? 1 : 0);
    QVERIFY(throwsBadAlloc([] { VeskBuffer(oddSize, true); }));
}

QTEST_GUILESS_MAIN(TestAllocation)
#include "tst_allocation.moc"
