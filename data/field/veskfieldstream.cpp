#include "veskfield_p.h"
#include "veskstream_p.h"

#include <QtCore/QDataStream>

#include <memory>

namespace {

// How the kind reads its three number slots: the double spin box keeps
// doubles in all of them, check and radio buttons keep their state in the
// value slot, every other kind keeps ints.
enum class SlotView { Int, Double, Bool };

SlotView viewOf(VeskField::Type type, bool valueSlot)
{
    if (type == VeskField::DoubleSpinBox)
        return SlotView::Double;
    if (valueSlot && (type == VeskField::CheckBox || type == VeskField::RadioButton))
        return SlotView::Bool;
    return SlotView::Int;
}

void writeSlot(QDataStream& stream, VeskFieldSlot const& slot, SlotView view)
{
    switch (view) {
    case SlotView::Int: stream << qint32(slot.toInt()); break;
    case SlotView::Double: VeskStream::writeDouble(stream, slot.toDouble()); break;
    case SlotView::Bool: stream << quint8(slot.toBool() ? 1 : 0); break;
    }
}

bool readSlot(QDataStream& stream, VeskFieldSlot& slot, SlotView view)
{
    switch (view) {
    case SlotView::Int: {
        qint32 value = 0;
        stream >> value;
        slot.setInt(value);
        break;
    }
    case SlotView::Double: slot.setDouble(VeskStream::readDouble(stream)); break;
    case SlotView::Bool: {
        bool value = false;
        VeskStream::readBool(stream, value);
        slot.setBool(value);
        break;
    }
    }
    return VeskStream::ok(stream);
}

// The display flags in one byte: read-only, visible, pressed.
quint8 flagsOf(VeskFieldPrivate const& record)
{
    return quint8((record.readOnly ? 1 : 0) | (record.visible ? 2 : 0) | (record.pressed ? 4 : 0));
}

bool readFlags(QDataStream& stream, VeskFieldPrivate& record)
{
    quint8 flags = 0;
    stream >> flags;
    if (VeskStream::ok(stream) && flags > 7)
        VeskStream::corrupt(stream);
    record.readOnly = flags & 1;
    record.visible = flags & 2;
    record.pressed = flags & 4;
    return VeskStream::ok(stream);
}

bool readMembers(QDataStream& stream, VeskFieldPrivate& record)
{
    stream >> record.label >> record.id >> record.group >> record.suffix >> record.text;
    return VeskStream::ok(stream) && VeskStream::readStrings(stream, record.depends)
           && VeskStream::readStrings(stream, record.comboBoxIds)
           && VeskStream::readStrings(stream, record.comboBoxLabels)
           && (stream >> record.imgData, VeskStream::ok(stream))
           && readSlot(stream, record.max, viewOf(record.type, false))
           && readSlot(stream, record.min, viewOf(record.type, false))
           && readSlot(stream, record.value, viewOf(record.type, true))
           && readFlags(stream, record);
}

} // namespace

QDataStream& operator<<(QDataStream& stream, VeskField const& field)
{
    if (!VeskStream::beginWrite(stream))
        return stream;
    VeskFieldPrivate const* record = field.d;
    stream << qint32(record ? record->type : VeskField::None);
    if (!record)
        return stream;
    stream << record->label << record->id << record->group << record->suffix << record->text;
    VeskStream::writeStrings(stream, record->depends);
    VeskStream::writeStrings(stream, record->comboBoxIds);
    VeskStream::writeStrings(stream, record->comboBoxLabels);
    stream << record->imgData;
    writeSlot(stream, record->max, viewOf(record->type, false));
    writeSlot(stream, record->min, viewOf(record->type, false));
    writeSlot(stream, record->value, viewOf(record->type, true));
    stream << flagsOf(*record);
    return stream;
}

QDataStream& operator>>(QDataStream& stream, VeskField& field)
{
    VeskField read;
    qint32 type = 0;
    if (VeskStream::beginRead(stream))
        stream >> type;
    if (VeskStream::ok(stream) && (type < VeskField::None || type > VeskField::Button))
        VeskStream::corrupt(stream);
    if (VeskStream::ok(stream) && type != VeskField::None) {
        auto record = std::make_unique<VeskFieldPrivate>(VeskField::Type(type));
        if (readMembers(stream, *record))
            read = VeskField(record.release());
    }
    field.swap(read);
    return stream;
}

QDataStream& operator<<(QDataStream& stream, QList<VeskField> const& fields)
{
    return VeskStream::writeList(stream, fields);
}

QDataStream& operator>>(QDataStream& stream, QList<VeskField>& fields)
{
    return VeskStream::readList(stream, fields);
}
