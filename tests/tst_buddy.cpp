#include <VeskData>

#include <QtTest/QtTest>

#include <new>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/asan_interface.h>
#define VESK_HAVE_ASAN 1
#endif

namespace {

// Lets this many non-throwing allocations through, fails the next one and
// disarms; -1 leaves every allocation alone. The library allocates its
// records with new (std::nothrow), which resolves to this replacement.
int allocationsBeforeFailure = -1;

} // namespace

void* operator new(std::size_t size, std::nothrow_t const&) noexcept
{
    if (allocationsBeforeFailure == 0) {
        allocationsBeforeFailure = -1;
        return nullptr;
    }
    if (allocationsBeforeFailure > 0)
        --allocationsBeforeFailure;
    try {
        return ::operator new(size);
    } catch (std::bad_alloc const&) {
        return nullptr;
    }
}

namespace {

// Reads the shared record behind a handle, which the public interface keeps
// to itself.
struct Peek : VeskBuddy
{
    explicit Peek(VeskBuddy const& buddy) : VeskBuddy(buddy) {}
    // Handles of the entry, not counting this one.
    static int refs(VeskBuddy const& buddy)
    {
        Peek const peek(buddy);
        return peek.d ? peek.d->ref.loadRelaxed() - 1 : 0;
    }
};

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

VeskPresenceType presenceType(quint32 priority, QString const& icon = QString())
{
    VeskPresenceType type;
    type.id = QStringLiteral("p%1").arg(priority);
    type.priority = priority;
    type.icon = icon;
    return type;
}

VeskPresenceType* newPresenceType(QString const& id, qint32 flag)
{
    auto* type = new VeskPresenceType;
    type->id = id;
    type->flag = VeskPresence::Flag(flag);
    return type;
}

VeskBuddyContact contact(QString const& id, QString const& display = QString(),
                         VeskAccountConnection* account = nullptr)
{
    return VeskBuddyContact(account, id, display, VeskBuddyType(), VeskPresence(),
                            VeskSubscriptionType());
}

} // namespace

class TestBuddy : public QObject
{
    Q_OBJECT

private slots:
    void kindLookups();
    void kindRecordOwnsItsTypes();
    void resources();
    void kindDebugTexts();
    void invalidHandlesAnswerWithFallbacks();
    void handlesShareOneRecord();
    void conversionsCheckTheKind();
    void lastHandleDestroysTheKindRecord();
    void failedAllocationLeavesAnInvalidHandle();
    void contactAccessors();
    void activeResource();
    void mergedEntriesSpeakThroughTheirFirstContact();
    void customAndTemporaryEntries();
    void debugTexts();
};

void TestBuddy::kindLookups()
{
    VeskSubscriptionType const missing = VeskBuddyType().getSubscriptionWithId(QStringLiteral("both"));
    QVERIFY(!missing.isValid() && missing.getIcon().isNull());
    QVERIFY(missing.getId().isEmpty() && !missing.getId().isNull());
    QVERIFY(missing.getDisplay().isEmpty() && !missing.getDisplay().isNull());

    VeskBuddyType const kind(QStringLiteral("xmpp"), QStringLiteral("Jabber"));
    kind.data()->subscriptions
        << new VeskSubscriptionType(QStringLiteral("None"), QStringLiteral("none"), 1, QString())
        << new VeskSubscriptionType(QStringLiteral("Both"), QStringLiteral("both"), 3,
                                    QStringLiteral("both.png"))
        << new VeskSubscriptionType(QStringLiteral("Both again"), QStringLiteral("both"), 4, QString());
    VeskSubscriptionType const both = kind.getSubscriptionWithId(QStringLiteral("both"));
    QCOMPARE(both.getDisplay(), QStringLiteral("Both"));
    QCOMPARE(both.getIcon(), QStringLiteral("both.png"));
    QVERIFY(!kind.getSubscriptionWithId(QStringLiteral("Both")).isValid());
    QVERIFY(!VeskSubscriptionType(QString(), QStringLiteral("to"), 1, QString()).isValid());
    QVERIFY(!VeskSubscriptionType(QStringLiteral("To"), QString(), 1, QString()).isValid());

    VeskBuddyTypePrivate* const record = kind.data();
    VeskPresenceType* const online = newPresenceType(QStringLiteral("online"), 1);
    VeskPresenceType* const offline = newPresenceType(QStringLiteral("offline"), VeskPresence::Offline);
    record->presences.insert(online->id, online);
    record->presences.insert(offline->id, offline);
    QCOMPARE(record->getPresenceWithFlag(VeskPresence::Offline), offline);
    QCOMPARE(record->getPresenceWithFlag(VeskPresence::Flag(1)), online);
    QVERIFY(!record->getPresenceWithFlag(VeskPresence::Flag(7)));
}

