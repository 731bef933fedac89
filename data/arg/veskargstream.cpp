#include "veskarg.h"
#include "veskfield.h"
#include "veskpresence.h"
#include "veskservice.h"
#include "veskstream_p.h"

#include <QtCore/QDataStream>

#include <veskxmlnode.h>

namespace {

// Argument lists nest; reading arbitrary bytes must not recurse without
// bound, so neither direction goes deeper than this.
constexpr int MaxDepth = 64;

bool isWritable(VeskArg const& arg, int depth)
{
    switch (arg.getType()) {
    case VeskArg::Pointer:
    case VeskArg::PointerList:
    case VeskArg::Plugin:
    case VeskArg::Buddy:
    case VeskArg::BuddyResource:
    case VeskArg::Account:
    case VeskArg::PluginAction:
    case VeskArg::GuiEventsReceiver:
    case VeskArg::Undefined:
        return false;
    case VeskArg::ArgList:
        if (depth >= MaxDepth)
            return false;
        for (VeskArg const& element : arg.toArgList()) {
            if (!isWritable(element, depth + 1))
                return false;
        }
        return true;
    default:
        return true;
    }
}

void writeArg(QDataStream& stream, VeskArg const& arg);

void writeValue(QDataStream& stream, VeskArg const& arg)
{
    switch (arg.getType()) {
    case VeskArg::Char: stream << qint8(arg.toChar()); break;
    case VeskArg::UChar: stream << quint8(arg.toUChar()); break;
    case VeskArg::Int: stream << qint32(arg.toInt()); break;
    case VeskArg::UInt: stream << quint32(arg.toUInt()); break;
    case VeskArg::Int64: stream << qint64(arg.toInt64()); break;
    case VeskArg::UInt64: stream << quint64(arg.toUInt64()); break;
    case VeskArg::Float: VeskStream::writeFloat(stream, arg.toFloat()); break;
    case VeskArg::Double: VeskStream::writeDouble(stream, arg.toDouble()); break;
    case VeskArg::String: stream << arg.toString(); break;
    case VeskArg::ByteArray: stream << arg.toByteArray(); break;
    case VeskArg::StringList: VeskStream::writeStrings(stream, arg.toStringList()); break;
    case VeskArg::Bool: stream << quint8(arg.toBool() ? 1 : 0); break;
    case VeskArg::Field: stream << arg.toField(); break;
    case VeskArg::FieldList: stream << arg.toFieldList(); break;
    case VeskArg::XmlNode: stream << arg.toXmlNode(); break;
    case VeskArg::Presence: stream << arg.toPresence(); break;
    case VeskArg::VideoClip: stream << arg.toVideoClip(); break;
    case VeskArg::ArgList: {
        QList<VeskArg> const list = arg.toArgList();
        VeskStream::writeCount(stream, list.size());
        for (VeskArg const& element : list)
            writeArg(stream, element);
        break;
    }
    case VeskArg::Service: stream << arg.toService(); break;
    case VeskArg::ServiceList: stream << arg.toServiceList(); break;
    case VeskArg::TextFormatList: stream << arg.toTextFormatList(); break;
    default: break;
    }
}

void writeArg(QDataStream& stream, VeskArg const& arg)
{
    if (VeskStream::beginWrite(stream)) {
        stream << qint32(arg.getType());
        writeValue(stream, arg);
    }
}

// Reads one value of a type whose value is a plain T with its own operator.
template<typename T>
VeskArg readRecord(QDataStream& stream)
{
    T value;
    stream >> value;
    return VeskStream::ok(stream) ? VeskArg(value) : VeskArg();
}

template<typename Wire, typename T>
VeskArg readScalar(QDataStream& stream)
{
    Wire value = 0;
    stream >> value;
    return VeskArg(static_cast<T>(value));
}

VeskArg readArg(QDataStream& stream, int depth);

VeskArg readArgList(QDataStream& stream, int depth)
{
    quint32 count = 0;
    if (depth >= MaxDepth) {
        VeskStream::corrupt(stream);
        return VeskArg();
    }
    if (!VeskStream::readCount(stream, count))
        return VeskArg();
    QList<VeskArg> list;
    for (quint32 i = 0; i < count; ++i) {
        VeskArg element = readArg(stream, depth + 1);
        if (!VeskStream::ok(stream))
            return VeskArg();
        list.append(element);
    }
    return VeskArg(list);
}

VeskArg readValue(QDataStream& stream, qint32 type, int depth)
{
    switch (type) {
    case VeskArg::None: return VeskArg();
    case VeskArg::Char: return readScalar<qint8, char>(stream);
    case VeskArg::UChar: return readScalar<quint8, unsigned char>(stream);
    case VeskArg::Int: return readScalar<qint32, int>(stream);
    case VeskArg::UInt: return readScalar<quint32, unsigned int>(stream);
    case VeskArg::Int64: return readScalar<qint64, long long>(stream);
    case VeskArg::UInt64: return readScalar<quint64, unsigned long long>(stream);
    case VeskArg::Float: return VeskArg(VeskStream::readFloat(stream));
    case VeskArg::Double: return VeskArg(VeskStream::readDouble(stream));
    case VeskArg::String: return readRecord<QString>(stream);
    case VeskArg::ByteArray: return readRecord<QByteArray>(stream);
    case VeskArg::StringList: {
        QStringList list;
        return VeskStream::readStrings(stream, list) ? VeskArg(list) : VeskArg();
    }
    case VeskArg::Bool: {
        bool value = false;
        return VeskStream::readBool(stream, value) ? VeskArg(value) : VeskArg();
    }
    case VeskArg::Field: return readRecord<VeskField>(stream);
    case VeskArg::FieldList: return readRecord<QList<VeskField>>(stream);
    case VeskArg::XmlNode: return readRecord<VeskXmlNode>(stream);
    case VeskArg::Presence: return readRecord<VeskPresence>(stream);
    case VeskArg::VideoClip: return readRecord<VeskVideoClip>(stream);
    case VeskArg::ArgList: return readArgList(stream, depth);
    case VeskArg::Service: return readRecord<VeskService>(stream);
    case VeskArg::ServiceList: return readRecord<QList<VeskService>>(stream);
    case VeskArg::TextFormatList: return readRecord<QList<VeskTextFormat>>(stream);
    default:
        // Types that are never written, and numbers that name no type.
        VeskStream::corrupt(stream);
        return VeskArg();
    }
}

VeskArg readArg(QDataStream& stream, int depth)
{
    if (!VeskStream::beginRead(stream))
        return VeskArg();
    qint32 type = 0;
    stream >> type;
    if (!VeskStream::ok(stream))
        return VeskArg();
    VeskArg value = readValue(stream, type, depth);
    return VeskStream::ok(stream) ? value : VeskArg();
}

} // namespace

QDataStream& operator<<(QDataStream& stream, VeskArg const& arg)
{
    if (!VeskStream::ok(stream))
        return stream;
    if (!isWritable(arg, 0)) {
        VeskStream::refuseWrite(stream);
        return stream;
    }
    writeArg(stream, arg);
    return stream;
}

QDataStream& operator>>(QDataStream& stream, VeskArg& arg)
{
    VeskArg read = readArg(stream, 0);
    arg.swap(read);
    return stream;
}

QDataStream& operator<<(QDataStream& stream, QList<VeskArg> const& list)
{
    if (!VeskStream::ok(stream))
        return stream;
    for (VeskArg const& element : list) {
        if (!isWritable(element, 1)) {
            VeskStream::refuseWrite(stream);
            return stream;
        }
    }
    return VeskStream::writeList(stream, list);
}

QDataStream& operator>>(QDataStream& stream, QList<VeskArg>& list)
{
    return VeskStream::readList(stream, list);
}
