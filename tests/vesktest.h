#ifndef VESKTEST_H
#define VESKTEST_H

// Helpers shared by the test programs.

#include <QtCore/QDebug>
#include <QtCore/QString>

#include <stdexcept>

// The debug text of value, exactly as the stream writes it.
template<typename T>
QString debugText(T const& value)
{
    QString out;
    QDebug(&out) << value;
    return out;
}

// Runs f, which must throw, and returns the exception's text.
template<typename F>
QString thrownText(F&& f)
{
    try {
        f();
    } catch (std::runtime_error const& error) {
        return QString::fromUtf8(error.what());
    }
    return QStringLiteral("<nothing thrown>");
}

#endif // VESKTEST_H
