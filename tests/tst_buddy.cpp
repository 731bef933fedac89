#include <VeskData>

#include <QtTest/QtTest>

#include "vesktest.h"

#include <limits>
#include <new>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/asan_interface.h>
#define VESK_HAVE_ASAN 1
#endif

#include "vesktestnothrow.h"

namespace {

// Counts the handles of an entry, which the public interface keeps to itself.
struct Peek : VeskBuddy
{
    explicit Peek(VeskBuddy const& buddy) : VeskBuddy(buddy) {}
    static int refs(VeskBuddy const& buddy)
    {
        Peek const peek(buddy);
        return peek.d ? peek.d->ref.loadRelaxed() - 1 : 0; // not counting peek
    }
};

QString pointerText(void const* pointer)
{
    return QStringLiteral("0x") + QString::number(reinterpret_cast<quintptr>(pointer), 16);
}

VeskPresenceType presenceType(quint32 priority, qint32 flag = 0, QString const& icon = QString())
{
    return VeskPresenceType{QString(), QString(), icon, priority, VeskPresence::Flag(flag)};
}

VeskBuddyContact contact(QString const& id, QString const& display = QString(),
                         VeskAccountConnection* account = nullptr)
{
    return VeskBuddyContact(account, id, display, VeskBuddyType(), VeskPresence(), VeskSubscriptionType());
}

} // namespace

class TestBuddy : public QObject
{
    Q_OBJECT

private slots:
    void kindRecords();
    void handlesShareOneRecord();
    void recordLifetimeAndFailedAllocation();
    void contactAccessorsAndResources();
    void mergedCustomAndTemporaryEntries();
    void invalidKindHandlesGiveFallbacks();
    void debugTexts();
};

void TestBuddy::kindRecords()
{
    VeskSubscriptionType const missing = VeskBuddyType().getSubscriptionWithId(QStringLiteral("both"));
    QVERIFY(!missing.getId().isNull() && !missing.getDisplay().isNull() && missing.getIcon().isNull());
    QVERIFY(!missing.isValid() && !VeskSubscriptionType(QStringLiteral("To"), QString(), 1, QString()).isValid());
    QVERIFY(!VeskSubscriptionType(QString(), QStringLiteral("to"), 1, QString()).isValid());
    QVERIFY(VeskBuddyType().getExtraInfoFields().isEmpty());

    VeskBuddyType kind(QStringLiteral("xmpp"), QStringLiteral("Jabber"));
    kind.data()->subscriptions
        << new VeskSubscriptionType(QStringLiteral("Both"), QStringLiteral("both"), 3, QStringLiteral("both.png"))
        << new VeskSubscriptionType(QStringLiteral("Both again"), QStringLiteral("both"), 4, QString());
    QCOMPARE(kind.getSubscriptionWithId(QStringLiteral("both")).getIcon(), QStringLiteral("both.png"));
    kind.data()->extraInfoFields << VeskField::label(QStringLiteral("Mood"), QStringLiteral("mood"), QString());
    QCOMPARE(kind.getExtraInfoFields().first().getId(), QStringLiteral("mood"));
    QVERIFY(!kind.getSubscriptionWithId(QStringLiteral("Both")).isValid());

    auto* const offline = new VeskPresenceType(presenceType(0, VeskPresence::Offline));
    kind.data()->presences.insert(QStringLiteral("online"), new VeskPresenceType(presenceType(1, 1)));
    kind.data()->presences.insert(QStringLiteral("offline"), offline);
    QCOMPARE(kind.data()->getPresenceWithFlag(VeskPresence::Offline), offline);
    QVERIFY(!kind.data()->getPresenceWithFlag(VeskPresence::Flag(7)));

    VeskBuddyType invalid;
    QString const kindText = pointerText(&kind) + QStringLiteral(" VeskBuddyType(\"xmpp\", \"Jabber\") ");
    QString const invalidText = pointerText(&invalid) + QStringLiteral(" VeskBuddyType(\"\", \"\") ");
    QCOMPARE(debugText(QList<VeskBuddyType*>()), QStringLiteral("QList<VeskBuddyType *> (\n) element count: 0\n "));
    QCOMPARE(debugText(QList<VeskBuddyType*>{&kind, &invalid}),
             QStringLiteral("QList<VeskBuddyType *> (\n\t") + kindText + QStringLiteral("\n \t") + invalidText
                 + QStringLiteral("\n ) element count: 2\n "));

    VeskBuddyType copy(kind);
    copy = kind;
    QCOMPARE(kind.data()->ref.loadRelaxed(), 2);

    // One presence type filed under two ids and one subscription type listed
    // twice are each deleted once: a second delete aborts the sanitizer builds.
    VeskBuddyType other(QStringLiteral("sip"), QStringLiteral("SIP"));
    auto* const busy = new VeskPresenceType(presenceType(6));
    auto* const to = new VeskSubscriptionType(QStringLiteral("To"), QStringLiteral("to"), 1, QString());
    other.data()->presences.insert(QStringLiteral("busy"), busy);
    other.data()->presences.insert(QStringLiteral("dnd"), busy);
    other.data()->subscriptions << to << to;

    VeskBuddyType holder(other);
    other = VeskBuddyType();
    QCOMPARE(busy->priority, 6u); // holder still owns it
    holder = kind;                // drops the last reference to SIP
    QCOMPARE(kind.data()->ref.loadRelaxed(), 3);
#ifdef VESK_HAVE_ASAN
    QVERIFY(__asan_address_is_poisoned(busy) && __asan_address_is_poisoned(to));
#endif
}

