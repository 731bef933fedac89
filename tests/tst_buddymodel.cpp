#include <VeskWidgets>

#include <QtCore/QSortFilterProxyModel>
#include <QtCore/QTemporaryDir>
#include <QtGui/QFont>
#include <QtGui/QIcon>
#include <QtGui/QImage>
#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QtTest>

#include <tuple>

namespace {

QString s(char const* text)
{
    return QString::fromUtf8(text);
}

// A small contact list of one protocol, taken apart again at the end:
// containers and their children keep each other alive.
struct Roster
{
    explicit Roster(QString const& iconDir)
        : kind(s("sample"), s("Sample"))
    {
        for (auto const& [id, priority, flag] : {std::make_tuple("online", 30, 1),
                                                 std::make_tuple("away", 20, 3),
                                                 std::make_tuple("offline", 0, int(VeskPresence::Offline))}) {
            auto* const type = new VeskPresenceType;
            type->id = s(id);
            type->display = s(id).toUpper();
            type->icon = iconDir + QLatin1Char('/') + s(id) + s(".png");
            type->priority = quint32(priority);
            type->flag = VeskPresence::Flag(flag);
            kind.data()->presences.insert(type->id, type);
            kind.data()->presenceList.append(type);
        }
    }
    ~Roster()
    {
        for (VeskBuddyGroup group : {friends, colleagues, family})
            group.clear();
    }

    VeskPresence presence(char const* id) const
    {
        return VeskPresence(kind.data()->presences.value(s(id)), QString());
    }
    VeskBuddyContact contact(char const* id, char const* name, char const* presenceId)
    {
        return VeskBuddyContact(&account, s(id), s(name), kind, presence(presenceId), VeskSubscriptionType());
    }

    VeskBuddyType kind;
    VeskAccountConnection account;
    VeskBuddyGroup friends{s("friends")};
    VeskBuddyGroup colleagues{s("Colleagues")};
    VeskBuddyGroup family{s("family")};
};

// The tree as text: "group[entry, meta{entry, entry}, ...] group[...]".
QString dump(QAbstractItemModel const& model, QModelIndex const& parent = QModelIndex())
{
    QStringList rows;
    for (int row = 0; row < model.rowCount(parent); ++row) {
        QModelIndex const index = model.index(row, 0, parent);
        QString text = index.data().toString();
        int const kind = index.data(VeskBuddyModel::KindRole).toInt();
        if (kind == VeskBuddy::Meta)
            text += s("{") + dump(model, index) + s("}");
        else if (kind == VeskBuddy::Group)
            text += s("[") + dump(model, index) + s("]");
        rows << text;
    }
    return rows.join(parent.isValid() ? s(", ") : s(" "));
}

// Every signal of one kind as "parent:first-last" (rows) or the move's five parts.
QStringList rowsOf(QSignalSpy const& spy)
{
    QStringList result;
    for (QList<QVariant> const& signal : spy) {
        QStringList parts;
        for (QVariant const& arg : signal) {
            auto const index = arg.value<QModelIndex>();
            parts << (arg.userType() != qMetaTypeId<QModelIndex>() ? arg.toString()
                      : index.isValid()                             ? index.data().toString()
                                                                    : s("root"));
        }
        result << parts.join(QLatin1Char(':'));
    }
    return result;
}

} // namespace

class TestBuddyModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void everyOperationKeepsTheModelSound();
    void rolesAndOrder();
    void proxyFiltersByDisplayText();

private:
    QTemporaryDir m_icons;
};

void TestBuddyModel::initTestCase()
{
    QVERIFY(m_icons.isValid());
    QImage image(8, 8, QImage::Format_ARGB32);
    for (char const* id : {"online", "away", "offline", "feed"}) {
        image.fill(Qt::green);
        QVERIFY(image.save(m_icons.filePath(s(id) + s(".png"))));
    }
}

