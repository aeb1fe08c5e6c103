#include "tests/faults/HostileTexts.h"

#include "app/base/Text.h"
#include "tests/support/OtherProgram.h"
#include "tests/support/Libraries.h"

using namespace Qt::StringLiterals;

const QStringList& hostileTexts() {
    static const QStringList texts =
        // Out of the quotes.
        u"'¦''¦it's¦' OR 1=1 --¦'; DROP TABLE tblBill; --¦x', Rule='gone¦x' WHERE 1=1; DELETE FROM tblSYB; --¦"
        u"' UNION SELECT sql FROM sqlite_master --¦x'||(SELECT name FROM sqlite_schema)||'¦\\'; --¦%27 OR 1=1¦"
        // Without an apostrophe nothing of it is a statement.
        u"-- comment¦/* comment¦*/ x /*¦; DELETE FROM tblBill;¦\" OR \"\"=\"¦\"\"doubled\"\"¦%_[a-z]*?¦_________¦"
        u"`back` [bracket] {brace}¦?1 :name @name $name¦\\ \\n \\0 \\x27 \\u0027¦&#39; &apos; &lt;¦"
        // Placeholders, rich text, mnemonics.
        u"%1 %2 %L1 %n %s %d %%¦%99$n{0}{}¦<b>bold</b>¦<img src=x><a href=\"y\">z</a>¦<!-- <table><tr>¦&File && &x¦"
        u"title [*]¦#1;a|#2;b|...¦"
        // Controls, ends of lines, halves of characters and what is none, combining marks, look-alikes.
        u"a\0z¦a\x01\x07\x08\x0B\x0C\x1B\x7Fz¦a\x85\xA0\xADz¦a\tz¦a\nz¦a\r\n\rz¦a\x2028z¦a\x2029z¦"
        u"a\x200B\x200D\xFEFF\x2060z¦a\x202E\x2066\x200Fz¦a\xFFFE\xFFFFz¦a\xFDD0\xFDD1\xFDEFz¦a\xFFFC\xFFFDz¦"
        u"a\xD800z¦a\xDC00z¦a\xDC00\xD800z¦a😀z¦🏗️👷🏽‍♀️🇨🇳¦𠀀𪚥 "
        u"龘¦a\x0301\x0302\x0303\x0489z¦"
        u"a\x2018\x2019\x02BC\xFF07\x2032\x00B4\x055Az¦ﬁ ß İ ı ſ K Å¦"
        // Blanks, limits of length, numbers.
        u" both ¦\u3000wide\u3000¦nnnnnnn😀¦nnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnn😀¦0x1F¦1e999¦NULL"_s.split(
            u'¦') +
        QStringList{QString(5'000, u'w'), QString(5'000, u'字') + u'\''};
    return texts;
}

bool breaksStatement(const QString& text) { return text.contains(u'\'') || text.contains(QChar::Null); }

const QStringList& hostileChapters() {
    static const QStringList codes = u"0'¦&<¦0\"¦01';¦01; ¦&<b>¦0'--¦01';--¦0101''¦0101'1¦01; --¦&<b>#1"_s.split(u'¦');
    return codes;
}

QString hostileLibrary() {
    const QString path = awkwardLibrary();
    OtherProgram other(path);
    other.run("BEGIN");
    const auto text = [](qsizetype number) { return hostileTexts()[number % hostileTexts().size()]; };
    for (int i = 0; i < hostileChapters().size(); ++i)
        other.run("INSERT INTO tblSYB(Code,Name,IsDel) VALUES(?,?,0)", {hostileChapters()[i], text(i)});
    other.run("DELETE FROM tblBill WHERE Code LIKE '010102%'");
    QStringList codes;
    for (int bill = 1; bill <= hostileTexts().size(); ++bill)
        codes << u"010102"_s + zeroPadded(bill, 3);
    codes += u"010101';-¦010101_%'¦010101\"\"\"¦010101%%%¦010101___¦010101;--"_s.split(u'¦');
    for (int bill = 0; bill < codes.size(); ++bill) {
        other.run("INSERT INTO tblBill(Code,CodePrefix,Name,Unit,Rule,Cont) VALUES(?,?,?,?,?,?)",
                  {codes[bill], text(bill + 1), text(bill), text(bill + 2), text(bill + 3), text(bill + 4)});
        const QString id = other.run("SELECT last_insert_rowid()").value(0);
        other.run("INSERT INTO tblBillSpec(BillID,Name,Type,Unit,DefVal) VALUES(?,?,2,?,?)",
                  {id, text(bill), text(bill + 1), text(bill + 2)});
        other.run("INSERT INTO tblSpecEnum(SpecID,IsUse,EigenValue) VALUES(last_insert_rowid(),1,?)", {text(bill)});
        other.run("INSERT INTO tblCont(Code,Num,Cont,Prof,BillID) VALUES(?,1,?,'01',?)", {codes[bill], text(bill), id});
        other.run(
            "INSERT INTO tblContDe(ContID,SubNum,SubCont,Deh,Name,Unit,DekID) "
            "VALUES(last_insert_rowid(),1,?,?,?,?,?)",
            {text(bill), text(bill + 1), text(bill + 2), text(bill + 3), text(bill + 4)});
    }
    other.run("COMMIT");
    return path;
}
