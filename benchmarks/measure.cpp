#include "measure.h"

#include "interruption.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace stowlark {
namespace {

double figureOf(const Side &side) {
    using Clock = std::chrono::steady_clock;
    failIfInterrupted();
    side.before();
    const Clock::time_point begin = Clock::now();
    side.run();
    const std::chrono::duration<double> elapsed = Clock::now() - begin;
    const double figure = side.figure ? side.figure() : elapsed.count();
    side.after();
    return figure;
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    return *middle;
}

} // namespace

void printHeadings() {
    std::printf("%-32s %12s %12s %8s %8s\n", "", "Stowlark", "bare tool", "ratio", "limit");
    std::fflush(stdout);
}

void measure(const Row &row, int samples) {
    row.prepare();
    figureOf(row.stowlark);
    figureOf(row.bare);
    std::vector<double> stowlark;
    std::vector<double> bare;
    for (int i = 0; i < samples; ++i) {
        stowlark.push_back(figureOf(row.stowlark));
        bare.push_back(figureOf(row.bare));
    }
    const double ours = median(stowlark);
    const double theirs = median(bare);
    const double ratio = ours / theirs;
    std::printf("%-32s %9.4f %s %9.4f %s %8.3f %8.3f  %s\n", row.name.c_str(), ours, row.unit, theirs,
                row.unit, ratio, row.limit, verdict(ratio, row.limit));
    std::fflush(stdout);
}

const char *verdict(double figure, double limit) {
    return figure <= limit ? "ok" : "OVER";
}

} // namespace stowlark
