#ifndef VESKARG_H
#define VESKARG_H

/// \file
/// VeskArg, the strictly typed argument value, and its debug and stream operators.

#include "veskdata_global.h"

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QMetaType>
#include <QtCore/QString>
#include <QtCore/QStringList>

class QDataStream;
class QDebug;
class QVariant;
class VeskAccountConnection;
class VeskBuddy;
class VeskBuddyResource;
class VeskField;
class VeskGuiEventsReceiver;
class VeskPlugin;
class VeskPluginAction;
class VeskPresence;
class VeskService;
class VeskTextFormat;
class VeskVideoClip;
class VeskXmlNode;
struct VeskArgPrivate;

/// A strictly typed, immutable argument value. A VeskArg is a handle onto a
/// shared record: copies share it, nothing ever changes it, and a handle that
/// holds a value only accepts values of the same type afterwards. Values are
/// read back only through the to...() conversions, which throw a
/// std::runtime_error naming both types when the type is not the one asked for.
class VESK_DATA_EXPORT VeskArg
{
public:
    /// The type of the value a handle holds; the numbers are written to streams and must not
    /// change.
    enum Type : qint32 {
        None = 0, ///< No value: a default-made handle, which takes a value of any type.
        Char = 1, ///< Holds a char.
        UChar = 2, ///< Holds an unsigned char.
        Int = 3, ///< Holds an int.
        UInt = 4, ///< Holds an unsigned int.
        Int64 = 5, ///< Holds a long long.
        UInt64 = 6, ///< Holds an unsigned long long.
        Float = 7, ///< Holds a float.
        Double = 8, ///< Holds a double.
        String = 9, ///< Holds a QString.
        ByteArray = 10, ///< Holds a QByteArray.
        StringList = 11, ///< Holds a QStringList.
        Bool = 12, ///< Holds a bool.
        Pointer = 13, ///< Holds a void*, never owned.
        PointerList = 14, ///< Holds a QList<void*>, never owned.
        Plugin = 15, ///< Holds a VeskPlugin*, never owned.
        Field = 16, ///< Holds a VeskField.
        FieldList = 17, ///< Holds a QList<VeskField>.
        XmlNode = 18, ///< Holds a VeskXmlNode.
        Buddy = 19, ///< Holds a VeskBuddy of any kind.
        BuddyResource = 20, ///< Holds a VeskBuddyResource.
        Account = 21, ///< Holds a VeskAccountConnection*, never owned.
        PluginAction = 22, ///< Holds a VeskPluginAction.
        Presence = 23, ///< Holds a VeskPresence.
        GuiEventsReceiver = 24, ///< Holds a VeskGuiEventsReceiver*, never owned.
        VideoClip = 25, ///< Holds a VeskVideoClip.
        ArgList = 26, ///< Holds a QList<VeskArg>.
        Service = 27, ///< Holds a VeskService.
        ServiceList = 28, ///< Holds a QList<VeskService>.
        TextFormatList = 29, ///< Holds a QList<VeskTextFormat>.
        Undefined = 30 ///< Reserved; no value is ever of this type.
    };

    /// A None value, which takes a value of any type on its first assignment.
    VeskArg();
    ///@{
    /// Each constructor makes a handle that holds value with the type of its C++ type. Pointers are
    /// stored, never owned.
    VeskArg(char const& value);
    VeskArg(unsigned char const& value);
    VeskArg(int const& value);
    VeskArg(unsigned int const& value);
    VeskArg(long long const& value);
    VeskArg(unsigned long long const& value);
    VeskArg(float const& value);
    VeskArg(double const& value);
    VeskArg(QString const& value);
    /// Without this, a string literal would take the pointer-to-bool path.
    VeskArg(char const* text);
    VeskArg(QByteArray const& value);
    VeskArg(QStringList const& value);
    VeskArg(bool const& value);
    VeskArg(void* value);
    VeskArg(QList<void*> const& value);
    VeskArg(VeskPlugin* value);
    VeskArg(VeskAccountConnection* value);
    VeskArg(VeskPluginAction const& value);
    VeskArg(VeskGuiEventsReceiver* value);
    VeskArg(QList<VeskArg> const& value);
    VeskArg(VeskField const& value);
    VeskArg(QList<VeskField> const& value);
    VeskArg(VeskXmlNode const& value);
    VeskArg(VeskBuddy const& value);
    VeskArg(VeskBuddyResource const& value);
    VeskArg(VeskPresence const& value);
    VeskArg(VeskVideoClip const& value);
    VeskArg(VeskService const& value);
    VeskArg(QList<VeskService> const& value);
    VeskArg(QList<VeskTextFormat> const& value);
    ///@}

    /// Shares other's record, and takes its type lock.
    VeskArg(VeskArg const& other);
    /// Drops this handle's reference; the last one frees the record.
    ~VeskArg();

    /// Type-locked: throws unless this handle is None or other has its type.
    VeskArg operator=(VeskArg const& other);

    /// Exchanges the two handles, type locks included; never throws. Moving
    /// algorithms such as QList::move() swap elements this way.
    void swap(VeskArg& other) noexcept { qSwap(d, other.d); }

    /// The type of the value; None for a default-made handle.
    Type getType() const;
    /// The type as vesk_arg_type() names it.
    QString getTypeName() const;

