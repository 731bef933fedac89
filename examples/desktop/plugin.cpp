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
    auto t = [](char const* text) { return QString::fromUtf8(text); };
    VeskPluginAction const test(this, &DesktopPlugin::testConnection, {VeskArg("alice@sample")});
    QString const account = t("Account");
    QString const away = t("When idle");
    QString const icons = t("Icon size");
    QString const files = t("Files");
    return {
        VeskField::image(t("logo"), logoPng(), t("About")),
        VeskField::label(t("Settings of the sample protocol account alice@sample."), t("intro"), t("About")),
        VeskField::lineEdit(t("Nickname"), t("nick"), t("Alice"), 32, account),
        VeskField::passwordEdit(t("Password"), t("password"), t("secret"), 64, account),
        VeskField::comboBox(t("Status at login"), t("status"), {t("online"), t("away"), t("invisible")},
                            {t("Online"), t("Away"), t("Invisible")}, t("online"), account),
        VeskField::button(t("Test connection"), t("test"), test, account),
        VeskField::checkBox(t("Go away when idle"), t("autoaway"), true, away, {}),
        VeskField::spinBox(t("Idle after"), t("idle"), 120, 1, 10, away, t(" min")),
        VeskField::doubleSpinBox(t("Sound volume"), t("volume"), 1.0, 0.0, 0.75, away),
        VeskField::radioButton(t("Small icons"), t("small"), true, icons, {}),
        VeskField::radioButton(t("Large icons"), t("large"), false, icons, {}),
        VeskField::dirEdit(t("Downloads"), t("downloads"), t("/home/alice/Downloads"), files),
        VeskField::fileEdit(t("Certificate"), t("cert"), t("/home/alice/.sample/cert.pem"), files),
        VeskField::soundEdit(t("Message sound"), t("sound"), t("/usr/share/sounds/message.wav"), files),
        VeskField::textEdit(t("Signature"), t("signature"), t("Sent from the sample client"), t("Messages")),
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
