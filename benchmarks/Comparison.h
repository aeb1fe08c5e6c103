#pragma once

#include <benchmark/benchmark.h>

#include <chrono>
#include <functional>
#include <string>

/// Measures what a user does beside the same work in plain SQLite calls, in the same run, and prints both as a table.

/// Milliseconds that `action` takes.
template <typename Action>
double milliseconds(Action&& action) {
    const auto start = std::chrono::steady_clock::now();
    action();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

/// One side of a comparison: prepares what it needs, does its work once and gives the milliseconds of the work alone.
using Side = std::function<double()>;

/// Milliseconds after which a user notices that the window does not answer.
inline constexpr double noticeable = 100;

/// What an action may cost on a library of national size (6,000 bills): `factor` times the plain side and `extra`
/// milliseconds, and never more than `longest`. Other sizes are measured to see growth.
struct Limit {
    double factor = 0;
    double extra = 0;
    std::string text;
    double longest = noticeable;

    static Limit times(double factor);
    static Limit ms(double milliseconds);
};

/// Runs both sides in turn, once an iteration, and reports the best of each: the machine may be busy with other things.
/// Without a `plain` side only the action itself is reported.
void compare(benchmark::State& state, const Side& ours, const Side& plain, const Limit& limit);

/// How often an action is run: a short one, in which waiting for the disk is most of the time, needs more runs.
enum class Runs { Few, Many };

/// Registers an action for libraries of 600, 6,000 and 60,000 bills; the state's first range is that number.
void forEverySize(const char* action, void (*function)(benchmark::State&), Runs runs = Runs::Few);

/// Registers an action that does not depend on the library's size.
benchmark::internal::Benchmark* forOneSize(const char* action, void (*function)(benchmark::State&));

/// Prints one row an action and size as it is done, as a Markdown table.
class TableReporter : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& report) override;

    /// How many actions cost more than they may, or failed.
    int missed() const { return m_missed; }

private:
    void printAction(const Run& run);

    int m_missed = 0;
    std::string m_lastAction;
    double m_last = 0;
};
