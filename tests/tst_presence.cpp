#include <VeskData>

#include <QtTest/QtTest>

#include "vesktest.h"

namespace {

VeskPresenceType makeType(QString const& id, quint32 priority)
{
    VeskPresenceType type;
    type.id = id;
    type.priority = priority;
    return type;
}

} // namespace

class TestPresence : public QObject
{
    Q_OBJECT

private slots:
    void equalityAndOrdering();
    void debugText();
};

void TestPresence::equalityAndOrdering()
{
    VeskPresenceType first = makeType(QStringLiteral("online"), 10);
    VeskPresenceType twin = first;
    VeskPresenceType zero = makeType(QStringLiteral("offline"), 0);
    VeskPresenceType top = makeType(QStringLiteral("chat"), 4294967295u);
    QString const text = QStringLiteral("here");

    // Same type record by address, same reserved word, equal descriptions.
    QVERIFY(VeskPresence(&first, text) == VeskPresence(&first, text));
    QVERIFY(VeskPresence(&first, text) != VeskPresence(&twin, text));
    QVERIFY(VeskPresence(&first, text) != VeskPresence(&first, QStringLiteral("there")));
    VeskPresence marked(&first, text);
    marked.reserved = &twin;
    QVERIFY(marked != VeskPresence(&first, text));
    QVERIFY(VeskPresence(marked) == marked);

    // Priority alone ranks, unsigned, and read from the type when asked.
    VeskPresence const invalid;
    QVERIFY(invalid < VeskPresence(&first, QString()));
    QVERIFY(!(invalid < VeskPresence(&zero, QString())) && !(VeskPresence(&zero, QString()) < invalid));
    QVERIFY(VeskPresence(&first, QString()) < VeskPresence(&top, QString()));
    VeskPresence const live(&twin, QString());
    twin.priority = 11;
    QVERIFY(VeskPresence(&first, QString()) < live);
    QCOMPARE(live.getPriority(), 11u);

    // Everything but the description is read from the type; without one it is empty.
    top.display = QStringLiteral("Chatty");
    top.icon = QStringLiteral("chat.png");
    top.flag = VeskPresence::Flag(5);
    VeskPresence const chatting(&top, text);
    QCOMPARE((QStringList{chatting.getId(), chatting.getDisplay(), chatting.getIcon(), chatting.getDescription()}),
             (QStringList{QStringLiteral("chat"), QStringLiteral("Chatty"), QStringLiteral("chat.png"), text}));
    QCOMPARE(chatting.getFlag(), VeskPresence::Flag(5));
    VeskPresence const untyped(nullptr, text);
    QVERIFY(untyped.getId().isNull() && untyped.getDisplay().isNull() && untyped.getIcon().isNull());
    QVERIFY(untyped.getPriority() == 0 && untyped.getFlag() == VeskPresence::Flag(0));
    QCOMPARE(untyped.getDescription(), text);
}

void TestPresence::debugText()
{
    QCOMPARE(::debugText(VeskPresence(nullptr, QStringLiteral("x"))), QStringLiteral("VeskPresence( invalid ) "));

    VeskPresenceType top = makeType(QStringLiteral("chat"), 4294967295u);
    top.display = QStringLiteral("Free \"to\" chat");
    QCOMPARE(::debugText(VeskPresence(&top, QStringLiteral("a\tb"))),
             QStringLiteral("VeskPresence(\n"
                            "\tid          : \"chat\"\n"
                            "\tdisplay     : \"Free \"to\" chat\"\n"
                            "\tpriority    : 4294967295\n"
                            "\tdescription : \"a\tb\"\n"
                            ") "));
}

QTEST_APPLESS_MAIN(TestPresence)
#include "tst_presence.moc"
