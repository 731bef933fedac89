#include <VeskXml>

#include <QtCore/QDebug>
#include <QtTest/QtTest>

#include <algorithm>

class TestXmlNode : public QObject
{
    Q_OBJECT
private slots:
    void buildsTreeSeenThroughParent();
    void ownDataExcludesChildText();
    void attributes();
    void deterministicText();
    void parsing();
    void appendChild();
    void identity();
    void debugText();
};

void TestXmlNode::buildsTreeSeenThroughParent()
{
    VeskXmlNode root(QStringLiteral("fieldlist"));
    VeskXmlNode field = root.addChild(QStringLiteral("field"));
    field.addChild(QStringLiteral("id")).insertData(QStringLiteral("idle"));
    field.setAttribute(QStringLiteral("type"), QStringLiteral("spinbox"));
    VeskXmlNode second(QStringLiteral("field"), QStringLiteral("two"), &root);

    QList<VeskXmlNode> const children = root.getChildNodes();
    QCOMPARE(children.size(), 2);
    QCOMPARE(children.at(0).getChild(QStringLiteral("id")).getData(), QStringLiteral("idle"));
    QCOMPARE(children.at(0).getAttribute(QStringLiteral("type")), QStringLiteral("spinbox"));
    QCOMPARE(children.at(1).getData(), QStringLiteral("two"));
    QCOMPARE(children.at(1).name(), QStringLiteral("field"));

    VeskXmlNode const empty = field.addChild(QStringLiteral("string"), QString());
    QVERIFY(!empty.hasData());
    QCOMPARE(empty.toString(), QStringLiteral("<string/>"));
    QVERIFY(root.getChild(QStringLiteral("missing")).isNull());
    QVERIFY(VeskXmlNode(QString()).isNull());

    VeskXmlNode null;
    null.setAttribute(QStringLiteral("a"), 1);
    QVERIFY(null.addChild(QStringLiteral("x")).isNull() && !null.hasAttribute(QStringLiteral("a")));
    QVERIFY(null.getData().isEmpty() && null.toString().isEmpty());
}

void TestXmlNode::ownDataExcludesChildText()
{
    VeskXmlNode field(QStringLiteral("field"));
    field.addChild(QStringLiteral("id"), QStringLiteral("img"));
    field.insertData(QStringLiteral("abc"));
    QCOMPARE(field.getData(), QStringLiteral("abc"));
    field.insertData(QStringLiteral("def"));
    QCOMPARE(field.getData(), QStringLiteral("def"));
    field.insertData(QString());
    QVERIFY(!field.hasData());
    QCOMPARE(field.getChild(QStringLiteral("id")).getData(), QStringLiteral("img"));

    VeskXmlNode const parsed =
        VeskXmlNode::fromString(QStringLiteral("<a>x<b>z</b><![CDATA[<y>]]></a>"));
    QCOMPARE(parsed.getData(), QStringLiteral("x<y>"));
}

void TestXmlNode::attributes()
{
    VeskXmlNode node(QStringLiteral("field"));
    node.setAttribute(QStringLiteral("max"), 60);
    node.setAttribute(QStringLiteral("min"), -7);
    node.setAttribute(QStringLiteral("max"), 5);
    QCOMPARE(node.getAttribute(QStringLiteral("max")), QStringLiteral("5"));
    QCOMPARE(node.getAttribute(QStringLiteral("min")).toInt(), -7);

    for (double const v : {0.1, 1.0 / 3.0, -2.5e-300, 1e300, 123456789.125}) {
        node.setAttribute(QStringLiteral("val"), v);
        bool ok = false;
        QVERIFY(node.getAttribute(QStringLiteral("val")).toDouble(&ok) == v && ok);
    }

    QVERIFY(!node.hasAttribute(QStringLiteral("nope")));
    QCOMPARE(node.getAttribute(QStringLiteral("nope"), QStringLiteral("d")), QStringLiteral("d"));

    QString const ns = QStringLiteral("urn:a");
    node.setAttribute(QStringLiteral("p:k"), QStringLiteral("v"), ns);
    QVERIFY(node.hasAttribute(QStringLiteral("p:k"), ns));
    QVERIFY(!node.hasAttribute(QStringLiteral("p:k"), QStringLiteral("urn:b")));
    QCOMPARE(node.getAttribute(QStringLiteral("p:k")), QStringLiteral("v"));
    VeskXmlNode const back = VeskXmlNode::fromString(node.toString());
    QVERIFY(back.hasAttribute(QStringLiteral("p:k"), ns));
}

