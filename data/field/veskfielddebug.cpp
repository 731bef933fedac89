// The debug text of fields.

#include "veskfield.h"
#include "veskdebug_p.h"

#include <QtCore/QDebug>

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
