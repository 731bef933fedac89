#ifndef VESKPLUGINACTION_H
#define VESKPLUGINACTION_H

/// \file
/// VeskPluginAction and the VeskCallActionEvent it posts to the host's dispatcher.

#include "veskdata_global.h"
#include "veskarg.h"

#include <QtCore/QEvent>
#include <QtCore/QList>

#include <type_traits>

class QObject;
class VeskPlugin;

/// A method of a plugin object together with bound arguments. Invoking an
/// action never runs the method in the invoking thread: it posts a
/// VeskCallActionEvent to VeskCallActionEvent::dispatcher and returns at once.
class VESK_DATA_EXPORT VeskPluginAction
{
public:
    /// A method of a plugin that takes its arguments, and may write answers, in one list.
    using Method = void (VeskPlugin::*)(QList<VeskArg>&);

    /// An invalid action: invoking it does nothing.
    VeskPluginAction();
    /// Binds method of plugin to data. The action does not own plugin: it must outlive every
    /// invocation.
    VeskPluginAction(VeskPlugin* plugin, Method method, QList<VeskArg> const& data);
    /// As above, for a plugin reached through a const pointer.
    VeskPluginAction(VeskPlugin const* plugin, Method method, QList<VeskArg> const& data);

    /// Names a method of a class derived from VeskPlugin without a cast:
    /// VeskPluginAction(myPlugin, &MyPlugin::greet, {VeskArg("hello")}).
    template<typename P, typename = std::enable_if_t<std::is_base_of_v<VeskPlugin, P>
                                                     && !std::is_same_v<P, VeskPlugin>>>
    VeskPluginAction(P const* plugin, void (P::*method)(QList<VeskArg>&),
                     QList<VeskArg> const& data = QList<VeskArg>())
        : VeskPluginAction(static_cast<VeskPlugin const*>(plugin), static_cast<Method>(method), data)
    {
    }

    /// True when both the plugin and the method are set.
    bool isValid() const;
    /// The bound arguments.
    QList<VeskArg> getActionData() const;

    /// Same plugin, same method and equal bound arguments.
    bool operator==(VeskPluginAction const& other) const;
    /// The negation of operator==().
    bool operator!=(VeskPluginAction const& other) const;

    /// An empty args receives the bound arguments; a non-empty one is posted
    /// as it is. An invalid action does nothing.
    void operator()(QList<VeskArg>& args) const;
    /// Posts the call with the bound arguments. An invalid action does nothing.
    void operator()() const;

    /// The object whose method is called; not owned.
    VeskPlugin* plugin;
    /// The method to call.
    Method method;
    /// The arguments bound to the call.
    QList<VeskArg> actionData;
};

/// The event an invoked action posts to the dispatcher. The host's dispatcher
/// handles events of this type by calling (plugin->*method)(args) in its own
/// thread.
class VESK_DATA_EXPORT VeskCallActionEvent : public QEvent
{
public:
    /// The type of every call event (QEvent::User + 9).
    static constexpr QEvent::Type EventType = static_cast<QEvent::Type>(QEvent::User + 9);

    /// A call of method of plugin with args; the event does not own plugin.
    VeskCallActionEvent(VeskPlugin* plugin, VeskPluginAction::Method method,
                        QList<VeskArg> const& args);
    /// Drops the arguments; the plugin is not touched.
    ~VeskCallActionEvent() override;

    /// The object whose method is called; not owned.
    VeskPlugin* plugin;
    /// The method to call.
    VeskPluginAction::Method method;
    /// The arguments, handed to the method by reference.
    QList<VeskArg> args;

    /// Set once by the host before any action is invoked.
    static QObject* dispatcher;
};

Q_DECLARE_METATYPE(VeskPluginAction)

#endif // VESKPLUGINACTION_H
