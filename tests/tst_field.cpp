#include <VeskData>

#include <QtTest/QtTest>

#include <limits>

namespace {

QString const none;
double const notANumber = std::numeric_limits<double>::quiet_NaN();

QString s(char const* text)
{
    return QString::fromUtf8(text);
}

class Target : public VeskPlugin
{
public:
    QList<QList<VeskArg>> calls;
    void press(QList<VeskArg>& args) { calls.append(args); }
    void other(QList<VeskArg>&) {}
};

class Dispatcher : public QObject
{
public:
    bool event(QEvent* e) override
    {
        if (e->type() != VeskCallActionEvent::EventType)
            return QObject::event(e);
        auto* const call = static_cast<VeskCallActionEvent*>(e);
        (call->plugin->*call->method)(call->args);
        return true;
    }
};

// Answers one message of the library in German, as a catalogue installed by
// the application would.
class GermanTranslator : public QTranslator
{
public:
    QString translate(char const* context, char const* source, char const* disambiguation,
                      int) const override
    {
        bool const known = qstrcmp(context, "translation") == 0
                           && qstrcmp(disambiguation, "exception description") == 0
                           && qstrcmp(source, "Field id can't be empty") == 0;
        return known ? s("Die Feldkennung darf nicht leer sein") : QString();
    }
    bool isEmpty() const override { return false; }
};

template<typename F>
QString thrownText(F&& f)
{
    try {
        f();
    } catch (std::runtime_error const& error) {
        return QString::fromUtf8(error.what());
    }
    return s("<nothing thrown>");
}

template<typename T>
QString debugText(T const& value)
{
    QString out;
    {
        QDebug dbg(&out);
        dbg << value;
    }
    return out;
}

VeskXmlNode parse(char const* text)
{
    VeskXmlNode const node = VeskXmlNode::fromString(s(text));
    if (node.isNull())
        qFatal("test XML does not parse: %s", text);
    return node;
}

VeskField combo(QStringList const& ids, char const* selected, QStringList const& labels = {})
{
    return VeskField::comboBox(s("Status"), s("status"), ids, labels, s(selected), none);
}

VeskField spin(char const* id, int max, int min, int value)
{
    return VeskField::spinBox(s("Idle"), s(id), max, min, value, none, none);
}

VeskField line(int maxLength, char const* text = "Al")
{
    return VeskField::lineEdit(s("Nick"), s("nick"), s(text), maxLength, none);
}

VeskField check(bool checked, QStringList const& depends = {})
{
    return VeskField::checkBox(s("Away"), s("autoaway"), checked, none, depends);
}

} // namespace

class TestField : public QObject
{
    Q_OBJECT

private slots:
    void nullField();
    void copyOnWriteAndSharedFlags();
    void limitsPullTheValue();
    void comboBoxSelection();
    void equalityHashAndValue();
    void factoryRefusals();
    void buttonClickPostsItsAction();
    void setFieldValue();
    void debugText();
    void xmlWriter();
    void xmlReader();
    void xmlMerge();
};

void TestField::nullField()
{
    VeskField field;
    QVERIFY(field.isNull());
    QCOMPARE(field.getType(), VeskField::None);
    QVERIFY(!field.getVisible() && field.getId().isEmpty() && field.getLabel().isEmpty());
    QCOMPARE(field.getValue().getType(), VeskArg::None);
    QVERIFY(field == VeskField());
    QVERIFY(field != check(false));

    field.setText(s("x"));
    field.setSpinBoxMax(4);
    field.setVisible(true);
    field.setReadOnly(true);
    field.clicked();
    QVERIFY(field.isNull() && !field.getVisible() && !field.isReadOnly());
}

