#include "administration/LibrariesCommand.h"

#include <QFileInfo>
#include <QMap>
#include <algorithm>

#include "administration/RationCsv.h"
#include "app/base/Definitions.h"
#include "app/base/Guarded.h"
#include "app/base/Paths.h"
#include "storage/RationLibraries.h"
#include "storage/SystemDatabase.h"

using namespace Qt::StringLiterals;

namespace {

enum ExitCode { Done = 0, Mistaken = 1, NotUnderstood = 2 };

const char help[] =
    R"(tessel-libraries：制作定额库，并登记到程序文件夹的 tessel.dat 中

用法：
  tessel-libraries check --chapters 章节.csv --rations 定额.csv
      只检查两个 CSV 文件，不写任何文件
  tessel-libraries make 编号 --chapters 章节.csv --rations 定额.csv [选项]
      检查，制作定额库文件 Data/地区/文件名，并登记；编号已登记的，重新制作
  tessel-libraries list
      列出已登记的定额库
  tessel-libraries remove 编号
      取消登记；定额库文件保留

make 的选项（编号已登记的，不写的选项保持不变）：
  --name 名称           显示的名称，新登记时必须写
  --region 地区         地区，也是 Data 下文件夹的名称，新登记时必须写；
                        “定额库浏览”窗口只在“广东省”中查找
  --file 文件名         定额库的文件名，不写为“名称.db”
  --profession 专业     在“定额库浏览”窗口的列表中按它排序，如 01
  --default-for 文件名  以它为默认定额库的清单库的文件名，如 我的清单库.bdb；写 "" 取消

编号最多 12 个字。它的前 10 个字加上清单编码的前两位，就是该清单的新定额所用的定额库的编号。

章节.csv 的列：编号、章、节、小节、项、子项、标题、作废（节、小节、项、子项、作废可以没有）
定额.csv 的列：章编号（章节.csv 中的编号）、编码、名称、单位
第一行是列名，次序不限；用逗号、分号或制表符分隔；UTF-8 或 GBK 编码。

有错误时逐条列出文件和行号，什么也不写。
环境变量 TESSEL_HOME 可以指定另一个程序文件夹。
退出码：0 完成；1 CSV 文件或选项的内容有错误；2 命令写错；3 文件不能读写（记入 Error.log）
)";

/// What the command line says: words, and options each of which is followed by its value.
struct Order {
    QStringList words;
    QMap<QString, QString> options;
    QString mistake;  ///< why it cannot be understood

    Order(const QStringList& arguments, const QStringList& known) {
        for (auto each = arguments.begin(); each != arguments.end() && mistake.isEmpty(); ++each) {
            if (!each->startsWith(u"--"_s))
                words << *each;
            else if (!known.contains(each->mid(2)))
                mistake = u"没有选项 %1"_s.arg(*each);
            else if (each + 1 == arguments.end())
                mistake = u"选项 %1 后面缺少内容"_s.arg(*each);
            else {
                const QString option = each->mid(2);
                options[option] = *++each;
            }
        }
    }
};

/// What no list of the program, no file name or no statement can carry.
void check(const QString& option, const QString& value, const QString& forbidden, int width, QStringList& mistakes) {
    const bool broken = std::any_of(value.begin(), value.end(), [&](QChar c) {
        return forbidden.contains(c) || c.category() == QChar::Other_Control;
    });
    if (broken)
        mistakes << u"%1不能含有这些字符：%2"_s.arg(option, forbidden);
    if (value.size() > width)
        mistakes << u"%1有 %2 个字，最多 %3 个"_s.arg(option).arg(value.size()).arg(width);
}

