#include "veskbuddygroup.h"
#include "veskbuddy_p.h"
#include "veskbuddycontact.h"

#include "veskdebug_p.h"

#include <functional>
#include <new>

// Child lists keep insertion order in `children` and, beside it, a count of
// each record's occurrences, so that membership costs one hash lookup however
// long the list grows. Callers hold the container's mutex.
struct VeskBuddyChildren
{
    static VeskBuddyPrivate const* key(VeskBuddy const& buddy) { return buddy.d; }

    template<typename Record>
    static void sync(Record& record)
    {
        if (record.indexedCount == record.children.size())
            return;
        record.childIndex.clear();
        for (VeskBuddy const& child : std::as_const(record.children))
            ++record.childIndex[key(child)];
        record.indexedCount = record.children.size();
    }

    template<typename Record>
    static bool contains(Record& record, VeskBuddy const& buddy)
    {
        sync(record);
        return record.childIndex.contains(key(buddy));
    }

    // Appends buddy unless it is there already.
    template<typename Record>
    static bool appendNew(Record& record, VeskBuddy const& buddy)
    {
        if (contains(record, buddy))
            return false;
        record.children.append(buddy);
        ++record.childIndex[key(buddy)];
        ++record.indexedCount;
        return true;
    }

    // Removes every occurrence and returns their number. The search closes
    // in from both ends, so taking entries off either end of a long list (a
    // whole group moved in order, the latest additions undone) stays cheap.
    template<typename Record>
    static int removeAll(Record& record, VeskBuddy const& buddy)
    {
        sync(record);
        auto const found = record.childIndex.find(key(buddy));
        if (found == record.childIndex.end())
            return 0;
        int const count = found.value();
        record.childIndex.erase(found);
        VeskBuddyPrivate const* const wanted = key(buddy);
        QList<VeskBuddy>& children = record.children;
        int left = 0;
        int right = children.size() - 1;
        int remaining = count;
        while (remaining > 0 && left <= right) {
            if (key(children.at(right)) == wanted) {
                children.removeAt(right);
                --remaining;
            } else if (key(children.at(left)) == wanted) {
                children.removeAt(left);
                --remaining;
            } else {
                ++left;
            }
            --right;
        }
        record.indexedCount = children.size();
        return count - remaining;
    }

    template<typename Record>
    static VeskBuddy takeAt(Record& record, int index)
    {
        if (index < 0 || index >= record.children.size())
            return VeskBuddy();
        sync(record);
        VeskBuddy taken = record.children.takeAt(index);
        auto const found = record.childIndex.find(key(taken));
        if (found != record.childIndex.end() && --found.value() == 0)
            record.childIndex.erase(found);
        --record.indexedCount;
        return taken;
    }

    template<typename Record>
    static VeskBuddy at(Record const& record, int index)
    {
        if (index < 0 || index >= record.children.size())
            return VeskBuddy();
        return record.children.at(index);
    }
};

