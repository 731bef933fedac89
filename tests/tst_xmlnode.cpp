#include <VeskXml>

#include <QtCore/QDebug>
#include <QtTest/QtTest>

#include <cstddef>

static QString operator""_q(char const* text, std::size_t size)
{
    return QString::fromUtf8(text, int(size));
}

class TestXmlNode : public QObject
{
    Q_OBJECT
private slots:
    void treeAndOwnData();
    void attributes();
    void textParsingAndDebug();
    void appendChildAndIdentity();
};

void TestXmlNode::treeAndOwnData()
{
    VeskXmlNode root("list"_q);
    VeskXmlNode field = root.addChild("field"_q);
    field.addChild("id"_q).insertData("idle"_q);
    field.setAttribute("type"_q, "spinbox"_q);
    VeskXmlNode const second("field"_q, "two"_q, &root);
    QCOMPARE(root.getChildNodes(), (QList<VeskXmlNode>{field, second}));
    QCOMPARE(root.toString(),
             R"(<list><field type="spinbox"><id>idle</id></field><field>two</field></list>)"_q);
    QVERIFY(root.getChild("missing"_q).isNull() && VeskXmlNode(QString()).isNull());
    QCOMPARE(field.addChild("string"_q, QString()).toString(), "<string/>"_q);

    // Own text only: replacing it leaves the text of child elements alone.
    field.insertData("abc"_q);
    field.insertData("def"_q);
    QCOMPARE(field.getData(), "def"_q);
    field.insertData(QString());
    QVERIFY(!field.hasData());
    QCOMPARE(field.getChild("id"_q).getData(), "idle"_q);
    QCOMPARE(VeskXmlNode::fromString("<a>x<b>z</b><![CDATA[<y>]]></a>"_q).getData(), "x<y>"_q);

    VeskXmlNode null;
    null.setAttribute("a"_q, 1);
    QVERIFY(null.addChild("x"_q).isNull() && !null.hasAttribute("a"_q) && null.toString().isEmpty());
}

void TestXmlNode::attributes()
{
    VeskXmlNode node("field"_q);
    node.setAttribute("max"_q, 5);
    QCOMPARE(node.getAttribute("max"_q), "5"_q);
    for (double const v : {0.1, 1.0 / 3.0, -2.5e-300, 1e300, 123456789.125}) {
        node.setAttribute("val"_q, v);
        QVERIFY(node.getAttribute("val"_q).toDouble() == v); // exactly, not nearly
    }
    QCOMPARE(node.getAttribute("nope"_q, "d"_q), "d"_q);

    node.setAttribute("p:k"_q, "v"_q, "urn:a"_q);
    QVERIFY(node.hasAttribute("p:k"_q, "urn:a"_q));
    QVERIFY(!node.hasAttribute("p:k"_q, "urn:b"_q));
    QCOMPARE(node.getAttribute("p:k"_q), "v"_q);
    QVERIFY(VeskXmlNode::fromString(node.toString()).hasAttribute("p:k"_q, "urn:a"_q));
}

void TestXmlNode::textParsingAndDebug()
{
    // Attributes in name order, whatever order they were set in.
    VeskXmlNode root("root"_q);
    VeskXmlNode field = root.addChild("field"_q);
    for (QString const& name : {"z"_q, "a"_q, "m"_q})
        field.setAttribute(name, name + "\"&<"_q);
    field.addChild("id"_q, "a&b <c>"_q);
    root.addChild("empty"_q);
    QString const attributes = R"(a="a&quot;&amp;&lt;" m="m&quot;&amp;&lt;" z="z&quot;&amp;&lt;")"_q;
    QCOMPARE(root.toString(),
             "<root><field "_q + attributes + "><id>a&amp;b &lt;c&gt;</id></field><empty/></root>"_q);
    QCOMPARE(root.toString(2), "<root>\n  <field "_q + attributes
                 + ">\n    <id>a&amp;b &lt;c&gt;</id>\n  </field>\n  <empty/>\n</root>"_q);

    for (char const* bad : {"", "<a>", "<a></b>", "not xml", "<a/><b/>", "<a x='1' x='2'/>"})
        QVERIFY2(VeskXmlNode::fromString(QString::fromLatin1(bad)).isNull(), bad);
    // Indenting never changes data or attribute values, however they are spaced.
    VeskXmlNode item = root.addChild("item"_q, "  two\nlines\r"_q);
    item.setAttribute("v"_q, "tab\there\nnl \"q\""_q);
    for (int indent : {-1, 0, 3}) {
        VeskXmlNode const back = VeskXmlNode::fromString(root.toString(indent));
        QCOMPARE(back.toString(), root.toString());
        QCOMPARE(back.getChild("item"_q).getData(), item.getData());
        QCOMPARE(back.getChild("item"_q).getAttribute("v"_q), item.getAttribute("v"_q));
    }

    QString text;
    QDebug(&text).nospace() << VeskXmlNode::fromString("<a k='v'><b/></a>"_q) << VeskXmlNode();
    QCOMPARE(text, R"(VeskXmlNode(<a k="v"><b/></a>)VeskXmlNode())"_q);
}

void TestXmlNode::appendChildAndIdentity()
{
    // From another document: a copy, which later changes to the original do not reach.
    VeskXmlNode list("list"_q);
    VeskXmlNode field("field"_q);
    field.addChild("id"_q, "x"_q);
    list.appendChild(field);
    list.appendChild(VeskXmlNode());
    field.insertData("later"_q);
    QCOMPARE(list.toString(), "<list><field><id>x</id></field></list>"_q);

    // Within the document: a move; an ancestor is refused.
    VeskXmlNode a = list.addChild("a"_q);
    list.appendChild(list.getChild("field"_q));
    QCOMPARE(list.getChildNodes().first(), a);
    a.appendChild(list);
    QCOMPARE(list.toString(), "<list><a/><field><id>x</id></field></list>"_q);

    // Handles are equal when they refer to the same element.
    QVERIFY(list.getChild("a"_q) == a && list.addChild("a"_q) != a);
    QVERIFY(VeskXmlNode() == VeskXmlNode() && VeskXmlNode("c"_q) != VeskXmlNode("c"_q));
}

QTEST_GUILESS_MAIN(TestXmlNode)
#include "tst_xmlnode.moc"
