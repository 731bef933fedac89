#include "veskarg_p.h"
#include "veskdebug_p.h"
#include "veskfield.h"

namespace {

using Scalar = VeskArgScalar;
template<typename T> using Data = VeskArgDataPrivate<T>;
template<typename T> using ListData = VeskArgListDataPrivate<T>;

char const* const typeNames[] = {
    "None", "Char", "UChar", "Int", "UInt", "Int64", "UInt64", "Float", "Double", "String",
    "ByteArray", "StringList", "Bool", "Pointer", "PointerList", "Plugin", "Field", "FieldList",
    "XmlNode", "Buddy", "BuddyResource", "Account", "PluginAction", "Presence",
    "GuiEventsReceiver", "VideoClip", "ArgList", "Service", "ServiceList", "TextFormatList",
    "Undefined",
};
constexpr quint32 typeCount = sizeof(typeNames) / sizeof(typeNames[0]);

} // namespace

QString vesk_arg_type(VeskArg::Type type)
{
    quint32 const number = static_cast<quint32>(type);
    return QLatin1String("VeskArg::")
           + QLatin1String(number < typeCount ? typeNames[number] : "Unknown");
}

void VeskArgDetail::throwConversion(VeskArg::Type actual, VeskArg::Type wanted)
{
    throw vesk_conversion(QStringLiteral("VeskArg"), vesk_arg_type(actual), vesk_arg_type(wanted));
}

VeskArg::VeskArg() : d(nullptr) {}

VeskArg::VeskArg(char const& value) { construct<Scalar>(Char, value); }
VeskArg::VeskArg(unsigned char const& value) { construct<Scalar>(UChar, value); }
VeskArg::VeskArg(int const& value) { construct<Scalar>(Int, value); }
VeskArg::VeskArg(unsigned int const& value) { construct<Scalar>(UInt, value); }
VeskArg::VeskArg(long long const& value) { construct<Scalar>(Int64, value); }
VeskArg::VeskArg(unsigned long long const& value) { construct<Scalar>(UInt64, value); }
VeskArg::VeskArg(float const& value) { construct<Scalar>(Float, value); }
VeskArg::VeskArg(double const& value) { construct<Scalar>(Double, value); }
VeskArg::VeskArg(QString const& value) { construct<Data<QString>>(String, value); }
VeskArg::VeskArg(char const* text) { construct<Data<QString>>(String, QString::fromUtf8(text)); }
VeskArg::VeskArg(QByteArray const& value) { construct<Data<QByteArray>>(ByteArray, value); }
VeskArg::VeskArg(QStringList const& value) { construct<ListData<QString>>(StringList, value); }
VeskArg::VeskArg(bool const& value) { construct<Scalar>(Bool, value); }
VeskArg::VeskArg(void* value) { construct<Scalar>(Pointer, value); }
VeskArg::VeskArg(QList<void*> const& value) { construct<ListData<void*>>(PointerList, value); }
VeskArg::VeskArg(VeskPlugin* value) { construct<Scalar>(Plugin, value); }
VeskArg::VeskArg(VeskAccountConnection* value) { construct<Scalar>(Account, value); }
VeskArg::VeskArg(VeskPluginAction const& value) { construct<Data<VeskPluginAction>>(PluginAction, value); }
VeskArg::VeskArg(VeskGuiEventsReceiver* value) { construct<Scalar>(GuiEventsReceiver, value); }
VeskArg::VeskArg(QList<VeskArg> const& value) { construct<ListData<VeskArg>>(ArgList, value); }
VeskArg::VeskArg(VeskField const& value) { construct<Data<VeskField>>(Field, value); }
VeskArg::VeskArg(QList<VeskField> const& value) { construct<ListData<VeskField>>(FieldList, value); }
VeskArg::VeskArg(VeskXmlNode const& value) { construct<Data<VeskXmlNode>>(XmlNode, value); }
VeskArg::VeskArg(VeskBuddy const& value) { construct<Data<VeskBuddy>>(Buddy, value); }
VeskArg::VeskArg(VeskBuddyResource const& value)
{
    construct<Data<VeskBuddyResource>>(BuddyResource, value);
}
VeskArg::VeskArg(VeskPresence const& value) { construct<Data<VeskPresence>>(Presence, value); }
VeskArg::VeskArg(VeskVideoClip const& value) { construct<Data<VeskVideoClip>>(VideoClip, value); }
VeskArg::VeskArg(VeskService const& value) { construct<Data<VeskService>>(Service, value); }
VeskArg::VeskArg(QList<VeskService> const& value) { construct<ListData<VeskService>>(ServiceList, value); }
VeskArg::VeskArg(QList<VeskTextFormat> const& value)
{
    construct<ListData<VeskTextFormat>>(TextFormatList, value);
}

