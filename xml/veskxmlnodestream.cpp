#include "veskxmlnode.h"

#include <QtCore/QDataStream>
#include <QtCore/QXmlStreamReader>

namespace {

// The same framing as the data library's operators: a leading version byte.
constexpr quint8 FormatVersion = 1;

// Trees are walked recursively (when written, compared, destroyed), so a
// stream may not hand over one nested deeper than this.
constexpr int MaxDepth = 256;

// Measured with the stream reader, which keeps its element stack on the
// heap, before the text is parsed into a tree.
bool nestsTooDeep(QString const& text)
{
    QXmlStreamReader reader(text);
    int depth = 0;
    while (!reader.atEnd()) {
        switch (reader.readNext()) {
        case QXmlStreamReader::StartElement:
            if (++depth > MaxDepth)
                return true;
            break;
        case QXmlStreamReader::EndElement:
            --depth;
            break;
        default:
            break;
        }
    }
    return false;
}

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
    VeskXmlNode const read = nestsTooDeep(text) ? VeskXmlNode() : VeskXmlNode::fromString(text);
    if (read.isNull())
        stream.setStatus(QDataStream::ReadCorruptData);
    else
        node = read;
    return stream;
}
