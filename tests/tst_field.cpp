#include <VeskData>

#include <QtTest/QtTest>

#include <functional>
#include <limits>

#include "vesktest.h"
#include "vesktestaction.h"

namespace {

QString const none;

QString s(char const* text)
{
    return QString::fromUtf8(text);
}

// Answers one message of the library in German, as an installed catalogue would.
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
    void nullAndSharing();
    void limitsAndSelection();
    void equalityHashAndValue();
    void factoryRefusals();
    void setFieldValueAndClick();
    void setFieldValueEveryKind_data();
    void setFieldValueEveryKind();
    void everySetterCopiesOnWrite();
    void debugTextEveryKind_data();
    void debugTextEveryKind();
    void debugAndXmlTexts();
    void xmlFormEveryKind_data();
    void xmlFormEveryKind();
    void xmlReader();
    void xmlMerge();
};

void TestField::nullAndSharing()
{
    VeskField null;
    QVERIFY(null.isNull() && null == VeskField() && null != check(false));
    null.setText(s("x"));
    null.setReadOnly(true);
    null.clicked();
    QVERIFY(null.isNull() && null.getText().isEmpty() && !null.isReadOnly());
    // Every reading gives its empty value.
    for (QString const& text : {null.getLabel(), null.getId(), null.getGroup(), null.getSuffix(),
                                 null.getText(), null.getSelectedId(), null.getSelectedLabel()})
        QVERIFY(text.isNull());
    QVERIFY(null.getDepends().isEmpty() && null.getComboBoxIds().isEmpty() && null.getComboBoxLabels().isEmpty());
    QVERIFY(null.getImgData().isNull() && !null.getVisible() && !null.isPressed() && !null.isChecked());
    for (int number : {null.getIntValue(), null.getSelectedIndex(), null.getSpinBoxMax(), null.getSpinBoxMin(),
                       null.getMaxIntValue(), null.getMinIntValue(), null.getMaxTextLength()})
        QCOMPARE(number, 0);
    QVERIFY(null.getDoubleValue() == 0.0 && null.getDoubleSpinBoxMax() == 0.0 && null.getDoubleSpinBoxMin() == 0.0);

    VeskField const a = line(10);
    VeskField b = a;
    b.setText(s("changed"));
    QCOMPARE(a.getText(), s("Al"));
    // The flags go into the shared record, which an unchanged value leaves shared.
    VeskField c = a;
    c.setLabel(a.getLabel());
    c.setReadOnly(true);
    c.setPressed(true);
    c.setVisible(false);
    QVERIFY(a.isReadOnly() && a.isPressed() && !a.getVisible());
    QVERIFY(!b.isReadOnly() && b.getVisible());

    VeskField d;
    d = b;
    b = VeskField();
    QCOMPARE(d.getText(), s("changed"));
}

void TestField::limitsAndSelection()
{
    VeskField number = spin("idle", 10, 0, 5);
    number.setSpinBoxMax(3);
    QCOMPARE(number.getIntValue(), 3);
    number.setSpinBoxMin(4);
    QCOMPARE(number.getIntValue(), 4);
    number.setIntValue(100);
    number.setSpinBoxMax(3); // unchanged limit: nothing moves
    QCOMPARE(number.getIntValue(), 100);
    QVERIFY(number.getMaxIntValue() == 3 && number.getMinIntValue() == 4);
    QCOMPARE(check(true, {s("a"), s("b")}).getDepends(), (QStringList{s("a"), s("b")}));
    VeskField real = VeskField::doubleSpinBox(s("Z"), s("z"), 2.0, 0.5, 1.0, none);
    real.setDoubleSpinBoxMin(1.5);
    real.setDoubleSpinBoxMax(1.25);
    QCOMPARE(real.getDoubleValue(), 1.25);

    // Bad indexes, unknown ids and the same items keep the selection.
    QStringList const abc{s("a"), s("b"), s("c")};
    VeskField choice = combo(abc, "b", {s("A"), s("B"), s("C")});
    choice.setSelectedIndex(3);
    choice.setSelectedIndex(-1);
    choice.setSelectedId(s("B"));
    choice.setComboBoxItems(abc, {s("A"), s("B"), s("C")});
    QCOMPARE(choice.getSelectedLabel(), s("B"));
    choice.setComboBoxItems(abc, {s("x"), s("y"), s("z")});
    QCOMPARE(choice.getSelectedId(), s("a"));
    QVERIFY(combo(abc, "c", {s("A")}).getSelectedLabel().isEmpty());
    QCOMPARE(combo(abc, "c").getSelectedLabel(), s("c")); // no labels: the ids serve
    QCOMPARE(combo(abc, "z").getSelectedId(), s("a"));    // an unknown selection: the first
}

