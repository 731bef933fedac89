// vesk-demo: a small host, a sample plugin and a worker thread, showing what
// the data library does from end to end. It ends by itself.

#include "answers.h"
#include "catalogue.h"
#include "dispatcher.h"
#include "fields.h"
#include "roster.h"
#include "runtime.h"
#include "sampleplugin.h"
#include "say.h"

#include <VeskData>

#include <QtCore/QCoreApplication>
#include <QtCore/QThread>

namespace {

void showArgumentValues()
{
    say(QStringLiteral("== Argument values"));
    QList<VeskArg> const values{VeskArg(42), VeskArg(2.5), VeskArg("text"), VeskArg(true),
                                VeskArg(QStringList{QStringLiteral("a"), QStringLiteral("b")})};
    for (VeskArg const& value : values)
        say(QStringLiteral("  a value of type %1 (number %2)")
                .arg(value.getTypeName()).arg(int(value.getType())));

    VeskArg const copy = values.at(2);
    say(QStringLiteral("  a copy shares its record and compares equal: %1")
            .arg(copy == values.at(2) ? QStringLiteral("yes") : QStringLiteral("no")));
    say(QStringLiteral("  Int 1 equals UInt 1: %1")
            .arg(VeskArg(1) == VeskArg(1u) ? QStringLiteral("yes") : QStringLiteral("no")));

    try {
        values.at(2).toInt();
    } catch (std::runtime_error const& error) {
        say(QStringLiteral("  reading a String as an Int is refused: %1")
                .arg(QString::fromUtf8(error.what())));
    }
    VeskArg locked(7);
    try {
        locked = VeskArg("seven");
    } catch (std::runtime_error const& error) {
        say(QStringLiteral("  an Int handle refuses a String: %1").arg(QString::fromUtf8(error.what())));
    }
}

// Runs in the worker thread: invokes the plugin's actions, which only post.
void invokeActions(SamplePlugin* plugin)
{
    VeskPluginAction const greet(plugin, &SamplePlugin::greet, {VeskArg("Alice"), VeskArg(3)});
    VeskPluginAction const sum(plugin, &SamplePlugin::sum);

    say(QStringLiteral("  worker (%1 thread): invoking greet with its bound arguments")
            .arg(threadName()));
    greet();

    say(QStringLiteral("  worker: invoking greet with a given list"));
    QList<VeskArg> given{VeskArg("Bob"), VeskArg(1)};
    greet(given);

    say(QStringLiteral("  worker: invoking sum with 1, 2, 3"));
    QList<VeskArg> numbers{VeskArg(1), VeskArg(2), VeskArg(3)};
    sum(numbers);

    say(QStringLiteral("  worker: invoking sum with a Double among the Ints"));
    QList<VeskArg> wrong{VeskArg(1), VeskArg(2.0)};
    sum(wrong);

    say(QStringLiteral("  worker: all actions posted; none has run in this thread"));
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QThread::currentThread()->setObjectName(QStringLiteral("main"));

    // The host: a dispatcher in this thread delivers every plugin action.
    Dispatcher dispatcher;
    VeskCallActionEvent::dispatcher = &dispatcher;
    SamplePlugin plugin;

    showArgumentValues();
    showEveryArgumentType(&plugin);
    showQueuedAnswers(&plugin);
    showFieldsDemo(&plugin);
    showContactList();

    say(QStringLiteral("== Plugin actions"));
    QThread* const worker = QThread::create(invokeActions, &plugin);
    worker->setObjectName(QStringLiteral("worker"));
    // Queued behind the calls the worker posted, so every call runs first.
    QObject::connect(worker, &QThread::finished, &app, [&] {
        say(QStringLiteral("  host: the dispatcher delivered %1 calls").arg(dispatcher.delivered()));
        showRuntimeHelpers(&QCoreApplication::quit);
    }, Qt::QueuedConnection);
    worker->start();

    int const status = app.exec();
    worker->wait();
    delete worker;
    VeskCallActionEvent::dispatcher = nullptr;
    say(QStringLiteral("== Done"));
    return status;
}
