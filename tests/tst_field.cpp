#include <VeskData>

#include <QtTest/QtTest>

#include <cmath>
#include <limits>

namespace {

QString const noGroup;

class ClickTarget : public VeskPlugin
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

// Answers one message of the library in German, the way a catalogue
// installed by the application would.
class GermanTranslator : public QTranslator
{
public:
    QString translate(char const* context, char const* source, char const* disambiguation,
                      int) const override
    {
        if (qstrcmp(context, "translation") == 0
            && qstrcmp(disambiguation, "exception description") == 0
            && qstrcmp(source, "Field id can't be empty") == 0)
            return QStringLiteral("Die Feldkennung darf nicht leer sein");
        return QString();
    }
    bool isEmpty() const override { return false; }
};

template<typename Make>
QString refusal(Make&& make)
{
    try {
        make();
    } catch (std::runtime_error const& error) {
        return QString::fromUtf8(error.what());
    }
    return QStringLiteral("<accepted>");
}

QString debugText(VeskField const& field)
{
    QString out;
    {
        QDebug dbg(&out);
        dbg << field;
    }
    return out;
}

QStringList strings(char const* a, char const* b = nullptr, char const* c = nullptr)
{
    QStringList list{QString::fromUtf8(a)};
    for (char const* s : {b, c})
        if (s)
            list.append(QString::fromUtf8(s));
    return list;
}

VeskField combo(QStringList const& ids, QString const& selected, QStringList const& labels = {})
{
    return VeskField::comboBox(QStringLiteral("Status"), QStringLiteral("status"), ids, labels,
                               selected, noGroup);
}

VeskField spin(int max, int min, int value)
{
    return VeskField::spinBox(QStringLiteral("Idle"), QStringLiteral("idle"), max, min, value,
                              noGroup, QStringLiteral(" min"));
}

VeskField line(int maxLength, QString const& text = QStringLiteral("Al"))
{
    return VeskField::lineEdit(QStringLiteral("Nick"), QStringLiteral("nick"), text, maxLength,
                               noGroup);
}

VeskField check(bool checked, QStringList const& depends = {})
{
    return VeskField::checkBox(QStringLiteral("Away"), QStringLiteral("autoaway"), checked,
                               noGroup, depends);
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
    void equalityAndHash();
    void valueAsArgument();
    void factoryRefusals();
    void refusalsAreTranslated();
    void buttonClickPostsItsAction();
    void setFieldValue();
    void debugText();
};

void TestField::nullField()
{
    VeskField field;
    QVERIFY(field.isNull());
    QCOMPARE(field.getType(), VeskField::None);
    QVERIFY(!field.getVisible());
    QVERIFY(field.getId().isEmpty() && field.getLabel().isEmpty());
    QCOMPARE(field.getValue().getType(), VeskArg::None);
    QVERIFY(field == VeskField());

    // Setters and the click of a null field do nothing and do not crash.
    field.setText(QStringLiteral("x"));
    field.setSpinBoxMax(4);
    field.setVisible(true);
    field.setReadOnly(true);
    field.clicked();
    QVERIFY(field.isNull() && !field.getVisible() && !field.isReadOnly());
    QVERIFY(field != check(false));
}

void TestField::copyOnWriteAndSharedFlags()
{
    VeskField const a = line(10);
    VeskField b = a;
    b.setText(QStringLiteral("changed"));
    QCOMPARE(a.getText(), QStringLiteral("Al"));
    QCOMPARE(b.getText(), QStringLiteral("changed"));

    // The flags live in the shared record: a copy sees them.
    VeskField c = a;
    c.setReadOnly(true);
    c.setPressed(true);
    c.setVisible(false);
    QVERIFY(a.isReadOnly() && a.isPressed() && !a.getVisible());
    QVERIFY(!b.isReadOnly() && b.getVisible());

    // An unchanged value does not detach, a NaN always does.
    VeskField nan = VeskField::doubleSpinBox(QStringLiteral("Volume"), QStringLiteral("volume"),
                                             1.0, 0.0, std::numeric_limits<double>::quiet_NaN(),
                                             noGroup);
    VeskField sharer = nan;
    sharer.setLabel(nan.getLabel());
    sharer.setReadOnly(true);
    QVERIFY(nan.isReadOnly());
    sharer.setDoubleValue(std::numeric_limits<double>::quiet_NaN());
    sharer.setReadOnly(false);
    QVERIFY(nan.isReadOnly());

    // Assignment shares, and the last handle frees the record (checked by
    // the sanitizers).
    VeskField d;
    d = b;
    b = VeskField();
    QCOMPARE(d.getText(), QStringLiteral("changed"));
    d = d;
    QCOMPARE(d.getText(), QStringLiteral("changed"));
}

void TestField::limitsPullTheValue()
{
    VeskField field = spin(10, 0, 5);
    field.setSpinBoxMax(3);
    QCOMPARE(field.getIntValue(), 3);
    field.setSpinBoxMin(4);
    QCOMPARE(field.getIntValue(), 4);
    QCOMPARE(field.getSpinBoxMax(), 3);
    field.setIntValue(100);
    QCOMPARE(field.getIntValue(), 100);
    // Setting a limit to the value it already has moves nothing.
    field.setSpinBoxMax(3);
    QCOMPARE(field.getIntValue(), 100);
    QCOMPARE(field.getMaxIntValue(), 3);
    QCOMPARE(field.getMinIntValue(), 4);
    QCOMPARE(field.getSuffix(), QStringLiteral(" min"));

    VeskField real = VeskField::doubleSpinBox(QStringLiteral("Zoom"), QStringLiteral("zoom"), 2.0,
                                              0.5, 1.0, noGroup);
    real.setDoubleSpinBoxMin(1.5);
    QCOMPARE(real.getDoubleValue(), 1.5);
    real.setDoubleSpinBoxMax(1.25);
    QCOMPARE(real.getDoubleValue(), 1.25);
    QCOMPARE(real.getDoubleSpinBoxMin(), 1.5);
    QCOMPARE(real.getDoubleSpinBoxMax(), 1.25);
}

void TestField::comboBoxSelection()
{
    QStringList const abc = strings("a", "b", "c");
    VeskField field = combo(abc, QStringLiteral("b"), strings("A", "B", "C"));
    QCOMPARE(field.getSelectedIndex(), 1);
    field.setSelectedIndex(3);
    field.setSelectedIndex(-1);
    field.setSelectedId(QStringLiteral("B"));
    QCOMPARE(field.getSelectedId(), QStringLiteral("b"));
    QCOMPARE(field.getSelectedLabel(), QStringLiteral("B"));
    field.setComboBoxItems(abc, strings("A", "B", "C"));
    QCOMPARE(field.getSelectedIndex(), 1);
    field.setSelectedId(QStringLiteral("c"));
    QCOMPARE(field.getSelectedIndex(), 2);
    field.setComboBoxItems(abc, strings("x", "y", "z"));
    QCOMPARE(field.getSelectedIndex(), 0);
    QCOMPARE(field.getSelectedLabel(), QStringLiteral("x"));

    // Without labels the ids serve; an unknown selection picks the first.
    VeskField plain = combo(strings("a", "b"), QStringLiteral("b"));
    QCOMPARE(plain.getComboBoxLabels(), strings("a", "b"));
    QCOMPARE(plain.getSelectedIndex(), 1);
    QCOMPARE(combo(strings("a", "b"), QStringLiteral("zz")).getSelectedIndex(), 0);
    VeskField empty = combo(QStringList(), QStringLiteral("a"));
    QCOMPARE(empty.getSelectedIndex(), 0);
    QVERIFY(empty.getSelectedId().isEmpty() && empty.getSelectedLabel().isEmpty());

    // A label list shorter than the ids: the missing label reads as empty.
    VeskField shortLabels = combo(abc, QStringLiteral("c"), strings("A"));
    QCOMPARE(shortLabels.getSelectedId(), QStringLiteral("c"));
    QVERIFY(shortLabels.getSelectedLabel().isEmpty());
}

void TestField::equalityAndHash()
{
    QVERIFY(combo(strings("a", "b"), QStringLiteral("b"), strings("A", "B"))
            == combo(strings("a", "b"), QStringLiteral("b"), strings("x", "y")));
    QVERIFY(combo(strings("a", "b"), QStringLiteral("b")) != combo(strings("a", "b"), QString()));
    QVERIFY(check(true, strings("x")) != check(true, strings("y")));
    QVERIFY(check(true) != check(false));
    QVERIFY(line(10) != line(20));
    QVERIFY(line(10) != line(10, QStringLiteral("other")));
    auto text = [](QString const& group) {
        return VeskField::textEdit(QStringLiteral("Notes"), QStringLiteral("notes"),
                                   QStringLiteral("t"), group);
    };
    QVERIFY(text(noGroup) == text(QStringLiteral("another group")));
    QVERIFY(spin(10, 0, 5) != spin(10, 1, 5));
    QVERIFY(spin(10, 0, 5) == spin(10, 0, 5));

    // Kind, label and id come first.
    VeskField labelled = line(10);
    labelled.setLabel(QStringLiteral("Nickname"));
    QVERIFY(labelled != line(10));
    VeskField const idle = spin(10, 0, 5);
    VeskField const sameId = VeskField::label(QStringLiteral("Idle"), QStringLiteral("idle"),
                                              noGroup);
    QVERIFY(idle != sameId);
    QCOMPARE(qHash(idle), qHash(sameId));
    QCOMPARE(qHash(idle, 7), qHash(QStringLiteral("idle"), 7));

    ClickTarget target;
    auto button = [&target](VeskPluginAction::Method method) {
        return VeskField::button(QStringLiteral("Go"), QStringLiteral("go"),
                                 VeskPluginAction(&target, method, {}), noGroup);
    };
    auto const press = static_cast<VeskPluginAction::Method>(&ClickTarget::press);
    auto const other = static_cast<VeskPluginAction::Method>(&ClickTarget::other);
    QVERIFY(button(press) == button(press));
    QVERIFY(button(press) != button(other));

    QSet<VeskField> set{spin(10, 0, 5), spin(10, 0, 5), check(true)};
    QCOMPARE(set.size(), 2);
}

void TestField::valueAsArgument()
{
    QCOMPARE(combo(strings("a", "b"), QStringLiteral("b")).getValue(), VeskArg(QStringLiteral("b")));
    QCOMPARE(check(true).getValue(), VeskArg(true));
    QCOMPARE(spin(10, 0, 7).getValue(), VeskArg(7));
    QCOMPARE(line(5, QStringLiteral("txt")).getValue(), VeskArg(QStringLiteral("txt")));
    QCOMPARE(VeskField::label(QStringLiteral("Hello"), QStringLiteral("l"), noGroup).getValue(),
             VeskArg(QStringLiteral("Hello")));
    QByteArray const bytes("\x01\x02\xff", 3);
    QCOMPARE(VeskField::image(QStringLiteral("img"), bytes, noGroup).getValue(), VeskArg(bytes));
    VeskField const real = VeskField::doubleSpinBox(QStringLiteral("Z"), QStringLiteral("z"), 3.0,
                                                    0.0, 2.5, noGroup);
    QCOMPARE(real.getValue().getType(), VeskArg::Double);
    QCOMPARE(real.getValue().toDouble(), 2.5);

    ClickTarget target;
    VeskField const button = VeskField::button(
        QStringLiteral("Go"), QStringLiteral("go"),
        VeskPluginAction(&target, &ClickTarget::press), noGroup);
    QCOMPARE(button.getValue().getType(), VeskArg::None);
}

void TestField::factoryRefusals()
{
    QString const id = QStringLiteral("id");
    QString const none;
    QString const emptyId = QStringLiteral(": Field id can't be empty");
    QString const below = QStringLiteral("argument 5: Field value can't be less than field minimum value");
    ClickTarget target;
    VeskPluginAction const valid(&target, &ClickTarget::press);

    QCOMPARE(refusal([&] { VeskField::image(none, QByteArray(), none); }),
             QStringLiteral("VeskField::image: argument 1") + emptyId);
    QCOMPARE(refusal([&] { VeskField::label(QStringLiteral("L"), QStringLiteral(""), none); }),
             QStringLiteral("VeskField::label: argument 2") + emptyId);
    QCOMPARE(refusal([&] { VeskField::checkBox(id, none, true, none, {}); }),
             QStringLiteral("VeskField::checkButton: argument 2") + emptyId);
    QCOMPARE(refusal([&] { VeskField::soundEdit(id, none, none, none); }),
             QStringLiteral("VeskField::soundEdit: argument 2") + emptyId);
    // The id is checked before everything else.
    QCOMPARE(refusal([&] { VeskField::button(id, none, VeskPluginAction(), none); }),
             QStringLiteral("VeskField::button: argument 2") + emptyId);
    QCOMPARE(refusal([&] { VeskField::doubleSpinBox(id, none, 1.0, 0.0, 9.0, none); }),
             QStringLiteral("VeskField::doubleSpinBox: argument 2") + emptyId);
    QCOMPARE(refusal([&] { VeskField::button(id, id, VeskPluginAction(), none); }),
             QStringLiteral("VeskField::button: argument 3: VeskPluginAction must be valid "
                            "(isValid() must return true)"));
    QCOMPARE(refusal([&] { VeskField::button(id, id, valid, none); }), QStringLiteral("<accepted>"));

    // A spin box value above the maximum is lowered, one below the minimum
    // refused; min above max therefore always fails.
    QCOMPARE(VeskField::spinBox(id, id, 100, 1, 500, none, none).getIntValue(), 100);
    QCOMPARE(refusal([&] { VeskField::spinBox(id, id, 100, 1, 0, none, none); }),
             QStringLiteral("VeskField::spinBox: ") + below);
    QCOMPARE(refusal([&] { VeskField::spinBox(id, id, 1, 5, 3, none, none); }),
             QStringLiteral("VeskField::spinBox: ") + below);
    QCOMPARE(refusal([&] { VeskField::doubleSpinBox(id, id, 2.0, 0.0, 2.5, none); }),
             QStringLiteral("VeskField::doubleSpinBox: argument 5: Field value can't be greater "
                            "than field maximum value"));
    QCOMPARE(refusal([&] { VeskField::doubleSpinBox(id, id, 3.0, 2.6, 2.5, none); }),
             QStringLiteral("VeskField::doubleSpinBox: ") + below);

    for (VeskField const& edit : {VeskField::textEdit(id, id, id, none),
                                  VeskField::dirEdit(id, id, id, none),
                                  VeskField::fileEdit(id, id, id, none),
                                  VeskField::soundEdit(id, id, id, none)})
        QCOMPARE(edit.getMaxTextLength(), 0);
    VeskField const password = VeskField::passwordEdit(id, id, QStringLiteral("pw"), -3, id);
    QCOMPARE(password.getType(), VeskField::PasswordEdit);
    QCOMPARE(password.getMaxTextLength(), -3);
    QCOMPARE(password.getGroup(), id);
    VeskField const radio = VeskField::radioButton(id, id, true, none, strings("dep"));
    QVERIFY(radio.isChecked());
    QCOMPARE(radio.getDepends(), strings("dep"));
}

void TestField::refusalsAreTranslated()
{
    GermanTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    QString const text = refusal([] { VeskField::label(QString(), QString(), QString()); });
    QCoreApplication::removeTranslator(&translator);
    QCOMPARE(text, QStringLiteral("VeskField::label: argument 2: Die Feldkennung darf nicht leer sein"));
    QCOMPARE(refusal([] { VeskField::label(QString(), QString(), QString()); }),
             QStringLiteral("VeskField::label: argument 2: Field id can't be empty"));
}

void TestField::buttonClickPostsItsAction()
{
    Dispatcher dispatcher;
    VeskCallActionEvent::dispatcher = &dispatcher;
    ClickTarget target;
    VeskField button = VeskField::button(QStringLiteral("Go"), QStringLiteral("go"),
                                         VeskPluginAction(&target, &ClickTarget::press,
                                                          {VeskArg(7)}),
                                         noGroup);
    button.clicked();
    check(true).clicked();
    QVERIFY(target.calls.isEmpty());
    QCoreApplication::sendPostedEvents(&dispatcher);
    VeskCallActionEvent::dispatcher = nullptr;
    QCOMPARE(target.calls, QList<QList<VeskArg>>{QList<VeskArg>{VeskArg(7)}});
}

void TestField::setFieldValue()
{
    VeskField number = spin(10, 0, 3);
    VeskField const before = number;
    QVERIFY(!VeskArg::setFieldValue(number, VeskArg(3)));
    QVERIFY(VeskArg::setFieldValue(number, VeskArg(4)));
    QCOMPARE(number.getIntValue(), 4);
    QCOMPARE(before.getIntValue(), 3);
    QCOMPARE(refusal([&] { VeskArg::setFieldValue(number, VeskArg(4.0)); }),
             QStringLiteral("VeskArg: cannot convert VeskArg::Double to VeskArg::Int"));
    QCOMPARE(number.getIntValue(), 4);

    VeskField choice = combo(strings("a", "b", "c"), QStringLiteral("a"));
    QVERIFY(VeskArg::setFieldValue(choice, VeskArg(QStringLiteral("c"))));
    QCOMPARE(choice.getSelectedIndex(), 2);
    QVERIFY(!VeskArg::setFieldValue(choice, VeskArg(QStringLiteral("c"))));
    QVERIFY(VeskArg::setFieldValue(choice, VeskArg(1)));
    QCOMPARE(choice.getSelectedId(), QStringLiteral("b"));
    // A setter is called for an index past the options, which it ignores.
    QVERIFY(VeskArg::setFieldValue(choice, VeskArg(3)));
    QCOMPARE(choice.getSelectedIndex(), 1);
    for (VeskArg const& ignored : {VeskArg(true), VeskArg(1.0), VeskArg()})
        QVERIFY(!VeskArg::setFieldValue(choice, ignored));
    QCOMPARE(choice.getSelectedIndex(), 1);

    ClickTarget target;
    VeskField button = VeskField::button(QStringLiteral("Go"), QStringLiteral("go"),
                                         VeskPluginAction(&target, &ClickTarget::press), noGroup);
    VeskField null;
    for (VeskArg const& any : {VeskArg(1), VeskArg(QStringLiteral("x")), VeskArg()}) {
        QVERIFY(!VeskArg::setFieldValue(button, any));
        QVERIFY(!VeskArg::setFieldValue(null, any));
    }

    VeskField box = check(false);
    QCOMPARE(refusal([&] { VeskArg::setFieldValue(box, VeskArg(QStringLiteral("true"))); }),
             QStringLiteral("VeskArg: cannot convert VeskArg::String to VeskArg::Bool"));
    QVERIFY(VeskArg::setFieldValue(box, VeskArg(true)));
    QVERIFY(box.isChecked());

    VeskField edit = line(10);
    QCOMPARE(refusal([&] { VeskArg::setFieldValue(edit, VeskArg(5)); }),
             QStringLiteral("VeskArg: cannot convert VeskArg::Int to VeskArg::String"));
    QVERIFY(VeskArg::setFieldValue(edit, VeskArg(QStringLiteral("Bo"))));
    QCOMPARE(edit.getText(), QStringLiteral("Bo"));

    VeskField image = VeskField::image(QStringLiteral("img"), QByteArray("ab"), noGroup);
    QVERIFY(!VeskArg::setFieldValue(image, VeskArg(QByteArray("ab"))));
    QVERIFY(VeskArg::setFieldValue(image, VeskArg(QByteArray("abc"))));
    QCOMPARE(image.getImgData(), QByteArray("abc"));
}

void TestField::debugText()
{
    QCOMPARE(::debugText(check(true)),
             QStringLiteral("VeskField(id: \"autoaway\" type: CheckBox checked: true) "));
    QCOMPARE(::debugText(VeskField::spinBox(QString(), QStringLiteral("idle"), 60, 1, 5, noGroup,
                                            noGroup)),
             QStringLiteral("VeskField(id: \"idle\" type: SpinBox max: 60 min: 1 val: 5) "));
    QString const secret = QStringLiteral("s3cr\"et");
    QString const password = ::debugText(
        VeskField::passwordEdit(QString(), QStringLiteral("pass"), secret, 8, noGroup));
    QCOMPARE(password, QStringLiteral("VeskField(id: \"pass\" type: PasswordEdit password: masked) "));
    QCOMPARE(::debugText(VeskField::image(QStringLiteral("avatar"), QByteArray(512, 'x'), noGroup)),
             QStringLiteral("VeskField(id: \"avatar\" type: Image size: 512) "));
    QCOMPARE(::debugText(combo(strings("online", "away"), QStringLiteral("away"),
                               strings("Online", "Away"))),
             QStringLiteral("VeskField(id: \"status\" type: ComboBox option ids: (\"online\", "
                            "\"away\")  option labels:  (\"Online\", \"Away\")  selected:  "
                            "\"away\" ) "));
    QCOMPARE(::debugText(combo(QStringList(), QString())),
             QStringLiteral("VeskField(id: \"status\" type: ComboBox option ids: ()  option "
                            "labels:  ()  selected:  \"\" ) "));
    QCOMPARE(::debugText(VeskField()), QStringLiteral("VeskField(id: \"\" type: None) "));
    QCOMPARE(::debugText(VeskField::doubleSpinBox(QString(), QStringLiteral("d"), 2.5, 0.0, 60.0 / 60,
                                                  noGroup)),
             QStringLiteral("VeskField(id: \"d\" type: DoubleSpinBox max: 2.5 min: 0 val: 1) "));
    // Strings are quoted but not escaped.
    QCOMPARE(::debugText(line(20, QStringLiteral("say \"hi\""))),
             QStringLiteral("VeskField(id: \"nick\" type: LineEdit text: \"say \"hi\"\" "
                            "maxtextlength: 20) "));
    QCOMPARE(::debugText(VeskField::textEdit(QString(), QStringLiteral("t"), QStringLiteral("x"),
                                             noGroup)),
             QStringLiteral("VeskField(id: \"t\" type: TextEdit text: \"x\") "));
    QCOMPARE(::debugText(VeskField::dirEdit(QString(), QStringLiteral("dir"), QStringLiteral("/tmp"),
                                            noGroup)),
             QStringLiteral("VeskField(id: \"dir\" type: DirEdit path: \"/tmp\") "));
    ClickTarget target;
    QCOMPARE(::debugText(VeskField::button(QStringLiteral("Go"), QStringLiteral("go"),
                                           VeskPluginAction(&target, &ClickTarget::press),
                                           noGroup)),
             QStringLiteral("VeskField(id: \"go\" type: Button label: \"Go\") "));

    QList<VeskField> const fields{check(true), VeskField()};
    QString list;
    {
        QDebug dbg(&list);
        dbg << fields;
    }
    QCOMPARE(list, ::debugText(fields.at(0)) + ::debugText(fields.at(1)) + QLatin1Char(' '));
    QString empty;
    {
        QDebug dbg(&empty);
        dbg << QList<VeskField>();
    }
    QCOMPARE(empty, QStringLiteral(" "));
}

QTEST_GUILESS_MAIN(TestField)
#include "tst_field.moc"
