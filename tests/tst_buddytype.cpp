#include <VeskData>

#include <QtTest/QtTest>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/asan_interface.h>
#define VESK_HAVE_ASAN 1
#endif

namespace {

template<typename T>
QString textOf(T const& value)
{
    QString out;
    {
        QDebug dbg(&out);
        dbg << value;
    }
    return out;
}

QString pointerText(void const* pointer)
{
    return QStringLiteral("0x") + QString::number(reinterpret_cast<quintptr>(pointer), 16);
}

VeskPresenceType* newPresenceType(QString const& id, quint32 priority, qint32 flag)
{
    auto* type = new VeskPresenceType;
    type->id = id;
    type->display = id;
    type->priority = priority;
    type->flag = VeskPresence::Flag(flag);
    return type;
}

} // namespace

class TestBuddyType : public QObject
{
    Q_OBJECT

private slots:
    void invalidKindAnswersWithFallbacks();
    void subscriptionLookup();
    void presenceLookupByFlag();
    void sharedRecordAndOwnedTypes();
    void resources();
    void debugTexts();
};

void TestBuddyType::invalidKindAnswersWithFallbacks()
{
    VeskBuddyType const kind;
    QVERIFY(!kind.isValid());
    QVERIFY(!kind.data());
    QVERIFY(kind.getId().isNull());
    QVERIFY(kind.getDisplay().isNull());
    QVERIFY(kind.getExtraInfoFields().isEmpty());

    VeskSubscriptionType const missing = kind.getSubscriptionWithId(QStringLiteral("both"));
    QVERIFY(!missing.isValid());
    QVERIFY(missing.getId().isEmpty() && !missing.getId().isNull());
    QVERIFY(missing.getDisplay().isEmpty() && !missing.getDisplay().isNull());
    QVERIFY(missing.getIcon().isNull());
    QCOMPARE(missing.getPriority(), 0u);
}

void TestBuddyType::subscriptionLookup()
{
    VeskBuddyType const kind(QStringLiteral("xmpp"), QStringLiteral("Jabber"));
    QCOMPARE(kind.getId(), QStringLiteral("xmpp"));
    QCOMPARE(kind.getDisplay(), QStringLiteral("Jabber"));
    QList<VeskSubscriptionType*>& subscriptions = kind.data()->subscriptions;
    subscriptions.append(new VeskSubscriptionType(QStringLiteral("None"), QStringLiteral("none"), 1,
                                                  QStringLiteral("none.png")));
    subscriptions.append(new VeskSubscriptionType(QStringLiteral("Both"), QStringLiteral("both"), 3,
                                                  QStringLiteral("both.png")));
    subscriptions.append(new VeskSubscriptionType(QStringLiteral("Both again"), QStringLiteral("both"),
                                                  4, QString()));

    VeskSubscriptionType const both = kind.getSubscriptionWithId(QStringLiteral("both"));
    QCOMPARE(both.getDisplay(), QStringLiteral("Both"));
    QCOMPARE(both.getPriority(), 3u);
    QCOMPARE(both.getIcon(), QStringLiteral("both.png"));
    QVERIFY(both.isValid());

    QVERIFY(!kind.getSubscriptionWithId(QStringLiteral("Both")).isValid());
    QVERIFY(!kind.getSubscriptionWithId(QString()).isValid());

    QVERIFY(!VeskSubscriptionType(QString(), QStringLiteral("to"), 1, QString()).isValid());
    QVERIFY(!VeskSubscriptionType(QStringLiteral("To"), QString(), 1, QString()).isValid());
    QVERIFY(VeskSubscriptionType(QStringLiteral("To"), QStringLiteral("to"), 0, QString()).isValid());
}

void TestBuddyType::presenceLookupByFlag()
{
    VeskBuddyType const kind(QStringLiteral("icq"), QStringLiteral("ICQ"));
    VeskBuddyTypePrivate* const record = kind.data();
    VeskPresenceType* const online = newPresenceType(QStringLiteral("online"), 10, 1);
    VeskPresenceType* const offline = newPresenceType(QStringLiteral("offline"), 0, VeskPresence::Offline);
    record->presences.insert(online->id, online);
    record->presences.insert(offline->id, offline);
    record->presenceList << online << offline;

    QCOMPARE(record->getPresenceWithFlag(VeskPresence::Offline), offline);
    QCOMPARE(record->getPresenceWithFlag(VeskPresence::Flag(1)), online);
    QCOMPARE(record->getPresenceWithFlag(VeskPresence::Flag(7)), static_cast<VeskPresenceType*>(nullptr));
}

