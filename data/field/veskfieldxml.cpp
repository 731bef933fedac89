// The XML form of fields: writing one field or a list, reading one, merging a list.

#include "veskfield.h"

#include <QtCore/QHash>

#include <vector>

namespace {

// The "type" attribute of a kind; a null string where none is written.
QString kindWord(VeskField::Type type)
{
    switch (type) {
    case VeskField::None: return QStringLiteral("none");
    case VeskField::ComboBox: return QStringLiteral("combobox");
    case VeskField::CheckBox: return QStringLiteral("checkbox");
    case VeskField::RadioButton: return QStringLiteral("radiobutton");
    case VeskField::LineEdit:
    case VeskField::DirEdit:
    case VeskField::FileEdit:
    case VeskField::SoundEdit:
    case VeskField::PasswordEdit: return QStringLiteral("lineedit");
    case VeskField::TextEdit: return QStringLiteral("textedit");
    case VeskField::SpinBox: return QStringLiteral("spinbox");
    case VeskField::DoubleSpinBox: return QStringLiteral("doublespinbox");
    case VeskField::Label: return QStringLiteral("label");
    case VeskField::Image: return QStringLiteral("image");
    case VeskField::Button: break;
    }
    return QString();
}

void writeComboBoxItems(VeskField const& field, VeskXmlNode& element)
{
    QString const selected = field.getSelectedId();
    QStringList const ids = field.getComboBoxIds();
    QStringList const labels = field.getComboBoxLabels();
    for (int i = 0; i < ids.size(); ++i) {
        VeskXmlNode item = element.addChild(QStringLiteral("item"), QString());
        item.setAttribute(QStringLiteral("id"), ids.at(i), QString());
        // An option without a label shows its id, as a combo box made
        // without labels does.
        item.insertData(i < labels.size() ? labels.at(i) : ids.at(i));
        if (ids.at(i) == selected)
            item.setAttribute(QStringLiteral("selected"), QStringLiteral("1"), QString());
    }
}

// Fills an empty "field" element with the field's id, kind word and value.
void writeField(VeskField const& field, VeskXmlNode& element)
{
    element.addChild(QStringLiteral("id"), QString()).insertData(field.getId());
    VeskField::Type const type = field.getType();
    QString const word = kindWord(type);
    if (!word.isNull())
        element.setAttribute(QStringLiteral("type"), word, QString());

    switch (type) {
    case VeskField::ComboBox:
        writeComboBoxItems(field, element);
        break;
    case VeskField::CheckBox:
    case VeskField::RadioButton:
        element.setAttribute(QStringLiteral("checked"), field.isChecked() ? 1 : 0, QString());
        break;
    case VeskField::LineEdit:
    case VeskField::DirEdit:
    case VeskField::FileEdit:
    case VeskField::SoundEdit:
    case VeskField::PasswordEdit:
        element.setAttribute(QStringLiteral("maxlength"), field.getMaxTextLength(), QString());
        Q_FALLTHROUGH();
    case VeskField::TextEdit:
        element.addChild(QStringLiteral("string"), QString()).insertData(field.getText());
        break;
    case VeskField::SpinBox:
        element.setAttribute(QStringLiteral("max"), field.getSpinBoxMax(), QString());
        element.setAttribute(QStringLiteral("min"), field.getSpinBoxMin(), QString());
        element.setAttribute(QStringLiteral("val"), field.getIntValue(), QString());
        break;
    case VeskField::DoubleSpinBox:
        element.setAttribute(QStringLiteral("max"), field.getDoubleSpinBoxMax(), QString());
        element.setAttribute(QStringLiteral("min"), field.getDoubleSpinBoxMin(), QString());
        element.setAttribute(QStringLiteral("val"), field.getDoubleValue(), QString());
        break;
    case VeskField::Image:
        element.insertData(QString::fromLatin1(field.getImgData().toHex()));
        break;
    case VeskField::None:
    case VeskField::Label:
    case VeskField::Button:
        break;
    }
}

// The text of the element's "id" child; empty when it has none.
QString elementId(VeskXmlNode const& element)
{
    VeskXmlNode const id = element.getChild(QStringLiteral("id"));
    return id.isNull() || !id.hasData() ? QString() : id.getData();
}

int intAttribute(VeskXmlNode const& element, QString const& name)
{
    return element.getAttribute(name, QString()).toInt(nullptr, 10);
}

double doubleAttribute(VeskXmlNode const& element, QString const& name)
{
    return element.getAttribute(name, QString()).toDouble();
}

// Reads the options and the selection in either form: "item" children with
// an "id" attribute and a "selected" mark, or paired "string_id" and
// "string_label" children with a "selectedid" attribute.
void readComboBox(VeskField& field, VeskXmlNode const& element)
{
    QStringList ids;
    QStringList labels;
    QString selected = element.getAttribute(QStringLiteral("selectedid"), QString());
    QString const idName = QStringLiteral("id");
    QString const selectedName = QStringLiteral("selected");
    for (VeskXmlNode const& child : element.getChildNodes()) {
        QString const name = child.name();
        if (!child.hasData())
            continue;
        if (name == QLatin1String("string_label")) {
            labels.append(child.getData());
        } else if (name == QLatin1String("string_id")) {
            ids.append(child.getData());
        } else if (name == QLatin1String("item") && child.hasAttribute(idName, QString())) {
            QString const id = child.getAttribute(idName, QString());
            ids.append(id);
            labels.append(child.getData());
            if (child.getAttribute(selectedName, QString()) == QLatin1String("1"))
                selected = id;
        }
    }
    field.setComboBoxItems(ids, labels);
    field.setSelectedId(selected);
}

} // namespace

