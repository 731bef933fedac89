#include <VeskData>

#include <QtTest/QtTest>

#include <thread>

namespace {

// What a dispatcher saw of one delivered call.
struct Delivery
{
    VeskPlugin* plugin;
    VeskPluginAction::Method method;
    QList<VeskArg> args;
};

// The host's side: delivers call events in the thread it lives in.
class Dispatcher : public QObject
{
public:
    QList<Delivery> delivered;

    bool event(QEvent* e) override
    {
        if (e->type() != VeskCallActionEvent::EventType)
            return QObject::event(e);
        auto* const call = static_cast<VeskCallActionEvent*>(e);
        delivered.append({call->plugin, call->method, call->args});
        (call->plugin->*call->method)(call->args);
        return true;
    }
};

class EchoPlugin : public VeskPlugin
{
public:
    QList<QList<VeskArg>> received;
    QList<QThread*> threads;

    void record(QList<VeskArg>& args)
    {
        received.append(args);
        threads.append(QThread::currentThread());
        args.append(VeskArg("written by the method"));
    }
};

} // namespace

class TestAction : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void emptyListReceivesBoundArguments();
    void givenListIsPostedAsIs();
    void invalidActionsPostNothing();
    void equalityAndCopies();
    void invokedFromAnotherThreadRunsInTheDispatcher();
    void nullDispatcherDropsTheEvent();
    void servicesAndTextFormats();

private:
    Dispatcher* dispatcher = nullptr;
    EchoPlugin* plugin = nullptr;
};

void TestAction::init()
{
    dispatcher = new Dispatcher;
    plugin = new EchoPlugin;
    VeskCallActionEvent::dispatcher = dispatcher;
}

void TestAction::cleanup()
{
    QCoreApplication::sendPostedEvents();
    VeskCallActionEvent::dispatcher = nullptr;
    delete dispatcher;
    delete plugin;
}

void TestAction::emptyListReceivesBoundArguments()
{
    QList<VeskArg> const bound{VeskArg(1), VeskArg("two")};
    VeskPluginAction const action(plugin, &EchoPlugin::record, bound);
    QCOMPARE(int(VeskCallActionEvent::EventType), 1009);

    QList<VeskArg> args;
    action(args);
    QCOMPARE(args, bound);
    QVERIFY(plugin->received.isEmpty()); // posted, not called

    QCoreApplication::sendPostedEvents(dispatcher);
    QCOMPARE(dispatcher->delivered.size(), 1);
    QCOMPARE(dispatcher->delivered.at(0).plugin, static_cast<VeskPlugin*>(plugin));
    QVERIFY(dispatcher->delivered.at(0).method == action.method);
    QCOMPARE(plugin->received, QList<QList<VeskArg>>{bound});
    // What the method wrote stayed in the event's own list.
    QCOMPARE(args, bound);
    QCOMPARE(action.getActionData(), bound);

    VeskPluginAction const unbound(plugin, &EchoPlugin::record);
    unbound();
    QCoreApplication::sendPostedEvents(dispatcher);
    QCOMPARE(plugin->received.size(), 2);
    QVERIFY(plugin->received.at(1).isEmpty());
}

void TestAction::givenListIsPostedAsIs()
{
    QList<VeskArg> const bound{VeskArg(1)};
    VeskPluginAction const action(plugin, &EchoPlugin::record, bound);
    QList<VeskArg> given{VeskArg(2.5), VeskArg(true)};
    QList<VeskArg> const before = given;
    action(given);
    QCOMPARE(given, before);
    action();
    QCoreApplication::sendPostedEvents(dispatcher);
    QCOMPARE(plugin->received, (QList<QList<VeskArg>>{before, bound}));
    QCOMPARE(action.actionData, bound);
}

void TestAction::invalidActionsPostNothing()
{
    VeskPluginAction const noPlugin(static_cast<VeskPlugin*>(nullptr),
                                    static_cast<VeskPluginAction::Method>(&EchoPlugin::record),
                                    {VeskArg(1)});
    VeskPluginAction const noMethod(plugin, nullptr, {VeskArg(1)});
    VeskPluginAction const unset;
    QVERIFY(!noPlugin.isValid());
    QVERIFY(!noMethod.isValid());
    QVERIFY(!unset.isValid());
    QVERIFY(!unset.plugin && !unset.method && unset.actionData.isEmpty());

    QList<VeskArg> args;
    noPlugin(args);
    noMethod(args);
    unset();
    QVERIFY(args.isEmpty());
    QCoreApplication::sendPostedEvents(dispatcher);
    QVERIFY(dispatcher->delivered.isEmpty());
}