    ///@{
    /// Each returns the value when the handle holds exactly its type, and otherwise throws the
    /// std::runtime_error built by vesk_conversion(), which names both types. No conversion widens,
    /// narrows or parses.
    char toChar() const;
    unsigned char toUChar() const;
    int toInt() const;
    unsigned int toUInt() const;
    long long toInt64() const;
    unsigned long long toUInt64() const;
    float toFloat() const;
    double toDouble() const;
    QString toString() const;
    QByteArray toByteArray() const;
    QStringList toStringList() const;
    bool toBool() const;
    void* toPointer() const;
    QList<void*> toPointerList() const;
    VeskPlugin* toPlugin() const;
    VeskAccountConnection* toAccount() const;
    VeskPluginAction toPluginAction() const;
    VeskGuiEventsReceiver* toGuiEventsReceiver() const;
    QList<VeskArg> toArgList() const;
    VeskField toField() const;
    QList<VeskField> toFieldList() const;
    VeskXmlNode toXmlNode() const;
    VeskBuddy toBuddy() const;
    VeskBuddyResource toBuddyResource() const;
    VeskPresence toPresence() const;
    VeskVideoClip toVideoClip() const;
    VeskService toService() const;
    QList<VeskService> toServiceList() const;
    QList<VeskTextFormat> toTextFormatList() const;
    ///@}

    /// Same type and equal values; handles of different types are never equal.
    bool operator==(VeskArg const& other) const;
    /// The negation of operator==().
    bool operator!=(VeskArg const& other) const;

    /// Stores value into field through the setter of the field's kind when it
    /// differs from the field's value, and tells whether a setter was called.
    /// A combo box takes a String as the selected id and an Int as the
    /// selected index, and ignores any other type. The other kinds that hold a
    /// value convert it strictly, so a value of another type throws and
    /// leaves the field as it was; None, Button and a null field take nothing.
    static bool setFieldValue(VeskField& field, VeskArg const& value);

    /// The value as a QVariant. Scalars, strings, byte arrays and string lists
    /// become Qt's own types of exactly the same C++ type (a Char a char, a
    /// Float a float), an ArgList a QVariantList of converted elements, and
    /// every other type the meta-type declared for it (a Pointer a void*, a
    /// Plugin a VeskPlugin*, a FieldList a QList<VeskField>, ...). None and
    /// Undefined give an invalid QVariant.
    QVariant toVariant() const;
    /// The reverse of toVariant(), by the variant's exact type: an int gives
    /// an Int, never an Int64; a float a Float, never a Double. A QVariantList
    /// gives an ArgList of converted elements, and a QList<VeskArg> or a
    /// VeskArg is taken as it is; an entry of any contact-list kind gives a
    /// Buddy. A variant of any other type (long, short, QChar, QDate, ...) and
    /// an invalid one give the None value.
    static VeskArg fromVariant(QVariant const& variant);

private:
    template<typename Holder, typename T> void construct(Type type, T const& value);
    template<typename Holder> Holder const& holder(Type wanted) const;

    VeskArgPrivate* d;
};

// The handle is one pointer whose bytes may be moved as they are: lists of
// mixed types then shift elements by moving memory rather than by assignment,
// which the type lock would refuse.
Q_DECLARE_TYPEINFO(VeskArg, Q_RELOCATABLE_TYPE);

/// Exchanges two handles; never throws.
inline void swap(VeskArg& first, VeskArg& second) noexcept
{
    first.swap(second);
}

/// "VeskArg::" followed by the name of the type, or "VeskArg::Unknown" for a
/// number outside the enumeration.
VESK_DATA_EXPORT QString vesk_arg_type(VeskArg::Type type);

/// "VeskArg(", the type's label and value, ")", then one blank.
VESK_DATA_EXPORT QDebug operator<<(QDebug dbg, VeskArg const& arg);
/// "VeskArg::" and the type's name (nothing for an unknown number), one blank.
VESK_DATA_EXPORT QDebug operator<<(QDebug dbg, VeskArg::Type type);
/// "(", the values joined by ", ", ")", one blank.
VESK_DATA_EXPORT QDebug operator<<(QDebug dbg, QList<VeskArg> const& list);

///@{
/// A version byte, the type number and the value. Only values that mean the
/// same in another process can be written: pointers, plugins, accounts, GUI
/// receivers, contact-list entries, resources and plugin actions cannot, and
/// writing a value that is or contains one sets QDataStream::WriteFailed and
/// writes nothing. Reading replaces arg whatever type it held; corrupt or
/// truncated input leaves it None and sets the stream's status.
VESK_DATA_EXPORT QDataStream& operator<<(QDataStream& stream, VeskArg const& arg);
VESK_DATA_EXPORT QDataStream& operator>>(QDataStream& stream, VeskArg& arg);
///@}
///@{
/// A version byte, a count and the values.
VESK_DATA_EXPORT QDataStream& operator<<(QDataStream& stream, QList<VeskArg> const& list);
VESK_DATA_EXPORT QDataStream& operator>>(QDataStream& stream, QList<VeskArg>& list);
///@}

Q_DECLARE_METATYPE(VeskArg)
Q_DECLARE_METATYPE(VeskArg::Type)

#endif // VESKARG_H
