#include "storage/ErrorWords.h"

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace {

struct Meaning {
    int code;          ///< primary, or extended where that tells more
    const char* said;  ///< what SQLite's words must contain
    const char* words;
};

// The first row that fits counts.
const Meaning meanings[] = {
    {SQLITE_READONLY_DBMOVED, "", "文件已被删除、移动或替换，没有写入；请把原文件放回原处，或关闭窗口后重新打开"},
    {SQLITE_ERROR, "no such table", "文件中没有所需的表，可能不是本程序的文件，请核对文件"},
    {SQLITE_ERROR, "no such column", "文件中没有所需的字段，可能不是本程序的文件，请核对文件"},
    {SQLITE_ERROR, "has no column", "文件中没有所需的字段，可能不是本程序的文件，请核对文件"},
    {SQLITE_ERROR, "prohibited", "文件中有不允许使用的视图，可能不是本程序的文件，请核对文件"},
    {SQLITE_ERROR, "", "语句有错误，没有执行"},
    {SQLITE_PERM, "", "没有访问文件的权限，请检查文件和文件夹的权限"},
    {SQLITE_BUSY, "", "文件正被其他程序占用，请关闭该程序后重试"},
    {SQLITE_LOCKED, "", "文件正在使用中，请稍后重试"},
    {SQLITE_NOMEM, "", "内存不足，请关闭其他程序后重试"},
    {SQLITE_READONLY, "", "文件或所在的文件夹不允许写入，请检查它们的属性和权限"},
    {SQLITE_INTERRUPT, "", "数据量异常，语句已中止，文件可能已损坏，请改用备份"},
    {SQLITE_IOERR, "", "读写磁盘出错，请检查磁盘或网络后重试"},
    {SQLITE_CORRUPT, "", "文件内容已损坏，请改用备份"},
    {SQLITE_FULL, "", "磁盘已满，没有写入，请腾出空间后重试"},
    {SQLITE_CANTOPEN, "", "无法打开文件，请检查文件和文件夹是否存在、是否允许读写"},
    {SQLITE_PROTOCOL, "", "文件正被其他程序占用，请关闭该程序后重试"},
    {SQLITE_SCHEMA, "", "文件的结构刚被其他程序改变，请重试"},
    {SQLITE_TOOBIG, "", "有一项数据太长，不能读写，文件可能已损坏，请改用备份"},
    {SQLITE_CONSTRAINT, "", "文件不接受这项修改，可能不是本程序的文件，请核对文件"},
    {SQLITE_MISUSE, "", "没有打开的数据库连接，请重新打开文件"},
    {SQLITE_NOTADB, "", "文件不是数据库，或者设有别的密码，请核对文件"},
};

QString withSaid(const QString& words, const QString& said) { return u"%1（%2）"_s.arg(words, said); }

}  // namespace

QString errorWords(int code, const QString& said) {
    for (const Meaning& meaning : meanings) {
        if ((meaning.code == code || meaning.code == (code & 0xff)) && said.contains(QLatin1String(meaning.said)))
            return withSaid(QString::fromUtf8(meaning.words), said);
    }
    return withSaid(u"数据库出错，没有完成"_s, said);
}

QString brokenValueWords(const QString& near) {
    if (near.startsWith(QChar::Null))
        return withSaid(u"文字中有不能保存的空字符（NUL），请删去后重新输入"_s, u"near NUL: syntax error"_s);
    return withSaid(u"文字中不能有英文单引号（'），请改用中文引号"_s, u"near \"%1\": syntax error"_s.arg(near));
}