void TestField::equalityHashAndValue()
{
    // Each row makes two fields apart, then changes one member of the second: a member
    // that counts makes them unequal, the others leave them equal.
    using Change = std::function<void(VeskField&)>;
    RecordingPlugin target;
    VeskPluginAction const press(&target, &RecordingPlugin::press);
    VeskPluginAction const other(&target, &RecordingPlugin::other);
    double const nan = std::numeric_limits<double>::quiet_NaN();
    struct Row
    {
        char const* name;
        std::function<VeskField()> make;
        Change change;
        bool counts;
    };
    auto const text = [](char const* t) { return Change([t](VeskField& f) { f.setText(s(t)); }); };
    auto const length = [](int n) { return Change([n](VeskField& f) { f.setMaxTextLength(n); }); };
    auto const dir = [] { return VeskField::dirEdit(s("D"), s("d"), s("/a"), none); };
    auto const password = [] { return VeskField::passwordEdit(s("P"), s("p"), s("x"), 5, none); };
    auto const textEdit = [] { return VeskField::textEdit(s("T"), s("t"), s("x"), none); };
    auto const choice = [] { return combo({s("a"), s("b")}, "a", {s("A"), s("B")}); };
    auto const radio = [] { return VeskField::radioButton(s("R"), s("r"), false, none, {}); };
    auto const number = [] { return spin("idle", 10, 0, 5); };
    auto const real = [] { return VeskField::doubleSpinBox(s("Z"), s("z"), 2.0, 0.5, 1.0, none); };
    auto const button = [&] { return VeskField::button(s("Go"), s("go"), press, none); };
    Row const rows[] = {
        {"label", [] { return line(10); }, [](VeskField& f) { f.setLabel(s("Other")); }, true},
        {"id", [] { return line(10); },
         [](VeskField& f) { f = VeskField::lineEdit(s("Nick"), s("nick2"), s("Al"), 10, none); }, true},
        {"kind", [] { return VeskField::label(s("Go"), s("go"), none); },
         [&](VeskField& f) { f = VeskField::button(s("Go"), s("go"), press, none); }, true},
        {"group", [] { return line(10); },
         [](VeskField& f) { f = VeskField::lineEdit(s("Nick"), s("nick"), s("Al"), 10, s("g")); }, false},
        {"flags", [] { return line(10); },
         [](VeskField& f) { f.setReadOnly(true); f.setVisible(false); f.setPressed(true); }, false},
        {"lineEdit text", [] { return line(10); }, text("Bo"), true},
        {"lineEdit maxlength", [] { return line(10); }, length(11), true},
        {"dirEdit path", dir, text("/b"), true},
        {"dirEdit maxlength", dir, length(3), true},
        {"fileEdit path", [] { return VeskField::fileEdit(s("F"), s("f"), s("/a"), none); },
         text("/b"), true},
        {"soundEdit path", [] { return VeskField::soundEdit(s("S"), s("s"), s("/a"), none); },
         text("/b"), true},
        {"passwordEdit text", password, text("y"), true},
        {"passwordEdit maxlength", password, length(6), true},
        {"textEdit text", textEdit, text("y"), true},
        {"textEdit maxlength", textEdit, length(6), false},
        {"comboBox selection", choice, [](VeskField& f) { f.setSelectedIndex(1); }, true},
        {"comboBox ids", choice, [](VeskField& f) { f.setComboBoxItems({s("a"), s("c")}, {}); }, true},
        {"comboBox labels", choice,
         [](VeskField& f) { f.setComboBoxItems({s("a"), s("b")}, {s("x"), s("y")}); }, false},
        {"checkBox checked", [] { return check(false); }, [](VeskField& f) { f.setChecked(true); }, true},
        {"checkBox depends", [] { return check(true, {s("x")}); },
         [](VeskField& f) { f = check(true, {s("y")}); }, true},
        {"radioButton checked", radio, [](VeskField& f) { f.setChecked(true); }, true},
        {"radioButton depends", radio,
         [](VeskField& f) { f = VeskField::radioButton(s("R"), s("r"), false, none, {s("x")}); }, true},
        {"spinBox value", number, [](VeskField& f) { f.setIntValue(6); }, true},
        {"spinBox max", number, [](VeskField& f) { f.setSpinBoxMax(11); }, true},
        {"spinBox min", number, [](VeskField& f) { f.setSpinBoxMin(1); }, true},
        {"spinBox suffix", number,
         [](VeskField& f) { f = VeskField::spinBox(s("Idle"), s("idle"), 10, 0, 5, none, s("s")); }, false},
        {"doubleSpinBox value", real, [](VeskField& f) { f.setDoubleValue(1.5); }, true},
        {"doubleSpinBox max", real, [](VeskField& f) { f.setDoubleSpinBoxMax(1.75); }, true},
        {"doubleSpinBox min", real, [](VeskField& f) { f.setDoubleSpinBoxMin(0.75); }, true},
        {"doubleSpinBox NaN", [&] { return VeskField::doubleSpinBox(s("Z"), s("z"), 2.0, 0.5, nan, none); },
         [](VeskField&) {}, true},
        {"image data", [] { return VeskField::image(s("i"), QByteArray("a\0b", 3), none); },
         [](VeskField& f) { f.setImgData(QByteArray("a\0c", 3)); }, true},
        {"button action", button,
         [&](VeskField& f) { f = VeskField::button(s("Go"), s("go"), other, none); }, true},
        {"label only", [] { return VeskField::label(s("A"), s("l"), none); }, [](VeskField&) {}, false},
    };
    for (Row const& row : rows) {
        VeskField const first = row.make();
        VeskField second = row.make();
        row.change(second);
        QVERIFY2((first == second) != row.counts, row.name);
        QVERIFY2((first != second) == row.counts, row.name);
    }

    // The hash follows the id only; a set keeps one of equal fields.
    VeskField const sameId = VeskField::label(s("Idle"), s("idle"), none);
    QCOMPARE(qHash(spin("idle", 10, 0, 5), 7), qHash(sameId, 7));
    QCOMPARE((QSet<VeskField>{sameId, spin("idle", 10, 0, 5), spin("idle", 10, 0, 5)}).size(), 2);
    QCOMPARE(combo({s("a"), s("b")}, "b").getValue(), VeskArg(s("b")));
    // A button and a null field have no value.
    QCOMPARE(button().getValue().getType(), VeskArg::None);
    QCOMPARE(VeskField().getValue().getType(), VeskArg::None);
}

