#include "veskxmlnode.h"
#include "veskxmltext_p.h"

#include <QtCore/QDebug>
#include <QtCore/QHash>
#include <QtCore/QLocale>
#include <QtCore/QMap>
#include <QtXml/QDomNamedNodeMap>

#include <utility>

namespace {

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

using VeskXmlText::xmlnsName;

// A name in a namespace must be able to carry it through a declaration:
// "xmlns" is never declared, and "xml" stands for its own namespace only.
bool acceptsNamespacedName(QString const& name, QString const& namespaceUri)
{
    static QString const xmlNamespace = QStringLiteral("http://www.w3.org/XML/1998/namespace");
    static QString const xmlnsNamespace = QStringLiteral("http://www.w3.org/2000/xmlns/");
    if (!VeskXmlText::isQualifiedName(name) || !VeskXmlText::isText(namespaceUri))
        return false;
    int const colon = name.indexOf(QLatin1Char(':'));
    QString const prefix = colon < 0 ? QString() : name.left(colon);
    if (name == xmlnsName || prefix == xmlnsName || namespaceUri == xmlnsNamespace)
        return false;
    return (prefix == QLatin1String("xml")) == (namespaceUri == xmlNamespace);
}

QString localName(QString const& qualifiedName)
{
    int const colon = qualifiedName.indexOf(QLatin1Char(':'));
    return colon < 0 ? qualifiedName : qualifiedName.mid(colon + 1);
}

} // namespace

VeskXmlNode::VeskXmlNode() = default;

VeskXmlNode::VeskXmlNode(QString const& name, QString const& data, VeskXmlNode* parent)
{
    if (!VeskXmlText::isLocalName(name) || !VeskXmlText::isText(data))
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
    if (isNull() || !VeskXmlText::isText(data))
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
    if (isNull() || !VeskXmlText::isText(value))
        return;
    if (namespaceUri.isEmpty()) {
        // By namespace and local name, as the reader does: QtXml's plain
        // setAttribute() would take "x" for an "p:x" already there.
        if (VeskXmlText::isLocalName(name) && name != xmlnsName)
            m_element.setAttributeNS(QString(), name, value);
    } else if (acceptsNamespacedName(name, namespaceUri)) {
        m_element.setAttributeNS(namespaceUri, name, value);
    }
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
    return VeskXmlText::write(m_element, indent);
}

VeskXmlNode VeskXmlNode::fromString(QString const& text)
{
    QDomDocument document;
    QDomElement const root = VeskXmlText::read(text, document);
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
