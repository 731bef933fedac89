#include <VeskWidgets>

#include <QtTest/QtTest>
#include <QtWidgets/QtWidgets>

#include "vesktestaction.h"

namespace {

QString s(char const* text)
{
    return QString::fromUtf8(text);
}

// Answers every browse request with a fixed path and remembers the question.
class BrowsingForm : public VeskFieldForm
{
public:
    using VeskFieldForm::VeskFieldForm;
    QString answer;
    QList<QPair<VeskField::Type, QString>> asked;

protected:
    QString browse(VeskField::Type kind, QString const& current) override
    {
        asked.append({kind, current});
        return answer;
    }
};

QByteArray pngBytes()
{
    QImage image(4, 3, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

// One field of every kind the form shows.
QList<VeskField> everyKind(RecordingPlugin* target)
{
    return {
        VeskField::comboBox(s("Status"), s("status"), {s("on"), s("away"), s("off")},
                            {s("Online"), s("Away"), s("Offline")}, s("away"), QString()),
        VeskField::checkBox(s("Auto away"), s("autoaway"), true, QString(), {}),
        VeskField::radioButton(s("Small"), s("small"), true, s("Size"), {}),
        VeskField::radioButton(s("Large"), s("large"), false, s("Size"), {}),
        VeskField::lineEdit(s("Nickname"), s("nick"), s("alice"), 8, QString()),
        VeskField::passwordEdit(s("Password"), s("secret"), s("hunter2"), 32, QString()),
        VeskField::textEdit(s("Signature"), s("sig"), s("Cheers,\nAlice"), QString()),
        VeskField::spinBox(s("Idle"), s("idle"), 60, 1, 5, QString(), s(" min")),
        VeskField::doubleSpinBox(s("Volume"), s("volume"), 1.0, 0.0, 0.125, QString()),
        VeskField::label(s("Settings of the sample account"), s("intro"), QString()),
        VeskField::image(s("logo"), pngBytes(), QString()),
        VeskField::button(s("Test"), s("test"), VeskPluginAction(target, &RecordingPlugin::press, {VeskArg(7)}),
                          QString()),
        VeskField::dirEdit(s("Downloads"), s("downloads"), s("/tmp"), s("Files")),
        VeskField::fileEdit(s("Certificate"), s("cert"), s("/etc/cert.pem"), s("Files")),
        VeskField::soundEdit(s("Ring"), s("ring"), s("/usr/share/ring.wav"), s("Files")),
    };
}

VeskField byId(QList<VeskField> const& fields, char const* id)
{
    for (VeskField const& field : fields) {
        if (field.getId() == s(id))
            return field;
    }
    return VeskField();
}

QStringList ids(QList<VeskField> const& fields)
{
    QStringList result;
    for (VeskField const& field : fields)
        result << field.getId();
    return result;
}

} // namespace

class TestFieldForm : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyKindGetsItsWidgetAndValue();
    void typedInputComesBackThroughFieldsAndXml();
    void readOnlyAndHiddenFields();
    void radioButtonsAreExclusivePerGroup();
    void groupsAndLabels();
    void buttonsPostTheirActionAndBrowseFillsThePath();
    void applyXmlUpdatesInPlaceAndSetFieldsReplaces();
    void unshowableFieldsAreSkippedWithAWarning();
};

void TestFieldForm::everyKindGetsItsWidgetAndValue()
{
    RecordingPlugin target;
    VeskFieldForm form(everyKind(&target));

    auto* const combo = qobject_cast<QComboBox*>(form.editorFor(s("status")));
    QVERIFY(combo);
    QCOMPARE(combo->currentText(), s("Away"));
    auto* const check = qobject_cast<QCheckBox*>(form.editorFor(s("autoaway")));
    QVERIFY(check && check->isChecked() && check->text() == s("Auto away"));
    auto* const small = qobject_cast<QRadioButton*>(form.editorFor(s("small")));
    auto* const large = qobject_cast<QRadioButton*>(form.editorFor(s("large")));
    QVERIFY(small && large && small->isChecked() && !large->isChecked());
    auto* const nick = qobject_cast<QLineEdit*>(form.editorFor(s("nick")));
    QVERIFY(nick && nick->text() == s("alice") && nick->echoMode() == QLineEdit::Normal);
    QCOMPARE(nick->maxLength(), 8);
    auto* const secret = qobject_cast<QLineEdit*>(form.editorFor(s("secret")));
    QVERIFY(secret && secret->text() == s("hunter2"));
    QCOMPARE(secret->echoMode(), QLineEdit::Password);
    auto* const sig = qobject_cast<QPlainTextEdit*>(form.editorFor(s("sig")));
    QVERIFY(sig && sig->toPlainText() == s("Cheers,\nAlice"));
    auto* const idle = qobject_cast<QSpinBox*>(form.editorFor(s("idle")));
    QVERIFY(idle && idle->minimum() == 1 && idle->maximum() == 60);
    QCOMPARE(idle->value(), 5);
    QCOMPARE(idle->suffix(), s(" min"));
    auto* const volume = qobject_cast<QDoubleSpinBox*>(form.editorFor(s("volume")));
    // Three decimals, or 0.125 would be shown (and saved) rounded.
    QVERIFY(volume && volume->maximum() == 1.0);
    QCOMPARE(volume->value(), 0.125);
    auto* const intro = qobject_cast<QLabel*>(form.editorFor(s("intro")));
    QVERIFY(intro && intro->text() == s("Settings of the sample account"));
    auto* const logo = qobject_cast<QLabel*>(form.editorFor(s("logo")));
    QVERIFY(logo);
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    QCOMPARE(logo->pixmap().size(), QSize(4, 3));
#else
    QCOMPARE(logo->pixmap(Qt::ReturnByValue).size(), QSize(4, 3));
#endif
    auto* const test = qobject_cast<QPushButton*>(form.editorFor(s("test")));
    QVERIFY(test && test->text() == s("Test"));
    for (char const* id : {"downloads", "cert", "ring"}) {
        auto* const path = qobject_cast<QLineEdit*>(form.editorFor(s(id)));
        QVERIFY2(path, id);
        QCOMPARE(path->text(), byId(everyKind(&target), id).getText());
        QVERIFY2(path->parentWidget()->findChild<QToolButton*>(s("browse")), id);
    }

    // Nothing typed: the form gives back what it got, and no changes.
    QCOMPARE(form.fields(), everyKind(&target));
    QVERIFY(form.changedFields().isEmpty());
    QCOMPARE(form.changedXml().getChildNodes().size(), 0);
}

void TestFieldForm::typedInputComesBackThroughFieldsAndXml()
{
    RecordingPlugin target;
    QList<VeskField> const input = everyKind(&target);
    VeskFieldForm form(input);
    QSignalSpy edited(&form, &VeskFieldForm::edited);
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));

    auto* const nick = qobject_cast<QLineEdit*>(form.editorFor(s("nick")));
    nick->selectAll();
    QTest::keyClicks(nick, s("bobby-the-builder"));
    QTest::keyClick(form.editorFor(s("autoaway")), Qt::Key_Space);
    auto* const combo = qobject_cast<QComboBox*>(form.editorFor(s("status")));
    QTest::keyClick(combo, Qt::Key_Down);
    auto* const idle = qobject_cast<QSpinBox*>(form.editorFor(s("idle")));
    idle->selectAll();
    QTest::keyClicks(idle, s("99"));
    QTest::keyClick(idle, Qt::Key_Enter);
    auto* const sig = qobject_cast<QPlainTextEdit*>(form.editorFor(s("sig")));
    QTest::keyClicks(sig, s("!"));

    QList<VeskField> const out = form.fields();
    QCOMPARE(ids(out), ids(input));
    // The line edit's maximum length cut the typed text.
    QCOMPARE(byId(out, "nick").getText(), s("bobby-th"));
    QVERIFY(!byId(out, "autoaway").isChecked());
    QCOMPARE(byId(out, "status").getSelectedId(), s("off"));
    QCOMPARE(byId(out, "status").getSelectedLabel(), s("Offline"));
    // The spin box holds typed values inside its limits: "99" gives 9.
    QCOMPARE(byId(out, "idle").getIntValue(), 9);
    QCOMPARE(byId(out, "sig").getText(), s("!Cheers,\nAlice"));

    // Copy on write: the list the form was given still holds the old values.
    QCOMPARE(byId(input, "nick").getText(), s("alice"));
    QVERIFY(byId(input, "autoaway").isChecked());
    QCOMPARE(byId(input, "status").getSelectedId(), s("away"));

    QStringList const changed{s("status"), s("autoaway"), s("nick"), s("sig"), s("idle")};
    QCOMPARE(ids(form.changedFields()), changed);
    QSet<QString> editedIds;
    for (QList<QVariant> const& signal : std::as_const(edited))
        editedIds << signal.at(0).toString();
    QCOMPARE(editedIds, QSet<QString>(changed.begin(), changed.end()));

    // The plugin's side: merging the XML of the changes gives the same page.
    VeskXmlNode const xml = VeskXmlNode::fromString(form.changedXml().toString());
    QCOMPARE(xml.getChildNodes().size(), changed.size());
    QCOMPARE(VeskField::fromXml(input, xml), out);

    // Typing a value back makes the field unchanged again.
    nick->selectAll();
    QTest::keyClicks(nick, s("alice"));
    QVERIFY(!ids(form.changedFields()).contains(s("nick")));
}