void TestField::factoryRefusals()
{
    QString const id = s("id");
    QString const emptyId = s(": Field id can't be empty");
    // Every factory refuses an empty id, which is its second argument but for an image's.
    RecordingPlugin target;
    VeskPluginAction const action(&target, &RecordingPlugin::press);
    QPair<char const*, std::function<void()>> const emptyIds[] = {
        {"label", [&] { VeskField::label(id, none, none); }},
        {"button", [&] { VeskField::button(id, none, action, none); }},
        {"comboBox", [&] { VeskField::comboBox(id, none, {id}, {}, id, none); }},
        {"spinBox", [&] { VeskField::spinBox(id, none, 1, 0, 0, none, none); }},
        {"doubleSpinBox", [&] { VeskField::doubleSpinBox(id, none, 1, 0, 0, none); }},
        {"radioButton", [&] { VeskField::radioButton(id, none, true, none, {}); }},
        {"lineEdit", [&] { VeskField::lineEdit(id, none, id, 0, none); }},
        {"passwordEdit", [&] { VeskField::passwordEdit(id, none, id, 0, none); }},
        {"textEdit", [&] { VeskField::textEdit(id, none, id, none); }},
        {"dirEdit", [&] { VeskField::dirEdit(id, none, id, none); }},
        {"fileEdit", [&] { VeskField::fileEdit(id, none, id, none); }},
        {"soundEdit", [&] { VeskField::soundEdit(id, none, id, none); }},
    };
    // No check on a maximum length: zero and negative ones are stored as given.
    for (int const length : {0, -1, std::numeric_limits<int>::min()}) {
        QCOMPARE(line(length).getMaxTextLength(), length);
        QCOMPARE(VeskField::passwordEdit(id, id, id, length, none).getMaxTextLength(), length);
    }
    for (auto const& make : emptyIds)
        QCOMPARE(thrownText(make.second), s("VeskField::") + s(make.first) + s(": argument 2") + emptyId);
    QCOMPARE(thrownText([&] { VeskField::image(none, QByteArray(), none); }),
             s("VeskField::image: argument 1") + emptyId);
    QCOMPARE(thrownText([&] { VeskField::checkBox(id, none, true, none, {}); }),
             s("VeskField::checkButton: argument 2") + emptyId);
    // The id is checked before the action.
    QCOMPARE(thrownText([&] { VeskField::button(id, none, VeskPluginAction(), none); }),
             s("VeskField::button: argument 2") + emptyId);
    QCOMPARE(thrownText([&] { VeskField::button(id, id, VeskPluginAction(), none); }),
             s("VeskField::button: argument 3: VeskPluginAction must be valid "
               "(isValid() must return true)"));

    // A value above the maximum is lowered, so min above max always fails.
    QCOMPARE(VeskField::spinBox(id, id, 100, 1, 500, none, none).getIntValue(), 100);
    QCOMPARE(thrownText([&] { VeskField::spinBox(id, id, 1, 5, 10, none, none); }),
             s("VeskField::spinBox: argument 5: Field value can't be less than field minimum "
               "value"));
    QCOMPARE(thrownText([&] { VeskField::doubleSpinBox(id, id, 2.0, 0.0, 2.5, none); }),
             s("VeskField::doubleSpinBox: argument 5: Field value can't be greater than field "
               "maximum value"));
    QCOMPARE(thrownText([&] { VeskField::doubleSpinBox(id, id, 2.0, 1.0, 0.5, none); }),
             s("VeskField::doubleSpinBox: argument 5: Field value can't be less than field "
               "minimum value"));
    // The bounds themselves are accepted.
    QCOMPARE(VeskField::spinBox(id, id, 5, 5, 5, none, none).getIntValue(), 5);
    QCOMPARE(VeskField::doubleSpinBox(id, id, 0.5, -0.5, -0.5, none).getDoubleValue(), -0.5);

    GermanTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    QString const translated = thrownText([] { VeskField::label(none, none, none); });
    QCoreApplication::removeTranslator(&translator);
    QCOMPARE(translated, s("VeskField::label: argument 2: Die Feldkennung darf nicht leer sein"));
}

