#include "veskbuddyshow_p.h"

#include <veskbuddycontact.h>
#include <veskbuddygroup.h>

#include <QtCore/QStringList>

namespace VeskBuddyShow {

QString display(VeskBuddy const& entry)
{
    switch (entry.getType()) {
    case VeskBuddy::Contact:
        return VeskBuddyContact(entry).getDisplay();
    case VeskBuddy::Merged:
        return VeskBuddyMerged(entry).getDisplay();
    default:
        return entry.getDisplay();
    }
}

VeskPresence presence(VeskBuddy const& entry)
{
    switch (entry.getType()) {
    case VeskBuddy::Contact:
        return VeskBuddyContact(entry).getPresence();
    case VeskBuddy::Merged:
        return VeskBuddyMerged(entry).getPresence();
    case VeskBuddy::Temporary:
        return VeskBuddyTemporary(entry).getPresence();
    case VeskBuddy::Meta: {
        VeskBuddyMeta const meta(entry);
        VeskPresence best;
        for (int i = 0, n = meta.childCount(); i < n; ++i) {
            VeskPresence const child = presence(meta.buddyAt(i));
            if (child.isValid() && (!best.isValid() || best < child))
                best = child;
        }
        return best;
    }
    default:
        return VeskPresence();
    }
}

QString iconPath(VeskBuddy const& entry)
{
    switch (entry.getType()) {
    case VeskBuddy::Contact:
        return VeskBuddyContact(entry).getPresenceIcon();
    case VeskBuddy::Custom:
        return VeskBuddyCustom(entry).getPresenceIconPath();
    case VeskBuddy::Group:
        return QString();
    default:
        return presence(entry).getIcon();
    }
}

namespace {

QString presenceLine(VeskPresence const& presence)
{
    if (!presence.isValid())
        return QString();
    QString const description = presence.getDescription();
    return description.isEmpty() ? presence.getDisplay()
                                 : presence.getDisplay() + QStringLiteral(": ") + description;
}

} // namespace

QString toolTip(VeskBuddy const& entry)
{
    QStringList lines{display(entry)};
    switch (entry.getType()) {
    case VeskBuddy::Group: {
        VeskBuddyGroup const group(entry);
        lines[0] = QStringLiteral("%1: %2 of %3 online")
                       .arg(lines[0]).arg(group.onlineChildCount()).arg(group.childCount());
        break;
    }
    case VeskBuddy::Meta:
        lines << QStringLiteral("%1 contacts").arg(VeskBuddyMeta(entry).childCount());
        break;
    case VeskBuddy::Contact:
        lines << VeskBuddyContact(entry).getId();
        break;
    case VeskBuddy::Merged:
        lines << VeskBuddyMerged(entry).getId()
              << QStringLiteral("%1 accounts").arg(VeskBuddyMerged(entry).getAccounts().size());
        break;
    case VeskBuddy::Custom:
        lines << VeskBuddyCustom(entry).getDescription();
        break;
    case VeskBuddy::Temporary:
        lines << VeskBuddyTemporary(entry).getId() << QStringLiteral("not on the contact list");
        break;
    default:
        break;
    }
    if (entry.getType() != VeskBuddy::Group)
        lines << presenceLine(presence(entry));
    if (entry.unreadMessages() > 0)
        lines << QStringLiteral("%1 unread").arg(entry.unreadMessages());
    lines.removeAll(QString());
    return lines.join(QLatin1Char('\n'));
}

bool lessThan(VeskBuddy const& a, VeskBuddy const& b)
{
    if (a.getType() == VeskBuddy::Group && b.getType() == VeskBuddy::Group)
        return groupLessThan(a, b);
    VeskPresence const pa = presence(a);
    VeskPresence const pb = presence(b);
    if (pa < pb || pb < pa)
        return pb < pa;
    return display(a).toLower() < display(b).toLower();
}

} // namespace VeskBuddyShow
