#pragma once

#include <benchmark/benchmark.h>

#include <functional>

#include "benchmarks/Comparison.h"
#include "storage/Connection.h"

class PlainDatabase;

/// An action that changes a library, and the cheapest plain statements that leave the same rows (LastUpdate aside).
struct Change {
    /// Brings the library into the state in which the action is taken; may be empty.
    std::function<void(PlainDatabase&)> prepare;
    /// The program's action; true when it was done.
    std::function<bool(Connection*)> ours;
    std::function<void(PlainDatabase&)> plain;
};

/// Compares both sides on a fresh copy of the library each time; fails when they do not leave the same rows.
void compareChange(benchmark::State& state, const Change& change, const Limit& limit);
