#ifndef VESKSERVICE_H
#define VESKSERVICE_H

/// \file
/// VeskService, VeskTextFormat and VeskVideoClip records and their stream operators.

#include "veskdata_global.h"
#include "veskpluginaction.h"

#include <QtCore/QString>

class QDataStream;
class QDebug;

/// A service a plugin offers, with the action that performs it. Services are
/// told apart by name and protocol only.
class VESK_DATA_EXPORT VeskService
{
public:
    /// A service without name or action: not valid.
    VeskService();
    /// The second and third strings are stored crosswise: second goes to
    /// text2, third to text1.
    VeskService(QString const& name, QString const& second, QString const& third,
                QString const& protocol, VeskPluginAction const& action);

    /// True when the service has a name.
    bool isValid() const;
    /// Same name and protocol; the other members take no part.
    bool operator==(VeskService const& other) const;
    /// The negation of operator==().
    bool operator!=(VeskService const& other) const;

    /// The service's name, part of its identity.
    QString name;
    /// Free text; the constructor's third string.
    QString text1;
    /// Free text; the constructor's second string.
    QString text2;
    /// The protocol that offers the service, part of its identity.
    QString protocol;
    /// What performs the service; it points into a running plugin.
    VeskPluginAction action;
};

/// name="<name>" protocol="<protocol>", then one blank.
VESK_DATA_EXPORT QDebug operator<<(QDebug debug, VeskService const& service);

/// A text format record; the meaning of its members belongs to the client
/// core and its plugins.
class VESK_DATA_EXPORT VeskTextFormat
{
public:
    /// Every number 0 and every string null.
    VeskTextFormat();

    /// Every member equal.
    bool operator==(VeskTextFormat const& other) const;
    /// The negation of operator==().
    bool operator!=(VeskTextFormat const& other) const;

    /// A number of the format record.
    qint32 number1;
    /// A number of the format record.
    qint32 number2;
    /// A string of the format record.
    QString string1;
    /// A number of the format record.
    qint32 number3;
    /// A string of the format record.
    QString string2;
    /// A number of the format record.
    qint32 number4;
};

/// A video clip record; the meaning of its members belongs to the client core
/// and its plugins. It has no equality of its own: argument values holding
/// clips compare everything but value1.
class VESK_DATA_EXPORT VeskVideoClip
{
public:
    /// Every number 0 and a null text.
    VeskVideoClip();

    /// A number of the clip record.
    quint32 value1;
    /// A number of the clip record.
    quint32 value2;
    /// A number of the clip record.
    quint32 value3;
    /// A signed number of the clip record.
    qint32 value4;
    /// The clip's text.
    QString text;
};

///@{
/// Each writes a version byte and the record's members. A service's action
/// points into a running plugin and is not written; a service read back has
/// an invalid action. Reading replaces the record; corrupt or truncated input
/// leaves it default-made and sets the stream's status.
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
///@}

Q_DECLARE_METATYPE(VeskService)
Q_DECLARE_METATYPE(VeskTextFormat)
Q_DECLARE_METATYPE(VeskVideoClip)

#endif // VESKSERVICE_H
