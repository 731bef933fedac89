// Runs arbitrary sequences of operations on a few groups, meta-contacts and
// entries of every kind, with arbitrary indexes, including direct edits of
// the public child lists. After every step each container's answers must
// agree with its child list.

#include <VeskData>

#include <QtCore/QMutexLocker>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

// Reads the input a byte at a time; zeros once it is used up.
class Bytes
{
public:
    Bytes(uint8_t const* data, size_t size) : m_data(data), m_size(size) {}
    bool atEnd() const { return m_at >= m_size; }
    int next() { return m_at < m_size ? m_data[m_at++] : 0; }
    // A signed index around the usual range, out-of-range ones included.
    int index() { return next() % 12 - 2; }

private:
    uint8_t const* m_data;
    size_t m_size;
    size_t m_at = 0;
};

VeskBuddyContact contact(QString const& id)
{
    return VeskBuddyContact(nullptr, id, QString(), VeskBuddyType(), VeskPresence(), VeskSubscriptionType());
}

struct Pool
{
    QList<VeskBuddyGroup> groups{VeskBuddyGroup(QStringLiteral("g0")), VeskBuddyGroup(QStringLiteral("g1"))};
    QList<VeskBuddyMeta> metas{VeskBuddyMeta(QStringLiteral("m0")), VeskBuddyMeta(QStringLiteral("m1"))};
    QList<VeskBuddy> entries;

    Pool()
    {
        for (int i = 0; i < 4; ++i)
            entries << contact(QString::number(i));
        entries << VeskBuddyMerged(QStringLiteral("merged"), {VeskBuddyContact(entries.at(0))})
                << VeskBuddyCustom(QStringLiteral("custom"), QString(), QString(), {}, QString(),
                                   QString(), QString())
                << VeskBuddyTemporary(nullptr, QStringLiteral("t"), VeskPresence(), VeskBuddyGroup())
                << VeskBuddy(QStringLiteral("bare"), VeskBuddy::Contact)
                << VeskBuddy(QString(), VeskBuddy::Meta);
        for (VeskBuddyGroup const& group : std::as_const(groups))
            entries << group;
        for (VeskBuddyMeta const& meta : std::as_const(metas))
            entries << meta;
    }

    // Containers and children keep each other alive; cut every link.
    ~Pool()
    {
        QList<VeskBuddy> linked = entries;
        for (VeskBuddyGroup const& group : std::as_const(groups)) {
            linked += group.data()->children;
            for (VeskBuddyMeta const& meta : std::as_const(group.data()->metas))
                linked << meta;
        }
        for (VeskBuddyMeta const& meta : std::as_const(metas))
            linked += meta.data()->children;
        for (VeskBuddy const& entry : std::as_const(linked)) {
            if (VeskBuddyMetaPrivate* record = VeskBuddyMeta(entry).data())
                record->group = VeskBuddyGroup();
            if (VeskBuddyContactPrivate* record = VeskBuddyContact(entry).data())
                record->parent = VeskBuddy();
            if (VeskBuddyCustomPrivate* record = VeskBuddyCustom(entry).data())
                record->parent = VeskBuddy();
            if (VeskBuddyMergedPrivate* record = VeskBuddyMerged(entry).data())
                record->parent = VeskBuddy();
            if (VeskBuddyTemporaryPrivate* record = VeskBuddyTemporary(entry).data())
                record->group = VeskBuddyGroup();
        }
        for (VeskBuddyMeta const& meta : std::as_const(metas)) {
            meta.data()->children.clear();
            meta.data()->group = VeskBuddyGroup();
        }
        for (VeskBuddyGroup const& group : std::as_const(groups)) {
            group.data()->children.clear();
            group.data()->metas.clear();
            (void)group.childCount(); // lets the index go of them as well
        }
        for (VeskBuddyMeta const& meta : std::as_const(metas))
            (void)meta.childCount();
    }
};

template<typename Container>
void check(Container const& container, QList<VeskBuddy> const& entries)
{
    bool const lookIntoMetas = container.getType() == VeskBuddy::Group;
    QList<VeskBuddy> const children = container.data()->children;
    if (container.childCount() != children.size())
        std::abort();
    // A contact listed directly is found; one found must be listed, or be
    // inside a merged entry or a meta-contact that is.
    for (VeskBuddy const& entry : entries) {
        VeskBuddyContact const contact(entry);
        if (!contact.isValid())
            continue;
        bool const direct = children.contains(entry);
        bool nested = false;
        // A group looks into its meta-contacts, a meta-contact not deeper
        // than its merged entries.
        for (VeskBuddy const& child : children)
            nested = nested || VeskBuddyMerged(child).containsContact(contact)
                || (lookIntoMetas && VeskBuddyMeta(child).containsContact(contact));
        if (container.containsContact(contact) != (direct || nested))
            std::abort();
    }
    for (int i = -1; i <= children.size(); ++i) {
        VeskBuddy const child = container.buddyAt(i);
        if (child != (i >= 0 && i < children.size() ? children.at(i) : VeskBuddy()))
            std::abort();
    }
}

void checkGroup(VeskBuddyGroup const& group, QList<VeskBuddy> const& entries)
{
    check(group, entries);
    QList<VeskBuddy> const children = group.data()->children;
    for (VeskBuddy const& entry : entries) {
        if (group.containsBuddy(entry) != children.contains(entry))
            std::abort();
    }
    for (QString const& name : group.data()->metas.keys()) {
        if (!group.containsMeta(name))
            std::abort();
    }
}

template<typename Container, typename Record>
void edit(Container const& container, Bytes& in, QList<VeskBuddy> const& entries)
{
    Record* const record = container.data();
    QMutexLocker locker(&record->mutex);
    VeskBuddy const entry = entries.at(in.next() % entries.size());
    int const at = in.index();
    bool const inRange = at >= 0 && at < record->children.size();
    switch (in.next() % 5) {
    case 0: record->children.append(entry); break;
    case 1: if (inRange) record->children[at] = entry; break;
    case 2: record->children.clear(); break;
    case 3: record->children = QList<VeskBuddy>{entry}; break;
    case 4: if (inRange) record->children.removeAt(at); break;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size)
{
    Pool pool;
    Bytes in(data, size);
    QList<VeskBuddy> const& entries = pool.entries;
    while (!in.atEnd()) {
        int const op = in.next();
        VeskBuddyGroup group = pool.groups.at(op & 1);
        VeskBuddyMeta meta = pool.metas.at((op >> 1) & 1);
        VeskBuddy const entry = entries.at(in.next() % entries.size());
        switch ((op >> 2) % 12) {
        case 0: group.addBuddy(entry); break;
        case 1: meta.addBuddy(entry); break;
        case 2: group.removeBuddy(entry); break;
        case 3: meta.removeBuddy(entry); break;
        case 4: group.removeAt(in.index()); break;
        case 5: meta.removeAt(in.index()); break;
        case 6: group.addMeta(QString::number(in.next() % 3)); break;
        case 7: edit<VeskBuddyGroup, VeskBuddyGroupPrivate>(group, in, entries); break;
        case 8: edit<VeskBuddyMeta, VeskBuddyMetaPrivate>(meta, in, entries); break;
        case 9: (void)groupLessThan(group, entry); break;
        case 10: {
            QString text;
            QDebug(&text) << entry << group << meta;
            break;
        }
        case 11: (void)VeskBuddyContact(entry).getDisplay(); break;
        }
        for (VeskBuddyGroup const& g : std::as_const(pool.groups))
            checkGroup(g, entries);
        for (VeskBuddyMeta const& m : std::as_const(pool.metas))
            check(m, entries);
    }
    return 0;
}
