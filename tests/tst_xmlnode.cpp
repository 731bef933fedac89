#include <VeskData>

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
    void deepTrees();
    void whitespaceOnlyText_data();
    void whitespaceOnlyText();
    void unwritableInputIsRefused();
};

namespace {

// depth elements <e>, each inside the one before.
QString nested(int depth)
{
    return "<e>"_q.repeated(depth - 1) + "<e/>"_q + "</e>"_q.repeated(depth - 1);
}

// Writing and reading back gives the same text, indented or not.
bool readsBack(VeskXmlNode const& node)
{
    for (int indent : {-1, 0, 2}) {
        if (VeskXmlNode::fromString(node.toString(indent)).toString() != node.toString())
            return false;
    }
    return true;
}

} // namespace

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
    // Text of either kind is replaced; of two children with one name the first is found.
    VeskXmlNode mixed = VeskXmlNode::fromString("<a>x<![CDATA[y]]><b>1</b><b>2</b></a>"_q);
    mixed.insertData("z"_q);
    QCOMPARE(mixed.getData(), "z"_q);
    QCOMPARE(mixed.getChild("b"_q).getData(), "1"_q);

    VeskXmlNode null;
    null.setAttribute("a"_q, 1);
    QVERIFY(null.addChild("x"_q).isNull() && !null.hasAttribute("a"_q) && null.toString().isEmpty());
    QVERIFY(null.getChild("x"_q).isNull() && null.getChildNodes().isEmpty());
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
    node.setAttribute("empty"_q, ""_q);
    QCOMPARE(node.getAttribute("empty"_q, "d"_q), ""_q); // there, though empty

    node.setAttribute("p:k"_q, "v"_q, "urn:a"_q);
    QVERIFY(node.hasAttribute("p:k"_q, "urn:a"_q) && node.hasAttribute("p:k"_q, QString()));
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

    // Comments and instructions around the root element are not part of it.
    QCOMPARE(VeskXmlNode::fromString("<?pi?><!--c--><a/><!--d-->"_q).toString(), "<a/>"_q);
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

    // An element whose prefix was declared on an ancestor it left behind
    // declares it itself.
    VeskXmlNode const source = VeskXmlNode::fromString("<a xmlns:p='urn:p'><p:b/></a>"_q);
    VeskXmlNode holder("holder"_q);
    holder.appendChild(source.getChildNodes().first());
    QCOMPARE(holder.toString(), R"(<holder><p:b xmlns:p="urn:p"/></holder>)"_q);
    QVERIFY(VeskXmlNode() == VeskXmlNode() && VeskXmlNode("c"_q) != VeskXmlNode("c"_q));
}

void TestXmlNode::deepTrees()
{
    // Reading, writing and the debug text follow nesting without recursion.
    QString const text = nested(VeskXmlNode::MaxDepth);
    VeskXmlNode const deepest = VeskXmlNode::fromString(text);
    QVERIFY(!deepest.isNull());
    QCOMPARE(deepest.toString(), text);
    QCOMPARE(deepest.toString(0).count(QLatin1Char('\n')), 2 * (VeskXmlNode::MaxDepth - 1));
    QString debug;
    QDebug(&debug) << deepest;
    QCOMPARE(debug.size(), text.size() + int(sizeof("VeskXmlNode() ")) - 1);

    for (int depth : {VeskXmlNode::MaxDepth + 1, 100000})
        QVERIFY(VeskXmlNode::fromString(nested(depth)).isNull());

    // Grown further with addChild: written, though too deep to read back.
    VeskXmlNode leaf = deepest;
    while (!leaf.getChildNodes().isEmpty())
        leaf = leaf.getChildNodes().first();
    for (int i = 0; i < 10; ++i)
        leaf = leaf.addChild("e"_q);
    QCOMPARE(deepest.toString(), nested(VeskXmlNode::MaxDepth + 10));
}

void TestXmlNode::whitespaceOnlyText_data()
{
    QTest::addColumn<QString>("blank");
    QTest::newRow("space") << " "_q;
    QTest::newRow("spaces") << "   "_q;
    QTest::newRow("tab") << "\t"_q;
    QTest::newRow("newline") << "\n"_q;
    QTest::newRow("carriage return") << "\r\n"_q;
    QTest::newRow("mixed") << " \n\t "_q;
}

void TestXmlNode::whitespaceOnlyText()
{
    QFETCH(QString, blank);
    VeskXmlNode root("root"_q);
    VeskXmlNode const value = root.addChild("value"_q, blank);
    root.addChild("other"_q).addChild("inner"_q, "x"_q);
    for (int indent : {-1, 0, 2}) {
        VeskXmlNode const back = VeskXmlNode::fromString(root.toString(indent));
        QCOMPARE(back.getChild("value"_q).getData(), blank);
        // The indentation between child elements is layout, not data.
        QCOMPARE(back.getData(), QString());
        QCOMPARE(back.getChild("other"_q).getData(), QString());
        QCOMPARE(back.toString(), root.toString());
    }
    QCOMPARE(VeskXmlNode::fromString(value.toString()).getData(), blank);

    // Through a settings page: a text of blanks, and a field whose id is blanks.
    QList<VeskField> const page{VeskField::lineEdit(QString(), "name"_q, "old"_q, 0, QString()),
                                VeskField::lineEdit(QString(), blank, "old"_q, 0, QString())};
    QList<VeskField> const answers{VeskField::lineEdit(QString(), "name"_q, blank, 0, QString()),
                                   VeskField::lineEdit(QString(), blank, "new"_q, 0, QString())};
    QList<VeskField> const merged = VeskField::fromXml(
        page, VeskXmlNode::fromString(VeskField::toXml(answers).toString(2)));
    QCOMPARE(merged.size(), 2);
    QCOMPARE(merged.at(0).getText(), blank);
    QCOMPARE(merged.at(1).getText(), "new"_q);
    QCOMPARE(VeskXmlNode::fromString("<a>"_q + blank + "<b/>"_q + blank + "</a>"_q).getData(), QString());
    QCOMPARE(VeskXmlNode::fromString("<a>x<b/>"_q + blank + "</a>"_q).getData(), "x"_q);
}

