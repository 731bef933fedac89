#ifndef DEMO_SAMPLEPLUGIN_H
#define DEMO_SAMPLEPLUGIN_H

#include <VeskData>

// A protocol plugin as the host sees it: methods that take their arguments as
// a list of strictly typed values.
class SamplePlugin : public VeskPlugin
{
public:
    // args: String name, Int count
    void greet(QList<VeskArg>& args);
    // args: any number of Int values
    void sum(QList<VeskArg>& args);
    // The settings page's button. args: String account
    void saveSettings(QList<VeskArg>& args);

    // Answers the host's CatalogueRequest.
    bool event(QEvent* e) override;
};

// A question from the host to the plugin's thread; the answer comes back
// through the event's wait object.
struct SampleQuestion : VeskWaitEvent
{
    explicit SampleQuestion(QString text)
        : VeskWaitEvent(new VeskWait)
        , text(std::move(text))
    {
    }
    QString text;
};

// Lives in the plugin's own thread and answers the host's questions there.
class SampleAnswerer : public QObject
{
public:
    bool event(QEvent* e) override;
};

#endif
