#include "window.h"
#include "plugin.h"
#include "roster.h"

#include <QtCore/QSortFilterProxyModel>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QTreeView>
#include <QtWidgets/QVBoxLayout>

Window::Window(DesktopPlugin* plugin)
    : m_plugin(plugin)
    , m_model(new VeskBuddyModel(this))
    , m_proxy(new QSortFilterProxyModel(this))
{
    setWindowTitle(QStringLiteral("Vesk desktop"));
    m_proxy->setSourceModel(m_model);
    m_proxy->setRecursiveFilteringEnabled(true);
    m_proxy->setFilterCaseSensitivity(Qt::CaseInsensitive);

    auto* const splitter = new QSplitter;
    splitter->addWidget(makeContactSide());
    splitter->addWidget(makeSettingsSide());
    splitter->setStretchFactor(1, 1);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(splitter, 1);
    m_status = new QLabel;
    layout->addWidget(m_status);
}

// Containers and their children hold each other: the list is cleared before
// it is thrown away.
Window::~Window()
{
    for (VeskBuddyGroup group : m_model->groups())
        group.clear();
}

QWidget* Window::makeContactSide()
{
    auto* const side = new QWidget;
    auto* const layout = new QVBoxLayout(side);
    layout->setContentsMargins(0, 0, 0, 0);
    m_filter = new QLineEdit;
    m_filter->setPlaceholderText(QStringLiteral("Filter contacts"));
    m_filter->setClearButtonEnabled(true);
    connect(m_filter, &QLineEdit::textChanged, m_proxy, &QSortFilterProxyModel::setFilterFixedString);
    m_tree = new QTreeView;
    m_tree->setModel(m_proxy);
    m_tree->header()->hide();
    m_tree->setMinimumWidth(260);
    auto* const moveRow = new QHBoxLayout;
    m_groups = new QComboBox;
    auto* const move = new QPushButton(QStringLiteral("Move to group"));
    connect(move, &QPushButton::clicked, this, [this] { moveSelected(); });
    moveRow->addWidget(m_groups, 1);
    moveRow->addWidget(move);
    layout->addWidget(m_filter);
    layout->addWidget(m_tree, 1);
    layout->addLayout(moveRow);
    return side;
}

QWidget* Window::makeSettingsSide()
{
    auto* const side = new QWidget;
    auto* const layout = new QVBoxLayout(side);
    layout->setContentsMargins(0, 0, 0, 0);
    m_form = new VeskFieldForm;
    auto* const scroll = new QScrollArea;
    scroll->setWidget(m_form);
    scroll->setWidgetResizable(true);
    m_save = new QPushButton(QStringLiteral("Save settings"));
    m_save->setEnabled(false);
    connect(m_form, &VeskFieldForm::edited, m_save, [this] { m_save->setEnabled(true); });
    connect(m_save, &QPushButton::clicked, this, &Window::save);
    layout->addWidget(scroll, 1);
    layout->addWidget(m_save, 0, Qt::AlignRight);
    return side;
}

void Window::load()
{
    QList<VeskBuddyGroup> groups;
    VeskArg const answer = VeskWait::sendMessage(new Question(Question::ContactList), m_plugin);
    for (VeskArg const& group : answer.toArgList())
        groups << VeskBuddyGroup(group.toBuddy());
    m_model->setGroups(groups);
    m_groups->clear();
    for (VeskBuddyGroup const& group : m_model->groups())
        m_groups->addItem(group.getDisplay());
    m_tree->expandAll();
    m_form->setFields(VeskWait::sendMessage(new Question(Question::Page), m_plugin).toFieldList());
    showStatus(QStringLiteral("%1 groups and %2 settings from the plugin")
                   .arg(groups.size())
                   .arg(m_form->fields().size()));
}

bool Window::moveSelected()
{
    VeskBuddy const entry = m_model->entry(m_proxy->mapToSource(m_tree->currentIndex()));
    VeskBuddyGroup const group = m_model->groups().value(m_groups->currentIndex());
    if (!entry.isValid() || !m_model->moveBuddy(entry, group)) {
        showStatus(QStringLiteral("Choose an entry and the group to move it to"));
        return false;
    }
    VeskPluginAction const moved(m_plugin, &DesktopPlugin::contactMoved);
    QList<VeskArg> args{VeskArg(entry), VeskArg(VeskBuddy(group))};
    moved(args);
    m_tree->expandAll();
    m_tree->setCurrentIndex(m_proxy->mapFromSource(m_model->indexOf(entry)));
    showStatus(QStringLiteral("Moved %1 to %2")
                   .arg(m_model->indexOf(entry).data().toString(), group.getDisplay()));
    return true;
}

void Window::save()
{
    int const count = m_form->changedFields().size();
    VeskPluginAction const saveSettings(m_plugin, &DesktopPlugin::saveSettings);
    QList<VeskArg> args{VeskArg(m_form->changedXml().toString())};
    saveSettings(args);
    // Asked after the action was posted, so answered after it ran.
    QList<VeskField> const kept = VeskWait::sendMessage(new Question(Question::Page), m_plugin).toFieldList();
    m_form->applyXml(VeskField::toXml(kept));
    m_save->setEnabled(!m_form->changedFields().isEmpty());
    showStatus(QStringLiteral("Saved %1 changed settings").arg(count));
}

void Window::showStatus(QString const& text)
{
    m_status->setText(text);
}
