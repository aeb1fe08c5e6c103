#include <stdexcept>

#include "app/base/Error.h"
#include "app/base/Guarded.h"
#include "app/base/MessageBox.h"
#include "app/base/Paths.h"
#include "app/base/Text.h"
#include "tests/support/ModalAnswers.h"

TEST(ErrorLog, AppendsRecordsShowsEachAndThenRollsBack) {
    QFile log(joinPath(programFolder(), u"Error.log"_s));
    log.remove();
    ModalAnswers answers;
    answers.closeAnything();
    const auto answered = [&] { return answers.seen().size(); };
    EXPECT_EQ(guarded(
                  {"frmEditor", "LoadBill"}, []() -> qsizetype { throw Error(-26, u"坏了"_s); }, answered),
              1);
    EXPECT_EQ(guarded({"modMain", "Main"}, []() -> QString { throw std::runtime_error("plain"); }), QString());
    EXPECT_TRUE(answers.seen().value(0).startsWith(u"错误信息: 时    间: "_s));
    EXPECT_EQ(answers.takePlaces().join(u' '), u"frmEditor.LoadBill modMain.Main"_s);
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(log.readAll());
    const QRegularExpression record(
        u"^时    间: \\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\r\n计算机名: [^\r\n]*\r\n程序名称: rooms_storage\r\n"
        "版    本: 1\\.0\\.0\r\n错误位置: frmEditor\\.LoadBill\r\n错误号码: -26\r\n错误描述: 坏了\r\n={80}\r\n\r\n时   "
        " 间.*错误位置: modMain.Main\r\n错误号码: 5\r\n错误描述: 程序出错，操作没有完成（plain）\r\n={80}\r\n\r\n$"_s,
        QRegularExpression::DotMatchesEverythingOption);
    EXPECT_TRUE(record.match(text).hasMatch()) << qPrintable(text);
}

TEST(MessageBox, ShowsTextsLiterallyAndOnlyTheBeginningOfAMonstrousOne) {
    ModalAnswers answers;
    answers.closeAnything();
    showMessage(u"<b>"_s);
    showMessage(QString(5000, u'长'), u"提示"_s);
    EXPECT_EQ(answers.seen().value(0), u"清单库编辑器: <b>"_s);
    EXPECT_EQ(answers.seen().value(1), u"提示: "_s + QString(2000, u'长') + u'…');
    EXPECT_FALSE(askYesNo(u"?"_s)) << "closing is no consent";
}

TEST(Text, TrimsBlanksAloneReadsNumbersPadsCodesAndKeepsWholeCharacters) {
    EXPECT_EQ(trimBlanks(u"  a b  "_s) + trimBlanks(u"\u3000a\t"_s) + trimBlanks(u"   "_s), u"a b\u3000a\t"_s);
    for (const auto& [text, number] : {std::pair(u" 12abc"_s, 12LL),
                                       {u"-7"_s, -7LL},
                                       {u"abc"_s, 0LL},
                                       {QString(), 0LL},
                                       {u"99999999999999999999"_s, std::numeric_limits<qint64>::max()}})
        EXPECT_EQ(numericValue(text), number) << qPrintable(text);
    EXPECT_EQ(zeroPadded(7, 3) + zeroPadded(1000, 3), u"0071000"_s);
    const QString smile = u"😀"_s;
    EXPECT_EQ(wholeCharacters(smile[0] + smile + u'a' + smile[1]), smile + u'a');
}