void TestBuddyModel::everyOperationKeepsTheModelSound()
{
    Roster r(m_icons.path());
    VeskBuddyContact alice = r.contact("alice@home", "Alice", "online");
    VeskBuddyContact bob = r.contact("bob@home", "Bob", "offline");
    VeskBuddyContact carol = r.contact("carol@work", "Carol", "away");
    VeskBuddyContact dave = r.contact("dave@home", "Dave", "online");
    VeskBuddyContact annHome = r.contact("ann@home", "Ann", "online");
    VeskBuddyContact annWork = r.contact("ann@work", "Ann (work)", "away");
    for (VeskBuddy const& c : {alice, bob, carol})
        r.friends.addBuddy(c);

    VeskBuddyModel model;
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
    QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
    QSignalSpy moved(&model, &QAbstractItemModel::rowsMoved);
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);

    model.setGroups({r.friends, r.colleagues, r.friends});
    QCOMPARE(reset.size(), 1);
    QCOMPARE(dump(model), s("Colleagues[] friends[Alice, Carol, Bob]"));

    QVERIFY(model.addGroup(r.family));
    QVERIFY(!model.addGroup(r.family));
    QVERIFY(!model.addGroup(VeskBuddyGroup()));
    QCOMPARE(rowsOf(inserted), QStringList{s("root:1:1")});
    VeskBuddyMeta const ann = model.addMeta(r.family, s("Ann"));
    QCOMPARE(model.addMeta(r.family, s("Ann")), ann);
    QVERIFY(model.addBuddy(ann, annHome));
    QVERIFY(model.addBuddy(ann, annWork));
    QVERIFY(model.addBuddy(r.friends, dave));
    QVERIFY(!model.addBuddy(ann, VeskBuddyGroup(s("stray"))));
    QCOMPARE(rowsOf(inserted).mid(1),
             (QStringList{s("family:0:0"), s("Ann:0:0"), s("Ann:1:1"), s("friends:1:1")}));
    QCOMPARE(dump(model), s("Colleagues[] family[Ann{Ann, Ann (work)}] friends[Alice, Dave, Carol, Bob]"));

    // A move is one move signal, and the contact list agrees.
    inserted.clear();
    QVERIFY(model.moveBuddy(carol, r.colleagues));
    QCOMPARE(rowsOf(moved), QStringList{s("friends:2:2:Colleagues:0")});
    QVERIFY(inserted.isEmpty() && removed.isEmpty());
    QCOMPARE(carol.getParent(), VeskBuddy(r.colleagues));
    QVERIFY(!r.friends.containsBuddy(carol));
    QVERIFY(model.moveBuddy(annWork, r.friends));
    QVERIFY(!model.moveBuddy(ann, ann));
    QVERIFY(!model.moveBuddy(r.friends, r.colleagues));
    QCOMPARE(dump(model), s("Colleagues[Carol] family[Ann{Ann}] friends[Alice, Dave, Ann (work), Bob]"));
    QCOMPARE(ann.childCount(), 1);
    QVERIFY(r.friends.containsBuddy(annWork));

    // A presence moves the row to its new place and tells the meta-contact above.
    moved.clear();
    QVERIFY(model.setPresence(bob, r.presence("online")));
    QCOMPARE(rowsOf(moved), QStringList{s("friends:3:3:friends:1")});
    QCOMPARE(dump(model), s("Colleagues[Carol] family[Ann{Ann}] friends[Alice, Bob, Dave, Ann (work)]"));
    moved.clear();
    QVERIFY(model.setPresence(alice, r.presence("away")));
    QCOMPARE(rowsOf(moved), QStringList{s("friends:0:0:friends:3")});
    QCOMPARE(dump(model), s("Colleagues[Carol] family[Ann{Ann}] friends[Bob, Dave, Alice, Ann (work)]"));
    changed.clear();
    QVERIFY(model.setPresence(annHome, r.presence("offline")));
    QCOMPARE(model.indexOf(ann).data(VeskBuddyModel::PresenceRole).toString(), s("offline"));
    QVERIFY(rowsOf(changed).contains(s("Ann:Ann:")));
    QVERIFY(!model.setPresence(ann, r.presence("online")));

    changed.clear();
    QVERIFY(model.setUnreadCount(alice, 3));
    QCOMPARE(rowsOf(changed), QStringList{s("Alice:Alice:")});
    QCOMPARE(model.indexOf(alice).data(VeskBuddyModel::UnreadRole).toInt(), 3);
    QCOMPARE(alice.unreadMessages(), 3);

    removed.clear();
    QVERIFY(model.removeBuddy(dave));
    QVERIFY(!model.removeBuddy(dave));
    QCOMPARE(rowsOf(removed), QStringList{s("friends:1:1")});
    QVERIFY(!dave.getParent().isValid());
    QVERIFY(!r.friends.containsBuddy(dave));
    QVERIFY(model.removeBuddy(annHome));
    QVERIFY(!annHome.getParent().isValid());
    QCOMPARE(ann.childCount(), 0);

    // Kinds whose old container the contact list does not tell.
    VeskBuddyMerged const merged(QString(), {dave});
    QVERIFY(model.addBuddy(r.friends, merged));
    QVERIFY(model.moveBuddy(merged, r.colleagues));
    QVERIFY(!r.friends.containsBuddy(merged));
    QVERIFY(r.colleagues.containsBuddy(merged));
    QVERIFY(model.moveBuddy(ann, r.friends));
    QCOMPARE(ann.getGroup(), r.friends);
    QVERIFY(!r.family.containsBuddy(ann));
    QCOMPARE(dump(model), s("Colleagues[Dave, Carol] family[] friends[Bob, Alice, Ann (work), Ann{}]"));

    // Changes behind the model's back show after a refresh.
    r.colleagues.addBuddy(VeskBuddyCustom(s("Team news"), s("feed"), s("sample"), {}, s("What shipped"),
                                          m_icons.filePath(s("feed.png")), QString()));
    r.friends.removeBuddy(alice);
    reset.clear();
    model.refresh();
    QCOMPARE(reset.size(), 1);
    QCOMPARE(dump(model), s("Colleagues[Dave, Carol, Team news] family[] friends[Bob, Ann (work), Ann{}]"));

    removed.clear();
    QVERIFY(model.removeGroup(r.family));
    QVERIFY(!model.removeGroup(r.family));
    QCOMPARE(rowsOf(removed), QStringList{s("root:1:1")});
    QCOMPARE(model.groups(), (QList<VeskBuddyGroup>{r.colleagues, r.friends}));
    QVERIFY(!model.addBuddy(r.family, alice));
}

