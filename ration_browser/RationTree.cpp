#include "ration_browser/RationTree.h"

#include "app/base/Text.h"
#include "app/controls/KeyedTree.h"
#include "storage/Recordset.h"

using namespace Qt::StringLiterals;

namespace {

constexpr const char* numberColumns[RationChapter::levels] = {"CH", "ZH", "JH", "XH", "MH"};

}  // namespace

int RationChapter::level() const {
    for (std::size_t used = 1; used < levels; ++used) {
        if (number[used] == 0)
            return static_cast<int>(used);
    }
    return levels;
}

QString RationChapter::key() const { return u'K' + QString::number(sybID); }

QString RationChapter::text() const {
    return QString::number(number[static_cast<std::size_t>(level() - 1)]) + u'.' + title;
}

QString RationChapter::fullNumber() const {
    QString dotted;
    for (const qint64 part : number)
        dotted += (dotted.isEmpty() ? QString() : u"."_s) + QString::number(part);
    return dotted;
}

RationChapter readChapter(const Recordset& rows) {
    RationChapter chapter;
    chapter.sybID = rows.number("sybID");
    for (std::size_t i = 0; i < RationChapter::levels; ++i)
        chapter.number[i] = rows.number(numberColumns[i]);
    chapter.title = rows.text("BTM");
    return chapter;
}

qint64 chapterOfKey(const QString& key) { return numericValue(key.mid(1)); }

void addRationRoot(KeyedTree* tree) { tree->addNode(nullptr, u"Root"_s, u"目录"_s, QString())->setExpanded(true); }

void addRationChapters(KeyedTree* tree, Recordset& rows) {
    // The last node of each level; the root stands for level 0.
    std::array<KeyedTree::Node*, RationChapter::levels + 1> last{tree->firstNode()};
    for (; !rows.EndOfFile(); rows.MoveNext()) {
        const RationChapter chapter = readChapter(rows);
        const auto level = static_cast<std::size_t>(chapter.level());
        std::size_t above = level - 1;
        while (!last[above])
            --above;
        last[level] = tree->addNode(last[above], chapter.key(), chapter.text(), chapter.fullNumber());
    }
}
