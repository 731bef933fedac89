#include <VeskData>

#include <QtTest/QtTest>

#include "vesktest.h"

#include <chrono>
#include <future>

namespace {

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
    QList<VeskBuddy> children;
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
        children = std::exchange(record->children, {});
    }
    if (VeskBuddyGroupPrivate* const record = VeskBuddyGroup(entry).data()) {
        record->metas.clear();
        children = std::exchange(record->children, {});
    }
    for (VeskBuddy const& child : std::as_const(children))
        unlink(child);
}

// Runs f in another thread and gives its result; a deadlock ends the program
// rather than the test run.
template<typename F>
auto withinMinutes(F&& f)
{
    auto result = std::async(std::launch::async, std::forward<F>(f));
    if (result.wait_for(std::chrono::minutes(2)) != std::future_status::ready)
        qFatal("a look-up waited for a lock that its own thread holds");
    return result.get();
}

// Changes a record's public members the way code outside the library may:
// under the record's mutex.
template<typename Record, typename F>
void editUnderLock(Record* record, F&& f)
{
    QMutexLocker locker(&record->mutex);
    f(*record);
}

template<typename... Containers>
auto dismantler(Containers const&... containers)
{
    return qScopeGuard([=] { (unlink(containers), ...); });
}

} // namespace

class TestBuddyGroup : public QObject
{
    Q_OBJECT

private slots:
    void addingChecksMembershipAndKind();
    void movesKeepParentLinksInStep();
    void countsContainmentAndOrder();
    void debugTexts();
    void oppositeMovesDoNotDeadlock();
    void entriesWithoutKindRecord();
    void lookupsNeverWaitForTheMutex();
    void directEditsOfTheChildList();
    void clearTakesTheTreeApart();
};

void TestBuddyGroup::addingChecksMembershipAndKind()
{
    VeskBuddyGroup group(QStringLiteral("Friends"));
    VeskBuddyMeta meta(QStringLiteral("Ann"));
    auto const cleanup = dismantler(group, meta);
    VeskBuddyContact const alice = contact(QStringLiteral("alice"));
    VeskBuddyContact const bob = contact(QStringLiteral("bob"));
    VeskBuddyCustom const feed = custom(QStringLiteral("feed"));
    VeskBuddyTemporary const guest = guestOf(nullptr);

    // An invalid container takes nothing and leaves the link alone.
    QVERIFY(!VeskBuddyGroup().addBuddy(alice) && !VeskBuddyMeta().addBuddy(alice) && !alice.getParent().isValid());

    QVERIFY(group.addBuddy(alice) && !group.addBuddy(alice));
    QVERIFY(group.addBuddy(feed) && group.addBuddy(guest) && group.addBuddy(bob));
    QVERIFY(!group.addBuddy(VeskBuddyGroup(QStringLiteral("Nested"))) && !group.addBuddy(VeskBuddy()));
    QCOMPARE(group.childCount(), 4);
    QVERIFY(group.buddyAt(0) == alice && group.buddyAt(2) == guest && group.buddyAt(3) == bob);

    // Out-of-range indexes change nothing.
    QVERIFY(!group.buddyAt(4).isValid() && !group.removeAt(4).isValid() && !group.removeAt(-1).isValid());
    QCOMPARE(group.childCount(), 4);
    QVERIFY(group.removeAt(1) == feed && !group.containsBuddy(feed));
    QVERIFY(group.addBuddy(feed) && group.buddyAt(3) == feed); // its link still names the group

    QVERIFY(!meta.addBuddy(guest) && !meta.addBuddy(group) && !meta.addBuddy(VeskBuddyMeta(QStringLiteral("in"))));
    VeskBuddyMerged const merged(QString(), {bob});
    QVERIFY(meta.addBuddy(merged) && !meta.addBuddy(merged) && meta.addBuddy(alice));
    QVERIFY(meta.buddyAt(1) == alice && meta.removeAt(0) == merged);
    QCOMPARE(meta.childCount(), 1);
}

