#include "fields.h"
#include "sampleplugin.h"
#include "say.h"

#include <VeskData>

#include <QtCore/QDataStream>
#include <QtCore/QIODevice>
#include <QtCore/QDebug>

namespace {

QString const noGroup;
QString const connection = QStringLiteral("Connection");

QList<VeskField> buildSettingsPage(SamplePlugin* plugin)
{
    VeskPluginAction const save(plugin, &SamplePlugin::saveSettings,
                                {VeskArg(QStringLiteral("sample account"))});
    return {
        VeskField::label(QStringLiteral("Sample protocol settings"), QStringLiteral("title"),
                         noGroup),
        VeskField::image(QStringLiteral("logo"), QByteArray("\x89PNG", 4), noGroup),
        VeskField::lineEdit(QStringLiteral("Nickname"), QStringLiteral("nick"),
                            QStringLiteral("alice"), 32, connection),
        VeskField::passwordEdit(QStringLiteral("Password"), QStringLiteral("password"),
                                QStringLiteral("hunter2"), 64, connection),
        VeskField::comboBox(QStringLiteral("Status at login"), QStringLiteral("status"),
                            {QStringLiteral("online"), QStringLiteral("away"),
                             QStringLiteral("invisible")},
                            {QStringLiteral("Online"), QStringLiteral("Away"),
                             QStringLiteral("Invisible")},
                            QStringLiteral("online"), connection),
        VeskField::checkBox(QStringLiteral("Go away when idle"), QStringLiteral("autoaway"), true,
                            QStringLiteral("Presence"), {}),
        VeskField::spinBox(QStringLiteral("Idle after"), QStringLiteral("idle"), 60, 1, 5,
                           QStringLiteral("Presence"), QStringLiteral(" min")),
        VeskField::radioButton(QStringLiteral("Use secure connection"), QStringLiteral("tls"),
                               true, connection, {}),
        VeskField::doubleSpinBox(QStringLiteral("Sound volume"), QStringLiteral("volume"), 1.0,
                                 0.0, 0.8, QStringLiteral("Sounds")),
        VeskField::soundEdit(QStringLiteral("Message sound"), QStringLiteral("sound"),
                             QStringLiteral("/usr/share/sounds/message.wav"),
                             QStringLiteral("Sounds")),
        VeskField::dirEdit(QStringLiteral("Downloads"), QStringLiteral("downloads"),
                           QStringLiteral("/home/alice/Downloads"), noGroup),
        VeskField::fileEdit(QStringLiteral("Certificate"), QStringLiteral("certificate"),
                            QString(), noGroup),
        VeskField::textEdit(QStringLiteral("Away message"), QStringLiteral("awaymessage"),
                            QStringLiteral("Back soon"), noGroup),
        VeskField::button(QStringLiteral("Save"), QStringLiteral("save"), save, noGroup),
    };
}

QString debugText(VeskField const& field)
{
    QString text;
    {
        QDebug dbg(&text);
        dbg << field;
    }
    return text.trimmed();
}

int indexOf(QList<VeskField> const& page, QString const& id)
{
    for (int i = 0; i < page.size(); ++i)
        if (page.at(i).getId() == id)
            return i;
    return -1;
}

void sayLines(QString const& text, QString const& indent)
{
    for (QString const& line : text.split(QLatin1Char('\n')))
        say(indent + line);
}

// What a user interface sends back after the user changed some values:
// only the fields it shows as inputs, with their new values.
QString const userInput = QStringLiteral(
    "<fieldlist>"
    "<field type='lineedit' maxlength='32'><id>nick</id><string>alice_w</string></field>"
    "<field type='combobox'><id>status</id><item id='online'>Online</item>"
    "<item id='away' selected='1'>Away</item><item id='invisible'>Invisible</item></field>"
    "<field type='checkbox' checked='0'><id>autoaway</id></field>"
    "<field type='spinbox' max='60' min='1' val='15'><id>idle</id></field>"
    "<field type='doublespinbox' max='1' min='0' val='0.35'><id>volume</id></field>"
    "<field type='lineedit' maxlength='64'><id>password</id><string>correct horse</string></field>"
    "</fieldlist>");

// The host keeps the page between runs as bytes. The stream's version is
// pinned so that a build against another Qt major reads the same bytes.
QByteArray savePage(QList<VeskField> const& page)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setVersion(QDataStream::Qt_5_15);
    out << page;
    return out.status() == QDataStream::Ok ? bytes : QByteArray();
}

