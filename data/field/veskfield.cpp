#include "veskfield_p.h"
#include "veskdebug_p.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDebug>
#include <QtCore/QHash>

#include <algorithm>
#include <memory>
#include <vector>

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

// The "type" attribute of a kind; a null string where none is written.
QString kindWord(VeskField::Type type)
{
    switch (type) {
    case VeskField::None: return QStringLiteral("none");
    case VeskField::ComboBox: return QStringLiteral("combobox");
    case VeskField::CheckBox: return QStringLiteral("checkbox");
    case VeskField::RadioButton: return QStringLiteral("radiobutton");
    case VeskField::LineEdit:
    case VeskField::DirEdit:
    case VeskField::FileEdit:
    case VeskField::SoundEdit:
    case VeskField::PasswordEdit: return QStringLiteral("lineedit");
    case VeskField::TextEdit: return QStringLiteral("textedit");
    case VeskField::SpinBox: return QStringLiteral("spinbox");
    case VeskField::DoubleSpinBox: return QStringLiteral("doublespinbox");
    case VeskField::Label: return QStringLiteral("label");
    case VeskField::Image: return QStringLiteral("image");
    case VeskField::Button: break;
    }
    return QString();
}

void writeComboBoxItems(VeskField const& field, VeskXmlNode& element)
{
    QString const selected = field.getSelectedId();
    QStringList const ids = field.getComboBoxIds();
    QStringList const labels = field.getComboBoxLabels();
    for (int i = 0; i < ids.size(); ++i) {
        VeskXmlNode item = element.addChild(QStringLiteral("item"), QString());
        item.setAttribute(QStringLiteral("id"), ids.at(i), QString());
        // An option without a label shows its id, as a combo box made
        // without labels does.
        item.insertData(i < labels.size() ? labels.at(i) : ids.at(i));
        if (ids.at(i) == selected)
            item.setAttribute(QStringLiteral("selected"), QStringLiteral("1"), QString());
    }
}

// Fills an empty "field" element with the field's id, kind word and value.
void writeField(VeskField const& field, VeskXmlNode& element)
{
    element.addChild(QStringLiteral("id"), QString()).insertData(field.getId());
    VeskField::Type const type = field.getType();
    QString const word = kindWord(type);
    if (!word.isNull())
        element.setAttribute(QStringLiteral("type"), word, QString());

    switch (type) {
    case VeskField::ComboBox:
        writeComboBoxItems(field, element);
        break;
    case VeskField::CheckBox:
    case VeskField::RadioButton:
        element.setAttribute(QStringLiteral("checked"), field.isChecked() ? 1 : 0, QString());
        break;
    case VeskField::LineEdit:
    case VeskField::DirEdit:
    case VeskField::FileEdit:
    case VeskField::SoundEdit:
    case VeskField::PasswordEdit:
        element.setAttribute(QStringLiteral("maxlength"), field.getMaxTextLength(), QString());
        element.addChild(QStringLiteral("string"), QString()).insertData(field.getText());
        break;
    case VeskField::TextEdit:
        element.addChild(QStringLiteral("string"), QString()).insertData(field.getText());
        break;
    case VeskField::SpinBox:
        element.setAttribute(QStringLiteral("max"), field.getSpinBoxMax(), QString());
        element.setAttribute(QStringLiteral("min"), field.getSpinBoxMin(), QString());
        element.setAttribute(QStringLiteral("val"), field.getIntValue(), QString());
        break;
    case VeskField::DoubleSpinBox:
        element.setAttribute(QStringLiteral("max"), field.getDoubleSpinBoxMax(), QString());
        element.setAttribute(QStringLiteral("min"), field.getDoubleSpinBoxMin(), QString());
        element.setAttribute(QStringLiteral("val"), field.getDoubleValue(), QString());
        break;
    case VeskField::Image:
        element.insertData(QString::fromLatin1(field.getImgData().toHex()));
        break;
    case VeskField::None:
    case VeskField::Label:
    case VeskField::Button:
        break;
    }
}

// The text of the element's "id" child; empty when it has none.
QString elementId(VeskXmlNode const& element)
{
    VeskXmlNode const id = element.getChild(QStringLiteral("id"));
    return id.isNull() || !id.hasData() ? QString() : id.getData();
}

int intAttribute(VeskXmlNode const& element, QString const& name)
{
    return element.getAttribute(name, QString()).toInt(nullptr, 10);
}

double doubleAttribute(VeskXmlNode const& element, QString const& name)
{
    return element.getAttribute(name, QString()).toDouble();
}

