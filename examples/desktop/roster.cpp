#include "roster.h"

namespace {

void addPresence(VeskBuddyTypePrivate* kind, QString const& iconDir, char const* id, char const* display,
                 quint32 priority, qint32 flag)
{
    auto* const type = new VeskPresenceType;
    type->id = QString::fromLatin1(id);
    type->display = QString::fromLatin1(display);
    type->icon = iconDir + QLatin1Char('/') + type->id + QStringLiteral(".png");
    type->priority = priority;
    type->flag = VeskPresence::Flag(flag);
    kind->presences.insert(type->id, type);
    kind->presenceList.append(type);
}

// The accounts the contacts belong to; the contact list only points to them.
VeskAccountConnection* account(int which)
{
    static VeskAccountConnection accounts[2];
    return &accounts[which];
}

} // namespace

QList<VeskBuddyGroup> sampleContactList(QString const& iconDir)
{
    VeskBuddyType kind(QStringLiteral("sample"), QStringLiteral("Sample protocol"));
    addPresence(kind.data(), iconDir, "online", "Online", 30, 1);
    addPresence(kind.data(), iconDir, "away", "Away", 20, 3);
    addPresence(kind.data(), iconDir, "offline", "Offline", 0, VeskPresence::Offline);
    kind.data()->subscriptions
        << new VeskSubscriptionType(QStringLiteral("Both"), QStringLiteral("both"), 2, QString())
        << new VeskSubscriptionType(QStringLiteral("Asked"), QStringLiteral("ask"), 1,
                                    iconDir + QStringLiteral("/ask.png"));
    VeskSubscriptionType const both = kind.getSubscriptionWithId(QStringLiteral("both"));
    VeskSubscriptionType const asked = kind.getSubscriptionWithId(QStringLiteral("ask"));

    auto contact = [&](int acc, char const* id, char const* name, char const* presence, char const* text,
                       VeskSubscriptionType const& subscription = VeskSubscriptionType()) {
        VeskPresence const p(kind.data()->presences.value(QString::fromLatin1(presence)),
                             QString::fromUtf8(text));
        return VeskBuddyContact(account(acc), QString::fromLatin1(id), QString::fromUtf8(name), kind, p,
                                subscription.isValid() ? subscription : both);
    };

    VeskBuddyGroup friends(QStringLiteral("Friends"));
    VeskBuddyGroup family(QStringLiteral("family"));
    VeskBuddyGroup colleagues(QStringLiteral("Colleagues"));
    VeskBuddyGroup strangers(QStringLiteral("Not in list"));

    VeskBuddyContact const alice = contact(0, "alice@home", "Alice", "online", "at the desk");
    friends.addBuddy(alice);
    friends.addBuddy(contact(0, "bob@home", "", "offline", ""));
    friends.addBuddy(contact(1, "carol@work", "Carol", "away", "in a meeting"));
    friends.addBuddy(contact(0, "frank@home", "Frank", "online", "", asked));
    friends.addBuddy(VeskBuddyMerged(QString(), {contact(0, "dave@home", "Dave", "online", ""),
                                                 contact(1, "dave@work", "Dave", "offline", "")}));
    VeskBuddyMeta ann = family.addMeta(QStringLiteral("Ann"));
    ann.addBuddy(contact(0, "ann@home", "Ann", "away", "back soon"));
    ann.addBuddy(contact(1, "ann@work", "Ann (work)", "online", ""));
    family.addBuddy(contact(0, "mum@home", "Mum", "online", ""));
    colleagues.addBuddy(contact(1, "erin@work", "Erin", "online", "coding"));
    colleagues.addBuddy(contact(1, "gus@work", "Gus", "offline", ""));
    colleagues.addBuddy(VeskBuddyCustom(QStringLiteral("Team news"), QStringLiteral("feed"),
                                        QStringLiteral("sample"), {}, QStringLiteral("What the team shipped"),
                                        iconDir + QStringLiteral("/feed.png"), QString()));
    strangers.addBuddy(VeskBuddyTemporary(account(0), QStringLiteral("hal@elsewhere"),
                                          VeskPresence(kind.data()->presences.value(QStringLiteral("online")),
                                                       QString()),
                                          strangers));
    VeskBuddy(alice).setUnreadMessages(2);
    return {friends, family, colleagues, strangers};
}

