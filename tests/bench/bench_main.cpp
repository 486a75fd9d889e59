#include "bench/bench.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <exception>

namespace velora::bench {

std::vector<Bench>& benches()
{
    static std::vector<Bench> all;
    return all;
}

double clockMs()
{
    using namespace std::chrono;
    return duration<double, std::milli>(steady_clock::now().time_since_epoch()).count();
}

double median(std::vector<double> ms)
{
    if (ms.empty())
        return 0;
    std::sort(ms.begin(), ms.end());
    return ms[ms.size() / 2];
}

double medianMs(int rounds, const std::function<void()>& body)
{
    body(); // what is only slow the first time
    std::vector<double> taken;
    for (int round = 0; round < rounds; ++round) {
        const double start = clockMs();
        body();
        taken.push_back(clockMs() - start);
    }
    return median(std::move(taken));
}

void Report::row(const std::string& what, double ms, std::optional<double> peerMs)
{
    std::printf("  %-58s %10.3f ms", what.c_str(), ms);
    if (peerMs && *peerMs > 0)
        std::printf("  x %.2f", ms / *peerMs);
    std::printf("\n");
}

void Report::rowWithAim(const std::string& what, double ms, double aimMs)
{
    std::printf("  %-58s %10.3f ms  aim %g: %s\n", what.c_str(), ms, aimMs,
                ms <= aimMs ? "met" : "missed");
}

void Report::bytes(const std::string& what, unsigned long long count, unsigned long long limit)
{
    std::printf("  %-58s %10llu bytes  limit %llu: %s\n", what.c_str(), count, limit,
                count < limit ? "met" : "missed");
}

void Report::note(const std::string& text)
{
    std::printf("  %s\n", text.c_str());
}

} // namespace velora::bench

int main(int argc, char** argv)
{
    using namespace velora::bench;
    int failed = 0, run = 0;
    Report report;
    for (const Bench& bench : benches()) {
        bool wanted = argc < 2;
        for (int at = 1; at < argc; ++at)
            wanted |= std::strstr(bench.name, argv[at]) != nullptr;
        if (!wanted)
            continue;
        ++run;
        std::printf("%s\n", bench.name);
        std::fflush(stdout);
        try {
            bench.run(report);
        } catch (const std::exception& problem) {
            std::printf("  failed: %s\n", problem.what());
            ++failed;
        }
        std::fflush(stdout);
    }
    if (run == 0) {
        std::printf("no such benchmark\n");
        return 2;
    }
    return failed ? 1 : 0;
}
