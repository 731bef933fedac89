// The debug texts of every kind of roster entry.

#include "veskbuddygroup.h"

#include "veskdebug_p.h"

namespace {

template<typename Container>
QDebug writeContainer(QDebug dbg, char const* opening, Container const& container)
{
    dbg.nospace() << opening;
    dbg << "valid       :" << container.isValid() << "\n\t";
    dbg << "display     :";
    VeskDebug::quoted(dbg, container.getDisplay());
    dbg << "\n\t";
    dbg << "child count :" << container.childCount() << "\n\t";
    dbg << "expanded    :" << container.isExpanded() << "\n";
    dbg << ")";
    return dbg.space();
}

} // namespace

QDebug operator<<(QDebug dbg, VeskBuddyGroup const& group)
{
    return writeContainer(dbg, "VeskBuddyGroup(\n\t", group);
}

QDebug operator<<(QDebug dbg, VeskBuddyMeta const& meta)
{
    return writeContainer(dbg, "VeskBuddyMeta(\n\t", meta);
}
