#pragma once

#include <string>
#include <vector>

namespace veltrano {

/// What a piece of work cost this process.
struct Cost {
    double wall = 0;   ///< Seconds.
    double cpu = 0;    ///< Seconds of all threads, user and system.
    double thread = 0; ///< The same of the thread that measures alone, which is also true on a busy machine.
};

/// Measures from its making on, on one thread.
class CostMeter {
public:
    CostMeter();
    Cost cost() const;

private:
    Cost m_start;
};

/// The middle value; of an even number the mean of the two in the middle. Not for an empty list.
double median(std::vector<double> values);

/// The value that `share` (0 to 1) of all values do not exceed. 0 for an empty list.
double quantile(std::vector<double> values, double share);

/// Prints a row of the table: what, at most which value, the measured one, and whether it is within. `remark`
/// tells what a ratio is made of.
void printFigure(const std::string& what, double target, double measured, const std::string& unit,
                 const std::string& remark = {});

/// The same for what has no target.
void printMeasure(const std::string& what, double measured, const std::string& unit,
                  const std::string& remark = {});

/// The number with so many decimals.
std::string text(double value, int decimals);

} // namespace veltrano