void TestField::copyOnWriteAndSharedFlags()
{
    VeskField const a = line(10);
    VeskField b = a;
    b.setText(s("changed"));
    QCOMPARE(a.getText(), s("Al"));
    QCOMPARE(b.getText(), s("changed"));

    // The flags are written into the shared record.
    VeskField c = a;
    c.setReadOnly(true);
    c.setPressed(true);
    c.setVisible(false);
    QVERIFY(a.isReadOnly() && a.isPressed() && !a.getVisible());
    QVERIFY(!b.isReadOnly() && b.getVisible());

    // An unchanged value keeps the record shared; a NaN never equals the
    // stored one, so it always detaches.
    VeskField const real = VeskField::doubleSpinBox(s("V"), s("v"), 1.0, 0.0, notANumber, none);
    VeskField sharer = real;
    sharer.setLabel(real.getLabel());
    sharer.setReadOnly(true);
    QVERIFY(real.isReadOnly());
    sharer.setDoubleValue(notANumber);
    sharer.setReadOnly(false);
    QVERIFY(real.isReadOnly());

    VeskField d;
    d = b;
    b = VeskField();
    QCOMPARE(d.getText(), s("changed"));
}

void TestField::limitsPullTheValue()
{
    VeskField field = spin("idle", 10, 0, 5);
    field.setSpinBoxMax(3);
    QCOMPARE(field.getIntValue(), 3);
    field.setSpinBoxMin(4);
    QCOMPARE(field.getIntValue(), 4);
    QCOMPARE(field.getSpinBoxMax(), 3);
    field.setIntValue(100);
    field.setSpinBoxMax(3); // unchanged limit: nothing moves
    QCOMPARE(field.getIntValue(), 100);

    VeskField real = VeskField::doubleSpinBox(s("Z"), s("z"), 2.0, 0.5, 1.0, none);
    real.setDoubleSpinBoxMin(1.5);
    QCOMPARE(real.getDoubleValue(), 1.5);
    real.setDoubleSpinBoxMax(1.25);
    QCOMPARE(real.getDoubleValue(), 1.25);
    QCOMPARE(real.getDoubleSpinBoxMin(), 1.5);
}

void TestField::comboBoxSelection()
{
    QStringList const abc{s("a"), s("b"), s("c")};
    QStringList const labels{s("A"), s("B"), s("C")};
    VeskField field = combo(abc, "b", labels);
    QCOMPARE(field.getSelectedIndex(), 1);
    field.setSelectedIndex(3);
    field.setSelectedIndex(-1);
    field.setSelectedId(s("B"));
    field.setComboBoxItems(abc, labels);
    QCOMPARE(field.getSelectedId(), s("b"));
    QCOMPARE(field.getSelectedLabel(), s("B"));
    field.setSelectedId(s("c"));
    QCOMPARE(field.getSelectedIndex(), 2);
    field.setComboBoxItems(abc, {s("x"), s("y"), s("z")});
    QCOMPARE(field.getSelectedLabel(), s("x"));

    // Without labels the ids serve; an unknown selection picks the first.
    VeskField const plain = combo({s("a"), s("b")}, "b");
    QCOMPARE(plain.getComboBoxLabels(), (QStringList{s("a"), s("b")}));
    QCOMPARE(plain.getSelectedIndex(), 1);
    QCOMPARE(combo(abc, "zz").getSelectedIndex(), 0);
    VeskField const empty = combo({}, "a");
    QVERIFY(empty.getSelectedId().isEmpty() && empty.getSelectedLabel().isEmpty());
    QVERIFY(combo(abc, "c", {s("A")}).getSelectedLabel().isEmpty());
}

void TestField::equalityHashAndValue()
{
    QVERIFY(combo({s("a")}, "a", {s("A")}) == combo({s("a")}, "a", {s("x")}));
    QVERIFY(combo({s("a"), s("b")}, "b") != combo({s("a"), s("b")}, "a"));
    QVERIFY(check(true, {s("x")}) != check(true, {s("y")}));
    QVERIFY(line(10) != line(20));
    QVERIFY(VeskField::textEdit(s("T"), s("t"), s("x"), none)
            == VeskField::textEdit(s("T"), s("t"), s("x"), s("other group")));
    QVERIFY(spin("idle", 10, 0, 5) != spin("idle", 10, 1, 5));
    VeskField relabelled = line(10);
    relabelled.setLabel(s("Nickname"));
    QVERIFY(relabelled != line(10));

    VeskField const idle = spin("idle", 10, 0, 5);
    VeskField const sameId = VeskField::label(s("Idle"), s("idle"), none);
    QVERIFY(idle != sameId);
    QCOMPARE(qHash(idle, 7), qHash(sameId, 7));
    QCOMPARE(qHash(idle, 7), qHash(s("idle"), 7));
    QCOMPARE((QSet<VeskField>{idle, spin("idle", 10, 0, 5), check(true)}).size(), 2);

    Target target;
    auto button = [&target](VeskPluginAction::Method method) {
        return VeskField::button(s("Go"), s("go"), VeskPluginAction(&target, method, {}), none);
    };
    QVERIFY(button(VeskPluginAction::Method(&Target::press))
            != button(VeskPluginAction::Method(&Target::other)));
    QCOMPARE(button(VeskPluginAction::Method(&Target::press)).getValue().getType(), VeskArg::None);

    QByteArray const bytes("\x01\xff", 2);
    QCOMPARE(combo({s("a"), s("b")}, "b").getValue(), VeskArg(s("b")));
    QCOMPARE(check(true).getValue(), VeskArg(true));
    QCOMPARE(spin("idle", 10, 0, 7).getValue(), VeskArg(7));
    QCOMPARE(line(5, "txt").getValue(), VeskArg(s("txt")));
    QCOMPARE(VeskField::image(s("img"), bytes, none).getValue(), VeskArg(bytes));
}

