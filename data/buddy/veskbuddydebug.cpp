// The debug texts of every kind of roster entry.

#include "veskbuddycontact.h"
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

void writeHead(QDebug& dbg, char const* opening, VeskBuddy const& entry)
{
    dbg.nospace() << opening;
    dbg << "valid   :" << entry.isValid() << "\n\t";
    dbg << "display :";
    VeskDebug::quoted(dbg, entry.getDisplay());
    dbg << "\n\t";
}

void writeId(QDebug& dbg, QString const& id)
{
    dbg << "id      :";
    VeskDebug::quoted(dbg, id);
}

} // namespace

QDebug operator<<(QDebug dbg, VeskBuddy::Type type)
{
    static char const* const names[] = {"Invalid", "Group", "Meta", "Contact",
                                        "Merged", "Temporary", "Custom"};
    dbg.nospace() << "VeskBuddy::";
    quint32 const number = static_cast<quint32>(type);
    if (number < sizeof(names) / sizeof(names[0]))
        dbg << names[number];
    return dbg.space();
}

QDebug operator<<(QDebug dbg, VeskBuddy const& buddy)
{
    switch (buddy.getType()) {
    case VeskBuddy::Invalid: dbg.nospace() << "VeskBuddy( Invalid )"; break;
    case VeskBuddy::Group: dbg.nospace() << VeskBuddyGroup(buddy); break;
    case VeskBuddy::Meta: dbg.nospace() << VeskBuddyMeta(buddy); break;
    case VeskBuddy::Contact: dbg.nospace() << VeskBuddyContact(buddy); break;
    case VeskBuddy::Merged: dbg.nospace() << VeskBuddyMerged(buddy); break;
    case VeskBuddy::Temporary: dbg.nospace() << VeskBuddyTemporary(buddy); break;
    case VeskBuddy::Custom: dbg.nospace() << VeskBuddyCustom(buddy); break;
    }
    return dbg.space();
}

QDebug operator<<(QDebug dbg, VeskBuddyGroup const& group)
{
    return writeContainer(dbg, "VeskBuddyGroup(\n\t", group);
}

QDebug operator<<(QDebug dbg, VeskBuddyMeta const& meta)
{
    return writeContainer(dbg, "VeskBuddyMeta(\n\t", meta);
}

QDebug operator<<(QDebug dbg, VeskBuddyContact const& contact)
{
    writeHead(dbg, "VeskBuddyContact(\n\t", contact);
    writeId(dbg, contact.getId());
    dbg << "\n" << ")";
    return dbg.space();
}

QDebug operator<<(QDebug dbg, VeskBuddyMerged const& merged)
{
    writeHead(dbg, "VeskBuddyMerged(\n\t", merged);
    writeId(dbg, merged.getId());
    dbg << "\n" << ")";
    return dbg.space();
}

QDebug operator<<(QDebug dbg, VeskBuddyCustom const& custom)
{
    writeHead(dbg, "VeskBuddyCustom(\n\t", custom);
    dbg << ")";
    return dbg.space();
}

QDebug operator<<(QDebug dbg, VeskBuddyTemporary const& temporary)
{
    writeHead(dbg, "VeskBuddyTemporary(\n\t", temporary);
    writeId(dbg, temporary.getId());
    dbg << "\n\t" << "account :";
    VeskDebug::pointer(dbg, temporary.getAccount());
    dbg << "\n" << ")";
    return dbg.space();
}