void TestFieldForm::readOnlyAndHiddenFields()
{
    VeskField nick = VeskField::lineEdit(s("Nickname"), s("nick"), s("alice"), 0, QString());
    VeskField idle = VeskField::spinBox(s("Idle"), s("idle"), 60, 1, 5, QString(), QString());
    VeskField away = VeskField::checkBox(s("Away"), s("away"), false, QString(), {});
    VeskField hidden = VeskField::lineEdit(s("Token"), s("token"), s("t"), 0, s("Secret"));
    nick.setReadOnly(true);
    idle.setReadOnly(true);
    away.setReadOnly(true);
    hidden.setVisible(false);
    VeskFieldForm form({nick, idle, away, hidden});
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));

    auto* const nickEdit = qobject_cast<QLineEdit*>(form.editorFor(s("nick")));
    QVERIFY(nickEdit->isReadOnly());
    QTest::keyClicks(nickEdit, s("xyz"));
    QTest::keyClick(form.editorFor(s("idle")), Qt::Key_Up);
    QTest::keyClick(form.editorFor(s("away")), Qt::Key_Space);
    QVERIFY(!form.editorFor(s("away"))->isEnabled());
    QVERIFY(form.changedFields().isEmpty());
    QCOMPARE(form.fields().at(0).getText(), s("alice"));

    // A hidden field has its widget, invisible with its label and its group
    // box, and keeps its value.
    QWidget* const token = form.editorFor(s("token"));
    QVERIFY(token);
    QVERIFY(!token->isVisibleTo(&form));
    for (QLabel* label : form.findChildren<QLabel*>())
        QVERIFY2(label->text() != s("Token") || !label->isVisibleTo(&form), "the label shows");
    QGroupBox* const box = form.findChild<QGroupBox*>();
    QVERIFY(box && !box->isVisibleTo(&form));
    QVERIFY(form.editorFor(s("nick"))->isVisibleTo(&form));
    QCOMPARE(form.fields().at(3).getText(), s("t"));
}

