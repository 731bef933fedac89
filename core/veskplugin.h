#ifndef VESKPLUGIN_H
#define VESKPLUGIN_H

#include "veskcore_global.h"

#include <QtCore/QMetaType>
#include <QtCore/QObject>
#include <QtCore/QString>

// The objects of the plugin host that the data library refers to. The data
// library only ever handles them by pointer and never owns them.

class VESK_CORE_EXPORT VeskPlugin : public QObject
{
    Q_OBJECT
public:
    explicit VeskPlugin(QObject* parent = nullptr);
    ~VeskPlugin() override;
};

class VESK_CORE_EXPORT VeskAccountConnection
{
public:
    VeskAccountConnection();
    virtual ~VeskAccountConnection();
};

class VESK_CORE_EXPORT VeskGuiEventsReceiver
{
public:
    VeskGuiEventsReceiver();
    virtual ~VeskGuiEventsReceiver();
};

class VESK_CORE_EXPORT VeskTimerReceiver
{
public:
    virtual ~VeskTimerReceiver();
    virtual void timerFired(QString name) = 0;
};

// VeskPlugin* is known to the meta-type system as a QObject pointer; the
// other two travel in QVariants and queued signals by these declarations.
Q_DECLARE_METATYPE(VeskAccountConnection*)
Q_DECLARE_METATYPE(VeskGuiEventsReceiver*)

#endif // VESKPLUGIN_H
