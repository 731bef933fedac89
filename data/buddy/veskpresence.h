#ifndef VESKPRESENCE_H
#define VESKPRESENCE_H

/// \file
/// VeskPresence, one presence a protocol offers.

#include "veskdata_global.h"

#include <QtCore/QDebug>
#include <QtCore/QMetaType>
#include <QtCore/QString>

class QDataStream;
class VeskPresenceType;

/// How reachable a contact or one of its resources is: a presence type of the
/// contact's kind (never owned here) and a free-text description. A presence
/// without a type is invalid and answers every query with a null fallback.
class VESK_DATA_EXPORT VeskPresence
{
public:
    /// The class of a presence. Protocol code assigns the values; the library
    /// itself only relies on Offline, and on 0 standing for "no type".
    enum Flag : qint32 {
        Offline = 5 ///< Not reachable.
    };

    /// A presence without a type: invalid.
    VeskPresence();
    /// A presence of type (owned by its contact kind) with a description.
    VeskPresence(VeskPresenceType* type, QString const& description);
    /// A copy of other.
    VeskPresence(VeskPresence const& other);
    /// Copies other.
    VeskPresence& operator=(VeskPresence const& other);
    /// The presence type is not deleted: the contact kind owns it.
    ~VeskPresence();

    /// True when the presence has a type.
    bool isValid() const;
    /// The type's id; a null string without a type.
    QString getId() const;
    /// The type's name for the user; a null string without a type.
    QString getDisplay() const;
    /// The type's icon; a null string without a type.
    QString getIcon() const;
    /// The type's priority; 0 without a type.
    unsigned int getPriority() const;
    /// The type's flag; 0 without a type.
    Flag getFlag() const;
    /// The free-text description.
    QString getDescription() const;

    /// Ranks by priority alone; a presence without a type ranks as 0.
    bool operator<(VeskPresence const& other) const;
    /// Same type record (by address), same reserved word, equal descriptions.
    bool operator==(VeskPresence const& other) const;
    /// The negation of operator==().
    bool operator!=(VeskPresence const& other) const;

    /// The presence type; owned by the contact kind, never by the presence.
    VeskPresenceType* type;
    /// The free-text description.
    QString description;
    /// Kept for protocol code: copied and compared, never interpreted.
    void* reserved;
};

/// One presence of a contact kind, filled in by the protocol code that defines
/// the kind. The kind owns it and deletes it with its last handle.
class VESK_DATA_EXPORT VeskPresenceType
{
public:
    /// The name shown to the user.
    QString display;
    /// The protocol's id, unique within the kind.
    QString id;
    /// The icon file.
    QString icon;
    /// Higher ranks first in the contact list.
    quint32 priority = 0;
    /// The class of the presence.
    VeskPresence::Flag flag = VeskPresence::Flag(0);
};

/// Writes the presence's exact debug text.
VESK_DATA_EXPORT QDebug operator<<(QDebug dbg, VeskPresence const& presence);

///@{
/// A version byte, the id of the presence type (null without one) and the
/// description. A presence type belongs to a contact kind, so reading a
/// presence that has one needs the kind: see VeskPresenceStreamKind. Without
/// a kind, or with an id the kind does not know, reading sets
/// QDataStream::ReadCorruptData and leaves presence invalid.
VESK_DATA_EXPORT QDataStream& operator<<(QDataStream& stream, VeskPresence const& presence);
VESK_DATA_EXPORT QDataStream& operator>>(QDataStream& stream, VeskPresence& presence);
///@}

Q_DECLARE_METATYPE(VeskPresence)

#endif // VESKPRESENCE_H
