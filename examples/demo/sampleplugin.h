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
};

#endif