void TestBuddy::kindRecordOwnsItsTypes()
{
    VeskBuddyType kind(QStringLiteral("irc"), QStringLiteral("IRC"));
    VeskBuddyType copy(kind);
    kind.data()->extraInfoFields.append(
        VeskField::lineEdit(QStringLiteral("Nick"), QStringLiteral("nick"), QString(), 16, QString()));
    QCOMPARE(copy.getExtraInfoFields().at(0).getId(), QStringLiteral("nick"));
    copy = kind;
    QCOMPARE(kind.data()->ref.loadRelaxed(), 2);

    // One presence type filed under two ids and one subscription type listed
    // twice are each deleted once: a second delete aborts the sanitizer builds.
    VeskBuddyType other(QStringLiteral("sip"), QStringLiteral("SIP"));
    VeskPresenceType* const busy = newPresenceType(QStringLiteral("busy"), 6);
    auto* const to = new VeskSubscriptionType(QStringLiteral("To"), QStringLiteral("to"), 1, QString());
    other.data()->presences.insert(QStringLiteral("busy"), busy);
    other.data()->presences.insert(QStringLiteral("dnd"), busy);
    other.data()->subscriptions << to << to;

    VeskBuddyType holder(other);
    other = VeskBuddyType();
    QCOMPARE(busy->id, QStringLiteral("busy")); // holder still owns it
    holder = kind;                               // drops the last reference to SIP
    QCOMPARE(kind.data()->ref.loadRelaxed(), 3);
#ifdef VESK_HAVE_ASAN
    QVERIFY(__asan_address_is_poisoned(busy));
    QVERIFY(__asan_address_is_poisoned(to));
#endif
}

void TestBuddy::resources()
{
    QCOMPARE(VeskBuddyResource().getPriority(), -1);
    VeskBuddyResourceType phone(QStringLiteral("phone"), QStringLiteral("phone.png"));
    VeskBuddyResource const bare(&phone, VeskPresence());
    QCOMPARE(bare.getPriority(), 0);

    VeskPresenceType top = presenceType(4294967295u);
    VeskPresenceType some = presenceType(12);
    VeskBuddyResource const high(&phone, VeskPresence(&top, QString()));
    VeskBuddyResource const mid(&phone, VeskPresence(&some, QString()));
    QCOMPARE(high.getPriority(), -1); // read as a signed number
    QCOMPARE(mid.getPriority(), 12);
    QVERIFY(high == mid);
    VeskBuddyResourceType lookalike(QStringLiteral("phone"), QStringLiteral("phone.png"));
    QVERIFY(!(VeskBuddyResource(&lookalike, VeskPresence()) == bare));
}

