#include "benchmarks/Measuring.h"

#include <QStringList>
#include <QThread>
#include <algorithm>
#include <cmath>
#include <cstdio>

#include "app/base/Error.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int nationalSize = 6000;
constexpr double growthOfTables = 10;
/// What part of its limit an action may take before it is named.
constexpr double nearLimit = 0.8;

struct Runs {
    double best = std::nan("");
    double worst = std::nan("");

    void add(double taken) {
        best = std::fmin(best, taken);
        worst = std::fmax(worst, taken);
    }
};

/// A row of the results.
struct Result {
    const MeasuredAction* action;
    int bills;
    Runs ours, plain, indexed;
    double growth = std::nan("");  ///< against the library of the size before
    QString error = {};

    double allowed() const {
        const CostLimit& limit = action->limit;
        return std::fmin(limit.longest, (limit.factor > 0 ? limit.factor * indexed.best : 0) + limit.extra);
    }
    bool isLimited() const { return bills == 0 || bills == nationalSize; }
    bool isLimitedInGrowth() const { return bills > nationalSize && action->limit.growth > 0; }
    bool isMissed() const {
        return !error.isEmpty() || (isLimited() && ours.best > allowed()) ||
               (isLimitedInGrowth() && growth > action->limit.growth);
    }
};

Result measured(const MeasuredAction& action, int bills) {
    Result result{&action, bills, {}, {}, {}};
    std::fprintf(stderr, "%s, %d bills\n", action.name, bills);
    try {
        const Sides sides = action.prepare(bills);
        const int runs = bills > nationalSize ? action.runs / 3 : action.runs;
        for (int run = 0; run < runs; ++run) {
            result.ours.add(sides.ours());
            result.plain.add(sides.plain());
            if (sides.indexed)
                result.indexed.add(sides.indexed());
        }
    } catch (const Error& error) {
        result.error = error.description();
    }
    if (std::isnan(result.indexed.best))
        result.indexed = result.plain;
    return result;
}

QString shown(double value) { return std::isnan(value) ? u"-"_s : QString::number(value, 'f', 2); }

QString limitOf(const CostLimit& limit) {
    const QString extra = QString::number(limit.extra);
    if (limit.factor == 0)
        return extra;
    const QString beside = limit.extra > 0 ? u" + "_s + extra : QString();
    return u"%1 x indexed%2, at most %3"_s.arg(limit.factor).arg(beside).arg(limit.longest);
}

void printTable(const char* title, const std::vector<Result>& results,
                const std::function<bool(const Result&)>& wanted) {
    if (std::none_of(results.begin(), results.end(), wanted))
        return;
    std::printf("\n## %s\n\n", title);
    const QStringList heads{u"action"_s,     u"bills"_s, u"ours ms"_s, u"worst"_s,  u"plain ms"_s,  u"worst"_s,
                            u"indexed ms"_s, u"worst"_s, u"ratio"_s,   u"growth"_s, u"limit, ms"_s, u"kept"_s};
    QStringList rules(heads.size(), u"---:"_s);
    rules.front() = rules[10] = rules[11] = u"---"_s;
    const auto print = [](const QStringList& cells) { std::printf("| %s |\n", qPrintable(cells.join(u" | "_s))); };
    print(heads);
    print(rules);
    for (const Result& result : results) {
        if (!wanted(result))
            continue;
        print({QString::fromUtf8(result.action->name), result.bills == 0 ? u"-"_s : QString::number(result.bills),
               shown(result.ours.best), shown(result.ours.worst), shown(result.plain.best), shown(result.plain.worst),
               shown(result.indexed.best), shown(result.indexed.worst), shown(result.ours.best / result.indexed.best),
               shown(result.growth),
               !result.error.isEmpty()      ? result.error
               : result.isLimited()         ? limitOf(result.action->limit)
               : result.isLimitedInGrowth() ? u"growth %1"_s.arg(result.action->limit.growth)
                                            : u"-"_s,
               result.isMissed()                                  ? u"NO"_s
               : result.isLimited() || result.isLimitedInGrowth() ? u"yes"_s
                                                                  : u"-"_s});
    }
}

}  // namespace

int measure(const std::vector<MeasuredAction>& actions, const QRegularExpression& filter) {
    std::vector<Result> results;
    for (const MeasuredAction& action : actions) {
        double before = std::nan("");
        const std::vector<int> sizes = action.size == LibrarySize::None
                                           ? std::vector{0}
                                           : std::vector{nationalSize / 10, nationalSize, nationalSize * 10};
        for (const int bills : sizes) {
            if (!filter.match(u"%1/%2"_s.arg(QLatin1String(action.name)).arg(bills)).hasMatch())
                continue;
            Result result = measured(action, bills);
            result.growth = result.ours.best / before;
            before = result.ours.best;
            results.push_back(std::move(result));
        }
    }
    std::printf("Measured with %d processors. Milliseconds, the best and the worst of the runs of each side.\n",
                QThread::idealThreadCount());
    printTable("The ten that matter most", results,
               [](const Result& result) { return result.action->leads && result.isLimited(); });
    printTable("Near their limit", results, [](const Result& result) {
        return result.isLimited() && result.ours.best > nearLimit * result.allowed();
    });
    printTable("Growing faster than the tables", results,
               [](const Result& result) { return result.growth > growthOfTables; });
    printTable("All", results, [](const Result&) { return true; });
    return static_cast<int>(std::count_if(results.begin(), results.end(), std::mem_fn(&Result::isMissed)));
}