void TestField::setFieldValueAndClick()
{
    VeskField number = spin("idle", 10, 0, 3);
    QVERIFY(!VeskArg::setFieldValue(number, VeskArg(3)));
    QVERIFY(VeskArg::setFieldValue(number, VeskArg(4)));
    QCOMPARE(thrownText([&] { VeskArg::setFieldValue(number, VeskArg(5.0)); }),
             s("VeskArg: cannot convert VeskArg::Double to VeskArg::Int"));
    QCOMPARE(number.getIntValue(), 4);
    VeskField box = check(false);
    QVERIFY(VeskArg::setFieldValue(box, VeskArg(true)) && box.isChecked());

    // A combo box takes an id or an index; a button or null field takes nothing.
    VeskField choice = combo({s("a"), s("b"), s("c")}, "a");
    QVERIFY(VeskArg::setFieldValue(choice, VeskArg(s("c"))));
    QVERIFY(!VeskArg::setFieldValue(choice, VeskArg(s("c"))));
    QVERIFY(VeskArg::setFieldValue(choice, VeskArg(1)));
    QVERIFY(VeskArg::setFieldValue(choice, VeskArg(3))); // called, then ignored
    QCOMPARE(choice.getSelectedId(), s("b"));
    RecordingPlugin target;
    VeskField button = VeskField::button(
        s("Go"), s("go"), VeskPluginAction(&target, &RecordingPlugin::press, {VeskArg(7)}), none);
    VeskField null;
    for (VeskArg const& any : {VeskArg(false), VeskArg(2.0), VeskArg()}) {
        QVERIFY(!VeskArg::setFieldValue(choice, any) && !VeskArg::setFieldValue(button, any));
        QVERIFY(!VeskArg::setFieldValue(null, any));
    }

    // A click posts the action rather than calling it.
    CallDispatcher dispatcher;
    VeskCallActionEvent::dispatcher = &dispatcher;
    button.clicked();
    check(true).clicked();
    QVERIFY(target.calls.isEmpty());
    QCoreApplication::sendPostedEvents(&dispatcher);
    VeskCallActionEvent::dispatcher = nullptr;
    QCOMPARE(target.calls, QList<QList<VeskArg>>{QList<VeskArg>{VeskArg(7)}});
}

void TestField::setFieldValueEveryKind_data()
{
    QTest::addColumn<VeskField>("field");
    QTest::addColumn<VeskArg>("value");
    QByteArray const png("\x89PNG", 4);
    QTest::newRow("label") << VeskField::label(s("A"), s("l"), none) << VeskArg(s("B"));
    QTest::newRow("image") << VeskField::image(s("i"), png, none) << VeskArg(QByteArray("GIF"));
    QTest::newRow("comboBox") << combo({s("a"), s("b")}, "a", {s("A"), s("B")}) << VeskArg(s("b"));
    QTest::newRow("spinBox") << spin("idle", 10, 0, 3) << VeskArg(-4);
    QTest::newRow("doubleSpinBox") << VeskField::doubleSpinBox(s("Z"), s("z"), 2.0, 0.5, 1.0, none)
                                   << VeskArg(1.5);
    QTest::newRow("radioButton") << VeskField::radioButton(s("R"), s("r"), true, none, {})
                                 << VeskArg(false);
    QTest::newRow("checkBox") << check(false) << VeskArg(true);
    QTest::newRow("lineEdit") << line(10) << VeskArg(s("Bo"));
    QTest::newRow("passwordEdit") << VeskField::passwordEdit(s("P"), s("p"), s("x"), 5, none)
                                  << VeskArg(s("secret"));
    QTest::newRow("textEdit") << VeskField::textEdit(s("T"), s("t"), s("x"), none) << VeskArg(s(""));
    QTest::newRow("dirEdit") << VeskField::dirEdit(s("D"), s("d"), s("/a"), none) << VeskArg(s("/b"));
    QTest::newRow("fileEdit") << VeskField::fileEdit(s("F"), s("f"), s("/a"), none) << VeskArg(s("/f"));
    QTest::newRow("soundEdit") << VeskField::soundEdit(s("S"), s("s"), s("/a"), none)
                               << VeskArg(s("/s"));
}

