// What the user does with features and their values.

#include <gtest/gtest.h>

#include "editor/bills/FeaturePane.h"
#include "tests/gui/RandomUser.h"

void RandomUser::clickFeature() {
    KeyedGrid* grid = chance(60) ? m_driver.features() : m_driver.values();
    if (!grid->hasRows())
        return;
    const int row = upTo(grid->rowCount());
    say(QStringLiteral("click row %1 of %2").arg(row).arg(grid->objectName()));
    m_driver.click(grid, row, grid == m_driver.features() ? QStringLiteral("Name") : QStringLiteral("eigenValue"));
    EXPECT_EQ(grid->row(), row);
}

void RandomUser::editFeature() {
    KeyedGrid* features = m_driver.features();
    if (!features->hasRows())
        return;
    const int row = upTo(features->rowCount());
    const QString key = oneOf({QStringLiteral("Name"), QStringLiteral("unit"), QStringLiteral("defval")});
    const QString text = anyText();
    const int end = oneOf<int>({Qt::Key_Return, Qt::Key_Return, Qt::Key_Escape});
    say(QStringLiteral("edit %1 of feature row %2 to \"%3\"").arg(key).arg(row).arg(text));
    const bool editable = m_driver.edit(features, row, key, text, end);
    EXPECT_EQ(editable, !m_prescribed.detailsLocked);
    if (editable && end != Qt::Key_Escape && text.contains(QLatin1Char('\'')))
        expectError("ModDBOperator.ExecuteDDL");
}

void RandomUser::chooseType() {
    KeyedGrid* features = m_driver.features();
    if (!features->hasRows())
        return;
    const int row = upTo(features->rowCount());
    const QString type = oneOf(
        {QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("2"), QStringLiteral("3")});
    say(QStringLiteral("choose type %1 of feature row %2").arg(type).arg(row));
    EXPECT_EQ(m_driver.choose(features, row, QStringLiteral("type"), type), !m_prescribed.detailsLocked);
    if (!m_prescribed.detailsLocked && !failed()) {
        EXPECT_EQ(features->text(row, QStringLiteral("type")), type);
    }
}

void RandomUser::addFeature() {
    say(QStringLiteral("add a feature"));
    const int rows = m_driver.features()->rowCount();
    const bool enabled = m_driver.isEnabled(3, 300);
    EXPECT_EQ(enabled, m_driver.bills()->row() >= 0);
    m_driver.run(3, 300);
    if (enabled && !failed()) {
        EXPECT_EQ(m_driver.features()->row(), rows);
    }
}

void RandomUser::deleteFeature() {
    KeyedGrid* features = m_driver.features();
    const int row = features->row();
    say(QStringLiteral("delete feature row %1").arg(row));
    const int rows = features->rowCount();
    const bool enabled = m_driver.isEnabled(3, 301);
    EXPECT_EQ(enabled, row >= 0 && !m_prescribed.detailsLocked);
    m_driver.run(3, 301);
    if (enabled && !failed()) {
        EXPECT_EQ(features->row(), qMin(row, rows - 2));
    }
}

/// All values of the feature are written at once; one that cannot be written keeps all from it.
void RandomUser::expectValuesWritten() {
    if (m_disturbed)
        return;
    const SqlText awkward = sql("SELECT ID FROM tblSpecEnum WHERE SpecID=",
                                m_driver.features()->text(m_driver.features()->row(), QStringLiteral("id")),
                                " AND EigenValue LIKE '%'''", "||'%'");
    if (inFile(awkward))
        expectError("frmEditor.grdSpecEnum_AfterEdit");
}

void RandomUser::tickValue() {
    KeyedGrid* values = m_driver.values();
    if (!values->hasRows())
        return;
    const int row = upTo(values->rowCount());
    const QString key = QStringLiteral("isUse");
    const bool byMouse = chance(60);
    say(QStringLiteral("tick value row %1").arg(row));
    const QString before = values->text(row, key);
    if (byMouse) {
        m_driver.click(values, row, key);
    } else {
        m_driver.showPage(values);
        values->setFocus();
        values->setCell(row, key);
        m_driver.key(values, Qt::Key_Space);
    }
    if (m_prescribed.detailsLocked)
        return;
    expectValuesWritten();
    if (!failed()) {
        EXPECT_NE(values->text(row, key), before);
    }
}

void RandomUser::editValue() {
    KeyedGrid* values = m_driver.values();
    if (!values->hasRows())
        return;
    const int row = upTo(values->rowCount());
    const QString text = anyText();
    const int end = oneOf<int>({Qt::Key_Return, Qt::Key_Return, Qt::Key_Tab, Qt::Key_Escape});
    say(QStringLiteral("edit value row %1 to \"%2\"").arg(row).arg(text));
    const bool editable = m_driver.edit(values, row, QStringLiteral("eigenValue"), text, end);
    EXPECT_EQ(editable, !m_prescribed.detailsLocked);
    if (QWidget* next = values->findChild<QWidget*>(QStringLiteral("cellEditor")))
        m_driver.key(next, Qt::Key_Escape);
    if (!editable || end == Qt::Key_Escape)
        return;
    if (text.contains(QLatin1Char('\'')))
        expectError("frmEditor.grdSpecEnum_AfterEdit");
    else
        expectValuesWritten();
}

void RandomUser::addValue() {
    KeyedGrid* features = m_driver.features();
    say(QStringLiteral("add a value"));
    const bool enabled = m_driver.isEnabled(4, 300);
    const bool enumeration =
        features->row() >= 0 && features->text(features->row(), QStringLiteral("type")) == QLatin1String("2");
    EXPECT_EQ(enabled, enumeration && !m_prescribed.detailsLocked);
    const int rows = m_driver.values()->rowCount();
    m_driver.run(4, 300);
    if (enabled && !failed()) {
        EXPECT_EQ(m_driver.values()->row(), rows);
    }
}

void RandomUser::deleteValue() {
    KeyedGrid* values = m_driver.values();
    const int row = values->row();
    say(QStringLiteral("delete value row %1").arg(row));
    const int rows = values->rowCount();
    const bool enabled = m_driver.isEnabled(4, 301);
    EXPECT_EQ(enabled, row >= 0 && !m_prescribed.detailsLocked);
    m_driver.run(4, 301);
    if (enabled && !failed()) {
        EXPECT_EQ(values->row(), qMin(row, rows - 2));
    }
}