void TestBuddyGroup::movesKeepParentLinksInStep()
{
    VeskBuddyGroup first(QStringLiteral("A"));
    VeskBuddyGroup second(QStringLiteral("B"));
    VeskBuddyMeta meta(QStringLiteral("M"));
    auto const cleanup = dismantler(first, second, meta);
    VeskBuddyContact const alice = contact(QStringLiteral("alice"));
    VeskBuddyCustom const feed = custom(QStringLiteral("feed"));

    QVERIFY(first.addBuddy(alice) && second.addBuddy(alice) && !first.containsBuddy(alice));
    QCOMPARE(first.removeBuddy(alice), 0);
    QVERIFY(alice.getParent() == second);
    QVERIFY(meta.addBuddy(alice) && !second.containsBuddy(alice) && alice.getParent() == meta);
    QCOMPARE(meta.removeBuddy(alice), 1);
    QVERIFY(alice.getParent() == meta); // a meta-contact leaves the link alone
    QVERIFY(first.addBuddy(alice) && first.removeAt(0) == alice && alice.getParent() == first);
    QVERIFY(first.addBuddy(alice) && first.removeBuddy(alice) == 1 && !alice.getParent().isValid());
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

    // A group's meta-contacts are filed by name as well.
    VeskBuddyMeta const ann = first.addMeta(QStringLiteral("Ann"));
    QVERIFY(first.addMeta(QStringLiteral("Ann")) == ann && !first.addBuddy(ann));
    QVERIFY(first.buddyAt(first.childCount() - 1) == ann && ann.getGroup() == first);
    QVERIFY(first.containsMeta(QStringLiteral("Ann")) && !first.containsMeta(QStringLiteral("ann")));

    // Placing it in another group relinks it without taking it out here;
    // removing it here then leaves the second group's link and the table alone.
    QVERIFY(second.addBuddy(ann) && ann.getGroup() == second);
    QCOMPARE(first.removeBuddy(ann), 1);
    QVERIFY(first.containsMeta(QStringLiteral("Ann")) && ann.getGroup() == second);
    QCOMPARE(second.removeBuddy(ann), 1);
    QVERIFY(!ann.getGroup().isValid());

    VeskBuddyMeta const bob = first.addMeta(QStringLiteral("Bob"));
    QCOMPARE(first.removeBuddy(bob), 1);
    QVERIFY(!first.containsMeta(QStringLiteral("Bob")) && !bob.getGroup().isValid());
    QVERIFY(first.addMeta(QStringLiteral("Bob")) != bob);
}

void TestBuddyGroup::countsContainmentAndOrder()
{
    VeskPresenceType offline{QString(), QString(), QString(), 0, VeskPresence::Offline};
    VeskPresenceType online{QString(), QString(), QString(), 0, VeskPresence::Flag(1)};
    VeskBuddyGroup group(QStringLiteral("G"));
    auto const cleanup = dismantler(group);
    VeskBuddyContact const away = contact(QStringLiteral("off"), &offline);
    VeskBuddyContact const here = contact(QStringLiteral("on"), &online);
    VeskBuddyContact const nested = contact(QStringLiteral("nested"), &online);
    VeskBuddyContact const inMerged = contact(QStringLiteral("merged"), &online);
    VeskBuddyContact const deep = contact(QStringLiteral("deep"), &online);
    VeskBuddyMeta meta = group.addMeta(QStringLiteral("M"));
    QVERIFY(group.addBuddy(away) && group.addBuddy(here) && meta.addBuddy(nested));
    QVERIFY(meta.addBuddy(VeskBuddyMerged(QString(), {deep})));
    QVERIFY(group.addBuddy(VeskBuddyMerged(QString(), {inMerged})) && group.addBuddy(guestOf(&online)));

    // Only the group's own contacts count; flag 0 is online, not offline.
    QVERIFY(group.addBuddy(contact(QStringLiteral("untyped"))));
    QCOMPARE(group.onlineChildCount(), 2);
    QCOMPARE(group.statusChildCount(VeskPresence::Offline), 1);
    QCOMPARE(group.statusChildCount(VeskPresence::Flag(1)), 1);

    QVERIFY(group.containsContact(away) && group.containsContact(nested));
    QVERIFY(group.containsContact(inMerged) && group.containsContact(deep));
    QVERIFY(!group.containsContact(contact(QStringLiteral("outside"))) && !group.containsBuddy(nested));
    QVERIFY(meta.containsContact(nested) && meta.containsContact(deep) && !meta.containsContact(here));

    // Groups order by name, ignoring case; anything else is "less" both ways.
    VeskBuddyGroup const alpha(QStringLiteral("Alpha"));
    VeskBuddyGroup const beta(QStringLiteral("beta"));
    QVERIFY(groupLessThan(alpha, beta) && !groupLessThan(beta, alpha));
    QVERIFY(!groupLessThan(alpha, VeskBuddyGroup(QStringLiteral("alpha"))));
    QVERIFY(groupLessThan(beta, VeskBuddyGroup(QStringLiteral("Zoo"))));
    QVERIFY(groupLessThan(alpha, here) && groupLessThan(here, alpha));
}

