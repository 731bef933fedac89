#include "veskbuddy.h"
#include "veskbuddy_p.h"
#include "veskbuddycontact.h"
#include "veskbuddygroup.h"

#include <new>

QMutex& vesk_buddy_link_mutex()
{
    static QMutex mutex;
    return mutex;
}

VeskBuddyPrivate::VeskBuddyPrivate(QString const& name, VeskBuddy::Type type)
    : ref(1), name(name), type(type), unreadMessages(0), kindData(nullptr)
{
}

VeskBuddyPrivate::~VeskBuddyPrivate()
{
    if (!kindData)
        return;
    switch (type) {
    case VeskBuddy::Group: delete static_cast<VeskBuddyGroupPrivate*>(kindData); break;
    case VeskBuddy::Meta: delete static_cast<VeskBuddyMetaPrivate*>(kindData); break;
    case VeskBuddy::Contact: delete static_cast<VeskBuddyContactPrivate*>(kindData); break;
    case VeskBuddy::Merged: delete static_cast<VeskBuddyMergedPrivate*>(kindData); break;
    case VeskBuddy::Temporary: delete static_cast<VeskBuddyTemporaryPrivate*>(kindData); break;
    case VeskBuddy::Custom: delete static_cast<VeskBuddyCustomPrivate*>(kindData); break;
    case VeskBuddy::Invalid: break; // not reached: no kind record goes with an Invalid entry
    }
}

VeskBuddy::VeskBuddy()
    : d(nullptr)
{
}

VeskBuddy::VeskBuddy(QString const& name, Type type)
    : d(new (std::nothrow) VeskBuddyPrivate(name, type))
{
}

VeskBuddy::VeskBuddy(VeskBuddy const& other)
    : d(other.d)
{
    if (d)
        d->ref.ref();
}

VeskBuddy::VeskBuddy(VeskBuddy const& other, Type wanted)
    : d(other.d && other.d->type == wanted ? other.d : nullptr)
{
    if (d)
        d->ref.ref();
}

VeskBuddy& VeskBuddy::operator=(VeskBuddy const& other)
{
    if (d == other.d)
        return *this;
    if (other.d)
        other.d->ref.ref();
    tAtomicDetach(d);
    d = other.d;
    return *this;
}

VeskBuddy::~VeskBuddy()
{
    tAtomicDetach(d);
}

// The kind constructors call this only once the base record exists.
void VeskBuddy::attachKindData(void* kindData)
{
    if (kindData) {
        d->kindData = kindData;
    } else {
        tAtomicDetach(d);
        d = nullptr;
    }
}

void* VeskBuddy::kindData() const
{
    return d ? d->kindData : nullptr;
}

bool VeskBuddy::isValid() const
{
    return d != nullptr;
}

QString VeskBuddy::getDisplay() const
{
    return d ? d->name : QString();
}

VeskBuddy::Type VeskBuddy::getType() const
{
    return d ? d->type : Invalid;
}

int VeskBuddy::unreadMessages() const
{
    return d ? d->unreadMessages : 0;
}

void VeskBuddy::setUnreadMessages(int count)
{
    if (d)
        d->unreadMessages = count;
}

bool VeskBuddy::operator==(VeskBuddy const& other) const
{
    return d == other.d;
}

bool VeskBuddy::operator!=(VeskBuddy const& other) const
{
    return d != other.d;
}

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
uint qHash(VeskBuddy const& buddy, uint seed)
{
    quint64 const address = reinterpret_cast<quintptr>(buddy.d);
    return uint(address ^ (address >> 32)) ^ seed;
}
#else
size_t qHash(VeskBuddy const& buddy, size_t seed)
{
    quint64 const address = reinterpret_cast<quintptr>(buddy.d);
    if constexpr (sizeof(size_t) < sizeof(quint64))
        return size_t(address ^ (address >> 32)) ^ seed;
    else
        return size_t(address) ^ seed;
}
#endif