void TestField::factoryRefusals()
{
    QString const id = s("id");
    QString const emptyId = s(": Field id can't be empty");
    QString const below = s(": argument 5: Field value can't be less than field minimum value");

    QCOMPARE(thrownText([&] { VeskField::image(none, QByteArray(), none); }),
             s("VeskField::image: argument 1") + emptyId);
    QCOMPARE(thrownText([&] { VeskField::checkBox(id, s(""), true, none, {}); }),
             s("VeskField::checkButton: argument 2") + emptyId);
    QCOMPARE(thrownText([&] { VeskField::soundEdit(id, none, none, none); }),
             s("VeskField::soundEdit: argument 2") + emptyId);
    // The id is checked first.
    QCOMPARE(thrownText([&] { VeskField::button(id, none, VeskPluginAction(), none); }),
             s("VeskField::button: argument 2") + emptyId);
    QCOMPARE(thrownText([&] { VeskField::doubleSpinBox(id, none, 1.0, 0.0, 9.0, none); }),
             s("VeskField::doubleSpinBox: argument 2") + emptyId);
    QCOMPARE(thrownText([&] { VeskField::button(id, id, VeskPluginAction(), none); }),
             s("VeskField::button: argument 3: VeskPluginAction must be valid "
               "(isValid() must return true)"));

    // A spin box value above the maximum is lowered, one below the minimum
    // refused, so min above max always fails.
    QCOMPARE(VeskField::spinBox(id, id, 100, 1, 500, none, none).getIntValue(), 100);
    QCOMPARE(thrownText([&] { VeskField::spinBox(id, id, 100, 1, 0, none, none); }),
             s("VeskField::spinBox") + below);
    QCOMPARE(thrownText([&] { VeskField::spinBox(id, id, 1, 5, 3, none, none); }),
             s("VeskField::spinBox") + below);
    QCOMPARE(thrownText([&] { VeskField::doubleSpinBox(id, id, 2.0, 0.0, 2.5, none); }),
             s("VeskField::doubleSpinBox: argument 5: Field value can't be greater than field "
               "maximum value"));
    QCOMPARE(thrownText([&] { VeskField::doubleSpinBox(id, id, 3.0, 2.6, 2.5, none); }),
             s("VeskField::doubleSpinBox") + below);

    QCOMPARE(VeskField::dirEdit(id, id, id, none).getMaxTextLength(), 0);

    GermanTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    QString const translated = thrownText([] { VeskField::label(none, none, none); });
    QCoreApplication::removeTranslator(&translator);
    QCOMPARE(translated, s("VeskField::label: argument 2: Die Feldkennung darf nicht leer sein"));
    QCOMPARE(thrownText([] { VeskField::label(none, none, none); }),
             s("VeskField::label: argument 2") + emptyId);
}

void TestField::buttonClickPostsItsAction()
{
    Dispatcher dispatcher;
    VeskCallActionEvent::dispatcher = &dispatcher;
    Target target;
    VeskField button = VeskField::button(
        s("Go"), s("go"), VeskPluginAction(&target, &Target::press, {VeskArg(7)}), none);
    button.clicked();
    check(true).clicked();
    QVERIFY(target.calls.isEmpty());
    QCoreApplication::sendPostedEvents(&dispatcher);
    VeskCallActionEvent::dispatcher = nullptr;
    QCOMPARE(target.calls, QList<QList<VeskArg>>{QList<VeskArg>{VeskArg(7)}});
}

