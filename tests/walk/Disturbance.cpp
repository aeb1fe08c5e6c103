#include "tests/walk/Disturbance.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include "storage/Connection.h"

using namespace Qt::StringLiterals;

Disturbance::Disturbance(const QString& path, Kind kind, const QString& change, frmEditor* editor) {
    EXPECT_EQ(sqlite3_open(path.toUtf8().constData(), &m_other), SQLITE_OK);
    switch (kind) {
        case Kind::Written:
            run(u"BEGIN IMMEDIATE"_s);
            break;
        case Kind::Locked:
            run(u"BEGIN EXCLUSIVE"_s);
            break;
        case Kind::Read:
            EXPECT_EQ(sqlite3_prepare_v2(m_other, "SELECT * FROM sqlite_schema", -1, &m_reading, nullptr), SQLITE_OK);
            EXPECT_EQ(sqlite3_step(m_reading), SQLITE_ROW);
            break;
        case Kind::Refused:
            m_refusing = editor;
            editor->ormConn()->Execute(
                sql("CREATE TEMP TRIGGER refuse BEFORE ", change, " BEGIN SELECT RAISE(ABORT,'refused'); END"));
            break;
    }
}

Disturbance::~Disturbance() {
    sqlite3_finalize(m_reading);
    if (m_refusing && m_refusing->ormConn())
        m_refusing->ormConn()->Execute("DROP TRIGGER IF EXISTS temp.refuse");
    sqlite3_close(m_other);
}

void Disturbance::run(const QString& statement) {
    EXPECT_EQ(sqlite3_exec(m_other, statement.toUtf8().constData(), nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(m_other);
}
