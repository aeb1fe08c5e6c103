#pragma once

#include <QString>

/// How far a test goes that repeats what it does: `ordinary` in every run, `atLength` when `./test --long` asks for it
/// (environment variable TESSEL_TEST_LONG).
int extent(int ordinary, int atLength);

/// Tells what has been counted or measured, one line: it is printed, and added to the file that TESSEL_TEST_FIGURES
/// names, from which `./test --long` takes its summary.
void reportFigures(const QString& line);
