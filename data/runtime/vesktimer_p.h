#ifndef VESKTIMER_P_H
#define VESKTIMER_P_H

#include <QtCore/QObject>
#include <QtCore/QString>

class QTimer;
class VeskTimerReceiver;

// One run of a VeskTimer. Ends itself with deleteLater() once it has called
// its receiver, once it is stopped, or at once when started without one.
class VeskTimerPrivate : public QObject
{
    Q_OBJECT
public:
    VeskTimerPrivate();
    ~VeskTimerPrivate() override;

    void startTimer(VeskTimerReceiver* receiver, int msec, QString const& name);
    void stopTimer();

protected slots:
    void timeout();

private:
    VeskTimerReceiver* receiver;
    QTimer* timer;
    QString name;
};

#endif // VESKTIMER_P_H