void TestBuddyGroup::debugTexts()
{
    VeskBuddyGroup group(QStringLiteral("g"));
    auto const cleanup = dismantler(group);
    QString const empty = QStringLiteral("VeskBuddyGroup(\n\tvalid       :true\n\tdisplay     :\"g\"\n\t"
                                         "child count :0\n\texpanded    :false\n) ");
    QCOMPARE(debugText(group), empty);
    QCOMPARE(debugText(VeskBuddy(group)), empty + QLatin1Char(' '));
    QCOMPARE(debugText(VeskBuddyGroup()),
             QStringLiteral("VeskBuddyGroup(\n\tvalid       :false\n\tdisplay     :\"\"\n\t"
                            "child count :-1\n\texpanded    :false\n) "));

    VeskBuddyMeta meta = group.addMeta(QStringLiteral("Ann \"A\""));
    QVERIFY(meta.addBuddy(contact(QStringLiteral("a"))));
    meta.data()->expanded = true;
    QCOMPARE(debugText(meta),
             QStringLiteral("VeskBuddyMeta(\n\tvalid       :true\n\tdisplay     :\"Ann \"A\"\"\n\t"
                            "child count :1\n\texpanded    :true\n) "));

    // The writers leave the caller's own quoting of strings as they found it.
    for (bool const quoting : {false, true}) {
        QString out;
        {
            QDebug stream(&out);
            if (!quoting)
                stream.noquote();
            stream << group << VeskArg(QStringLiteral("v")) << QStringLiteral("after");
        }
        QVERIFY2(out.endsWith(quoting ? QStringLiteral("\"after\" ") : QStringLiteral(" after ")),
                 qPrintable(out));
    }
}

