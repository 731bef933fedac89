#include <VeskData>

#include <QtTest/QtTest>

#include <algorithm>
#include <chrono>
#include <future>

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

VeskBuddyContact contact(QString const& id, VeskPresenceType* presence = nullptr)
{
    return VeskBuddyContact(nullptr, id, QString(), VeskBuddyType(), VeskPresence(presence, QString()),
                            VeskSubscriptionType());
}

VeskBuddyCustom custom(QString const& name)
{
    return VeskBuddyCustom(name, QString(), QString(), {}, QString(), QString(), QString());
}

VeskBuddyTemporary guestOf(VeskPresenceType* presence)
{
    return VeskBuddyTemporary(nullptr, QStringLiteral("guest"), VeskPresence(presence, QString()),
                              VeskBuddyGroup());
}

// Containers and their linked children keep each other alive; every test
// takes its trees apart so that the leak checker sees every record freed.
void unlink(VeskBuddy const& entry)
{
    if (VeskBuddyContactPrivate* const record = VeskBuddyContact(entry).data())
        record->parent = VeskBuddy();
    if (VeskBuddyCustomPrivate* const record = VeskBuddyCustom(entry).data())
        record->parent = VeskBuddy();
    if (VeskBuddyMergedPrivate* const record = VeskBuddyMerged(entry).data())
        record->parent = VeskBuddy();
    if (VeskBuddyTemporaryPrivate* const record = VeskBuddyTemporary(entry).data())
        record->group = VeskBuddyGroup();
    if (VeskBuddyMetaPrivate* const record = VeskBuddyMeta(entry).data()) {
        record->group = VeskBuddyGroup();
        for (VeskBuddy const& child : std::exchange(record->children, {}))
            unlink(child);
    }
    if (VeskBuddyGroupPrivate* const record = VeskBuddyGroup(entry).data()) {
        record->metas.clear();
        for (VeskBuddy const& child : std::exchange(record->children, {}))
            unlink(child);
    }
}

struct Dismantler
{
    QList<VeskBuddy> containers;
    ~Dismantler()
    {
        for (VeskBuddy const& container : containers)
            unlink(container);
    }
};

} // namespace

class TestBuddyGroup : public QObject
{
    Q_OBJECT

private slots:
    void invalidContainersAnswerWithFallbacks();
    void addingChecksMembershipAndKind();
    void movesKeepParentLinksInStep();
    void metaContactsOfAGroup();
    void countsAndContainment();
    void groupOrderingAndDisplayState();
    void debugTexts();
    void oppositeMovesDoNotDeadlock();
};

void TestBuddyGroup::invalidContainersAnswerWithFallbacks()
{
    VeskBuddyGroup group;
    VeskBuddyMeta meta;
    VeskBuddyContact const alice = contact(QStringLiteral("alice"));
    QVERIFY(!group.addBuddy(alice) && !meta.addBuddy(alice) && !alice.getParent().isValid());
    QCOMPARE(group.removeBuddy(alice) + meta.removeBuddy(alice), -2);
    QVERIFY(!group.addMeta(QStringLiteral("m")).isValid());
    QCOMPARE(group.childCount() + group.onlineChildCount() + group.getPos() + meta.childCount(), -4);
}

