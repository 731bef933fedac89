#ifndef VESKFIELDFORM_H
#define VESKFIELDFORM_H

/// \file
/// VeskFieldForm, a settings page widget built from a field list.

#include "veskwidgets_global.h"

#include <veskfield.h>
#include <veskxmlnode.h>

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtWidgets/QWidget>

class VeskFieldFormPrivate;

/// A settings page built from a plugin's field list: one widget per field, in
/// list order, fields of one group together in a group box titled with the
/// group's name.
///
/// The form keeps the list it was given (its fields are shared handles, so
/// that list is never written to) and reads the user's input back out of the
/// widgets on request: fields() writes it into copies through the fields' own
/// setters, changedFields() and changedXml() give only what differs from the
/// page as it was loaded.
///
/// A field the form cannot show (a null field, kind None or unknown, an image
/// whose bytes are no picture) gets no widget and a warning; it is still
/// returned, unchanged, by fields().
class VESK_WIDGETS_EXPORT VeskFieldForm : public QWidget
{
    Q_OBJECT
public:
    /// An empty page owned by parent.
    explicit VeskFieldForm(QWidget* parent = nullptr);
    /// A page of fields, owned by parent.
    explicit VeskFieldForm(QList<VeskField> const& fields, QWidget* parent = nullptr);
    /// The fields the form was given are left as they were.
    ~VeskFieldForm() override;

    /// Replaces the whole page.
    void setFields(QList<VeskField> const& fields);

    /// The loaded fields with the user's input written in.
    QList<VeskField> fields() const;
    /// Those of fields() whose value the user changed, in list order.
    QList<VeskField> changedFields() const;
    /// changedFields() as a "fieldlist" element, which VeskField::fromXml
    /// merges into the plugin's own list.
    VeskXmlNode changedXml() const;

    /// Merges a "fieldlist" element into the loaded fields and shows the new
    /// values in the existing widgets. Those values become the page's own:
    /// they do not count as changes, and input the user made in other fields
    /// stays.
    void applyXml(VeskXmlNode const& fieldList);

    /// The widget that edits the field with this id (for path kinds the line
    /// edit), or null when there is none. Every such widget also carries the
    /// id as its object name.
    QWidget* editorFor(QString const& id) const;

Q_SIGNALS:
    /// The user changed the value of the field with this id.
    void edited(QString const& id);

protected:
    /// Asks the user for a directory (DirEdit) or a file (FileEdit,
    /// SoundEdit) when a browse button is clicked; an empty answer keeps the
    /// path. The default opens a QFileDialog.
    virtual QString browse(VeskField::Type kind, QString const& current);

private:
    friend class VeskFieldFormPrivate;
    VeskFieldFormPrivate* const d;
};

#endif // VESKFIELDFORM_H
