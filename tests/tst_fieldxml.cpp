#include <VeskData>

#include <QtTest/QtTest>

namespace {

QString const noGroup;

class Target : public VeskPlugin
{
public:
    void press(QList<VeskArg>&) {}
};

VeskXmlNode parse(char const* text)
{
    VeskXmlNode node = VeskXmlNode::fromString(QString::fromUtf8(text));
    if (node.isNull())
        qFatal("test XML does not parse: %s", text);
    return node;
}

VeskField spin(QString const& id, int max, int min, int value)
{
    return VeskField::spinBox(QStringLiteral("Idle"), id, max, min, value, noGroup, noGroup);
}

VeskField status(QString const& selected)
{
    return VeskField::comboBox(QStringLiteral("Status"), QStringLiteral("status"),
                               {QStringLiteral("online"), QStringLiteral("away")},
                               {QStringLiteral("Online"), QStringLiteral("Away")}, selected,
                               noGroup);
}

VeskField nick(int maxLength, QString const& text)
{
    return VeskField::lineEdit(QStringLiteral("Nick"), QStringLiteral("nick"), text, maxLength,
                               noGroup);
}

} // namespace

class TestFieldXml : public QObject
{
    Q_OBJECT

private slots:
    void writtenForms();
    void readingOneField();
    void comboBoxForms();
    void roundTrip();
    void mergingAList();
};

void TestFieldXml::writtenForms()
{
    QList<VeskField> const page{
        VeskField::checkBox(QStringLiteral("Away"), QStringLiteral("autoaway"), true, noGroup, {}),
        spin(QStringLiteral("idle"), 60, 1, 5), status(QStringLiteral("away"))};
    QCOMPARE(VeskField::toXml(page).toString(),
             QStringLiteral("<fieldlist>"
                            "<field checked=\"1\" type=\"checkbox\"><id>autoaway</id></field>"
                            "<field max=\"60\" min=\"1\" type=\"spinbox\" val=\"5\"><id>idle</id></field>"
                            "<field type=\"combobox\"><id>status</id>"
                            "<item id=\"online\">Online</item>"
                            "<item id=\"away\" selected=\"1\">Away</item></field>"
                            "</fieldlist>"));
    // One field alone is the same element, as a root.
    QCOMPARE(page.at(1).toXml().toString(),
             QStringLiteral("<field max=\"60\" min=\"1\" type=\"spinbox\" val=\"5\"><id>idle</id></field>"));

    Target target;
    auto text = [](VeskField const& field) { return field.toXml().toString(); };
    QCOMPARE(text(VeskField::passwordEdit(QString(), QStringLiteral("pass"), QStringLiteral("s3cret"),
                                          16, noGroup)),
             QStringLiteral("<field maxlength=\"16\" type=\"lineedit\"><id>pass</id>"
                            "<string>s3cret</string></field>"));
    QCOMPARE(text(VeskField::textEdit(QString(), QStringLiteral("notes"), QStringLiteral("a<b"),
                                      noGroup)),
             QStringLiteral("<field type=\"textedit\"><id>notes</id><string>a&lt;b</string></field>"));
    QCOMPARE(text(VeskField::button(QStringLiteral("Go"), QStringLiteral("go"),
                                    VeskPluginAction(&target, &Target::press), noGroup)),
             QStringLiteral("<field><id>go</id></field>"));
    QCOMPARE(text(VeskField::label(QStringLiteral("Hello"), QStringLiteral("l"), noGroup)),
             QStringLiteral("<field type=\"label\"><id>l</id></field>"));
    QCOMPARE(text(VeskField::image(QStringLiteral("img"), QByteArray("\x00\xab\x10", 3), noGroup)),
             QStringLiteral("<field type=\"image\"><id>img</id>00ab10</field>"));
    QCOMPARE(text(VeskField::doubleSpinBox(QString(), QStringLiteral("z"), 2.5, -1.0, 0.125,
                                           noGroup)),
             QStringLiteral("<field max=\"2.5\" min=\"-1\" type=\"doublespinbox\" val=\"0.125\">"
                            "<id>z</id></field>"));
    QCOMPARE(text(VeskField()), QStringLiteral("<field type=\"none\"><id/></field>"));
    // An option without a label is written with its id as the text.
    QCOMPARE(text(VeskField::comboBox(QString(), QStringLiteral("c"),
                                      {QStringLiteral("a"), QStringLiteral("b")},
                                      {QStringLiteral("A")}, QStringLiteral("b"), noGroup)),
             QStringLiteral("<field type=\"combobox\"><id>c</id><item id=\"a\">A</item>"
                            "<item id=\"b\" selected=\"1\">b</item></field>"));
}