// Reads the options and the selection in either form: "item" children with
// an "id" attribute and a "selected" mark, or paired "string_id" and
// "string_label" children with a "selectedid" attribute.
void readComboBox(VeskField& field, VeskXmlNode const& element)
{
    QStringList ids;
    QStringList labels;
    QString selected = element.getAttribute(QStringLiteral("selectedid"), QString());
    QString const idName = QStringLiteral("id");
    QString const selectedName = QStringLiteral("selected");
    for (VeskXmlNode const& child : element.getChildNodes()) {
        QString const name = child.name();
        if (!child.hasData())
            continue;
        if (name == QLatin1String("string_label")) {
            labels.append(child.getData());
        } else if (name == QLatin1String("string_id")) {
            ids.append(child.getData());
        } else if (name == QLatin1String("item") && child.hasAttribute(idName, QString())) {
            QString const id = child.getAttribute(idName, QString());
            ids.append(id);
            labels.append(child.getData());
            if (child.getAttribute(selectedName, QString()) == QLatin1String("1"))
                selected = id;
        }
    }
    field.setComboBoxItems(ids, labels);
    field.setSelectedId(selected);
}

} // namespace

VeskFieldPrivate::VeskFieldPrivate(VeskField::Type type)
    : ref(1)
    , type(type)
    , readOnly(false)
    , visible(true)
    , pressed(false)
{
    // Slots a kind does not use are never read for it; zero them anyway so a
    // record never carries indeterminate bytes.
    std::memset(static_cast<void*>(&max), 0, sizeof(max));
    std::memset(static_cast<void*>(&min), 0, sizeof(min));
    std::memset(static_cast<void*>(&value), 0, sizeof(value));
}

VeskFieldPrivate::VeskFieldPrivate(VeskFieldPrivate const& other)
    : ref(1)
    , type(other.type)
    , label(other.label)
    , id(other.id)
    , group(other.group)
    , suffix(other.suffix)
    , max(other.max)
    , min(other.min)
    , value(other.value)
    , comboBoxIds(other.comboBoxIds)
    , comboBoxLabels(other.comboBoxLabels)
    , text(other.text)
    , action(other.action)
    , readOnly(other.readOnly)
    , visible(other.visible)
    , pressed(other.pressed)
    , imgData(other.imgData)
    , depends(other.depends)
{
}

VeskField::VeskField()
    : d(nullptr)
{
}

VeskField::VeskField(VeskFieldPrivate* record)
    : d(record)
{
}

VeskField::VeskField(VeskField const& other)
    : d(other.d)
{
    if (d)
        d->ref.ref();
}

VeskField VeskField::operator=(VeskField const& other)
{
    if (d != other.d) {
        if (other.d)
            other.d->ref.ref();
        if (d && !d->ref.deref())
            delete d;
        d = other.d;
    }
    return *this;
}

VeskField::~VeskField()
{
    if (d && !d->ref.deref())
        delete d;
}

// Gives this handle a record of its own before a value is written. On an
// allocation failure the handle keeps the shared record.
void VeskField::detach()
{
    qAtomicDetach(d);
}

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

bool VeskField::isNull() const
{
    return !d;
}

VeskField::Type VeskField::getType() const
{
    return d ? d->type : None;
}

QString VeskField::getLabel() const { return d ? d->label : QString(); }
QString VeskField::getId() const { return d ? d->id : QString(); }
QString VeskField::getGroup() const { return d ? d->group : QString(); }
QString VeskField::getSuffix() const { return d ? d->suffix : QString(); }
QString VeskField::getText() const { return d ? d->text : QString(); }
QStringList VeskField::getDepends() const { return d ? d->depends : QStringList(); }
QStringList VeskField::getComboBoxIds() const { return d ? d->comboBoxIds : QStringList(); }
QStringList VeskField::getComboBoxLabels() const { return d ? d->comboBoxLabels : QStringList(); }
QByteArray VeskField::getImgData() const { return d ? d->imgData : QByteArray(); }

bool VeskField::getVisible() const { return d && d->visible; }
bool VeskField::isReadOnly() const { return d && d->readOnly; }
bool VeskField::isPressed() const { return d && d->pressed; }
bool VeskField::isChecked() const { return d && d->value.toBool(); }

int VeskField::getIntValue() const { return d ? d->value.toInt() : 0; }
int VeskField::getSelectedIndex() const { return getIntValue(); }
double VeskField::getDoubleValue() const { return d ? d->value.toDouble() : 0.0; }

