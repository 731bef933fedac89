#ifndef DEMO_ANSWERS_H
#define DEMO_ANSWERS_H

class SamplePlugin;

// The same request as showEveryArgumentType(), answered the Qt way: the
// plugin's side runs in a thread of its own and emits the answer as a
// VeskArg through a queued signal, which the host receives in its thread.
// Nothing registers a type for it: the library does that when it loads.
void showQueuedAnswers(SamplePlugin* plugin);

#endif