void TestBuddy::handlesShareOneRecord()
{
    VeskBuddyGroup const group(QStringLiteral("Friends"));
    VeskBuddy copy = group;
    VeskBuddy other;
    other = copy;
    // Any count is stored as given, and every handle of the entry sees it.
    for (int const count : {3, 0, -2, std::numeric_limits<int>::min()}) {
        copy.setUnreadMessages(count);
        QVERIFY(group.unreadMessages() == count && other.unreadMessages() == count);
    }
    copy = copy;
    other = group;

    VeskBuddyGroup const twin(QStringLiteral("Friends"));
    QVERIFY(twin != group && qHash(twin) != qHash(group) && qHash(copy) == qHash(group));
    QCOMPARE((QSet<VeskBuddy>{group, copy, other, twin}.size()), 2);
    VeskBuddy moved(std::move(copy));
    QVERIFY(!copy.isValid() && moved == group);

    // Conversions share the record only between handles of the same kind.
    VeskBuddyContact const alice = contact(QStringLiteral("alice"));
    VeskBuddy const asBase = alice;
    VeskBuddyContact const back(asBase);
    QVERIFY(back == alice && !VeskBuddyContact(group).isValid() && !VeskBuddyMerged(group).isValid());
    QCOMPARE(static_cast<VeskBuddy const&>(back).getDisplay(), QStringLiteral("alice")); // the kind's override
    VeskBuddyGroup assigned = group;
    assigned = asBase;
    QVERIFY(!assigned.isValid());

    VeskBuddy none;
    none.setUnreadMessages(4);
    QVERIFY(none.unreadMessages() == 0 && qHash(none) == 0);
}

void TestBuddy::recordLifetimeAndFailedAllocation()
{
    VeskBuddyType const kind(QStringLiteral("xmpp"), QStringLiteral("Jabber"));
    VeskBuddyContact const child = contact(QStringLiteral("c"));
    {
        VeskBuddyContact const holder(nullptr, QStringLiteral("a"), QString(), kind, VeskPresence(),
                                      VeskSubscriptionType());
        VeskBuddy const copy = holder;
        VeskBuddyGroup const group(QStringLiteral("g"));
        group.data()->children.append(child);
        QVERIFY(kind.data()->ref.loadRelaxed() == 2 && Peek::refs(child) == 2);
    }
    QVERIFY(kind.data()->ref.loadRelaxed() == 1 && Peek::refs(child) == 1);

    allocationsBeforeFailure = 0; // the shared record
    QVERIFY(!VeskBuddyGroup(QStringLiteral("g")).isValid());
    allocationsBeforeFailure = 0;
    QVERIFY(!VeskBuddyType(QStringLiteral("x"), QStringLiteral("X")).isValid());

    // Every kind, with its shared record failing, or its kind record failing after the
    // shared one was made: that one is dropped again (the sanitizer builds' leak checker
    // would see it).
    for (int which = 0; which < 12; ++which) {
        allocationsBeforeFailure = which / 6;
        VeskBuddy entry;
        switch (which % 6) {
        case 0: entry = VeskBuddyGroup(QStringLiteral("g")); break;
        case 1: entry = VeskBuddyMeta(QStringLiteral("m")); break;
        case 2: entry = contact(QStringLiteral("c")); break;
        case 3: entry = VeskBuddyMerged(QString(), {}); break;
        case 4: entry = VeskBuddyCustom(QString(), QString(), QString(), {}, QString(), QString(), QString()); break;
        case 5: entry = VeskBuddyTemporary(nullptr, QStringLiteral("t"), VeskPresence(), VeskBuddyGroup()); break;
        }
        QVERIFY2(!entry.isValid() && allocationsBeforeFailure == -1, qPrintable(QString::number(which)));
    }

    VeskBuddyGroup group(QStringLiteral("g"));
    allocationsBeforeFailure = 1;
    QVERIFY(!group.addMeta(QStringLiteral("m")).isValid());
    QVERIFY(group.childCount() == 0 && !group.containsMeta(QStringLiteral("m")));
}