void TestXmlNode::unwritableInputIsRefused()
{
    QString const xmlNamespace = "http://www.w3.org/XML/1998/namespace"_q;
    QString const badTexts[] = {"\x01"_q, "a\x1f"_q, QString(QChar(0xFFFF)), QString(QChar(0xFFFE)),
                                QString(QChar(0xD800)) + "x"_q, "x"_q + QChar(0xDC00)};
    QString const badNames[] = {"1a"_q, "a b"_q, "a:b"_q, ":a"_q, "-x"_q, "a>"_q, "a='1'"_q,
                                "xmlns"_q, QString(QChar(0x132)), "a\x01"_q};

    VeskXmlNode node("node"_q, "data"_q);
    for (QString const& bad : badTexts) {
        QVERIFY(VeskXmlNode("a"_q, bad).isNull());
        QVERIFY(node.addChild("a"_q, bad).isNull());
        node.insertData(bad);
        node.setAttribute("v"_q, bad);
        node.setAttribute("p:v"_q, "x"_q, bad);
    }
    for (QString const& bad : badNames) {
        if (bad != "xmlns"_q)
            QVERIFY2(VeskXmlNode(bad).isNull() && node.addChild(bad).isNull(), qPrintable(bad));
        node.setAttribute(bad, "v"_q);
    }
    for (QString const& bad : {"xmlns"_q, "xmlns:p"_q, "xml:lang"_q, "a:b:c"_q, "p:"_q})
        node.setAttribute(bad, "v"_q, "urn:u"_q);
    node.setAttribute("p:v"_q, "x"_q, "http://www.w3.org/2000/xmlns/"_q);
    node.setAttribute("p:v"_q, "x"_q, xmlNamespace);
    QCOMPARE(node.toString(), "<node>data</node>"_q);
    QVERIFY(node.getChildNodes().isEmpty());

    // What is accepted, including names beyond ASCII, reads back the same.
    for (QString const& good : {"\u00e9t\u00e9"_q, "\u540d\u524d"_q, "_a.b-c"_q})
        QVERIFY2(!node.addChild(good, "\t\u00e9\U0001F600"_q).isNull(), qPrintable(good));
    node.setAttribute("p:x"_q, "1"_q, "urn:u"_q);
    node.setAttribute("xml:lang"_q, "en"_q, xmlNamespace);
    node.setAttribute("w"_q, "\U0001F600\r"_q);
    // A plain attribute beside a namespaced one of the same local name.
    node.setAttribute("x"_q, "plain"_q);
    QCOMPARE(node.getAttribute("p:x"_q), "1"_q);
    QCOMPARE(node.getAttribute("x"_q), "plain"_q);
    QVERIFY(readsBack(node));
    // Namespaced attributes whose prefix is bound to another namespace here, or that have
    // none: the writer picks a bound prefix or makes up a new one.
    VeskXmlNode bound = VeskXmlNode::fromString("<a xmlns:p='urn:1' xmlns:ns1='urn:9'/>"_q);
    bound.setAttribute("p:x"_q, "1"_q, "urn:2"_q);
    bound.setAttribute("y"_q, "2"_q, "urn:3"_q);
    bound.setAttribute("z"_q, "3"_q, "urn:1"_q);
    QVERIFY(readsBack(bound));
    VeskXmlNode const reread = VeskXmlNode::fromString(bound.toString());
    QVERIFY(reread.hasAttribute("x"_q, "urn:2"_q) && reread.hasAttribute("y"_q, "urn:3"_q)
            && reread.hasAttribute("z"_q, "urn:1"_q));
    // Entities are expanded on reading.
    QCOMPARE(VeskXmlNode::fromString("<!DOCTYPE a [<!ENTITY e '<b>t</b>'>]><a>&e;</a>"_q).toString(),
             "<a><b>t</b></a>"_q);
    for (char const* text : {"<a><?pi?><?pi data?><!--c--><![CDATA[ ]]></a>",
                             "<a xmlns='urn:d' xmlns:p='urn:p'><p:b p:c='1'/></a>",
                             "<a x='2' xmlns:p='urn:p' p:x='1'/>"})
    {
        VeskXmlNode const read = VeskXmlNode::fromString(QString::fromLatin1(text));
        QVERIFY2(!read.isNull() && readsBack(read), text);
    }
}

QTEST_GUILESS_MAIN(TestXmlNode)
#include "tst_xmlnode.moc"