void TestField::setFieldValue()
{
    VeskField number = spin("idle", 10, 0, 3);
    VeskField const before = number;
    QVERIFY(!VeskArg::setFieldValue(number, VeskArg(3)));
    QVERIFY(VeskArg::setFieldValue(number, VeskArg(4)));
    QCOMPARE(number.getIntValue(), 4);
    QCOMPARE(before.getIntValue(), 3);
    QCOMPARE(thrownText([&] { VeskArg::setFieldValue(number, VeskArg(4.0)); }),
             s("VeskArg: cannot convert VeskArg::Double to VeskArg::Int"));
    QCOMPARE(number.getIntValue(), 4);

    VeskField choice = combo({s("a"), s("b"), s("c")}, "a");
    QVERIFY(VeskArg::setFieldValue(choice, VeskArg(s("c"))));
    QCOMPARE(choice.getSelectedIndex(), 2);
    QVERIFY(!VeskArg::setFieldValue(choice, VeskArg(s("c"))));
    QVERIFY(VeskArg::setFieldValue(choice, VeskArg(1)));
    QVERIFY(VeskArg::setFieldValue(choice, VeskArg(3))); // called, then ignored
    QCOMPARE(choice.getSelectedId(), s("b"));
    for (VeskArg const& ignored : {VeskArg(true), VeskArg(1.0), VeskArg()})
        QVERIFY(!VeskArg::setFieldValue(choice, ignored));
    QCOMPARE(choice.getSelectedIndex(), 1);

    Target target;
    VeskField button = VeskField::button(s("Go"), s("go"),
                                         VeskPluginAction(&target, &Target::press), none);
    VeskField null;
    for (VeskArg const& any : {VeskArg(1), VeskArg(s("x")), VeskArg()})
        QVERIFY(!VeskArg::setFieldValue(button, any) && !VeskArg::setFieldValue(null, any));

    VeskField box = check(false);
    QCOMPARE(thrownText([&] { VeskArg::setFieldValue(box, VeskArg(s("true"))); }),
             s("VeskArg: cannot convert VeskArg::String to VeskArg::Bool"));
    QVERIFY(VeskArg::setFieldValue(box, VeskArg(true)) && box.isChecked());
    VeskField edit = line(10);
    QVERIFY(VeskArg::setFieldValue(edit, VeskArg(s("Bo"))));
    QCOMPARE(edit.getText(), s("Bo"));
}

void TestField::debugText()
{
    QCOMPARE(::debugText(check(true)),
             s("VeskField(id: \"autoaway\" type: CheckBox checked: true) "));
    QCOMPARE(::debugText(spin("idle", 60, 1, 5)),
             s("VeskField(id: \"idle\" type: SpinBox max: 60 min: 1 val: 5) "));
    QCOMPARE(::debugText(VeskField::passwordEdit(none, s("pass"), s("s3cret"), 8, none)),
             s("VeskField(id: \"pass\" type: PasswordEdit password: masked) "));
    QCOMPARE(::debugText(VeskField::image(s("avatar"), QByteArray(512, 'x'), none)),
             s("VeskField(id: \"avatar\" type: Image size: 512) "));
    QCOMPARE(::debugText(combo({s("online"), s("away")}, "away", {s("Online"), s("Away")})),
             s("VeskField(id: \"status\" type: ComboBox option ids: (\"online\", \"away\")  "
               "option labels:  (\"Online\", \"Away\")  selected:  \"away\" ) "));
    QCOMPARE(::debugText(combo({}, "")),
             s("VeskField(id: \"status\" type: ComboBox option ids: ()  option labels:  ()  "
               "selected:  \"\" ) "));
    QCOMPARE(::debugText(VeskField()), s("VeskField(id: \"\" type: None) "));
    QCOMPARE(::debugText(VeskField::doubleSpinBox(none, s("d"), 2.5, 0.0, 1.0, none)),
             s("VeskField(id: \"d\" type: DoubleSpinBox max: 2.5 min: 0 val: 1) "));
    // Quoted, never escaped; a text edit has no maximum length.
    QCOMPARE(::debugText(line(20, "say \"hi\"")),
             s("VeskField(id: \"nick\" type: LineEdit text: \"say \"hi\"\" maxtextlength: 20) "));
    QCOMPARE(::debugText(VeskField::textEdit(none, s("t"), s("x"), none)),
             s("VeskField(id: \"t\" type: TextEdit text: \"x\") "));

    QList<VeskField> const fields{check(true), VeskField()};
    QCOMPARE(::debugText(fields),
             ::debugText(fields.at(0)) + ::debugText(fields.at(1)) + s(" "));
    QCOMPARE(::debugText(QList<VeskField>()), s(" "));
}

