#include "sampleplugin.h"
#include "catalogue.h"
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

bool SamplePlugin::event(QEvent* e)
{
    if (e->type() != CatalogueRequest::Type)
        return VeskPlugin::event(e);
    auto* const request = static_cast<CatalogueRequest*>(e);
    say(QStringLiteral("  plugin: answers the request in the %1 thread").arg(threadName()));
    request->waitObject->setRetValue(VeskArg(everyArgumentType(this)));
    request->waitObject->wakeUp();
    return true;
}

bool SampleAnswerer::event(QEvent* e)
{
    if (e->type() != VeskWaitEvent::DefaultType)
        return QObject::event(e);
    auto* const question = static_cast<SampleQuestion*>(e);
    say(QStringLiteral("  plugin: asked \"%1\" in the %2 thread").arg(question->text, threadName()));
    question->waitObject->setRetValue(VeskArg(QStringLiteral("the sample plugin, answering from the %1 thread")
                                                  .arg(threadName())));
    // The host may free the wait object from here on.
    question->waitObject->wakeUp();
    return true;
}
