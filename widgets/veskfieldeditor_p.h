#ifndef VESKFIELDEDITOR_P_H
#define VESKFIELDEDITOR_P_H

#include <veskfield.h>

#include <QtCore/QString>
#include <QtCore/QVariant>

#include <functional>

QT_BEGIN_NAMESPACE
class QAbstractButton;
class QWidget;
QT_END_NAMESPACE

// The widgets that show one field, and how to move a value between them and
// the field. The widgets belong to whatever layout the form puts them in.
class VeskFieldEditor
{
public:
    struct Hooks
    {
        // The user changed the value.
        std::function<void()> edited;
        // The user clicked a button field.
        std::function<void()> clicked;
        // The user asked to browse for a path.
        std::function<void()> browse;
    };

    // Widgets for field, or null when the field's kind or state cannot be
    // shown; reason then says why.
    static VeskFieldEditor* create(VeskField const& field, Hooks const& hooks, QString* reason);

    // Shows the field's value and limits; the kind must be this editor's.
    void load(VeskField const& field);
    // The value the widgets show now, comparable with an earlier one;
    // invalid for kinds without a value.
    QVariant value() const;
    // Writes a value() into field through the field's setters.
    void store(VeskField& field, QVariant const& value) const;

    // For path kinds: puts a path chosen by browsing into the line edit.
    void setPath(QString const& path);
    QString path() const;

    VeskField::Type kind() const { return m_kind; }
    // What the layout holds; for path kinds a line edit with a button.
    QWidget* row() const { return m_row; }
    // What the user edits.
    QWidget* editor() const { return m_editor; }
    // Check boxes, radio buttons, buttons, labels and images show their own
    // text; every other kind gets the field's label beside it.
    bool showsOwnLabel() const;

private:
    explicit VeskFieldEditor(VeskField::Type kind);
    void build(VeskField const& field, Hooks const& hooks);
    void setReadOnly(bool readOnly);

    VeskField::Type m_kind;
    QWidget* m_row = nullptr;
    QWidget* m_editor = nullptr;
    QAbstractButton* m_browse = nullptr;
};

#endif // VESKFIELDEDITOR_P_H
