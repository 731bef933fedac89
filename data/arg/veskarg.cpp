#include "veskarg_p.h"
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

VeskArg::VeskArg(VeskArg const& other)
    : d(other.d)
{
    if (d)
        d->ref.ref();
}

VeskArg::~VeskArg()
{
    release();
}

void VeskArg::release()
{
    if (!d || d->ref.deref())
        return;
    VeskArgDetail::visit(d->type, [this](auto kind) {
        using Kind = decltype(kind);
        if constexpr (!std::is_same_v<Kind, VeskArgDetail::NoKind>)
            delete static_cast<typename Kind::Holder*>(d->data);
    });
    delete d;
}

VeskArg VeskArg::operator=(VeskArg const& other)
{
    if (d && other.getType() != getType())
        throw vesk_conversion(QStringLiteral("VeskArg"), vesk_arg_type(other.getType()),
                              vesk_arg_type(getType()));
    if (d != other.d) {
        if (other.d)
            other.d->ref.ref();
        release();
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

bool VeskArg::operator==(VeskArg const& other) const
{
    if (d == other.d)
        return true;
    if (getType() != other.getType())
        return false;
    return VeskArgDetail::visit(d->type, [this, &other](auto kind) {
        using Kind = decltype(kind);
        if constexpr (std::is_same_v<Kind, VeskArgDetail::NoKind>)
            return true;
        else
            return Kind::value(d->data) == Kind::value(other.d->data);
    });
}

bool VeskArg::operator!=(VeskArg const& other) const
{
    return !(*this == other);
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
