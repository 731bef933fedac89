#ifndef VESKPRESENCESTREAM_H
#define VESKPRESENCESTREAM_H

/// \file
/// Stream operators of the presence and protocol descriptors.

#include "veskdata_global.h"
#include "veskbuddytype.h"

class QDataStream;

/// A presence is written with the id of its presence type, and a presence
/// type belongs to a contact kind. While an object of this class lives, the
/// presences read from its stream in this thread (on their own, inside
/// argument values or through QVariant) take their type from its kind:
///
///     VeskPresenceStreamKind scope(stream, kind);
///     stream >> presence;
///
/// Scopes nest; the innermost one for a stream counts.
class VESK_DATA_EXPORT VeskPresenceStreamKind
{
public:
    /// Makes kind the kind of presences read from stream in this thread until the scope ends.
    VeskPresenceStreamKind(QDataStream& stream, VeskBuddyType const& kind);
    /// Ends the scope; the enclosing one for the stream, if any, counts again.
    ~VeskPresenceStreamKind();

    /// The kind of the innermost live scope for stream in this thread; an
    /// invalid kind when there is none.
    static VeskBuddyType kindOf(QDataStream const& stream);

private:
    Q_DISABLE_COPY(VeskPresenceStreamKind)

    QDataStream const* m_stream;
    VeskBuddyType m_kind;
    VeskPresenceStreamKind* m_outer;
};

#endif // VESKPRESENCESTREAM_H
