#ifndef VESKSERVICE_H
#define VESKSERVICE_H

#include "veskdata_global.h"
#include "veskpluginaction.h"

#include <QtCore/QString>

class QDataStream;
class QDebug;

// A service a plugin offers, with the action that performs it. Services are
// told apart by name and protocol only.
class VESK_DATA_EXPORT VeskService
{
public:
    VeskService();
    // The second and third strings are stored crosswise: second goes to
    // text2, third to text1.
    VeskService(QString const& name, QString const& second, QString const& third,
                QString const& protocol, VeskPluginAction const& action);

    bool isValid() const;
    bool operator==(VeskService const& other) const;
    bool operator!=(VeskService const& other) const;

    QString name;
    QString text1;
    QString text2;
    QString protocol;
    VeskPluginAction action;
};

// name="<name>" protocol="<protocol>", then one blank.
VESK_DATA_EXPORT QDebug operator<<(QDebug debug, VeskService const& service);

// A text format record; the meaning of its members belongs to the client
// core and its plugins.
class VESK_DATA_EXPORT VeskTextFormat
{
public:
    VeskTextFormat();

    bool operator==(VeskTextFormat const& other) const;
    bool operator!=(VeskTextFormat const& other) const;

    qint32 number1;
    qint32 number2;
    QString string1;
    qint32 number3;
    QString string2;
    qint32 number4;
};

// A video clip record; the meaning of its members belongs to the client core
// and its plugins. It has no equality of its own: argument values holding
// clips compare everything but value1.
class VESK_DATA_EXPORT VeskVideoClip
{
public:
    VeskVideoClip();

    quint32 value1;
    quint32 value2;
    quint32 value3;
    qint32 value4;
    QString text;
};

// Each writes a version byte and the record's members. A service's action
// points into a running plugin and is not written; a service read back has
// an invalid action. Reading replaces the record; corrupt or truncated input
// leaves it default-made and sets the stream's status.
VESK_DATA_EXPORT QDataStream& operator<<(QDataStream& stream, VeskService const& service);
VESK_DATA_EXPORT QDataStream& operator>>(QDataStream& stream, VeskService& service);
VESK_DATA_EXPORT QDataStream& operator<<(QDataStream& stream, QList<VeskService> const& services);
VESK_DATA_EXPORT QDataStream& operator>>(QDataStream& stream, QList<VeskService>& services);
VESK_DATA_EXPORT QDataStream& operator<<(QDataStream& stream, VeskTextFormat const& format);
VESK_DATA_EXPORT QDataStream& operator>>(QDataStream& stream, VeskTextFormat& format);
VESK_DATA_EXPORT QDataStream& operator<<(QDataStream& stream,
                                         QList<VeskTextFormat> const& formats);
VESK_DATA_EXPORT QDataStream& operator>>(QDataStream& stream, QList<VeskTextFormat>& formats);
VESK_DATA_EXPORT QDataStream& operator<<(QDataStream& stream, VeskVideoClip const& clip);
VESK_DATA_EXPORT QDataStream& operator>>(QDataStream& stream, VeskVideoClip& clip);

Q_DECLARE_METATYPE(VeskService)
Q_DECLARE_METATYPE(VeskTextFormat)
Q_DECLARE_METATYPE(VeskVideoClip)

#endif // VESKSERVICE_H