QStringList mistakesIn(const ListedRationLibrary& library, const std::vector<ListedRationLibrary>& others) {
    const QString inLists = u"'|;#"_s, inFileNames = u"'\\/:*?\"<>|"_s;
    QStringList mistakes;
    check(u"编号"_s, library.id, inLists, 12, mistakes);
    check(u"--name "_s, library.name, inLists, 50, mistakes);
    check(u"--region "_s, library.region, inFileNames, 50, mistakes);
    check(u"--file "_s, library.fileName, inFileNames, 100, mistakes);
    check(u"--profession "_s, library.profession, inLists, 20, mistakes);
    check(u"--default-for "_s, library.defaultFor, inFileNames, 100, mistakes);
    if (library.region.startsWith(u'.') || library.fileName.startsWith(u'.'))
        mistakes << u"--region 和 --file 不能以点开头"_s;
    for (const ListedRationLibrary& other : others) {
        if (other.id == library.id)
            continue;
        if (other.region == library.region && other.fileName.compare(library.fileName, Qt::CaseInsensitive) == 0)
            mistakes << u"文件 %1 已由定额库 %2 使用，请用 --file 另取一个"_s.arg(other.fileName, other.id);
        if (!library.defaultFor.isEmpty() && other.defaultFor == library.defaultFor)
            mistakes << u"%1 的默认定额库已经是 %2"_s.arg(library.defaultFor, other.id);
    }
    return mistakes;
}

/// What is listed at last, or is to be: for an id that is not listed yet with the names that follow from others.
ListedRationLibrary described(const Order& order, const std::vector<ListedRationLibrary>& all) {
    const QString& id = order.words[1];
    const auto listed = std::find_if(all.begin(), all.end(), [&](const auto& each) { return each.id == id; });
    ListedRationLibrary library = listed == all.end() ? ListedRationLibrary{id, {}, {}, {}} : *listed;
    const std::pair<QString, QString ListedRationLibrary::*> fields[] = {
        {u"name"_s, &ListedRationLibrary::name},
        {u"region"_s, &ListedRationLibrary::region},
        {u"file"_s, &ListedRationLibrary::fileName},
        {u"profession"_s, &ListedRationLibrary::profession},
        {u"default-for"_s, &ListedRationLibrary::defaultFor}};
    for (const auto& [option, field] : fields)
        library.*field = order.options.value(option, library.*field).trimmed();
    if (library.fileName.isEmpty() && !library.name.isEmpty())
        library.fileName = library.name + u".db"_s;
    return library;
}

QString pathOf(const ListedRationLibrary& library) { return joinPath(dataPath + library.region, library.fileName); }

/// Rolled back unless it is committed.
class Transaction {
public:
    explicit Transaction(Connection& connection) : m_connection(connection) {
        m_connection.Execute("BEGIN IMMEDIATE;");
    }
    ~Transaction() {
        if (m_connection.isInTransaction())
            succeeds([this] { m_connection.Execute("ROLLBACK;"); });
    }
    Q_DISABLE_COPY(Transaction)

    void commit() { m_connection.Execute("COMMIT;"); }

private:
    Connection& m_connection;
};

class Command {
public:
    Command(Order order, QTextStream& said, QTextStream& complained)
        : m_order(std::move(order)), m_said(said), m_complained(complained) {}

    int check() {
        const std::optional<RationFile> library = read();
        if (!library)
            return Mistaken;
        m_said << u"没有错误：%1 个章节，%2 条定额\n"_s.arg(library->chapters.size()).arg(library->rations.size());
        return Done;
    }

    int make() {
        const std::optional<RationFile> library = read();
        if (!library)
            return Mistaken;
        const QString list = appPath + u"tessel.dat"_s;
        const bool isListNew = !QFileInfo::exists(list);
        const auto system = isListNew ? nullptr : openSystemDatabase();
        const auto all = isListNew ? std::vector<ListedRationLibrary>() : listedLibraries(*system);
        const ListedRationLibrary wanted = described(m_order, all);
        if (!isRight(wanted, all))
            return Mistaken;
        if (isListNew) {
            writeRationLibrary(pathOf(wanted), *library);
            writeSystemDatabase(list, {wanted});
            m_said << u"新建了 %1\n"_s.arg(list);
        } else {
            // Where the list cannot be written nothing is, and a library that cannot be made is not listed.
            Transaction transaction(*system);
            listLibrary(*system, wanted);
            writeRationLibrary(pathOf(wanted), *library);
            transaction.commit();
        }
        m_said << u"%1：%2 个章节，%3 条定额，写入 %4\n"_s.arg(wanted.id)
                      .arg(library->chapters.size())
                      .arg(library->rations.size())
                      .arg(pathOf(wanted));
        for (const ListedRationLibrary& before : all)
            if (before.id == wanted.id && pathOf(before) != pathOf(wanted) && QFileInfo::exists(pathOf(before)))
                m_said << u"注意：原来的文件没有删除：%1\n"_s.arg(pathOf(before));
        if (browsedLibraryPath(wanted.id) != pathOf(wanted))
            m_said << u"注意：“定额库浏览”窗口找不到它（地区不是广东省），只能在定额行中输入编号使用\n"_s;
        return Done;
    }