namespace {

// Drops one handle on d and destroys the record with the last one. A free
// function rather than the member, so that the destructor calls it
// directly instead of through the symbol table.
void releaseRecord(VeskArgPrivate* d)
{
    if (!d)
        return;
    // A count of one means that this is the record's only handle, and only
    // a handle can make another, so no thread can be raising the count: the
    // record can go without the atomic decrement. The acquiring load sees
    // what other threads did before they dropped their handles.
    if (d->ref.loadAcquire() != 1 && d->ref.deref())
        return;
    constexpr quint32 scalars = VeskArgDetail::scalarTypes();
    if (scalars & (1u << d->type)) {
        VeskArgPool::deallocate(d);
        return;
    }
    VeskArgDetail::visit(d->type, [d](auto kind) {
        using Kind = decltype(kind);
        if constexpr (!std::is_same_v<Kind, VeskArgDetail::NoKind>)
            VeskArgDetail::destroy<typename Kind::Holder>(d);
    });
}

} // namespace

VeskArg::VeskArg(VeskArg const& other)
    : d(other.d)
{
    if (d)
        d->ref.ref();
}

VeskArg::~VeskArg()
{
    releaseRecord(d);
}

VeskArg VeskArg::operator=(VeskArg const& other)
{
    if (d && other.getType() != getType())
        throw vesk_conversion(QStringLiteral("VeskArg"), vesk_arg_type(other.getType()),
                              vesk_arg_type(getType()));
    if (d != other.d) {
        if (other.d)
            other.d->ref.ref();
        releaseRecord(d);
        d = other.d;
    }
    return *this;
}

VeskArg::Type VeskArg::getType() const
{
    return d ? d->type : None;
}

QString VeskArg::getTypeName() const
{
    return d ? vesk_arg_type(d->type) : QString();
}

char VeskArg::toChar() const { return holder<Scalar>(Char).load<char>(); }
unsigned char VeskArg::toUChar() const { return holder<Scalar>(UChar).load<unsigned char>(); }
int VeskArg::toInt() const { return holder<Scalar>(Int).load<int>(); }
unsigned int VeskArg::toUInt() const { return holder<Scalar>(UInt).load<unsigned int>(); }
long long VeskArg::toInt64() const { return holder<Scalar>(Int64).load<long long>(); }
unsigned long long VeskArg::toUInt64() const { return holder<Scalar>(UInt64).load<unsigned long long>(); }
float VeskArg::toFloat() const { return holder<Scalar>(Float).load<float>(); }
double VeskArg::toDouble() const { return holder<Scalar>(Double).load<double>(); }
QString VeskArg::toString() const { return holder<Data<QString>>(String).load(); }
QByteArray VeskArg::toByteArray() const { return holder<Data<QByteArray>>(ByteArray).load(); }
QStringList VeskArg::toStringList() const { return holder<ListData<QString>>(StringList).load(); }
bool VeskArg::toBool() const { return holder<Scalar>(Bool).load<bool>(); }
void* VeskArg::toPointer() const { return holder<Scalar>(Pointer).load<void*>(); }
QList<void*> VeskArg::toPointerList() const { return holder<ListData<void*>>(PointerList).load(); }
VeskPlugin* VeskArg::toPlugin() const { return holder<Scalar>(Plugin).load<VeskPlugin*>(); }
VeskAccountConnection* VeskArg::toAccount() const
{
    return holder<Scalar>(Account).load<VeskAccountConnection*>();
}
VeskPluginAction VeskArg::toPluginAction() const
{
    return holder<Data<VeskPluginAction>>(PluginAction).load();
}
VeskGuiEventsReceiver* VeskArg::toGuiEventsReceiver() const
{
    return holder<Scalar>(GuiEventsReceiver).load<VeskGuiEventsReceiver*>();
}
QList<VeskArg> VeskArg::toArgList() const { return holder<ListData<VeskArg>>(ArgList).load(); }
VeskField VeskArg::toField() const { return holder<Data<VeskField>>(Field).load(); }
QList<VeskField> VeskArg::toFieldList() const { return holder<ListData<VeskField>>(FieldList).load(); }
VeskXmlNode VeskArg::toXmlNode() const { return holder<Data<VeskXmlNode>>(XmlNode).load(); }
VeskBuddy VeskArg::toBuddy() const { return holder<Data<VeskBuddy>>(Buddy).load(); }
VeskBuddyResource VeskArg::toBuddyResource() const
{
    return holder<Data<VeskBuddyResource>>(BuddyResource).load();
}
VeskPresence VeskArg::toPresence() const { return holder<Data<VeskPresence>>(Presence).load(); }
VeskVideoClip VeskArg::toVideoClip() const { return holder<Data<VeskVideoClip>>(VideoClip).load(); }
VeskService VeskArg::toService() const { return holder<Data<VeskService>>(Service).load(); }
QList<VeskService> VeskArg::toServiceList() const
{
    return holder<ListData<VeskService>>(ServiceList).load();
}
QList<VeskTextFormat> VeskArg::toTextFormatList() const
{
    return holder<ListData<VeskTextFormat>>(TextFormatList).load();
}

