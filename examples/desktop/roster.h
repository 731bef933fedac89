#ifndef DESKTOP_ROSTER_H
#define DESKTOP_ROSTER_H

#include <VeskData>

// The sample protocol's contact list, as its plugin builds it: groups with
// contacts, a meta-contact, a merged, a custom and a temporary entry. The
// presence icons are the files drawIcons() wrote into iconDir.
QList<VeskBuddyGroup> sampleContactList(QString const& iconDir);

#endif
