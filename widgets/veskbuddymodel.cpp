#include "veskbuddymodel_p.h"
#include "veskbuddyshow_p.h"

#include <veskbuddygroup.h>

#include <QtGui/QFont>
#include <QtGui/QIcon>

namespace {

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

} // namespace

std::unique_ptr<VeskBuddyModelNode> VeskBuddyModelPrivate::makeNode(VeskBuddy const& entry,
                                                                   VeskBuddyModelNode* parent) const
{
    auto node = std::make_unique<VeskBuddyModelNode>();
    node->entry = entry;
    node->parent = parent;
    for (int i = 0, n = childCountOf(entry); i < n; ++i)
        node->children.push_back(makeNode(childOf(entry, i), node.get()));
    std::stable_sort(node->children.begin(), node->children.end(),
                     [](auto const& a, auto const& b) {
                         return VeskBuddyShow::lessThan(a->entry, b->entry);
                     });
    return node;
}

// Where entry goes among parent's children, leaving skip out: after every
// child it does not sort before.
int VeskBuddyModelPrivate::sortedRow(VeskBuddyModelNode const* parent, VeskBuddy const& entry,
                                     VeskBuddyModelNode const* skip) const
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

VeskBuddyModelNode* VeskBuddyModelPrivate::find(VeskBuddy const& entry, VeskBuddyModelNode* from) const
{
    for (auto const& child : from->children) {
        if (child->entry == entry)
            return child.get();
        if (VeskBuddyModelNode* const inner = find(entry, child.get()))
            return inner;
    }
    return nullptr;
}

VeskBuddyModelNode* VeskBuddyModelPrivate::nodeOf(QModelIndex const& index) const
{
    if (!index.isValid())
        return const_cast<VeskBuddyModelNode*>(&root);
    return static_cast<VeskBuddyModelNode*>(index.internalPointer());
}

QModelIndex VeskBuddyModelPrivate::indexOf(VeskBuddyModelNode const* node) const
{
    if (!node || node == &root)
        return QModelIndex();
    return q->createIndex(node->row(), 0, const_cast<VeskBuddyModelNode*>(node));
}

void VeskBuddyModelPrivate::insert(VeskBuddyModelNode* parent, std::unique_ptr<VeskBuddyModelNode> node)
{
    int const row = sortedRow(parent, node->entry, nullptr);
    node->parent = parent;
    q->beginInsertRows(indexOf(parent), row, row);
    parent->children.insert(parent->children.begin() + row, std::move(node));
    q->endInsertRows();
}

void VeskBuddyModelPrivate::remove(VeskBuddyModelNode* node)
{
    VeskBuddyModelNode* const parent = node->parent;
    int const row = node->row();
    q->beginRemoveRows(indexOf(parent), row, row);
    parent->children.erase(parent->children.begin() + row);
    q->endRemoveRows();
}

// Moves node to its sorted place under newParent, which may be its own
// parent. beginMoveRows counts the destination in the list before the move.
void VeskBuddyModelPrivate::move(VeskBuddyModelNode* node, VeskBuddyModelNode* newParent)
{
    VeskBuddyModelNode* const oldParent = node->parent;
    int const from = node->row();
    int const to = sortedRow(newParent, node->entry, node);
    int destination = to;
    if (newParent == oldParent) {
        if (to == from)
            return;
        destination = to > from ? to + 1 : to;
    }
    q->beginMoveRows(indexOf(oldParent), from, from, indexOf(newParent), destination);
    std::unique_ptr<VeskBuddyModelNode> taken = std::move(oldParent->children[size_t(from)]);
    oldParent->children.erase(oldParent->children.begin() + from);
    taken->parent = newParent;
    newParent->children.insert(newParent->children.begin() + to, std::move(taken));
    q->endMoveRows();
}

// The node's entry changed: it and the containers above it show anew, and
// every one of them whose rank may have changed takes its sorted place.
void VeskBuddyModelPrivate::touch(VeskBuddyModelNode* node)
{
    for (VeskBuddyModelNode* n = node; n && n != &root; n = n->parent) {
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

QModelIndex VeskBuddyModel::indexOf(VeskBuddy const& entry) const
{
    return d->indexOf(d->find(entry, &d->root));
}

VeskBuddy VeskBuddyModel::entry(QModelIndex const& index) const
{
    return d->owns(index) ? d->nodeOf(index)->entry : VeskBuddy();
}

QModelIndex VeskBuddyModel::index(int row, int column, QModelIndex const& parent) const
{
    VeskBuddyModelNode const* const node = d->nodeOf(parent);
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
    if (!d->owns(index))
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
    if (!d->owns(index))
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
