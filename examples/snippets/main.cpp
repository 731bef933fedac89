#include "snippets.h"

#include <VeskData>

#include <QtCore/QCoreApplication>

#include <cstdio>

bool expect(bool ok, char const* what)
{
    if (!ok)
        std::fprintf(stderr, "vesk-snippets: %s\n", what);
    return ok;
}

//! [host main]
int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);

    // Plugin calls run in the thread the dispatcher lives in, here the main
    // thread. It is set once, before any action is invoked.
    Dispatcher dispatcher;
    VeskCallActionEvent::dispatcher = &dispatcher;
//! [host main]

    bool const ok = pluginGuide() && hostGuide() && fieldsGuide(QStringLiteral(VESK_SNIPPET_DIR))
                    && rosterGuide() && mediaGuide();
    VeskCallActionEvent::dispatcher = nullptr;
    std::printf("vesk-snippets: %s\n", ok ? "every guide's code did what it says" : "FAILED");
    return ok ? 0 : 1;
}