bool VeskArg::operator==(VeskArg const& other) const
{
    if (d == other.d)
        return true;
    if (getType() != other.getType())
        return false;
    return VeskArgDetail::visit(d->type, [this, &other](auto kind) {
        using Kind = decltype(kind);
        if constexpr (std::is_same_v<Kind, VeskArgDetail::NoKind>)
            return true; // not reached: a record never holds None or Undefined
        else
            return VeskArgDetail::equal(Kind::value(d->data()), Kind::value(other.d->data()));
    });
}

bool VeskArg::operator!=(VeskArg const& other) const
{
    return !(*this == other);
}

namespace {

// The label and value of one argument, written with spacing off.
void writeContents(QDebug& dbg, VeskArg const& arg)
{
    switch (arg.getType()) {
    case VeskArg::None: dbg << "None"; break;
    case VeskArg::Char: dbg << "Char: " << arg.toChar(); break;
    case VeskArg::UChar: dbg << "UChar: " << int(arg.toUChar()); break;
    case VeskArg::Int: dbg << "Int: " << arg.toInt(); break;
    case VeskArg::UInt: dbg << "UInt: " << arg.toUInt(); break;
    case VeskArg::Int64: dbg << "Int64: " << qint64(arg.toInt64()); break;
    case VeskArg::UInt64: dbg << "UInt64: " << quint64(arg.toUInt64()); break;
    case VeskArg::Float: dbg << "Float: " << arg.toFloat(); break;
    case VeskArg::Double: dbg << "Double: " << arg.toDouble(); break;
    case VeskArg::String: VeskDebug::quoted(dbg << "String: ", arg.toString()); break;
    case VeskArg::ByteArray: VeskDebug::quoted(dbg << "ByteArray:", arg.toByteArray()); break;
    case VeskArg::StringList:
        dbg << "StringList: ";
        VeskDebug::list(dbg, arg.toStringList(),
                        [](QDebug& d, QString const& text) { VeskDebug::quoted(d, text); });
        break;
    case VeskArg::Bool: dbg << "Bool: " << arg.toBool(); break;
    case VeskArg::Pointer: VeskDebug::pointer(dbg << "Pointer: ", arg.toPointer()); break;
    case VeskArg::PointerList:
        dbg << "PointerList: ";
        VeskDebug::list(dbg, arg.toPointerList(),
                        [](QDebug& d, void* address) { VeskDebug::pointer(d, address); });
        break;
    case VeskArg::Plugin: VeskDebug::pointer(dbg << "Plugin: ", arg.toPlugin()); break;
    case VeskArg::Field: dbg << "Field: " << arg.toField(); break;
    case VeskArg::FieldList: dbg << "FieldList: " << arg.toFieldList(); break;
    case VeskArg::XmlNode: dbg << "XmlNode: " << arg.toXmlNode(); break;
    case VeskArg::Buddy: dbg << "Buddy: " << arg.toBuddy(); break;
    case VeskArg::BuddyResource:
        VeskDebug::quoted(dbg << "BuddyResource:", arg.toBuddyResource().getName());
        break;
    case VeskArg::Presence: dbg << "Presence: " << arg.toPresence(); break;
    case VeskArg::Account: VeskDebug::pointer(dbg << "Account: ", arg.toAccount()); break;
    case VeskArg::PluginAction:
        dbg << "PluginAction: argument count: " << int(arg.toPluginAction().getActionData().size());
        break;
    case VeskArg::GuiEventsReceiver: dbg << "GuiEventsReceiver"; break;
    case VeskArg::VideoClip: dbg << "VideoClip"; break;
    case VeskArg::ArgList: dbg << "ArgList: " << arg.toArgList(); break;
    case VeskArg::Service: dbg << "Service: " << arg.toService(); break;
    case VeskArg::ServiceList: dbg << "ServiceList"; break;
    case VeskArg::TextFormatList: dbg << "TextFormatList: "; break;
    case VeskArg::Undefined: dbg << "Undefined"; break; // no value has this type
    }
}

} // namespace

