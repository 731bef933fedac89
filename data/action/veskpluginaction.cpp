#include "veskpluginaction.h"

#include <QtCore/QCoreApplication>

QObject* VeskCallActionEvent::dispatcher = nullptr;

VeskPluginAction::VeskPluginAction()
    : plugin(nullptr)
    , method(nullptr)
{
}

VeskPluginAction::VeskPluginAction(VeskPlugin* plugin, Method method, QList<VeskArg> const& data)
    : plugin(plugin)
    , method(method)
    , actionData(data)
{
}

VeskPluginAction::VeskPluginAction(VeskPlugin const* plugin, Method method,
                                   QList<VeskArg> const& data)
    : VeskPluginAction(const_cast<VeskPlugin*>(plugin), method, data)
{
}

bool VeskPluginAction::isValid() const
{
    return plugin && method;
}

QList<VeskArg> VeskPluginAction::getActionData() const
{
    return actionData;
}

bool VeskPluginAction::operator==(VeskPluginAction const& other) const
{
    return plugin == other.plugin && method == other.method && actionData == other.actionData;
}

bool VeskPluginAction::operator!=(VeskPluginAction const& other) const
{
    return !(*this == other);
}

void VeskPluginAction::operator()(QList<VeskArg>& args) const
{
    if (!isValid())
        return;
    if (args.isEmpty())
        args = actionData;
    QCoreApplication::postEvent(VeskCallActionEvent::dispatcher,
                                new VeskCallActionEvent(plugin, method, args));
}

void VeskPluginAction::operator()() const
{
    if (!isValid())
        return;
    QList<VeskArg> args;
    (*this)(args);
}

VeskCallActionEvent::VeskCallActionEvent(VeskPlugin* plugin, VeskPluginAction::Method method,
                                         QList<VeskArg> const& args)
    : QEvent(EventType)
    , plugin(plugin)
    , method(method)
    , args(args)
{
}

VeskCallActionEvent::~VeskCallActionEvent() = default;
