#include "veskpresencestream.h"
#include "veskpresence.h"
#include "veskstream_p.h"

#include <QtCore/QDataStream>

namespace {

thread_local VeskPresenceStreamKind* innermost = nullptr;

VeskPresenceType* presenceTypeWithId(VeskBuddyType const& kind, QString const& id)
{
    VeskBuddyTypePrivate const* record = kind.data();
    if (!record)
        return nullptr;
    for (VeskPresenceType* type : record->presences) {
        if (type && type->id == id)
            return type;
    }
    return nullptr;
}

} // namespace

VeskPresenceStreamKind::VeskPresenceStreamKind(QDataStream& stream, VeskBuddyType const& kind)
    : m_stream(&stream)
    , m_kind(kind)
    , m_outer(innermost)
{
    innermost = this;
}

VeskPresenceStreamKind::~VeskPresenceStreamKind()
{
    innermost = m_outer;
}

VeskBuddyType VeskPresenceStreamKind::kindOf(QDataStream const& stream)
{
    for (VeskPresenceStreamKind const* scope = innermost; scope; scope = scope->m_outer) {
        if (scope->m_stream == &stream)
            return scope->m_kind;
    }
    return VeskBuddyType();
}

QDataStream& operator<<(QDataStream& stream, VeskPresence const& presence)
{
    if (VeskStream::beginWrite(stream))
        stream << (presence.type ? presence.type->id : QString()) << presence.description;
    return stream;
}

QDataStream& operator>>(QDataStream& stream, VeskPresence& presence)
{
    QString id;
    QString description;
    if (VeskStream::beginRead(stream))
        stream >> id >> description;
    VeskPresenceType* type = nullptr;
    if (VeskStream::ok(stream) && !id.isNull()) {
        type = presenceTypeWithId(VeskPresenceStreamKind::kindOf(stream), id);
        if (!type)
            VeskStream::corrupt(stream);
    }
    presence = VeskStream::ok(stream) ? VeskPresence(type, description) : VeskPresence();
    return stream;
}