void TestBuddyModel::rolesAndOrder()
{
    Roster r(m_icons.path());
    VeskBuddyContact const alice = r.contact("alice@home", "Alice", "online");
    VeskBuddyContact const nameless = r.contact("zed@home", "", "away");
    VeskBuddyContact const bea = r.contact("bea@home", "bea", "online");
    VeskBuddyContact const cy = r.contact("cy@home", "Cy", "offline");
    VeskBuddyCustom const feed(s("Feed"), s("feed"), s("sample"), {}, s("News"),
                               m_icons.filePath(s("feed.png")), QString());
    r.friends.addBuddy(cy);
    r.friends.addBuddy(feed);
    r.friends.addBuddy(nameless);
    r.friends.addBuddy(bea);
    r.friends.addBuddy(alice);
    VeskBuddyMeta meta = r.friends.addMeta(s("Both"));
    VeskBuddyContact const away = r.contact("b1@home", "B1", "away");
    VeskBuddyContact const off = r.contact("b2@home", "B2", "offline");
    meta.addBuddy(off);
    meta.addBuddy(away);
    VeskBuddyGroup const upper(s("Zoo"));
    VeskBuddyGroup const lower(s("apes"));

    VeskBuddyModel model;
    model.setGroups({r.friends, upper, lower, r.colleagues});
    // Groups by name ignoring case; entries by presence, then by name ignoring
    // case (an entry without a name shows its id), a meta-contact by its best.
    QCOMPARE(dump(model),
             s("apes[] Colleagues[] friends[Alice, bea, Both{B1, B2}, zed@home, Cy, Feed] Zoo[]"));

    QModelIndex const a = model.indexOf(alice);
    QCOMPARE(a.data().toString(), s("Alice"));
    QVERIFY(!a.data(Qt::DecorationRole).value<QIcon>().isNull());
    QString const tip = a.data(Qt::ToolTipRole).toString();
    QVERIFY2(tip.contains(s("alice@home")) && tip.contains(s("ONLINE")), qPrintable(tip));
    QCOMPARE(qvariant_cast<VeskBuddyModelEntry>(a.data(VeskBuddyModel::EntryRole)).buddy, VeskBuddy(alice));
    QCOMPARE(model.entry(a), VeskBuddy(alice));
    QCOMPARE(a.data(VeskBuddyModel::PresenceRole).toString(), s("online"));
    QCOMPARE(a.data(VeskBuddyModel::KindRole).toInt(), int(VeskBuddy::Contact));
    QCOMPARE(a.data(VeskBuddyModel::UnreadRole).toInt(), 0);
    QVERIFY(!a.data(Qt::FontRole).isValid());
    model.setUnreadCount(alice, 2);
    QVERIFY(a.data(Qt::FontRole).value<QFont>().bold());
    QVERIFY(a.data(Qt::ToolTipRole).toString().contains(s("2 unread")));
    QCOMPARE(model.roleNames().value(VeskBuddyModel::PresenceRole), QByteArray("presence"));

    QModelIndex const m = model.indexOf(meta);
    QCOMPARE(m.data(VeskBuddyModel::PresenceRole).toString(), s("away"));
    QCOMPARE(m.data(VeskBuddyModel::KindRole).toInt(), int(VeskBuddy::Meta));
    QModelIndex const f = model.indexOf(feed);
    QVERIFY(f.data(VeskBuddyModel::PresenceRole).toString().isNull());
    QVERIFY(!f.data(Qt::DecorationRole).value<QIcon>().isNull());
    QVERIFY(f.data(Qt::ToolTipRole).toString().contains(s("News")));
    QModelIndex const g = model.indexOf(r.friends);
    QCOMPARE(g.data(Qt::ToolTipRole).toString(), s("friends: 3 of 6 online"));
    QVERIFY(!g.data(Qt::DecorationRole).isValid());
    QCOMPARE(model.flags(g) & Qt::ItemNeverHasChildren, Qt::ItemFlags());
    QCOMPARE(model.flags(a) & Qt::ItemNeverHasChildren, Qt::ItemNeverHasChildren);
    QVERIFY(!model.entry(QModelIndex()).isValid());
    QVERIFY(!model.indexOf(VeskBuddyContact()).isValid());

    // A merged entry shows and ranks as its first contact.
    VeskBuddyMerged const both(s("merged"), {cy, bea});
    QVERIFY(model.addBuddy(r.colleagues, both));
    QCOMPARE(model.indexOf(both).data().toString(), s("Cy"));
    QCOMPARE(model.indexOf(both).data(VeskBuddyModel::PresenceRole).toString(), s("offline"));
    QVERIFY(model.setPresence(cy, r.presence("away")));
    QCOMPARE(model.indexOf(both).data(VeskBuddyModel::PresenceRole).toString(), s("away"));
    QCOMPARE(dump(model).section(s(" "), 1, 1), s("Colleagues[Cy]"));
}

