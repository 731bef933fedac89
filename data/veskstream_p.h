#ifndef VESKSTREAM_P_H
#define VESKSTREAM_P_H

// Internal to the library: the framing every QDataStream operator of the
// library shares.
//
// Each value starts with a one-byte format version, so that the format can
// grow while old data stays readable. Counts are 32-bit and are checked
// against the bytes the device still holds before anything is read or
// allocated for them: every element takes at least one byte, so a larger
// count can only be corrupt (or, on a sequential device, not there yet).

#include <QtCore/QDataStream>
#include <QtCore/QIODevice>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <cstring>

namespace VeskStream {

constexpr quint8 FormatVersion = 1;

// Writes the version byte. False, with nothing written, when the stream has
// already failed: a failed write is not continued half-way.
inline bool beginWrite(QDataStream& stream)
{
    if (stream.status() != QDataStream::Ok)
        return false;
    stream << FormatVersion;
    return true;
}

inline void refuseWrite(QDataStream& stream)
{
    stream.setStatus(QDataStream::WriteFailed);
}

inline void corrupt(QDataStream& stream)
{
    stream.setStatus(QDataStream::ReadCorruptData);
}

inline bool ok(QDataStream const& stream)
{
    return stream.status() == QDataStream::Ok;
}

// Reads and checks the version byte; false when the stream failed or the
// version is not one this library reads.
inline bool beginRead(QDataStream& stream)
{
    if (!ok(stream))
        return false;
    quint8 version = 0;
    stream >> version;
    if (!ok(stream))
        return false;
    if (version == 0 || version > FormatVersion) {
        corrupt(stream);
        return false;
    }
    return true;
}

inline void writeCount(QDataStream& stream, qsizetype count)
{
    stream << quint32(count);
}

inline bool readCount(QDataStream& stream, quint32& count)
{
    count = 0;
    stream >> count;
    if (!ok(stream))
        return false;
    QIODevice* device = stream.device();
    if (device && qint64(count) > device->bytesAvailable()) {
        stream.setStatus(device->isSequential() ? QDataStream::ReadPastEnd
                                                : QDataStream::ReadCorruptData);
        count = 0;
        return false;
    }
    return true;
}

// Bit patterns, so that the stream's floating-point precision setting never
// rounds a value.
inline void writeFloat(QDataStream& stream, float value)
{
    quint32 bits;
    std::memcpy(&bits, &value, sizeof bits);
    stream << bits;
}

inline float readFloat(QDataStream& stream)
{
    quint32 bits = 0;
    stream >> bits;
    float value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

inline void writeDouble(QDataStream& stream, double value)
{
    quint64 bits;
    std::memcpy(&bits, &value, sizeof bits);
    stream << bits;
}

inline double readDouble(QDataStream& stream)
{
    quint64 bits = 0;
    stream >> bits;
    double value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

// Strictly 0 or 1.
inline bool readBool(QDataStream& stream, bool& value)
{
    quint8 byte = 0;
    stream >> byte;
    value = byte == 1;
    if (ok(stream) && byte > 1)
        corrupt(stream);
    return ok(stream);
}

// Qt's own list readers reserve the whole count before reading an element,
// so the library writes and reads its lists itself.
inline void writeStrings(QDataStream& stream, QStringList const& list)
{
    writeCount(stream, list.size());
    for (QString const& text : list)
        stream << text;
}

inline bool readStrings(QDataStream& stream, QStringList& list)
{
    list.clear();
    quint32 count = 0;
    if (!readCount(stream, count))
        return false;
    for (quint32 i = 0; i < count; ++i) {
        QString text;
        stream >> text;
        if (!ok(stream)) {
            list.clear();
            return false;
        }
        list.append(text);
    }
    return true;
}

// A list whose elements have operators of their own (each with its version).
template<typename T>
QDataStream& writeList(QDataStream& stream, QList<T> const& list)
{
    if (!beginWrite(stream))
        return stream;
    writeCount(stream, list.size());
    for (T const& element : list)
        stream << element;
    return stream;
}

template<typename T>
QDataStream& readList(QDataStream& stream, QList<T>& list)
{
    list.clear();
    quint32 count = 0;
    if (!beginRead(stream) || !readCount(stream, count))
        return stream;
    QList<T> read;
    for (quint32 i = 0; i < count; ++i) {
        T element;
        stream >> element;
        if (!ok(stream))
            return stream;
        read.append(element);
    }
    list.swap(read);
    return stream;
}

} // namespace VeskStream

#endif // VESKSTREAM_P_H
