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

VeskPresenceType makeType(QString const& id, quint32 priority)
{
    VeskPresenceType type;
    type.display = id.toUpper();
    type.id = id;
    type.icon = id + QStringLiteral(".png");
    type.priority = priority;
    type.flag = VeskPresence::Flag(3);
    return type;
}

} // namespace

class TestPresence : public QObject
{
    Q_OBJECT

private slots:
    void queriesFollowTheType();
    void equalityAndOrdering();
    void debugText();
};

void TestPresence::queriesFollowTheType()
{
    VeskPresence const untyped(nullptr, QStringLiteral("back soon"));
    QVERIFY(!untyped.isValid());
    QCOMPARE(untyped.getDescription(), QStringLiteral("back soon"));
    QVERIFY(untyped.getId().isNull() && untyped.getDisplay().isNull() && untyped.getIcon().isNull());
    QCOMPARE(untyped.getPriority(), 0u);
    QCOMPARE(int(untyped.getFlag()), 0);

    VeskPresenceType away = makeType(QStringLiteral("away"), 20);
    VeskPresence const presence(&away, QStringLiteral("lunch"));
    QVERIFY(presence.isValid());
    QCOMPARE(presence.getId(), QStringLiteral("away"));
    QCOMPARE(presence.getDisplay(), QStringLiteral("AWAY"));
    QCOMPARE(presence.getIcon(), QStringLiteral("away.png"));
    QCOMPARE(int(presence.getFlag()), 3);
    // Read live from the type, which protocol code may refine later.
    away.priority = 25;
    QCOMPARE(presence.getPriority(), 25u);
}

void TestPresence::equalityAndOrdering()
{
    VeskPresenceType first = makeType(QStringLiteral("online"), 10);
    VeskPresenceType twin = first;
    VeskPresenceType zero = makeType(QStringLiteral("offline"), 0);
    VeskPresenceType top = makeType(QStringLiteral("chat"), 4294967295u);
    QString const text = QStringLiteral("here");

    QVERIFY(VeskPresence(&first, text) == VeskPresence(&first, text));
    QVERIFY(VeskPresence(&first, text) != VeskPresence(&twin, text));
    QVERIFY(VeskPresence(&first, text) != VeskPresence(&first, QStringLiteral("there")));
    VeskPresence marked(&first, text);
    marked.reserved = &twin;
    QVERIFY(marked != VeskPresence(&first, text));
    QVERIFY(VeskPresence(marked) == marked);

    VeskPresence const invalid;
    QVERIFY(invalid < VeskPresence(&first, QString()));
    QVERIFY(!(invalid < VeskPresence(&zero, QString())));
    QVERIFY(!(VeskPresence(&zero, QString()) < invalid));
    QVERIFY(!(VeskPresence(&first, QString()) < VeskPresence(&twin, QString())));
    QVERIFY(VeskPresence(&first, QString()) < VeskPresence(&top, QString()));
    QVERIFY(!(VeskPresence(&top, QString()) < VeskPresence(&first, QString())));

    QList<VeskPresence> list{VeskPresence(&top, QString()), VeskPresence(&first, QString()), invalid,
                             VeskPresence(&zero, QString())};
    std::stable_sort(list.begin(), list.end());
    QCOMPARE(list.at(0).type, static_cast<VeskPresenceType*>(nullptr));
    QCOMPARE(list.at(1).type, &zero);
    QCOMPARE(list.at(3).type, &top);
}

void TestPresence::debugText()
{
    QCOMPARE(textOf(VeskPresence(nullptr, QStringLiteral("x"))), QStringLiteral("VeskPresence( invalid ) "));

    VeskPresenceType top = makeType(QStringLiteral("chat"), 4294967295u);
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
