#include "roster.h"
#include "say.h"

#include <VeskData>

#include <QtCore/QDebug>

#include <algorithm>

namespace {

template<typename T>
QString debugText(T const& value)
{
    QString out;
    {
        QDebug dbg(&out);
        dbg << value;
    }
    return out;
}

// Prints a multi-line debug text indented under the current section.
void sayDebug(QString const& text)
{
    for (QString const& line : text.split(QLatin1Char('\n')))
        say(QStringLiteral("    ") + line);
}

VeskPresenceType* presenceType(QString const& id, QString const& display, quint32 priority, qint32 flag)
{
    auto* type = new VeskPresenceType;
    type->id = id;
    type->display = display;
    type->icon = QStringLiteral(":/sample/") + id + QStringLiteral(".png");
    type->priority = priority;
    type->flag = VeskPresence::Flag(flag);
    return type;
}

// The sample protocol's contact kind: its presences, subscription states and
// the extra information its contacts carry. The kind owns what it is given.
VeskBuddyType sampleContactKind()
{
    VeskBuddyType kind(QStringLiteral("sample"), QStringLiteral("Sample protocol"));
    VeskBuddyTypePrivate* const record = kind.data();
    for (VeskPresenceType* type : {presenceType(QStringLiteral("online"), QStringLiteral("Online"), 30, 1),
                                   presenceType(QStringLiteral("away"), QStringLiteral("Away"), 20, 3),
                                   presenceType(QStringLiteral("offline"), QStringLiteral("Offline"), 0,
                                                VeskPresence::Offline)}) {
        record->presences.insert(type->id, type);
        record->presenceList.append(type);
    }
    record->subscriptions
        << new VeskSubscriptionType(QStringLiteral("Both"), QStringLiteral("both"), 2, QString())
        << new VeskSubscriptionType(QStringLiteral("Asked"), QStringLiteral("ask"), 1,
                                    QStringLiteral(":/sample/ask.png"));
    record->extraInfoFields << VeskField::lineEdit(QStringLiteral("City"), QStringLiteral("city"),
                                                   QString(), 64, QString());
    return kind;
}

VeskPresence presence(VeskBuddyType const& kind, VeskPresence::Flag flag, QString const& text = QString())
{
    return VeskPresence(kind.data()->getPresenceWithFlag(flag), text);
}

void sayCounts(VeskBuddyGroup const& group)
{
    say(QStringLiteral("  %1: entries %2, contacts online %3, offline %4")
            .arg(group.getDisplay())
            .arg(group.childCount())
            .arg(group.onlineChildCount())
            .arg(group.statusChildCount(VeskPresence::Offline)));
}

} // namespace

