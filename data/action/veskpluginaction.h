#ifndef VESKPLUGINACTION_H
#define VESKPLUGINACTION_H

#include "veskdata_global.h"
#include "veskarg.h"

#include <QtCore/QEvent>
#include <QtCore/QList>

#include <type_traits>

class QObject;
class VeskPlugin;

// A method of a plugin object together with bound arguments. Invoking an
// action never runs the method in the invoking thread: it posts a
// VeskCallActionEvent to VeskCallActionEvent::dispatcher and returns at once.
class VESK_DATA_EXPORT VeskPluginAction
{
public:
    using Method = void (VeskPlugin::*)(QList<VeskArg>&);

    VeskPluginAction();
    VeskPluginAction(VeskPlugin* plugin, Method method, QList<VeskArg> const& data);
    VeskPluginAction(VeskPlugin const* plugin, Method method, QList<VeskArg> const& data);

    // Names a method of a class derived from VeskPlugin without a cast:
    // VeskPluginAction(myPlugin, &MyPlugin::greet, {VeskArg("hello")}).
    template<typename P, typename = std::enable_if_t<std::is_base_of_v<VeskPlugin, P>
                                                     && !std::is_same_v<P, VeskPlugin>>>
    VeskPluginAction(P const* plugin, void (P::*method)(QList<VeskArg>&),
                     QList<VeskArg> const& data = QList<VeskArg>())
        : VeskPluginAction(static_cast<VeskPlugin const*>(plugin), static_cast<Method>(method), data)
    {
    }

    bool isValid() const;
    QList<VeskArg> getActionData() const;

    bool operator==(VeskPluginAction const& other) const;
    bool operator!=(VeskPluginAction const& other) const;

    // An empty args receives the bound arguments; a non-empty one is posted
    // as it is. An invalid action does nothing.
    void operator()(QList<VeskArg>& args) const;
    void operator()() const;

    VeskPlugin* plugin;
    Method method;
    QList<VeskArg> actionData;
};

// The event an invoked action posts to the dispatcher. The host's dispatcher
// handles events of this type by calling (plugin->*method)(args) in its own
// thread.
class VESK_DATA_EXPORT VeskCallActionEvent : public QEvent
{
public:
    static constexpr QEvent::Type EventType = static_cast<QEvent::Type>(QEvent::User + 9);

    VeskCallActionEvent(VeskPlugin* plugin, VeskPluginAction::Method method,
                        QList<VeskArg> const& args);
    ~VeskCallActionEvent() override;

    VeskPlugin* plugin;
    VeskPluginAction::Method method;
    QList<VeskArg> args;

    // Set once by the host before any action is invoked.
    static QObject* dispatcher;
};

Q_DECLARE_METATYPE(VeskPluginAction)

#endif // VESKPLUGINACTION_H
