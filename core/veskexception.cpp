#include "veskexception.h"

namespace {

std::runtime_error makeError(QString const& text)
{
    return std::runtime_error(text.toUtf8().toStdString());
}

} // namespace

std::runtime_error vesk_conversion(QString const& className, QString const& actualType,
                                   QString const& wantedType)
{
    return makeError(className + QLatin1String(": cannot convert ") + actualType
                     + QLatin1String(" to ") + wantedType);
}

std::runtime_error vesk_oom(QString const& className)
{
    return makeError(className + QLatin1String(": out of memory"));
}

std::runtime_error vesk_invalid_value(QString const& where, int position, QString const& message)
{
    return makeError(where + QLatin1String(": argument ") + QString::number(position)
                     + QLatin1String(": ") + message);
}
