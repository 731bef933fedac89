#include "veskarg.h"
#include "veskbuddycontact.h"
#include "veskbuddygroup.h"
#include "veskbuddytype.h"
#include "veskfield.h"
#include "veskpluginaction.h"
#include "veskpresence.h"
#include "veskservice.h"

#include <QtCore/QVariant>

#include <veskplugin.h>
#include <veskxmlnode.h>

QVariant VeskArg::toVariant() const
{
    switch (getType()) {
    case Char: return QVariant::fromValue(toChar());
    case UChar: return QVariant::fromValue(toUChar());
    case Int: return QVariant::fromValue(toInt());
    case UInt: return QVariant::fromValue(toUInt());
    case Int64: return QVariant::fromValue(qint64(toInt64()));
    case UInt64: return QVariant::fromValue(quint64(toUInt64()));
    case Float: return QVariant::fromValue(toFloat());
    case Double: return QVariant::fromValue(toDouble());
    case String: return QVariant::fromValue(toString());
    case ByteArray: return QVariant::fromValue(toByteArray());
    case StringList: return QVariant::fromValue(toStringList());
    case Bool: return QVariant::fromValue(toBool());
    case Pointer: return QVariant::fromValue(toPointer());
    case PointerList: return QVariant::fromValue(toPointerList());
    case Plugin: return QVariant::fromValue(toPlugin());
    case Field: return QVariant::fromValue(toField());
    case FieldList: return QVariant::fromValue(toFieldList());
    case XmlNode: return QVariant::fromValue(toXmlNode());
    case Buddy: return QVariant::fromValue(toBuddy());
    case BuddyResource: return QVariant::fromValue(toBuddyResource());
    case Account: return QVariant::fromValue(toAccount());
    case PluginAction: return QVariant::fromValue(toPluginAction());
    case Presence: return QVariant::fromValue(toPresence());
    case GuiEventsReceiver: return QVariant::fromValue(toGuiEventsReceiver());
    case VideoClip: return QVariant::fromValue(toVideoClip());
    case ArgList: {
        QVariantList list;
        for (VeskArg const& element : toArgList())
            list.append(element.toVariant());
        return list;
    }
    case Service: return QVariant::fromValue(toService());
    case ServiceList: return QVariant::fromValue(toServiceList());
    case TextFormatList: return QVariant::fromValue(toTextFormatList());
    case None:
    case Undefined:
        break;
    }
    return QVariant();
}

namespace {

template<typename T>
bool holds(QVariant const& variant)
{
    return variant.userType() == qMetaTypeId<T>();
}

// The record types, tried by their exact meta-type. A contact-list entry of
// any kind gives a Buddy sharing its record.
VeskArg fromRecordVariant(QVariant const& variant)
{
    if (holds<VeskArg>(variant))
        return variant.value<VeskArg>();
    if (holds<QList<VeskArg>>(variant))
        return VeskArg(variant.value<QList<VeskArg>>());
    if (holds<QList<void*>>(variant))
        return VeskArg(variant.value<QList<void*>>());
    if (holds<VeskPlugin*>(variant))
        return VeskArg(variant.value<VeskPlugin*>());
    if (holds<VeskAccountConnection*>(variant))
        return VeskArg(variant.value<VeskAccountConnection*>());
    if (holds<VeskGuiEventsReceiver*>(variant))
        return VeskArg(variant.value<VeskGuiEventsReceiver*>());
    if (holds<VeskField>(variant))
        return VeskArg(variant.value<VeskField>());
    if (holds<QList<VeskField>>(variant))
        return VeskArg(variant.value<QList<VeskField>>());
    if (holds<VeskXmlNode>(variant))
        return VeskArg(variant.value<VeskXmlNode>());
    if (holds<VeskBuddyResource>(variant))
        return VeskArg(variant.value<VeskBuddyResource>());
    if (holds<VeskPluginAction>(variant))
        return VeskArg(variant.value<VeskPluginAction>());
    if (holds<VeskPresence>(variant))
        return VeskArg(variant.value<VeskPresence>());
    if (holds<VeskVideoClip>(variant))
        return VeskArg(variant.value<VeskVideoClip>());
    if (holds<VeskService>(variant))
        return VeskArg(variant.value<VeskService>());
    if (holds<QList<VeskService>>(variant))
        return VeskArg(variant.value<QList<VeskService>>());
    if (holds<QList<VeskTextFormat>>(variant))
        return VeskArg(variant.value<QList<VeskTextFormat>>());
    if (holds<VeskBuddy>(variant))
        return VeskArg(variant.value<VeskBuddy>());
    if (holds<VeskBuddyGroup>(variant))
        return VeskArg(VeskBuddy(variant.value<VeskBuddyGroup>()));
    if (holds<VeskBuddyMeta>(variant))
        return VeskArg(VeskBuddy(variant.value<VeskBuddyMeta>()));
    if (holds<VeskBuddyContact>(variant))
        return VeskArg(VeskBuddy(variant.value<VeskBuddyContact>()));
    if (holds<VeskBuddyMerged>(variant))
        return VeskArg(VeskBuddy(variant.value<VeskBuddyMerged>()));
    if (holds<VeskBuddyCustom>(variant))
        return VeskArg(VeskBuddy(variant.value<VeskBuddyCustom>()));
    if (holds<VeskBuddyTemporary>(variant))
        return VeskArg(VeskBuddy(variant.value<VeskBuddyTemporary>()));
    return VeskArg();
}

} // namespace

VeskArg VeskArg::fromVariant(QVariant const& variant)
{
    switch (variant.userType()) {
    case QMetaType::Char: return VeskArg(variant.value<char>());
    case QMetaType::UChar: return VeskArg(variant.value<unsigned char>());
    case QMetaType::Int: return VeskArg(variant.value<int>());
    case QMetaType::UInt: return VeskArg(variant.value<unsigned int>());
    case QMetaType::LongLong: return VeskArg(static_cast<long long>(variant.value<qint64>()));
    case QMetaType::ULongLong:
        return VeskArg(static_cast<unsigned long long>(variant.value<quint64>()));
    case QMetaType::Float: return VeskArg(variant.value<float>());
    case QMetaType::Double: return VeskArg(variant.value<double>());
    case QMetaType::QString: return VeskArg(variant.value<QString>());
    case QMetaType::QByteArray: return VeskArg(variant.value<QByteArray>());
    case QMetaType::QStringList: return VeskArg(variant.value<QStringList>());
    case QMetaType::Bool: return VeskArg(variant.value<bool>());
    case QMetaType::VoidStar: return VeskArg(variant.value<void*>());
    case QMetaType::QVariantList: {
        QList<VeskArg> list;
        for (QVariant const& element : variant.value<QVariantList>())
            list.append(fromVariant(element));
        return VeskArg(list);
    }
    default:
        return fromRecordVariant(variant);
    }
}
