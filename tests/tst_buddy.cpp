#include <VeskData>

#include <QtTest/QtTest>

#include <new>

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

void TestBuddy::invalidHandlesAnswerWithFallbacks()
{
    QCOMPARE(sizeof(VeskBuddy::Type), sizeof(qint32));
    QCOMPARE(int(VeskBuddy::Temporary), 5);
    QCOMPARE(int(VeskBuddy::Custom), 6);

    VeskBuddy none;
    QVERIFY(!none.isValid());
    QCOMPARE(none.getType(), VeskBuddy::Invalid);
    QVERIFY(none.getDisplay().isNull());
    none.setUnreadMessages(4);
    QCOMPARE(none.unreadMessages(), 0);
    QVERIFY(none == VeskBuddy());
    QCOMPARE(qHash(none), decltype(qHash(none))(0));

    VeskBuddyContact noContact;
    QVERIFY(!noContact.isValid() && !noContact.data());
    QVERIFY(noContact.getDisplay().isNull() && noContact.getId().isNull());
    QVERIFY(!noContact.getAccount());
    QVERIFY(noContact.getTypeId().isNull());
    QVERIFY(!noContact.getPresence().isValid());
    QVERIFY(noContact.getPresenceIcon().isNull());
    QVERIFY(noContact.getSubscription().getId().isNull());
    QVERIFY(noContact.getResources().isEmpty());
    QVERIFY(!noContact.getActiveResource().isValid());
    QVERIFY(noContact.getAvatarPath().isNull());
    QVERIFY(noContact.getAvailableExtraInfo().isEmpty());
    noContact.setAttribs({{QStringLiteral("a"), VeskArg(1)}});
    QVERIFY(noContact.getAttribs().isEmpty());
    QCOMPARE(noContact.getAttrib(QStringLiteral("a")).getType(), VeskArg::None);
    QVERIFY(!noContact.getParent().isValid());

    VeskBuddyMerged const noMerged;
    QVERIFY(!noMerged.isValid() && !noMerged.data());
    QVERIFY(noMerged.getDisplay().isNull());
    QVERIFY(noMerged.getAccounts().isEmpty());
    QVERIFY(!noMerged.containsContact(VeskBuddyContact()));

    VeskBuddyCustom noCustom;
    noCustom.setAttribs({{QStringLiteral("a"), VeskArg(1)}});
    QVERIFY(noCustom.getAttribs().isEmpty() && noCustom.getOwnerId().isNull());

    VeskBuddyTemporary const noTemporary;
    QVERIFY(!noTemporary.getAccount() && noTemporary.getId().isNull());
    QVERIFY(!noTemporary.getGroup().isValid());
}

void TestBuddy::handlesShareOneRecord()
{
    VeskBuddyGroup const group(QStringLiteral("Friends"));
    VeskBuddy copy = group;
    VeskBuddy other;
    other = copy;
    QCOMPARE(Peek::refs(group), 3);

    copy.setUnreadMessages(3);
    QCOMPARE(group.unreadMessages(), 3);
    QCOMPARE(other.unreadMessages(), 3);
    other.setUnreadMessages(-2);
    QCOMPARE(group.unreadMessages(), -2);

    copy = copy;
    other = group;
    QCOMPARE(Peek::refs(group), 3);

    VeskBuddyGroup const twin(QStringLiteral("Friends"));
    QVERIFY(twin != group);
    QVERIFY(qHash(twin) != qHash(group));
    QCOMPARE(qHash(copy), qHash(group));
    QCOMPARE((QSet<VeskBuddy>{group, copy, other, twin}.size()), 2);

    other = VeskBuddy();
    QCOMPARE(Peek::refs(group), 2);
    VeskBuddy moved(std::move(copy));
    QVERIFY(!copy.isValid());
    QCOMPARE(Peek::refs(group), 2);
    QVERIFY(moved == group);
}