void TestField::setFieldValueEveryKind()
{
    QFETCH(VeskField, field);
    QFETCH(VeskArg, value);
    VeskField const before = field;
    VeskArg const old = field.getValue();
    QVERIFY(old != value);
    QVERIFY(VeskArg::setFieldValue(field, value));
    QCOMPARE(field.getValue(), value);
    QVERIFY(!VeskArg::setFieldValue(field, value)); // unchanged: reported as such
    QCOMPARE(before.getValue(), old);                // a copy keeps its value
    QVERIFY(before != field);
}

void TestField::everySetterCopiesOnWrite()
{
    // Each setter changes one member; probe reads it. A copy taken before the change keeps
    // the old member, except for the three flags that change every copy in place.
    struct Row
    {
        char const* name;
        VeskField field;
        std::function<void(VeskField&)> change;
        std::function<QVariant(VeskField const&)> probe;
        bool inPlace;
    };
    VeskField const number =
        VeskField::spinBox(s("Idle"), s("idle"), 10, 0, 5, s("Away"), s("min"));
    VeskField const real = VeskField::doubleSpinBox(s("Z"), s("z"), 2.0, 0.5, 1.0, none);
    VeskField const choice = combo({s("a"), s("b"), s("c")}, "a");
    VeskField const image = VeskField::image(s("i"), QByteArray("PNG"), none);
    Row const rows[] = {
        {"setLabel", line(10), [](VeskField& f) { f.setLabel(s("Nickname")); },
         [](VeskField const& f) { return QVariant(f.getLabel()); }, false},
        {"setText", line(10), [](VeskField& f) { f.setText(s("Bo")); },
         [](VeskField const& f) { return QVariant(f.getText()); }, false},
        {"setImgData", image, [](VeskField& f) { f.setImgData(QByteArray("GIF")); },
         [](VeskField const& f) { return QVariant(f.getImgData()); }, false},
        {"setMaxTextLength", line(10), [](VeskField& f) { f.setMaxTextLength(20); },
         [](VeskField const& f) { return QVariant(f.getMaxTextLength()); }, false},
        {"setIntValue", number, [](VeskField& f) { f.setIntValue(6); },
         [](VeskField const& f) { return QVariant(f.getIntValue()); }, false},
        {"setSpinBoxMin", number, [](VeskField& f) { f.setSpinBoxMin(2); },
         [](VeskField const& f) { return QVariant(f.getSpinBoxMin()); }, false},
        {"setSpinBoxMax", number, [](VeskField& f) { f.setSpinBoxMax(8); },
         [](VeskField const& f) { return QVariant(f.getSpinBoxMax()); }, false},
        {"setDoubleValue", real, [](VeskField& f) { f.setDoubleValue(1.5); },
         [](VeskField const& f) { return QVariant(f.getDoubleValue()); }, false},
        {"setDoubleSpinBoxMin", real, [](VeskField& f) { f.setDoubleSpinBoxMin(0.75); },
         [](VeskField const& f) { return QVariant(f.getDoubleSpinBoxMin()); }, false},
        {"setDoubleSpinBoxMax", real, [](VeskField& f) { f.setDoubleSpinBoxMax(1.75); },
         [](VeskField const& f) { return QVariant(f.getDoubleSpinBoxMax()); }, false},
        {"setChecked", check(false, {s("idle")}), [](VeskField& f) { f.setChecked(true); },
         [](VeskField const& f) { return QVariant(f.isChecked()); }, false},
        {"setComboBoxItems", choice,
         [](VeskField& f) { f.setComboBoxItems({s("x"), s("y")}, {s("X"), s("Y")}); },
         [](VeskField const& f) { return QVariant(f.getComboBoxIds() + f.getComboBoxLabels()); },
         false},
        {"setSelectedIndex", choice, [](VeskField& f) { f.setSelectedIndex(2); },
         [](VeskField const& f) { return QVariant(f.getSelectedIndex()); }, false},
        {"setSelectedId", choice, [](VeskField& f) { f.setSelectedId(s("b")); },
         [](VeskField const& f) { return QVariant(f.getSelectedId()); }, false},
        {"setVisible", line(10), [](VeskField& f) { f.setVisible(false); },
         [](VeskField const& f) { return QVariant(f.getVisible()); }, true},
        {"setReadOnly", line(10), [](VeskField& f) { f.setReadOnly(true); },
         [](VeskField const& f) { return QVariant(f.isReadOnly()); }, true},
        {"setPressed", line(10), [](VeskField& f) { f.setPressed(true); },
         [](VeskField const& f) { return QVariant(f.isPressed()); }, true},
    };
    for (Row const& row : rows) {
        VeskField const original = row.field;
        VeskField changed = original;
        QVariant const before = row.probe(original);
        row.change(changed);
        QVERIFY2(row.probe(changed) != before, row.name);
        QVERIFY2((row.probe(original) == before) != row.inPlace, row.name);
        // The private copy keeps every member the setter does not write.
        QVERIFY2(changed.getId() == original.getId() && changed.getGroup() == original.getGroup()
                     && changed.getSuffix() == original.getSuffix()
                     && changed.getDepends() == original.getDepends(),
                 row.name);
        VeskField null; // every setter leaves a null field null
        row.change(null);
        QVERIFY2(null.isNull() && null == VeskField(), row.name);
    }
}

