#ifndef VESKFIELD_H
#define VESKFIELD_H

/// \file
/// VeskField, one input of a settings page, with its XML form and stream operators.

#include "veskdata_global.h"
#include "veskarg.h"
#include "veskpluginaction.h"

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <veskxmlnode.h>

QT_BEGIN_NAMESPACE
class QDataStream;
class QDebug;
QT_END_NAMESPACE

class VeskFieldPrivate;

/// One input of a plugin's settings page or dialog: its widget kind, id,
/// label, current value and the limits of that value.
///
/// A VeskField is a handle onto a shared record. Copies share the record until
/// one of them changes a value: every setter gives its handle a private copy
/// first, except setVisible(), setReadOnly() and setPressed(), which change
/// the shared record for every handle at once. The kind never changes.
///
/// A default-made field is null: it reads as kind None with empty strings,
/// zero and false, and its setters do nothing.
class VESK_DATA_EXPORT VeskField
{
public:
    /// The widget kind of a field; the numbers are written to streams and must not change.
    enum Type : qint32 {
        None = 0, ///< No kind: a null field.
        ComboBox = 1, ///< A choice among options with ids and labels.
        CheckBox = 2, ///< An on/off choice.
        RadioButton = 3, ///< One choice of a group of exclusive ones.
        LineEdit = 4, ///< One line of text.
        DirEdit = 5, ///< A directory path.
        FileEdit = 6, ///< A file path.
        SoundEdit = 7, ///< The path of a sound file.
        PasswordEdit = 8, ///< One line of hidden text.
        TextEdit = 9, ///< Several lines of text.
        SpinBox = 10, ///< An integer between limits.
        DoubleSpinBox = 11, ///< A real number between limits.
        Label = 12, ///< Text the user cannot edit.
        Image = 13, ///< A picture from image bytes.
        Button = 14 ///< A push button that invokes an action.
    };

    /// A null field.
    VeskField();
    /// Shares other's record.
    VeskField(VeskField const& other);
    /// Shares other's record.
    VeskField operator=(VeskField const& other);
    /// Drops this handle's reference to the record.
    ~VeskField();

    /// Exchanges the two handles; never throws.
    void swap(VeskField& other) noexcept { qSwap(d, other.d); }

    ///@{
    /// Factories, the only way to make a field that is not null. Each checks
    /// its arguments and throws the std::runtime_error built by
    /// vesk_invalid_value() for the first one it refuses: an empty id, a
    /// button's invalid action, a spin box value below the minimum (above the
    /// maximum it is lowered to the maximum), or a double spin box value
    /// outside its limits. Numeric factories take max, min, then the value.
    static VeskField image(QString const& id, QByteArray const& data, QString const& group);
    /// A text the user cannot edit.
    static VeskField label(QString const& label, QString const& id, QString const& group);
    /// A button that invokes action when clicked; throws for an invalid action.
    static VeskField button(QString const& label, QString const& id, VeskPluginAction action,
                            QString const& group);
    /// Selects the first option whose id is selectedId, else the first
    /// option; with no labels the ids serve as labels.
    static VeskField comboBox(QString const& label, QString const& id, QStringList const& ids,
                              QStringList const& labels, QString const& selectedId,
                              QString const& group);
    /// An integer between min and max, shown with suffix.
    static VeskField spinBox(QString const& label, QString const& id, int max, int min, int value,
                             QString const& group, QString const& suffix);
    /// A real number between min and max.
    static VeskField doubleSpinBox(QString const& label, QString const& id, double max,
                                   double min, double value, QString const& group);
    /// One of a group of exclusive choices; depends names fields it enables.
    static VeskField radioButton(QString const& label, QString const& id, bool checked,
                                 QString const& group, QStringList const& depends);
    /// An on/off choice; depends names fields it enables.
    static VeskField checkBox(QString const& label, QString const& id, bool checked,
                              QString const& group, QStringList const& depends);
    /// One line of text of at most maxLength characters.
    static VeskField lineEdit(QString const& label, QString const& id, QString const& text,
                              int maxLength, QString const& group);
    /// One line of hidden text of at most maxLength characters.
    static VeskField passwordEdit(QString const& label, QString const& id, QString const& text,
                                  int maxLength, QString const& group);
    /// Several lines of text.
    static VeskField textEdit(QString const& label, QString const& id, QString const& text,
                              QString const& group);
    /// A directory path.
    static VeskField dirEdit(QString const& label, QString const& id, QString const& path,
                             QString const& group);
    /// A file path.
    static VeskField fileEdit(QString const& label, QString const& id, QString const& path,
                              QString const& group);
    /// The path of a sound file.
    static VeskField soundEdit(QString const& label, QString const& id, QString const& path,
                               QString const& group);
    ///@}

    /// True for a default-made field.
    bool isNull() const;
    /// The widget kind; None for a null field.
    Type getType() const;

    /// The text shown beside the widget.
    QString getLabel() const;
    /// The id that names the field in its page and in XML.
    QString getId() const;
    /// The name of the group box the field is shown in.
    QString getGroup() const;
    /// The text shown after a spin box's value.
    QString getSuffix() const;
    /// The text of a text kind, or the path of a path kind.
    QString getText() const;
    /// The ids of the fields a check box or radio button enables.
    QStringList getDepends() const;
    /// A combo box's option ids.
    QStringList getComboBoxIds() const;
    /// A combo box's option labels.
    QStringList getComboBoxLabels() const;
    /// An image's bytes.
    QByteArray getImgData() const;

    /// Whether the field is shown.
    bool getVisible() const;
    /// Whether the user may not change the value.
    bool isReadOnly() const;
    /// Whether a button is shown pressed.
    bool isPressed() const;
    /// A check box's or radio button's state.
    bool isChecked() const;

