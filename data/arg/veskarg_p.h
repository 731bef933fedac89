#ifndef VESKARG_P_H
#define VESKARG_P_H

// Internal to the library: the shared record behind VeskArg, its value
// holders, and the one table that maps a type number to its holder.

#include "veskarg.h"
#include "veskpluginaction.h"
#include "veskbuddy.h"
#include "veskbuddytype.h"
#include "veskfield.h"
#include "veskpresence.h"
#include "veskservice.h"

#include <veskxmlnode.h>

#include <QtCore/QAtomicInt>

#include <cstring>
#include <new>
#include <type_traits>

#include <veskexception.h>

#include "veskargpool_p.h"

// The shared record. It and the value's holder sit in one block: the
// holder starts right after this header, so building a value costs one
// allocation, and reading one follows a single pointer.
struct alignas(8) VeskArgPrivate
{
    VeskArg::Type type;
    QAtomicInt ref;

    void* data() { return this + 1; }
    void const* data() const { return this + 1; }
};

// The plain cell shared by every scalar and pointer type; the value sits at
// its start. It has no clean-up: a pointer kept in it is never owned.
union VeskArgScalar
{
    char c;
    unsigned char uc;
    int i;
    unsigned int ui;
    long long ll;
    unsigned long long ull;
    float f;
    double d;
    bool b;
    void* p;

    template<typename T> void store(T const& value)
    {
        static_assert(std::is_trivially_copyable_v<T> && sizeof(T) <= sizeof(VeskArgScalar));
        std::memcpy(static_cast<void*>(this), &value, sizeof(T));
    }
    template<typename T> T load() const
    {
        T value;
        std::memcpy(&value, static_cast<void const*>(this), sizeof(T));
        return value;
    }
};

template<typename T>
struct VeskArgDataPrivate
{
    T value;

    void store(T const& v) { value = v; }
    T const& load() const { return value; }
};

template<typename T>
struct VeskArgListDataPrivate
{
    QList<T> list;

    void store(QList<T> const& v) { list = v; }
    QList<T> const& load() const { return list; }
};

