// Writes the seed corpus of fuzz_datastream: valid streams of every kind of
// value, for both stream versions. Built against the library like the fuzz
// target (without -fsanitize=fuzzer) and run from the source tree:
//   make_corpus_datastream fuzz/corpus/fuzz_datastream

#include "datastream_values.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <cstdio>
#include <functional>

namespace {

QList<VeskField> fields()
{
    VeskField check = VeskField::checkBox(QStringLiteral("Away"), QStringLiteral("away"), true,
                                          QStringLiteral("g"), {QStringLiteral("x")});
    check.setReadOnly(true);
    return {VeskField::spinBox(QStringLiteral("Port"), QStringLiteral("port"), 9, 1, 5,
                               QString(), QStringLiteral(" s")),
            VeskField::comboBox(QStringLiteral("Mode"), QStringLiteral("mode"),
                                {QStringLiteral("a"), QStringLiteral("b")}, {}, QStringLiteral("b"),
                                QString()),
            check,
            VeskField::doubleSpinBox(QStringLiteral("Gain"), QStringLiteral("gain"), 1.0, 0.0,
                                     0.5, QString()),
            VeskField::image(QStringLiteral("pic"), QByteArray("\x89PNG", 4), QString()),
            VeskField()};
}

struct Seed
{
    char const* name;
    FuzzDataStream::Kind kind;
    std::function<void(QDataStream&)> write;
};

QList<Seed> seeds(VeskBuddyType const& kind)
{
    using namespace FuzzDataStream;
    VeskPresenceType* const online = kind.data()->presences.value(QStringLiteral("online"));
    VeskService const service(QStringLiteral("search"), QStringLiteral("b"), QStringLiteral("c"),
                              QStringLiteral("proto"), VeskPluginAction());
    VeskTextFormat format;
    format.number2 = 2;
    format.string2 = QStringLiteral("italic");
    VeskVideoClip clip;
    clip.value3 = 3;
    clip.text = QStringLiteral("clip");
    VeskXmlNode node(QStringLiteral("root"), QStringLiteral("text"));
    node.addChild(QStringLiteral("child")).setAttribute(QStringLiteral("a"), 1.5);
    QList<VeskArg> const args = {VeskArg(char('c')), VeskArg(-1), VeskArg(7ULL), VeskArg(0.5f),
                                 VeskArg(QStringLiteral("text")), VeskArg(QByteArray("\0b", 2)),
                                 VeskArg(QStringList{QStringLiteral("a")}), VeskArg(true),
                                 VeskArg(fields().first()), VeskArg(node),
                                 VeskArg(VeskPresence(online, QStringLiteral("here"))),
                                 VeskArg(clip), VeskArg(service),
                                 VeskArg(QList<VeskService>{service}),
                                 VeskArg(QList<VeskTextFormat>{format})};
    QList<Seed> list;
    list.append({"args", Arg, [args](QDataStream& s) {
                     for (VeskArg const& arg : args)
                         s << quint8(Arg) << arg;
                 }});
    list.append({"arglist", ArgList, [args](QDataStream& s) {
                     s << QList<VeskArg>{VeskArg(args), VeskArg(QList<VeskArg>{VeskArg()})};
                 }});
    list.append({"field", Field, [](QDataStream& s) { s << fields().at(2); }});
    list.append({"fieldlist", FieldList, [](QDataStream& s) { s << fields(); }});
    list.append({"xmlnode", XmlNode, [node](QDataStream& s) { s << node; }});
    list.append({"service", Service, [service](QDataStream& s) { s << service; }});
    list.append({"servicelist", ServiceList,
                 [service](QDataStream& s) { s << QList<VeskService>{service, service}; }});
    list.append({"textformat", TextFormat, [format](QDataStream& s) { s << format; }});
    list.append({"textformatlist", TextFormatList,
                 [format](QDataStream& s) { s << QList<VeskTextFormat>{format}; }});
    list.append({"videoclip", VideoClip, [clip](QDataStream& s) { s << clip; }});
    list.append({"presence", Presence,
                 [online](QDataStream& s) { s << VeskPresence(online, QStringLiteral("away")); }});
    return list;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s <corpus directory>\n", argv[0]);
        return 2;
    }
    QDir const dir(QString::fromLocal8Bit(argv[1]));
    VeskBuddyType const kind = FuzzDataStream::makeKind();
    for (quint8 version : {quint8(0), quint8(1)}) {
        for (Seed const& seed : seeds(kind)) {
            QByteArray bytes;
            QDataStream out(&bytes, QIODevice::WriteOnly);
            out.setVersion(FuzzDataStream::versionFor(version));
            out << version;
            if (seed.kind != FuzzDataStream::Arg)
                out << quint8(seed.kind);
            seed.write(out);
            QFile file(dir.filePath(QStringLiteral("%1-%2").arg(QLatin1String(seed.name)).arg(version ? 6 : 5)));
            if (out.status() != QDataStream::Ok || !file.open(QIODevice::WriteOnly)
                || file.write(bytes) != bytes.size()) {
                std::fprintf(stderr, "cannot write seed %s\n", seed.name);
                return 1;
            }
        }
    }
    return 0;
}
