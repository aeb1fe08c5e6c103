#include "tests/support/Disturbance.h"

#include "storage/Connection.h"

Disturbance::Disturbance(const QString& path, Kind kind, const QString& change, frmEditor* editor) : m_other(path) {
    if (kind == Kind::Written)
        m_other.run("BEGIN IMMEDIATE");
    else if (kind == Kind::Locked)
        m_other.run("BEGIN EXCLUSIVE");
    else if (kind == Kind::Read)
        m_other.keepReading();
    else if ((m_refusing = editor))
        editor->ormConn()->Execute(
            sql("CREATE TEMP TRIGGER refuse BEFORE ", change, " BEGIN SELECT RAISE(ABORT,'refused'); END"));
}

Disturbance::~Disturbance() {
    if (m_refusing && m_refusing->ormConn())
        m_refusing->ormConn()->Execute("DROP TRIGGER IF EXISTS temp.refuse");
}