void TestFieldForm::radioButtonsAreExclusivePerGroup()
{
    VeskFieldForm form({
        VeskField::radioButton(s("Small"), s("small"), true, s("Size"), {}),
        VeskField::radioButton(s("Large"), s("large"), false, s("Size"), {}),
        VeskField::radioButton(s("Red"), s("red"), false, s("Colour"), {}),
        VeskField::radioButton(s("Blue"), s("blue"), true, s("Colour"), {}),
        // Two checked buttons of one group: the page shows one of them.
        VeskField::radioButton(s("Fast"), s("fast"), true, s("Speed"), {}),
        VeskField::radioButton(s("Slow"), s("slow"), true, s("Speed"), {}),
    });
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    auto checked = [&](char const* id) { return byId(form.fields(), id).isChecked(); };
    QCOMPARE(int(checked("fast")) + int(checked("slow")), 1);

    QTest::mouseClick(form.editorFor(s("large")), Qt::LeftButton);
    QVERIFY(checked("large"));
    QVERIFY(!checked("small"));
    QVERIFY(checked("blue"));
    QTest::mouseClick(form.editorFor(s("red")), Qt::LeftButton);
    QVERIFY(checked("red"));
    QVERIFY(!checked("blue"));
    QVERIFY(checked("large"));
    // The page could not show both checked buttons; the one it unchecked is a change.
    QStringList const changed{s("small"), s("large"), s("red"), s("blue"),
                              checked("fast") ? s("slow") : s("fast")};
    QCOMPARE(ids(form.changedFields()), changed);
}

