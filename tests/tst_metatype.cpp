#include <VeskData>

#include <QtTest/QtTest>

namespace {

// One value of every argument type. The pointed-to objects and the records
// behind the handles live as long as the test object.
struct Samples
{
    VeskPlugin plugin;
    VeskAccountConnection account;
    VeskGuiEventsReceiver receiver;
    VeskPresenceType online;
    VeskBuddyResourceType phone{QStringLiteral("phone"), QStringLiteral("phone.png")};
    int pointee = 0;
    VeskBuddyGroup group{QStringLiteral("Friends")};

    QList<VeskArg> all()
    {
        online.id = QStringLiteral("online");
        VeskVideoClip clip;
        clip.value2 = 7;
        clip.text = QStringLiteral("clip");
        VeskTextFormat format;
        format.string1 = QStringLiteral("bold");
        VeskService const service(QStringLiteral("search"), QStringLiteral("b"), QStringLiteral("c"),
                                  QStringLiteral("proto"), VeskPluginAction());
        VeskField const spin = VeskField::spinBox(QStringLiteral("Port"), QStringLiteral("port"), 100,
                                                  1, 42, QString(), QString());
        return {VeskArg(char('x')), VeskArg((unsigned char)200), VeskArg(-5), VeskArg(5u),
                VeskArg(-(1LL << 40)), VeskArg(1ULL << 63), VeskArg(1.5f), VeskArg(2.25),
                VeskArg(QStringLiteral("text")), VeskArg(QByteArray("\0bytes", 6)),
                VeskArg(QStringList{QStringLiteral("a"), QStringLiteral("b")}), VeskArg(true),
                VeskArg(static_cast<void*>(&pointee)), VeskArg(QList<void*>{&pointee, nullptr}),
                VeskArg(&plugin), VeskArg(spin), VeskArg(QList<VeskField>{spin}),
                VeskArg(VeskXmlNode(QStringLiteral("node"), QStringLiteral("data"))), VeskArg(group),
                VeskArg(VeskBuddyResource(&phone, VeskPresence(&online, QString()))),
                VeskArg(&account), VeskArg(VeskPluginAction()),
                VeskArg(VeskPresence(&online, QStringLiteral("here"))), VeskArg(&receiver),
                VeskArg(clip), VeskArg(QList<VeskArg>{VeskArg(1), VeskArg(QStringLiteral("two"))}),
                VeskArg(service), VeskArg(QList<VeskService>{service}),
                VeskArg(QList<VeskTextFormat>{format})};
    }
};

class Sender : public QObject
{
    Q_OBJECT
signals:
    void arg(VeskArg const& value);
    void fields(QList<VeskField> const& value);
    void contact(VeskBuddyContact const& value);
};

// Lives in a worker thread and keeps what it receives, noting whether each
// slot ran in that thread. The main thread reads the store under its lock.
class Receiver : public QObject
{
    Q_OBJECT
public:
    QMutex mutex;
    QList<VeskArg> args;
    QList<VeskField> fields;
    VeskBuddyContact contact;
    int inWorker = 0;
    int received = 0;

    int count()
    {
        QMutexLocker const locker(&mutex);
        return received;
    }

public slots:
    void onArg(VeskArg const& value)
    {
        QMutexLocker const locker(&mutex);
        args.append(value);
        note();
    }
    void onFields(QList<VeskField> const& value)
    {
        QMutexLocker const locker(&mutex);
        fields = value;
        note();
    }
    void onContact(VeskBuddyContact const& value)
    {
        QMutexLocker const locker(&mutex);
        contact = value;
        note();
    }

private:
    void note()
    {
        inWorker += QThread::currentThread() == thread() && thread() != qApp->thread() ? 1 : 0;
        ++received;
    }
};

} // namespace

class TestMetaType : public QObject
{
    Q_OBJECT

private slots:
    void queuedConnectionsAcrossThreads();
    void variantRoundTrips();
    void variantRefusals();
};

