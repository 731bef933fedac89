#include "snippets.h"

#include <VeskData>

#include <QtCore/QCoreApplication>

namespace {

//! [wait event]
// A question the host asks and blocks for. The wait object travels with the
// event; VeskWait::sendMessage() deletes both once the answer is in.
struct NameQuestion : VeskWaitEvent
{
    inline static QEvent::Type const Type = QEvent::Type(QEvent::registerEventType());

    NameQuestion()
        : VeskWaitEvent(new VeskWait, Type)
    {
    }
};
//! [wait event]

//! [plugin class]
class GreeterPlugin : public VeskPlugin
{
public:
    // Action methods take their arguments, and may write answers, in one list.
    void greet(QList<VeskArg>& args)
    {
        // Strict conversions: a value of another type throws, and the
        // dispatcher stops the call.
        greeting = QStringLiteral("%1, %2").arg(args.value(0).toString()).arg(args.value(1).toInt());
    }
    void save(QList<VeskArg>& args)
    {
        settings = VeskField::fromXml(settingsPage(), args.value(0).toXmlNode());
    }

    QList<VeskField> settingsPage() const;

    QString greeting;
    QList<VeskField> settings;

protected:
    bool event(QEvent* e) override;
};
//! [plugin class]

//! [answer wait]
bool GreeterPlugin::event(QEvent* e)
{
    if (e->type() != NameQuestion::Type)
        return VeskPlugin::event(e);
    VeskWait* const wait = static_cast<NameQuestion*>(e)->waitObject;
    wait->setRetValue(VeskArg(QStringLiteral("greeter")));
    // From here on the sender may delete the wait object: touch it no more.
    wait->wakeUp();
    return true;
}
//! [answer wait]

//! [settings page]
QList<VeskField> GreeterPlugin::settingsPage() const
{
    QString const message = QStringLiteral("Message");
    return {
        VeskField::lineEdit(QStringLiteral("Greeting"), QStringLiteral("greeting"),
                            QStringLiteral("Hello"), 40, message),
        VeskField::spinBox(QStringLiteral("Repeat"), QStringLiteral("repeat"), 10, 1, 1, message,
                           QStringLiteral(" times")),
        // The button's action is called like any other: posted to the dispatcher.
        VeskField::button(QStringLiteral("Greet now"), QStringLiteral("greetNow"),
                          VeskPluginAction(this, &GreeterPlugin::greet, {VeskArg("you"), VeskArg(1)}),
                          message),
    };
}
//! [settings page]

} // namespace

bool pluginGuide()
{
    GreeterPlugin plugin;

    //! [invoke action]
    VeskPluginAction const greet(&plugin, &GreeterPlugin::greet, {VeskArg("Hello"), VeskArg(3)});
    greet(); // posts the call and returns at once
    //! [invoke action]
    bool ok = expect(plugin.greeting.isEmpty(), "an action ran in the invoking thread");
    QCoreApplication::sendPostedEvents();
    ok &= expect(plugin.greeting == QLatin1String("Hello, 3"), "the posted action did not run");

    // A button on the page posts its action when clicked.
    QList<VeskField> page = plugin.settingsPage();
    page[2].clicked();
    QCoreApplication::sendPostedEvents();
    ok &= expect(plugin.greeting == QLatin1String("you, 1"), "the button's action did not run");

    //! [ask plugin]
    // The plugin lives in this thread, so it answers at once; in another
    // thread this blocks until its event loop has answered.
    VeskArg const name = VeskWait::sendMessage(new NameQuestion, &plugin);
    //! [ask plugin]
    ok &= expect(name.getType() == VeskArg::String && name.toString() == QLatin1String("greeter"),
                 "the plugin's answer did not come back");

    //! [save settings]
    page[0].setText(QStringLiteral("Good morning"));
    VeskPluginAction(&plugin, &GreeterPlugin::save, {VeskArg(VeskField::toXml(page))})();
    //! [save settings]
    QCoreApplication::sendPostedEvents();
    ok &= expect(plugin.settings.size() == 3
                     && plugin.settings.at(0).getText() == QLatin1String("Good morning")
                     && plugin.settings.at(1).getIntValue() == 1,
                 "the saved page did not reach the plugin");
    return ok;
}
