#include "veskfieldeditor_p.h"

#include <QtGui/QPixmap>
#include <QtGui/QTextDocument>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QToolButton>

#include <algorithm>
#include <cmath>

namespace {

bool isPathKind(VeskField::Type kind)
{
    return kind == VeskField::DirEdit || kind == VeskField::FileEdit || kind == VeskField::SoundEdit;
}

bool isTextKind(VeskField::Type kind)
{
    return kind == VeskField::LineEdit || kind == VeskField::PasswordEdit || isPathKind(kind);
}

// The fewest decimals (up to 8) that show v without rounding it.
int decimalsFor(double v)
{
    for (int decimals = 0; decimals < 8; ++decimals) {
        double const scale = std::pow(10.0, decimals);
        if (std::abs(std::round(v * scale) / scale - v) <= 1e-12 * std::max(1.0, std::abs(v)))
            return decimals;
    }
    return 8;
}

QPixmap pixmapOf(VeskField const& field)
{
    QPixmap pixmap;
    pixmap.loadFromData(field.getImgData());
    return pixmap;
}

} // namespace

VeskFieldEditor::VeskFieldEditor(VeskField::Type kind)
    : m_kind(kind)
{
}

VeskFieldEditor* VeskFieldEditor::create(VeskField const& field, Hooks const& hooks, QString* reason)
{
    if (field.isNull()) {
        *reason = QStringLiteral("a null field");
        return nullptr;
    }
    VeskField::Type const kind = field.getType();
    if (kind <= VeskField::None || kind > VeskField::Button) {
        *reason = QStringLiteral("kind %1 has no widget").arg(int(kind));
        return nullptr;
    }
    if (kind == VeskField::Image && pixmapOf(field).isNull()) {
        *reason = QStringLiteral("its image bytes hold no picture");
        return nullptr;
    }
    auto* const editor = new VeskFieldEditor(kind);
    editor->build(field, hooks);
    editor->load(field);
    return editor;
}

// Makes the widgets and connects the user's signals to the hooks. Values are
// set by load() afterwards.
void VeskFieldEditor::build(VeskField const& field, Hooks const& hooks)
{
    switch (m_kind) {
    case VeskField::ComboBox: {
        auto* const combo = new QComboBox;
        QObject::connect(combo, QOverload<int>::of(&QComboBox::currentIndexChanged), hooks.edited);
        m_editor = combo;
        break;
    }
    case VeskField::CheckBox:
    case VeskField::RadioButton: {
        QAbstractButton* const button = m_kind == VeskField::CheckBox
                                            ? static_cast<QAbstractButton*>(new QCheckBox)
                                            : new QRadioButton;
        // Radio buttons are exclusive per field group, not per parent widget.
        button->setAutoExclusive(false);
        QObject::connect(button, &QAbstractButton::toggled, hooks.edited);
        m_editor = button;
        break;
    }
    case VeskField::LineEdit:
    case VeskField::PasswordEdit:
    case VeskField::DirEdit:
    case VeskField::FileEdit:
    case VeskField::SoundEdit: {
        auto* const line = new QLineEdit;
        if (m_kind == VeskField::PasswordEdit)
            line->setEchoMode(QLineEdit::Password);
        QObject::connect(line, &QLineEdit::textChanged, hooks.edited);
        m_editor = line;
        break;
    }
    case VeskField::TextEdit: {
        auto* const text = new QPlainTextEdit;
        text->setTabChangesFocus(true);
        // A page of settings, not an editor: a few lines, then a scroll bar.
        text->setMaximumHeight(text->fontMetrics().lineSpacing() * 6
                               + 2 * (text->frameWidth() + int(text->document()->documentMargin())));
        QObject::connect(text, &QPlainTextEdit::textChanged, hooks.edited);
        m_editor = text;
        break;
    }
    case VeskField::SpinBox: {
        auto* const spin = new QSpinBox;
        QObject::connect(spin, QOverload<int>::of(&QSpinBox::valueChanged), hooks.edited);
        m_editor = spin;
        break;
    }
    case VeskField::DoubleSpinBox: {
        auto* const spin = new QDoubleSpinBox;
        QObject::connect(spin, QOverload<double>::of(&QDoubleSpinBox::valueChanged), hooks.edited);
        m_editor = spin;
        break;
    }
    case VeskField::Label: {
        auto* const label = new QLabel;
        label->setWordWrap(true);
        m_editor = label;
        break;
    }
    case VeskField::Image:
        m_editor = new QLabel;
        break;
    case VeskField::Button: {
        auto* const button = new QPushButton;
        QObject::connect(button, &QPushButton::clicked, hooks.clicked);
        m_editor = button;
        break;
    }
    case VeskField::None:
        break;
    }
    m_editor->setObjectName(field.getId());
    m_row = m_editor;

    if (isPathKind(m_kind)) {
        m_row = new QWidget;
        auto* const layout = new QHBoxLayout(m_row);
        layout->setContentsMargins(0, 0, 0, 0);
        m_browse = new QToolButton;
        m_browse->setObjectName(QStringLiteral("browse"));
        m_browse->setText(QStringLiteral("\u2026"));
        m_browse->setToolTip(m_kind == VeskField::DirEdit ? QStringLiteral("Choose a folder")
                                                          : QStringLiteral("Choose a file"));
        QObject::connect(m_browse, &QAbstractButton::clicked, hooks.browse);
        layout->addWidget(m_editor, 1);
        layout->addWidget(m_browse);
    }
}

