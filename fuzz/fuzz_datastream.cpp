// Reads arbitrary bytes as a QDataStream of the library's values (see
// datastream_values.h for the layout). Whatever reads without error is
// written again, and reading that copy must give the same bytes once more:
// a value the reader accepts is one the writer reproduces.

#include "datastream_values.h"

#include <QtCore/QByteArray>

#include <cstdint>
#include <cstdlib>

namespace {

QByteArray copyAll(QByteArray const& input, VeskBuddyType const& kind)
{
    QDataStream in(input);
    QByteArray output;
    QDataStream out(&output, QIODevice::WriteOnly);
    quint8 version = 0;
    in >> version;
    in.setVersion(FuzzDataStream::versionFor(version));
    out.setVersion(in.version());
    out << version;
    VeskPresenceStreamKind scope(in, kind);
    while (in.status() == QDataStream::Ok && !in.atEnd()) {
        quint8 selector = 0;
        in >> selector;
        auto const kindOfValue = FuzzDataStream::Kind(selector % FuzzDataStream::Count);
        out << quint8(kindOfValue);
        FuzzDataStream::copyOne(kindOfValue, in, out);
    }
    return output;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size)
{
    static VeskBuddyType const kind = FuzzDataStream::makeKind();
    QByteArray const input(reinterpret_cast<char const*>(data), qsizetype(size));
    QByteArray const once = copyAll(input, kind);
    QByteArray const twice = copyAll(once, kind);
    // The last record of once may hold only its selector, when its value did
    // not read; the copy of once then ends at that selector as well.
    if (!once.isEmpty() && once != twice)
        std::abort();
    return 0;
}