void TestBuddy::kindDebugTexts()
{
    VeskBuddyType kind(QStringLiteral("xmpp"), QStringLiteral("Jab\"ber"));
    VeskBuddyType invalid;
    QString const kindText = pointerText(&kind) + QStringLiteral(" VeskBuddyType(\"xmpp\", \"Jab\"ber\") ");
    QString const invalidText = pointerText(&invalid) + QStringLiteral(" VeskBuddyType(\"\", \"\") ");
    QCOMPARE(textOf(&kind), kindText);
    QCOMPARE(textOf(&invalid), invalidText);

    QCOMPARE(textOf(QList<VeskBuddyType*>()), QStringLiteral("QList<VeskBuddyType *> (\n) element count: 0\n "));
    QCOMPARE(textOf(QList<VeskBuddyType*>{&kind, &invalid}),
             QStringLiteral("QList<VeskBuddyType *> (\n\t") + kindText + QStringLiteral("\n \t") + invalidText
                 + QStringLiteral("\n ) element count: 2\n "));
}

void TestBuddy::invalidHandlesAnswerWithFallbacks()
{
    VeskBuddy none;
    none.setUnreadMessages(4);
    QCOMPARE(none.unreadMessages(), 0);
    QVERIFY(none == VeskBuddy() && none.getDisplay().isNull());
    QCOMPARE(qHash(none), decltype(qHash(none))(0));
    VeskBuddyContact noContact;
    noContact.setAttribs({{QStringLiteral("a"), VeskArg(1)}});
    QVERIFY(noContact.getAttribs().isEmpty() && noContact.getDisplay().isNull());
    QVERIFY(!VeskBuddyTemporary().getGroup().isValid());
}

void TestBuddy::handlesShareOneRecord()
{
    VeskBuddyGroup const group(QStringLiteral("Friends"));
    VeskBuddy copy = group;
    VeskBuddy other;
    other = copy;
    QCOMPARE(Peek::refs(group), 3);

    copy.setUnreadMessages(3);
    QCOMPARE(group.unreadMessages() + other.unreadMessages(), 6);

    copy = copy;
    other = group;
    QCOMPARE(Peek::refs(group), 3);

    VeskBuddyGroup const twin(QStringLiteral("Friends"));
    QVERIFY(twin != group && qHash(twin) != qHash(group));
    QCOMPARE(qHash(copy), qHash(group));
    QCOMPARE((QSet<VeskBuddy>{group, copy, other, twin}.size()), 2);

    VeskBuddy moved(std::move(copy));
    QVERIFY(!copy.isValid() && moved == group);
    QCOMPARE(Peek::refs(group), 3);
}

void TestBuddy::conversionsCheckTheKind()
{
    VeskBuddyGroup const group(QStringLiteral("Work"));
    VeskBuddyContact const alice = contact(QStringLiteral("alice"));

    QVERIFY(!VeskBuddyContact(group).isValid());
    QCOMPARE(Peek::refs(group), 1);

    VeskBuddy const asBase = alice;
    VeskBuddyContact const back(asBase);
    QVERIFY(back == alice && back.getId() == QStringLiteral("alice"));
    QCOMPARE(Peek::refs(alice), 3);
    // The base's virtual functions answer for the kind.
    QCOMPARE(static_cast<VeskBuddy const&>(back).getDisplay(), QStringLiteral("alice"));

    VeskBuddyGroup assigned;
    assigned = asBase; // through the checked conversion
    QVERIFY(!assigned.isValid() && !VeskBuddyMerged(group).isValid());
    QVERIFY(VeskBuddyGroup(VeskBuddy(group)) == group);
}

void TestBuddy::lastHandleDestroysTheKindRecord()
{
    VeskBuddyType const kind(QStringLiteral("xmpp"), QStringLiteral("Jabber"));
    {
        VeskBuddyContact const holder(nullptr, QStringLiteral("a"), QString(), kind, VeskPresence(),
                                      VeskSubscriptionType());
        VeskBuddy const copy = holder;
        QCOMPARE(kind.data()->ref.loadRelaxed(), 2);
    }
    QCOMPARE(kind.data()->ref.loadRelaxed(), 1);

    VeskBuddyContact const child = contact(QStringLiteral("c"));
    {
        VeskBuddyGroup const group(QStringLiteral("g"));
        group.data()->children.append(child);
        QCOMPARE(Peek::refs(child), 2);
    }
    QCOMPARE(Peek::refs(child), 1);
}