    ///@{
    /// The value slot: a combo box's selected index, a spin box's value.
    int getIntValue() const;
    int getSelectedIndex() const;
    double getDoubleValue() const;
    ///@}

    ///@{
    /// The max slot: a spin box's maximum, a line edit's maximum text length.
    int getSpinBoxMax() const;
    int getMaxIntValue() const;
    int getMaxTextLength() const;
    ///@}
    ///@{
    /// The min slot: a spin box's minimum.
    int getSpinBoxMin() const;
    int getMinIntValue() const;
    ///@}
    /// A double spin box's maximum.
    double getDoubleSpinBoxMax() const;
    /// A double spin box's minimum.
    double getDoubleSpinBoxMin() const;

    ///@{
    /// The selected option's id or label; empty when the selected index does
    /// not name an option.
    QString getSelectedId() const;
    QString getSelectedLabel() const;
    ///@}

    /// The value as an argument of the kind's type: the selected id, the
    /// checked state, the text, the number, the label or the image bytes. An
    /// invalid VeskArg for None, Button and a null field.
    VeskArg getValue() const;

    /// Sets the text shown beside the widget.
    void setLabel(QString const& label);
    /// Sets the text of a text kind or the path of a path kind.
    void setText(QString const& text);
    /// Sets an image's bytes.
    void setImgData(QByteArray const& data);
    /// Sets a line edit's maximum text length.
    void setMaxTextLength(int length);
    ///@{
    /// Stored as given, even outside the limits.
    void setIntValue(int value);
    void setDoubleValue(double value);
    ///@}
    /// Sets a check box's or radio button's state.
    void setChecked(bool checked);

    ///@{
    /// Each moves the value inside the limit it sets; the other limit stays,
    /// so the minimum may end up above the maximum.
    void setSpinBoxMin(int min);
    void setSpinBoxMax(int max);
    void setDoubleSpinBoxMin(double min);
    void setDoubleSpinBoxMax(double max);
    ///@}

    /// New options select the first one; the same options keep the selection.
    void setComboBoxItems(QStringList const& ids, QStringList const& labels);
    ///@{
    /// An index outside the options, or an id that is not among them, is
    /// ignored and the selection stays.
    void setSelectedIndex(int index);
    void setSelectedId(QString const& id);
    ///@}

    ///@{
    /// Written into the shared record: every handle of it sees the change.
    void setVisible(bool visible);
    void setReadOnly(bool readOnly);
    void setPressed(bool pressed);
    ///@}

    /// Invokes a button's action with its bound arguments (it only posts the
    /// call); does nothing for other kinds.
    void clicked();

    /// The field as a "field" element of a document of its own: the id as an
    /// "id" child, the kind word as the "type" attribute (none for a button)
    /// and the value with its limits. Labels, groups, flags and actions are
    /// not written; a password is written in clear.
    VeskXmlNode toXml() const;
    /// Takes the value from a "field" element that carries this field's id
    /// and kind word; any other element changes nothing.
    void fromXml(VeskXmlNode const& node);

    /// A "fieldlist" element with one "field" child per field, in order.
    static VeskXmlNode toXml(QList<VeskField> const& fields);
    /// Copies of fields, each updated from every "field" child of a
    /// "fieldlist" element that carries its id, in document order. An element
    /// serves only the first field with its id. A root of another name gives
    /// an empty list.
    static QList<VeskField> fromXml(QList<VeskField> const& fields, VeskXmlNode const& node);

    /// Compares kind, label, id and the kind's value and limits; group,
    /// suffix and the display flags never count.
    bool operator==(VeskField const& other) const;
    /// The negation of operator==().
    bool operator!=(VeskField const& other) const;

private:
    explicit VeskField(VeskFieldPrivate* record);
    void detach();

    friend VESK_DATA_EXPORT QDataStream& operator<<(QDataStream& stream, VeskField const& field);
    friend VESK_DATA_EXPORT QDataStream& operator>>(QDataStream& stream, VeskField& field);

    VeskFieldPrivate* d;
};

Q_DECLARE_TYPEINFO(VeskField, Q_RELOCATABLE_TYPE);

/// Exchanges two handles; never throws.
inline void swap(VeskField& first, VeskField& second) noexcept
{
    first.swap(second);
}

/// Hashes the id, so fields that compare equal hash alike.
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
VESK_DATA_EXPORT uint qHash(VeskField const& field, uint seed = 0);
#else
VESK_DATA_EXPORT size_t qHash(VeskField const& field, size_t seed = 0);
#endif

/// One line of text per field naming its id, kind and value; a password's
/// text is never shown.
VESK_DATA_EXPORT QDebug operator<<(QDebug dbg, VeskField const& field);
/// The fields' texts one after the other, then one blank.
VESK_DATA_EXPORT QDebug operator<<(QDebug dbg, QList<VeskField> const& fields);

///@{
/// A version byte, the kind and, for every kind but None, all of the field's
/// members: strings, options, image bytes, limits, value and display flags.
/// A button's action points into a running plugin and is not written; a
/// button read back has no action. Reading replaces field; corrupt or
/// truncated input leaves it null and sets the stream's status.
VESK_DATA_EXPORT QDataStream& operator<<(QDataStream& stream, VeskField const& field);
VESK_DATA_EXPORT QDataStream& operator>>(QDataStream& stream, VeskField& field);
///@}
///@{
/// A version byte, a count and the fields.
VESK_DATA_EXPORT QDataStream& operator<<(QDataStream& stream, QList<VeskField> const& fields);
VESK_DATA_EXPORT QDataStream& operator>>(QDataStream& stream, QList<VeskField>& fields);
///@}

Q_DECLARE_METATYPE(VeskField)
Q_DECLARE_METATYPE(VeskField::Type)

#endif // VESKFIELD_H
