// Uses one type of each of the three libraries through the umbrella header,
// and fails loudly if any of them misbehaves.
#include <VeskData>

#include <QtCore/QCoreApplication>

#include <cstdio>

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);

    VeskXmlNode root(QStringLiteral("fieldlist"), QString(), nullptr);
    root.addChild(QStringLiteral("field"), QString()).setAttribute(QStringLiteral("type"),
                                                                    QStringLiteral("none"), QString());
    VeskArg const list(QList<VeskArg>{VeskArg(1), VeskArg("two")});
    VeskPluginAction const invalid;

    bool const ok = list.toArgList().at(1).toString() == QLatin1String("two")
                    && root.getChild(QStringLiteral("field")).hasAttribute(QStringLiteral("type"), QString())
                    && !invalid.isValid();
    try {
        list.toInt();
        std::puts("consumer: a strict conversion did not throw");
        return 1;
    } catch (std::runtime_error const& e) {
        std::printf("consumer: %s\n", e.what());
    }
    std::puts(ok ? "consumer: ok" : "consumer: FAILED");
    return ok ? 0 : 1;
}
