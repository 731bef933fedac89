#ifndef DEMO_RUNTIME_H
#define DEMO_RUNTIME_H

#include <functional>

// The runtime helpers at work: a producer thread hands frames of the 16:9
// sizes through a ring buffer to a consumer thread and leaves the ring to the
// garbage collector when it stops; the host asks the plugin's thread a
// question with VeskWait::sendMessage; a one-shot timer fires. Runs on the
// calling thread's event loop and calls done there once everything is over.
void showRuntimeHelpers(std::function<void()> done);

#endif
