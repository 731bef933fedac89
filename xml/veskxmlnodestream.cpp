#include "veskxmlnode.h"

#include <QtCore/QDataStream>

namespace {

// The same framing as the data library's operators: a leading version byte.
constexpr quint8 FormatVersion = 1;

} // namespace

QDataStream& operator<<(QDataStream& stream, VeskXmlNode const& node)
{
    if (stream.status() != QDataStream::Ok)
        return stream;
    stream << FormatVersion << (node.isNull() ? QString() : node.toString());
    return stream;
}

QDataStream& operator>>(QDataStream& stream, VeskXmlNode& node)
{
    node = VeskXmlNode();
    if (stream.status() != QDataStream::Ok)
        return stream;
    quint8 version = 0;
    QString text;
    stream >> version;
    if (stream.status() == QDataStream::Ok && (version == 0 || version > FormatVersion))
        stream.setStatus(QDataStream::ReadCorruptData);
    if (stream.status() != QDataStream::Ok)
        return stream;
    stream >> text;
    if (stream.status() != QDataStream::Ok || text.isEmpty())
        return stream;
    VeskXmlNode const read = VeskXmlNode::fromString(text);
    if (read.isNull())
        stream.setStatus(QDataStream::ReadCorruptData);
    else
        node = read;
    return stream;
}
