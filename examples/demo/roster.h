#ifndef DEMO_ROSTER_H
#define DEMO_ROSTER_H

// Builds a small contact list the way a protocol plugin does, reorganises it
// and prints what the library reports about it.
void showContactList();

#endif
