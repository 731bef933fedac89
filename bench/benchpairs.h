#ifndef BENCHPAIRS_H
#define BENCHPAIRS_H

// Runs a program's benchmarks with the console table, then prints one line
// per pair of benchmarks: the work, both times and the ratio of the first
// to the second. With repetitions the pair uses the medians. Benchmarks
// that run on real time (their names end in "/real_time") are compared on
// it; the others on the CPU time of their thread, which other work on a
// busy machine disturbs less.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace VeskBench {

struct Side
{
    std::string label;     // what the line calls this side
    std::string benchmark; // the benchmark's name as the table shows it
    double divisor = 1;    // the time is divided by this (per-item figures)
};

struct Pair
{
    std::string work;
    Side first;
    Side second;
};

// Keeps the time of every plain run and of every median, in nanoseconds.
class PairReporter : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(std::vector<Run> const& runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (Run const& run : runs) {
            if (run.error_occurred)
                continue;
            std::string const name = run.run_name.str();
            bool const realTime = name.size() > 10 && name.compare(name.size() - 10, 10, "/real_time") == 0;
            double const ns = (realTime ? run.GetAdjustedRealTime() : run.GetAdjustedCPUTime()) * 1e9
                              / benchmark::GetTimeUnitMultiplier(run.time_unit);
            if (run.run_type == Run::RT_Aggregate) {
                if (run.aggregate_name == "median")
                    medians[name] = ns;
            } else {
                plain[name] = ns;
            }
        }
    }

    // The median when there is one, else the last plain run; < 0 if none.
    double time(std::string const& name) const
    {
        auto const median = medians.find(name);
        if (median != medians.end())
            return median->second;
        auto const run = plain.find(name);
        return run == plain.end() ? -1 : run->second;
    }

private:
    std::map<std::string, double> medians;
    std::map<std::string, double> plain;
};

inline std::string formatTime(double ns)
{
    char text[32];
    if (ns >= 1e6)
        std::snprintf(text, sizeof text, "%.2f ms", ns / 1e6);
    else if (ns >= 1e3)
        std::snprintf(text, sizeof text, "%.2f us", ns / 1e3);
    else
        std::snprintf(text, sizeof text, "%.1f ns", ns);
    return text;
}

// "work: first T1, second T2, ratio R" where R = T1 / T2.
inline void printPairs(PairReporter const& reporter, std::vector<Pair> const& pairs)
{
    std::printf("\n");
    for (Pair const& pair : pairs) {
        double const first = reporter.time(pair.first.benchmark) / pair.first.divisor;
        double const second = reporter.time(pair.second.benchmark) / pair.second.divisor;
        if (first < 0 || second < 0) {
            std::printf("%s: not measured\n", pair.work.c_str());
            continue;
        }
        std::printf("%s: %s %s, %s %s, ratio %.2f\n", pair.work.c_str(),
                    pair.first.label.c_str(), formatTime(first).c_str(),
                    pair.second.label.c_str(), formatTime(second).c_str(), first / second);
    }
    std::fflush(stdout);
}

// Runs the benchmarks chosen on the command line and prints the pairs.
inline void runWithPairs(std::vector<Pair> const& pairs)
{
    PairReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    printPairs(reporter, pairs);
}

} // namespace VeskBench

#endif // BENCHPAIRS_H
