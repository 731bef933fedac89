#include "veskfieldform.h"
#include "veskfieldeditor_p.h"

#include <QtCore/QHash>
#include <QtCore/QPointer>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QButtonGroup>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

#include <memory>
#include <utility>
#include <vector>

namespace {

// One field of the loaded list and the editor that shows it, if any. shown
// is the editor's value as loaded: the user changed the field when the
// editor's value differs from it.
struct Entry
{
    std::unique_ptr<VeskFieldEditor> editor;
    QLabel* label = nullptr;
    QVariant shown;
};

} // namespace

class VeskFieldFormPrivate
{
public:
    explicit VeskFieldFormPrivate(VeskFieldForm* form);

    void build(QList<VeskField> const& fields);
    void clear();
    void place(int index, QString const& group);
    QFormLayout* sectionFor(QString const& group);
    void showValue(int index, VeskField const& field);
    void userEdited(int index);
    void browse(int index);

    VeskFieldForm* const q;
    QVBoxLayout* layout;
    // Holds every widget of the page, so a new page replaces it whole.
    QWidget* page = nullptr;
    QVBoxLayout* pageLayout = nullptr;
    QList<VeskField> loaded;
    std::vector<Entry> entries;
    QHash<QString, QGroupBox*> groupBoxes;
    QHash<QString, QButtonGroup*> radioGroups;
    // The form without a group box that takes the next ungrouped field, or
    // null when a group box came after it.
    QFormLayout* openSection = nullptr;
    bool loading = false;
};

VeskFieldFormPrivate::VeskFieldFormPrivate(VeskFieldForm* form)
    : q(form)
    , layout(new QVBoxLayout(form))
{
    layout->setContentsMargins(0, 0, 0, 0);
}

void VeskFieldFormPrivate::clear()
{
    // The editors' widgets go with the page; the editors only point to them.
    delete page;
    page = nullptr;
    entries.clear();
    groupBoxes.clear();
    radioGroups.clear();
    openSection = nullptr;
    loaded.clear();
}

void VeskFieldFormPrivate::build(QList<VeskField> const& fields)
{
    clear();
    loaded = fields;
    page = new QWidget(q);
    pageLayout = new QVBoxLayout(page);
    pageLayout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(page);

    loading = true;
    entries.resize(size_t(fields.size()));
    for (int i = 0; i < fields.size(); ++i) {
        VeskField const& field = fields.at(i);
        VeskFieldEditor::Hooks hooks;
        hooks.edited = [this, i] { userEdited(i); };
        hooks.clicked = [this, i] { VeskField(loaded.at(i)).clicked(); };
        hooks.browse = [this, i] { browse(i); };
        QString reason;
        entries[size_t(i)].editor.reset(VeskFieldEditor::create(field, hooks, &reason));
        if (!entries[size_t(i)].editor) {
            qWarning("VeskFieldForm: field \"%s\" is not shown: %s", qPrintable(field.getId()),
                     qPrintable(reason));
            continue;
        }
        // Taken before a later radio button of the group can uncheck this
        // one: a page that cannot show every checked button reports the
        // one it unchecked as changed.
        entries[size_t(i)].shown = entries[size_t(i)].editor->value();
        place(i, field.getGroup());
    }
    pageLayout->addStretch(1);
    for (QGroupBox* box : std::as_const(groupBoxes)) {
        bool anyVisible = false;
        for (Entry const& entry : entries)
            anyVisible = anyVisible || (entry.editor && entry.editor->row()->parentWidget() == box
                                        && !entry.editor->row()->isHidden());
        box->setVisible(anyVisible);
    }
    loading = false;
}

// Puts one editor into the page: into its group's box, or into the current
// ungrouped section, honouring the field's visibility.
void VeskFieldFormPrivate::place(int index, QString const& group)
{
    Entry& entry = entries[size_t(index)];
    VeskFieldEditor* const editor = entry.editor.get();
    VeskField const& field = loaded.at(index);
    QFormLayout* const form = sectionFor(group);
    if (editor->showsOwnLabel()) {
        form->addRow(editor->row());
    } else {
        entry.label = new QLabel(field.getLabel());
        entry.label->setBuddy(editor->editor());
        form->addRow(entry.label, editor->row());
    }
    if (editor->kind() == VeskField::RadioButton && !group.isEmpty()) {
        QButtonGroup*& buttons = radioGroups[group];
        if (!buttons) {
            buttons = new QButtonGroup(page);
            buttons->setExclusive(true);
        }
        buttons->addButton(static_cast<QAbstractButton*>(editor->editor()));
    }
    if (!field.getVisible()) {
        editor->row()->setVisible(false);
        if (entry.label)
            entry.label->setVisible(false);
    }
}

