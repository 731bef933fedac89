#ifndef SNIPPETS_H
#define SNIPPETS_H

#include <QtCore/QObject>
#include <QtCore/QString>

// The code of the guides in docs/. Each guide's function runs its snippets
// and checks what they did; vesk-snippets fails when one of them does not
// do what its guide says.

// The host's dispatcher (host.cpp): runs every plugin call posted to it.
class Dispatcher : public QObject
{
public:
    bool event(QEvent* e) override;
};

// Reports a failed expectation on stderr; the result is ok.
bool expect(bool ok, char const* what);

bool pluginGuide();
bool hostGuide();
bool fieldsGuide(QString const& snippetDir);
bool rosterGuide();
bool mediaGuide();

#endif