void TestField::xmlWriter()
{
    QList<VeskField> const page{check(true), spin("idle", 60, 1, 5),
                                combo({s("online"), s("away")}, "away", {s("Online"), s("Away")})};
    QCOMPARE(VeskField::toXml(page).toString(),
             s("<fieldlist>"
               "<field checked=\"1\" type=\"checkbox\"><id>autoaway</id></field>"
               "<field max=\"60\" min=\"1\" type=\"spinbox\" val=\"5\"><id>idle</id></field>"
               "<field type=\"combobox\"><id>status</id><item id=\"online\">Online</item>"
               "<item id=\"away\" selected=\"1\">Away</item></field>"
               "</fieldlist>"));

    Target target;
    auto text = [](VeskField const& field) { return field.toXml().toString(); };
    QCOMPARE(text(VeskField::passwordEdit(none, s("pass"), s("s3cret"), 16, none)),
             s("<field maxlength=\"16\" type=\"lineedit\"><id>pass</id>"
               "<string>s3cret</string></field>"));
    QCOMPARE(text(VeskField::button(s("Go"), s("go"), VeskPluginAction(&target, &Target::press),
                                    none)),
             s("<field><id>go</id></field>"));
    QCOMPARE(text(VeskField::image(s("img"), QByteArray("\x00\xab\x10", 3), none)),
             s("<field type=\"image\"><id>img</id>00ab10</field>"));
    QCOMPARE(text(VeskField::doubleSpinBox(none, s("z"), 2.5, -1.0, 0.125, none)),
             s("<field max=\"2.5\" min=\"-1\" type=\"doublespinbox\" val=\"0.125\">"
               "<id>z</id></field>"));
    QCOMPARE(text(VeskField()), s("<field type=\"none\"><id/></field>"));
    // An option without a label is written with its id as the text.
    QCOMPARE(text(combo({s("a"), s("b")}, "b", {s("A")})),
             s("<field type=\"combobox\"><id>status</id><item id=\"a\">A</item>"
               "<item id=\"b\" selected=\"1\">b</item></field>"));
}