void TestBuddyGroup::addingChecksMembershipAndKind()
{
    Dismantler cleanup;
    VeskBuddyGroup group(QStringLiteral("Friends"));
    VeskBuddyMeta meta(QStringLiteral("Ann"));
    cleanup.containers << group << meta;
    VeskBuddyContact const alice = contact(QStringLiteral("alice"));
    VeskBuddyContact const bob = contact(QStringLiteral("bob"));
    VeskBuddyCustom const feed = custom(QStringLiteral("feed"));
    VeskBuddyTemporary const guest(nullptr, QStringLiteral("guest"), VeskPresence(), VeskBuddyGroup());

    QVERIFY(group.addBuddy(alice) && !group.addBuddy(alice));
    QVERIFY(group.addBuddy(feed) && group.addBuddy(guest));
    QVERIFY(!group.addBuddy(VeskBuddyGroup(QStringLiteral("Nested"))) && !group.addBuddy(group));
    QVERIFY(!group.addBuddy(VeskBuddy()));
    QVERIFY(group.addBuddy(bob));
    QCOMPARE(group.childCount(), 4);
    QVERIFY(group.buddyAt(0) == alice && group.buddyAt(1) == feed);
    QVERIFY(group.buddyAt(2) == guest && group.buddyAt(3) == bob);
    QVERIFY(!group.containsBuddy(meta));

    // Out-of-range indexes change nothing.
    QVERIFY(!group.buddyAt(4).isValid() && !group.buddyAt(-1).isValid());
    QVERIFY(!group.removeAt(4).isValid() && !group.removeAt(-1).isValid());
    QCOMPARE(group.childCount(), 4);

    QVERIFY(group.removeAt(1) == feed && !group.containsBuddy(feed));
    QVERIFY(group.addBuddy(feed)); // its link still names the group: appended again
    QVERIFY(group.buddyAt(3) == feed);

    QVERIFY(!meta.addBuddy(guest) && !meta.addBuddy(group));
    QVERIFY(!meta.addBuddy(VeskBuddyMeta(QStringLiteral("inner"))) && !meta.addBuddy(VeskBuddy()));
    VeskBuddyMerged const merged(QString(), {bob});
    QVERIFY(meta.addBuddy(merged) && !meta.addBuddy(merged) && meta.addBuddy(alice));
    QVERIFY(meta.buddyAt(1) == alice && meta.removeAt(0) == merged);
    QCOMPARE(meta.childCount(), 1);
}

void TestBuddyGroup::movesKeepParentLinksInStep()
{
    Dismantler cleanup;
    VeskBuddyGroup first(QStringLiteral("A"));
    VeskBuddyGroup second(QStringLiteral("B"));
    VeskBuddyMeta meta(QStringLiteral("M"));
    cleanup.containers << first << second << meta;
    VeskBuddyContact const alice = contact(QStringLiteral("alice"));
    VeskBuddyCustom const feed = custom(QStringLiteral("feed"));

    QVERIFY(first.addBuddy(alice) && alice.getParent() == first);
    QVERIFY(second.addBuddy(alice) && !first.containsBuddy(alice));
    QVERIFY(alice.getParent() == second);
    QCOMPARE(first.removeBuddy(alice), 0);
    QVERIFY(alice.getParent() == second);

    QVERIFY(meta.addBuddy(alice) && !second.containsBuddy(alice));
    QVERIFY(alice.getParent() == meta);
    QCOMPARE(meta.removeBuddy(alice), 1);
    QVERIFY(alice.getParent() == meta); // a meta-contact leaves the link alone
    QVERIFY(meta.addBuddy(alice) && first.addBuddy(alice));
    QCOMPARE(meta.childCount(), 0);

    QVERIFY(first.removeAt(0) == alice && alice.getParent() == first);
    QVERIFY(first.addBuddy(alice));
    QCOMPARE(first.removeBuddy(alice), 1);
    QVERIFY(!alice.getParent().isValid());

    QVERIFY(meta.addBuddy(feed) && second.addBuddy(feed));
    QVERIFY(meta.childCount() == 0 && feed.getParent() == second);

    // Merged and temporary entries take the new link; the old container keeps
    // its entry and, no longer named by the link, leaves the link alone.
    VeskBuddyMerged const merged(QString(), {contact(QStringLiteral("m"))});
    QVERIFY(first.addBuddy(merged) && second.addBuddy(merged));
    QVERIFY(first.containsBuddy(merged) && merged.getParent() == second);
    QCOMPARE(first.removeBuddy(merged), 1);
    QVERIFY(merged.getParent() == second);
    QVERIFY(meta.addBuddy(merged) && merged.getParent() == meta);

    VeskBuddyTemporary const guest(nullptr, QStringLiteral("guest"), VeskPresence(), first);
    QVERIFY(second.addBuddy(guest) && guest.getGroup() == second);
    QCOMPARE(second.removeBuddy(guest), 1);
    QVERIFY(!guest.getGroup().isValid());
}