// Connected by signature: on Qt 5 that only works for types registered by
// name, which the library does when the application starts.
void TestMetaType::queuedConnectionsAcrossThreads()
{
    Samples samples;
    QList<VeskArg> const sent = samples.all();
    VeskField const check = VeskField::checkBox(QStringLiteral("Away"), QStringLiteral("away"),
                                                false, QString(), QStringList());
    VeskBuddyType const kind(QStringLiteral("proto"), QStringLiteral("Proto"));
    VeskBuddyContact const buddy(&samples.account, QStringLiteral("id"), QStringLiteral("Ann"), kind,
                                 VeskPresence(), VeskSubscriptionType());

    QThread worker;
    Receiver receiver;
    receiver.moveToThread(&worker);
    Sender sender;
    QVERIFY(connect(&sender, SIGNAL(arg(VeskArg)), &receiver, SLOT(onArg(VeskArg)),
                    Qt::QueuedConnection));
    QVERIFY(connect(&sender, SIGNAL(fields(QList<VeskField>)), &receiver,
                    SLOT(onFields(QList<VeskField>)), Qt::QueuedConnection));
    QVERIFY(connect(&sender, SIGNAL(contact(VeskBuddyContact)), &receiver,
                    SLOT(onContact(VeskBuddyContact)), Qt::QueuedConnection));

    // Everything is queued before the worker starts: Qt's event queue orders
    // the calls under a lock that ThreadSanitizer cannot see, the start of a
    // thread it can.
    for (VeskArg const& value : sent)
        emit sender.arg(value);
    emit sender.fields({check});
    emit sender.contact(buddy);
    worker.start();
    int const expected = sent.size() + 2;
    QTRY_COMPARE(receiver.count(), expected);
    worker.quit();
    worker.wait();

    QMutexLocker const locker(&receiver.mutex);
    QCOMPARE(receiver.inWorker, expected);
    QCOMPARE(receiver.args.size(), sent.size());
    for (int i = 0; i < sent.size(); ++i) {
        QCOMPARE(receiver.args.at(i).getType(), sent.at(i).getType());
        QVERIFY2(receiver.args.at(i) == sent.at(i), qPrintable(sent.at(i).getTypeName()));
    }
    // The same records arrived, not copies of them: a string's characters, a
    // contact-list entry and a field's shared display flags.
    QCOMPARE(receiver.args.at(8).toString().constData(), sent.at(8).toString().constData());
    QCOMPARE(receiver.args.at(18).toBuddy(), VeskBuddy(samples.group));
    QCOMPARE(receiver.contact, buddy);
    receiver.contact.setUnreadMessages(3);
    QCOMPARE(buddy.unreadMessages(), 3);
    QCOMPARE(receiver.fields.size(), 1);
    receiver.fields.first().setPressed(true);
    QVERIFY(check.isPressed());
    VeskField arrived = receiver.args.at(15).toField();
    arrived.setReadOnly(true);
    QVERIFY(sent.at(15).toField().isReadOnly());
}