void TestBuddy::failedAllocationLeavesAnInvalidHandle()
{
    allocationsBeforeFailure = 0; // the shared record
    QVERIFY(!VeskBuddyGroup(QStringLiteral("g")).isValid());

    // The kind record fails after the shared one was made: that one is
    // dropped again (the leak checker of the sanitizer builds would see it).
    for (int kind = 0; kind < 6; ++kind) {
        allocationsBeforeFailure = 1;
        VeskBuddy entry;
        switch (kind) {
        case 0: entry = VeskBuddyGroup(QStringLiteral("g")); break;
        case 1: entry = VeskBuddyMeta(QStringLiteral("m")); break;
        case 2: entry = contact(QStringLiteral("c")); break;
        case 3: entry = VeskBuddyMerged(QString(), {}); break;
        case 4: entry = VeskBuddyCustom(QString(), QString(), QString(), {}, QString(), QString(), QString()); break;
        case 5: entry = VeskBuddyTemporary(nullptr, QStringLiteral("t"), VeskPresence(), VeskBuddyGroup()); break;
        }
        QVERIFY2(!entry.isValid(), qPrintable(QString::number(kind)));
    }
    QCOMPARE(allocationsBeforeFailure, -1);

    allocationsBeforeFailure = 0;
    QVERIFY(!VeskBuddyType(QStringLiteral("x"), QStringLiteral("X")).isValid());

    VeskBuddyGroup group(QStringLiteral("g"));
    allocationsBeforeFailure = 1;
    QVERIFY(!group.addMeta(QStringLiteral("m")).isValid());
    QVERIFY(group.childCount() == 0 && !group.containsMeta(QStringLiteral("m")));
}

void TestBuddy::contactAccessors()
{
    VeskAccountConnection account;
    VeskBuddyType const kind(QStringLiteral("xmpp"), QStringLiteral("Jabber"));
    kind.data()->extraInfoFields.append(
        VeskField::lineEdit(QStringLiteral("City"), QStringLiteral("city"), QString(), 40, QString()));
    VeskPresenceType online = presenceType(10, QStringLiteral("online.png"));
    VeskSubscriptionType const none(QStringLiteral("None"), QStringLiteral("none"), 0, QString());
    VeskSubscriptionType const pending(QStringLiteral("Ask"), QStringLiteral("ask"), 1,
                                       QStringLiteral("ask.png"));

    VeskBuddyContact const unnamed(&account, QStringLiteral("bob@x"), QString(), kind,
                                   VeskPresence(&online, QStringLiteral("hi")), none);
    QCOMPARE(unnamed.getDisplay(), QStringLiteral("bob@x"));
    QCOMPARE(unnamed.getTypeId(), QStringLiteral("xmpp"));
    QCOMPARE(unnamed.getPresenceIcon(), QStringLiteral("online.png"));
    QCOMPARE(unnamed.getSubscription().getId(), QStringLiteral("none"));

    VeskBuddyContact const named(&account, QStringLiteral("eve@x"), QStringLiteral("Eve"), kind,
                                 VeskPresence(), pending);
    QCOMPARE(named.getDisplay(), QStringLiteral("Eve"));
    QCOMPARE(named.getPresenceIcon(), QStringLiteral("ask.png"));
    QVERIFY(contact(QStringLiteral("z")).getPresenceIcon().isNull());

    // Written by protocol code into the record, seen through every handle.
    VeskBuddyContact const alias{VeskBuddy(named)};
    named.data()->serverAvatarPath = QStringLiteral("server.png");
    QCOMPARE(alias.getAvatarPath(), QStringLiteral("server.png"));
    named.data()->localAvatarPath = QStringLiteral("local.png");
    QCOMPARE(alias.getAvatarPath(), QStringLiteral("local.png"));

    VeskBuddyContact setter(alias);
    setter.setAttribs({{QStringLiteral("note"), VeskArg("met at work")}});
    QCOMPARE(named.getAttrib(QStringLiteral("note")).toString(), QStringLiteral("met at work"));
    QCOMPARE(named.getAttrib(QStringLiteral("other")).getType(), VeskArg::None);

    QList<VeskField> values = named.getAvailableExtraInfo();
    values[0].setText(QStringLiteral("Oslo"));
    setter.setFieldValues(values);
    QCOMPARE(named.getExtraInfo().at(0).getText(), QStringLiteral("Oslo"));
    QVERIFY(kind.getExtraInfoFields().at(0).getText().isEmpty());
}

