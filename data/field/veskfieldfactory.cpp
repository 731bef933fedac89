// VeskField's static factories and the checks they make on their arguments.

#include "veskfield_p.h"

#include <QtCore/QCoreApplication>

#include <algorithm>
#include <memory>

#include <veskexception.h>

namespace {

// A refusal message, marked so that translation tools find it with its
// context and comment.
struct Message
{
    char const* source;
    char const* comment;
};

Message const emptyId = QT_TRANSLATE_NOOP3("translation", "Field id can't be empty",
                                           "exception description");
Message const invalidAction =
    QT_TRANSLATE_NOOP3("translation", "VeskPluginAction must be valid (isValid() must return true)",
                       "exception description");
Message const belowMinimum =
    QT_TRANSLATE_NOOP3("translation", "Field value can't be less than field minimum value",
                       "exception description");
Message const aboveMaximum =
    QT_TRANSLATE_NOOP3("translation", "Field value can't be greater than field maximum value",
                       "exception description");

[[noreturn]] void refuse(char const* where, int position, Message const& message)
{
    throw vesk_invalid_value(QLatin1String(where), position,
                             QCoreApplication::translate("translation", message.source,
                                                         message.comment));
}

void checkId(char const* where, int position, QString const& id)
{
    if (id.isEmpty())
        refuse(where, position, emptyId);
}

using Record = std::unique_ptr<VeskFieldPrivate>;

// A new record of the kind with the members every factory sets.
Record makeRecord(VeskField::Type type, QString const& label, QString const& id,
                  QString const& group)
{
    Record record(new VeskFieldPrivate(type));
    record->label = label;
    record->id = id;
    record->group = group;
    return record;
}

Record makeCheckable(VeskField::Type type, QString const& label, QString const& id, bool checked,
                     QString const& group, QStringList const& depends)
{
    Record record = makeRecord(type, label, id, group);
    record->value.setBool(checked);
    record->depends = depends;
    return record;
}

Record makeEdit(VeskField::Type type, QString const& label, QString const& id,
                QString const& text, int maxLength, QString const& group)
{
    Record record = makeRecord(type, label, id, group);
    record->max.setInt(maxLength);
    record->text = text;
    return record;
}

} // namespace

VeskField VeskField::image(QString const& id, QByteArray const& data, QString const& group)
{
    checkId("VeskField::image", 1, id);
    Record record = makeRecord(Image, QString(), id, group);
    record->imgData = data;
    return VeskField(record.release());
}

VeskField VeskField::label(QString const& label, QString const& id, QString const& group)
{
    checkId("VeskField::label", 2, id);
    return VeskField(makeRecord(Label, label, id, group).release());
}

VeskField VeskField::button(QString const& label, QString const& id, VeskPluginAction action,
                            QString const& group)
{
    checkId("VeskField::button", 2, id);
    if (!action.isValid())
        refuse("VeskField::button", 3, invalidAction);
    Record record = makeRecord(Button, label, id, group);
    record->action = action;
    return VeskField(record.release());
}

VeskField VeskField::comboBox(QString const& label, QString const& id, QStringList const& ids,
                              QStringList const& labels, QString const& selectedId,
                              QString const& group)
{
    checkId("VeskField::comboBox", 2, id);
    Record record = makeRecord(ComboBox, label, id, group);
    record->value.setInt(std::max(0, int(ids.indexOf(selectedId))));
    record->comboBoxIds = ids;
    record->comboBoxLabels = labels.isEmpty() ? ids : labels;
    return VeskField(record.release());
}

VeskField VeskField::spinBox(QString const& label, QString const& id, int max, int min, int value,
                             QString const& group, QString const& suffix)
{
    checkId("VeskField::spinBox", 2, id);
    value = std::min(value, max);
    if (value < min)
        refuse("VeskField::spinBox", 5, belowMinimum);
    Record record = makeRecord(SpinBox, label, id, group);
    record->suffix = suffix;
    record->max.setInt(max);
    record->min.setInt(min);
    record->value.setInt(value);
    return VeskField(record.release());
}

VeskField VeskField::doubleSpinBox(QString const& label, QString const& id, double max,
                                   double min, double value, QString const& group)
{
    checkId("VeskField::doubleSpinBox", 2, id);
    if (value > max)
        refuse("VeskField::doubleSpinBox", 5, aboveMaximum);
    if (value < min)
        refuse("VeskField::doubleSpinBox", 5, belowMinimum);
    Record record = makeRecord(DoubleSpinBox, label, id, group);
    record->max.setDouble(max);
    record->min.setDouble(min);
    record->value.setDouble(value);
    return VeskField(record.release());
}

VeskField VeskField::radioButton(QString const& label, QString const& id, bool checked,
                                 QString const& group, QStringList const& depends)
{
    checkId("VeskField::radioButton", 2, id);
    return VeskField(makeCheckable(RadioButton, label, id, checked, group, depends).release());
}

VeskField VeskField::checkBox(QString const& label, QString const& id, bool checked,
                              QString const& group, QStringList const& depends)
{
    // Refusals of the check box name the place "checkButton"; callers that
    // match the text rely on it.
    checkId("VeskField::checkButton", 2, id);
    return VeskField(makeCheckable(CheckBox, label, id, checked, group, depends).release());
}

VeskField VeskField::lineEdit(QString const& label, QString const& id, QString const& text,
                              int maxLength, QString const& group)
{
    checkId("VeskField::lineEdit", 2, id);
    return VeskField(makeEdit(LineEdit, label, id, text, maxLength, group).release());
}

VeskField VeskField::passwordEdit(QString const& label, QString const& id, QString const& text,
                                  int maxLength, QString const& group)
{
    checkId("VeskField::passwordEdit", 2, id);
    return VeskField(makeEdit(PasswordEdit, label, id, text, maxLength, group).release());
}

VeskField VeskField::textEdit(QString const& label, QString const& id, QString const& text,
                              QString const& group)
{
    checkId("VeskField::textEdit", 2, id);
    return VeskField(makeEdit(TextEdit, label, id, text, 0, group).release());
}

VeskField VeskField::dirEdit(QString const& label, QString const& id, QString const& path,
                             QString const& group)
{
    checkId("VeskField::dirEdit", 2, id);
    return VeskField(makeEdit(DirEdit, label, id, path, 0, group).release());
}

VeskField VeskField::fileEdit(QString const& label, QString const& id, QString const& path,
                              QString const& group)
{
    checkId("VeskField::fileEdit", 2, id);
    return VeskField(makeEdit(FileEdit, label, id, path, 0, group).release());
}

VeskField VeskField::soundEdit(QString const& label, QString const& id, QString const& path,
                               QString const& group)
{
    checkId("VeskField::soundEdit", 2, id);
    return VeskField(makeEdit(SoundEdit, label, id, path, 0, group).release());
}
