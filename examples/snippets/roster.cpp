#include "snippets.h"

#include <VeskData>

#include <thread>

namespace {

//! [kind]
// A protocol describes its contacts once: the presences they can have and
// their subscription states. The kind owns what it is given and deletes it
// with its last handle.
VeskBuddyType chatKind()
{
    VeskBuddyType kind(QStringLiteral("chat"), QStringLiteral("Chat protocol"));
    VeskBuddyTypePrivate* const record = kind.data();
    struct { char const* id; quint32 priority; qint32 flag; } const presences[] = {
        {"online", 30, 1}, {"away", 20, 3}, {"offline", 0, VeskPresence::Offline}};
    for (auto const& p : presences) {
        auto* const type = new VeskPresenceType;
        type->id = type->display = QString::fromLatin1(p.id);
        type->priority = p.priority;
        type->flag = VeskPresence::Flag(p.flag);
        record->presences.insert(type->id, type);
        record->presenceList.append(type);
    }
    record->subscriptions << new VeskSubscriptionType(QStringLiteral("Both"), QStringLiteral("both"),
                                                      1, QString());
    return kind;
}
//! [kind]


} // namespace

bool rosterGuide()
{
    VeskAccountConnection account;

    //! [contacts]
    VeskBuddyType const kind = chatKind();
    auto presence = [&](VeskPresence::Flag flag) {
        return VeskPresence(kind.data()->getPresenceWithFlag(flag), QString());
    };
    VeskSubscriptionType const both = kind.getSubscriptionWithId(QStringLiteral("both"));
    VeskBuddyContact const ann(&account, QStringLiteral("ann@example.org"), QStringLiteral("Ann"),
                               kind, presence(VeskPresence::Flag(1)), both);
    VeskBuddyContact const bob(&account, QStringLiteral("bob@example.org"), QStringLiteral("Bob"),
                               kind, presence(VeskPresence::Offline), both);
    //! [contacts]

    //! [containers]
    VeskBuddyGroup friends(QStringLiteral("Friends"));
    VeskBuddyGroup work(QStringLiteral("Work"));
    friends.addBuddy(ann);
    VeskBuddyMeta bobs = friends.addMeta(QStringLiteral("Bob"));
    bobs.addBuddy(bob);
    //! [containers]
    bool ok = expect(friends.childCount() == 2 && friends.onlineChildCount() == 1
                         && friends.statusChildCount(VeskPresence::Offline) == 0,
                     "the group's counts");
    ok &= expect(friends.containsContact(bob) && bobs.getGroup() == friends,
                 "the meta-contact's contact");

    //! [kinds]
    // A base handle converts to a kind handle through the kind's constructor,
    // which yields an invalid handle when the kinds differ.
    VeskBuddy const first = friends.buddyAt(0);
    bool const isContact = VeskBuddyContact(first).isValid();
    bool const isMeta = VeskBuddyMeta(first).isValid();
    //! [kinds]
    ok &= expect(isContact && !isMeta && VeskBuddyContact(first) == ann, "the kind conversions");

    //! [move]
    // Placing a contact in another group takes it out of the container it was in.
    work.addBuddy(ann);
    //! [move]
    ok &= expect(!friends.containsBuddy(ann) && work.containsBuddy(ann)
                     && VeskBuddyContact(ann).getParent() == work,
                 "moving a contact between groups");

    //! [threads]
    // Handles may be copied to any thread: records are shared with atomic
    // counts, and each container orders changes to its children under its
    // own lock. Here a protocol thread fills a group the main thread shows.
    VeskBuddyGroup incoming(QStringLiteral("Incoming"));
    std::thread protocol([incoming, kind, both, &account]() mutable {
        for (int i = 0; i < 10; ++i) {
            incoming.addBuddy(VeskBuddyContact(&account, QStringLiteral("guest%1").arg(i),
                                               QString(), kind, VeskPresence(), both));
        }
    });
    protocol.join();
    //! [threads]
    ok &= expect(incoming.childCount() == 10, "the protocol thread's contacts");

    //! [clear]
    // Containers and their children refer to each other, so a contact list
    // that is thrown away is cleared first.
    for (VeskBuddyGroup group : {friends, work, incoming})
        group.clear();
    //! [clear]
    return ok;
}
