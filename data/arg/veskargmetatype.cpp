#include "veskarg.h"
#include "veskbuddycontact.h"
#include "veskbuddygroup.h"
#include "veskbuddytype.h"
#include "veskfield.h"
#include "veskpluginaction.h"
#include "veskpresence.h"
#include "veskservice.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDataStream>
#include <QtCore/QMetaType>

#include <veskplugin.h>
#include <veskxmlnode.h>

// Queued connections look their argument types up by name, and Qt 5 only
// knows the names of registered types. The library registers its own as soon
// as the application object exists, so that users never have to.

namespace {

template<typename T>
void registerType()
{
    qRegisterMetaType<T>();
}

// Qt 6 finds the stream operators through the declarations; Qt 5 needs them
// registered for QVariant to stream the type.
template<typename T>
void registerStreamable()
{
    registerType<T>();
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    qRegisterMetaTypeStreamOperators<T>();
#endif
}

void registerVeskTypes()
{
    registerStreamable<VeskArg>();
    registerStreamable<QList<VeskArg>>();
    registerType<VeskArg::Type>();
    registerStreamable<VeskField>();
    registerStreamable<QList<VeskField>>();
    registerType<VeskField::Type>();
    registerStreamable<VeskXmlNode>();
    registerType<VeskBuddy>();
    registerType<VeskBuddy::Type>();
    registerType<VeskBuddyGroup>();
    registerType<VeskBuddyMeta>();
    registerType<VeskBuddyContact>();
    registerType<VeskBuddyMerged>();
    registerType<VeskBuddyCustom>();
    registerType<VeskBuddyTemporary>();
    registerStreamable<VeskPresence>();
    registerType<VeskBuddyResource>();
    registerStreamable<VeskService>();
    registerStreamable<QList<VeskService>>();
    registerStreamable<VeskTextFormat>();
    registerStreamable<QList<VeskTextFormat>>();
    registerStreamable<VeskVideoClip>();
    registerType<VeskPluginAction>();
    registerType<QList<void*>>();
    registerType<VeskAccountConnection*>();
    registerType<VeskGuiEventsReceiver*>();
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(registerVeskTypes)
