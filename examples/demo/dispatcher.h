#ifndef DEMO_DISPATCHER_H
#define DEMO_DISPATCHER_H

#include <QtCore/QObject>

// The host's dispatcher: it lives in the thread where plugin methods run and
// delivers every VeskCallActionEvent posted to it.
class Dispatcher : public QObject
{
public:
    bool event(QEvent* e) override;

    int delivered() const { return m_delivered; }

private:
    int m_delivered = 0;
};

#endif
