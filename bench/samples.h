#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <vector>

namespace tavrin::bench {

// Measures the time since its construction or restart.
class Stopwatch {
public:
    double Microseconds() const {
        return std::chrono::duration<double, std::micro>(Clock::now() - start_).count();
    }
    double Milliseconds() const { return Microseconds() / 1000; }
    double Seconds() const { return Microseconds() / 1e6; }
    void Restart() { start_ = Clock::now(); }

private:
    using Clock = std::chrono::steady_clock;
    Clock::time_point start_ = Clock::now();
};

// The values of a repeated measurement.
class Samples {
public:
    void Add(double value) { values_.insert(std::ranges::upper_bound(values_, value), value); }

    // Returns the value at this quantile, from 0 to 1.
    double Quantile(double share) const {
        const auto index =
            static_cast<std::size_t>(share * static_cast<double>(values_.size() - 1));
        return values_[index];
    }
    double Median() const { return Quantile(0.5); }
    double Min() const { return values_.front(); }
    double Max() const { return values_.back(); }

    // Prints a table row: median, minimum, maximum.
    void Print(const char* what, const char* unit) const {
        std::printf("%-58s %10.2f %10.2f %10.2f  %s\n", what, Median(), Min(), Max(), unit);
        std::fflush(stdout);
    }

private:
    std::vector<double> values_;  // ascending
};

inline void PrintHeadline(const char* title) {
    std::printf("\n%-58s %10s %10s %10s\n", title, "median", "min", "max");
}

}  // namespace tavrin::bench
