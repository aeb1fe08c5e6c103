#pragma once

#include <vector>

#include "benchmarks/Measuring.h"

/// What is measured.

/// Starting, the system database, rations.
std::vector<MeasuredAction> otherActions();
/// What shows something and leaves the library as it is.
std::vector<MeasuredAction> viewActions();
/// What changes the library.
std::vector<MeasuredAction> changeActions();