namespace VeskArgDetail {

// Kinds of holder, as seen by code that must treat every type alike.
template<typename V>
struct ScalarKind
{
    using Holder = VeskArgScalar;
    static V value(void const* data) { return static_cast<Holder const*>(data)->load<V>(); }
};

template<typename H>
struct HolderKind
{
    using Holder = H;
    static auto const& value(void const* data) { return static_cast<Holder const*>(data)->load(); }
};

// None, Undefined, and numbers no constructor builds: never behind a record.
struct NoKind
{
};

// Equality of two held values: the value type's own, except for clips,
// which have none and are compared on everything but value1.
template<typename V>
bool equal(V const& a, V const& b)
{
    return a == b;
}

inline bool equal(VeskVideoClip const& a, VeskVideoClip const& b)
{
    return a.value2 == b.value2 && a.value3 == b.value3 && a.value4 == b.value4 && a.text == b.text;
}

// Calls f with the holder kind of `type`.
template<typename F>
constexpr decltype(auto) visit(VeskArg::Type type, F&& f)
{
    switch (type) {
    case VeskArg::Char: return f(ScalarKind<char>());
    case VeskArg::UChar: return f(ScalarKind<unsigned char>());
    case VeskArg::Int: return f(ScalarKind<int>());
    case VeskArg::UInt: return f(ScalarKind<unsigned int>());
    case VeskArg::Int64: return f(ScalarKind<long long>());
    case VeskArg::UInt64: return f(ScalarKind<unsigned long long>());
    case VeskArg::Float: return f(ScalarKind<float>());
    case VeskArg::Double: return f(ScalarKind<double>());
    case VeskArg::Bool: return f(ScalarKind<bool>());
    case VeskArg::Pointer: return f(ScalarKind<void*>());
    case VeskArg::Plugin: return f(ScalarKind<VeskPlugin*>());
    case VeskArg::Account: return f(ScalarKind<VeskAccountConnection*>());
    case VeskArg::GuiEventsReceiver: return f(ScalarKind<VeskGuiEventsReceiver*>());
    case VeskArg::String: return f(HolderKind<VeskArgDataPrivate<QString>>());
    case VeskArg::ByteArray: return f(HolderKind<VeskArgDataPrivate<QByteArray>>());
    case VeskArg::PluginAction: return f(HolderKind<VeskArgDataPrivate<VeskPluginAction>>());
    case VeskArg::StringList: return f(HolderKind<VeskArgListDataPrivate<QString>>());
    case VeskArg::PointerList: return f(HolderKind<VeskArgListDataPrivate<void*>>());
    case VeskArg::ArgList: return f(HolderKind<VeskArgListDataPrivate<VeskArg>>());
    case VeskArg::Field: return f(HolderKind<VeskArgDataPrivate<VeskField>>());
    case VeskArg::FieldList: return f(HolderKind<VeskArgListDataPrivate<VeskField>>());
    case VeskArg::XmlNode: return f(HolderKind<VeskArgDataPrivate<VeskXmlNode>>());
    case VeskArg::Buddy: return f(HolderKind<VeskArgDataPrivate<VeskBuddy>>());
    case VeskArg::BuddyResource: return f(HolderKind<VeskArgDataPrivate<VeskBuddyResource>>());
    case VeskArg::Presence: return f(HolderKind<VeskArgDataPrivate<VeskPresence>>());
    case VeskArg::VideoClip: return f(HolderKind<VeskArgDataPrivate<VeskVideoClip>>());
    case VeskArg::Service: return f(HolderKind<VeskArgDataPrivate<VeskService>>());
    case VeskArg::ServiceList: return f(HolderKind<VeskArgListDataPrivate<VeskService>>());
    case VeskArg::TextFormatList: return f(HolderKind<VeskArgListDataPrivate<VeskTextFormat>>());
    default: return f(NoKind()); // None and Undefined: no holder
    }
}

// Whether the record and the holder fit one block of the per-thread cache;
// the few larger holders take a block of their own size from the heap.
template<typename Holder>
constexpr bool pooled()
{
    static_assert(alignof(Holder) <= alignof(VeskArgPrivate), "the holder follows the header");
    return sizeof(VeskArgPrivate) + sizeof(Holder) <= VeskArgPool::BlockSize;
}

template<typename Holder>
void* allocateBlock() noexcept
{
    if constexpr (pooled<Holder>())
        return VeskArgPool::allocate();
    else
        return ::operator new(sizeof(VeskArgPrivate) + sizeof(Holder), std::nothrow);
}

// Destroys the holder of a record whose last handle has gone, then frees
// the block.
template<typename Holder>
void destroy(VeskArgPrivate* d) noexcept
{
    static_cast<Holder*>(d->data())->~Holder();
    d->~VeskArgPrivate();
    if constexpr (pooled<Holder>())
        VeskArgPool::deallocate(d);
    else
        ::operator delete(d);
}

template<typename Kind> struct IsScalarKind : std::false_type {};
template<typename V> struct IsScalarKind<ScalarKind<V>> : std::true_type {};

// One bit for every type whose value sits in the scalar cell: releasing
// such a value only gives its block back.
constexpr quint32 scalarTypes()
{
    quint32 mask = 0;
    for (int type = 0; type < 32; ++type) {
        if (visit(VeskArg::Type(type), [](auto kind) { return IsScalarKind<decltype(kind)>::value; }))
            mask |= 1u << type;
    }
    return mask;
}

// Kept out of line so that the conversions stay small.
[[noreturn]] Q_DECL_COLD_FUNCTION void throwConversion(VeskArg::Type actual, VeskArg::Type wanted);

} // namespace VeskArgDetail

// Builds the record in the order that leaves nothing behind on failure: the
// block first, then its holder, then the value, and the type last.
template<typename Holder, typename T>
void VeskArg::construct(Type type, T const& value)
{
    void* const block = VeskArgDetail::allocateBlock<Holder>();
    if (Q_UNLIKELY(!block)) {
        d = nullptr;
        throw vesk_oom(QStringLiteral("VeskArg"));
    }
    d = new (block) VeskArgPrivate;
    d->ref.storeRelaxed(1);
    Holder* const holder = new (d->data()) Holder();
    holder->store(value);
    d->type = type;
}

template<typename Holder>
Holder const& VeskArg::holder(Type wanted) const
{
    if (Q_UNLIKELY(!d || d->type != wanted))
        VeskArgDetail::throwConversion(getType(), wanted);
    return *static_cast<Holder const*>(d->data());
}

#endif // VESKARG_P_H