void VeskFieldEditor::load(VeskField const& field)
{
    switch (m_kind) {
    case VeskField::ComboBox: {
        auto* const combo = static_cast<QComboBox*>(m_editor);
        QStringList const ids = field.getComboBoxIds();
        QStringList const labels = field.getComboBoxLabels();
        combo->clear();
        for (int i = 0; i < ids.size(); ++i)
            combo->addItem(labels.value(i, ids.at(i)), ids.at(i));
        combo->setCurrentIndex(field.getSelectedIndex() < ids.size() ? field.getSelectedIndex() : -1);
        break;
    }
    case VeskField::CheckBox:
    case VeskField::RadioButton:
        static_cast<QAbstractButton*>(m_editor)->setText(field.getLabel());
        static_cast<QAbstractButton*>(m_editor)->setChecked(field.isChecked());
        break;
    case VeskField::LineEdit:
    case VeskField::PasswordEdit:
    case VeskField::DirEdit:
    case VeskField::FileEdit:
    case VeskField::SoundEdit: {
        auto* const line = static_cast<QLineEdit*>(m_editor);
        int const maxLength = field.getMaxTextLength();
        line->setMaxLength(maxLength > 0 ? maxLength : 32767);
        line->setText(field.getText());
        break;
    }
    case VeskField::TextEdit:
        static_cast<QPlainTextEdit*>(m_editor)->setPlainText(field.getText());
        break;
    case VeskField::SpinBox: {
        auto* const spin = static_cast<QSpinBox*>(m_editor);
        spin->setRange(field.getSpinBoxMin(), field.getSpinBoxMax());
        spin->setSuffix(field.getSuffix());
        spin->setValue(field.getIntValue());
        break;
    }
    case VeskField::DoubleSpinBox: {
        auto* const spin = static_cast<QDoubleSpinBox*>(m_editor);
        spin->setDecimals(std::max({2, decimalsFor(field.getDoubleSpinBoxMin()),
                                    decimalsFor(field.getDoubleSpinBoxMax()),
                                    decimalsFor(field.getDoubleValue())}));
        spin->setRange(field.getDoubleSpinBoxMin(), field.getDoubleSpinBoxMax());
        spin->setValue(field.getDoubleValue());
        break;
    }
    case VeskField::Label:
        static_cast<QLabel*>(m_editor)->setText(field.getLabel());
        break;
    case VeskField::Image:
        static_cast<QLabel*>(m_editor)->setPixmap(pixmapOf(field));
        break;
    case VeskField::Button:
        static_cast<QPushButton*>(m_editor)->setText(field.getLabel());
        break;
    case VeskField::None:
        break;
    }
    setReadOnly(field.isReadOnly());
}

QVariant VeskFieldEditor::value() const
{
    switch (m_kind) {
    case VeskField::ComboBox:
        return static_cast<QComboBox*>(m_editor)->currentIndex();
    case VeskField::CheckBox:
    case VeskField::RadioButton:
        return static_cast<QAbstractButton*>(m_editor)->isChecked();
    case VeskField::TextEdit:
        return static_cast<QPlainTextEdit*>(m_editor)->toPlainText();
    case VeskField::SpinBox:
        return static_cast<QSpinBox*>(m_editor)->value();
    case VeskField::DoubleSpinBox:
        return static_cast<QDoubleSpinBox*>(m_editor)->value();
    default:
        return isTextKind(m_kind) ? QVariant(path()) : QVariant();
    }
}

void VeskFieldEditor::store(VeskField& field, QVariant const& value) const
{
    switch (m_kind) {
    case VeskField::ComboBox:
        field.setSelectedIndex(value.toInt());
        break;
    case VeskField::CheckBox:
    case VeskField::RadioButton:
        field.setChecked(value.toBool());
        break;
    case VeskField::SpinBox:
        field.setIntValue(value.toInt());
        break;
    case VeskField::DoubleSpinBox:
        field.setDoubleValue(value.toDouble());
        break;
    default:
        if (isTextKind(m_kind) || m_kind == VeskField::TextEdit)
            field.setText(value.toString());
        break;
    }
}

void VeskFieldEditor::setPath(QString const& path)
{
    if (isTextKind(m_kind))
        static_cast<QLineEdit*>(m_editor)->setText(path);
}

QString VeskFieldEditor::path() const
{
    return isTextKind(m_kind) ? static_cast<QLineEdit*>(m_editor)->text() : QString();
}

bool VeskFieldEditor::showsOwnLabel() const
{
    switch (m_kind) {
    case VeskField::CheckBox:
    case VeskField::RadioButton:
    case VeskField::Label:
    case VeskField::Image:
    case VeskField::Button:
        return true;
    default:
        return false;
    }
}

// Editors that can be read but not changed keep their look; the rest are
// disabled.
void VeskFieldEditor::setReadOnly(bool readOnly)
{
    if (auto* const line = qobject_cast<QLineEdit*>(m_editor))
        line->setReadOnly(readOnly);
    else if (auto* const text = qobject_cast<QPlainTextEdit*>(m_editor))
        text->setReadOnly(readOnly);
    else if (auto* const spin = qobject_cast<QAbstractSpinBox*>(m_editor))
        spin->setReadOnly(readOnly);
    else if (m_kind != VeskField::Label && m_kind != VeskField::Image)
        m_editor->setEnabled(!readOnly);
    if (m_browse)
        m_browse->setEnabled(!readOnly);
}
