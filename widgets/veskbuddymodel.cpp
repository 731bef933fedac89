#include "veskbuddymodel.h"
#include "veskbuddyshow_p.h"

#include <veskbuddycontact.h>

#include <QtGui/QFont>
#include <QtGui/QIcon>

#include <algorithm>
#include <memory>
#include <vector>

namespace {

// One row of the tree. The root node holds no entry; its children are the
// groups.
struct Node
{
    VeskBuddy entry;
    Node* parent = nullptr;
    std::vector<std::unique_ptr<Node>> children;

    int row() const
    {
        auto const& siblings = parent->children;
        auto const it = std::find_if(siblings.begin(), siblings.end(),
                                     [this](std::unique_ptr<Node> const& n) { return n.get() == this; });
        return int(it - siblings.begin());
    }
    bool isContainer() const
    {
        return entry.getType() == VeskBuddy::Group || entry.getType() == VeskBuddy::Meta;
    }
};

VeskBuddy childOf(VeskBuddy const& container, int i)
{
    return container.getType() == VeskBuddy::Group ? VeskBuddyGroup(container).buddyAt(i)
                                                   : VeskBuddyMeta(container).buddyAt(i);
}

int childCountOf(VeskBuddy const& container)
{
    switch (container.getType()) {
    case VeskBuddy::Group:
        return VeskBuddyGroup(container).childCount();
    case VeskBuddy::Meta:
        return VeskBuddyMeta(container).childCount();
    default:
        return 0;
    }
}

bool addTo(VeskBuddy const& container, VeskBuddy const& entry)
{
    return container.getType() == VeskBuddy::Group ? VeskBuddyGroup(container).addBuddy(entry)
                                                   : VeskBuddyMeta(container).addBuddy(entry);
}

// A meta-contact leaves its former child's link as it was; the model clears
// it, so the entry no longer keeps the meta-contact alive.
void clearLinkTo(VeskBuddy const& entry, VeskBuddy const& container)
{
    auto clear = [&](VeskBuddy& parent) {
        if (parent == container)
            parent = VeskBuddy();
    };
    if (VeskBuddyContactPrivate* const contact = VeskBuddyContact(entry).data())
        clear(contact->parent);
    else if (VeskBuddyCustomPrivate* const custom = VeskBuddyCustom(entry).data())
        clear(custom->parent);
    else if (VeskBuddyMergedPrivate* const merged = VeskBuddyMerged(entry).data())
        clear(merged->parent);
}

void removeFrom(VeskBuddy const& container, VeskBuddy const& entry)
{
    if (container.getType() == VeskBuddy::Group) {
        VeskBuddyGroup(container).removeBuddy(entry);
    } else {
        VeskBuddyMeta(container).removeBuddy(entry);
        clearLinkTo(entry, container);
    }
}

bool acceptsKind(VeskBuddy const& container, VeskBuddy::Type kind)
{
    if (container.getType() == VeskBuddy::Group)
        return kind != VeskBuddy::Group && kind != VeskBuddy::Invalid;
    return kind == VeskBuddy::Contact || kind == VeskBuddy::Merged || kind == VeskBuddy::Custom;
}

} // namespace

class VeskBuddyModelPrivate
{
public:
    explicit VeskBuddyModelPrivate(VeskBuddyModel* model)
        : q(model)
    {
    }

    std::unique_ptr<Node> makeNode(VeskBuddy const& entry, Node* parent) const;
    int sortedRow(Node const* parent, VeskBuddy const& entry, Node const* skip) const;
    Node* find(VeskBuddy const& entry, Node* from) const;
    Node* nodeOf(QModelIndex const& index) const;
    QModelIndex indexOf(Node const* node) const;

    void insert(Node* parent, std::unique_ptr<Node> node);
    void remove(Node* node);
    void move(Node* node, Node* newParent);
    void touch(Node* node);

    VeskBuddyModel* const q;
    Node root;
};

