#include "say.h"

#include <QtCore/QMutex>
#include <QtCore/QThread>

#include <cstdio>

void say(QString const& line)
{
    static QMutex mutex;
    QMutexLocker locker(&mutex);
    std::fputs(line.toUtf8().constData(), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

QString threadName()
{
    QString const name = QThread::currentThread()->objectName();
    return name.isEmpty() ? QStringLiteral("unnamed thread") : name;
}