void TestBuddy::conversionsCheckTheKind()
{
    VeskBuddyGroup const group(QStringLiteral("Work"));
    VeskBuddyContact const alice = contact(QStringLiteral("alice"));

    VeskBuddyContact const notAContact(group);
    QVERIFY(!notAContact.isValid());
    QCOMPARE(Peek::refs(group), 1);

    VeskBuddy const asBase = alice;
    QCOMPARE(asBase.getType(), VeskBuddy::Contact);
    VeskBuddyContact const back(asBase);
    QVERIFY(back == alice);
    QCOMPARE(back.getId(), QStringLiteral("alice"));
    QCOMPARE(Peek::refs(alice), 3);

    VeskBuddyGroup assigned;
    assigned = asBase; // through the checked conversion
    QVERIFY(!assigned.isValid());
    QVERIFY(!VeskBuddyMeta(alice).isValid());
    QVERIFY(!VeskBuddyMerged(group).isValid());
    QVERIFY(!VeskBuddyCustom(VeskBuddy()).isValid());
    QVERIFY(VeskBuddyGroup(VeskBuddy(group)) == group);

    // The base's virtual functions answer for the kind.
    VeskBuddy const* const entry = &back;
    QCOMPARE(entry->getDisplay(), QStringLiteral("alice"));
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
    VeskBuddyGroup const noRecord(QStringLiteral("g"));
    QVERIFY(!noRecord.isValid());
    QCOMPARE(noRecord.childCount(), -1);

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
        QCOMPARE(entry.getType(), VeskBuddy::Invalid);
    }
    QCOMPARE(allocationsBeforeFailure, -1);

    allocationsBeforeFailure = 0;
    VeskBuddyType const noKind(QStringLiteral("x"), QStringLiteral("X"));
    QVERIFY(!noKind.isValid());

    VeskBuddyGroup group(QStringLiteral("g"));
    allocationsBeforeFailure = 1;
    QVERIFY(!group.addMeta(QStringLiteral("m")).isValid());
    QCOMPARE(group.childCount(), 0);
    QVERIFY(!group.containsMeta(QStringLiteral("m")));
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
    QCOMPARE(unnamed.getAccount(), &account);
    QCOMPARE(unnamed.getTypeId(), QStringLiteral("xmpp"));
    QCOMPARE(unnamed.getPresence().getDescription(), QStringLiteral("hi"));
    QCOMPARE(unnamed.getPresenceIcon(), QStringLiteral("online.png"));
    QCOMPARE(unnamed.getSubscription().getId(), QStringLiteral("none"));
    QCOMPARE(unnamed.getAvailableExtraInfo().size(), 1);
    QVERIFY(unnamed.getExtraInfo().isEmpty());

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
    QCOMPARE(alias.getServerAvatarPath(), QStringLiteral("server.png"));
    QCOMPARE(alias.getLocalAvatarPath(), QStringLiteral("local.png"));

    VeskBuddyContact setter(alias);
    setter.setAttribs({{QStringLiteral("note"), VeskArg("met at work")}});
    QCOMPARE(named.getAttrib(QStringLiteral("note")).toString(), QStringLiteral("met at work"));
    QCOMPARE(named.getAttrib(QStringLiteral("other")).getType(), VeskArg::None);
    QCOMPARE(named.getAttribs().size(), 1);

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
    VeskBuddyResource const active = person.getActiveResource();
    QCOMPARE(active.getName(), QStringLiteral("desk"));
    QCOMPARE(active.getPresence().getDescription(), QStringLiteral("first"));
    QCOMPARE(person.getResources().size(), 3);

    // Priorities are compared as signed numbers: the largest unsigned one is -1.
    resources.prepend(VeskBuddyResource(&laptop, VeskPresence(&huge, QString())));
    QCOMPARE(person.getActiveResource().getName(), QStringLiteral("desk"));

    resources = {VeskBuddyResource(nullptr, VeskPresence(&seven, QString())), VeskBuddyResource()};
    QVERIFY(!person.getActiveResource().isValid());

    resources = {VeskBuddyResource(nullptr, VeskPresence(&seven, QString())),
                 VeskBuddyResource(&phone, VeskPresence())};
    QCOMPARE(person.getActiveResource().getName(), QStringLiteral("phone"));
}

