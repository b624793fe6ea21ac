#pragma once

#include <functional>
#include <string>

namespace stowlark {

using Action = std::function<void()>;
using Figure = std::function<double()>;

/// One of two ways to do the same thing.
struct Side {
    Action run;            ///< what is timed
    Action before = [] {}; ///< not timed, before every run
    Action after = [] {};  ///< not timed, after every run
    Figure figure{};       ///< what counts instead of the time, if set: taken between `run` and `after`
};

/// One line of the table.
struct Row {
    std::string name;
    double limit; ///< of the ratio of Stowlark's time, or figure, to the bare tool's
    Side stowlark;
    Side bare;
    Action prepare = [] {}; ///< once, before the first run
    const char *unit = "s ";
};

void printHeadings();

/// Runs both sides in turn, so that a drift of the machine's speed reaches both: once to warm up, and then
/// `samples` times. Prints the medians.
void measure(const Row &row, int samples);

/// What the last column says about a figure.
const char *verdict(double figure, double limit);

} // namespace stowlark
