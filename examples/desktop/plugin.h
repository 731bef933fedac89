#ifndef DESKTOP_PLUGIN_H
#define DESKTOP_PLUGIN_H

#include <VeskData>

#include <QtCore/QStringList>

// The sample protocol plugin. It lives in its own thread: the host reaches it
// through plugin actions (posted to the dispatcher in that thread) and asks
// it questions with VeskWait round trips.
class DesktopPlugin : public VeskPlugin
{
public:
    explicit DesktopPlugin(QString iconDir);
    ~DesktopPlugin() override;

    // Actions. args: String, a "fieldlist" document to merge into the page.
    void saveSettings(QList<VeskArg>& args);
    // args: Buddy entry, Buddy container it was moved to.
    void contactMoved(QList<VeskArg>& args);
    // The page's button. args: String account.
    void testConnection(QList<VeskArg>& args);

    // Answers the host's questions (see Question).
    bool event(QEvent* e) override;

private:
    QList<VeskField> settingsPage();

    QString m_iconDir;
    QList<VeskField> m_page;
    QStringList m_log;
};

// A question from the host; the plugin answers in its own thread.
struct Question : VeskWaitEvent
{
    enum Kind {
        // The settings page as it stands: a FieldList.
        Page,
        // The contact list: an ArgList of Buddy groups, made once.
        ContactList,
        // What the plugin did on the host's behalf: a StringList.
        Log
    };
    explicit Question(Kind kind)
        : VeskWaitEvent(new VeskWait)
        , kind(kind)
    {
    }
    Kind kind;
};

// The host's dispatcher: delivers every VeskCallActionEvent in its thread.
class Dispatcher : public QObject
{
public:
    bool event(QEvent* e) override;
};

#endif
