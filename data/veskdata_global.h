#ifndef VESKDATA_GLOBAL_H
#define VESKDATA_GLOBAL_H

#include <QtCore/qglobal.h>

#if defined(VESK_DATA_BUILD)
#  define VESK_DATA_EXPORT Q_DECL_EXPORT
#else
#  define VESK_DATA_EXPORT Q_DECL_IMPORT
#endif

#endif // VESKDATA_GLOBAL_H
