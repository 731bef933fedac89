#ifndef VESKBUDDYSHOW_P_H
#define VESKBUDDYSHOW_P_H

#include <veskbuddy.h>
#include <veskpresence.h>

#include <QtCore/QString>

// How the model shows one contact-list entry, whatever its kind. A handle
// kept as a plain VeskBuddy answers with the base class's behaviour, so each
// function asks the entry's kind class.
namespace VeskBuddyShow {

// The text of the row: the kind's own getDisplay().
QString display(VeskBuddy const& entry);
// The presence the row shows: a contact's, a merged or temporary entry's,
// the best of a meta-contact's children; invalid for groups and custom
// entries.
VeskPresence presence(VeskBuddy const& entry);
// The path of the presence icon; null when the entry has none.
QString iconPath(VeskBuddy const& entry);
QString toolTip(VeskBuddy const& entry);
// The order of the entries of one container: higher presence first, then
// by name ignoring case. Groups compare with groupLessThan().
bool lessThan(VeskBuddy const& a, VeskBuddy const& b);

} // namespace VeskBuddyShow

#endif // VESKBUDDYSHOW_P_H