namespace {

// Locks one or two container mutexes, always in address order, so that two
// moves between the same two containers in opposite directions cannot each
// hold one mutex while waiting for the other.
class PairLocker
{
public:
    PairLocker(QMutex* own, QMutex* other)
        : first(own), second(other)
    {
        if (second && std::less<QMutex*>()(second, first))
            qSwap(first, second);
        first->lock();
        if (second)
            second->lock();
    }
    ~PairLocker()
    {
        if (second)
            second->unlock();
        first->unlock();
    }

private:
    Q_DISABLE_COPY(PairLocker)
    QMutex* first;
    QMutex* second;
};

// Where a child keeps the link to its container: a VeskBuddy parent for
// contacts, custom and merged entries, a VeskBuddyGroup for meta-contacts and
// temporary contacts. Both null for kinds that have no link.
struct Link
{
    VeskBuddy* parent = nullptr;
    VeskBuddyGroup* group = nullptr;
};

Link linkOf(VeskBuddy const& child)
{
    switch (child.getType()) {
    case VeskBuddy::Contact: return {&VeskBuddyContact(child).data()->parent, nullptr};
    case VeskBuddy::Custom: return {&VeskBuddyCustom(child).data()->parent, nullptr};
    case VeskBuddy::Merged: return {&VeskBuddyMerged(child).data()->parent, nullptr};
    case VeskBuddy::Meta: return {nullptr, &VeskBuddyMeta(child).data()->group};
    case VeskBuddy::Temporary: return {nullptr, &VeskBuddyTemporary(child).data()->group};
    default: return {};
    }
}

VeskBuddy readLink(VeskBuddy const& child)
{
    Link const link = linkOf(child);
    QMutexLocker locker(&vesk_buddy_link_mutex());
    if (link.parent)
        return *link.parent;
    if (link.group)
        return *link.group;
    return VeskBuddy();
}

// Points child's link at container if it still points at expected, and says
// whether it did; false for kinds without a link. The handle let go is
// released after the link lock, since releasing the last handle of a
// container destroys it.
bool replaceLink(VeskBuddy const& child, VeskBuddy const& expected, VeskBuddy const& container)
{
    Link const link = linkOf(child);
    VeskBuddy previous;
    QMutexLocker locker(&vesk_buddy_link_mutex());
    if (link.parent && *link.parent == expected) {
        previous = *link.parent;
        *link.parent = container;
        return true;
    }
    if (link.group && *link.group == expected) {
        previous = *link.group;
        *link.group = VeskBuddyGroup(container);
        return true;
    }
    return false;
}

void setLink(VeskBuddy const& child, VeskBuddy const& container)
{
    Link const link = linkOf(child);
    VeskBuddy previous;
    QMutexLocker locker(&vesk_buddy_link_mutex());
    if (link.parent) {
        previous = *link.parent;
        *link.parent = container;
    } else if (link.group) {
        previous = *link.group;
        *link.group = VeskBuddyGroup(container);
    }
}

// Clears child's link if it points at container; says whether it did.
bool clearLinkIf(VeskBuddy const& child, VeskBuddy const& container)
{
    return replaceLink(child, container, VeskBuddy());
}

QMutex* containerMutex(VeskBuddy const& container)
{
    switch (container.getType()) {
    case VeskBuddy::Group: return &VeskBuddyGroup(container).data()->mutex;
    case VeskBuddy::Meta: return &VeskBuddyMeta(container).data()->mutex;
    default: return nullptr;
    }
}

// Takes child out of the child list of a group or meta-contact whose mutex
// the caller holds. The child's link is the caller's business.
void removeFromContainer(VeskBuddy const& container, VeskBuddy const& child)
{
    if (container.getType() == VeskBuddy::Group)
        VeskBuddyChildren::removeAll(*VeskBuddyGroup(container).data(), child);
    else if (container.getType() == VeskBuddy::Meta)
        VeskBuddyChildren::removeAll(*VeskBuddyMeta(container).data(), child);
}

// Runs step on the kind record of a group or meta-contact under its mutex;
// an invalid handle has no record and gets the fallback.
template<typename Record, typename Result, typename Step>
Result underLock(Record* record, Result fallback, Step&& step)
{
    if (!record)
        return fallback;
    QMutexLocker locker(&record->mutex);
    return step(*record);
}

// Places a contact or custom entry into container, taking it out of the
// container its link names. Both containers are locked together in a fixed
// order; the link is re-read under those locks and the whole step retried if
// another thread moved the child in between.
template<typename Record>
bool moveInto(VeskBuddy const& container, Record* record, VeskBuddy const& child)
{
    if (!record)
        return false;
    for (;;) {
        VeskBuddy const previous = readLink(child);
        bool const elsewhere = previous != container;
        PairLocker locker(&record->mutex, elsewhere ? containerMutex(previous) : nullptr);
        if (VeskBuddyChildren::contains(*record, child))
            return false;
        if (!replaceLink(child, previous, container))
            continue;
        if (elsewhere)
            removeFromContainer(previous, child);
        VeskBuddyChildren::appendNew(*record, child);
        return true;
    }
}

// Appends a meta-contact, merged or temporary entry and points its link here;
// the container it was in is not told.
template<typename Record>
bool appendLinked(VeskBuddy const& container, Record* record, VeskBuddy const& child)
{
    return underLock(record, false, [&container, &child](Record& locked) {
        if (!VeskBuddyChildren::appendNew(locked, child))
            return false;
        setLink(child, container);
        return true;
    });
}

template<typename Record>
VeskBuddy takeChildAt(Record* record, int index)
{
    return underLock(record, VeskBuddy(), [index](Record& locked) {
        return VeskBuddyChildren::takeAt(locked, index);
    });
}

template<typename Record>
VeskBuddy childAt(Record* record, int index)
{
    return underLock(record, VeskBuddy(), [index](Record& locked) {
        return VeskBuddyChildren::at(locked, index);
    });
}

template<typename Record>
int countChildren(Record* record)
{
    return underLock(record, -1, [](Record& locked) { return int(locked.children.size()); });
}

bool listHoldsContact(QList<VeskBuddy> const& children, VeskBuddyContact const& contact,
                      bool lookIntoMetas)
{
    for (VeskBuddy const& child : children) {
        switch (child.getType()) {
        case VeskBuddy::Contact:
            if (child == contact)
                return true;
            break;
        case VeskBuddy::Merged:
            if (VeskBuddyMerged(child).containsContact(contact))
                return true;
            break;
        case VeskBuddy::Meta:
            if (lookIntoMetas && VeskBuddyMeta(child).containsContact(contact))
                return true;
            break;
        default:
            break;
        }
    }
    return false;
}

// Containers are walked on a copy of their list, taken under the lock and
// read without it, so that looking into nested meta-contacts never holds two
// locks.
template<typename Record>
bool holdsContact(Record* record, VeskBuddyContact const& contact, bool lookIntoMetas)
{
    QList<VeskBuddy> const children = underLock(record, QList<VeskBuddy>(), [](Record& locked) {
        return locked.children;
    });
    return listHoldsContact(children, contact, lookIntoMetas);
}

template<typename Match>
int countContacts(VeskBuddyGroupPrivate* record, Match&& match)
{
    return underLock(record, -1, [&match](VeskBuddyGroupPrivate& locked) {
        int count = 0;
        for (VeskBuddy const& child : std::as_const(locked.children)) {
            if (child.getType() == VeskBuddy::Contact
                && match(VeskBuddyContact(child).getPresence().getFlag()))
                ++count;
        }
        return count;
    });
}

} // namespace

