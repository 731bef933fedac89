#include "snippets.h"

#include <VeskData>

#include <QtCore/QFile>

namespace {

//! [page]
QList<VeskField> accountPage()
{
    QString const account = QStringLiteral("Account");
    QString const privacy = QStringLiteral("Privacy");
    return {
        VeskField::lineEdit(QStringLiteral("Server"), QStringLiteral("server"),
                            QStringLiteral("chat.example.org"), 255, account),
        VeskField::spinBox(QStringLiteral("Port"), QStringLiteral("port"), 65535, 1, 5222, account,
                           QString()),
        VeskField::passwordEdit(QStringLiteral("Password"), QStringLiteral("password"), QString(),
                                64, account),
        VeskField::comboBox(QStringLiteral("Security"), QStringLiteral("security"),
                            {QStringLiteral("tls"), QStringLiteral("none")},
                            {QStringLiteral("Encrypted"), QStringLiteral("Plain")},
                            QStringLiteral("tls"), account),
        // Checking "typing" enables the fields whose ids it lists.
        VeskField::checkBox(QStringLiteral("Send typing notices"), QStringLiteral("typing"), true,
                            privacy, {QStringLiteral("typingDelay")}),
        VeskField::doubleSpinBox(QStringLiteral("Notice delay (s)"), QStringLiteral("typingDelay"),
                                 10.0, 0.5, 2.5, privacy),
    };
}
//! [page]

} // namespace

bool fieldsGuide(QString const& snippetDir)
{
    //! [refused]
    bool refused = false;
    try {
        // A spin box value below its minimum is refused, not clamped.
        VeskField::spinBox(QStringLiteral("Port"), QStringLiteral("port"), 65535, 1, 0,
                           QString(), QString());
    } catch (std::runtime_error const&) {
        refused = true;
    }
    //! [refused]
    bool ok = expect(refused, "a spin box below its minimum was made");

    //! [to xml]
    QList<VeskField> const page = accountPage();
    QString const xml = VeskField::toXml(page).toString(2);
    //! [to xml]
    QFile file(snippetDir + QStringLiteral("/settings.xml"));
    ok &= expect(file.open(QIODevice::ReadOnly), "settings.xml is missing");
    ok &= expect(xml + QLatin1Char('\n') == QString::fromUtf8(file.readAll()),
                 "settings.xml differs from what VeskField::toXml() writes");

    //! [from xml]
    // What the settings dialog sends back: only the fields the user changed.
    VeskXmlNode const changed = VeskXmlNode::fromString(QStringLiteral(
        "<fieldlist>"
        "<field max=\"65535\" min=\"1\" type=\"spinbox\" val=\"5223\"><id>port</id></field>"
        "<field type=\"combobox\"><id>security</id>"
        "<item id=\"tls\">Encrypted</item><item id=\"none\" selected=\"1\">Plain</item>"
        "</field>"
        "</fieldlist>"));
    QList<VeskField> const saved = VeskField::fromXml(page, changed);
    //! [from xml]
    ok &= expect(saved.size() == page.size(), "merging dropped fields");
    ok &= expect(saved.value(1).getIntValue() == 5223 && page.value(1).getIntValue() == 5222,
                 "the port was not merged into a copy");
    ok &= expect(saved.value(3).getSelectedId() == QLatin1String("none"),
                 "the security choice was not merged");
    ok &= expect(saved.value(0) == page.value(0), "an unchanged field changed");

    //! [value]
    // Each kind's value as an argument of its own type.
    VeskArg const port = saved.value(1).getValue();
    VeskArg const security = saved.value(3).getValue();
    //! [value]
    ok &= expect(port.getType() == VeskArg::Int && port.toInt() == 5223, "the port's value");
    ok &= expect(security.getType() == VeskArg::String && security.toString() == QLatin1String("none"),
                 "the security choice's value");
    return ok;
}