void TestField::debugTextEveryKind_data()
{
    QTest::addColumn<VeskField>("field");
    QTest::addColumn<QString>("text"); // between "type: " and the closing parenthesis
    RecordingPlugin target;
    VeskPluginAction const go(&target, &RecordingPlugin::press);
    QTest::newRow("none") << VeskField() << s("None");
    QTest::newRow("comboBox")
        << combo({s("online"), s("away")}, "away", {s("Online"), s("Away")})
        << s("ComboBox option ids: (\"online\", \"away\")  option labels:  (\"Online\", "
             "\"Away\")  selected:  \"away\" ");
    QTest::newRow("checkBox") << check(true) << s("CheckBox checked: true");
    QTest::newRow("radioButton") << VeskField::radioButton(s("R"), s("id"), false, none, {})
                                 << s("RadioButton checked: false");
    // Quoted, never escaped.
    QTest::newRow("lineEdit") << line(20, "say \"hi\"")
                              << s("LineEdit text: \"say \"hi\"\" maxtextlength: 20");
    QTest::newRow("dirEdit") << VeskField::dirEdit(s("D"), s("id"), s("/d"), none)
                             << s("DirEdit path: \"/d\"");
    QTest::newRow("fileEdit") << VeskField::fileEdit(s("F"), s("id"), s("/f"), none)
                              << s("FileEdit path: \"/f\"");
    QTest::newRow("soundEdit") << VeskField::soundEdit(s("S"), s("id"), s("/s"), none)
                               << s("SoundEdit path: \"/s\"");
    QTest::newRow("passwordEdit") << VeskField::passwordEdit(none, s("id"), s("s3cret"), 8, none)
                                  << s("PasswordEdit password: masked");
    QTest::newRow("textEdit") << VeskField::textEdit(s("T"), s("id"), s("long"), none)
                              << s("TextEdit text: \"long\"");
    QTest::newRow("spinBox") << spin("id", 60, -1, 5) << s("SpinBox max: 60 min: -1 val: 5");
    QTest::newRow("doubleSpinBox") << VeskField::doubleSpinBox(s("Z"), s("id"), 60.0, 0.25, 2.5, none)
                                   << s("DoubleSpinBox max: 60 min: 0.25 val: 2.5");
    QTest::newRow("label") << VeskField::label(s("Hello"), s("id"), none)
                           << s("Label label: \"Hello\"");
    QTest::newRow("image") << VeskField::image(s("id"), QByteArray(512, 'x'), none)
                           << s("Image size: 512");
    QTest::newRow("button") << VeskField::button(s("Go"), s("id"), go, none)
                            << s("Button label: \"Go\"");
}

void TestField::debugTextEveryKind()
{
    QFETCH(VeskField, field);
    QFETCH(QString, text);
    QCOMPARE(::debugText(field), s("VeskField(id: \"") + field.getId() + s("\" type: ") + text
                                     + s(") "));
}

void TestField::debugAndXmlTexts()
{
    VeskField const status = combo({s("online"), s("away")}, "away", {s("Online"), s("Away")});
    QList<VeskField> const fields{check(true), VeskField()};
    QCOMPARE(::debugText(fields),
             ::debugText(check(true)) + s("VeskField(id: \"\" type: None)  "));

    RecordingPlugin target;
    QList<VeskField> const page{
        check(true), spin("idle", 60, 1, 5), status,
        VeskField::passwordEdit(none, s("pass"), s("s3cret"), 16, none),
        VeskField::button(s("Go"), s("go"), VeskPluginAction(&target, &RecordingPlugin::press), none),
        VeskField::image(s("img"), QByteArray("\x00\xab\x10", 3), none), VeskField(),
        combo({s("a"), s("b")}, "b", {s("A")})}; // "b" lacks a label: its id is written
    QCOMPARE(VeskField::toXml(page).toString(),
             s("<fieldlist>"
               "<field checked=\"1\" type=\"checkbox\"><id>autoaway</id></field>"
               "<field max=\"60\" min=\"1\" type=\"spinbox\" val=\"5\"><id>idle</id></field>"
               "<field type=\"combobox\"><id>status</id><item id=\"online\">Online</item>"
               "<item id=\"away\" selected=\"1\">Away</item></field>"
               "<field maxlength=\"16\" type=\"lineedit\"><id>pass</id>"
               "<string>s3cret</string></field>"
               "<field><id>go</id></field>"
               "<field type=\"image\"><id>img</id>00ab10</field>"
               "<field type=\"none\"><id/></field>"
               "<field type=\"combobox\"><id>status</id><item id=\"a\">A</item>"
               "<item id=\"b\" selected=\"1\">b</item></field>"
               "</fieldlist>"));
    QCOMPARE(page.at(1).toXml().toString(), s("<field max=\"60\" min=\"1\" type=\"spinbox\" "
                                              "val=\"5\"><id>idle</id></field>"));
}

