#ifndef VESKTESTACTION_H
#define VESKTESTACTION_H

// A plugin whose method records its calls, and a host dispatcher that runs
// call events in its own thread, for the tests of button fields.

#include <VeskData>

#include <QtCore/QEvent>
#include <QtCore/QObject>

class RecordingPlugin : public VeskPlugin
{
public:
    QList<QList<VeskArg>> calls;
    void press(QList<VeskArg>& args) { calls.append(args); }
    void other(QList<VeskArg>&) {}
};

class CallDispatcher : public QObject
{
public:
    bool event(QEvent* e) override
    {
        if (e->type() != VeskCallActionEvent::EventType)
            return QObject::event(e);
        auto* const call = static_cast<VeskCallActionEvent*>(e);
        (call->plugin->*call->method)(call->args);
        return true;
    }
};

#endif // VESKTESTACTION_H
