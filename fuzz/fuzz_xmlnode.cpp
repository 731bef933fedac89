// Reads arbitrary text as XML; whatever reads must write as text that reads
// back to the same tree, indented or not.

#include <VeskXml>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

void fail(char const* what, QString const& text)
{
    std::fprintf(stderr, "%s:\n%s\n", what, text.toUtf8().constData());
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size)
{
    QString const input = QString::fromUtf8(reinterpret_cast<char const*>(data), int(size));
    VeskXmlNode const node = VeskXmlNode::fromString(input);
    if (node.isNull())
        return 0;
    QString const text = node.toString();
    for (int indent : {-1, 0, 3}) {
        QString const written = node.toString(indent);
        VeskXmlNode const back = VeskXmlNode::fromString(written);
        if (back.isNull())
            fail("written text does not read back", written);
        if (back.toString() != text)
            fail("written text reads back as another tree", written + QLatin1Char('\n') + back.toString());
        if (back.getData() != node.getData())
            fail("the root's data changed", written);
    }
    return 0;
}