void TestFieldForm::groupsAndLabels()
{
    VeskFieldForm form({
        VeskField::lineEdit(s("Server"), s("server"), QString(), 0, s("Connection")),
        VeskField::checkBox(s("Sounds"), s("sounds"), true, s("Alerts"), {}),
        VeskField::spinBox(s("Port"), s("port"), 65535, 1, 5222, s("Connection"), QString()),
        VeskField::lineEdit(s("Name"), s("name"), QString(), 0, QString()),
    });
    QList<QGroupBox*> const boxes = form.findChildren<QGroupBox*>();
    QCOMPARE(boxes.size(), 2);
    auto boxOf = [&](char const* id) {
        return qobject_cast<QGroupBox*>(form.editorFor(s(id))->parentWidget());
    };
    QVERIFY(boxOf("server"));
    QCOMPARE(boxOf("server")->title(), s("Connection"));
    // A later field of a group joins the group's box.
    QCOMPARE(boxOf("port"), boxOf("server"));
    QCOMPARE(boxOf("sounds")->title(), s("Alerts"));
    QVERIFY(!boxOf("name"));

    // The boxes come in the order of their first fields, the ungrouped field after them.
    auto* const page = qobject_cast<QBoxLayout*>(boxOf("server")->parentWidget()->layout());
    QVERIFY(page);
    QCOMPARE(page->indexOf(boxOf("server")), 0);
    QCOMPARE(page->indexOf(boxOf("sounds")), 1);
    QCOMPARE(page->indexOf(form.editorFor(s("name"))->parentWidget()), 2);

    // Kinds without their own text are labelled; the label leads to the editor.
    for (char const* id : {"server", "port", "name"}) {
        auto* const layout = qobject_cast<QFormLayout*>(form.editorFor(s(id))->parentWidget()->layout());
        QVERIFY2(layout, id);
        auto* const label = qobject_cast<QLabel*>(layout->labelForField(form.editorFor(s(id))));
        QVERIFY2(label, id);
        QCOMPARE(label->buddy(), form.editorFor(s(id)));
    }
}

