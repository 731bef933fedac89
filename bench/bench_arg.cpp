// Copying an argument value costs one atomic increment (and a decrement when
// the copy goes), whatever it holds; building one takes one block, usually
// from the thread's cache. bench_peers.cpp sets these costs beside QVariant's.
#include <VeskData>

#include <benchmark/benchmark.h>

namespace {

VeskArg sample(int kind)
{
    switch (kind) {
    case 0: return VeskArg(42);
    case 1: return VeskArg(QString(1000, QLatin1Char('x')));
    default: {
        QList<VeskArg> list;
        for (int i = 0; i < 1000; ++i)
            list.append(VeskArg(i));
        return VeskArg(list);
    }
    }
}

void copyValue(benchmark::State& state)
{
    VeskArg const value = sample(int(state.range(0)));
    for (auto _ : state) {
        VeskArg copy(value);
        benchmark::DoNotOptimize(copy);
    }
}
// 0: an Int, 1: a String of 1000 characters, 2: an ArgList of 1000 values.
BENCHMARK(copyValue)->ArgName("kind")->Arg(0)->Arg(1)->Arg(2);

void buildInt(benchmark::State& state)
{
    int i = 0;
    for (auto _ : state) {
        VeskArg value(++i);
        benchmark::DoNotOptimize(value);
    }
}
BENCHMARK(buildInt);

void readInt(benchmark::State& state)
{
    VeskArg const value(7);
    for (auto _ : state)
        benchmark::DoNotOptimize(value.toInt());
}
BENCHMARK(readInt);

} // namespace

BENCHMARK_MAIN();
