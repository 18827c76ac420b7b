#pragma once
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

// Times each piece of work and its floor, a minimal version written by hand, and prints the ratio of their medians.
// A ratio above its bar is marked but is not an error.
class RatioTable : public benchmark::BenchmarkReporter {
public:
    template <class Work, class Floor>
    static void add(std::string const & name, double bar, Work work, Floor floor)
    {
        order().push_back({ name, bar });
        run(name, work);
        run(name + " | floor", floor);
    }

    bool ReportContext(Context const &) override { return true; }
    void ReportRuns(std::vector<Run> const & runs) override
    {
        for (Run const & one : runs) {
            if (one.run_type == Run::RT_Iteration)
                fTimes[one.run_name.function_name].push_back(one.GetAdjustedCPUTime());
        }
    }
    void Finalize() override
    {
        std::printf("%-48s %12s %12s %7s %5s\n", "work", "ns", "floor ns", "ratio", "bar");
        for (auto const & [name, bar] : order()) {
            double const work = median(fTimes[name]);
            double const floor = median(fTimes[name + " | floor"]);
            if (work <= 0 || floor <= 0)
                continue;
            double const ratio = work / floor;
            std::printf("%-48s %12.1f %12.1f %7.2f %5.2f%s\n", name.c_str(), work, floor, ratio, bar,
                ratio > bar ? "  above" : "");
        }
    }

private:
    struct Row {
        std::string name;
        double bar;
    };

    static std::vector<Row> & order()
    {
        static std::vector<Row> rows;
        return rows;
    }
    template <class Work>
    static void run(std::string const & name, Work work)
    {
        benchmark::RegisterBenchmark(name.c_str(), [work](benchmark::State & state) {
            for (auto _ : state)
                work();
        });
    }
    static double median(std::vector<double> times)
    {
        if (times.empty())
            return 0;
        std::sort(times.begin(), times.end());
        return times[times.size() / 2];
    }

    std::map<std::string, std::vector<double>> fTimes;
};
