#pragma once

#include "samples/writer/CsvFile.h"
#include "samples/writer/RationFiles.h"

/// Reads a ration library from "chapters.csv" and "rations.csv" in the folder `name` below `folder`. Complains about
/// chapters whose numbers are none, stand twice or have no chapter above them, and about rations without a chapter or
/// with a code that another has.
RationFile readRationLibrary(const QString& folder, const QString& name, Complaints& complaints);