// Three threads keep pulling the same contacts into their own container: two
// groups and a meta-contact, so they take the same pairs of locks from
// opposite sides all the time.
void TestBuddyGroup::oppositeMovesDoNotDeadlock()
{
    VeskBuddyGroup first(QStringLiteral("first"));
    VeskBuddyGroup second(QStringLiteral("second"));
    VeskBuddyMeta meta(QStringLiteral("meta"));
    auto const cleanup = dismantler(first, second, meta);
    QList<VeskBuddyContact> contacts;
    for (int i = 0; i < 40; ++i) {
        contacts.append(contact(QStringLiteral("c%1").arg(i)));
        QVERIFY((i % 2 ? first : second).addBuddy(contacts.last()));
    }

    auto mover = [&contacts](auto container) {
        return std::async(std::launch::async, [container, &contacts]() mutable {
            for (int round = 0; round < 300; ++round) {
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
        QCOMPARE(int(first.containsBuddy(c)) + int(second.containsBuddy(c)) + int(meta.containsContact(c)), 1);
        QVERIFY(parent == first || parent == second || parent == meta);
        QVERIFY((parent == first) == first.containsBuddy(c) && (parent == second) == second.containsBuddy(c));
    }
}

// VeskBuddy(name, type) makes an entry of a kind but without the kind's
// record; every operation on it gives the fallback.
void TestBuddyGroup::entriesWithoutKindRecord()
{
    VeskBuddyGroup group(QStringLiteral("g"));
    VeskBuddyMeta meta(QStringLiteral("m"));
    VeskBuddyGroup const bareGroup(VeskBuddy(QStringLiteral("bare"), VeskBuddy::Group));
    VeskBuddyContact const alice = contact(QStringLiteral("alice"));
    auto const cleanup = dismantler(group, meta, alice);

    for (int kind = VeskBuddy::Group; kind <= VeskBuddy::Custom; ++kind) {
        VeskBuddy const bare{QString(), VeskBuddy::Type(kind)};
        QVERIFY(!group.addBuddy(bare));
        QVERIFY(!meta.addBuddy(bare));
        QCOMPARE(group.removeBuddy(bare), 0);
        QCOMPARE(meta.removeBuddy(bare), 0);
        QVERIFY(!debugText(bare).isEmpty());
    }
    QCOMPARE(group.childCount(), 0);

    VeskBuddyContact const nameless{VeskBuddy(QString(), VeskBuddy::Contact)};
    QVERIFY(nameless.getDisplay().isNull());
    QCOMPARE(debugText(nameless), QStringLiteral("VeskBuddyContact(\n\tvalid   :true\n\tdisplay :\"\"\n\t"
                                                 "id      :\"\"\n) "));
    QCOMPARE(VeskBuddyMerged(QString(), {nameless}).getDisplay(), QString());

    QCOMPARE(bareGroup.childCount(), -1);
    QVERIFY(bareGroup.getPos() == -1 && !bareGroup.isExpanded());
    QVERIFY(!VeskBuddyMeta(VeskBuddy(QStringLiteral("bare"), VeskBuddy::Meta)).getGroup().isValid());
    // The position is stored as given and read back; outside code sets it.
    QCOMPARE(group.getPos(), 0);
    group.data()->pos = -7;
    QCOMPARE(group.getPos(), -7);
    // A meta-contact handle assigned another one becomes that entry.
    VeskBuddyMeta other(QStringLiteral("other"));
    other = meta;
    QVERIFY(other == meta && other.getDisplay() == QStringLiteral("m"));
    QCOMPARE(VeskBuddyGroup(bareGroup).removeBuddy(alice), -1);
    QVERIFY(!VeskBuddyGroup(bareGroup).addBuddy(alice));
    QVERIFY(!bareGroup.containsBuddy(alice) && !bareGroup.containsContact(alice));
    // A parent link that names such a group (the record is public) is left behind.
    alice.data()->parent = bareGroup;
    QVERIFY(group.addBuddy(alice));
    QCOMPARE(alice.getParent(), VeskBuddy(group));
}

void TestBuddyGroup::lookupsNeverWaitForTheMutex()
{
    VeskBuddyGroup group(QStringLiteral("g"));
    VeskBuddyMeta const meta = group.addMeta(QStringLiteral("m"));
    VeskBuddyContact const alice = contact(QStringLiteral("alice"));
    VeskBuddyContact const bob = contact(QStringLiteral("bob"));
    auto const cleanup = dismantler(group);
    QVERIFY(group.addBuddy(alice));
    QVERIFY(VeskBuddyMeta(meta).addBuddy(bob));

    // The caller holds the container's mutex, as code that reads the public
    // records does.
    auto const answers = withinMinutes([&] {
        QList<bool> seen;
        {
            QMutexLocker locker(&group.data()->mutex);
            seen << group.containsBuddy(alice) << group.containsBuddy(bob)
                 << group.containsMeta(QStringLiteral("m")) << group.containsContact(bob);
        }
        QMutexLocker locker(&meta.data()->mutex);
        seen << meta.containsContact(bob) << group.containsContact(bob) << meta.containsContact(alice);
        return seen;
    });
    QCOMPARE(answers, (QList<bool>{true, false, true, true, true, true, false}));

    // Another thread changes the list all the time; the answers about the
    // entries it leaves alone never change.
    std::atomic<bool> done{false};
    auto churn = std::async(std::launch::async, [&] {
        QList<VeskBuddyContact> others;
        for (int i = 0; i < 20; ++i)
            others << contact(QString::number(i));
        for (int round = 0; round < 200; ++round) {
            for (VeskBuddyContact const& other : std::as_const(others))
                group.addBuddy(other);
            for (VeskBuddyContact const& other : std::as_const(others))
                group.removeBuddy(other);
            QMutexLocker locker(&group.data()->mutex);
            group.data()->children.append(others.first());
            group.data()->children.removeLast();
        }
        done = true;
    });
    int wrong = 0;
    while (!done) {
        wrong += !group.containsBuddy(alice) + !group.containsMeta(QStringLiteral("m"))
            + !group.containsContact(bob) + group.containsBuddy(bob);
    }
    churn.get();
    QCOMPARE(wrong, 0);
}

void TestBuddyGroup::directEditsOfTheChildList()
{
    VeskBuddyGroup group(QStringLiteral("g"));
    VeskBuddyMeta meta(QStringLiteral("m"));
    QList<VeskBuddyContact> c;
    for (int i = 0; i < 6; ++i)
        c << contact(QString::number(i));
    auto const cleanup = dismantler(group, meta, c[0], c[1], c[2], c[3], c[4], c[5]);
    QVERIFY(group.addBuddy(c[0]) && group.addBuddy(c[1]));

    // Replaced in place: the list keeps its length.
    editUnderLock(group.data(), [&](VeskBuddyGroupPrivate& record) { record.children[0] = c[2]; });
    QVERIFY(!group.containsBuddy(c[0]));
    QVERIFY(group.containsBuddy(c[2]));
    QVERIFY(!group.addBuddy(c[2]));
    QCOMPARE(group.childCount(), 2);
    QCOMPARE(group.removeBuddy(c[2]), 1);
    QVERIFY(!group.containsBuddy(c[2]) && group.containsBuddy(c[1]));

    // Assigned, cleared and refilled to the same length, swapped out.
    editUnderLock(group.data(), [&](VeskBuddyGroupPrivate& record) { record.children = {c[3]}; });
    QVERIFY(!group.containsBuddy(c[1]) && group.containsBuddy(c[3]));
    editUnderLock(group.data(), [&](VeskBuddyGroupPrivate& record) {
        record.children.clear();
        record.children.append(c[4]);
    });
    QVERIFY(!group.containsBuddy(c[3]) && group.containsContact(c[4]));
    QList<VeskBuddy> other{c[5], c[0]};
    editUnderLock(group.data(), [&](VeskBuddyGroupPrivate& record) { record.children.swap(other); });
    QVERIFY(!group.containsBuddy(c[4]) && group.containsBuddy(c[5]) && group.containsBuddy(c[0]));
    QCOMPARE(group.removeBuddy(c[0]), 1);
    QCOMPARE(group.childCount(), 1);

    VeskBuddyMeta const inner = group.addMeta(QStringLiteral("inner"));
    editUnderLock(group.data(), [](VeskBuddyGroupPrivate& record) { record.metas.clear(); });
    QVERIFY(!group.containsMeta(QStringLiteral("inner")));

    // Meta-contacts keep their list the same way.
    QVERIFY(meta.addBuddy(c[1]) && meta.addBuddy(c[2]));
    editUnderLock(meta.data(), [&](VeskBuddyMetaPrivate& record) { record.children[1] = c[3]; });
    QVERIFY(!meta.containsContact(c[2]));
    QVERIFY(!meta.addBuddy(c[3]));
    editUnderLock(meta.data(), [&](VeskBuddyMetaPrivate& record) { record.children.append(c[1]); });
    QCOMPARE(meta.removeBuddy(c[1]), 2); // every entry of it
    QCOMPARE(meta.removeBuddy(c[3]), 1);
    QCOMPARE(meta.childCount(), 0);
}

// No dismantler here: whatever clear() leaves linked, the leak checker reports.
void TestBuddyGroup::clearTakesTheTreeApart()
{
    VeskBuddyGroup group(QStringLiteral("g"));
    VeskBuddyGroup other(QStringLiteral("o"));
    VeskBuddyContact const alice = contact(QStringLiteral("alice"));
    VeskBuddyContact const inner = contact(QStringLiteral("inner"));
    VeskBuddyCustom const feed = custom(QStringLiteral("feed"));
    VeskBuddyTemporary const guest = guestOf(nullptr);
    VeskBuddyMerged const merged(QString(), {contact(QStringLiteral("m"))});
    VeskBuddyMeta meta = group.addMeta(QStringLiteral("meta"));
    VeskBuddyMeta shared = group.addMeta(QStringLiteral("shared"));
    QVERIFY(meta.addBuddy(inner) && meta.addBuddy(merged) && other.addBuddy(shared));
    QVERIFY(shared.addBuddy(contact(QStringLiteral("s"))));
    QVERIFY(group.addBuddy(alice) && group.addBuddy(feed) && group.addBuddy(guest));
    group.data()->children << VeskBuddy(QStringLiteral("bare"), VeskBuddy::Contact) << VeskBuddy();

    group.clear();
    QVERIFY(group.childCount() == 0 && !group.containsMeta(QStringLiteral("meta")));
    QVERIFY(!alice.getParent().isValid() && !feed.getParent().isValid() && !guest.getGroup().isValid());
    QVERIFY(!meta.getGroup().isValid() && meta.childCount() == 0);
    QVERIFY(!inner.getParent().isValid() && !merged.getParent().isValid());
    // A meta-contact that another group took over keeps its children there.
    QVERIFY(shared.getGroup() == other && shared.childCount() == 1 && other.childCount() == 1);
    other.clear();
    QVERIFY(other.childCount() == 0 && shared.childCount() == 0);
    VeskBuddyGroup().clear();
}

QTEST_APPLESS_MAIN(TestBuddyGroup)
#include "tst_buddygroup.moc"
