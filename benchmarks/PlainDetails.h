#pragma once

#include "benchmarks/PlainDatabase.h"

/// Reads in plain calls what the editor window shows of a bill: one pass over each table. Bills are those of the
/// generator, with 8 contents and 2 features each.
class PlainDetails {
public:
    explicit PlainDetails(PlainDatabase& library);

    void read(int bill);

    /// A bill that has nothing yet: second-level contents and values need not be looked for.
    void readNew(qint64 bill);

    void readValues(qint64 feature);

private:
    PlainStatement m_contents, m_details, m_features, m_values;
};
