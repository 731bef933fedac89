#include "plugin.h"
#include "icons.h"
#include "roster.h"

#include <QtCore/QDebug>

DesktopPlugin::DesktopPlugin(QString iconDir)
    : m_iconDir(std::move(iconDir))
{
}

DesktopPlugin::~DesktopPlugin() = default;

QList<VeskField> DesktopPlugin::settingsPage()
{
    VeskPluginAction const test(this, &DesktopPlugin::testConnection, {VeskArg("alice@sample")});
    QString const account = QStringLiteral("Account");
    QString const away = QStringLiteral("When idle");
    QString const icons = QStringLiteral("Icon size");
    QString const files = QStringLiteral("Files");
    return {
        VeskField::image(QStringLiteral("logo"), logoPng(), QStringLiteral("About")),
        VeskField::label(QStringLiteral("Settings of the sample protocol account alice@sample."),
                         QStringLiteral("intro"), QStringLiteral("About")),
        VeskField::lineEdit(QStringLiteral("Nickname"), QStringLiteral("nick"), QStringLiteral("Alice"), 32, account),
        VeskField::passwordEdit(QStringLiteral("Password"), QStringLiteral("password"), QStringLiteral("secret"),
                                64, account),
        VeskField::comboBox(QStringLiteral("Status at login"), QStringLiteral("status"),
                            {QStringLiteral("online"), QStringLiteral("away"), QStringLiteral("invisible")},
                            {QStringLiteral("Online"), QStringLiteral("Away"), QStringLiteral("Invisible")},
                            QStringLiteral("online"), account),
        VeskField::button(QStringLiteral("Test connection"), QStringLiteral("test"), test, account),
        VeskField::checkBox(QStringLiteral("Go away when idle"), QStringLiteral("autoaway"), true, away, {}),
        VeskField::spinBox(QStringLiteral("Idle after"), QStringLiteral("idle"), 120, 1, 10, away,
                           QStringLiteral(" min")),
        VeskField::doubleSpinBox(QStringLiteral("Sound volume"), QStringLiteral("volume"), 1.0, 0.0, 0.75, away),
        VeskField::radioButton(QStringLiteral("Small icons"), QStringLiteral("small"), true, icons, {}),
        VeskField::radioButton(QStringLiteral("Large icons"), QStringLiteral("large"), false, icons, {}),
        VeskField::dirEdit(QStringLiteral("Downloads"), QStringLiteral("downloads"), QStringLiteral("/home/alice/Downloads"),
                           files),
        VeskField::fileEdit(QStringLiteral("Certificate"), QStringLiteral("cert"),
                            QStringLiteral("/home/alice/.sample/cert.pem"), files),
        VeskField::soundEdit(QStringLiteral("Message sound"), QStringLiteral("sound"),
                             QStringLiteral("/usr/share/sounds/message.wav"), files),
        VeskField::textEdit(QStringLiteral("Signature"), QStringLiteral("signature"),
                            QStringLiteral("Sent from the sample client"), QStringLiteral("Messages")),
    };
}

void DesktopPlugin::saveSettings(QList<VeskArg>& args)
{
    VeskXmlNode const changes = VeskXmlNode::fromString(args.value(0).toString());
    m_page = VeskField::fromXml(m_page, changes);
    m_log << QStringLiteral("saved %1 fields").arg(changes.getChildNodes().size());
}

void DesktopPlugin::contactMoved(QList<VeskArg>& args)
{
    VeskBuddyContact const contact(args.value(0).toBuddy());
    m_log << QStringLiteral("moved %1 to %2").arg(contact.getId(), args.value(1).toBuddy().getDisplay());
}

void DesktopPlugin::testConnection(QList<VeskArg>& args)
{
    m_log << QStringLiteral("tested %1").arg(args.value(0).toString());
}

bool DesktopPlugin::event(QEvent* e)
{
    if (e->type() != VeskWaitEvent::DefaultType)
        return VeskPlugin::event(e);
    auto* const question = static_cast<Question*>(e);
    switch (question->kind) {
    case Question::Page:
        if (m_page.isEmpty())
            m_page = settingsPage();
        question->waitObject->setRetValue(VeskArg(m_page));
        break;
    case Question::ContactList: {
        QList<VeskArg> groups;
        for (VeskBuddyGroup const& group : sampleContactList(m_iconDir))
            groups << VeskArg(VeskBuddy(group));
        question->waitObject->setRetValue(VeskArg(groups));
        break;
    }
    case Question::Log:
        question->waitObject->setRetValue(VeskArg(m_log));
        break;
    }
    // The host may free the wait object from here on.
    question->waitObject->wakeUp();
    return true;
}

bool Dispatcher::event(QEvent* e)
{
    if (e->type() != VeskCallActionEvent::EventType)
        return QObject::event(e);
    auto* const call = static_cast<VeskCallActionEvent*>(e);
    // Exceptions must not travel through Qt's event loop.
    try {
        (call->plugin->*call->method)(call->args);
    } catch (std::runtime_error const& error) {
        qWarning("vesk-desktop: the call was refused: %s", error.what());
    }
    return true;
}
