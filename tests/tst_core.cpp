#include <VeskCore>

#include <QtTest/QtTest>

class TestCore : public QObject
{
    Q_OBJECT

private slots:
    void exceptionTexts();
    void waitEventKeepsItsWaitObject();
};

void TestCore::exceptionTexts()
{
    std::runtime_error const conversion =
        vesk_conversion(QStringLiteral("VeskArg"), QStringLiteral("VeskArg::String"),
                        QStringLiteral("VeskArg::Int"));
    QCOMPARE(QString::fromUtf8(conversion.what()),
             QStringLiteral("VeskArg: cannot convert VeskArg::String to VeskArg::Int"));

    QCOMPARE(QString::fromUtf8(vesk_oom(QStringLiteral("VeskArg")).what()),
             QStringLiteral("VeskArg: out of memory"));

    // The texts are UTF-8, so translated messages survive the round trip.
    QString const message = QStringLiteral("Wert ung\u00fcltig \u2013 \u00e9t\u00e9");
    std::runtime_error const invalid =
        vesk_invalid_value(QStringLiteral("VeskField::spinBox"), -3, message);
    QCOMPARE(QString::fromUtf8(invalid.what()),
             QStringLiteral("VeskField::spinBox: argument -3: ") + message);
}

void TestCore::waitEventKeepsItsWaitObject()
{
    auto* const marker = reinterpret_cast<VeskWait*>(quintptr(0x1234));
    {
        VeskWaitEvent const event(marker);
        QCOMPARE(int(event.type()), int(QEvent::User) + 10);
        QCOMPARE(event.waitObject, marker);
    }
    VeskWaitEvent const custom(nullptr, QEvent::Type(QEvent::User + 77));
    QCOMPARE(int(custom.type()), int(QEvent::User) + 77);
    QVERIFY(!custom.waitObject);
}

QTEST_APPLESS_MAIN(TestCore)
#include "tst_core.moc"
