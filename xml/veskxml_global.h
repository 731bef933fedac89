#ifndef VESKXML_GLOBAL_H
#define VESKXML_GLOBAL_H

#include <QtCore/qglobal.h>

#if defined(VESK_XML_BUILD)
#  define VESK_XML_EXPORT Q_DECL_EXPORT
#else
#  define VESK_XML_EXPORT Q_DECL_IMPORT
#endif

#endif // VESKXML_GLOBAL_H