int VeskField::getSpinBoxMax() const { return d ? d->max.toInt() : 0; }
int VeskField::getMaxIntValue() const { return getSpinBoxMax(); }
int VeskField::getMaxTextLength() const { return getSpinBoxMax(); }
int VeskField::getSpinBoxMin() const { return d ? d->min.toInt() : 0; }
int VeskField::getMinIntValue() const { return getSpinBoxMin(); }
double VeskField::getDoubleSpinBoxMax() const { return d ? d->max.toDouble() : 0.0; }
double VeskField::getDoubleSpinBoxMin() const { return d ? d->min.toDouble() : 0.0; }

QString VeskField::getSelectedId() const
{
    int const index = getSelectedIndex();
    return d && index >= 0 && index < d->comboBoxIds.size() ? d->comboBoxIds.at(index) : QString();
}

QString VeskField::getSelectedLabel() const
{
    int const index = getSelectedIndex();
    return d && index >= 0 && index < d->comboBoxLabels.size() ? d->comboBoxLabels.at(index)
                                                                : QString();
}

VeskArg VeskField::getValue() const
{
    switch (getType()) {
    case ComboBox: return VeskArg(getSelectedId());
    case CheckBox:
    case RadioButton: return VeskArg(isChecked());
    case LineEdit:
    case DirEdit:
    case FileEdit:
    case SoundEdit:
    case PasswordEdit:
    case TextEdit: return VeskArg(getText());
    case SpinBox: return VeskArg(getIntValue());
    case DoubleSpinBox: return VeskArg(getDoubleValue());
    case Label: return VeskArg(getLabel());
    case Image: return VeskArg(getImgData());
    default: return VeskArg();
    }
}

void VeskField::setLabel(QString const& label)
{
    if (!d || d->label == label)
        return;
    detach();
    d->label = label;
}

void VeskField::setText(QString const& text)
{
    if (!d || d->text == text)
        return;
    detach();
    d->text = text;
}

void VeskField::setImgData(QByteArray const& data)
{
    if (!d || d->imgData == data)
        return;
    detach();
    d->imgData = data;
}

void VeskField::setMaxTextLength(int length)
{
    if (!d || d->max.toInt() == length)
        return;
    detach();
    d->max.setInt(length);
}

void VeskField::setIntValue(int value)
{
    if (!d || d->value.toInt() == value)
        return;
    detach();
    d->value.setInt(value);
}

void VeskField::setDoubleValue(double value)
{
    if (!d || d->value.toDouble() == value)
        return;
    detach();
    d->value.setDouble(value);
}

void VeskField::setChecked(bool checked)
{
    if (!d || d->value.toBool() == checked)
        return;
    detach();
    d->value.setBool(checked);
}

void VeskField::setSpinBoxMin(int min)
{
    if (!d || d->min.toInt() == min)
        return;
    detach();
    d->min.setInt(min);
    if (d->value.toInt() < min)
        d->value.setInt(min);
}

void VeskField::setSpinBoxMax(int max)
{
    if (!d || d->max.toInt() == max)
        return;
    detach();
    d->max.setInt(max);
    if (d->value.toInt() > max)
        d->value.setInt(max);
}

void VeskField::setDoubleSpinBoxMin(double min)
{
    if (!d || d->min.toDouble() == min)
        return;
    detach();
    d->min.setDouble(min);
    if (min > d->value.toDouble())
        d->value.setDouble(min);
}

void VeskField::setDoubleSpinBoxMax(double max)
{
    if (!d || d->max.toDouble() == max)
        return;
    detach();
    d->max.setDouble(max);
    if (d->value.toDouble() > max)
        d->value.setDouble(max);
}

void VeskField::setComboBoxItems(QStringList const& ids, QStringList const& labels)
{
    if (!d || (d->comboBoxIds == ids && d->comboBoxLabels == labels))
        return;
    detach();
    d->comboBoxIds = ids;
    d->comboBoxLabels = labels;
    d->value.setInt(0);
}

void VeskField::setSelectedIndex(int index)
{
    if (!d || index < 0 || index >= d->comboBoxIds.size() || index == d->value.toInt())
        return;
    detach();
    d->value.setInt(index);
}

void VeskField::setSelectedId(QString const& id)
{
    if (!d)
        return;
    int const index = int(d->comboBoxIds.indexOf(id));
    if (index < 0 || index == d->value.toInt())
        return;
    detach();
    d->value.setInt(index);
}

void VeskField::setVisible(bool visible)
{
    if (d)
        d->visible = visible;
}

void VeskField::setReadOnly(bool readOnly)
{
    if (d)
        d->readOnly = readOnly;
}

