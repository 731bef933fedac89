#include "sampleplugin.h"
#include "say.h"

void SamplePlugin::greet(QList<VeskArg>& args)
{
    QString const name = args.value(0).toString();
    int const count = args.value(1).toInt();
    say(QStringLiteral("  plugin: greet(%1, %2) runs in the %3 thread")
            .arg(name).arg(count).arg(threadName()));
}

void SamplePlugin::sum(QList<VeskArg>& args)
{
    long long total = 0;
    for (VeskArg const& value : args)
        total += value.toInt();
    say(QStringLiteral("  plugin: sum of %1 values is %2 (in the %3 thread)")
            .arg(args.size()).arg(total).arg(threadName()));
}

void SamplePlugin::saveSettings(QList<VeskArg>& args)
{
    say(QStringLiteral("  plugin: saveSettings(%1) runs in the %2 thread")
            .arg(args.value(0).toString(), threadName()));
}