VeskBuddyGroupPrivate::VeskBuddyGroupPrivate()
    : pos(0), expanded(false), indexedCount(0)
{
}

VeskBuddyGroupPrivate::~VeskBuddyGroupPrivate() = default;

VeskBuddyMetaPrivate::VeskBuddyMetaPrivate()
    : expanded(false), indexedCount(0)
{
}

VeskBuddyMetaPrivate::~VeskBuddyMetaPrivate() = default;

VeskBuddyGroup::VeskBuddyGroup() = default;

VeskBuddyGroup::VeskBuddyGroup(VeskBuddy const& other)
    : VeskBuddy(other, Group)
{
}

VeskBuddyGroup::VeskBuddyGroup(QString const& name)
    : VeskBuddy(name, Group)
{
    if (d)
        attachKindData(new (std::nothrow) VeskBuddyGroupPrivate);
}

VeskBuddyGroupPrivate* VeskBuddyGroup::data() const
{
    return static_cast<VeskBuddyGroupPrivate*>(kindData());
}

bool VeskBuddyGroup::addBuddy(VeskBuddy const& buddy)
{
    switch (buddy.getType()) {
    case Contact:
    case Custom:
        return moveInto(*this, data(), buddy);
    case Meta:
    case Merged:
    case Temporary:
        return appendLinked(*this, data(), buddy);
    case Group:
    case Invalid:
        break;
    }
    return false;
}

int VeskBuddyGroup::removeBuddy(VeskBuddy const& buddy)
{
    return underLock(data(), -1, [this, &buddy](VeskBuddyGroupPrivate& record) {
        if (clearLinkIf(buddy, *this) && buddy.getType() == Meta) {
            for (auto it = record.metas.begin(); it != record.metas.end(); ++it) {
                if (it.value() == buddy) {
                    record.metas.erase(it);
                    break;
                }
            }
        }
        return VeskBuddyChildren::removeAll(record, buddy);
    });
}

VeskBuddy VeskBuddyGroup::removeAt(int index)
{
    return takeChildAt(data(), index);
}

VeskBuddyMeta VeskBuddyGroup::addMeta(QString const& name)
{
    return underLock(data(), VeskBuddyMeta(), [this, &name](VeskBuddyGroupPrivate& record) {
        auto const found = record.metas.constFind(name);
        if (found != record.metas.constEnd())
            return found.value();
        VeskBuddyMeta meta(name);
        if (!meta.isValid())
            return meta;
        setLink(meta, *this);
        record.metas.insert(name, meta);
        VeskBuddyChildren::appendNew(record, meta);
        return meta;
    });
}

VeskBuddy VeskBuddyGroup::buddyAt(int index) const
{
    return childAt(data(), index);
}

int VeskBuddyGroup::childCount() const
{
    return countChildren(data());
}

int VeskBuddyGroup::onlineChildCount() const
{
    return countContacts(data(), [](VeskPresence::Flag flag) { return flag != VeskPresence::Offline; });
}

