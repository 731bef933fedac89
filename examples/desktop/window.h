#ifndef DESKTOP_WINDOW_H
#define DESKTOP_WINDOW_H

#include <VeskWidgets>

#include <QtWidgets/QWidget>

QT_BEGIN_NAMESPACE
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QSortFilterProxyModel;
class QTreeView;
QT_END_NAMESPACE

class DesktopPlugin;

// The host's window: the plugin's contact list beside its settings page.
class Window : public QWidget
{
public:
    explicit Window(DesktopPlugin* plugin);
    ~Window() override;

    // Asks the plugin for its contact list and settings page.
    void load();
    // Moves the selected entry into the group chosen beside the tree.
    bool moveSelected();
    // Sends the changed fields to the plugin and shows the page it keeps.
    void save();

    VeskBuddyModel* model() const { return m_model; }
    VeskFieldForm* form() const { return m_form; }
    QTreeView* tree() const { return m_tree; }
    QComboBox* groupChoice() const { return m_groups; }

private:
    QWidget* makeContactSide();
    QWidget* makeSettingsSide();
    void showStatus(QString const& text);

    DesktopPlugin* const m_plugin;
    VeskBuddyModel* m_model;
    QSortFilterProxyModel* m_proxy;
    QTreeView* m_tree = nullptr;
    QLineEdit* m_filter = nullptr;
    QComboBox* m_groups = nullptr;
    VeskFieldForm* m_form = nullptr;
    QPushButton* m_save = nullptr;
    QLabel* m_status = nullptr;
};

#endif
