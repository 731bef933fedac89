#include "veskxmlnode.h"

#include <QtCore/QDebug>
#include <QtCore/QHash>
#include <QtCore/QLocale>
#include <QtCore/QMap>
#include <QtCore/QXmlStreamReader>
#include <QtXml/QDomNamedNodeMap>

#include <utility>

namespace {

QString const xmlnsName = QStringLiteral("xmlns");
QString const xmlnsPrefix = QStringLiteral("xmlns:");

// Direct character data of an element, as opposed to the data of its
// child elements.
bool isCharacterData(QDomNode const& node)
{
    return node.isText() || node.isCDATASection();
}

// The attribute whose qualified name is name. QDomElement::attribute() does
// not find attributes that were set with a namespace, so look by node name.
QDomAttr findAttribute(QDomElement const& element, QString const& name)
{
    QDomNamedNodeMap const attributes = element.attributes();
    for (int i = 0; i < attributes.count(); ++i) {
        QDomAttr const attr = attributes.item(i).toAttr();
        if (attr.nodeName() == name)
            return attr;
    }
    return QDomAttr();
}

QString localName(QString const& qualifiedName)
{
    int const colon = qualifiedName.indexOf(QLatin1Char(':'));
    return colon < 0 ? qualifiedName : qualifiedName.mid(colon + 1);
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
class Writer
{
public:
    explicit Writer(int indent) : m_indent(indent) {}

    QString text() const { return m_out; }

    void writeElement(QDomElement const& element, int level, bool pretty,
                      NamespaceScope scope)
    {
        QMap<QString, QString> const attributes = collectAttributes(element, scope);

        QString const tag = element.nodeName();
        m_out += QLatin1Char('<') + tag;
        for (auto it = attributes.cbegin(); it != attributes.cend(); ++it) {
            m_out += QLatin1Char(' ') + it.key() + QLatin1String("=\"");
            appendEscaped(m_out, it.value(), true);
            m_out += QLatin1Char('"');
        }

        QList<QDomNode> children;
        bool hasCharacterData = false;
        for (QDomNode child = element.firstChild(); !child.isNull(); child = child.nextSibling()) {
            if (isCharacterData(child) || child.isEntityReference())
                hasCharacterData = true;
            else if (!child.isElement() && !child.isComment() && !child.isProcessingInstruction())
                continue;
            children.append(child);
        }
        if (children.isEmpty()) {
            m_out += QLatin1String("/>");
            return;
        }
        m_out += QLatin1Char('>');

        // Whitespace added around text would end up in the data, so an
        // element with text keeps its whole content on one line.
        bool const breakLines = pretty && !hasCharacterData;
        for (QDomNode const& child : children) {
            if (breakLines)
                newLine(level + 1);
            writeNode(child, level + 1, breakLines, scope);
        }
        if (breakLines)
            newLine(level);
        m_out += QLatin1String("</") + tag + QLatin1Char('>');
    }

private:
    void newLine(int level)
    {
        m_out += QLatin1Char('\n');
        m_out += QString(m_indent * level, QLatin1Char(' '));
    }

    void writeNode(QDomNode const& node, int level, bool pretty, NamespaceScope const& scope)
    {
        if (node.isElement()) {
            writeElement(node.toElement(), level, pretty, scope);
        } else if (node.isCDATASection()) {
            // Only the parser makes CDATA sections, so the data holds no "]]>".
            m_out += QLatin1String("<![CDATA[") + node.nodeValue() + QLatin1String("]]>");
        } else if (node.isText()) {
            appendEscaped(m_out, node.nodeValue(), false);
        } else if (node.isComment()) {
            m_out += QLatin1String("<!--") + node.nodeValue() + QLatin1String("-->");
        } else if (node.isProcessingInstruction()) {
            m_out += QLatin1String("<?") + node.nodeName() + QLatin1Char(' ')
                + node.nodeValue() + QLatin1String("?>");
        } else if (node.isEntityReference()) {
            // The entity's definition is not written with the element, so
            // write what it stands for.
            for (QDomNode c = node.firstChild(); !c.isNull(); c = c.nextSibling())
                writeNode(c, level, false, scope);
        }
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
};

} // namespace

VeskXmlNode::VeskXmlNode() = default;

VeskXmlNode::VeskXmlNode(QString const& name, QString const& data, VeskXmlNode* parent)
{
    if (name.isEmpty())
        return;
    if (parent != nullptr && !parent->isNull()) {
        m_document = parent->m_document;
        m_element = m_document.createElement(name);
        parent->m_element.appendChild(m_element);
    } else {
        m_element = m_document.createElement(name);
        m_document.appendChild(m_element);
    }
    if (!data.isEmpty())
        m_element.appendChild(m_document.createTextNode(data));
}

VeskXmlNode::VeskXmlNode(QDomElement const& element, QDomDocument const& document)
    : m_element(element)
    , m_document(document)
{
}

VeskXmlNode::VeskXmlNode(VeskXmlNode const& other) = default;
VeskXmlNode& VeskXmlNode::operator=(VeskXmlNode const& other) = default;
VeskXmlNode::~VeskXmlNode() = default;

VeskXmlNode VeskXmlNode::addChild(QString const& name, QString const& data)
{
    if (isNull())
        return VeskXmlNode();
    return VeskXmlNode(name, data, this);
}

void VeskXmlNode::appendChild(VeskXmlNode const& child)
{
    if (isNull() || child.isNull())
        return;
    if (child.m_element.ownerDocument() != m_element.ownerDocument()) {
        m_element.appendChild(m_document.importNode(child.m_element, true));
        return;
    }
    // Moving an element under itself would make the tree a cycle.
    for (QDomNode n = m_element; !n.isNull(); n = n.parentNode()) {
        if (n == child.m_element)
            return;
    }
    m_element.appendChild(child.m_element);
}

void VeskXmlNode::insertData(QString const& data)
{
    if (isNull())
        return;
    QDomNode child = m_element.firstChild();
    while (!child.isNull()) {
        QDomNode const next = child.nextSibling();
        if (isCharacterData(child))
            m_element.removeChild(child);
        child = next;
    }
    if (!data.isEmpty())
        m_element.appendChild(m_document.createTextNode(data));
}

void VeskXmlNode::setAttribute(QString const& name, QString const& value,
                               QString const& namespaceUri)
{
    if (isNull() || name.isEmpty())
        return;
    if (namespaceUri.isEmpty())
        m_element.setAttribute(name, value);
    else
        m_element.setAttributeNS(namespaceUri, name, value);
}

void VeskXmlNode::setAttribute(QString const& name, int value, QString const& namespaceUri)
{
    setAttribute(name, QString::number(value), namespaceUri);
}

void VeskXmlNode::setAttribute(QString const& name, double value, QString const& namespaceUri)
{
    setAttribute(name, QString::number(value, 'g', QLocale::FloatingPointShortest),
                 namespaceUri);
}

QString VeskXmlNode::getAttribute(QString const& name, QString const& defaultValue) const
{
    QDomAttr const attr = findAttribute(m_element, name);
    return attr.isNull() ? defaultValue : attr.value();
}

bool VeskXmlNode::hasAttribute(QString const& name, QString const& namespaceUri) const
{
    if (isNull())
        return false;
    if (namespaceUri.isEmpty())
        return !findAttribute(m_element, name).isNull();
    return m_element.hasAttributeNS(namespaceUri, localName(name));
}

VeskXmlNode VeskXmlNode::getChild(QString const& name) const
{
    if (isNull())
        return VeskXmlNode();
    QDomElement const child = m_element.firstChildElement(name);
    return child.isNull() ? VeskXmlNode() : VeskXmlNode(child, m_document);
}

QList<VeskXmlNode> VeskXmlNode::getChildNodes() const
{
    QList<VeskXmlNode> children;
    for (QDomElement child = m_element.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement())
        children.append(VeskXmlNode(child, m_document));
    return children;
}

QString VeskXmlNode::name() const
{
    return m_element.nodeName();
}

bool VeskXmlNode::isNull() const
{
    return m_element.isNull();
}

QString VeskXmlNode::getData() const
{
    QString data;
    for (QDomNode child = m_element.firstChild(); !child.isNull(); child = child.nextSibling()) {
        if (isCharacterData(child))
            data += child.nodeValue();
    }
    return data;
}

bool VeskXmlNode::hasData() const
{
    return !getData().isEmpty();
}

QString VeskXmlNode::toString(int indent) const
{
    if (isNull())
        return QString();
    Writer writer(indent);
    NamespaceScope scope;
    scope.insert(QStringLiteral("xml"), QStringLiteral("http://www.w3.org/XML/1998/namespace"));
    writer.writeElement(m_element, 0, indent >= 0, scope);
    return writer.text();
}

VeskXmlNode VeskXmlNode::fromString(QString const& text)
{
    QDomDocument document;
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    if (!document.setContent(text, QDomDocument::ParseOption::UseNamespaceProcessing))
        return VeskXmlNode();
#else
    // The stream reader rejects what the older SAX reader lets through,
    // such as an attribute given twice.
    QXmlStreamReader reader(text);
    if (!document.setContent(&reader, true))
        return VeskXmlNode();
#endif
    QDomElement const root = document.documentElement();
    return root.isNull() ? VeskXmlNode() : VeskXmlNode(root, document);
}

bool VeskXmlNode::operator==(VeskXmlNode const& other) const
{
    return m_element == other.m_element;
}

bool VeskXmlNode::operator!=(VeskXmlNode const& other) const
{
    return !(*this == other);
}

QDebug operator<<(QDebug dbg, VeskXmlNode const& node)
{
    QDebugStateSaver saver(dbg);
    dbg.nospace().noquote() << "VeskXmlNode(" << node.toString() << ')';
    return dbg;
}