void TestBuddyGroup::metaContactsOfAGroup()
{
    Dismantler cleanup;
    VeskBuddyGroup group(QStringLiteral("Family"));
    VeskBuddyGroup other(QStringLiteral("Work"));
    cleanup.containers << group << other;

    VeskBuddyMeta const ann = group.addMeta(QStringLiteral("Ann"));
    QCOMPARE(ann.getDisplay(), QStringLiteral("Ann"));
    QVERIFY(group.addMeta(QStringLiteral("Ann")) == ann && !group.addBuddy(ann));
    QCOMPARE(group.childCount(), 1);
    QVERIFY(group.containsMeta(QStringLiteral("Ann")) && !group.containsMeta(QStringLiteral("ann")));
    QVERIFY(ann.getGroup() == group);

    // Placing it in another group relinks it without taking it out here;
    // removing it here then leaves the other group's link and the table alone.
    QVERIFY(other.addBuddy(ann) && ann.getGroup() == other);
    QCOMPARE(group.removeBuddy(ann), 1);
    QVERIFY(group.containsMeta(QStringLiteral("Ann")) && ann.getGroup() == other);
    QCOMPARE(other.removeBuddy(ann), 1);
    QVERIFY(!ann.getGroup().isValid());

    VeskBuddyMeta const bob = group.addMeta(QStringLiteral("Bob"));
    QCOMPARE(group.removeBuddy(bob), 1);
    QVERIFY(!group.containsMeta(QStringLiteral("Bob")) && !bob.getGroup().isValid());
    QVERIFY(group.addMeta(QStringLiteral("Bob")) != bob);
}

void TestBuddyGroup::countsAndContainment()
{
    Dismantler cleanup;
    VeskPresenceType offline;
    offline.flag = VeskPresence::Offline;
    VeskPresenceType online;
    online.flag = VeskPresence::Flag(1);

    VeskBuddyGroup group(QStringLiteral("G"));
    cleanup.containers << group;
    VeskBuddyContact const away = contact(QStringLiteral("off"), &offline);
    VeskBuddyContact const here = contact(QStringLiteral("on"), &online);
    VeskBuddyContact const nested = contact(QStringLiteral("nested"), &online);
    VeskBuddyContact const inMerged = contact(QStringLiteral("merged"), &online);
    VeskBuddyContact const deep = contact(QStringLiteral("deep"), &online);
    VeskBuddyMeta meta = group.addMeta(QStringLiteral("M"));
    QVERIFY(group.addBuddy(away) && group.addBuddy(here) && meta.addBuddy(nested));
    QVERIFY(meta.addBuddy(VeskBuddyMerged(QString(), {deep})));
    QVERIFY(group.addBuddy(VeskBuddyMerged(QString(), {inMerged})) && group.addBuddy(guestOf(&online)));

    QCOMPARE(group.onlineChildCount(), 1);
    QCOMPARE(group.statusChildCount(VeskPresence::Offline), 1);
    QCOMPARE(group.statusChildCount(VeskPresence::Flag(1)), 1);
    QVERIFY(group.addBuddy(contact(QStringLiteral("untyped")))); // flag 0: online, not offline
    QCOMPARE(group.onlineChildCount(), 2);
    QCOMPARE(group.statusChildCount(VeskPresence::Flag(0)), 1);

    QVERIFY(group.containsContact(away) && group.containsContact(nested));
    QVERIFY(group.containsContact(inMerged) && group.containsContact(deep));
    QVERIFY(!group.containsContact(contact(QStringLiteral("outside"))) && !group.containsBuddy(nested));
    QVERIFY(meta.containsContact(nested) && meta.containsContact(deep) && !meta.containsContact(here));
}

void TestBuddyGroup::groupOrderingAndDisplayState()
{
    VeskBuddyGroup const beta(QStringLiteral("beta"));
    VeskBuddyGroup const alpha(QStringLiteral("Alpha"));
    VeskBuddyGroup const alphaLower(QStringLiteral("alpha"));
    VeskBuddyContact const someone = contact(QStringLiteral("someone"));
    QVERIFY(!groupLessThan(beta, alpha) && groupLessThan(alpha, beta));
    QVERIFY(!groupLessThan(alpha, alphaLower) && !groupLessThan(alphaLower, alpha));
    QVERIFY(groupLessThan(alpha, someone) && groupLessThan(someone, alpha));

    QList<VeskBuddy> groups{VeskBuddyGroup(QStringLiteral("work")), beta,
                            VeskBuddyGroup(QStringLiteral("Zoo")), alpha};
    std::sort(groups.begin(), groups.end(), groupLessThan);
    QStringList names;
    for (VeskBuddy const& group : groups)
        names << group.getDisplay();
    QCOMPARE(names, (QStringList{QStringLiteral("Alpha"), QStringLiteral("beta"),
                                 QStringLiteral("work"), QStringLiteral("Zoo")}));

    VeskBuddyGroup const alias{VeskBuddy(beta)};
    alias.data()->pos = 3;
    alias.data()->expanded = true;
    QCOMPARE(beta.getPos(), 3);
    QVERIFY(beta.isExpanded());
}