void TestBuddy::mergedEntriesSpeakThroughTheirFirstContact()
{
    VeskAccountConnection home;
    VeskAccountConnection work;
    VeskPresenceType online = presenceType(5);
    VeskBuddyContact const first = contact(QStringLiteral("ann@home"), QStringLiteral("Ann"), &home);
    VeskBuddyContact const second = contact(QStringLiteral("ann@work"), QString(), &work);
    VeskBuddyContact const third = contact(QStringLiteral("ann2@home"), QString(), &home);
    VeskBuddyContact const stranger = contact(QStringLiteral("x"), QString(), &home);

    VeskBuddyMerged const merged(QString(), {first, second, third});
    QVERIFY(merged.isValid());
    QCOMPARE(merged.getType(), VeskBuddy::Merged);
    QCOMPARE(merged.VeskBuddy::getDisplay(), QStringLiteral("ann@home")); // the record's name
    QCOMPARE(merged.getDisplay(), QStringLiteral("Ann"));
    QCOMPARE(merged.getId(), QStringLiteral("ann@home"));
    QCOMPARE(merged.getAccounts(),
             (QList<VeskAccountConnection*>{&home, &work, &home}));
    QVERIFY(merged.getContactForAccount(&work) == second);
    QVERIFY(merged.getContactForAccount(&home) == first);
    QVERIFY(!merged.getContactForAccount(nullptr).isValid());
    QVERIFY(merged.containsContact(third));
    QVERIFY(!merged.containsContact(stranger));

    first.data()->presence = VeskPresence(&online, QStringLiteral("now"));
    first.data()->localAvatarPath = QStringLiteral("ann.png");
    QCOMPARE(merged.getPresence().getDescription(), QStringLiteral("now"));
    QCOMPARE(merged.getAvatarPath(), QStringLiteral("ann.png"));

    VeskBuddyMerged const named(QStringLiteral("Annie"), {second});
    QCOMPARE(named.VeskBuddy::getDisplay(), QStringLiteral("Annie"));
    QCOMPARE(named.getDisplay(), QStringLiteral("ann@work"));

    VeskBuddyMerged const empty(QString(), {});
    QVERIFY(empty.isValid());
    QVERIFY(empty.getDisplay().isNull());
    QVERIFY(empty.getId().isNull());
    QVERIFY(!empty.getPresence().isValid());
    QVERIFY(empty.getResources().isEmpty());
    QVERIFY(empty.getAccounts().isEmpty());
}

void TestBuddy::customAndTemporaryEntries()
{
    QHash<QString, VeskArg> const attribs{{QStringLiteral("url"), VeskArg("https://example.org")}};
    VeskBuddyCustom const feed(QStringLiteral("News"), QStringLiteral("feed"), QStringLiteral("rss"),
                               attribs, QStringLiteral("Daily news"), QStringLiteral("feed.png"),
                               QStringLiteral("avatar.png"));
    QCOMPARE(feed.getDisplay(), QStringLiteral("News"));
    QCOMPARE(feed.getSubType(), QStringLiteral("feed"));
    QCOMPARE(feed.getOwnerId(), QStringLiteral("rss"));
    QCOMPARE(feed.getDescription(), QStringLiteral("Daily news"));
    QCOMPARE(feed.getPresenceIconPath(), QStringLiteral("feed.png"));
    QCOMPARE(feed.getAvatarPath(), QStringLiteral("avatar.png"));
    QCOMPARE(feed.getAttribs(), attribs);
    VeskBuddyCustom(VeskBuddy(feed)).setAttribs({});
    QVERIFY(feed.getAttribs().isEmpty());

    VeskAccountConnection account;
    VeskPresenceType away = presenceType(2);
    VeskBuddyGroup const group(QStringLiteral("Not in list"));
    VeskBuddyTemporary const visitor(&account, QStringLiteral("guest@x"),
                                     VeskPresence(&away, QString()), group);
    QCOMPARE(visitor.getDisplay(), QStringLiteral("guest@x"));
    QCOMPARE(visitor.getId(), QStringLiteral("guest@x"));
    QCOMPARE(visitor.getAccount(), &account);
    QCOMPARE(visitor.getPresence().getPriority(), 2u);
    QVERIFY(visitor.getGroup() == group);
    QCOMPARE(group.childCount(), 0);
    visitor.data()->resources.append(VeskBuddyResource());
    QCOMPARE(VeskBuddyTemporary(VeskBuddy(visitor)).getResources().size(), 1);
}

void TestBuddy::debugTexts()
{
    QCOMPARE(textOf(VeskBuddy::Type(9)), QStringLiteral("VeskBuddy:: "));
    QCOMPARE(textOf(VeskBuddy::Temporary), QStringLiteral("VeskBuddy::Temporary "));
    QCOMPARE(textOf(VeskBuddy::Invalid), QStringLiteral("VeskBuddy::Invalid "));
    QCOMPARE(textOf(VeskBuddy()), QStringLiteral("VeskBuddy( Invalid ) "));

    VeskBuddyContact const alice(nullptr, QStringLiteral("alice@x"), QStringLiteral("Al\"ice"),
                                 VeskBuddyType(), VeskPresence(), VeskSubscriptionType());
    QString const aliceText = QStringLiteral(
        "VeskBuddyContact(\n\tvalid   :true\n\tdisplay :\"Al\"ice\"\n\tid      :\"alice@x\"\n) ");
    QCOMPARE(textOf(alice), aliceText);
    QCOMPARE(textOf(VeskBuddy(alice)), aliceText + QLatin1Char(' '));
    QCOMPARE(textOf(VeskBuddyContact()),
             QStringLiteral("VeskBuddyContact(\n\tvalid   :false\n\tdisplay :\"\"\n\tid      :\"\"\n) "));

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
