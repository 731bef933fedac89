#include "veskxmltext_p.h"

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtXml/QDomNamedNodeMap>

#include <utility>
#include <vector>

namespace {

using VeskXmlText::xmlnsName;
using VeskXmlText::xmlnsPrefix;

bool isCharacterData(QDomNode const& node)
{
    return node.isText() || node.isCDATASection();
}

void appendEscaped(QString& out, QString const& text, bool inAttribute)
{
    for (QChar const c : text) {
        switch (c.unicode()) {
        case '&': out += QLatin1String("&amp;"); break;
        case '<': out += QLatin1String("&lt;"); break;
        case '>': out += QLatin1String("&gt;"); break;
        // A parser folds a literal CR into LF, and in attribute values also
        // turns tabs and newlines into spaces; references keep them intact.
        case '\r': out += QLatin1String("&#13;"); break;
        case '"':
            out += inAttribute ? QLatin1String("&quot;") : QLatin1String("\"");
            break;
        case '\n':
            out += inAttribute ? QLatin1String("&#10;") : QLatin1String("\n");
            break;
        case '\t':
            out += inAttribute ? QLatin1String("&#9;") : QLatin1String("\t");
            break;
        default: out += c; break;
        }
    }
}

// Prefix -> namespace URI bindings in force; the empty prefix is the
// default namespace.
using NamespaceScope = QHash<QString, QString>;

// Writes elements with a sorted attribute list and the namespace
// declarations the text needs to read back the same names and namespaces.
// Nesting is followed with a stack of open elements rather than by
// recursion, so that no depth of tree can exhaust the call stack.
class Writer
{
public:
    explicit Writer(int indent) : m_indent(indent) {}

    QString write(QDomElement const& root, NamespaceScope const& scope)
    {
        open(root, 0, m_indent >= 0, scope);
        while (!m_open.empty()) {
            Open& top = m_open.back();
            if (top.next == top.children.size()) {
                close(top);
                m_open.pop_back();
                continue;
            }
            QDomNode const child = top.children.at(top.next++);
            int const level = top.level + 1;
            bool const breakLines = top.breakLines;
            if (breakLines)
                newLine(level);
            if (child.isElement())
                open(child.toElement(), level, breakLines, top.scope);
            else
                writeLeaf(child);
        }
        return m_out;
    }

private:
    // An element whose start tag is written and whose children are not all
    // written yet. The reader expands entities, so a tree holds no entity
    // references.
    struct Open
    {
        QList<QDomNode> children;
        int next = 0;
        int level = 0;
        bool breakLines = false;
        QString tag;
        NamespaceScope scope;
    };

    static QList<QDomNode> writtenChildren(QDomNode const& node, bool* hasCharacterData)
    {
        QList<QDomNode> children;
        for (QDomNode child = node.firstChild(); !child.isNull(); child = child.nextSibling()) {
            if (isCharacterData(child))
                *hasCharacterData = true;
            else if (!child.isElement() && !child.isComment() && !child.isProcessingInstruction())
                continue; // not reached: the reader expands entities, the API adds none
            children.append(child);
        }
        return children;
    }

    void open(QDomElement const& element, int level, bool pretty, NamespaceScope scope)
    {
        QMap<QString, QString> const attributes = collectAttributes(element, scope);
        QString const tag = element.nodeName();
        m_out += QLatin1Char('<') + tag;
        for (auto it = attributes.cbegin(); it != attributes.cend(); ++it) {
            m_out += QLatin1Char(' ') + it.key() + QLatin1String("=\"");
            appendEscaped(m_out, it.value(), true);
            m_out += QLatin1Char('"');
        }
        bool hasCharacterData = false;
        Open frame;
        frame.children = writtenChildren(element, &hasCharacterData);
        if (frame.children.isEmpty()) {
            m_out += QLatin1String("/>");
            return;
        }
        m_out += QLatin1Char('>');
        // Whitespace added around text would end up in the data, so an
        // element with text keeps its whole content on one line.
        frame.breakLines = pretty && !hasCharacterData;
        frame.level = level;
        frame.tag = tag;
        frame.scope = std::move(scope);
        m_open.push_back(std::move(frame));
    }