void VeskField::setPressed(bool pressed)
{
    if (d)
        d->pressed = pressed;
}

void VeskField::clicked()
{
    if (d)
        d->action();
}

VeskXmlNode VeskField::toXml() const
{
    VeskXmlNode element(QStringLiteral("field"), QString(), nullptr);
    writeField(*this, element);
    return element;
}

void VeskField::fromXml(VeskXmlNode const& node)
{
    QString const id = elementId(node);
    if (id.isEmpty() || id != getId())
        return;
    Type const type = getType();
    QString const word = kindWord(type);
    if (word.isNull() || node.getAttribute(QStringLiteral("type"), QString()) != word)
        return;

    switch (type) {
    case ComboBox:
        readComboBox(*this, node);
        break;
    case CheckBox:
    case RadioButton:
        setChecked(node.getAttribute(QStringLiteral("checked"), QString()) == QLatin1String("1"));
        break;
    case LineEdit:
    case DirEdit:
    case FileEdit:
    case SoundEdit:
    case PasswordEdit: {
        // 0 stands for "no new maximum": the stored one stays.
        int const maxLength = intAttribute(node, QStringLiteral("maxlength"));
        if (maxLength != 0)
            setMaxTextLength(maxLength);
        setText(node.getChild(QStringLiteral("string")).getData());
        break;
    }
    case TextEdit:
        setText(node.getChild(QStringLiteral("string")).getData());
        break;
    case SpinBox: {
        int const value = intAttribute(node, QStringLiteral("val"));
        int const max = intAttribute(node, QStringLiteral("max"));
        int const min = intAttribute(node, QStringLiteral("min"));
        setSpinBoxMin(min);
        setSpinBoxMax(max);
        setIntValue(value);
        break;
    }
    case DoubleSpinBox: {
        double const value = doubleAttribute(node, QStringLiteral("val"));
        double const max = doubleAttribute(node, QStringLiteral("max"));
        double const min = doubleAttribute(node, QStringLiteral("min"));
        setDoubleSpinBoxMin(min);
        setDoubleSpinBoxMax(max);
        setDoubleValue(value);
        break;
    }
    case None:
    case Label:
    case Image:
    case Button:
        break;
    }
}

VeskXmlNode VeskField::toXml(QList<VeskField> const& fields)
{
    VeskXmlNode list(QStringLiteral("fieldlist"), QString(), nullptr);
    // Built in place rather than through toXml() and appendChild(), which
    // would copy every element over from a document of its own.
    QString const fieldName = QStringLiteral("field");
    for (VeskField const& field : fields) {
        VeskXmlNode element = list.addChild(fieldName, QString());
        writeField(field, element);
    }
    return list;
}

QList<VeskField> VeskField::fromXml(QList<VeskField> const& fields, VeskXmlNode const& node)
{
    QList<VeskField> result;
    if (node.name() != QLatin1String("fieldlist"))
        return result;

    // Each "field" element is used up by the first field with its id, which
    // takes every element with that id in document order. The elements are
    // grouped by id once, as chains of positions in the child list, so that
    // each field finds its elements without scanning the whole list again
    // and grouping copies no element and allocates nothing per id.
    struct Chain
    {
        int first;
        int last;
    };
    QList<VeskXmlNode> const children = node.getChildNodes();
    QHash<QString, Chain> byId;
    byId.reserve(int(children.size()));
    std::vector<int> next(size_t(children.size()), -1);
    for (int i = 0; i < int(children.size()); ++i) {
        VeskXmlNode const& child = children.at(i);
        if (child.name() != QLatin1String("field"))
            continue;
        QString const id = elementId(child);
        if (id.isEmpty())
            continue;
        auto const found = byId.find(id);
        if (found == byId.end()) {
            byId.insert(id, Chain{i, i});
        } else {
            next[size_t(found->last)] = i;
            found->last = i;
        }
    }

    result.reserve(fields.size());
    for (VeskField field : fields) {
        if (!byId.isEmpty()) {
            auto const found = byId.constFind(field.getId());
            if (found != byId.constEnd()) {
                int const first = found->first;
                byId.erase(found);
                for (int i = first; i >= 0; i = next[size_t(i)])
                    field.fromXml(children.at(i));
            }
        }
        result.append(field);
    }
    return result;
}

