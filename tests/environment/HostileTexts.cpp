#include "tests/environment/HostileTexts.h"

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
