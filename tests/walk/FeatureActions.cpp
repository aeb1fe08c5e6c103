// What the user does with features and their values.

#include <gtest/gtest.h>

#include "editor/bills/FeaturePane.h"
#include "tests/walk/RandomUser.h"

using namespace Qt::StringLiterals;

void RandomUser::clickFeature() {
    KeyedGrid* grid = chance(60) ? m_driver.features() : m_driver.values();
    if (!grid->hasRows())
        return;
    const int row = upTo(grid->rowCount());
    say(u"click row %1 of %2"_s.arg(row).arg(grid->objectName()));
    m_driver.click(grid, row, grid == m_driver.features() ? u"Name"_s : u"eigenValue"_s);
    EXPECT_EQ(grid->row(), row);
}

void RandomUser::editFeature() {
    KeyedGrid* features = m_driver.features();
    if (!features->hasRows())
        return;
    const int row = upTo(features->rowCount());
    const QString key = oneOf({u"Name"_s, u"unit"_s, u"defval"_s});
    const QString text = anyText();
    const int end = oneOf<int>({Qt::Key_Return, Qt::Key_Return, Qt::Key_Escape});
    say(u"edit %1 of feature row %2 to \"%3\""_s.arg(key).arg(row).arg(text));
    const bool editable = m_driver.edit(features, row, key, text, end);
    EXPECT_EQ(editable, !m_prescribed.detailsLocked);
    if (editable && end != Qt::Key_Escape && text.contains(u'\''))
        expectError("ModDBOperator.ExecuteDDL");
}

void RandomUser::chooseType() {
    KeyedGrid* features = m_driver.features();
    if (!features->hasRows())
        return;
    const int row = upTo(features->rowCount());
    const QString type = oneOf({u"0"_s, u"1"_s, u"2"_s, u"2"_s, u"3"_s});
    say(u"choose type %1 of feature row %2"_s.arg(type).arg(row));
    EXPECT_EQ(m_driver.choose(features, row, u"type"_s, type, chance(50)), !m_prescribed.detailsLocked);
    if (!m_prescribed.detailsLocked && !failed()) {
        EXPECT_EQ(features->text(row, u"type"_s), type);
    }
}

void RandomUser::addFeature() {
    say(u"add a feature"_s);
    const int rows = m_driver.features()->rowCount();
    const bool enabled = m_driver.isEnabled(3, 300);
    EXPECT_EQ(enabled, m_driver.bills()->row() >= 0);
    run(3, 300);
    if (enabled && !failed()) {
        EXPECT_EQ(m_driver.features()->row(), rows);
    }
}

void RandomUser::deleteFeature() {
    KeyedGrid* features = m_driver.features();
    const int row = features->row();
    say(u"delete feature row %1"_s.arg(row));
    const int rows = features->rowCount();
    const bool enabled = m_driver.isEnabled(3, 301);
    EXPECT_EQ(enabled, row >= 0 && !m_prescribed.detailsLocked);
    run(3, 301);
    if (enabled && !failed()) {
        EXPECT_EQ(features->row(), qMin(row, rows - 2));
    }
}

/// All values of the feature are written at once; one that cannot be written keeps all from it.
void RandomUser::expectValuesWritten() {
    if (m_disturbed)
        return;
    const SqlText awkward =
        sql("SELECT ID FROM tblSpecEnum WHERE SpecID=", m_driver.features()->text(m_driver.features()->row(), u"id"_s),
            " AND EigenValue LIKE '%'''", "||'%'");
    if (inFile(awkward))
        expectError("frmEditor.grdSpecEnum_AfterEdit");
}

void RandomUser::tickValue() {
    KeyedGrid* values = m_driver.values();
    if (!values->hasRows())
        return;
    const int row = upTo(values->rowCount());
    const QString key = u"isUse"_s;
    const bool byMouse = chance(60);
    say(u"tick value row %1"_s.arg(row));
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
    say(u"edit value row %1 to \"%2\""_s.arg(row).arg(text));
    const bool editable = m_driver.edit(values, row, u"eigenValue"_s, text, end);
    EXPECT_EQ(editable, !m_prescribed.detailsLocked);
    if (QWidget* next = values->findChild<QWidget*>(u"cellEditor"_s))
        m_driver.key(next, Qt::Key_Escape);
    if (!editable || end == Qt::Key_Escape)
        return;
    if (text.contains(u'\''))
        expectError("frmEditor.grdSpecEnum_AfterEdit");
    else
        expectValuesWritten();
}

void RandomUser::addValue() {
    KeyedGrid* features = m_driver.features();
    say(u"add a value"_s);
    const bool enabled = m_driver.isEnabled(4, 300);
    const bool enumeration = features->row() >= 0 && features->text(features->row(), u"type"_s) == u"2"_s;
    EXPECT_EQ(enabled, enumeration && !m_prescribed.detailsLocked);
    const int rows = m_driver.values()->rowCount();
    run(4, 300);
    if (enabled && !failed()) {
        EXPECT_EQ(m_driver.values()->row(), rows);
    }
}

void RandomUser::deleteValue() {
    KeyedGrid* values = m_driver.values();
    const int row = values->row();
    say(u"delete value row %1"_s.arg(row));
    const int rows = values->rowCount();
    const bool enabled = m_driver.isEnabled(4, 301);
    EXPECT_EQ(enabled, row >= 0 && !m_prescribed.detailsLocked);
    run(4, 301);
    if (enabled && !failed()) {
        EXPECT_EQ(values->row(), qMin(row, rows - 2));
    }
}
