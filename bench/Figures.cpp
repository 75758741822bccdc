#include "bench/Figures.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <sys/resource.h>
#include <time.h>

namespace veltrano {

namespace {

double seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

Cost spentSoFar() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    timespec thread{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &thread);
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return {std::chrono::duration<double>(now).count(), seconds(usage.ru_utime) + seconds(usage.ru_stime),
            static_cast<double>(thread.tv_sec) + static_cast<double>(thread.tv_nsec) / 1e9};
}

} // namespace

CostMeter::CostMeter() : m_start(spentSoFar()) {}

Cost CostMeter::cost() const {
    const Cost now = spentSoFar();
    return {now.wall - m_start.wall, now.cpu - m_start.cpu, now.thread - m_start.thread};
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

double quantile(std::vector<double> values, double share) {
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    const double rank = std::ceil(share * static_cast<double>(values.size()));
    return values[static_cast<std::size_t>(std::max(rank, 1.0)) - 1];
}

void printFigure(const std::string& what, double target, double measured, const std::string& unit,
                 const std::string& remark) {
    std::printf("%-64s %8.2f %9.2f %-6s %-4s %s\n", what.c_str(), target, measured, unit.c_str(),
                measured <= target ? "ok" : "OVER", remark.c_str());
    std::fflush(stdout);
}

void printMeasure(const std::string& what, double measured, const std::string& unit,
                  const std::string& remark) {
    std::printf("%-64s %8s %9.2f %-6s %-4s %s\n", what.c_str(), "", measured, unit.c_str(), "",
                remark.c_str());
    std::fflush(stdout);
}

std::string text(double value, int decimals) {
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%.*f", decimals, value);
    return buffer;
}

} // namespace veltrano