    int list() {
        for (const ListedRationLibrary& library : listedLibraries(*openSystemDatabase())) {
            const QString missing = QFileInfo::exists(pathOf(library)) ? QString() : u"（文件不存在）"_s;
            m_said << QStringList{library.id,         library.name,      library.region, library.fileName + missing,
                                  library.profession, library.defaultFor}
                          .join(u'\t')
                   << '\n';
        }
        return Done;
    }

    int remove() {
        const QString& id = m_order.words[1];
        const auto system = openSystemDatabase();
        const std::vector<ListedRationLibrary> all = listedLibraries(*system);
        if (system->Execute(sql("DELETE FROM SysBaseData WHERE DekId='", Doubled{id}, "';")) == 0) {
            m_complained << u"没有登记定额库 %1\n"_s.arg(id);
            return Mistaken;
        }
        for (const ListedRationLibrary& library : all)
            if (library.id == id)
                m_said << u"已取消登记 %1；文件保留：%2\n"_s.arg(id, pathOf(library));
        return Done;
    }

private:
    bool isRight(const ListedRationLibrary& wanted, const std::vector<ListedRationLibrary>& all) {
        QStringList mistakes = mistakesIn(wanted, all);
        if (wanted.name.isEmpty() || wanted.region.isEmpty())
            mistakes << u"定额库 %1 还没有登记，必须写 --name 和 --region"_s.arg(wanted.id);
        for (const QString& mistake : mistakes)
            m_complained << mistake << '\n';
        return mistakes.isEmpty();
    }

    /// The library in the CSV files; nothing when there are mistakes in them.
    std::optional<RationFile> read() {
        Complaints complaints;
        RationFile library =
            readRationLibrary(m_order.options[u"chapters"_s], m_order.options[u"rations"_s], complaints);
        for (const QString& note : complaints.notes())
            m_said << note << '\n';
        for (const QString& complaint : complaints.all())
            m_complained << complaint << '\n';
        if (!complaints.any())
            return library;
        m_complained << u"共 %1 个错误，没有写任何文件\n"_s.arg(complaints.all().size());
        return std::nullopt;
    }

    Order m_order;
    QTextStream& m_said;
    QTextStream& m_complained;
};

}  // namespace

int runLibrariesCommand(const QStringList& arguments, QTextStream& said, QTextStream& complained) {
    if (arguments.isEmpty() || arguments.contains(u"--help"_s) || arguments.contains(u"-h"_s)) {
        (arguments.isEmpty() ? complained : said) << QString::fromUtf8(help);
        return arguments.isEmpty() ? NotUnderstood : Done;
    }
    const QStringList csv{u"chapters"_s, u"rations"_s};
    const QStringList described{u"name"_s, u"region"_s, u"file"_s, u"profession"_s, u"default-for"_s};
    const struct {
        QString name;
        int words;
        QStringList needed, possible;
        int (Command::*run)();
    } commands[] = {{u"check"_s, 1, csv, {}, &Command::check},
                    {u"make"_s, 2, csv, described, &Command::make},
                    {u"list"_s, 1, {}, {}, &Command::list},
                    {u"remove"_s, 2, {}, {}, &Command::remove}};
    for (const auto& command : commands) {
        if (command.name != arguments[0])
            continue;
        Order order(arguments, command.needed + command.possible);
        for (const QString& option : command.needed)
            if (order.mistake.isEmpty() && !order.options.contains(option))
                order.mistake = u"缺少选项 --%1"_s.arg(option);
        if (order.mistake.isEmpty() && (order.words.size() != command.words || order.words.contains(QString())))
            order.mistake =
                command.words == 2 ? u"应写一个编号"_s : u"多了内容：%1"_s.arg(order.words.mid(1).join(u' '));
        if (order.mistake.isEmpty())
            return (Command(order, said, complained).*command.run)();
        complained << order.mistake << u"（tessel-libraries --help 显示用法）\n"_s;
        return NotUnderstood;
    }
    complained << u"没有命令 %1（tessel-libraries --help 显示用法）\n"_s.arg(arguments[0]);
    return NotUnderstood;
}
