#include "snippets.h"

#include <VeskData>

#include <QtCore/QCoreApplication>

#include <cstdio>
#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

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

    // The guides named on the command line; with no name, every guide in turn.
    std::vector<std::pair<QString, std::function<bool()>>> const guides = {
        {QStringLiteral("plugin"), pluginGuide},
        {QStringLiteral("host"), hostGuide},
        {QStringLiteral("fields"), [] { return fieldsGuide(QStringLiteral(VESK_SNIPPET_DIR)); }},
        {QStringLiteral("roster"), rosterGuide},
        {QStringLiteral("media"), mediaGuide},
    };
    QStringList const names = app.arguments().mid(1);
    for (QString const& name : names) {
        if (std::none_of(guides.begin(), guides.end(), [&](auto const& guide) { return guide.first == name; })) {
            std::fprintf(stderr, "vesk-snippets: no guide named %s\n", qPrintable(name));
            return 2;
        }
    }
    bool ok = true;
    for (auto const& guide : guides) {
        if (names.isEmpty() || names.contains(guide.first))
            ok = ok && guide.second();
    }
    VeskCallActionEvent::dispatcher = nullptr;
    std::printf("vesk-snippets: %s\n", ok ? "every guide's code did what it says" : "FAILED");
    return ok ? 0 : 1;
}