void TestField::xmlFormEveryKind_data()
{
    // The field, its XML text, and a field of the same kind and id with other values that
    // reading the text must make equal to the first (null where reading changes nothing).
    QTest::addColumn<VeskField>("field");
    QTest::addColumn<QString>("xml");
    QTest::addColumn<VeskField>("other");
    auto const radio = [](bool on) { return VeskField::radioButton(s("R"), s("r"), on, none, {}); };
    auto const real = [](double max, double min, double value) {
        return VeskField::doubleSpinBox(s("Z"), s("z"), max, min, value, none);
    };
    QTest::newRow("checkBox unchecked")
        << check(false) << s("<field checked=\"0\" type=\"checkbox\"><id>autoaway</id></field>")
        << check(true);
    QTest::newRow("radioButton checked")
        << radio(true) << s("<field checked=\"1\" type=\"radiobutton\"><id>r</id></field>")
        << radio(false);
    QTest::newRow("lineEdit empty")
        << line(4, "") << s("<field maxlength=\"4\" type=\"lineedit\"><id>nick</id><string/></field>")
        << line(9, "x");
    QTest::newRow("dirEdit")
        << VeskField::dirEdit(s("D"), s("d"), s("/a"), none)
        << s("<field maxlength=\"0\" type=\"lineedit\"><id>d</id><string>/a</string></field>")
        << VeskField::dirEdit(s("D"), s("d"), s("/b"), none);
    QTest::newRow("fileEdit")
        << VeskField::fileEdit(s("F"), s("f"), s("/a"), none)
        << s("<field maxlength=\"0\" type=\"lineedit\"><id>f</id><string>/a</string></field>")
        << VeskField::fileEdit(s("F"), s("f"), s(""), none);
    QTest::newRow("soundEdit")
        << VeskField::soundEdit(s("S"), s("s"), s("/a"), none)
        << s("<field maxlength=\"0\" type=\"lineedit\"><id>s</id><string>/a</string></field>")
        << VeskField::soundEdit(s("S"), s("s"), s("/b"), none);
    QTest::newRow("textEdit")
        << VeskField::textEdit(s("T"), s("t"), s("a<b"), none)
        << s("<field type=\"textedit\"><id>t</id><string>a&lt;b</string></field>")
        << VeskField::textEdit(s("T"), s("t"), s("x"), none);
    QTest::newRow("spinBox negative")
        << spin("idle", -1, -10, -5)
        << s("<field max=\"-1\" min=\"-10\" type=\"spinbox\" val=\"-5\"><id>idle</id></field>")
        << spin("idle", 10, 0, 5);
    QTest::newRow("doubleSpinBox")
        << real(2.5, -0.25, 1.0)
        << s("<field max=\"2.5\" min=\"-0.25\" type=\"doublespinbox\" val=\"1\"><id>z</id></field>")
        << real(9.0, 0.0, 3.0);
    QTest::newRow("comboBox without items")
        << combo({}, "") << s("<field type=\"combobox\"><id>status</id></field>") << VeskField();
    QTest::newRow("comboBox last selected")
        << combo({s("a"), s("b")}, "b")
        << s("<field type=\"combobox\"><id>status</id><item id=\"a\">a</item>"
             "<item id=\"b\" selected=\"1\">b</item></field>")
        << combo({s("a"), s("b")}, "a");
    QTest::newRow("label") << VeskField::label(s("Hi"), s("l"), none)
                           << s("<field type=\"label\"><id>l</id></field>") << VeskField();
    QTest::newRow("image empty") << VeskField::image(s("i"), QByteArray(), none)
                                 << s("<field type=\"image\"><id>i</id></field>") << VeskField();
}

void TestField::xmlFormEveryKind()
{
    QFETCH(VeskField, field);
    QFETCH(QString, xml);
    QFETCH(VeskField, other);
    QCOMPARE(field.toXml().toString(), xml);
    if (other.isNull())
        return;
    QVERIFY(other != field);
    other.fromXml(field.toXml());
    QCOMPARE(other, field);
}