void TestFieldXml::readingOneField()
{
    VeskXmlNode const idle = spin(QStringLiteral("idle"), 60, 1, 5).toXml();
    VeskField field = spin(QStringLiteral("idle"), 10, 0, 0);
    VeskField const before = field;
    field.fromXml(idle);
    QCOMPARE(field.getSpinBoxMin(), 1);
    QCOMPARE(field.getSpinBoxMax(), 60);
    QCOMPARE(field.getIntValue(), 5);
    QCOMPARE(before.getSpinBoxMax(), 10);

    VeskField other = spin(QStringLiteral("busy"), 10, 0, 0);
    other.fromXml(idle);
    QCOMPARE(other, spin(QStringLiteral("busy"), 10, 0, 0));
    VeskField real = VeskField::doubleSpinBox(QString(), QStringLiteral("idle"), 10, 0, 0, noGroup);
    real.fromXml(idle);
    QCOMPARE(real.getDoubleSpinBoxMax(), 10.0);

    // The value read is stored as it is, even outside the limits read.
    field.fromXml(parse("<field type='spinbox' max='3' min='2' val='9'><id>idle</id></field>"));
    QCOMPARE(field.getIntValue(), 9);
    field.fromXml(parse("<field type='spinbox' max='x' val='4'><id>idle</id></field>"));
    QCOMPARE(field.getSpinBoxMax(), 0);
    QCOMPARE(field.getIntValue(), 4);

    VeskField box = VeskField::checkBox(QString(), QStringLiteral("a"), true, noGroup, {});
    box.fromXml(parse("<field type='checkbox' checked='true'><id>a</id></field>"));
    QVERIFY(!box.isChecked());
    box.fromXml(parse("<field type='checkbox' checked='1'><id>a</id></field>"));
    QVERIFY(box.isChecked());
    box.fromXml(parse("<field type='radiobutton' checked='0'><id>a</id></field>"));
    QVERIFY(box.isChecked());

    // Without "maxlength" (or with 0) the stored maximum stays.
    VeskField edit = nick(12, QStringLiteral("Al"));
    edit.fromXml(parse("<field type='lineedit'><id>nick</id><string>Bo</string></field>"));
    QCOMPARE(edit.getText(), QStringLiteral("Bo"));
    QCOMPARE(edit.getMaxTextLength(), 12);
    edit.fromXml(parse("<field type='lineedit' maxlength='0'><id>nick</id></field>"));
    QCOMPARE(edit.getMaxTextLength(), 12);
    QVERIFY(edit.getText().isEmpty());
    edit.fromXml(parse("<field type='lineedit' maxlength='30'><string>Cy</string><id>nick</id></field>"));
    QCOMPARE(edit.getMaxTextLength(), 30);
    QCOMPARE(edit.getText(), QStringLiteral("Cy"));

    // The element's kind word decides, and all edit kinds share "lineedit".
    VeskField pass = VeskField::passwordEdit(QString(), QStringLiteral("nick"), QString(), 8, noGroup);
    pass.fromXml(nick(0, QStringLiteral("secret")).toXml());
    QCOMPARE(pass.getText(), QStringLiteral("secret"));
    VeskField notes = VeskField::textEdit(QString(), QStringLiteral("nick"), QString(), noGroup);
    notes.fromXml(nick(0, QStringLiteral("x")).toXml());
    QVERIFY(notes.getText().isEmpty());

    // An element without an id, or with an empty one, is not read.
    edit.fromXml(parse("<field type='lineedit'><string>Zed</string></field>"));
    edit.fromXml(parse("<field type='lineedit'><id></id><string>Zed</string></field>"));
    QCOMPARE(edit.getText(), QStringLiteral("Cy"));
}

void TestFieldXml::comboBoxForms()
{
    VeskField field = status(QStringLiteral("online"));
    field.fromXml(status(QStringLiteral("away")).toXml());
    QCOMPARE(field.getSelectedId(), QStringLiteral("away"));

    // The paired form, with the selection as an attribute; a later selected
    // item wins over it, and items without text or id are skipped.
    field.fromXml(parse("<field type='combobox' selectedid='b'><id>status</id>"
                        "<string_id>a</string_id><string_label>A</string_label>"
                        "<string_id>b</string_id><string_label>B</string_label>"
                        "<item id='c'>C</item><item id='d'/><item>E</item></field>"));
    QCOMPARE(field.getComboBoxIds(), (QStringList{QStringLiteral("a"), QStringLiteral("b"),
                                                  QStringLiteral("c")}));
    QCOMPARE(field.getComboBoxLabels(), (QStringList{QStringLiteral("A"), QStringLiteral("B"),
                                                     QStringLiteral("C")}));
    QCOMPARE(field.getSelectedId(), QStringLiteral("b"));
    field.fromXml(parse("<field type='combobox' selectedid='a'><id>status</id>"
                        "<string_id>a</string_id><string_label>A</string_label>"
                        "<string_id>b</string_id><string_label>B</string_label>"
                        "<item id='c' selected='1'>C</item></field>"));
    QCOMPARE(field.getSelectedId(), QStringLiteral("c"));

    // New options with an unknown selection fall back to the first one; the
    // same options with an unknown selection keep the current one.
    field.fromXml(parse("<field type='combobox' selectedid='zz'><id>status</id>"
                        "<item id='x'>X</item><item id='y'>Y</item></field>"));
    QCOMPARE(field.getSelectedId(), QStringLiteral("x"));
    field.setSelectedId(QStringLiteral("y"));
    field.fromXml(parse("<field type='combobox' selectedid='zz'><id>status</id>"
                        "<item id='x'>X</item><item id='y'>Y</item></field>"));
    QCOMPARE(field.getSelectedId(), QStringLiteral("y"));
}

