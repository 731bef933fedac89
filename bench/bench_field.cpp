// Merging values back into a settings page, VeskField::fromXml(fields, node),
// for pages of 10 to 10,000 fields. Every field has one element in the
// list, in the reverse order of the page, so each lookup has to search; the
// time per field should stay flat as the page grows. After the table, one
// line compares the time per field at 10,000 fields with that at 1,000, and
// one more does the same for reading the document alone.

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

// Only what a merge reads from the document, through the XML handle: every
// element's name, id text and attributes, and a line edit's text. Set
// beside mergeValues, it shows how much of the merge's growth with the page
// lies in the document rather than in the merge.
void readAnswer(benchmark::State& state)
{
    int const count = int(state.range(0));
    VeskXmlNode const answer = makeAnswer(makePage(count));
    QString const id = QStringLiteral("id");
    QString const string = QStringLiteral("string");
    QStringList const attributes{QStringLiteral("type"), QStringLiteral("val"),
                                 QStringLiteral("max"), QStringLiteral("min")};
    for (auto _ : state) {
        qsizetype length = 0;
        for (VeskXmlNode const& child : answer.getChildNodes()) {
            length += child.name().size() + child.getChild(id).getData().size()
                      + child.getChild(string).getData().size();
            for (QString const& attribute : attributes)
                length += child.getAttribute(attribute).size();
        }
        benchmark::DoNotOptimize(length);
    }
    state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(readAnswer)->Arg(1000)->Arg(10000);

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    VeskBench::runWithPairs({{"merge a field list, per field, 10,000 fields vs 1,000",
                              {"10,000", "mergeValues/10000", 10000},
                              {"1,000", "mergeValues/1000", 1000}},
                             {"read the answer's XML alone, per field, 10,000 fields vs 1,000",
                              {"10,000", "readAnswer/10000", 10000},
                              {"1,000", "readAnswer/1000", 1000}}});
    benchmark::Shutdown();
    return 0;
}