void showContactList()
{
    say(QStringLiteral("== Contact list"));
    VeskBuddyType const kind = sampleContactKind();
    VeskSubscriptionType const both = kind.getSubscriptionWithId(QStringLiteral("both"));
    VeskSubscriptionType const asked = kind.getSubscriptionWithId(QStringLiteral("ask"));
    VeskBuddyResourceType desktop(QStringLiteral("desktop"), QStringLiteral(":/sample/desktop.png"));
    VeskBuddyResourceType phone(QStringLiteral("phone"), QStringLiteral(":/sample/phone.png"));
    VeskAccountConnection home;
    VeskAccountConnection work;
    VeskPresence::Flag const online = VeskPresence::Flag(1);
    VeskPresence::Flag const away = VeskPresence::Flag(3);

    auto makeContact = [&](VeskAccountConnection* account, char const* id, char const* name,
                           VeskPresence::Flag flag, VeskSubscriptionType const& subscription) {
        return VeskBuddyContact(account, QString::fromLatin1(id), QString::fromLatin1(name), kind,
                                presence(kind, flag), subscription);
    };
    VeskBuddyContact alice = makeContact(&home, "alice@home", "Alice", online, both);
    VeskBuddyContact const bob = makeContact(&home, "bob@home", "", VeskPresence::Offline, both);
    VeskBuddyContact const carol = makeContact(&work, "carol@work", "Carol", away, asked);
    VeskBuddyContact const annHome = makeContact(&home, "ann@home", "Ann", online, both);
    VeskBuddyContact const annWork = makeContact(&work, "ann@work", "Ann (work)", away, both);
    VeskBuddyContact const dave = makeContact(&home, "dave@home", "Dave", online, both);
    VeskBuddyContact const daveWork = makeContact(&work, "dave@work", "Dave", VeskPresence::Offline, both);

    // Resources and extra information are kept current by the protocol code.
    alice.data()->resources << VeskBuddyResource(&desktop, presence(kind, away))
                            << VeskBuddyResource(&phone, presence(kind, online, QStringLiteral("on the go")));
    QList<VeskField> city = alice.getAvailableExtraInfo();
    city[0].setText(QStringLiteral("Lisbon"));
    alice.setFieldValues(city);

    VeskBuddyGroup friends(QStringLiteral("friends"));
    VeskBuddyGroup colleagues(QStringLiteral("Colleagues"));
    VeskBuddyGroup family(QStringLiteral("Family"));
    VeskBuddyGroup notInList(QStringLiteral("Not in list"));
    friends.addBuddy(alice);
    friends.addBuddy(bob);
    friends.addBuddy(carol);
    VeskBuddyMeta ann = family.addMeta(QStringLiteral("Ann"));
    ann.addBuddy(annHome);
    ann.addBuddy(annWork);
    VeskBuddyMerged const daveEverywhere(QString(), {dave, daveWork});
    friends.addBuddy(daveEverywhere);
    colleagues.addBuddy(VeskBuddyCustom(QStringLiteral("Team news"), QStringLiteral("feed"),
                                        QStringLiteral("sample"), {{QStringLiteral("url"), VeskArg("https://example.org/news")}},
                                        QStringLiteral("What the team shipped"),
                                        QStringLiteral(":/sample/feed.png"), QString()));
    VeskBuddyTemporary const stranger(&home, QStringLiteral("erin@elsewhere"), presence(kind, online),
                                      notInList);
    notInList.addBuddy(stranger);

    say(QStringLiteral("  kind %1, subscription \"ask\" shows %2")
            .arg(kind.getDisplay(), asked.getDisplay()));
    say(QStringLiteral("  Alice: active resource %1 (%2), city %3")
            .arg(alice.getActiveResource().getName(), alice.getActiveResource().getPresence().getDescription(),
                 alice.getExtraInfo().at(0).getText()));
    say(QStringLiteral("  Bob has no display name and shows his id: %1").arg(bob.getDisplay()));
    say(QStringLiteral("  Carol's icon comes from her subscription: %1").arg(carol.getPresenceIcon()));
    say(QStringLiteral("  the merged Dave speaks through %1, accounts: %2")
            .arg(daveEverywhere.getId()).arg(daveEverywhere.getAccounts().size()));
    say(QStringLiteral("  Family holds Ann's work contact through the meta-contact: %1")
            .arg(family.containsContact(annWork) ? QStringLiteral("yes") : QStringLiteral("no")));

    say(QStringLiteral("  online counts before the move:"));
    for (VeskBuddyGroup const& group : {friends, colleagues})
        sayCounts(group);
    colleagues.addBuddy(carol);
    say(QStringLiteral("  Carol moved to %1; friends still holds her: %2")
            .arg(carol.getParent().getDisplay(),
                 friends.containsBuddy(carol) ? QStringLiteral("yes") : QStringLiteral("no")));
    say(QStringLiteral("  online counts after the move:"));
    for (VeskBuddyGroup const& group : {friends, colleagues})
        sayCounts(group);

    QList<VeskBuddy> groups{friends, notInList, colleagues, family};
    std::sort(groups.begin(), groups.end(), groupLessThan);
    QStringList names;
    for (VeskBuddy const& group : groups)
        names << group.getDisplay();
    say(QStringLiteral("  groups sorted by name: ") + names.join(QStringLiteral(", ")));

    say(QStringLiteral("  debug texts:"));
    sayDebug(debugText(VeskBuddy(friends)));
    sayDebug(debugText(ann));
    sayDebug(debugText(alice));
    sayDebug(debugText(alice.getPresence()));
    sayDebug(debugText(daveEverywhere));
    sayDebug(debugText(colleagues.buddyAt(0)));
    sayDebug(debugText(stranger));
    VeskBuddyType copy = kind;
    sayDebug(debugText(QList<VeskBuddyType*>{&copy}));

    // Containers and their children hold each other: the list is cleared
    // before it is thrown away.
    for (VeskBuddyGroup group : {friends, colleagues, family, notInList})
        group.clear();
}