void TestBuddy::contactAccessorsAndResources()
{
    // The display falls back to the id; the subscription's icon wins over the presence's.
    VeskPresenceType online = presenceType(10, 1, QStringLiteral("online.png"));
    VeskSubscriptionType const asked(QStringLiteral("Ask"), QStringLiteral("ask"), 1, QStringLiteral("ask.png"));
    VeskBuddyContact const unnamed(nullptr, QStringLiteral("bob@x"), QString(), VeskBuddyType(),
                                   VeskPresence(&online, QString()), VeskSubscriptionType());
    VeskBuddyContact const named(nullptr, QStringLiteral("eve@x"), QStringLiteral("Eve"), VeskBuddyType(),
                                 VeskPresence(&online, QString()), asked);
    QVERIFY(unnamed.getDisplay() == QStringLiteral("bob@x") && named.getDisplay() == QStringLiteral("Eve"));
    QCOMPARE(unnamed.getPresenceIcon(), QStringLiteral("online.png"));
    QCOMPARE(named.getPresenceIcon(), QStringLiteral("ask.png"));
    QCOMPARE(named.getSubscription().getPriority(), 1u);
    named.data()->serverAvatarPath = QStringLiteral("server.png");
    QCOMPARE(named.getAvatarPath(), QStringLiteral("server.png"));
    named.data()->localAvatarPath = QStringLiteral("local.png");
    QCOMPARE(named.getAvatarPath(), QStringLiteral("local.png"));
    QVERIFY(named.getLocalAvatarPath() == QStringLiteral("local.png")
            && named.getServerAvatarPath() == QStringLiteral("server.png"));

    // Extra information and free attributes live in the record all handles share.
    VeskBuddyType const kind(QStringLiteral("xmpp"), QStringLiteral("Jabber"));
    VeskField const nick = VeskField::label(QStringLiteral("Nick"), QStringLiteral("nick"), QString());
    kind.data()->extraInfoFields = {nick};
    VeskBuddyContact withKind(nullptr, QStringLiteral("t"), QString(), kind, VeskPresence(), asked);
    VeskBuddyContact const sameEntry = withKind;
    withKind.setFieldValues({nick, nick});
    withKind.setAttribs({{QStringLiteral("a"), VeskArg(1)}});
    QVERIFY(sameEntry.getTypeId() == QStringLiteral("xmpp") && sameEntry.getAvailableExtraInfo() == QList<VeskField>{nick});
    QCOMPARE(sameEntry.getExtraInfo().size(), 2);
    QVERIFY(sameEntry.getAttrib(QStringLiteral("a")) == VeskArg(1) && sameEntry.getAttribs().size() == 1);

    // Resources are equal by type record. The first of the highest priorities
    // is active; priorities compare signed, so the largest unsigned one is -1.
    VeskBuddyResourceType phone(QStringLiteral("phone"), QString());
    VeskBuddyResourceType desk(QStringLiteral("desk"), QString());
    VeskBuddyResourceType lookalike(QStringLiteral("phone"), QString());
    VeskBuddyResourceType pager(QStringLiteral("pager"), QStringLiteral("pager.png"));
    VeskBuddyResource const typed(&pager, VeskPresence()), untyped;
    QVERIFY(typed.isValid() && typed.getIcon() == QStringLiteral("pager.png"));
    QCOMPARE(typed.getName(), QStringLiteral("pager"));
    QVERIFY(!untyped.isValid() && untyped.getIcon().isNull() && untyped.getPriority() == -1);
    QVERIFY(untyped.getName().isNull());
    VeskPresenceType three = presenceType(3);
    VeskPresenceType seven = presenceType(7);
    VeskPresenceType huge = presenceType(4294967295u);
    QVERIFY(VeskBuddyResource(&phone, VeskPresence(&three, QString())) == VeskBuddyResource(&phone, VeskPresence()));
    QVERIFY(!(VeskBuddyResource(&lookalike, VeskPresence()) == VeskBuddyResource(&phone, VeskPresence())));
    QList<VeskBuddyResource>& resources = named.data()->resources;
    resources << VeskBuddyResource(&phone, VeskPresence(&huge, QString()))
              << VeskBuddyResource(&phone, VeskPresence(&three, QString()))
              << VeskBuddyResource(&desk, VeskPresence(&seven, QStringLiteral("first")))
              << VeskBuddyResource(&phone, VeskPresence(&seven, QStringLiteral("second")));
    QCOMPARE(named.getActiveResource().getPresence().getDescription(), QStringLiteral("first"));
    resources = {VeskBuddyResource(nullptr, VeskPresence(&seven, QStringLiteral("no type")))};
    QVERIFY(named.getActiveResource().getPresence().getDescription().isEmpty());
}