void TestXmlNode::deterministicText()
{
    auto build = [](bool reversed) {
        VeskXmlNode root(QStringLiteral("root"));
        VeskXmlNode field = root.addChild(QStringLiteral("field"));
        QStringList names = {QStringLiteral("z"), QStringLiteral("a"), QStringLiteral("m")};
        if (reversed)
            std::reverse(names.begin(), names.end());
        for (QString const& n : std::as_const(names))
            field.setAttribute(n, n + QStringLiteral("\"&<"));
        field.addChild(QStringLiteral("id"), QStringLiteral("a&b <c>"));
        root.addChild(QStringLiteral("empty"));
        return root;
    };
    QString const compact = QStringLiteral(
        "<root><field a=\"a&quot;&amp;&lt;\" m=\"m&quot;&amp;&lt;\" z=\"z&quot;&amp;&lt;\">"
        "<id>a&amp;b &lt;c&gt;</id></field><empty/></root>");
    QCOMPARE(build(false).toString(), compact);
    QCOMPARE(build(true).toString(), compact);
    QCOMPARE(build(false).toString(2),
             QStringLiteral("<root>\n  <field a=\"a&quot;&amp;&lt;\" m=\"m&quot;&amp;&lt;\" "
                            "z=\"z&quot;&amp;&lt;\">\n    <id>a&amp;b &lt;c&gt;</id>\n"
                            "  </field>\n  <empty/>\n</root>"));
}

void TestXmlNode::parsing()
{
    for (char const* bad : {"", "<a>", "<a></b>", "not xml", "<a/><b/>", "<a x='1' x='2'/>"})
        QVERIFY2(VeskXmlNode::fromString(QString::fromLatin1(bad)).isNull(), bad);

    VeskXmlNode tree(QStringLiteral("list"));
    VeskXmlNode item = tree.addChild(QStringLiteral("item"), QStringLiteral("  two\nlines\r"));
    item.setAttribute(QStringLiteral("v"), QStringLiteral("tab\there\nnl \"q\""));
    tree.addChild(QStringLiteral("x")).addChild(QStringLiteral("y"), QStringLiteral("1"));
    for (int indent : {-1, 0, 3}) {
        VeskXmlNode const back = VeskXmlNode::fromString(tree.toString(indent));
        QCOMPARE(back.toString(), tree.toString());
        QCOMPARE(back.getChild(QStringLiteral("item")).getData(), item.getData());
        QCOMPARE(back.getChild(QStringLiteral("item")).getAttribute(QStringLiteral("v")),
                 item.getAttribute(QStringLiteral("v")));
    }
}

void TestXmlNode::appendChild()
{
    VeskXmlNode list(QStringLiteral("list"));
    VeskXmlNode field(QStringLiteral("field"));
    field.addChild(QStringLiteral("id"), QStringLiteral("x"));
    list.appendChild(field);
    list.appendChild(VeskXmlNode());
    field.insertData(QStringLiteral("later"));
    QCOMPARE(list.toString(), QStringLiteral("<list><field><id>x</id></field></list>"));
    QVERIFY(list.getChild(QStringLiteral("field")) != field);

    VeskXmlNode a = list.addChild(QStringLiteral("a"));
    list.appendChild(list.getChild(QStringLiteral("field")));
    QCOMPARE(list.getChildNodes().first(), a);
    a.appendChild(list);
    QCOMPARE(list.toString(), QStringLiteral("<list><a/><field><id>x</id></field></list>"));
}

void TestXmlNode::identity()
{
    VeskXmlNode root(QStringLiteral("r"));
    VeskXmlNode const child = root.addChild(QStringLiteral("c"));
    VeskXmlNode const copy = child;
    QVERIFY(root.getChild(QStringLiteral("c")) == child && copy == child);
    QVERIFY(root.addChild(QStringLiteral("c")) != child);
    QVERIFY(VeskXmlNode(QStringLiteral("c")) != VeskXmlNode(QStringLiteral("c")));
    QVERIFY(VeskXmlNode() == VeskXmlNode());
}

void TestXmlNode::debugText()
{
    VeskXmlNode node(QStringLiteral("a"));
    node.setAttribute(QStringLiteral("k"), QStringLiteral("v"));
    node.addChild(QStringLiteral("b"));
    QString text;
    QDebug(&text).nospace() << node << VeskXmlNode();
    QCOMPARE(text, QStringLiteral("VeskXmlNode(<a k=\"v\"><b/></a>)VeskXmlNode()"));
}

QTEST_GUILESS_MAIN(TestXmlNode)
#include "tst_xmlnode.moc"
