#ifndef FUZZ_DATASTREAM_VALUES_H
#define FUZZ_DATASTREAM_VALUES_H

// Shared by the QDataStream fuzz target and the program that makes its seed
// corpus. An input is one byte choosing the stream version (even: Qt 5.15,
// odd: the Qt the library is built with), then any number of records, each a
// byte naming the type of the value that follows (modulo Count).

#include <VeskData>

#include <QtCore/QDataStream>
#include <QtCore/QIODevice>

namespace FuzzDataStream {

enum Kind : quint8 {
    Arg,
    ArgList,
    Field,
    FieldList,
    XmlNode,
    Service,
    ServiceList,
    TextFormat,
    TextFormatList,
    VideoClip,
    Presence,
    Count
};

inline QDataStream::Version versionFor(quint8 byte)
{
    return byte % 2 ? QDataStream::Qt_DefaultCompiledVersion : QDataStream::Qt_5_15;
}

// A contact kind whose presence types the presences in the inputs name.
inline VeskBuddyType makeKind()
{
    VeskBuddyType kind(QStringLiteral("proto"), QStringLiteral("Proto"));
    for (char const* id : {"online", "away"}) {
        auto* type = new VeskPresenceType;
        type->id = QString::fromLatin1(id);
        kind.data()->presences.insert(type->id, type);
        kind.data()->presenceList.append(type);
    }
    return kind;
}

// Reads one value of the kind and writes what was read to out.
template<typename T>
void copyOne(QDataStream& in, QDataStream& out)
{
    T value;
    in >> value;
    if (in.status() == QDataStream::Ok)
        out << value;
}

inline void copyOne(Kind kind, QDataStream& in, QDataStream& out)
{
    switch (kind) {
    case Arg: copyOne<VeskArg>(in, out); break;
    case ArgList: copyOne<QList<VeskArg>>(in, out); break;
    case Field: copyOne<VeskField>(in, out); break;
    case FieldList: copyOne<QList<VeskField>>(in, out); break;
    case XmlNode: copyOne<VeskXmlNode>(in, out); break;
    case Service: copyOne<VeskService>(in, out); break;
    case ServiceList: copyOne<QList<VeskService>>(in, out); break;
    case TextFormat: copyOne<VeskTextFormat>(in, out); break;
    case TextFormatList: copyOne<QList<VeskTextFormat>>(in, out); break;
    case VideoClip: copyOne<VeskVideoClip>(in, out); break;
    case Presence: copyOne<VeskPresence>(in, out); break;
    case Count: break;
    }
}

} // namespace FuzzDataStream

#endif
