#include "catalogue.h"
#include "sampleplugin.h"
#include "say.h"

#include <QtCore/QDebug>

namespace {

// What the values point to or name; the values never own any of it.
struct CatalogueObjects
{
    VeskAccountConnection account;
    VeskGuiEventsReceiver receiver;
    VeskPresenceType online{QStringLiteral("Online"), QStringLiteral("online"),
                            QStringLiteral("online.png"), 10, VeskPresence::Flag(1)};
    VeskBuddyResourceType phone{QStringLiteral("phone"), QStringLiteral("phone.png")};
    int pointee = 0;
};

CatalogueObjects& objects()
{
    static CatalogueObjects instance;
    return instance;
}

} // namespace

QList<VeskArg> everyArgumentType(SamplePlugin* plugin)
{
    CatalogueObjects& o = objects();
    void* const pointer = &o.pointee;
    VeskField const nick = VeskField::lineEdit(QStringLiteral("Nickname"), QStringLiteral("nick"),
                                               QStringLiteral("alice"), 32, QString());
    VeskPresence const presence(&o.online, QStringLiteral("at the desk"));
    VeskPluginAction const greet(plugin, &SamplePlugin::greet, {VeskArg("Carol"), VeskArg(2)});
    VeskService const chat(QStringLiteral("chat"), QString(), QString(), QStringLiteral("sample"), greet);
    VeskTextFormat bold;
    bold.string1 = QStringLiteral("bold");
    VeskVideoClip clip;
    clip.text = QStringLiteral("clip");
    VeskXmlNode node(QStringLiteral("note"), QStringLiteral("hello"), nullptr);

    return {
        VeskArg('v'),
        VeskArg(static_cast<unsigned char>(200)),
        VeskArg(-42),
        VeskArg(42u),
        VeskArg(-1234567890123LL),
        VeskArg(1234567890123ULL),
        VeskArg(0.25f),
        VeskArg(3.14159),
        VeskArg("a string"),
        VeskArg(QByteArray("bytes")),
        VeskArg(QStringList{QStringLiteral("one"), QStringLiteral("two")}),
        VeskArg(true),
        VeskArg(pointer),
        VeskArg(QList<void*>{pointer, nullptr}),
        VeskArg(static_cast<VeskPlugin*>(plugin)),
        VeskArg(nick),
        VeskArg(QList<VeskField>{nick}),
        VeskArg(node),
        VeskArg(VeskBuddyGroup(QStringLiteral("Friends"))),
        VeskArg(VeskBuddyResource(&o.phone, presence)),
        VeskArg(&o.account),
        VeskArg(greet),
        VeskArg(presence),
        VeskArg(&o.receiver),
        VeskArg(clip),
        VeskArg(QList<VeskArg>{VeskArg(1), VeskArg("nested")}),
        VeskArg(chat),
        VeskArg(QList<VeskService>{chat}),
        VeskArg(QList<VeskTextFormat>{bold}),
    };
}

void showEveryArgumentType(SamplePlugin* plugin)
{
    say(QStringLiteral("== Every argument type"));
    say(QStringLiteral("  host: asks the plugin for one value of every type"));
    VeskArg const answer = VeskWait::sendMessage(new CatalogueRequest, plugin);
    QList<VeskArg> const values = answer.toArgList();
    say(QStringLiteral("  host: the answer is a value of type %1 holding %2 values; its debug text:")
            .arg(answer.getTypeName()).arg(values.size()));
    QString text;
    QDebug(&text) << values;
    say(text);
}