void TestField::xmlReader()
{
    VeskXmlNode const idle = spin("idle", 60, 1, 5).toXml();
    VeskField field = spin("idle", 10, 0, 0);
    VeskField const before = field;
    field.fromXml(idle);
    QCOMPARE(field, spin("idle", 60, 1, 5));
    QCOMPARE(before.getSpinBoxMax(), 10);
    VeskField other = spin("busy", 10, 0, 0);
    other.fromXml(idle);
    QCOMPARE(other.getSpinBoxMax(), 10);
    VeskField real = VeskField::doubleSpinBox(none, s("idle"), 10, 0, 0, none);
    real.fromXml(idle);
    QCOMPARE(real.getDoubleSpinBoxMax(), 10.0);
    field.fromXml(parse("<field type='spinbox' max='3' min='2' val='9'><id>idle</id></field>"));
    QCOMPARE(field.getIntValue(), 9);

    VeskField box = check(true);
    box.fromXml(parse("<field type='checkbox' checked='true'><id>autoaway</id></field>"));
    QVERIFY(!box.isChecked());

    // Without "maxlength", or with 0, the stored maximum stays.
    VeskField edit = line(12);
    edit.fromXml(parse("<field type='lineedit'><id>nick</id><string>Bo</string></field>"));
    QCOMPARE(edit.getText(), s("Bo"));
    edit.fromXml(parse("<field type='lineedit' maxlength='0'><id>nick</id></field>"));
    QCOMPARE(edit.getMaxTextLength(), 12);
    QVERIFY(edit.getText().isEmpty());
    edit.fromXml(parse("<field type='lineedit'><id></id><string>Zed</string></field>"));
    QVERIFY(edit.getText().isEmpty());
    VeskField pass = VeskField::passwordEdit(none, s("nick"), none, 8, none);
    pass.fromXml(line(0, "secret").toXml());
    QCOMPARE(pass.getText(), s("secret"));

    // The paired combo-box form with a "selectedid"; a later selected item
    // wins, and items without text or id are skipped.
    VeskField choice = combo({s("online")}, "online");
    choice.fromXml(parse("<field type='combobox' selectedid='b'><id>status</id>"
                         "<string_id>a</string_id><string_label>A</string_label>"
                         "<string_id>b</string_id><string_label>B</string_label>"
                         "<item id='c'>C</item><item id='d'/><item>E</item></field>"));
    QCOMPARE(choice.getComboBoxIds(), (QStringList{s("a"), s("b"), s("c")}));
    QCOMPARE(choice.getComboBoxLabels(), (QStringList{s("A"), s("B"), s("C")}));
    QCOMPARE(choice.getSelectedId(), s("b"));
    choice.fromXml(parse("<field type='combobox' selectedid='a'><id>status</id>"
                         "<string_id>a</string_id><item id='c' selected='1'>C</item></field>"));
    QCOMPARE(choice.getSelectedId(), s("c"));

    // What the writer wrote reads back.
    QList<VeskField> const written{
        VeskField::radioButton(none, s("r"), true, none, {}), line(40, "new nick"),
        VeskField::soundEdit(none, s("snd"), s("/a.wav"), none),
        VeskField::textEdit(none, s("t"), s("two\nlines"), none), spin("idle", 100, -100, -42),
        VeskField::doubleSpinBox(none, s("d"), 1e6, -0.5, 1.0 / 3, none),
        combo({s("online"), s("away")}, "away", {s("Online"), s("Away")})};
    QList<VeskField> const blank{
        VeskField::radioButton(none, s("r"), false, none, {}), line(5, ""),
        VeskField::soundEdit(none, s("snd"), none, none),
        VeskField::textEdit(none, s("t"), none, none),
        spin("idle", 0, 0, 0), VeskField::doubleSpinBox(none, s("d"), 0, 0, 0, none),
        combo({s("online"), s("away")}, "online", {s("Online"), s("Away")})};
    VeskXmlNode const text = VeskXmlNode::fromString(VeskField::toXml(written).toString());
    QCOMPARE(VeskField::fromXml(blank, text), written);
}

void TestField::xmlMerge()
{
    QList<VeskField> const fields{spin("idle", 100, 0, 1), line(10), spin("idle", 100, 0, 2)};
    QVERIFY(VeskField::fromXml(fields, spin("idle", 9, 0, 9).toXml()).isEmpty());

    // Both elements with the id go to the first field with it, in document
    // order; the second field with that id keeps its value. Other element
    // names and unknown ids change nothing.
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
    QCOMPARE(merged.at(0), spin("idle", 80, 0, 8));
    QCOMPARE(merged.at(1).getText(), s("Bo"));
    QCOMPARE(merged.at(2), fields.at(2));
    QCOMPARE(fields.at(0).getIntValue(), 1);
    QCOMPARE(fields.at(1).getText(), s("Al"));

    // Many fields, their elements in reverse order: each takes its own.
    QList<VeskField> many;
    VeskXmlNode values(s("fieldlist"));
    auto numbered = [](int i, int value) {
        return VeskField::spinBox(none, QString::number(i), 1000, 0, value, none, none);
    };
    for (int i = 0; i < 300; ++i)
        many.append(numbered(i, 0));
    for (int i = 299; i >= 0; --i)
        values.appendChild(numbered(i, 1000 - i).toXml());
    QList<VeskField> const updated = VeskField::fromXml(many, values);
    for (int i = 0; i < 300; ++i)
        QCOMPARE(updated.at(i).getIntValue(), 1000 - i);
}

QTEST_GUILESS_MAIN(TestField)
#include "tst_field.moc"
