// Merges an arbitrary "fieldlist" document into a settings page that holds
// every kind of field. The merge must keep each field's kind and id, and a
// page written as XML must merge back into itself unchanged.

#include <VeskData>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

class Target : public VeskPlugin
{
public:
    void press(QList<VeskArg>&) {}
};

QList<VeskField> page(Target* target)
{
    QString const g = QStringLiteral("g");
    return {
        VeskField::comboBox(QStringLiteral("Combo"), QStringLiteral("combo"),
                            {QStringLiteral("a"), QStringLiteral("b")}, {}, QStringLiteral("b"), g),
        VeskField::checkBox(QStringLiteral("Check"), QStringLiteral("check"), true, g, {}),
        VeskField::radioButton(QStringLiteral("Radio"), QStringLiteral("radio"), false, g, {}),
        VeskField::lineEdit(QStringLiteral("Line"), QStringLiteral("line"), QStringLiteral("text"), 8, g),
        VeskField::dirEdit(QStringLiteral("Dir"), QStringLiteral("dir"), QStringLiteral("/tmp"), g),
        VeskField::fileEdit(QStringLiteral("File"), QStringLiteral("file"), QStringLiteral("/f"), g),
        VeskField::soundEdit(QStringLiteral("Sound"), QStringLiteral("sound"), QStringLiteral("/s"), g),
        VeskField::passwordEdit(QStringLiteral("Pass"), QStringLiteral("pass"), QStringLiteral("pw"), 4, g),
        VeskField::textEdit(QStringLiteral("Text"), QStringLiteral("text"), QStringLiteral("t"), g),
        VeskField::spinBox(QStringLiteral("Spin"), QStringLiteral("spin"), 10, -10, 3, g, QString()),
        VeskField::doubleSpinBox(QStringLiteral("Double"), QStringLiteral("double"), 1.5, -1.5, 0.25, g),
        VeskField::label(QStringLiteral("Label"), QStringLiteral("label"), g),
        VeskField::image(QStringLiteral("image"), QByteArray("\x89PNG", 4), g),
        VeskField::button(QStringLiteral("Go"), QStringLiteral("button"),
                          VeskPluginAction(target, &Target::press), g),
        // Ids made of blanks.
        VeskField::lineEdit(QString(), QStringLiteral(" "), QStringLiteral(" "), 0, g),
        VeskField::spinBox(QString(), QStringLiteral("\t"), 5, 0, 1, g, QString()),
    };
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size)
{
    static Target target;
    static QList<VeskField> const fields = page(&target);

    VeskXmlNode const node =
        VeskXmlNode::fromString(QString::fromUtf8(reinterpret_cast<char const*>(data), int(size)));
    QList<VeskField> const merged = VeskField::fromXml(fields, node);
    if (node.name() != QLatin1String("fieldlist"))
        return 0;
    if (merged.size() != fields.size())
        std::abort();
    for (int i = 0; i < fields.size(); ++i) {
        if (merged.at(i).getType() != fields.at(i).getType() || merged.at(i).getId() != fields.at(i).getId())
            std::abort();
    }
    // What a merged page writes, merged into it again, changes nothing. The
    // texts are compared: a value read as NaN is not equal to itself.
    QString const written = VeskField::toXml(merged).toString();
    if (VeskField::toXml(VeskField::fromXml(merged, VeskField::toXml(merged))).toString() != written)
        std::abort();
    return 0;
}
