#ifndef VESKBUDDYCHILDREN_P_H
#define VESKBUDDYCHILDREN_P_H

// Internal to the library: the child lists of groups and meta-contacts and
// the index beside each that answers membership.

#include "veskbuddy.h"
#include "veskbuddygroup.h"

#include <QtCore/QMutexLocker>

#include <utility>

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

#endif // VESKBUDDYCHILDREN_P_H
