#pragma once
// Benchmarks. One is a name and a function that prints rows; script/bench runs them all:
//
//     BENCH("fade a line")
//     {
//         const double raw = medianMs(50, [&] { std::memcpy(...); });
//         const double fade = medianMs(50, [&] { FadeEngine(...); });
//         report.row("copying the result", raw);
//         report.row("FadeEngine", fade, raw);
//     }
//
// A time says little about another machine. What counts is the ratio to a peer that was measured in
// the same run, so that each row but the peer's own names one.
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace velora::bench {

class Report {
public:
    /// A line "what: milliseconds, times the peer".
    void row(const std::string& what, double ms, std::optional<double> peerMs = {});
    /// The same with the aim that it has, as "aim" or "missed" in the line.
    void rowWithAim(const std::string& what, double ms, double aimMs);
    /// A size, beside the size that it may have.
    void bytes(const std::string& what, unsigned long long count, unsigned long long limit);
    void note(const std::string& text);
};

struct Bench {
    const char* name;
    void (*run)(Report& report);
};
std::vector<Bench>& benches();

/// Milliseconds that one call takes: the median of `rounds` calls.
double medianMs(int rounds, const std::function<void()>& body);
/// The median of milliseconds that were taken elsewhere; 0 of none.
double median(std::vector<double> ms);
/// Milliseconds since some start.
double clockMs();

} // namespace velora::bench

#define BENCH_JOIN2(a, b) a##b
#define BENCH_JOIN(a, b) BENCH_JOIN2(a, b)
#define BENCH(name)                                                                           \
    static void BENCH_JOIN(benchRun, __LINE__)(::velora::bench::Report&);                     \
    static const bool BENCH_JOIN(benchKnown, __LINE__) =                                      \
        (::velora::bench::benches().push_back({name, BENCH_JOIN(benchRun, __LINE__)}), true); \
    static void BENCH_JOIN(benchRun, __LINE__)([[maybe_unused]] ::velora::bench::Report & report)
