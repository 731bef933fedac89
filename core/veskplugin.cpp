#include "veskplugin.h"

VeskPlugin::VeskPlugin(QObject* parent)
    : QObject(parent)
{
}

VeskPlugin::~VeskPlugin() = default;

VeskAccountConnection::VeskAccountConnection() = default;
VeskAccountConnection::~VeskAccountConnection() = default;

VeskGuiEventsReceiver::VeskGuiEventsReceiver() = default;
VeskGuiEventsReceiver::~VeskGuiEventsReceiver() = default;

VeskTimerReceiver::~VeskTimerReceiver() = default;
