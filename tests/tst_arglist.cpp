#include <VeskData>

#include <QtTest/QtTest>

#include <algorithm>
#include <functional>

// The list operations that the README names safe for lists of mixed types:
// each must leave the same values as the same operation on plain strings.

namespace {

QString label(VeskArg const& value)
{
    switch (value.getType()) {
    case VeskArg::Int: return QLatin1Char('i') + QString::number(value.toInt());
    case VeskArg::String: return QLatin1Char('s') + value.toString();
    default: return QStringLiteral("n");
    }
}

QStringList labels(QList<VeskArg> const& values)
{
    QStringList out;
    for (VeskArg const& value : values)
        out << label(value);
    return out;
}

using ArgEdit = std::function<void(QList<VeskArg>&)>;
using LabelEdit = std::function<void(QStringList&)>;

VeskArg const x(QStringLiteral("x"));

} // namespace

Q_DECLARE_METATYPE(ArgEdit)
Q_DECLARE_METATYPE(LabelEdit)

class TestArgList : public QObject
{
    Q_OBJECT

private slots:
    void mixedTypesStayIntact_data();
    void mixedTypesStayIntact();
};

void TestArgList::mixedTypesStayIntact_data()
{
    QTest::addColumn<ArgEdit>("edit");
    QTest::addColumn<LabelEdit>("model");
    auto row = [](char const* name, ArgEdit edit, LabelEdit model) {
        QTest::newRow(name) << edit << model;
    };
    row("prepend", [](auto& l) { l.prepend(x); }, [](auto& m) { m.prepend(QStringLiteral("sx")); });
    row("insert", [](auto& l) { l.insert(1, x); }, [](auto& m) { m.insert(1, QStringLiteral("sx")); });
    row("removeAt", [](auto& l) { l.removeAt(1); }, [](auto& m) { m.removeAt(1); });
    row("removeFirst", [](auto& l) { l.removeFirst(); }, [](auto& m) { m.removeFirst(); });
    row("takeAt", [](auto& l) { l.takeAt(2); }, [](auto& m) { m.takeAt(2); });
    row("removeOne", [](auto& l) { l.removeOne(VeskArg(1)); }, [](auto& m) { m.removeOne(QStringLiteral("i1")); });
    row("erase range", [](auto& l) { l.erase(l.begin() + 1, l.begin() + 3); },
        [](auto& m) { m.erase(m.begin() + 1, m.begin() + 3); });
    row("move", [](auto& l) { l.move(0, 3); }, [](auto& m) { m.move(0, 3); });
    row("swapItemsAt", [](auto& l) { l.swapItemsAt(0, 1); }, [](auto& m) { m.swapItemsAt(0, 1); });
    row("reverse", [](auto& l) { std::reverse(l.begin(), l.end()); },
        [](auto& m) { std::reverse(m.begin(), m.end()); });
    row("rotate", [](auto& l) { std::rotate(l.begin(), l.begin() + 2, l.end()); },
        [](auto& m) { std::rotate(m.begin(), m.begin() + 2, m.end()); });
    row("reserve", [](auto& l) { l.reserve(64); }, [](auto&) {});
}

void TestArgList::mixedTypesStayIntact()
{
    QFETCH(ArgEdit, edit);
    QFETCH(LabelEdit, model);
    QList<VeskArg> values{VeskArg(1), VeskArg(QStringLiteral("a")), VeskArg(2),
                          VeskArg(QStringLiteral("b")), VeskArg(1)};
    QStringList expected = labels(values);
    model(expected);
    edit(values);
    QCOMPARE(labels(values), expected);
}

QTEST_GUILESS_MAIN(TestArgList)
#include "tst_arglist.moc"
