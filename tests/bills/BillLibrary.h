#pragma once

#include "tests/support/TemporaryLibrary.h"

class ModalAnswers;

/// A temporary library with bills in it. What its rows are made of tells which bill they belong to.
class BillLibrary : public TemporaryLibrary {
public:
    BillLibrary();

    void addBill(qint64 id, const QString& code) const;
    void addBill(qint64 id, const char* code) const { addBill(id, QString::fromLatin1(code)); }

    /// A bill with two parameters, two contents of three details each, and two features of two values each.
    void addBillWithDetails(qint64 id, const QString& code) const;

    /// Locked files are reported at once.
    void dontWait() const;

    /// Everything in the file, row by row.
    QStringList contents() const;
};

/// Where the errors shown since the last call happened: "module.procedure". Messages that are none stand as they are.
QStringList errorPlaces(ModalAnswers& answers);