void TestBuddyType::sharedRecordAndOwnedTypes()
{
    VeskBuddyType kind(QStringLiteral("irc"), QStringLiteral("IRC"));
    VeskBuddyType copy(kind);
    QCOMPARE(copy.data(), kind.data());
    QCOMPARE(kind.data()->ref.loadRelaxed(), 2);
    kind.data()->extraInfoFields.append(
        VeskField::lineEdit(QStringLiteral("Nick"), QStringLiteral("nick"), QString(), 16, QString()));
    QCOMPARE(copy.getExtraInfoFields().size(), 1);
    QCOMPARE(copy.getExtraInfoFields().at(0).getId(), QStringLiteral("nick"));

    copy = kind;
    QCOMPARE(kind.data()->ref.loadRelaxed(), 2);

    // The same presence type filed under two ids and the same subscription
    // type listed twice are each deleted once (a second delete would abort
    // the sanitizer builds).
    VeskBuddyType other(QStringLiteral("sip"), QStringLiteral("SIP"));
    VeskPresenceType* const busy = newPresenceType(QStringLiteral("busy"), 5, 6);
    auto* const subscription = new VeskSubscriptionType(QStringLiteral("To"), QStringLiteral("to"), 1,
                                                        QString());
    other.data()->presences.insert(QStringLiteral("busy"), busy);
    other.data()->presences.insert(QStringLiteral("dnd"), busy);
    other.data()->subscriptions << subscription << subscription;

    VeskBuddyType holder(other);
    other = VeskBuddyType();
    QVERIFY(!other.isValid());
    QCOMPARE(busy->id, QStringLiteral("busy")); // still owned by holder's record
    holder = kind; // drops the last reference to the SIP kind
    QCOMPARE(kind.data()->ref.loadRelaxed(), 3);
#ifdef VESK_HAVE_ASAN
    QVERIFY(__asan_address_is_poisoned(busy));
    QVERIFY(__asan_address_is_poisoned(subscription));
#endif
}

void TestBuddyType::resources()
{
    VeskBuddyResource const none;
    QVERIFY(!none.isValid());
    QCOMPARE(none.getPriority(), -1);
    QVERIFY(none.getName().isNull());
    QVERIFY(none.getIcon().isNull());
    QVERIFY(!none.getPresence().isValid());

    VeskBuddyResourceType mobile(QStringLiteral("phone"), QStringLiteral("phone.png"));
    VeskBuddyResource const bare(&mobile, VeskPresence());
    QVERIFY(bare.isValid());
    QCOMPARE(bare.getPriority(), 0);
    QCOMPARE(bare.getName(), QStringLiteral("phone"));
    QCOMPARE(bare.getIcon(), QStringLiteral("phone.png"));

    VeskPresenceType top;
    top.priority = 4294967295u;
    VeskPresenceType some;
    some.priority = 12;
    VeskBuddyResource const high(&mobile, VeskPresence(&top, QString()));
    QCOMPARE(high.getPriority(), -1); // read as a signed number
    VeskBuddyResource const mid(&mobile, VeskPresence(&some, QStringLiteral("x")));
    QCOMPARE(mid.getPriority(), 12);
    QCOMPARE(mid.getPresence().getDescription(), QStringLiteral("x"));

    QVERIFY(high == mid);
    VeskBuddyResourceType desktop(QStringLiteral("phone"), QStringLiteral("phone.png"));
    QVERIFY(!(VeskBuddyResource(&desktop, VeskPresence()) == bare));
}

void TestBuddyType::debugTexts()
{
    VeskBuddyType kind(QStringLiteral("xmpp"), QStringLiteral("Jab\"ber"));
    VeskBuddyType invalid;
    QString const kindText = pointerText(&kind) + QStringLiteral(" VeskBuddyType(\"xmpp\", \"Jab\"ber\") ");
    QCOMPARE(textOf(&kind), kindText);
    QCOMPARE(textOf(&invalid), pointerText(&invalid) + QStringLiteral(" VeskBuddyType(\"\", \"\") "));

    QCOMPARE(textOf(QList<VeskBuddyType*>()),
             QStringLiteral("QList<VeskBuddyType *> (\n) element count: 0\n "));
    QCOMPARE(textOf(QList<VeskBuddyType*>{&kind, &invalid}),
             QStringLiteral("QList<VeskBuddyType *> (\n\t") + kindText + QStringLiteral("\n \t")
                 + textOf(&invalid) + QStringLiteral("\n ) element count: 2\n "));
}

QTEST_APPLESS_MAIN(TestBuddyType)
#include "tst_buddytype.moc"
