#ifndef DEMO_CATALOGUE_H
#define DEMO_CATALOGUE_H

#include <VeskData>

class SamplePlugin;

// The host's request for one value of every type an argument can hold. The
// plugin answers through the event's wait object.
struct CatalogueRequest : VeskWaitEvent
{
    static constexpr QEvent::Type Type = static_cast<QEvent::Type>(QEvent::User + 11);

    CatalogueRequest()
        : VeskWaitEvent(new VeskWait, Type)
    {
    }
};

// What the plugin answers: one value of each of the 29 types a value can be
// built with, in type-number order.
QList<VeskArg> everyArgumentType(SamplePlugin* plugin);

// The host sends a CatalogueRequest to the plugin and prints the answer's
// debug text.
void showEveryArgumentType(SamplePlugin* plugin);

#endif