void TestBuddy::mergedCustomAndTemporaryEntries()
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
    QVERIFY(merged.getContactForAccount(&work) == second && merged.getContactForAccount(&home) == first);
    // One account per contact, repeats and null accounts included.
    QCOMPARE(merged.getAccounts(), (QList<VeskAccountConnection*>{&home, &work, &home}));
    QCOMPARE(VeskBuddyMerged(QString(), {contact(QStringLiteral("x"))}).getAccounts(),
             QList<VeskAccountConnection*>{nullptr});
    QVERIFY(merged.containsContact(third) && !merged.containsContact(contact(QStringLiteral("ann@work"))));
    first.data()->presence = VeskPresence(&online, QStringLiteral("now"));
    QCOMPARE(merged.getPresence().getDescription(), QStringLiteral("now"));
    first.data()->serverAvatarPath = QStringLiteral("server.png"); // no local one
    QCOMPARE(merged.getAvatarPath(), QStringLiteral("server.png"));

    VeskBuddyMerged const named(QStringLiteral("Annie"), {second});
    QCOMPARE(named.VeskBuddy::getDisplay(), QStringLiteral("Annie"));
    QCOMPARE(named.getDisplay(), QStringLiteral("ann@work"));
    VeskBuddyMerged const empty(QString(), {});
    QVERIFY(empty.isValid() && empty.getDisplay().isNull() && !empty.getPresence().isValid());

    // The attribute table comes fourth, between the owner id and the description.
    QHash<QString, VeskArg> const attribs{{QStringLiteral("url"), VeskArg("https://example.org")}};
    VeskBuddyCustom const feed(QStringLiteral("News"), QStringLiteral("feed"), QStringLiteral("rss"), attribs,
                               QStringLiteral("Daily news"), QStringLiteral("feed.png"), QStringLiteral("avatar.png"));
    QCOMPARE((QStringList{feed.getSubType(), feed.getOwnerId(), feed.getDescription(), feed.getPresenceIconPath(),
                          feed.getAvatarPath()}),
             (QStringList{QStringLiteral("feed"), QStringLiteral("rss"), QStringLiteral("Daily news"),
                          QStringLiteral("feed.png"), QStringLiteral("avatar.png")}));
    QCOMPARE(feed.getAttribs(), attribs);
    VeskBuddyCustom(VeskBuddy(feed)).setAttribs({});
    QVERIFY(feed.getAttribs().isEmpty());

    // Naming a group links the entry to it without listing it there.
    VeskBuddyGroup const group(QStringLiteral("Not in list"));
    VeskBuddyTemporary const visitor(nullptr, QStringLiteral("guest@x"), VeskPresence(), group);
    QVERIFY(visitor.getGroup() == group && group.childCount() == 0);

    // Kind handles copy as handles: the copy is the same entry.
    VeskBuddyMerged const mergedCopy(merged);
    VeskBuddyCustom const feedCopy(feed);
    VeskBuddyTemporary const visitorCopy(visitor);
    QVERIFY(mergedCopy == merged && feedCopy == feed && visitorCopy == visitor);
    QVERIFY(mergedCopy.getId() == merged.getId() && visitorCopy.getId() == visitor.getId());
}

