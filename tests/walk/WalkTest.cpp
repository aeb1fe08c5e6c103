// Long random sequences of everything that can be done in an editor window, judged after every step; then all is taken
// back and done again.

#include "tests/support/Extent.h"
#include "tests/support/Libraries.h"
#include "tests/walk/Judge.h"

namespace {

/// Texts that try to break out of a statement, a message, a menu or a line, or that are merely unusual.
const QStringList hostileTexts{
    // Out of the quotes; without an apostrophe nothing of it is a statement.
    u"'"_s, u"'; DROP TABLE tblBill; --"_s, u"x'||(SELECT 1)||'"_s, u"%27 OR 1=1"_s, u"/* comment"_s,
    u"\" OR \"\"=\""_s, u"%_[a-z]*?"_s, u"?1 :name @name $name"_s, u"\\ \\n \\0 \\x27 \\u0027"_s,
    // Placeholders, rich text, mnemonics.
    u"%1 %2 %L1 %n %s %d %%"_s, u"<img src=x><a href=\"y\">z</a>"_s, u"&#39; &apos; &lt;"_s, u"&File && &x"_s,
    u"title [*]"_s, u"#1;a|#2;b|..."_s,
    // Marks without width, combining marks, look-alikes.
    u"a\xA0\xADz"_s, u"a\x200B\x200D\xFEFF\x2060z"_s, u"a\x202E\x2066\x200Fz"_s, u"a\xFFFC\xFFFDz"_s,
    u"🏗️👷🏽‍♀️🇨🇳"_s, u"𠀀𪚥 龘"_s, u"a\x0301\x0302\x0303\x0489z"_s, u"ﬁ ß İ ı ſ K Å"_s,
    // Blanks, numbers, length.
    u" both "_s, u"\u3000wide\u3000"_s, u"1e999"_s, u"NULL"_s, QString(500, u'w'), QString(500, u'字') + u'\''};

/// A library that holds these texts wherever it can.
QString hostileLibrary() {
    const QString path = awkwardLibrary();
    OtherProgram other(path);
    other.run("BEGIN");
    // A box writes its text whenever it is left, and one with an apostrophe would be refused each time.
    for (const char* cells :
         {"tblSYB SET Name=?1", "tblBill SET Name=?1,Unit=?1,Rule=replace(?1,char(39),''),Cont=replace(?1,char(39),'')",
          "tblBillSpec SET Name=?1,DefVal=?1", "tblSpecEnum SET EigenValue=?1", "tblCont SET Cont=?1",
          "tblContDe SET Deh=?1,Name=?1"})
        for (qsizetype i = 0; i < hostileTexts.size(); ++i)
            other.rows(u"UPDATE %1 WHERE ID%%2=%3"_s.arg(QLatin1String(cells)).arg(hostileTexts.size()).arg(i),
                       {hostileTexts[i]});
    other.run("COMMIT");
    return path;
}

}  // namespace

TEST(Walk, WindowFileAndModelAgreeAfterEveryStep) {
    QString (*const libraries[])() = {sampleCopy, awkwardLibrary, libraryAtTheLimits, hostileLibrary};
    qint64 done = 0;
    repeated(8, [&](unsigned seed) {
        const QString library = libraries[seed % std::size(libraries)]();
        const QStringList schema = rowsInFile(library, "SELECT * FROM sqlite_schema");
        {
            EditorDriver driver(library);
            RandomUser user(driver, seed, {});
            Judge judge(driver, user);
            for (int step = 1; step <= 350 && !::testing::Test::HasFailure(); ++step, ++done) {
                user.step();
                if (::testing::Test::HasFailure())
                    ADD_FAILURE() << "at step " << step << ":\n  " << qPrintable(user.story());
            }
            judge.goBackAndForth();
        }
        EXPECT_EQ(rowsInFile(library, "PRAGMA integrity_check"), QStringList{u"ok"_s});
        EXPECT_EQ(rowsInFile(library, "SELECT * FROM sqlite_schema"), schema);
    });
    counted(u"steps of the random user compared"_s, done);
}