void TestBuddyGroup::debugTexts()
{
    Dismantler cleanup;
    VeskBuddyGroup group(QStringLiteral("g"));
    cleanup.containers << group;
    QString const empty = QStringLiteral("VeskBuddyGroup(\n\tvalid       :true\n\tdisplay     :\"g\"\n\t"
                                         "child count :0\n\texpanded    :false\n) ");
    QCOMPARE(textOf(group), empty);
    QCOMPARE(textOf(VeskBuddy(group)), empty + QLatin1Char(' '));
    QCOMPARE(textOf(VeskBuddyGroup()),
             QStringLiteral("VeskBuddyGroup(\n\tvalid       :false\n\tdisplay     :\"\"\n\t"
                            "child count :-1\n\texpanded    :false\n) "));

    VeskBuddyMeta meta = group.addMeta(QStringLiteral("Ann \"A\""));
    QVERIFY(meta.addBuddy(contact(QStringLiteral("a"))));
    meta.data()->expanded = true;
    QCOMPARE(textOf(meta),
             QStringLiteral("VeskBuddyMeta(\n\tvalid       :true\n\tdisplay     :\"Ann \"A\"\"\n\t"
                            "child count :1\n\texpanded    :true\n) "));
    QCOMPARE(textOf(group).section(QLatin1Char('\n'), 3, 3), QStringLiteral("\tchild count :1"));
}

// Three threads keep pulling the same contacts into their own container: two
// groups and a meta-contact. Each move locks the receiving container and the
// one the contact leaves, so the threads take the same pairs of locks from
// opposite sides all the time.
void TestBuddyGroup::oppositeMovesDoNotDeadlock()
{
    Dismantler cleanup;
    VeskBuddyGroup first(QStringLiteral("first"));
    VeskBuddyGroup second(QStringLiteral("second"));
    VeskBuddyMeta meta(QStringLiteral("meta"));
    cleanup.containers << first << second << meta;
    QList<VeskBuddyContact> contacts;
    for (int i = 0; i < 40; ++i) {
        contacts.append(contact(QStringLiteral("c%1").arg(i)));
        QVERIFY((i % 2 ? first : second).addBuddy(contacts.last()));
    }

    int const rounds = 300;
    auto mover = [&contacts, rounds](auto container) {
        return std::async(std::launch::async, [container, &contacts, rounds]() mutable {
            for (int round = 0; round < rounds; ++round) {
                for (VeskBuddyContact const& c : contacts)
                    container.addBuddy(c);
            }
        });
    };
    std::future<void> movers[] = {mover(first), mover(second), mover(meta)};
    for (std::future<void>& moves : movers) {
        if (moves.wait_for(std::chrono::minutes(2)) != std::future_status::ready)
            qFatal("moves between containers deadlocked");
    }

    // Every contact ended in exactly one container, the one its link names.
    QCOMPARE(first.childCount() + second.childCount() + meta.childCount(), contacts.size());
    for (VeskBuddyContact const& c : contacts) {
        VeskBuddy const parent = c.getParent();
        int const holders = int(first.containsBuddy(c)) + int(second.containsBuddy(c))
                            + int(meta.containsContact(c));
        QCOMPARE(holders, 1);
        QVERIFY(parent == first || parent == second || parent == meta);
        QVERIFY(parent != first || first.containsBuddy(c));
        QVERIFY(parent != second || second.containsBuddy(c));
    }
}

QTEST_APPLESS_MAIN(TestBuddyGroup)
#include "tst_buddygroup.moc"
