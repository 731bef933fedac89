#include "veskfield_p.h"

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