void TestAction::equalityAndCopies()
{
    EchoPlugin other;
    QList<VeskArg> const bound{VeskArg(1), VeskArg(QList<VeskArg>{VeskArg("nested")})};
    VeskPluginAction const action(plugin, &EchoPlugin::record, bound);
    VeskPluginAction const& constPlugin =
        VeskPluginAction(static_cast<VeskPlugin const*>(plugin), action.method, bound);

    QVERIFY(VeskPluginAction() == VeskPluginAction());
    QVERIFY(action == constPlugin);
    QVERIFY(action != VeskPluginAction(plugin, &EchoPlugin::record, {VeskArg(1)}));
    QVERIFY(action != VeskPluginAction(&other, &EchoPlugin::record, bound));
    QVERIFY(action != VeskPluginAction(plugin, nullptr, bound));

    VeskPluginAction copy(action);
    QVERIFY(copy == action);
    copy();
    action();
    QCoreApplication::sendPostedEvents(dispatcher);
    QCOMPARE(dispatcher->delivered.size(), 2);
    for (Delivery const& delivery : dispatcher->delivered) {
        QCOMPARE(delivery.plugin, static_cast<VeskPlugin*>(plugin));
        QVERIFY(delivery.method == action.method);
        QCOMPARE(delivery.args, bound);
    }
}

void TestAction::invokedFromAnotherThreadRunsInTheDispatcher()
{
    VeskPluginAction const action(plugin, &EchoPlugin::record, {VeskArg(42)});
    constexpr int calls = 50;
    // A std::thread: its join() is visible to ThreadSanitizer, QThread::wait() is not.
    std::thread worker([&action] {
        for (int i = 0; i < calls; ++i) {
            QList<VeskArg> args;
            if (i % 2)
                args.append(VeskArg(i));
            action(args);
        }
    });
    worker.join();

    QCoreApplication::sendPostedEvents(dispatcher);
    QCOMPARE(plugin->received.size(), calls);
    for (int i = 0; i < calls; ++i) {
        QCOMPARE(plugin->received.at(i).at(0).toInt(), i % 2 ? i : 42);
        QCOMPARE(plugin->threads.at(i), QThread::currentThread());
    }
}

void TestAction::nullDispatcherDropsTheEvent()
{
    VeskCallActionEvent::dispatcher = nullptr;
    QTest::ignoreMessage(QtWarningMsg, "QCoreApplication::postEvent: Unexpected null receiver");
    VeskPluginAction(plugin, &EchoPlugin::record, {VeskArg(1)})();
    QCoreApplication::sendPostedEvents();
    QVERIFY(plugin->received.isEmpty());
}

void TestAction::servicesAndTextFormats()
{
    VeskPluginAction const action(plugin, &EchoPlugin::record, {VeskArg(1)});
    VeskService const service(QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"),
                              QStringLiteral("d"), action);
    QCOMPARE(QStringList({service.name, service.text1, service.text2, service.protocol}),
             QStringList({QStringLiteral("a"), QStringLiteral("c"), QStringLiteral("b"), QStringLiteral("d")}));
    QVERIFY(service.isValid());
    QVERIFY(!VeskService(QString(), QString(), QString(), QStringLiteral("d"), action).isValid());
    QVERIFY(service != VeskService(QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"),
                                   QStringLiteral("other"), action));
    QString text;
    QDebug(&text) << service;
    QCOMPARE(text, QStringLiteral("name=\"a\" protocol=\"d\" "));

    // Every member of a text format takes part in its equality.
    VeskTextFormat const base;
    QVector<VeskTextFormat> variants(6, base);
    variants[0].number1 = 1;
    variants[1].number2 = 1;
    variants[2].string1 = QStringLiteral("s1");
    variants[3].number3 = 1;
    variants[4].string2 = QStringLiteral("s2");
    variants[5].number4 = 1;
    for (VeskTextFormat const& variant : variants)
        QVERIFY(variant != base);
}

QTEST_GUILESS_MAIN(TestAction)
#include "tst_action.moc"
