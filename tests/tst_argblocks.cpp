// Argument values keep their blocks in a cache per thread. These tests move
// values between threads, let threads end while their values live on, and
// make the heap fail, checking that every value keeps its contents, that
// every record goes when its last handle goes, and that a failed build
// throws the library's out-of-memory exception.

#include <VeskData>

#include <QtTest/QtTest>

#include "vesktest.h"

#include <new>
#include <thread>

#include "vesktestnothrow.h"

namespace {

// One value of each block size in use: a scalar, a string, a list, a record
// that fills most of a cached block and one too big for it.
QList<VeskArg> sampleValues(QString const& text)
{
    VeskVideoClip clip;
    clip.value2 = 2;
    clip.text = text;
    VeskService const service(text, QStringLiteral("b"), QStringLiteral("c"), QStringLiteral("p"),
                              VeskPluginAction());
    return {VeskArg(42), VeskArg(text), VeskArg(QList<VeskArg>{VeskArg(1), VeskArg(text)}),
            VeskArg(clip), VeskArg(service)};
}

void checkSamples(QList<VeskArg> const& values, QString const& text)
{
    QCOMPARE(values.size(), 5);
    QCOMPARE(values.at(0).toInt(), 42);
    QCOMPARE(values.at(1).toString(), text);
    QCOMPARE(values.at(2).toArgList().at(1).toString(), text);
    QCOMPARE(values.at(3).toVideoClip().text, text);
    QCOMPARE(values.at(3).toVideoClip().value2, 2u);
    QCOMPARE(values.at(4).toService().name, text);
}

} // namespace

class TestArgBlocks : public QObject
{
    Q_OBJECT

private slots:
    void valuesOutliveTheirThread();
    void handlesDroppedInSeveralThreads();
    void failedBuildThrows();
};

void TestArgBlocks::valuesOutliveTheirThread()
{
    // Built at run time: copies of a literal's text are not counted.
    QString const text = QStringLiteral("from another thread ").repeated(2);
    QList<VeskArg> values;
    std::thread([&] {
        // Blocks freed here first, then taken again from the thread's cache.
        for (int round = 0; round < 3; ++round)
            values = sampleValues(text);
    }).join();
    checkSamples(values, text);

    // The blocks move into this thread's cache and are handed out again:
    // the new values must not see anything of the old ones.
    values.clear();
    QString const other = QStringLiteral("built here");
    QList<VeskArg> const again = sampleValues(other);
    checkSamples(again, other);

    // Every holder went with its value: nothing shares the string any more.
    QVERIFY(text.isDetached());
}

void TestArgBlocks::handlesDroppedInSeveralThreads()
{
    QString const text = QStringLiteral("shared by three threads ").repeated(2);
    constexpr int count = 2000;
    QList<VeskArg> mine;
    for (int i = 0; i < count; ++i)
        mine.append(i % 2 ? VeskArg(text) : VeskArg(QList<VeskArg>{VeskArg(text)}));

    // Two threads copy every value and drop the copies while this one drops
    // its own handles, so either thread may be the one that frees a record.
    QList<VeskArg> first = mine;
    QList<VeskArg> second = mine;
    auto dropAll = [](QList<VeskArg>* handles) {
        while (!handles->isEmpty())
            handles->removeLast();
    };
    std::thread one(dropAll, &first);
    std::thread two(dropAll, &second);
    mine.clear();
    one.join();
    two.join();

    QVERIFY(first.isEmpty());
    QVERIFY(second.isEmpty());
    QVERIFY(text.isDetached());
}

void TestArgBlocks::failedBuildThrows()
{
    QString const outOfMemory = QString::fromUtf8(vesk_oom(QStringLiteral("VeskArg")).what());
    QString scalarText;
    QString recordText;
    int builtAfterwards = 0;
    // A new thread has no cached blocks, so its first value asks the heap.
    std::thread([&] {
        allocationsBeforeFailure = 0;
        scalarText = thrownText([] { VeskArg const value(1); });
        allocationsBeforeFailure = 0;
        recordText = thrownText([] { VeskArg const value{VeskService()}; });
        builtAfterwards = VeskArg(5).toInt();
    }).join();
    QCOMPARE(scalarText, outOfMemory);
    QCOMPARE(recordText, outOfMemory);
    QCOMPARE(builtAfterwards, 5);
}

QTEST_APPLESS_MAIN(TestArgBlocks)
#include "tst_argblocks.moc"
