#include "benchmarks/Comparison.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

namespace {

constexpr int nationalSize = 6000;

std::string rounded(double value, const char* format) {
    char text[40];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

/// "Action/6000/iterations:7/manual_time" is told as action and size.
std::string sizeOf(const benchmark::BenchmarkReporter::Run& run) {
    const std::string& arguments = run.run_name.args;
    return arguments.empty() ? "-" : arguments;
}

void printRow(const std::vector<std::string>& cells) {
    constexpr int widths[] = {-40, 6, 8, 8, 6, 6, -20, -3};
    const int* width = widths;
    for (const std::string& cell : cells)
        std::printf("| %*s ", *width++, cell.c_str());
    std::printf("|\n");
    std::fflush(stdout);
}

}  // namespace

Limit Limit::times(double factor) { return {factor, 0, rounded(factor, "%g") + " x plain, 100 ms"}; }

Limit Limit::ms(double milliseconds) { return {0, milliseconds, rounded(milliseconds, "%g") + " ms"}; }

void compare(benchmark::State& state, const Side& ours, const Side& plain, const Limit& limit) {
    double bestOfOurs = std::numeric_limits<double>::max();
    double bestOfPlain = std::numeric_limits<double>::max();
    for ([[maybe_unused]] auto iteration : state) {
        const double taken = ours();
        bestOfOurs = std::min(bestOfOurs, taken);
        if (plain)
            bestOfPlain = std::min(bestOfPlain, plain());
        state.SetIterationTime(taken / 1000);
    }
    state.counters["ours"] = bestOfOurs;
    if (plain)
        state.counters["plain"] = bestOfPlain;
    state.counters["allowed"] = std::min(limit.longest, (plain ? limit.factor * bestOfPlain : 0) + limit.extra);
    state.SetLabel(limit.text);
}

void forEverySize(const char* action, void (*function)(benchmark::State&), Runs runs) {
    const auto iterations = [runs](int few) { return runs == Runs::Few ? few : 3 * few; };
    benchmark::RegisterBenchmark(action, function)
        ->Arg(600)
        ->Arg(nationalSize)
        ->UseManualTime()
        ->Iterations(iterations(15));
    benchmark::RegisterBenchmark(action, function)->Arg(10 * nationalSize)->UseManualTime()->Iterations(iterations(5));
}

benchmark::internal::Benchmark* forOneSize(const char* action, void (*function)(benchmark::State&)) {
    return benchmark::RegisterBenchmark(action, function)->UseManualTime()->Iterations(15);
}

bool TableReporter::ReportContext(const Context& context) {
    std::printf("Best of several runs of each side, taken in turn. Files on disk, full synchronous on both sides.\n");
    std::printf("%d processors", context.cpu_info.num_cpus);
    if (!context.cpu_info.load_avg.empty())
        std::printf(", load %.1f when it began", context.cpu_info.load_avg.front());
    std::printf(".\n\n");
    printRow({"action", "bills", "ours ms", "plain ms", "ratio", "growth", "limit at 6000", "ok"});
    printRow({"---", "---:", "---:", "---:", "---:", "---:", "---", "---"});
    return true;
}

void TableReporter::ReportRuns(const std::vector<Run>& report) {
    for (const Run& run : report) {
        if (run.run_type == Run::RT_Iteration)
            printAction(run);
    }
}

void TableReporter::printAction(const Run& run) {
    const std::string& action = run.run_name.function_name;
    const std::string size = sizeOf(run);
    if (run.error_occurred) {
        printRow({action, size, "-", "-", "-", "-", run.error_message, "NO"});
        ++m_missed;
        return;
    }
    const auto counter = [&](const char* name) {
        const auto found = run.counters.find(name);
        return found == run.counters.end() ? std::nan("") : found->second.value;
    };
    const auto shown = [](double value) { return std::isnan(value) ? std::string("-") : rounded(value, "%.2f"); };
    const double ours = counter("ours");
    const double plain = counter("plain");
    const double growth = action == m_lastAction ? ours / m_last : std::nan("");
    m_lastAction = action;
    m_last = ours;
    const bool limited = size == "-" || size == std::to_string(nationalSize);
    const bool kept = ours <= counter("allowed");
    m_missed += limited && !kept ? 1 : 0;
    printRow({action, size, shown(ours), shown(plain), shown(ours / plain), shown(growth),
              limited ? run.report_label : "-",
              !limited ? "-"
              : kept   ? "yes"
                       : "NO"});
}
