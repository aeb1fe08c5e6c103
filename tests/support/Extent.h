#pragma once

#include "tests/support/Toolkit.h"

/// Does `once` with the seeds 1, 2, … `ordinary`. In a long run (TESSEL_TEST_SECONDS) with seeds that grow from
/// TESSEL_TEST_SEED on, until that many seconds are over; what it does is the only thing that such a run repeats. Ends
/// with the first failure, and names its seed. TESSEL_TEST_SEED alone: once, with that seed.
void repeated(unsigned ordinary, const std::function<void(unsigned seed)>& once);

/// Counts something that was done: it is printed, and added to the file that TESSEL_TEST_FIGURES names, one line
/// "what: number" each time, so that the figures of several runs add up.
void counted(const QString& what, qint64 number);