std::unique_ptr<Node> VeskBuddyModelPrivate::makeNode(VeskBuddy const& entry, Node* parent) const
{
    auto node = std::make_unique<Node>();
    node->entry = entry;
    node->parent = parent;
    for (int i = 0, n = childCountOf(entry); i < n; ++i)
        node->children.push_back(makeNode(childOf(entry, i), node.get()));
    std::stable_sort(node->children.begin(), node->children.end(),
                     [](std::unique_ptr<Node> const& a, std::unique_ptr<Node> const& b) {
                         return VeskBuddyShow::lessThan(a->entry, b->entry);
                     });
    return node;
}

// Where entry goes among parent's children, leaving skip out: after every
// child it does not sort before.
int VeskBuddyModelPrivate::sortedRow(Node const* parent, VeskBuddy const& entry, Node const* skip) const
{
    int row = 0;
    for (auto const& child : parent->children) {
        if (child.get() == skip)
            continue;
        if (VeskBuddyShow::lessThan(entry, child->entry))
            break;
        ++row;
    }
    return row;
}

Node* VeskBuddyModelPrivate::find(VeskBuddy const& entry, Node* from) const
{
    for (auto const& child : from->children) {
        if (child->entry == entry)
            return child.get();
        if (Node* const inner = find(entry, child.get()))
            return inner;
    }
    return nullptr;
}

Node* VeskBuddyModelPrivate::nodeOf(QModelIndex const& index) const
{
    return index.isValid() ? static_cast<Node*>(index.internalPointer()) : const_cast<Node*>(&root);
}

QModelIndex VeskBuddyModelPrivate::indexOf(Node const* node) const
{
    if (!node || node == &root)
        return QModelIndex();
    return q->createIndex(node->row(), 0, const_cast<Node*>(node));
}

void VeskBuddyModelPrivate::insert(Node* parent, std::unique_ptr<Node> node)
{
    int const row = sortedRow(parent, node->entry, nullptr);
    node->parent = parent;
    q->beginInsertRows(indexOf(parent), row, row);
    parent->children.insert(parent->children.begin() + row, std::move(node));
    q->endInsertRows();
}

void VeskBuddyModelPrivate::remove(Node* node)
{
    Node* const parent = node->parent;
    int const row = node->row();
    q->beginRemoveRows(indexOf(parent), row, row);
    parent->children.erase(parent->children.begin() + row);
    q->endRemoveRows();
}

// Moves node to its sorted place under newParent, which may be its own
// parent. beginMoveRows counts the destination in the list before the move.
void VeskBuddyModelPrivate::move(Node* node, Node* newParent)
{
    Node* const oldParent = node->parent;
    int const from = node->row();
    int const to = sortedRow(newParent, node->entry, node);
    int destination = to;
    if (newParent == oldParent) {
        if (to == from)
            return;
        destination = to > from ? to + 1 : to;
    }
    q->beginMoveRows(indexOf(oldParent), from, from, indexOf(newParent), destination);
    std::unique_ptr<Node> taken = std::move(oldParent->children[size_t(from)]);
    oldParent->children.erase(oldParent->children.begin() + from);
    taken->parent = newParent;
    newParent->children.insert(newParent->children.begin() + to, std::move(taken));
    q->endMoveRows();
}

// The node's entry changed: it and the containers above it show anew, and
// every one of them whose rank may have changed takes its sorted place.
void VeskBuddyModelPrivate::touch(Node* node)
{
    for (Node* n = node; n && n != &root; n = n->parent) {
        QModelIndex const index = indexOf(n);
        Q_EMIT q->dataChanged(index, index);
        if (n->entry.getType() != VeskBuddy::Group)
            move(n, n->parent);
    }
}

VeskBuddyModel::VeskBuddyModel(QObject* parent)
    : QAbstractItemModel(parent)
    , d(new VeskBuddyModelPrivate(this))
{
}

VeskBuddyModel::~VeskBuddyModel()
{
    delete d;
}

QList<VeskBuddyGroup> VeskBuddyModel::groups() const
{
    QList<VeskBuddyGroup> result;
    for (auto const& child : d->root.children)
        result.append(VeskBuddyGroup(child->entry));
    return result;
}

