#include "dispatcher.h"
#include "say.h"

#include <VeskData>

bool Dispatcher::event(QEvent* e)
{
    if (e->type() != VeskCallActionEvent::EventType)
        return QObject::event(e);

    auto* const call = static_cast<VeskCallActionEvent*>(e);
    ++m_delivered;
    // Exceptions must not travel through Qt's event loop: a plugin method that
    // reads an argument of the wrong type is stopped here.
    try {
        (call->plugin->*call->method)(call->args);
    } catch (std::runtime_error const& error) {
        say(QStringLiteral("  host: the call was refused: %1").arg(QString::fromUtf8(error.what())));
    }
    return true;
}
