#ifndef VESKPLUGIN_H
#define VESKPLUGIN_H

/// \file
/// The plugin host objects the data library refers to by pointer.

#include "veskcore_global.h"

#include <QtCore/QMetaType>
#include <QtCore/QObject>
#include <QtCore/QString>

// The objects of the plugin host that the data library refers to. The data
// library only ever handles them by pointer and never owns them.

/// The base of every plugin object. Actions name its methods; the host's dispatcher calls them in
/// its own thread.
class VESK_CORE_EXPORT VeskPlugin : public QObject
{
    Q_OBJECT
public:
    /// A plugin owned by parent, as any QObject.
    explicit VeskPlugin(QObject* parent = nullptr);
    /// Actions bound to the plugin must not be invoked any more.
    ~VeskPlugin() override;
};

/// One account's connection in a protocol plugin. Contact-list entries and argument values point to
/// it and never own it.
class VESK_CORE_EXPORT VeskAccountConnection
{
public:
    /// An account connection; protocol plugins derive their own from it.
    VeskAccountConnection();
    /// Virtual, so that protocol classes are deleted through this base.
    virtual ~VeskAccountConnection();
};

/// An object of the user interface that takes events from plugins. Argument values point to it and
/// never own it.
class VESK_CORE_EXPORT VeskGuiEventsReceiver
{
public:
    /// A receiver; the user interface derives its own from it.
    VeskGuiEventsReceiver();
    /// Virtual, so that interface classes are deleted through this base.
    virtual ~VeskGuiEventsReceiver();
};

/// What VeskTimer calls back: implemented by objects that are not QObjects.
class VESK_CORE_EXPORT VeskTimerReceiver
{
public:
    /// Virtual, so that receivers are deleted through this base.
    virtual ~VeskTimerReceiver();
    /// Called once, in the thread that started the timer, with the name it was started with.
    virtual void timerFired(QString name) = 0;
};

// VeskPlugin* is known to the meta-type system as a QObject pointer; the
// other two travel in QVariants and queued signals by these declarations.
Q_DECLARE_METATYPE(VeskAccountConnection*)
Q_DECLARE_METATYPE(VeskGuiEventsReceiver*)

#endif // VESKPLUGIN_H