void TestBuddy::activeResource()
{
    VeskBuddyResourceType phone(QStringLiteral("phone"), QString());
    VeskBuddyResourceType desk(QStringLiteral("desk"), QString());
    VeskBuddyResourceType laptop(QStringLiteral("laptop"), QString());
    VeskPresenceType three = presenceType(3);
    VeskPresenceType seven = presenceType(7);
    VeskPresenceType huge = presenceType(4294967295u);

    VeskBuddyContact const person = contact(QStringLiteral("p"));
    QList<VeskBuddyResource>& resources = person.data()->resources;
    resources << VeskBuddyResource(&phone, VeskPresence(&three, QString()))
              << VeskBuddyResource(&desk, VeskPresence(&seven, QStringLiteral("first")))
              << VeskBuddyResource(&laptop, VeskPresence(&seven, QStringLiteral("second")));
    QCOMPARE(person.getActiveResource().getPresence().getDescription(), QStringLiteral("first"));

    // Priorities are compared as signed numbers: the largest unsigned one is -1.
    resources.prepend(VeskBuddyResource(&laptop, VeskPresence(&huge, QString())));
    QCOMPARE(person.getActiveResource().getName(), QStringLiteral("desk"));

    resources = {VeskBuddyResource(nullptr, VeskPresence(&seven, QString())), VeskBuddyResource()};
    QVERIFY(!person.getActiveResource().isValid());
}

void TestBuddy::mergedEntriesSpeakThroughTheirFirstContact()
{
    VeskAccountConnection home;
    VeskAccountConnection work;
    VeskPresenceType online = presenceType(5);
    VeskBuddyContact const first = contact(QStringLiteral("ann@home"), QStringLiteral("Ann"), &home);
    VeskBuddyContact const second = contact(QStringLiteral("ann@work"), QString(), &work);
    VeskBuddyContact const third = contact(QStringLiteral("ann2@home"), QString(), &home);

    VeskBuddyMerged const merged(QString(), {first, second, third});
    QCOMPARE(merged.VeskBuddy::getDisplay(), QStringLiteral("ann@home")); // the record's name
    QCOMPARE(merged.getDisplay(), QStringLiteral("Ann"));
    QCOMPARE(merged.getId(), QStringLiteral("ann@home"));
    QCOMPARE(merged.getAccounts(), (QList<VeskAccountConnection*>{&home, &work, &home}));
    QVERIFY(merged.getContactForAccount(&work) == second);
    QVERIFY(merged.getContactForAccount(&home) == first);
    QVERIFY(!merged.getContactForAccount(nullptr).isValid());
    QVERIFY(merged.containsContact(third) && !merged.containsContact(contact(QStringLiteral("ann@work"))));

    first.data()->presence = VeskPresence(&online, QStringLiteral("now"));
    first.data()->localAvatarPath = QStringLiteral("ann.png");
    QCOMPARE(merged.getPresence().getDescription(), QStringLiteral("now"));
    QCOMPARE(merged.getAvatarPath(), QStringLiteral("ann.png"));

    VeskBuddyMerged const named(QStringLiteral("Annie"), {second});
    QCOMPARE(named.VeskBuddy::getDisplay(), QStringLiteral("Annie"));
    QCOMPARE(named.getDisplay(), QStringLiteral("ann@work"));

    VeskBuddyMerged const empty(QString(), {});
    QVERIFY(empty.isValid() && empty.getDisplay().isNull() && !empty.getPresence().isValid());
}

