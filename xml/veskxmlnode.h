#ifndef VESKXMLNODE_H
#define VESKXMLNODE_H

/// \file
/// VeskXmlNode, a handle to one element of an XML tree, and its stream operators.

#include "veskxml_global.h"

#include <QtCore/QList>
#include <QtCore/QMetaType>
#include <QtCore/QString>
#include <QtXml/QDomDocument>
#include <QtXml/QDomElement>

QT_BEGIN_NAMESPACE
class QDataStream;
class QDebug;
QT_END_NAMESPACE

/// A handle to one element of an XML tree. The handle keeps the element's
/// document alive; copies of a handle refer to the same element, so a change
/// made through one copy is seen through all of them and in the tree.
///
/// A default-constructed handle refers to no element (isNull()). Every
/// operation on such a handle is harmless: queries return an empty string,
/// false or a null handle, and changes do nothing.
///
/// Arguments called namespaceUri take a namespace URI; a null or empty one
/// means "no namespace", which is what plain documents use.
///
/// Whatever toString() writes, fromString() reads back as the same tree. To
/// keep it so, names and text that XML cannot carry are refused where they
/// come in: element names and attribute names outside a namespace must be XML
/// names without a colon (a colon would need a declared prefix), names within
/// a namespace may add one prefix ("xmlns" is refused, "xml" only with its own
/// namespace), and text, attribute values and namespace URIs must not hold
/// characters outside XML 1.0 (control characters other than tab, line feed
/// and carriage return, U+FFFE, U+FFFF, unpaired surrogates). A refused
/// constructor or addChild() gives a null handle; a refused insertData() or
/// setAttribute() changes nothing.
class VESK_XML_EXPORT VeskXmlNode
{
public:
    /// The deepest nesting of elements that fromString() reads: deeper
    /// documents give a null handle. QtXml copies and destroys trees by
    /// recursion, so a document nested without limit could exhaust the call
    /// stack there. Trees built with addChild() may go deeper; they are still
    /// written as text, but that text does not read back.
    static constexpr int MaxDepth = 10000;

    /// A null handle.
    VeskXmlNode();

    /// Makes the element \<name> with the text data (none when data is empty).
    /// With a parent that refers to an element, the new element becomes the
    /// parent's last child and belongs to the parent's document; otherwise it
    /// becomes the root of a document of its own. An empty or refused name,
    /// or refused data, gives a null handle.
    explicit VeskXmlNode(QString const& name, QString const& data = QString(),
                         VeskXmlNode* parent = nullptr);

    /// Another handle onto other's element.
    VeskXmlNode(VeskXmlNode const& other);
    /// Makes this handle refer to other's element.
    VeskXmlNode& operator=(VeskXmlNode const& other);
    /// Drops this handle; the document lives while any handle refers into it.
    ~VeskXmlNode();

    /// Appends a new child element \<name> with the text data and returns it.
    VeskXmlNode addChild(QString const& name, QString const& data = QString());

    /// Appends child, with its subtree, as the last child of this element.
    /// An element of the same document is moved here; an element of another
    /// document is copied into this one, and the handle passed in keeps
    /// referring to the original. Appending a null handle, this element or
    /// one of its ancestors does nothing.
    void appendChild(VeskXmlNode const& child);

    /// Replaces the element's own text (its direct text and CDATA children;
    /// child elements keep theirs). An empty data leaves no text.
    void insertData(QString const& data);

    ///@{
    void setAttribute(QString const& name, QString const& value,
                      QString const& namespaceUri = QString());
    /// Decimal text of value.
    void setAttribute(QString const& name, int value, QString const& namespaceUri = QString());
    /// The shortest text that QString::toDouble() reads back as value.
    void setAttribute(QString const& name, double value,
                      QString const& namespaceUri = QString());
    ///@}

    /// The value of the attribute with this (qualified) name, or defaultValue
    /// when there is none.
    QString getAttribute(QString const& name, QString const& defaultValue = QString()) const;
    /// Whether the element has the attribute; with a namespace, name is
    /// matched by its local name within that namespace.
    bool hasAttribute(QString const& name, QString const& namespaceUri = QString()) const;

    /// The first child element named name, or a null handle.
    VeskXmlNode getChild(QString const& name) const;
    /// The child elements, in document order.
    QList<VeskXmlNode> getChildNodes() const;

    /// The element's name; an empty string for a null handle.
    QString name() const;
    /// True when the handle refers to no element.
    bool isNull() const;

    /// The element's own text: its direct text and CDATA children joined,
    /// without the text of its child elements.
    QString getData() const;
    /// True when getData() is not empty.
    bool hasData() const;

    /// The element and its subtree as XML text, attributes in name order, so
    /// that the same tree always gives the same text. A negative indent gives
    /// one line; zero or more puts each element that holds only elements on
    /// lines of its own, indent spaces deeper per level. Elements with text
    /// are always written on one line, so that indenting never changes data.
    /// Any depth of tree is written.
    QString toString(int indent = -1) const;

    /// The root element of the document in text, or a null handle when text
    /// is not well-formed XML (namespace prefixes must be declared) or nests
    /// elements deeper than MaxDepth. Text made only of whitespace is kept
    /// when it is an element's whole content; beside child elements, comments
    /// or processing instructions it is layout and dropped.
    static VeskXmlNode fromString(QString const& text);

    ///@{
    /// True when both handles refer to the same element (or both are null).
    bool operator==(VeskXmlNode const& other) const;
    /// The negation of operator==().
    bool operator!=(VeskXmlNode const& other) const;
    ///@}

private:
    VeskXmlNode(QDomElement const& element, QDomDocument const& document);

    QDomElement m_element;
    QDomDocument m_document;
};

/// Writes VeskXmlNode(<one-line XML text>).
VESK_XML_EXPORT QDebug operator<<(QDebug dbg, VeskXmlNode const& node);

///@{
/// A version byte and the element with its subtree as XML text (a null
/// string for a null handle). Reading gives the root of a new document of its
/// own; text that is not well-formed, or nests elements more than 256 deep,
/// sets QDataStream::ReadCorruptData and leaves node null.
VESK_XML_EXPORT QDataStream& operator<<(QDataStream& stream, VeskXmlNode const& node);
VESK_XML_EXPORT QDataStream& operator>>(QDataStream& stream, VeskXmlNode& node);
///@}

Q_DECLARE_METATYPE(VeskXmlNode)

#endif // VESKXMLNODE_H
