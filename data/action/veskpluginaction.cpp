#include "veskpluginaction.h"

#include <QtCore/QCoreApplication>

QObject* VeskCallActionEvent::dispatcher = nullptr;

namespace {

void post(VeskPlugin* plugin, VeskPluginAction::Method method, QList<VeskArg> const& args)
{
    QCoreApplication::postEvent(VeskCallActionEvent::dispatcher,
                                new VeskCallActionEvent(plugin, method, args));
}

} // namespace

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
    post(plugin, method, args);
}

void VeskPluginAction::operator()() const
{
    // What invoking with an empty list would post, without the list that
    // would only be filled and dropped again.
    if (isValid())
        post(plugin, method, actionData);
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
