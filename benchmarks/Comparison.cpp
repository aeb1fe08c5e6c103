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

void printRow(const std::string& action, const std::string& bills, const std::string& ours, const std::string& plain,
              const std::string& ratio, const std::string& limit, const std::string& ok) {
    std::printf("%-44s | %6s | %9s | %9s | %6s | %-22s | %s\n", action.c_str(), bills.c_str(), ours.c_str(),
                plain.c_str(), ratio.c_str(), limit.c_str(), ok.c_str());
    std::fflush(stdout);
}

}  // namespace

Limit Limit::times(double factor) { return {factor, 0, "<= " + rounded(factor, "%g") + " x plain"}; }

Limit Limit::ms(double milliseconds) { return {0, milliseconds, "<= " + rounded(milliseconds, "%g") + " ms"}; }

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
    state.counters["allowed"] = (plain ? limit.factor * bestOfPlain : 0) + limit.extra;
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
    printRow("action", "bills", "ours ms", "plain ms", "ratio", "limit", "ok");
    printRow("---", "---", "---", "---", "---", "---", "---");
    return true;
}

void TableReporter::ReportRuns(const std::vector<Run>& report) {
    for (const Run& run : report) {
        if (run.run_type != Run::RT_Iteration)
            continue;
        if (run.error_occurred) {
            printRow(run.run_name.function_name, sizeOf(run), "-", "-", "-", run.error_message, "NO");
            ++m_missed;
            continue;
        }
        const auto counter = [&](const char* name) {
            const auto found = run.counters.find(name);
            return found == run.counters.end() ? std::nan("") : found->second.value;
        };
        const auto shown = [](double value, const char* format) {
            return std::isnan(value) ? std::string("-") : rounded(value, format);
        };
        const double ours = counter("ours");
        const double plain = counter("plain");
        const std::string size = sizeOf(run);
        const bool limited = size == "-" || size == std::to_string(nationalSize);
        const bool kept = !limited || ours <= counter("allowed");
        m_missed += kept ? 0 : 1;
        printRow(run.run_name.function_name, size, shown(ours, "%.2f"), shown(plain, "%.2f"),
                 shown(ours / plain, "%.2f"), limited ? run.report_label : "-",
                 !limited ? "-"
                 : kept   ? "yes"
                          : "NO");
    }
}
