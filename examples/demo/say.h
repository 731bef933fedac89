#ifndef DEMO_SAY_H
#define DEMO_SAY_H

#include <QtCore/QString>

// Prints one line to standard output; safe to call from any thread.
void say(QString const& line);

// A readable name for the calling thread.
QString threadName();

#endif
