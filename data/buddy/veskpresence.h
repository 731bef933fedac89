#ifndef VESKPRESENCE_H
#define VESKPRESENCE_H

#include "veskdata_global.h"

#include <QtCore/QDebug>
#include <QtCore/QMetaType>
#include <QtCore/QString>

class QDataStream;
class VeskPresenceType;

// How reachable a contact or one of its resources is: a presence type of the
// contact's kind (never owned here) and a free-text description. A presence
// without a type is invalid and answers every query with a null fallback.
class VESK_DATA_EXPORT VeskPresence
{
public:
    // The class of a presence. Protocol code assigns the values; the library
    // itself only relies on Offline, and on 0 standing for "no type".
    enum Flag : qint32 {
        Offline = 5
    };

    VeskPresence();
    VeskPresence(VeskPresenceType* type, QString const& description);
    VeskPresence(VeskPresence const& other);
    VeskPresence& operator=(VeskPresence const& other);
    ~VeskPresence();

    bool isValid() const;
    QString getId() const;
    QString getDisplay() const;
    QString getIcon() const;
    unsigned int getPriority() const;
    Flag getFlag() const;
    QString getDescription() const;

    // Ranks by priority alone; a presence without a type ranks as 0.
    bool operator<(VeskPresence const& other) const;
    // Same type record (by address), same reserved word, equal descriptions.
    bool operator==(VeskPresence const& other) const;
    bool operator!=(VeskPresence const& other) const;

    VeskPresenceType* type;
    QString description;
    // Kept for protocol code: copied and compared, never interpreted.
    void* reserved;
};

// One presence of a contact kind, filled in by the protocol code that defines
// the kind. The kind owns it and deletes it with its last handle.
class VESK_DATA_EXPORT VeskPresenceType
{
public:
    QString display;
    QString id;
    QString icon;
    quint32 priority = 0;
    VeskPresence::Flag flag = VeskPresence::Flag(0);
};

VESK_DATA_EXPORT QDebug operator<<(QDebug dbg, VeskPresence const& presence);

// A version byte, the id of the presence type (null without one) and the
// description. A presence type belongs to a contact kind, so reading a
// presence that has one needs the kind: see VeskPresenceStreamKind. Without
// a kind, or with an id the kind does not know, reading sets
// QDataStream::ReadCorruptData and leaves presence invalid.
VESK_DATA_EXPORT QDataStream& operator<<(QDataStream& stream, VeskPresence const& presence);
VESK_DATA_EXPORT QDataStream& operator>>(QDataStream& stream, VeskPresence& presence);

Q_DECLARE_METATYPE(VeskPresence)

#endif // VESKPRESENCE_H
