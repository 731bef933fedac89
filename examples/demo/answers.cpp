#include "answers.h"
#include "catalogue.h"
#include "say.h"

#include <VeskData>

#include <QtCore/QEventLoop>
#include <QtCore/QMutex>
#include <QtCore/QThread>
#include <QtCore/QTimer>
#include <QtCore/QVariant>

namespace {

// Qt's event queue orders a queued call under a lock inside QtCore, where
// ThreadSanitizer does not look. The emitting side holds this lock while it
// posts, and the receiving side takes it before it reads the call, which
// shows the sanitizer the order the queue already guarantees.
QMutex handoff;

// The plugin's side, living in the plugin's thread.
class AnswerSource : public QObject
{
    Q_OBJECT
public:
    explicit AnswerSource(SamplePlugin* plugin)
        : m_plugin(plugin)
    {
    }

public slots:
    void request()
    {
        say(QStringLiteral("  plugin: builds its answer in the %1 thread and emits it").arg(threadName()));
        VeskArg const answer(everyArgumentType(m_plugin));
        QMutexLocker const locker(&handoff);
        emit answered(answer);
    }

signals:
    void answered(VeskArg const& answer);

private:
    SamplePlugin* m_plugin;
};

// The host's side, living in the main thread.
class AnswerSink : public QObject
{
    Q_OBJECT
public:
    VeskArg answer;

    bool event(QEvent* e) override
    {
        if (e->type() == QEvent::MetaCall) {
            QMutexLocker const locker(&handoff);
        }
        return QObject::event(e);
    }

public slots:
    void receive(VeskArg const& value)
    {
        answer = value;
        emit received();
    }

signals:
    void received();
};

} // namespace

void showQueuedAnswers(SamplePlugin* plugin)
{
    say(QStringLiteral("== Answers through a queued signal"));
    QThread pluginThread;
    pluginThread.setObjectName(QStringLiteral("plugin"));
    AnswerSource source(plugin);
    source.moveToThread(&pluginThread);
    AnswerSink sink;
    // Connected by signature, which needs the type known by name.
    QObject::connect(&source, SIGNAL(answered(VeskArg)), &sink, SLOT(receive(VeskArg)),
                     Qt::QueuedConnection);

    QEventLoop loop;
    QObject::connect(&sink, &AnswerSink::received, &loop, &QEventLoop::quit);
    // The demo ends by itself even if no answer came.
    QTimer::singleShot(10000, &loop, &QEventLoop::quit);
    say(QStringLiteral("  host: asks the plugin's thread for one value of every type"));
    // Queued before the thread starts, which orders it for the sanitizer too.
    QMetaObject::invokeMethod(&source, "request", Qt::QueuedConnection);
    pluginThread.start();
    loop.exec();
    pluginThread.quit();
    pluginThread.wait();

    QList<VeskArg> const values = sink.answer.getType() == VeskArg::ArgList
                                      ? sink.answer.toArgList()
                                      : QList<VeskArg>();
    say(QStringLiteral("  host: received a %1 of %2 values in the %3 thread")
            .arg(sink.answer.getTypeName()).arg(values.size()).arg(threadName()));
    QStringList types;
    for (VeskArg const& value : values)
        types.append(value.getTypeName().mid(9));
    say(QStringLiteral("  host: their types: %1").arg(types.join(QStringLiteral(", "))));
    QVariant const variant = sink.answer.toVariant();
    say(QStringLiteral("  host: as a QVariant the answer is a %1 of %2 elements")
            .arg(QString::fromLatin1(variant.typeName())).arg(variant.toList().size()));
}

#include "answers.moc"