void TestBuddy::customAndTemporaryEntries()
{
    QHash<QString, VeskArg> const attribs{{QStringLiteral("url"), VeskArg("https://example.org")}};
    VeskBuddyCustom const feed(QStringLiteral("News"), QStringLiteral("feed"), QStringLiteral("rss"),
                               attribs, QStringLiteral("Daily news"), QStringLiteral("feed.png"),
                               QStringLiteral("avatar.png"));
    // The attribute table comes fourth, between the owner id and the description.
    QCOMPARE(feed.getDisplay(), QStringLiteral("News"));
    QCOMPARE(feed.getSubType(), QStringLiteral("feed"));
    QCOMPARE(feed.getOwnerId(), QStringLiteral("rss"));
    QCOMPARE(feed.getAttribs(), attribs);
    QCOMPARE(feed.getDescription(), QStringLiteral("Daily news"));
    QCOMPARE(feed.getPresenceIconPath(), QStringLiteral("feed.png"));
    QCOMPARE(feed.getAvatarPath(), QStringLiteral("avatar.png"));
    VeskBuddyCustom(VeskBuddy(feed)).setAttribs({});
    QVERIFY(feed.getAttribs().isEmpty());

    VeskBuddyGroup const group(QStringLiteral("Not in list"));
    VeskBuddyTemporary const visitor(nullptr, QStringLiteral("guest@x"), VeskPresence(), group);
    QCOMPARE(visitor.getDisplay(), QStringLiteral("guest@x"));
    QVERIFY(visitor.getGroup() == group);
    QCOMPARE(group.childCount(), 0);
}

void TestBuddy::debugTexts()
{
    QCOMPARE(textOf(VeskBuddy::Type(9)), QStringLiteral("VeskBuddy:: "));
    QCOMPARE(textOf(VeskBuddy::Temporary), QStringLiteral("VeskBuddy::Temporary "));
    QCOMPARE(textOf(VeskBuddy()), QStringLiteral("VeskBuddy( Invalid ) "));

    VeskBuddyContact const alice(nullptr, QStringLiteral("alice@x"), QStringLiteral("Al\"ice"),
                                 VeskBuddyType(), VeskPresence(), VeskSubscriptionType());
    QString const aliceText = QStringLiteral(
        "VeskBuddyContact(\n\tvalid   :true\n\tdisplay :\"Al\"ice\"\n\tid      :\"alice@x\"\n) ");
    QCOMPARE(textOf(alice), aliceText);
    QCOMPARE(textOf(VeskBuddy(alice)), aliceText + QLatin1Char(' '));

    QCOMPARE(textOf(VeskBuddyMerged(QStringLiteral("m"), {alice})),
             QStringLiteral("VeskBuddyMerged(\n\tvalid   :true\n\tdisplay :\"Al\"ice\"\n\tid      :\"alice@x\"\n) "));

    VeskBuddyCustom const custom(QStringLiteral("News"), QString(), QString(), {}, QString(),
                                 QString(), QString());
    QCOMPARE(textOf(custom), QStringLiteral("VeskBuddyCustom(\n\tvalid   :true\n\tdisplay :\"News\"\n\t) "));

    VeskAccountConnection account;
    VeskBuddyTemporary const visitor(&account, QStringLiteral("guest"), VeskPresence(), VeskBuddyGroup());
    QString const visitorText = QStringLiteral("VeskBuddyTemporary(\n\tvalid   :true\n\tdisplay :\"guest\"\n"
                                               "\tid      :\"guest\"\n\taccount :")
                                + pointerText(&account) + QStringLiteral("\n) ");
    QCOMPARE(textOf(visitor), visitorText);
    QCOMPARE(textOf(VeskBuddy(visitor)), visitorText + QLatin1Char(' '));
}

QTEST_APPLESS_MAIN(TestBuddy)
#include "tst_buddy.moc"
