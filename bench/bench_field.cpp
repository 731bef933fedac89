// Merging values back into a settings page, VeskField::fromXml(fields, node),
// for pages of 10 to 10,000 fields. Every field has one element in the
// list, in the reverse order of the page, so each lookup has to search; the
// time per field should stay flat as the page grows. After the table, one
// line compares the time per field at 10,000 fields with that at 1,000.

#include "benchpairs.h"

#include <VeskData>

namespace {

QString fieldId(int i)
{
    return QStringLiteral("field%1").arg(i);
}

QList<VeskField> makePage(int count)
{
    QList<VeskField> page;
    for (int i = 0; i < count; ++i) {
        if (i % 2)
            page.append(
                VeskField::spinBox(QString(), fieldId(i), 1000, 0, 0, QString(), QString()));
        else
            page.append(VeskField::lineEdit(QString(), fieldId(i), QString(), 64, QString()));
    }
    return page;
}

VeskXmlNode makeAnswer(QList<VeskField> page)
{
    for (int i = 0; i < page.size(); ++i) {
        if (page.at(i).getType() == VeskField::SpinBox)
            page[i].setIntValue(i);
        else
            page[i].setText(QStringLiteral("value %1").arg(i));
    }
    QList<VeskField> reversed;
    for (auto it = page.crbegin(); it != page.crend(); ++it)
        reversed.append(*it);
    return VeskField::toXml(reversed);
}

void mergeValues(benchmark::State& state)
{
    int const count = int(state.range(0));
    QList<VeskField> const page = makePage(count);
    VeskXmlNode const answer = makeAnswer(page);
    for (auto _ : state) {
        QList<VeskField> merged = VeskField::fromXml(page, answer);
        benchmark::DoNotOptimize(merged);
    }
    state.SetItemsProcessed(state.iterations() * count);
    state.SetComplexityN(count);
}

} // namespace

BENCHMARK(mergeValues)->Arg(10)->Arg(100)->Arg(1000)->Arg(10000)->Complexity();

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    VeskBench::runWithPairs({{"merge a field list, per field, 10,000 fields vs 1,000",
                              {"10,000", "mergeValues/10000", 10000},
                              {"1,000", "mergeValues/1000", 1000}}});
    benchmark::Shutdown();
    return 0;
}