QList<VeskField> restorePage(QByteArray const& bytes)
{
    QDataStream in(bytes);
    in.setVersion(QDataStream::Qt_5_15);
    QList<VeskField> page;
    in >> page;
    return in.status() == QDataStream::Ok ? page : QList<VeskField>();
}

QString statusName(QDataStream::Status status)
{
    switch (status) {
    case QDataStream::Ok: return QStringLiteral("Ok");
    case QDataStream::ReadPastEnd: return QStringLiteral("ReadPastEnd");
    case QDataStream::ReadCorruptData: return QStringLiteral("ReadCorruptData");
    case QDataStream::WriteFailed: return QStringLiteral("WriteFailed");
    default: return QString::number(int(status));
    }
}

void showSavedPage(QList<VeskField> const& page)
{
    QByteArray const saved = savePage(page);
    say(QStringLiteral("  the host saves the page with QDataStream: %1 bytes").arg(saved.size()));
    QList<VeskField> const restored = restorePage(saved);
    QStringList differing;
    for (int i = 0; i < restored.size() && i < page.size(); ++i) {
        if (restored.at(i) != page.at(i))
            differing.append(restored.at(i).getId());
    }
    say(QStringLiteral("  and restores %1 fields; those not equal to the saved ones: %2")
            .arg(restored.size())
            .arg(differing.join(QStringLiteral(", "))));
    say(QStringLiteral("  (a button's action points into the running plugin and is not saved)"));
    int const idle = indexOf(restored, QStringLiteral("idle"));
    if (idle >= 0)
        say(QStringLiteral("    restored: ") + debugText(restored.at(idle)));

    QByteArray cut = saved.left(saved.size() / 2);
    QDataStream in(cut);
    QList<VeskField> partial;
    in >> partial;
    say(QStringLiteral("  half of the bytes read back as %1 fields, stream status %2")
            .arg(partial.size()).arg(statusName(in.status())));

    QByteArray refused;
    QDataStream out(&refused, QIODevice::WriteOnly);
    out << VeskArg(QList<VeskArg>{VeskArg(1), VeskArg(static_cast<void*>(&cut))});
    say(QStringLiteral("  a value holding a pointer is not written: status %1, %2 bytes")
            .arg(statusName(out.status())).arg(refused.size()));
}

} // namespace

void showFieldsDemo(SamplePlugin* plugin)
{
    say(QStringLiteral("== Settings page (form fields)"));
    QList<VeskField> page = buildSettingsPage(plugin);
    say(QStringLiteral("  the plugin builds its settings page from %1 fields:").arg(page.size()));
    for (VeskField const& field : page)
        say(QStringLiteral("    ") + debugText(field));

    try {
        VeskField::spinBox(QStringLiteral("Idle after"), QStringLiteral("idle"), 60, 1, 0, noGroup,
                           noGroup);
    } catch (std::runtime_error const& error) {
        say(QStringLiteral("  a spin box whose value lies below its minimum is refused: %1")
                .arg(QString::fromUtf8(error.what())));
    }

    say(QStringLiteral("  the host shows the page to the user interface as XML:"));
    sayLines(VeskField::toXml(page).toString(2), QStringLiteral("    "));

    say(QStringLiteral("  the user changes some values; the interface sends back:"));
    VeskXmlNode const answer = VeskXmlNode::fromString(userInput);
    sayLines(answer.toString(2), QStringLiteral("    "));

    QList<VeskField> const merged = VeskField::fromXml(page, answer);
    say(QStringLiteral("  the plugin merges the values into its page by id; changed fields:"));
    for (int i = 0; i < page.size(); ++i) {
        if (merged.at(i) == page.at(i))
            continue;
        say(QStringLiteral("    before: ") + debugText(page.at(i)));
        say(QStringLiteral("    after:  ") + debugText(merged.at(i)));
    }
    page = merged;

    VeskField& idle = page[indexOf(page, QStringLiteral("idle"))];
    bool const changed = VeskArg::setFieldValue(idle, VeskArg(20));
    say(QStringLiteral("  one value arrives as an argument, Int 20 for \"idle\": %1, now %2")
            .arg(changed ? QStringLiteral("stored") : QStringLiteral("unchanged"))
            .arg(idle.getIntValue()));
    try {
        VeskArg::setFieldValue(idle, VeskArg(QStringLiteral("twenty")));
    } catch (std::runtime_error const& error) {
        say(QStringLiteral("  a String for the spin box is refused: %1")
                .arg(QString::fromUtf8(error.what())));
    }

    showSavedPage(page);

    say(QStringLiteral("  the user clicks \"%1\": its action is posted to the dispatcher")
            .arg(page.last().getLabel()));
    page.last().clicked();
}