QDebug operator<<(QDebug dbg, VeskArg const& arg)
{
    dbg.nospace() << "VeskArg(";
    writeContents(dbg.nospace(), arg);
    dbg.nospace() << ")";
    return dbg.space();
}

QDebug operator<<(QDebug dbg, VeskArg::Type type)
{
    dbg.nospace() << "VeskArg::";
    quint32 const number = static_cast<quint32>(type);
    if (number == VeskArg::VideoClip)
        dbg.nospace() << "VideClip";
    else if (number < typeCount)
        dbg.nospace() << typeNames[number];
    return dbg.space();
}

QDebug operator<<(QDebug dbg, QList<VeskArg> const& list)
{
    return VeskDebug::list(dbg, list, [](QDebug& d, VeskArg const& arg) { d << arg; });
}

namespace {

// Calls set(converted) when converted differs from current.
template<typename T, typename Setter>
bool setIfDifferent(T const& converted, T const& current, Setter&& set)
{
    if (converted == current)
        return false;
    set(converted);
    return true;
}

} // namespace

bool VeskArg::setFieldValue(VeskField& field, VeskArg const& value)
{
    switch (field.getType()) {
    case VeskField::ComboBox:
        if (value.getType() == String)
            return setIfDifferent(value.toString(), field.getSelectedId(),
                                  [&field](QString const& id) { field.setSelectedId(id); });
        if (value.getType() == Int)
            return setIfDifferent(value.toInt(), field.getSelectedIndex(),
                                  [&field](int index) { field.setSelectedIndex(index); });
        return false;
    case VeskField::CheckBox:
    case VeskField::RadioButton:
        return setIfDifferent(value.toBool(), field.isChecked(),
                              [&field](bool checked) { field.setChecked(checked); });
    case VeskField::LineEdit:
    case VeskField::DirEdit:
    case VeskField::FileEdit:
    case VeskField::SoundEdit:
    case VeskField::PasswordEdit:
    case VeskField::TextEdit:
        return setIfDifferent(value.toString(), field.getText(),
                              [&field](QString const& text) { field.setText(text); });
    case VeskField::SpinBox:
        return setIfDifferent(value.toInt(), field.getIntValue(),
                              [&field](int number) { field.setIntValue(number); });
    case VeskField::DoubleSpinBox:
        return setIfDifferent(value.toDouble(), field.getDoubleValue(),
                              [&field](double number) { field.setDoubleValue(number); });
    case VeskField::Label:
        return setIfDifferent(value.toString(), field.getLabel(),
                              [&field](QString const& label) { field.setLabel(label); });
    case VeskField::Image:
        return setIfDifferent(value.toByteArray(), field.getImgData(),
                              [&field](QByteArray const& data) { field.setImgData(data); });
    case VeskField::None:
    case VeskField::Button:
        break;
    }
    return false;
}