void TestBuddy::invalidKindHandlesGiveFallbacks()
{
    // A default handle and one converted from an entry of another kind have no record:
    // every query gives its empty value and every change does nothing.
    VeskBuddyGroup const group(QStringLiteral("Friends"));
    VeskBuddyContact const other = contact(QStringLiteral("alice"));
    QHash<QString, VeskArg> const attribs{{QStringLiteral("a"), VeskArg(1)}};
    for (VeskBuddy const& source : {VeskBuddy(), static_cast<VeskBuddy>(group)}) {
        VeskBuddyContact c(source);
        c.setFieldValues({VeskField::label(QStringLiteral("L"), QStringLiteral("l"), QString())});
        c.setAttribs(attribs);
        QVERIFY(!c.isValid() && c.getDisplay().isNull() && c.getId().isNull());
        QVERIFY(!c.getAccount() && c.getTypeId().isNull() && c.getPresence() == VeskPresence());
        QVERIFY(c.getPresenceIcon().isNull() && c.getSubscription().getId().isNull());
        QVERIFY(c.getResources().isEmpty() && c.getActiveResource() == VeskBuddyResource());
        QVERIFY(c.getAvatarPath().isNull() && c.getLocalAvatarPath().isNull()
                && c.getServerAvatarPath().isNull());
        QVERIFY(c.getAvailableExtraInfo().isEmpty() && c.getExtraInfo().isEmpty());
        QVERIFY(c.getAttrib(QStringLiteral("a")).getType() == VeskArg::None && c.getAttribs().isEmpty());
        QVERIFY(!c.getParent().isValid() && !c.data());

        VeskBuddyMerged const m(source);
        QVERIFY(!m.isValid() && m.getDisplay().isNull() && m.getId().isNull());
        QVERIFY(m.getPresence() == VeskPresence() && m.getAvatarPath().isNull());
        QVERIFY(m.getResources().isEmpty() && m.getAccounts().isEmpty());
        QVERIFY(!m.getContactForAccount(nullptr).isValid() && !m.containsContact(other));
        QVERIFY(!m.getParent().isValid());

        VeskBuddyCustom cu(source);
        cu.setAttribs(attribs);
        QVERIFY(!cu.isValid() && cu.getOwnerId().isNull() && cu.getSubType().isNull());
        QVERIFY(cu.getDescription().isNull() && cu.getPresenceIconPath().isNull());
        QVERIFY(cu.getAvatarPath().isNull() && cu.getAttribs().isEmpty() && !cu.getParent().isValid());

        VeskBuddyTemporary const t(source);
        QVERIFY(!t.isValid() && !t.getAccount() && t.getId().isNull());
        QVERIFY(t.getPresence() == VeskPresence() && !t.getGroup().isValid());
        QVERIFY(t.getResources().isEmpty());
    }
    QVERIFY(!VeskBuddyMerged().isValid() && !VeskBuddyCustom().isValid() && !VeskBuddyTemporary().isValid());
    QVERIFY(!VeskBuddyContact().isValid() && VeskBuddyMerged().getAccounts().isEmpty());
}

void TestBuddy::debugTexts()
{
    // Every kind by its number, then the first number past them and a negative one.
    char const* const kinds[] = {"Invalid", "Group", "Meta", "Contact", "Merged", "Temporary", "Custom",
                                 "", ""};
    for (int number = 0; number < 9; ++number)
        QCOMPARE(debugText(VeskBuddy::Type(number < 8 ? number : -1)),
                 QStringLiteral("VeskBuddy::%1 ").arg(QLatin1String(kinds[number])));
    QCOMPARE(debugText(VeskBuddy()), QStringLiteral("VeskBuddy( Invalid ) "));

    VeskBuddyContact const alice = contact(QStringLiteral("alice@x"), QStringLiteral("Al\"ice"));
    QString const aliceText = QStringLiteral("(\n\tvalid   :true\n\tdisplay :\"Al\"ice\"\n\tid      :\"alice@x\"\n) ");
    QCOMPARE(debugText(alice), QStringLiteral("VeskBuddyContact") + aliceText);
    QCOMPARE(debugText(VeskBuddy(alice)), QStringLiteral("VeskBuddyContact") + aliceText + QLatin1Char(' '));
    QCOMPARE(debugText(VeskBuddyMerged(QStringLiteral("m"), {alice})), QStringLiteral("VeskBuddyMerged") + aliceText);
    QCOMPARE(debugText(VeskBuddyCustom(QStringLiteral("News"), QString(), QString(), {}, QString(), QString(), QString())),
             QStringLiteral("VeskBuddyCustom(\n\tvalid   :true\n\tdisplay :\"News\"\n\t) "));

    VeskAccountConnection account;
    VeskBuddyTemporary const visitor(&account, QStringLiteral("guest"), VeskPresence(), VeskBuddyGroup());
    QString const visitorText = QStringLiteral("VeskBuddyTemporary(\n\tvalid   :true\n\tdisplay :\"guest\"\n"
                                               "\tid      :\"guest\"\n\taccount :")
                                + pointerText(&account) + QStringLiteral("\n) ");
    QCOMPARE(debugText(visitor), visitorText);
    QCOMPARE(debugText(VeskBuddy(visitor)), visitorText + QLatin1Char(' '));
}

QTEST_APPLESS_MAIN(TestBuddy)
#include "tst_buddy.moc"