int VeskBuddyGroup::statusChildCount(VeskPresence::Flag flag) const
{
    return countContacts(data(), [flag](VeskPresence::Flag other) { return other == flag; });
}

bool VeskBuddyGroup::containsBuddy(VeskBuddy const& buddy) const
{
    return underLock(data(), false, [&buddy](VeskBuddyGroupPrivate& record) {
        return VeskBuddyChildren::contains(record, buddy);
    });
}

bool VeskBuddyGroup::containsContact(VeskBuddyContact const& contact) const
{
    return holdsContact(data(), contact, true);
}

bool VeskBuddyGroup::containsMeta(QString const& name) const
{
    return underLock(data(), false, [&name](VeskBuddyGroupPrivate& record) {
        return record.metas.contains(name);
    });
}

bool VeskBuddyGroup::isExpanded() const
{
    VeskBuddyGroupPrivate const* const record = data();
    return record && record->expanded;
}

int VeskBuddyGroup::getPos() const
{
    VeskBuddyGroupPrivate const* const record = data();
    return record ? record->pos : -1;
}

VeskBuddyMeta::VeskBuddyMeta() = default;

VeskBuddyMeta::VeskBuddyMeta(VeskBuddy const& other)
    : VeskBuddy(other, Meta)
{
}

VeskBuddyMeta::VeskBuddyMeta(QString const& name)
    : VeskBuddy(name, Meta)
{
    if (d)
        attachKindData(new (std::nothrow) VeskBuddyMetaPrivate);
}

VeskBuddyMeta& VeskBuddyMeta::operator=(VeskBuddyMeta const& other)
{
    if (*this != other)
        VeskBuddy::operator=(other);
    return *this;
}

VeskBuddyMetaPrivate* VeskBuddyMeta::data() const
{
    return static_cast<VeskBuddyMetaPrivate*>(kindData());
}

bool VeskBuddyMeta::addBuddy(VeskBuddy const& buddy)
{
    switch (buddy.getType()) {
    case Contact:
    case Custom:
        return moveInto(*this, data(), buddy);
    case Merged:
        return appendLinked(*this, data(), buddy);
    case Invalid:
    case Group:
    case Meta:
    case Temporary:
        break;
    }
    return false;
}

int VeskBuddyMeta::removeBuddy(VeskBuddy const& buddy)
{
    return underLock(data(), -1, [&buddy](VeskBuddyMetaPrivate& record) {
        return VeskBuddyChildren::removeAll(record, buddy);
    });
}

VeskBuddy VeskBuddyMeta::removeAt(int index)
{
    return takeChildAt(data(), index);
}

VeskBuddy VeskBuddyMeta::buddyAt(int index) const
{
    return childAt(data(), index);
}

int VeskBuddyMeta::childCount() const
{
    return countChildren(data());
}

bool VeskBuddyMeta::containsContact(VeskBuddyContact const& contact) const
{
    return holdsContact(data(), contact, false);
}

bool VeskBuddyMeta::isExpanded() const
{
    VeskBuddyMetaPrivate const* const record = data();
    return record && record->expanded;
}

VeskBuddyGroup VeskBuddyMeta::getGroup() const
{
    VeskBuddyMetaPrivate const* const record = data();
    if (!record)
        return VeskBuddyGroup();
    QMutexLocker locker(&vesk_buddy_link_mutex());
    return record->group;
}

bool groupLessThan(VeskBuddy const& a, VeskBuddy const& b)
{
    if (a.getType() == VeskBuddy::Group && b.getType() == VeskBuddy::Group)
        return a.getDisplay().toLower() < b.getDisplay().toLower();
    return true;
}

namespace {

template<typename Container>
QDebug writeContainer(QDebug dbg, char const* opening, Container const& container)
{
    dbg.nospace() << opening;
    dbg << "valid       :" << container.isValid() << "\n\t";
    dbg << "display     :";
    VeskDebug::quoted(dbg, container.getDisplay());
    dbg << "\n\t";
    dbg << "child count :" << container.childCount() << "\n\t";
    dbg << "expanded    :" << container.isExpanded() << "\n";
    dbg << ")";
    return dbg.space();
}

} // namespace

QDebug operator<<(QDebug dbg, VeskBuddyGroup const& group)
{
    return writeContainer(dbg, "VeskBuddyGroup(\n\t", group);
}

QDebug operator<<(QDebug dbg, VeskBuddyMeta const& meta)
{
    return writeContainer(dbg, "VeskBuddyMeta(\n\t", meta);
}