void TestBuddyModel::proxyFiltersByDisplayText()
{
    Roster r(m_icons.path());
    VeskBuddyContact const alice = r.contact("alice@home", "Alice", "online");
    VeskBuddyContact const bob = r.contact("bob@home", "Bob", "online");
    VeskBuddyContact const malia = r.contact("malia@work", "Malia", "away");
    r.friends.addBuddy(alice);
    r.friends.addBuddy(bob);
    r.colleagues.addBuddy(malia);

    VeskBuddyModel model;
    QSortFilterProxyModel proxy;
    proxy.setSourceModel(&model);
    proxy.setRecursiveFilteringEnabled(true);
    proxy.setFilterCaseSensitivity(Qt::CaseInsensitive);
    QAbstractItemModelTester tester(&proxy, QAbstractItemModelTester::FailureReportingMode::Fatal);
    model.setGroups({r.friends, r.colleagues, r.family});

    proxy.setFilterFixedString(s("ali"));
    QCOMPARE(dump(proxy), s("Colleagues[Malia] friends[Alice]"));
    QVERIFY(model.moveBuddy(malia, r.family));
    QCOMPARE(dump(proxy), s("family[Malia] friends[Alice]"));
    QVERIFY(model.setPresence(bob, r.presence("offline")));
    QVERIFY(model.removeBuddy(alice));
    QCOMPARE(dump(proxy), s("family[Malia]"));
    proxy.setFilterFixedString(QString());
    QCOMPARE(dump(proxy), s("Colleagues[] family[Malia] friends[Bob]"));
}

QTEST_MAIN(TestBuddyModel)
#include "tst_buddymodel.moc"