    void close(Open const& frame)
    {
        if (frame.breakLines)
            newLine(frame.level);
        m_out += QLatin1String("</") + frame.tag + QLatin1Char('>');
    }

    void writeLeaf(QDomNode const& node)
    {
        if (node.isCDATASection()) {
            // Only the parser makes CDATA sections, so the data holds no "]]>".
            m_out += QLatin1String("<![CDATA[") + node.nodeValue() + QLatin1String("]]>");
        } else if (node.isText()) {
            appendEscaped(m_out, node.nodeValue(), false);
        } else if (node.isComment()) {
            m_out += QLatin1String("<!--") + node.nodeValue() + QLatin1String("-->");
        } else if (node.isProcessingInstruction()) {
            m_out += QLatin1String("<?") + node.nodeName();
            if (!node.nodeValue().isEmpty())
                m_out += QLatin1Char(' ') + node.nodeValue();
            m_out += QLatin1String("?>");
        }
    }

    void newLine(int level)
    {
        m_out += QLatin1Char('\n');
        m_out += QString(m_indent * level, QLatin1Char(' '));
    }

    // The element's attributes by written name, with the namespace
    // declarations it needs added; scope is updated to what holds inside
    // the element. Declarations the element carries itself are kept as
    // they are and win over added ones.
    static QMap<QString, QString> collectAttributes(QDomElement const& element,
                                                    NamespaceScope& scope)
    {
        QMap<QString, QString> out;
        QMap<QString, QDomAttr> sorted;
        QDomNamedNodeMap const attributes = element.attributes();
        for (int i = 0; i < attributes.count(); ++i) {
            QDomAttr const attr = attributes.item(i).toAttr();
            sorted.insert(attr.nodeName(), attr);
        }

        for (QDomAttr const& attr : std::as_const(sorted)) {
            QString const name = attr.nodeName();
            if (name == xmlnsName)
                scope.insert(QString(), attr.value());
            else if (name.startsWith(xmlnsPrefix))
                scope.insert(name.mid(xmlnsPrefix.size()), attr.value());
        }

        auto declare = [&](QString const& prefix, QString const& uri) {
            QString const key = prefix.isEmpty() ? xmlnsName : xmlnsPrefix + prefix;
            // Not reached for trees this library builds: neither the reader
            // nor the API gives an element a declaration against its own name.
            if (out.contains(key) || sorted.contains(key))
                return;
            out.insert(key, uri);
            scope.insert(prefix, uri);
        };

        if (scope.value(element.prefix()) != element.namespaceURI())
            declare(element.prefix(), element.namespaceURI());

        int generated = 0;
        for (QDomAttr const& attr : std::as_const(sorted)) {
            QString const uri = attr.namespaceURI();
            if (uri.isEmpty()) {
                out.insert(attr.nodeName(), attr.value());
                continue;
            }
            // An attribute is in a namespace only through a prefix; take
            // its own unless that is bound elsewhere here, then any prefix
            // bound to the URI, else a new one.
            QString prefix = attr.prefix();
            if (prefix.isEmpty() || (scope.contains(prefix) && scope.value(prefix) != uri)) {
                prefix.clear();
                for (auto it = scope.cbegin(); it != scope.cend(); ++it) {
                    if (!it.key().isEmpty() && it.value() == uri
                        && (prefix.isEmpty() || it.key() < prefix))
                        prefix = it.key();
                }
                while (prefix.isEmpty() || scope.contains(prefix))
                    prefix = QStringLiteral("ns") + QString::number(++generated);
            }
            if (scope.value(prefix) != uri)
                declare(prefix, uri);
            out.insert(prefix + QLatin1Char(':') + attr.localName(), attr.value());
        }
        return out;
    }

    int m_indent;
    QString m_out;
    std::vector<Open> m_open;
};
} // namespace

QString VeskXmlText::write(QDomElement const& element, int indent)
{
    NamespaceScope scope;
    scope.insert(QStringLiteral("xml"), QStringLiteral("http://www.w3.org/XML/1998/namespace"));
    return Writer(indent).write(element, scope);
}
