#ifndef VESKBUDDYMODEL_P_H
#define VESKBUDDYMODEL_P_H

#include "veskbuddymodel.h"

#include <veskbuddy.h>

#include <algorithm>
#include <memory>
#include <vector>

// One row of the tree. The root node holds no entry; its children are the
// groups.
struct VeskBuddyModelNode
{
    VeskBuddy entry;
    VeskBuddyModelNode* parent = nullptr;
    std::vector<std::unique_ptr<VeskBuddyModelNode>> children;

    int row() const
    {
        auto const& siblings = parent->children;
        auto const it = std::find_if(siblings.begin(), siblings.end(),
                                     [this](auto const& sibling) { return sibling.get() == this; });
        return int(it - siblings.begin());
    }
    bool isContainer() const
    {
        return entry.getType() == VeskBuddy::Group || entry.getType() == VeskBuddy::Meta;
    }
};

class VeskBuddyModelPrivate
{
public:
    explicit VeskBuddyModelPrivate(VeskBuddyModel* model)
        : q(model)
    {
    }

    // A node for entry with the entries below it, read from the contact list.
    std::unique_ptr<VeskBuddyModelNode> makeNode(VeskBuddy const& entry, VeskBuddyModelNode* parent) const;
    // Where entry goes among parent's children, leaving skip out.
    int sortedRow(VeskBuddyModelNode const* parent, VeskBuddy const& entry,
                  VeskBuddyModelNode const* skip) const;
    VeskBuddyModelNode* find(VeskBuddy const& entry, VeskBuddyModelNode* from) const;
    VeskBuddyModelNode* nodeOf(QModelIndex const& index) const;
    // A valid index of this model.
    bool owns(QModelIndex const& index) const { return index.isValid() && index.model() == q; }
    QModelIndex indexOf(VeskBuddyModelNode const* node) const;

    void insert(VeskBuddyModelNode* parent, std::unique_ptr<VeskBuddyModelNode> node);
    void remove(VeskBuddyModelNode* node);
    void move(VeskBuddyModelNode* node, VeskBuddyModelNode* newParent);
    void touch(VeskBuddyModelNode* node);
    // Every node whose entry matches, in no particular order.
    template<typename Match>
    std::vector<VeskBuddyModelNode*> nodesWhere(Match match)
    {
        std::vector<VeskBuddyModelNode*> found;
        std::vector<VeskBuddyModelNode*> pending{&root};
        while (!pending.empty()) {
            VeskBuddyModelNode* const node = pending.back();
            pending.pop_back();
            for (auto const& child : node->children) {
                if (match(child->entry))
                    found.push_back(child.get());
                pending.push_back(child.get());
            }
        }
        return found;
    }

    VeskBuddyModel* const q;
    VeskBuddyModelNode root;
};

#endif // VESKBUDDYMODEL_P_H