void TestMetaType::variantRoundTrips()
{
    Samples samples;
    QList<VeskArg> const all = samples.all();
    // The variant type of each argument type, in the order of Samples::all().
    QList<int> const types = {QMetaType::Char, QMetaType::UChar, QMetaType::Int, QMetaType::UInt,
                              QMetaType::LongLong, QMetaType::ULongLong, QMetaType::Float,
                              QMetaType::Double, QMetaType::QString, QMetaType::QByteArray,
                              QMetaType::QStringList, QMetaType::Bool, QMetaType::VoidStar,
                              qMetaTypeId<QList<void*>>(), qMetaTypeId<VeskPlugin*>(),
                              qMetaTypeId<VeskField>(), qMetaTypeId<QList<VeskField>>(),
                              qMetaTypeId<VeskXmlNode>(), qMetaTypeId<VeskBuddy>(),
                              qMetaTypeId<VeskBuddyResource>(),
                              qMetaTypeId<VeskAccountConnection*>(),
                              qMetaTypeId<VeskPluginAction>(), qMetaTypeId<VeskPresence>(),
                              qMetaTypeId<VeskGuiEventsReceiver*>(), qMetaTypeId<VeskVideoClip>(),
                              QMetaType::QVariantList, qMetaTypeId<VeskService>(),
                              qMetaTypeId<QList<VeskService>>(),
                              qMetaTypeId<QList<VeskTextFormat>>()};
    QCOMPARE(types.size(), all.size());
    for (int i = 0; i < all.size(); ++i) {
        QVariant const variant = all.at(i).toVariant();
        QByteArray const name = all.at(i).getTypeName().toLatin1();
        QVERIFY2(variant.userType() == types.at(i), name.constData());
        VeskArg const back = VeskArg::fromVariant(variant);
        QVERIFY2(back.getType() == all.at(i).getType(), name.constData());
        QVERIFY2(back == all.at(i), name.constData());
    }

    // The values themselves, as Qt reads them.
    QCOMPARE(all.at(14).toVariant().value<QObject*>(), static_cast<QObject*>(&samples.plugin));
    QCOMPARE(all.at(25).toVariant().toList(), (QVariantList{1, QStringLiteral("two")}));

    // Exact types, from variants made the way Qt code makes them.
    QCOMPARE(VeskArg::fromVariant(QVariant(int(7))), VeskArg(7));
    QCOMPARE(VeskArg::fromVariant(QVariant(qlonglong(7))).getType(), VeskArg::Int64);
    QCOMPARE(VeskArg::fromVariant(QVariant::fromValue(0.5f)).getType(), VeskArg::Float);

    // A kind handle gives a Buddy on the same entry; a VeskArg and a list of
    // them are taken as they are.
    VeskBuddyContact const contact(nullptr, QStringLiteral("c"), QString(), VeskBuddyType(),
                                   VeskPresence(), VeskSubscriptionType());
    VeskBuddyMeta const meta(QStringLiteral("m"));
    VeskBuddyMerged const merged(QString(), {contact});
    VeskBuddyCustom const custom(QStringLiteral("n"), QString(), QString(), {}, QString(), QString(),
                                 QString());
    VeskBuddyTemporary const temporary(nullptr, QStringLiteral("t"), VeskPresence(), VeskBuddyGroup());
    QPair<QVariant, VeskBuddy> const kinds[] = {
        {QVariant::fromValue(samples.group), samples.group}, {QVariant::fromValue(meta), meta},
        {QVariant::fromValue(contact), contact},             {QVariant::fromValue(merged), merged},
        {QVariant::fromValue(custom), custom},               {QVariant::fromValue(temporary), temporary}};
    for (auto const& kind : kinds)
        QCOMPARE(VeskArg::fromVariant(kind.first).toBuddy(), kind.second);
    QCOMPARE(VeskArg::fromVariant(QVariant::fromValue(VeskArg(3))), VeskArg(3));
    QList<VeskArg> const list{VeskArg(1), VeskArg(true)};
    QCOMPARE(VeskArg::fromVariant(QVariant::fromValue(list)), VeskArg(list));
}

void TestMetaType::variantRefusals()
{
    QCOMPARE(VeskArg().toVariant().isValid(), false);
    QList<QVariant> const unmapped = {QVariant(), QVariant::fromValue(long(1)),
                                      QVariant::fromValue(short(1)), QVariant::fromValue<signed char>(1),
                                      QVariant(QChar(u'a')), QVariant(QDate(2020, 1, 1)),
                                      QVariant::fromValue(QList<int>{1}), QVariant::fromValue(VeskArg::Int),
                                      QVariant::fromValue(static_cast<QObject*>(nullptr))};
    for (QVariant const& variant : unmapped)
        QVERIFY2(VeskArg::fromVariant(variant).getType() == VeskArg::None, variant.typeName());

    // Inside a list, an element without an argument type becomes None and
    // the rest is kept.
    QList<VeskArg> const mixed =
        VeskArg::fromVariant(QVariantList{QVariant(QDate(2020, 1, 1)), QVariant(2)}).toArgList();
    QCOMPARE(mixed, (QList<VeskArg>{VeskArg(), VeskArg(2)}));
}

QTEST_GUILESS_MAIN(TestMetaType)
#include "tst_metatype.moc"
