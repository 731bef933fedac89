#include <VeskData>

#include <QtTest/QtTest>

#include <algorithm>

namespace {

QString textOf(VeskPresence const& presence)
{
    QString out;
    {
        QDebug dbg(&out);
        dbg << presence;
    }
    return out;
}

VeskPresenceType makeType(QString const& id, quint32 priority, VeskPresence::Flag flag)
{
    VeskPresenceType type;
    type.display = id.toUpper();
    type.id = id;
    type.icon = QStringLiteral(":/icons/") + id;
    type.priority = priority;
    type.flag = flag;
    return type;
}

} // namespace

class TestPresence : public QObject
{
    Q_OBJECT

private slots:
    void queriesFollowTheType();
    void equalityIsByTypeRecord();
    void orderingIsByUnsignedPriority();
    void debugText();
};

void TestPresence::queriesFollowTheType()
{
    QCOMPARE(sizeof(VeskPresence::Flag), sizeof(qint32));
    QCOMPARE(int(VeskPresence::Offline), 5);

    VeskPresence const none;
    QVERIFY(!none.isValid());
    QVERIFY(none.getId().isNull());
    QVERIFY(none.getDisplay().isNull());
    QVERIFY(none.getIcon().isNull());
    QVERIFY(none.getDescription().isNull());
    QCOMPARE(none.getPriority(), 0u);
    QCOMPARE(int(none.getFlag()), 0);
    QVERIFY(!none.reserved);

    VeskPresence const untyped(nullptr, QStringLiteral("back soon"));
    QVERIFY(!untyped.isValid());
    QCOMPARE(untyped.getDescription(), QStringLiteral("back soon"));
    QVERIFY(untyped.getId().isNull());

    VeskPresenceType away = makeType(QStringLiteral("away"), 20, VeskPresence::Flag(3));
    VeskPresence const presence(&away, QStringLiteral("lunch"));
    QVERIFY(presence.isValid());
    QCOMPARE(presence.getId(), QStringLiteral("away"));
    QCOMPARE(presence.getDisplay(), QStringLiteral("AWAY"));
    QCOMPARE(presence.getIcon(), QStringLiteral(":/icons/away"));
    QCOMPARE(presence.getPriority(), 20u);
    QCOMPARE(int(presence.getFlag()), 3);

    // The presence reads its type live: protocol code may refine a type later.
    away.priority = 25;
    QCOMPARE(presence.getPriority(), 25u);

    VeskPresence copy;
    copy = presence;
    QCOMPARE(copy.type, &away);
    QCOMPARE(copy.getDescription(), QStringLiteral("lunch"));
}

void TestPresence::equalityIsByTypeRecord()
{
    VeskPresenceType first = makeType(QStringLiteral("online"), 50, VeskPresence::Flag(1));
    VeskPresenceType twin = first;
    QString const text = QStringLiteral("here");

    QVERIFY(VeskPresence(&first, text) == VeskPresence(&first, text));
    QVERIFY(VeskPresence(&first, text) != VeskPresence(&twin, text));
    QVERIFY(VeskPresence(&first, text) != VeskPresence(&first, QStringLiteral("there")));
    QVERIFY(VeskPresence() == VeskPresence());

    VeskPresence marked(&first, text);
    marked.reserved = &twin;
    QVERIFY(marked != VeskPresence(&first, text));
    VeskPresence const copied(marked);
    QCOMPARE(copied.reserved, static_cast<void*>(&twin));
    QVERIFY(copied == marked);
}

void TestPresence::orderingIsByUnsignedPriority()
{
    VeskPresenceType zero = makeType(QStringLiteral("offline"), 0, VeskPresence::Offline);
    VeskPresenceType low = makeType(QStringLiteral("away"), 10, VeskPresence::Flag(3));
    VeskPresenceType otherLow = makeType(QStringLiteral("na"), 10, VeskPresence::Flag(4));
    VeskPresenceType top = makeType(QStringLiteral("chat"), 4294967295u, VeskPresence::Flag(2));

    VeskPresence const invalid;
    QVERIFY(invalid < VeskPresence(&low, QString()));
    QVERIFY(!(invalid < VeskPresence(&zero, QString())));
    QVERIFY(!(VeskPresence(&zero, QString()) < invalid));
    QVERIFY(!(VeskPresence(&low, QString()) < VeskPresence(&otherLow, QString())));
    QVERIFY(!(VeskPresence(&otherLow, QString()) < VeskPresence(&low, QString())));
    QVERIFY(VeskPresence(&low, QString()) < VeskPresence(&top, QString()));
    QVERIFY(!(VeskPresence(&top, QString()) < VeskPresence(&low, QString())));

    QList<VeskPresence> list{VeskPresence(&top, QString()), VeskPresence(&low, QString()),
                             invalid, VeskPresence(&zero, QString())};
    std::stable_sort(list.begin(), list.end());
    QCOMPARE(list.at(0).type, static_cast<VeskPresenceType*>(nullptr));
    QCOMPARE(list.at(1).type, &zero);
    QCOMPARE(list.at(2).type, &low);
    QCOMPARE(list.at(3).type, &top);
}

void TestPresence::debugText()
{
    QCOMPARE(textOf(VeskPresence()), QStringLiteral("VeskPresence( invalid ) "));
    QCOMPARE(textOf(VeskPresence(nullptr, QStringLiteral("x"))),
             QStringLiteral("VeskPresence( invalid ) "));

    VeskPresenceType top = makeType(QStringLiteral("chat"), 4294967295u, VeskPresence::Flag(2));
    top.display = QStringLiteral("Free \"to\" chat");
    QCOMPARE(textOf(VeskPresence(&top, QStringLiteral("a\tb"))),
             QStringLiteral("VeskPresence(\n"
                            "\tid          : \"chat\"\n"
                            "\tdisplay     : \"Free \"to\" chat\"\n"
                            "\tpriority    : 4294967295\n"
                            "\tdescription : \"a\tb\"\n"
                            ") "));
}

QTEST_APPLESS_MAIN(TestPresence)
#include "tst_presence.moc"
