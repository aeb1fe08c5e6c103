#pragma once

#include <memory>

#include "tests/support/EditorDriver.h"
#include "tests/support/Snapshot.h"
#include "tests/walk/Prescribed.h"

/// Compares the window with what a fresh load of the same file shows: a second editor with a connection of its own,
/// placed on the same chapter or query, the same bill, feature and profession.
class Comparison {
public:
    Comparison(EditorDriver& driver, const Prescribed& prescribed);

    /// Fails the test when the window shows anything that the file does not give and that is not prescribed. `query`
    /// is what was searched for when the list shows results.
    void check(const QString& query);

    /// What the window showed at the last check().
    const Snapshot& last() const { return m_last; }

private:
    void load(const Snapshot& shown, const QString& query);
    void compareBills(const Snapshot& shown, const Snapshot& fresh);
    void compareDetails(const Snapshot& shown, Snapshot expected);

    EditorDriver& m_driver;
    const Prescribed& m_prescribed;
    std::unique_ptr<frmEditor> m_fresh;
    int m_checks = 0;
    Snapshot m_last;
};
