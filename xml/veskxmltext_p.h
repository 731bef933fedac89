#ifndef VESKXMLTEXT_P_H
#define VESKXMLTEXT_P_H

// Internal to the XML library: the text form of element trees, and the
// checks that keep every tree writable as text that reads back the same.

#include <QtCore/QString>
#include <QtXml/QDomDocument>
#include <QtXml/QDomElement>

namespace VeskXmlText {

inline QString const xmlnsName = QStringLiteral("xmlns");
inline QString const xmlnsPrefix = QStringLiteral("xmlns:");

// Whether every character of text can appear in an XML 1.0 document (tab,
// line feed, carriage return, and no other control character, no U+FFFE,
// U+FFFF or unpaired surrogate).
bool isText(QString const& text);

// Whether name is an XML name without a colon, as an element or attribute
// outside any namespace must be (a colon would need a declared prefix).
bool isLocalName(QString const& name);

// Whether name is a local name, or a prefix and a local name joined by one
// colon, as a name within a namespace may be.
bool isQualifiedName(QString const& name);

// element and its subtree as text; see VeskXmlNode::toString().
QString write(QDomElement const& element, int indent);

// The root element of the document in text, as a child of document, or a
// null element when the text is not well-formed or nests deeper than
// VeskXmlNode::MaxDepth.
QDomElement read(QString const& text, QDomDocument& document);

} // namespace VeskXmlText

#endif // VESKXMLTEXT_P_H
