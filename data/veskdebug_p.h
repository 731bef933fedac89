#ifndef VESKDEBUG_P_H
#define VESKDEBUG_P_H

// Internal to the library: the pieces every debug text is made of. Qt's own
// QDebug escapes strings and writes lists its own way; the library's texts
// put strings between plain double quotes and lists as "(a, b) ", so every
// operator<< in the library writes them through these helpers.

#include <QtCore/QByteArray>
#include <QtCore/QDebug>
#include <QtCore/QString>

namespace VeskDebug {

// The text between double quotes, nothing escaped, as one item of the stream
// (followed by a blank when spacing is on). The stream's own quoting is
// switched off for the item only and left as the caller had it.
inline QDebug& quoted(QDebug& dbg, QString const& text)
{
    // The saver changes no spacing, so it neither adds nor drops a blank.
    QDebugStateSaver const saver(dbg);
    dbg.noquote() << (QLatin1Char('"') + text + QLatin1Char('"'));
    return dbg;
}

// The bytes between double quotes, one character per byte.
inline QDebug& quoted(QDebug& dbg, QByteArray const& bytes)
{
    return quoted(dbg, QString::fromLatin1(bytes));
}

// Any pointer in the plain 0x... form, whatever it points to.
inline QDebug& pointer(QDebug& dbg, void const* address)
{
    dbg << address;
    return dbg;
}

// "(", the items joined by ", ", ")", then space(). The separators and the
// closing parenthesis are written with whatever spacing the last item left
// on, so the blanks follow from the item writers.
template<typename List, typename Writer>
QDebug list(QDebug dbg, List const& items, Writer&& writeItem)
{
    dbg.nospace() << "(";
    bool first = true;
    for (auto const& item : items) {
        if (!first)
            dbg << ", ";
        first = false;
        writeItem(dbg, item);
    }
    dbg << ")";
    return dbg.space();
}

} // namespace VeskDebug

#endif // VESKDEBUG_P_H