void TestFieldXml::roundTrip()
{
    QList<VeskField> const written{
        VeskField::radioButton(QString(), QStringLiteral("r"), true, noGroup, {}),
        nick(40, QStringLiteral("new nick")),
        VeskField::soundEdit(QString(), QStringLiteral("snd"), QStringLiteral("/a.wav"), noGroup),
        VeskField::textEdit(QString(), QStringLiteral("t"), QStringLiteral("two\nlines"), noGroup),
        spin(QStringLiteral("idle"), 100, -100, -42),
        VeskField::doubleSpinBox(QString(), QStringLiteral("d"), 1e6, -0.5, 1.0 / 3, noGroup),
        status(QStringLiteral("away"))};
    QList<VeskField> const blank{
        VeskField::radioButton(QString(), QStringLiteral("r"), false, noGroup, {}),
        nick(5, QString()),
        VeskField::soundEdit(QString(), QStringLiteral("snd"), QString(), noGroup),
        VeskField::textEdit(QString(), QStringLiteral("t"), QString(), noGroup),
        spin(QStringLiteral("idle"), 0, 0, 0),
        VeskField::doubleSpinBox(QString(), QStringLiteral("d"), 0, 0, 0, noGroup),
        status(QStringLiteral("online"))};
    VeskXmlNode const text = VeskXmlNode::fromString(VeskField::toXml(written).toString());
    QCOMPARE(VeskField::fromXml(blank, text), written);
}

void TestFieldXml::mergingAList()
{
    QList<VeskField> const fields{spin(QStringLiteral("idle"), 100, 0, 1),
                                  nick(10, QStringLiteral("Al")),
                                  spin(QStringLiteral("idle"), 100, 0, 2)};
    QVERIFY(VeskField::fromXml(fields, spin(QStringLiteral("idle"), 9, 0, 9).toXml()).isEmpty());
    QVERIFY(VeskField::fromXml(fields, VeskXmlNode()).isEmpty());

    // Both elements with the id go to the first field with it, in document
    // order; the second field with that id is left as it was. Elements of
    // other names and unknown ids change nothing.
    VeskXmlNode const list = parse(
        "<fieldlist>"
        "<field type='spinbox' max='50' min='0' val='7'><id>idle</id></field>"
        "<other type='lineedit'><id>nick</id><string>No</string></other>"
        "<field type='lineedit'><id>nobody</id><string>No</string></field>"
        "<field type='spinbox' max='80' min='0' val='8'><id>idle</id></field>"
        "<field type='lineedit'><id>nick</id><string>Bo</string></field>"
        "</fieldlist>");
    QList<VeskField> const merged = VeskField::fromXml(fields, list);
    QCOMPARE(merged.size(), 3);
    QCOMPARE(merged.at(0).getIntValue(), 8);
    QCOMPARE(merged.at(0).getSpinBoxMax(), 80);
    QCOMPARE(merged.at(1).getText(), QStringLiteral("Bo"));
    QCOMPARE(merged.at(2), fields.at(2));
    QCOMPARE(fields.at(0).getIntValue(), 1);
    QCOMPARE(fields.at(1).getText(), QStringLiteral("Al"));

    // Many fields, elements in the reverse order: each takes its own.
    QList<VeskField> many;
    VeskXmlNode values(QStringLiteral("fieldlist"));
    for (int i = 0; i < 300; ++i)
        many.append(spin(QStringLiteral("f%1").arg(i), 1000, 0, 0));
    for (int i = 299; i >= 0; --i)
        values.appendChild(spin(QStringLiteral("f%1").arg(i), 1000, 0, 1000 - i).toXml());
    QList<VeskField> const updated = VeskField::fromXml(many, values);
    for (int i = 0; i < 300; ++i)
        QCOMPARE(updated.at(i).getIntValue(), 1000 - i);
}

QTEST_GUILESS_MAIN(TestFieldXml)
#include "tst_fieldxml.moc"