void TestField::xmlReader()
{
    // An element of another kind is ignored; the value is set after the
    // limits, so one outside them stays.
    VeskXmlNode const idle =
        parse("<field type='spinbox' max='3' min='2' val='9'><id>idle</id></field>");
    VeskField field = spin("idle", 10, 0, 0);
    VeskField real = VeskField::doubleSpinBox(none, s("idle"), 10, 0, 0, none);
    VeskField other = spin("away", 10, 0, 0); // another id: untouched
    field.fromXml(idle);
    real.fromXml(idle);
    other.fromXml(idle);
    QCOMPARE(other.getIntValue(), 0);
    QVERIFY(field.getIntValue() == 9 && field.getSpinBoxMin() == 2);
    QCOMPARE(real.getDoubleSpinBoxMax(), 10.0);

    VeskField box = check(true);
    box.fromXml(parse("<field type='checkbox' checked='true'><id>autoaway</id></field>"));
    QVERIFY(!box.isChecked());
    // A maximum length of 0 keeps the stored one; an empty id matches nothing.
    VeskField edit = line(12);
    edit.fromXml(parse("<field type='lineedit' maxlength='0'><id>nick</id></field>"));
    QVERIFY(edit.getMaxTextLength() == 12 && edit.getText().isEmpty());
    edit.fromXml(parse("<field type='lineedit'><id></id><string>Zed</string></field>"));
    QVERIFY(edit.getText().isEmpty());

    // Labels and images read nothing from an element of their own kind.
    VeskField label = VeskField::label(s("A"), s("l"), none);
    VeskField picture = VeskField::image(s("i"), QByteArray("PNG"), none);
    label.fromXml(VeskField::label(s("B"), s("l"), none).toXml());
    picture.fromXml(VeskField::image(s("i"), QByteArray("GIF"), none).toXml());
    QVERIFY(label.getLabel() == s("A") && picture.getImgData() == QByteArray("PNG"));

    // The paired combo-box form with a "selectedid"; items without text or id are skipped.
    VeskField choice = combo({s("online")}, "online");
    choice.fromXml(parse("<field type='combobox' selectedid='b'><id>status</id>"
                         "<string_id>a</string_id><string_label>A</string_label>"
                         "<string_id>b</string_id><string_label>B</string_label>"
                         "<item id='c'>C</item><item id='d'/><item>E</item></field>"));
    QCOMPARE(choice, combo({s("a"), s("b"), s("c")}, "b"));
    QCOMPARE(choice.getComboBoxLabels(), (QStringList{s("A"), s("B"), s("C")}));

    // What the writer wrote reads back; a password edit reads the "lineedit" form.
    QStringList const statuses{s("online"), s("away")};
    QList<VeskField> const written{
        VeskField::radioButton(none, s("r"), true, none, {}),
        VeskField::passwordEdit(none, s("p"), s("secret"), 8, none),
        VeskField::textEdit(none, s("t"), s("two\nlines"), none),
        VeskField::doubleSpinBox(none, s("d"), 1e6, -0.5, 1.0 / 3, none), combo(statuses, "away")};
    QList<VeskField> const blank{
        VeskField::radioButton(none, s("r"), false, none, {}),
        VeskField::passwordEdit(none, s("p"), none, 5, none),
        VeskField::textEdit(none, s("t"), none, none),
        VeskField::doubleSpinBox(none, s("d"), 0, 0, 0, none), combo(statuses, "online")};
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
        "<field type='lineedit'><id/><string>No</string></field>"
        "<field type='spinbox' max='80' min='0' val='8'><id>idle</id></field>"
        "<field type='lineedit'><id>nick</id><string>Bo</string></field>"
        "</fieldlist>");
    QList<VeskField> const merged = VeskField::fromXml(fields, list);
    QCOMPARE(merged.size(), 3);
    QCOMPARE(merged.at(0), spin("idle", 80, 0, 8));
    QCOMPARE(merged.at(1).getText(), s("Bo"));
    QCOMPARE(merged.at(2), fields.at(2));
    QVERIFY(fields.at(0).getIntValue() == 1 && fields.at(1).getText() == s("Al"));

    // Elements in reverse order: each field takes its own.
    QList<VeskField> const abc{spin("a", 9, 0, 0), spin("b", 9, 0, 0), spin("c", 9, 0, 0)};
    QList<VeskField> const cba{spin("c", 9, 0, 3), spin("b", 9, 0, 2), spin("a", 9, 0, 1)};
    QCOMPARE(VeskField::fromXml(abc, VeskField::toXml(cba)),
             (QList<VeskField>{cba.at(2), cba.at(1), cba.at(0)}));
}

QTEST_GUILESS_MAIN(TestField)
#include "tst_field.moc"
