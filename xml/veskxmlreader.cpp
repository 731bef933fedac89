#include "veskxmltext_p.h"
#include "veskxmlnode.h"

#include <QtCore/QList>
#include <QtCore/QXmlStreamReader>

#include <utility>
#include <vector>

namespace {

using VeskXmlText::xmlnsName;
using VeskXmlText::xmlnsPrefix;

bool isXmlChar(uint c)
{
    return c == 0x9 || c == 0xA || c == 0xD || (c >= 0x20 && c <= 0xD7FF)
        || (c >= 0xE000 && c <= 0xFFFD) || (c >= 0x10000 && c <= 0x10FFFF);
}

bool isAsciiNameChar(QChar c, bool first)
{
    ushort const u = c.unicode();
    bool const letter = (u >= 'a' && u <= 'z') || (u >= 'A' && u <= 'Z') || u == '_';
    return letter || (!first && ((u >= '0' && u <= '9') || u == '-' || u == '.'));
}

// Whether name is an XML name (colons allowed) by the rules of the reader
// that fromString() uses, so that whatever is accepted here reads back.
bool isName(QString const& name)
{
    if (name.isEmpty())
        return false;
    bool ascii = true;
    for (int i = 0; i < name.size() && ascii; ++i)
        ascii = name.at(i) == QLatin1Char(':') || isAsciiNameChar(name.at(i), i == 0);
    if (ascii)
        return true;
    QXmlStreamReader reader(QLatin1Char('<') + name + QLatin1String("/>"));
    reader.setNamespaceProcessing(false);
    while (!reader.atEnd() && !reader.isStartElement())
        reader.readNext();
    return reader.isStartElement() && reader.qualifiedName() == name;
}

// Elements are kept apart from their parent until their end tag: QtXml
// looks for the owner document on every insertion by walking up the
// ancestors, which would make reading a deep document take the square of
// its depth. A detached parent has no ancestors to walk.
class Reader
{
public:
    Reader(QString const& text, QDomDocument& document)
        : m_reader(text), m_document(document)
    {
    }

    QDomElement read()
    {
        QDomElement root;
        while (!m_reader.atEnd()) {
            switch (m_reader.readNext()) {
            case QXmlStreamReader::StartElement:
                if (!start())
                    return QDomElement();
                break;
            case QXmlStreamReader::EndElement:
                root = end();
                break;
            case QXmlStreamReader::Characters:
                characters();
                break;
            case QXmlStreamReader::Comment:
                appendMarkup(m_document.createComment(m_reader.text().toString()));
                break;
            case QXmlStreamReader::ProcessingInstruction:
                appendMarkup(m_document.createProcessingInstruction(
                    m_reader.processingInstructionTarget().toString(),
                    m_reader.processingInstructionData().toString()));
                break;
            default:
                break;
            }
        }
        if (m_reader.hasError() || root.isNull())
            return QDomElement();
        m_document.appendChild(root);
        return root;
    }

private:
    struct Open
    {
        QDomElement element;
        // Whitespace-only text, dropped at the end tag when the element
        // holds markup as well: that is layout, such as the indentation
        // toString() puts between child elements. As the element's whole
        // content it is data and stays.
        QList<QDomNode> blanks;
        bool hasMarkup = false;
    };

    bool start()
    {
        if (m_open.size() >= size_t(VeskXmlNode::MaxDepth))
            return false;
        QDomElement element = m_document.createElementNS(m_reader.namespaceUri().toString(),
                                                         m_reader.qualifiedName().toString());
        // Every attribute goes in by namespace and local name (the empty
        // namespace for plain ones and declarations): QtXml's plain
        // setAttribute() would take "x" for an "p:x" already there.
        for (QXmlStreamNamespaceDeclaration const& declaration : m_reader.namespaceDeclarations()) {
            QString const prefix = declaration.prefix().toString();
            element.setAttributeNS(QString(), prefix.isEmpty() ? xmlnsName : xmlnsPrefix + prefix,
                                   declaration.namespaceUri().toString());
        }
        for (QXmlStreamAttribute const& attribute : m_reader.attributes()) {
            element.setAttributeNS(attribute.namespaceUri().toString(),
                                   attribute.qualifiedName().toString(), attribute.value().toString());
        }
        if (!m_open.empty())
            m_open.back().hasMarkup = true;
        m_open.push_back(Open{element, {}, false});
        return true;
    }

    QDomElement end()
    {
        Open const closed = std::move(m_open.back());
        m_open.pop_back();
        QDomElement element = closed.element;
        if (closed.hasMarkup) {
            for (QDomNode blank : closed.blanks)
                element.removeChild(blank);
        }
        if (!m_open.empty())
            m_open.back().element.appendChild(element);
        return element;
    }

    void characters()
    {
        if (m_open.empty())
            return;
        Open& top = m_open.back();
        QString const text = m_reader.text().toString();
        if (m_reader.isCDATA()) {
            top.element.appendChild(m_document.createCDATASection(text));
            return;
        }
        QDomNode const node = top.element.appendChild(m_document.createTextNode(text));
        if (m_reader.isWhitespace())
            top.blanks.append(node);
    }

    void appendMarkup(QDomNode const& node)
    {
        if (m_open.empty())
            return;
        m_open.back().hasMarkup = true;
        m_open.back().element.appendChild(node);
    }

    QXmlStreamReader m_reader;
    QDomDocument& m_document;
    std::vector<Open> m_open;
};
} // namespace

namespace VeskXmlText {

bool isText(QString const& text)
{
    for (int i = 0; i < text.size(); ++i) {
        QChar const c = text.at(i);
        uint code = c.unicode();
        if (c.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate())
            code = QChar::surrogateToUcs4(c, text.at(++i));
        if (!isXmlChar(code))
            return false;
    }
    return true;
}

bool isLocalName(QString const& name)
{
    return !name.contains(QLatin1Char(':')) && isName(name);
}

bool isQualifiedName(QString const& name)
{
    int const colon = name.indexOf(QLatin1Char(':'));
    if (colon < 0)
        return isLocalName(name);
    return isLocalName(name.left(colon)) && isLocalName(name.mid(colon + 1));
}
QDomElement read(QString const& text, QDomDocument& document)
{
    return Reader(text, document).read();
}

} // namespace VeskXmlText
