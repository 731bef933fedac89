#ifndef VESKEXCEPTION_H
#define VESKEXCEPTION_H

/// \file
/// Builders of the exceptions the Vesk libraries throw.

#include "veskcore_global.h"

#include <QtCore/QString>

#include <stdexcept>

// Builders of the exceptions the Vesk libraries throw. Each returns the
// exception by value; its what() text is UTF-8.

/// "<className>: cannot convert <actualType> to <wantedType>"
VESK_CORE_EXPORT std::runtime_error vesk_conversion(QString const& className,
                                                   QString const& actualType,
                                                   QString const& wantedType);

/// "<className>: out of memory"
VESK_CORE_EXPORT std::runtime_error vesk_oom(QString const& className);

/// "<where>: argument <position>: <message>"
VESK_CORE_EXPORT std::runtime_error vesk_invalid_value(QString const& where, int position,
                                                      QString const& message);

#endif // VESKEXCEPTION_H
