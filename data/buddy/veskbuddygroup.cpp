#include "veskbuddygroup.h"
#include "veskbuddy_p.h"
#include "veskbuddycontact.h"

#include "veskdebug_p.h"

#include <functional>
#include <new>

// Child lists keep insertion order in `children` and, beside it, a count of
// each record's occurrences, so that membership costs one hash lookup however
// long the list grows. The index also keeps `indexed`, a shared copy of the
// list it describes: any change made to `children` from outside detaches it
// from that copy, which is how the index knows to rebuild. The library's own
// edits let go of the copy first and take it again after, so they change the
// list in place.
struct VeskBuddyChildren
{
    static VeskBuddyPrivate const* key(VeskBuddy const& buddy) { return buddy.d; }

    // A handle made with the plain VeskBuddy(name, type) constructor has a
    // kind but no kind record; containers refuse such entries.
    static bool hasKindRecord(VeskBuddy const& buddy) { return buddy.d && buddy.d->kindData; }

    // Callers hold the record's mutex and indexMutex.
    template<typename Record>
    static void sync(Record& record)
    {
        syncMetas(record);
        if (record.indexed.isSharedWith(record.children))
            return;
        record.childIndex.clear();
        for (VeskBuddy const& child : std::as_const(record.children))
            ++record.childIndex[key(child)];
        record.indexed = record.children;
    }

    static void syncMetas(VeskBuddyGroupPrivate& record)
    {
        if (!record.indexedMetas.isSharedWith(record.metas))
            record.indexedMetas = record.metas;
    }
    static void syncMetas(VeskBuddyMetaPrivate&) {}
    static void releaseMetas(VeskBuddyGroupPrivate& record) { record.indexedMetas.clear(); }
    static void releaseMetas(VeskBuddyMetaPrivate&) {}

    // Brings the index up to date; the caller holds the record's mutex. Every
    // locked operation does, so that the index lets go of entries that were
    // taken out of children directly.
    template<typename Record>
    static void refresh(Record& record)
    {
        QMutexLocker locker(&record.indexMutex);
        sync(record);
    }

    // Whether buddy is a child; the caller holds the record's mutex.
    template<typename Record>
    static bool contains(Record& record, VeskBuddy const& buddy)
    {
        QMutexLocker locker(&record.indexMutex);
        sync(record);
        return record.childIndex.contains(key(buddy));
    }

    // Runs change on a record whose mutex the caller holds, with the index
    // current and its copies let go, then takes the copies again.
    template<typename Record, typename Change>
    static auto edit(Record& record, Change&& change) -> decltype(change())
    {
        struct Republish
        {
            Record& record;
            ~Republish()
            {
                record.indexed = record.children;
                syncMetas(record);
            }
        };
        QMutexLocker locker(&record.indexMutex);
        sync(record);
        record.indexed = QList<VeskBuddy>();
        releaseMetas(record);
        Republish const republish{record};
        return change();
    }

    // Runs read on the index without ever waiting for the record's mutex.
    // When the mutex is free it is held for the read and the index is first
    // brought up to date with children; while someone holds it (possibly the
    // calling thread) the index is read as the last locked operation left it.
    template<typename Record, typename Read>
    static auto peek(Record& record, Read&& read) -> decltype(read(record))
    {
        struct TryLocker
        {
            QMutex& mutex;
            bool const locked;
            ~TryLocker()
            {
                if (locked)
                    mutex.unlock();
            }
        };
        TryLocker const outer{record.mutex, record.mutex.tryLock()};
        QMutexLocker inner(&record.indexMutex);
        if (outer.locked)
            sync(record);
        return read(std::as_const(record));
    }

    template<typename Record>
    static bool holds(Record& record, VeskBuddy const& buddy)
    {
        return peek(record, [&buddy](Record const& current) {
            return current.childIndex.contains(key(buddy));
        });
    }

    template<typename Record>
    static QList<VeskBuddy> snapshot(Record& record)
    {
        return peek(record, [](Record const& current) { return current.indexed; });
    }

    // Drops a snapshot under the index lock. A thread that finds the list
    // no longer shared changes it in place; the lock orders that after every
    // read made through the snapshot, which QList's own count does not.
    template<typename Record>
    static void release(Record& record, QList<VeskBuddy>& snapshot)
    {
        QMutexLocker locker(&record.indexMutex);
        snapshot = QList<VeskBuddy>();
    }

    static bool holdsMeta(VeskBuddyGroupPrivate& record, QString const& name)
    {
        return peek(record, [&name](VeskBuddyGroupPrivate const& current) {
            return current.indexedMetas.contains(name);
        });
    }

    // Appends buddy unless it is there already.
    template<typename Record>
    static bool appendNew(Record& record, VeskBuddy const& buddy)
    {
        return edit(record, [&record, &buddy] {
            if (record.childIndex.contains(key(buddy)))
                return false;
            record.children.append(buddy);
            ++record.childIndex[key(buddy)];
            return true;
        });
    }

    // Removes every occurrence and returns their number. The search closes
    // in from both ends, so taking entries off either end of a long list (a
    // whole group moved in order, the latest additions undone) stays cheap.
    template<typename Record>
    static int removeAll(Record& record, VeskBuddy const& buddy)
    {
        return edit(record, [&record, &buddy] { return removeIndexed(record, buddy); });
    }

    template<typename Record>
    static int removeIndexed(Record& record, VeskBuddy const& buddy)
    {
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
        return count - remaining;
    }

    template<typename Record>
    static VeskBuddy takeAt(Record& record, int index)
    {
        if (index < 0 || index >= record.children.size())
            return VeskBuddy();
        return edit(record, [&record, index] {
            VeskBuddy taken = record.children.takeAt(index);
            auto const found = record.childIndex.find(key(taken));
            if (found != record.childIndex.end() && --found.value() == 0)
                record.childIndex.erase(found);
            return taken;
        });
    }

