#pragma once

#include <QWidget>

#include "editor/bills/BillPane.h"
#include "editor/bills/FeaturePane.h"
#include "tests/bills/BillLibrary.h"

/// A window with the bill list, its text boxes and the features, on a temporary library, driven as a user does.
class BillWindow : public QWidget {
public:
    BillWindow();
    ~BillWindow() override;

    BillLibrary library;
    BillPane* bills;
    FeaturePane* features;
    QString chapter = QStringLiteral("010101");
    /// What happened, in order: "bill <id>", "emptied".
    QStringList events;

    KeyedGrid* list() const { return bills->grdBillList(); }

    void activate();
    void click(KeyedGrid* grid, int row, const char* key) const;
    /// Makes the cell current, opens its editor with F2 and types over the text; Enter ends the edit.
    void edit(KeyedGrid* grid, int row, const char* key, const QString& text) const;

    /// All shown cells of a grid, one text a row.
    static QStringList shown(const KeyedGrid* grid);
};
