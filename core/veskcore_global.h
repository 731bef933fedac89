#ifndef VESKCORE_GLOBAL_H
#define VESKCORE_GLOBAL_H

#include <QtCore/qglobal.h>

#if defined(VESK_CORE_BUILD)
#  define VESK_CORE_EXPORT Q_DECL_EXPORT
#else
#  define VESK_CORE_EXPORT Q_DECL_IMPORT
#endif

#endif // VESKCORE_GLOBAL_H