    template<typename Record>
    static VeskBuddy at(Record const& record, int index)
    {
        if (index < 0 || index >= record.children.size())
            return VeskBuddy();
        return record.children.at(index);
    }

    // Removes buddy from a group's children and, when removeMeta is set,
    // its name from the metas table.
    static int removeFromGroup(VeskBuddyGroupPrivate& record, VeskBuddy const& buddy,
                               bool removeMeta)
    {
        return edit(record, [&record, &buddy, removeMeta] {
            for (auto it = record.metas.begin(); removeMeta && it != record.metas.end(); ++it) {
                if (it.value() == buddy) {
                    record.metas.erase(it);
                    break;
                }
            }
            return removeIndexed(record, buddy);
        });
    }

    static void insertMeta(VeskBuddyGroupPrivate& record, QString const& name,
                           VeskBuddyMeta const& meta)
    {
        edit(record, [&record, &name, &meta] {
            record.metas.insert(name, meta);
            if (!record.childIndex.contains(key(meta))) {
                record.children.append(meta);
                ++record.childIndex[key(meta)];
            }
        });
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

template<typename Kind>
auto* kindRecord(VeskBuddy const& child)
{
    return Kind(child).data();
}

Link linkOf(VeskBuddy const& child)
{
    switch (child.getType()) {
    case VeskBuddy::Contact:
        if (auto* record = kindRecord<VeskBuddyContact>(child))
            return {&record->parent, nullptr};
        break;
    case VeskBuddy::Custom:
        if (auto* record = kindRecord<VeskBuddyCustom>(child))
            return {&record->parent, nullptr};
        break;
    case VeskBuddy::Merged:
        if (auto* record = kindRecord<VeskBuddyMerged>(child))
            return {&record->parent, nullptr};
        break;
    case VeskBuddy::Meta:
        if (auto* record = kindRecord<VeskBuddyMeta>(child))
            return {nullptr, &record->group};
        break;
    case VeskBuddy::Temporary:
        if (auto* record = kindRecord<VeskBuddyTemporary>(child))
            return {nullptr, &record->group};
        break;
    default:
        break;
    }
    return {};
}

VeskBuddy readLink(VeskBuddy const& child)
{
    Link const link = linkOf(child);
    QMutexLocker locker(&vesk_buddy_link_mutex());
    if (link.parent)
        return *link.parent;
    // Not reached: only contacts and custom entries move this way.
    return link.group ? *link.group : VeskBuddy();
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
    if (container.getType() == VeskBuddy::Group) {
        if (VeskBuddyGroupPrivate* const record = kindRecord<VeskBuddyGroup>(container))
            return &record->mutex;
    } else if (container.getType() == VeskBuddy::Meta) {
        if (VeskBuddyMetaPrivate* const record = kindRecord<VeskBuddyMeta>(container))
            return &record->mutex;
    }
    return nullptr;
}

// Takes child out of the child list of a group or meta-contact whose mutex
// the caller holds. The child's link is the caller's business.
void removeFromContainer(VeskBuddy const& container, VeskBuddy const& child)
{
    if (container.getType() == VeskBuddy::Group) {
        if (VeskBuddyGroupPrivate* const record = kindRecord<VeskBuddyGroup>(container))
            VeskBuddyChildren::removeAll(*record, child);
    } else if (container.getType() == VeskBuddy::Meta) {
        if (VeskBuddyMetaPrivate* const record = kindRecord<VeskBuddyMeta>(container))
            VeskBuddyChildren::removeAll(*record, child);
    }
}

// Runs step on the kind record of a group or meta-contact under its mutex;
// an invalid handle has no record and gets the fallback.
template<typename Record, typename Result, typename Step>
Result underLock(Record* record, Result fallback, Step&& step)
{
    if (!record)
        return fallback;
    QMutexLocker locker(&record->mutex);
    VeskBuddyChildren::refresh(*record);
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

// Containers are walked on a copy of their list, taken without waiting for
// any lock and read without holding one, so that looking into nested
// meta-contacts never holds two locks.
template<typename Record>
bool holdsContact(Record* record, VeskBuddyContact const& contact, bool lookIntoMetas)
{
    if (!record)
        return false;
    QList<VeskBuddy> children = VeskBuddyChildren::snapshot(*record);
    bool const found = listHoldsContact(children, contact, lookIntoMetas);
    VeskBuddyChildren::release(*record, children);
    return found;
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
    : pos(0), expanded(false)
{
}

VeskBuddyGroupPrivate::~VeskBuddyGroupPrivate() = default;

VeskBuddyMetaPrivate::VeskBuddyMetaPrivate()
    : expanded(false)
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
    if (!VeskBuddyChildren::hasKindRecord(buddy))
        return false;
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
        bool const unlinked = clearLinkIf(buddy, *this);
        return VeskBuddyChildren::removeFromGroup(record, buddy, unlinked && buddy.getType() == Meta);
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
        VeskBuddyChildren::insertMeta(record, name, meta);
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
    VeskBuddyGroupPrivate* const record = data();
    return record && VeskBuddyChildren::holds(*record, buddy);
}

bool VeskBuddyGroup::containsContact(VeskBuddyContact const& contact) const
{
    return holdsContact(data(), contact, true);
}

bool VeskBuddyGroup::containsMeta(QString const& name) const
{
    VeskBuddyGroupPrivate* const record = data();
    return record && VeskBuddyChildren::holdsMeta(*record, name);
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
    if (!VeskBuddyChildren::hasKindRecord(buddy))
        return false;
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