void VeskBuddyModel::setGroups(QList<VeskBuddyGroup> const& groups)
{
    beginResetModel();
    d->root.children.clear();
    for (VeskBuddyGroup const& group : groups) {
        if (!group.isValid() || d->find(group, &d->root))
            continue;
        auto node = d->makeNode(group, &d->root);
        int const row = d->sortedRow(&d->root, group, nullptr);
        d->root.children.insert(d->root.children.begin() + row, std::move(node));
    }
    endResetModel();
}

bool VeskBuddyModel::addGroup(VeskBuddyGroup const& group)
{
    if (!group.isValid() || d->find(group, &d->root))
        return false;
    d->insert(&d->root, d->makeNode(group, &d->root));
    return true;
}

bool VeskBuddyModel::removeGroup(VeskBuddyGroup const& group)
{
    for (auto const& child : d->root.children) {
        if (child->entry == group) {
            d->remove(child.get());
            return true;
        }
    }
    return false;
}

bool VeskBuddyModel::addBuddy(VeskBuddy const& container, VeskBuddy const& entry)
{
    if (d->find(entry, &d->root))
        return moveBuddy(entry, container);
    Node* const target = d->find(container, &d->root);
    if (!target || !target->isContainer() || !addTo(container, entry))
        return false;
    d->insert(target, d->makeNode(entry, target));
    d->touch(target);
    return true;
}

VeskBuddyMeta VeskBuddyModel::addMeta(VeskBuddyGroup const& group, QString const& name)
{
    Node* const target = d->find(group, &d->root);
    if (!target || target->entry.getType() != VeskBuddy::Group)
        return VeskBuddyMeta();
    VeskBuddyMeta meta = VeskBuddyGroup(group).addMeta(name);
    if (meta.isValid() && !d->find(meta, target)) {
        d->insert(target, d->makeNode(meta, target));
        d->touch(target);
    }
    return meta;
}

bool VeskBuddyModel::removeBuddy(VeskBuddy const& entry)
{
    Node* const node = d->find(entry, &d->root);
    if (!node || node->parent == &d->root)
        return false;
    Node* const container = node->parent;
    removeFrom(container->entry, entry);
    d->remove(node);
    d->touch(container);
    return true;
}

bool VeskBuddyModel::moveBuddy(VeskBuddy const& entry, VeskBuddy const& container)
{
    Node* const node = d->find(entry, &d->root);
    Node* const target = d->find(container, &d->root);
    if (!node || !target || node->parent == &d->root || !target->isContainer()
        || !acceptsKind(container, entry.getType()))
        return false;
    Node* const oldParent = node->parent;
    if (target == oldParent)
        return true;
    for (Node* n = target; n != &d->root; n = n->parent) {
        if (n == node)
            return false;
    }

    VeskBuddy const oldContainer = oldParent->entry;
    VeskBuddy::Type const kind = entry.getType();
    if (kind == VeskBuddy::Contact || kind == VeskBuddy::Custom) {
        // addBuddy takes the entry out of the container its link names.
        if (!addTo(container, entry))
            return false;
        if (oldContainer.getType() == VeskBuddy::Group && VeskBuddyGroup(oldContainer).containsBuddy(entry))
            VeskBuddyGroup(oldContainer).removeBuddy(entry);
    } else {
        // The contact list does not tell the old container of these kinds.
        removeFrom(oldContainer, entry);
        if (!addTo(container, entry)) {
            addTo(oldContainer, entry);
            return false;
        }
    }
    d->move(node, target);
    d->touch(oldParent);
    d->touch(node);
    return true;
}

bool VeskBuddyModel::setPresence(VeskBuddy const& entry, VeskPresence const& presence)
{
    VeskBuddyContact const contact(entry);
    if (VeskBuddyContactPrivate* const record = contact.data())
        record->presence = presence;
    else if (VeskBuddyTemporaryPrivate* const temporary = VeskBuddyTemporary(entry).data())
        temporary->presence = presence;
    else
        return false;

    // Every row that shows the entry, merged entries that speak for it among them.
    std::vector<Node*> showing;
    std::vector<Node*> pending{&d->root};
    while (!pending.empty()) {
        Node* const node = pending.back();
        pending.pop_back();
        for (auto const& child : node->children) {
            VeskBuddyMerged const merged(child->entry);
            if (child->entry == entry || (contact.isValid() && merged.isValid() && merged.containsContact(contact)))
                showing.push_back(child.get());
            pending.push_back(child.get());
        }
    }
    for (Node* node : showing)
        d->touch(node);
    return true;
}