void TestFieldForm::buttonsPostTheirActionAndBrowseFillsThePath()
{
    RecordingPlugin target;
    CallDispatcher dispatcher;
    VeskCallActionEvent::dispatcher = &dispatcher;
    BrowsingForm form(everyKind(&target));
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));

    QTest::mouseClick(form.editorFor(s("test")), Qt::LeftButton);
    QVERIFY(target.calls.isEmpty());
    QCoreApplication::sendPostedEvents(&dispatcher);
    QCOMPARE(target.calls.size(), 1);
    QCOMPARE(target.calls.at(0), QList<VeskArg>{VeskArg(7)});
    VeskCallActionEvent::dispatcher = nullptr;

    form.answer = s("/home/alice/cert.pem");
    auto* const cert = qobject_cast<QLineEdit*>(form.editorFor(s("cert")));
    QTest::mouseClick(cert->parentWidget()->findChild<QToolButton*>(s("browse")), Qt::LeftButton);
    QCOMPARE(form.asked.size(), 1);
    QCOMPARE(form.asked.at(0).first, VeskField::FileEdit);
    QCOMPARE(form.asked.at(0).second, s("/etc/cert.pem"));
    QCOMPARE(byId(form.fields(), "cert").getText(), s("/home/alice/cert.pem"));

    // A cancelled dialog keeps the path.
    form.answer.clear();
    auto* const downloads = qobject_cast<QLineEdit*>(form.editorFor(s("downloads")));
    QTest::mouseClick(downloads->parentWidget()->findChild<QToolButton*>(s("browse")), Qt::LeftButton);
    QCOMPARE(form.asked.last().first, VeskField::DirEdit);
    QCOMPARE(byId(form.fields(), "downloads").getText(), s("/tmp"));
    QCOMPARE(ids(form.changedFields()), QStringList{s("cert")});
}

void TestFieldForm::applyXmlUpdatesInPlaceAndSetFieldsReplaces()
{
    QList<VeskField> const input{
        VeskField::lineEdit(s("Nickname"), s("nick"), s("alice"), 0, QString()),
        VeskField::spinBox(s("Idle"), s("idle"), 60, 1, 5, QString(), QString()),
        VeskField::comboBox(s("Status"), s("status"), {s("on"), s("off")}, {}, s("on"), QString()),
    };
    VeskFieldForm form(input);
    QWidget* const nickWidget = form.editorFor(s("nick"));
    QWidget* const idleWidget = form.editorFor(s("idle"));
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    QTest::keyClicks(nickWidget, s("!"));

    QList<VeskField> update = input;
    update[1].setSpinBoxMax(120);
    update[1].setIntValue(90);
    update[2].setComboBoxItems({s("on"), s("off"), s("busy")}, {});
    update[2].setSelectedId(s("busy"));
    form.applyXml(VeskField::toXml({update[1], update[2]}));

    QCOMPARE(form.editorFor(s("idle")), idleWidget);
    QCOMPARE(qobject_cast<QSpinBox*>(idleWidget)->maximum(), 120);
    QCOMPARE(qobject_cast<QSpinBox*>(idleWidget)->value(), 90);
    QCOMPARE(qobject_cast<QComboBox*>(form.editorFor(s("status")))->currentText(), s("busy"));
    // Applied values are the page's own; the user's typing elsewhere stays a change.
    QCOMPARE(ids(form.changedFields()), QStringList{s("nick")});
    QCOMPARE(form.fields().at(1), update[1]);
    QCOMPARE(form.fields().at(0).getText(), s("alice!"));

    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(s("fieldlist")));
    form.applyXml(VeskXmlNode(s("field"), QString(), nullptr));
    QCOMPARE(form.fields().at(1), update[1]);

    QPointer<QWidget> const old = nickWidget;
    form.setFields({VeskField::checkBox(s("Sounds"), s("sounds"), true, QString(), {})});
    QVERIFY(old.isNull());
    QVERIFY(!form.editorFor(s("nick")));
    QCOMPARE(ids(form.fields()), QStringList{s("sounds")});
    QVERIFY(form.changedFields().isEmpty());
}

void TestFieldForm::unshowableFieldsAreSkippedWithAWarning()
{
    QList<VeskField> const input{
        VeskField(),
        VeskField::image(s("broken"), QByteArray("not a picture"), QString()),
        VeskField::lineEdit(s("Nickname"), s("nick"), s("alice"), 0, QString()),
    };
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(s("null field")));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(s("\"broken\".*no picture")));
    VeskFieldForm form(input);
    QVERIFY(!form.editorFor(s("broken")));
    QVERIFY(form.editorFor(s("nick")));
    QCOMPARE(form.fields(), input);
    QVERIFY(form.changedFields().isEmpty());
}

QTEST_MAIN(TestFieldForm)
#include "tst_fieldform.moc"
