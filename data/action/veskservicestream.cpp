#include "veskservice.h"
#include "veskstream_p.h"

#include <QtCore/QDataStream>

QDataStream& operator<<(QDataStream& stream, VeskService const& service)
{
    if (VeskStream::beginWrite(stream))
        stream << service.name << service.text1 << service.text2 << service.protocol;
    return stream;
}

QDataStream& operator>>(QDataStream& stream, VeskService& service)
{
    VeskService read;
    if (VeskStream::beginRead(stream))
        stream >> read.name >> read.text1 >> read.text2 >> read.protocol;
    service = VeskStream::ok(stream) ? read : VeskService();
    return stream;
}

QDataStream& operator<<(QDataStream& stream, QList<VeskService> const& services)
{
    return VeskStream::writeList(stream, services);
}

QDataStream& operator>>(QDataStream& stream, QList<VeskService>& services)
{
    return VeskStream::readList(stream, services);
}

QDataStream& operator<<(QDataStream& stream, VeskTextFormat const& format)
{
    if (VeskStream::beginWrite(stream)) {
        stream << format.number1 << format.number2 << format.string1 << format.number3
               << format.string2 << format.number4;
    }
    return stream;
}

QDataStream& operator>>(QDataStream& stream, VeskTextFormat& format)
{
    VeskTextFormat read;
    if (VeskStream::beginRead(stream)) {
        stream >> read.number1 >> read.number2 >> read.string1 >> read.number3 >> read.string2
            >> read.number4;
    }
    format = VeskStream::ok(stream) ? read : VeskTextFormat();
    return stream;
}

QDataStream& operator<<(QDataStream& stream, QList<VeskTextFormat> const& formats)
{
    return VeskStream::writeList(stream, formats);
}

QDataStream& operator>>(QDataStream& stream, QList<VeskTextFormat>& formats)
{
    return VeskStream::readList(stream, formats);
}

QDataStream& operator<<(QDataStream& stream, VeskVideoClip const& clip)
{
    if (VeskStream::beginWrite(stream))
        stream << clip.value1 << clip.value2 << clip.value3 << clip.value4 << clip.text;
    return stream;
}

QDataStream& operator>>(QDataStream& stream, VeskVideoClip& clip)
{
    VeskVideoClip read;
    if (VeskStream::beginRead(stream))
        stream >> read.value1 >> read.value2 >> read.value3 >> read.value4 >> read.text;
    clip = VeskStream::ok(stream) ? read : VeskVideoClip();
    return stream;
}