QFormLayout* VeskFieldFormPrivate::sectionFor(QString const& group)
{
    if (group.isEmpty()) {
        if (!openSection) {
            auto* const section = new QWidget;
            openSection = new QFormLayout(section);
            openSection->setContentsMargins(0, 0, 0, 0);
            pageLayout->addWidget(section);
        }
        return openSection;
    }
    QGroupBox*& box = groupBoxes[group];
    if (!box) {
        box = new QGroupBox(group);
        new QFormLayout(box);
        pageLayout->addWidget(box);
        openSection = nullptr;
    }
    return static_cast<QFormLayout*>(box->layout());
}

void VeskFieldFormPrivate::showValue(int index, VeskField const& field)
{
    Entry& entry = entries[size_t(index)];
    if (!entry.editor)
        return;
    loading = true;
    entry.editor->load(field);
    loading = false;
    entry.shown = entry.editor->value();
}

void VeskFieldFormPrivate::userEdited(int index)
{
    if (!loading)
        Q_EMIT q->edited(loaded.at(index).getId());
}

void VeskFieldFormPrivate::browse(int index)
{
    VeskFieldEditor* const editor = entries[size_t(index)].editor.get();
    // The dialog runs an event loop, in which anything may happen to the form.
    QPointer<VeskFieldForm> const guard(q);
    QString const path = q->browse(editor->kind(), editor->path());
    if (guard && !path.isEmpty() && entries.size() > size_t(index)
        && entries[size_t(index)].editor.get() == editor)
        editor->setPath(path);
}

VeskFieldForm::VeskFieldForm(QWidget* parent)
    : QWidget(parent)
    , d(new VeskFieldFormPrivate(this))
{
}

VeskFieldForm::VeskFieldForm(QList<VeskField> const& fields, QWidget* parent)
    : VeskFieldForm(parent)
{
    d->build(fields);
}

VeskFieldForm::~VeskFieldForm()
{
    // The editors' hooks point into d; the widgets go first.
    d->clear();
    delete d;
}

void VeskFieldForm::setFields(QList<VeskField> const& fields)
{
    d->build(fields);
}

QList<VeskField> VeskFieldForm::fields() const
{
    QList<VeskField> result = d->loaded;
    for (int i = 0; i < result.size(); ++i) {
        Entry const& entry = d->entries[size_t(i)];
        if (!entry.editor)
            continue;
        QVariant const now = entry.editor->value();
        if (now != entry.shown)
            entry.editor->store(result[i], now);
    }
    return result;
}

QList<VeskField> VeskFieldForm::changedFields() const
{
    QList<VeskField> const current = fields();
    QList<VeskField> changed;
    for (int i = 0; i < current.size(); ++i) {
        if (current.at(i) != d->loaded.at(i))
            changed.append(current.at(i));
    }
    return changed;
}

VeskXmlNode VeskFieldForm::changedXml() const
{
    return VeskField::toXml(changedFields());
}

void VeskFieldForm::applyXml(VeskXmlNode const& fieldList)
{
    QList<VeskField> const merged = VeskField::fromXml(d->loaded, fieldList);
    if (merged.size() != d->loaded.size()) {
        qWarning("VeskFieldForm: applyXml needs a \"fieldlist\" element, not \"%s\"",
                 qPrintable(fieldList.name()));
        return;
    }
    for (int i = 0; i < merged.size(); ++i) {
        if (merged.at(i) != d->loaded.at(i))
            d->showValue(i, merged.at(i));
    }
    d->loaded = merged;
}

QWidget* VeskFieldForm::editorFor(QString const& id) const
{
    for (int i = 0; i < d->loaded.size(); ++i) {
        if (d->loaded.at(i).getId() == id && d->entries[size_t(i)].editor)
            return d->entries[size_t(i)].editor->editor();
    }
    return nullptr;
}

QString VeskFieldForm::browse(VeskField::Type kind, QString const& current)
{
    if (kind == VeskField::DirEdit)
        return QFileDialog::getExistingDirectory(this, QString(), current);
    QString const filter = kind == VeskField::SoundEdit
                               ? QStringLiteral("Sounds (*.wav *.ogg *.oga *.mp3 *.flac);;All files (*)")
                               : QString();
    return QFileDialog::getOpenFileName(this, QString(), current, filter);
}
