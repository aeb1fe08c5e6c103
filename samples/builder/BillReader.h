#pragma once

#include <QHash>
#include <QString>

#include "samples/builder/BillSource.h"
#include "samples/builder/RationSource.h"
#include "samples/builder/SourceFile.h"

/// Reads one file of bills line by line and adds them to a library.
class BillReader {
public:
    BillReader(BillLibrary& library, const std::vector<RationLibrary>& rationLibraries, Complaints& complaints)
        : m_library(library), m_rationLibraries(rationLibraries), m_complaints(complaints) {}

    void read(const SourceLine& line);

    /// Checks and adds the last bill of the file.
    void finish();

private:
    void beginBill(const SourceLine& line);
    void readRule(const SourceLine& line);
    void readFeature(const SourceLine& line);
    void readContent(const SourceLine& line);
    void readSubContent(const SourceLine& line);
    AttachedRation findRation(const SourceLine& line, const QString& reference);
    const RationLibrary* findLibrary(const QString& id) const;

    BillLibrary& m_library;
    const std::vector<RationLibrary>& m_rationLibraries;
    Complaints& m_complaints;

    const RationLibrary* m_defaultLibrary = nullptr;
    SourceLine m_billLine;
    Bill m_bill;
    bool m_open = false;
    bool m_contentTakesParts = false;
    // As last written in this file: a line with the name alone repeats them.
    QHash<QString, Feature> m_features;
    QHash<QString, Content> m_contents;
};
