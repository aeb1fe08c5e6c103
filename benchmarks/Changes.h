#pragma once

#include <benchmark/benchmark.h>

#include <QString>
#include <functional>

#include "benchmarks/Comparison.h"

class Connection;
class EditorWindow;
class PlainDatabase;

/// What the program does to the library at a path, and the milliseconds that it takes.
using OursOn = std::function<double(const QString& path)>;

/// The functions that write, without a window, on a connection that is open already.
OursOn onConnection(std::function<void(Connection*)> act);

/// A command in the editor window, with the full chapter listed, until the window shows its result.
OursOn inEditor(std::function<double(EditorWindow&)> act);

/// An action that changes a library, and the cheapest plain statements that leave the same rows (LastUpdate aside).
struct Change {
    /// Brings the library into the state in which the action is taken; may be empty.
    std::function<void(PlainDatabase&)> prepare = {};
    OursOn ours;
    std::function<void(PlainDatabase&)> plain;
    /// Reads in plain calls what the window shows anew afterwards; empty when it shows nothing that was not written.
    std::function<void(PlainDatabase&)> shown = {};
};

/// Compares both sides, each on a copy of the library that is as new each time; fails when they do not leave the same
/// rows.
void compareChange(benchmark::State& state, const Change& change, const Limit& limit);