bool VeskField::operator==(VeskField const& other) const
{
    if (d == other.d)
        return true;
    Type const type = getType();
    if (type != other.getType())
        return false;
    if (getLabel() != other.getLabel() || getId() != other.getId())
        return false;

    switch (type) {
    case None:
    case Label:
        return true;
    case ComboBox:
        return getSelectedId() == other.getSelectedId()
               && d->comboBoxIds == other.d->comboBoxIds;
    case CheckBox:
    case RadioButton:
        return d->value.toBool() == other.d->value.toBool() && d->depends == other.d->depends;
    case LineEdit:
    case DirEdit:
    case FileEdit:
    case SoundEdit:
    case PasswordEdit:
        return d->text == other.d->text && d->max.toInt() == other.d->max.toInt();
    case TextEdit:
        return d->text == other.d->text;
    case SpinBox:
        return d->value.toInt() == other.d->value.toInt() && d->max.toInt() == other.d->max.toInt()
               && d->min.toInt() == other.d->min.toInt();
    case DoubleSpinBox:
        return d->value.toDouble() == other.d->value.toDouble()
               && d->max.toDouble() == other.d->max.toDouble()
               && d->min.toDouble() == other.d->min.toDouble();
    case Image:
        return d->imgData == other.d->imgData;
    case Button:
        return d->action == other.d->action;
    }
    return false; // not reached: every kind is listed above
}

bool VeskField::operator!=(VeskField const& other) const
{
    return !(*this == other);
}

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
uint qHash(VeskField const& field, uint seed)
#else
size_t qHash(VeskField const& field, size_t seed)
#endif
{
    return qHash(field.getId(), seed);
}

namespace {

void writeQuoted(QDebug& dbg, QString const& text)
{
    VeskDebug::quoted(dbg, text);
}

// The part of a field's text after "type: ". Spacing is off on entry; a
// string list turns it on, so what follows one is spaced.
void writeKindPart(QDebug& dbg, VeskField const& field)
{
    switch (field.getType()) {
    case VeskField::None:
        dbg << "None";
        break;
    case VeskField::ComboBox:
        dbg << "ComboBox" << " option ids: ";
        VeskDebug::list(dbg, field.getComboBoxIds(), writeQuoted);
        dbg << " option labels: ";
        VeskDebug::list(dbg, field.getComboBoxLabels(), writeQuoted);
        dbg << " selected: ";
        writeQuoted(dbg, field.getSelectedId());
        break;
    case VeskField::CheckBox:
        dbg << "CheckBox" << " checked: " << field.isChecked();
        break;
    case VeskField::RadioButton:
        dbg << "RadioButton" << " checked: " << field.isChecked();
        break;
    case VeskField::LineEdit:
        dbg << "LineEdit" << " text: ";
        writeQuoted(dbg, field.getText());
        dbg << " maxtextlength: " << field.getMaxTextLength();
        break;
    case VeskField::DirEdit:
        dbg << "DirEdit" << " path: ";
        writeQuoted(dbg, field.getText());
        break;
    case VeskField::FileEdit:
        dbg << "FileEdit" << " path: ";
        writeQuoted(dbg, field.getText());
        break;
    case VeskField::SoundEdit:
        dbg << "SoundEdit" << " path: ";
        writeQuoted(dbg, field.getText());
        break;
    case VeskField::PasswordEdit:
        dbg << "PasswordEdit password: masked";
        break;
    case VeskField::TextEdit:
        dbg << "TextEdit" << " text: ";
        writeQuoted(dbg, field.getText());
        break;
    case VeskField::SpinBox:
        dbg << "SpinBox" << " max: " << field.getSpinBoxMax() << " min: " << field.getSpinBoxMin()
            << " val: " << field.getIntValue();
        break;
    case VeskField::DoubleSpinBox:
        dbg << "DoubleSpinBox" << " max: " << field.getDoubleSpinBoxMax()
            << " min: " << field.getDoubleSpinBoxMin() << " val: " << field.getDoubleValue();
        break;
    case VeskField::Label:
        dbg << "Label" << " label: ";
        writeQuoted(dbg, field.getLabel());
        break;
    case VeskField::Image:
        dbg << "Image size: " << int(field.getImgData().size());
        break;
    case VeskField::Button:
        dbg << "Button label: ";
        writeQuoted(dbg, field.getLabel());
        break;
    }
}

} // namespace

QDebug operator<<(QDebug dbg, VeskField const& field)
{
    dbg.nospace() << "VeskField(";
    dbg.nospace() << "id: ";
    VeskDebug::quoted(dbg, field.getId());
    dbg << " type: ";
    writeKindPart(dbg.nospace(), field);
    dbg.nospace() << ")";
    return dbg.space();
}

QDebug operator<<(QDebug dbg, QList<VeskField> const& fields)
{
    for (VeskField const& field : fields)
        dbg << field;
    return dbg.space();
}
