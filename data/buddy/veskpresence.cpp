#include "veskpresence.h"

#include "veskdebug_p.h"

VeskPresence::VeskPresence()
    : type(nullptr), reserved(nullptr)
{
}

VeskPresence::VeskPresence(VeskPresenceType* type, QString const& description)
    : type(type), description(description), reserved(nullptr)
{
}

VeskPresence::VeskPresence(VeskPresence const& other) = default;
VeskPresence& VeskPresence::operator=(VeskPresence const& other) = default;
VeskPresence::~VeskPresence() = default;

bool VeskPresence::isValid() const
{
    return type != nullptr;
}

QString VeskPresence::getId() const
{
    return type ? type->id : QString();
}

QString VeskPresence::getDisplay() const
{
    return type ? type->display : QString();
}

QString VeskPresence::getIcon() const
{
    return type ? type->icon : QString();
}

unsigned int VeskPresence::getPriority() const
{
    return type ? type->priority : 0u;
}

VeskPresence::Flag VeskPresence::getFlag() const
{
    return type ? type->flag : Flag(0);
}

QString VeskPresence::getDescription() const
{
    return description;
}

bool VeskPresence::operator<(VeskPresence const& other) const
{
    return getPriority() < other.getPriority();
}

bool VeskPresence::operator==(VeskPresence const& other) const
{
    return type == other.type && reserved == other.reserved && description == other.description;
}

bool VeskPresence::operator!=(VeskPresence const& other) const
{
    return !(*this == other);
}

QDebug operator<<(QDebug dbg, VeskPresence const& presence)
{
    dbg.nospace() << "VeskPresence(";
    if (!presence.isValid()) {
        dbg << " invalid ";
    } else {
        dbg << "\n\tid          : ";
        VeskDebug::quoted(dbg, presence.getId());
        dbg << "\n\tdisplay     : ";
        VeskDebug::quoted(dbg, presence.getDisplay());
        dbg << "\n\tpriority    : " << presence.getPriority();
        dbg << "\n\tdescription : ";
        VeskDebug::quoted(dbg, presence.getDescription());
        dbg << "\n";
    }
    dbg << ")";
    return dbg.space();
}