bool VeskBuddyModel::setUnreadCount(VeskBuddy const& entry, int count)
{
    if (!entry.isValid())
        return false;
    VeskBuddy(entry).setUnreadMessages(count);
    std::vector<Node*> pending{&d->root};
    while (!pending.empty()) {
        Node* const node = pending.back();
        pending.pop_back();
        for (auto const& child : node->children) {
            if (child->entry == entry) {
                QModelIndex const index = d->indexOf(child.get());
                Q_EMIT dataChanged(index, index);
            }
            pending.push_back(child.get());
        }
    }
    return true;
}

void VeskBuddyModel::refresh()
{
    setGroups(groups());
}

QModelIndex VeskBuddyModel::indexOf(VeskBuddy const& entry) const
{
    return d->indexOf(d->find(entry, &d->root));
}

VeskBuddy VeskBuddyModel::entry(QModelIndex const& index) const
{
    return checkIndex(index, CheckIndexOption::IndexIsValid) ? d->nodeOf(index)->entry : VeskBuddy();
}

QModelIndex VeskBuddyModel::index(int row, int column, QModelIndex const& parent) const
{
    Node const* const node = d->nodeOf(parent);
    if (column != 0 || row < 0 || size_t(row) >= node->children.size()
        || (parent.isValid() && parent.model() != this))
        return QModelIndex();
    return createIndex(row, 0, node->children[size_t(row)].get());
}

QModelIndex VeskBuddyModel::parent(QModelIndex const& child) const
{
    if (!child.isValid())
        return QModelIndex();
    return d->indexOf(d->nodeOf(child)->parent);
}

int VeskBuddyModel::rowCount(QModelIndex const& parent) const
{
    if (parent.column() > 0)
        return 0;
    return int(d->nodeOf(parent)->children.size());
}

int VeskBuddyModel::columnCount(QModelIndex const&) const
{
    return 1;
}

QVariant VeskBuddyModel::data(QModelIndex const& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return QVariant();
    VeskBuddy const& entry = d->nodeOf(index)->entry;
    switch (role) {
    case Qt::DisplayRole:
        return VeskBuddyShow::display(entry);
    case Qt::DecorationRole: {
        QString const path = VeskBuddyShow::iconPath(entry);
        return path.isEmpty() ? QVariant() : QVariant(QIcon(path));
    }
    case Qt::ToolTipRole:
        return VeskBuddyShow::toolTip(entry);
    case Qt::FontRole: {
        if (entry.unreadMessages() <= 0 && entry.getType() != VeskBuddy::Group)
            return QVariant();
        QFont font;
        font.setBold(true);
        return font;
    }
    case EntryRole:
        return QVariant::fromValue(VeskBuddyModelEntry{entry});
    case PresenceRole: {
        VeskPresence const presence = VeskBuddyShow::presence(entry);
        return presence.isValid() ? presence.getId() : QString();
    }
    case UnreadRole:
        return entry.unreadMessages();
    case KindRole:
        return int(entry.getType());
    default:
        return QVariant();
    }
}

QVariant VeskBuddyModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (section == 0 && orientation == Qt::Horizontal && role == Qt::DisplayRole)
        return QStringLiteral("Contacts");
    return QVariant();
}

Qt::ItemFlags VeskBuddyModel::flags(QModelIndex const& index) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (!d->nodeOf(index)->isContainer())
        flags |= Qt::ItemNeverHasChildren;
    return flags;
}

QHash<int, QByteArray> VeskBuddyModel::roleNames() const
{
    QHash<int, QByteArray> names = QAbstractItemModel::roleNames();
    names.insert(EntryRole, "entry");
    names.insert(PresenceRole, "presence");
    names.insert(UnreadRole, "unread");
    names.insert(KindRole, "kind");
    return names;
}