VeskXmlNode VeskField::toXml() const
{
    VeskXmlNode element(QStringLiteral("field"), QString(), nullptr);
    writeField(*this, element);
    return element;
}

void VeskField::fromXml(VeskXmlNode const& node)
{
    QString const id = elementId(node);
    if (id.isEmpty() || id != getId())
        return;
    Type const type = getType();
    QString const word = kindWord(type);
    if (word.isNull() || node.getAttribute(QStringLiteral("type"), QString()) != word)
        return;

    switch (type) {
    case ComboBox:
        readComboBox(*this, node);
        break;
    case CheckBox:
    case RadioButton:
        setChecked(node.getAttribute(QStringLiteral("checked"), QString()) == QLatin1String("1"));
        break;
    case LineEdit:
    case DirEdit:
    case FileEdit:
    case SoundEdit:
    case PasswordEdit:
        // 0 stands for "no new maximum": the stored one stays.
        if (int const maxLength = intAttribute(node, QStringLiteral("maxlength")); maxLength != 0)
            setMaxTextLength(maxLength);
        Q_FALLTHROUGH();
    case TextEdit:
        setText(node.getChild(QStringLiteral("string")).getData());
        break;
    case SpinBox: {
        int const value = intAttribute(node, QStringLiteral("val"));
        int const max = intAttribute(node, QStringLiteral("max"));
        int const min = intAttribute(node, QStringLiteral("min"));
        setSpinBoxMin(min);
        setSpinBoxMax(max);
        setIntValue(value);
        break;
    }
    case DoubleSpinBox: {
        double const value = doubleAttribute(node, QStringLiteral("val"));
        double const max = doubleAttribute(node, QStringLiteral("max"));
        double const min = doubleAttribute(node, QStringLiteral("min"));
        setDoubleSpinBoxMin(min);
        setDoubleSpinBoxMax(max);
        setDoubleValue(value);
        break;
    }
    case None:
    case Label:
    case Image:
    case Button:
        break;
    }
}

VeskXmlNode VeskField::toXml(QList<VeskField> const& fields)
{
    VeskXmlNode list(QStringLiteral("fieldlist"), QString(), nullptr);
    // Built in place rather than through toXml() and appendChild(), which
    // would copy every element over from a document of its own.
    QString const fieldName = QStringLiteral("field");
    for (VeskField const& field : fields) {
        VeskXmlNode element = list.addChild(fieldName, QString());
        writeField(field, element);
    }
    return list;
}

QList<VeskField> VeskField::fromXml(QList<VeskField> const& fields, VeskXmlNode const& node)
{
    QList<VeskField> result;
    if (node.name() != QLatin1String("fieldlist"))
        return result;

    // Each "field" element is used up by the first field with its id, which
    // takes every element with that id in document order. The elements are
    // grouped by id once, as chains of positions in the child list, so that
    // each field finds its elements without scanning the whole list again
    // and grouping copies no element and allocates nothing per id.
    struct Chain
    {
        int first;
        int last;
    };
    QList<VeskXmlNode> const children = node.getChildNodes();
    QHash<QString, Chain> byId;
    byId.reserve(int(children.size()));
    std::vector<int> next(size_t(children.size()), -1);
    for (int i = 0; i < int(children.size()); ++i) {
        VeskXmlNode const& child = children.at(i);
        if (child.name() != QLatin1String("field"))
            continue;
        QString const id = elementId(child);
        if (id.isEmpty())
            continue;
        auto const found = byId.find(id);
        if (found == byId.end()) {
            byId.insert(id, Chain{i, i});
        } else {
            next[size_t(found->last)] = i;
            found->last = i;
        }
    }

    result.reserve(fields.size());
    for (VeskField field : fields) {
        if (!byId.isEmpty()) {
            auto const found = byId.constFind(field.getId());
            if (found != byId.constEnd()) {
                int const first = found->first;
                byId.erase(found);
                for (int i = first; i >= 0; i = next[size_t(i)])
                    field.fromXml(children.at(i));
            }
        }
        result.append(field);
    }
    return result;
}
