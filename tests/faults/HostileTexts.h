#pragma once

#include <QString>
#include <vector>

using namespace Qt::StringLiterals;

/// A text that tries to break out of a statement, a message, a menu or a line, or that is merely unusual, and what of
/// it a place holds. With an apostrophe or NUL it is refused.
struct HostileText {
    QString typed;
    QString held = typed;  ///< halves of characters are in no file
    QString cell = held;   ///< in one line
    QString box = held;    ///< with the line ends of a text box
};

inline const std::vector<HostileText> hostileTexts{
    // Out of the quotes.
    {u"'"_s},
    {u"''"_s},
    {u"it's"_s},
    {u"' OR 1=1 --"_s},
    {u"'; DROP TABLE tblBill; --"_s},
    {u"x', Rule='gone"_s},
    {u"x' WHERE 1=1; DELETE FROM tblSYB; --"_s},
    {u"' UNION SELECT sql FROM sqlite_master --"_s},
    {u"x'||(SELECT name FROM sqlite_schema)||'"_s},
    {u"\\'; --"_s},
    {u"a\0z"_s},
    // Without an apostrophe nothing of it is a statement.
    {u"%27 OR 1=1"_s},
    {u"-- comment"_s},
    {u"/* comment"_s},
    {u"*/ x /*"_s},
    {u"; DELETE FROM tblBill;"_s},
    {u"\" OR \"\"=\""_s},
    {u"\"\"doubled\"\""_s},
    {u"%_[a-z]*?"_s},
    {u"_________"_s},
    {u"`back` [bracket] {brace}"_s},
    {u"?1 :name @name $name"_s},
    {u"\\ \\n \\0 \\x27 \\u0027"_s},
    {u"&#39; &apos; &lt;"_s},
    // Placeholders, rich text, mnemonics.
    {u"%1 %2 %L1 %n %s %d %%"_s},
    {u"%99$n{0}{}"_s},
    {u"<b>bold</b>"_s},
    {u"<img src=x><a href=\"y\">z</a>"_s},
    {u"<!-- <table><tr>"_s},
    {u"&File && &x"_s},
    {u"title [*]"_s},
    {u"#1;a|#2;b|..."_s},
    // Ends of lines; in a box the toolkit has marks of its own for them.
    {u"a\tz"_s, u"a\tz"_s, u"a z"_s},
    {u"a\nz"_s, u"a\nz"_s, u"a z"_s, u"a\r\nz"_s},
    {u"a\r\n\rz"_s, u"a\r\n\rz"_s, u"a  z"_s, u"a\r\n\r\nz"_s},
    {u"a\x0B\x0Cz"_s, u"a\x0B\x0Cz"_s, u"a  z"_s},
    {u"a\x85z"_s, u"a\x85z"_s, u"a z"_s},
    {u"a\x2028z"_s, u"a\x2028z"_s, u"a z"_s},
    {u"a\x2029z"_s, u"a\x2029z"_s, u"a z"_s, u"a\r\nz"_s},
    {u"a\xFDD0\xFDD1\xFDEFz"_s, u"a\xFDD0\xFDD1\xFDEFz"_s, u"a\xFDD0\xFDD1\xFDEFz"_s, u"a\r\n\r\n\xFDEFz"_s},
    // Controls, halves of characters and what is none, combining marks, look-alikes.
    {u"a\x01\x07\x08\x1B\x7Fz"_s},
    {u"a\xA0\xADz"_s},
    {u"a\x200B\x200D\xFEFF\x2060z"_s},
    {u"a\x202E\x2066\x200Fz"_s},
    {u"a\xFFFE\xFFFFz"_s},
    {u"a\xFFFC\xFFFDz"_s},
    {u"a\xD800z"_s, u"az"_s},
    {u"a\xDC00z"_s, u"az"_s},
    {u"a\xDC00\xD800z"_s, u"az"_s},
    {u"a😀\xD800z"_s, u"a😀z"_s},
    {u"a😀z"_s},
    {u"🏗️👷🏽‍♀️🇨🇳"_s},
    {u"𠀀𪚥 龘"_s},
    {u"a\x0301\x0302\x0303\x0489z"_s},
    {u"a\x2018\x2019\x02BC\xFF07\x2032\x00B4\x055Az"_s},
    {u"ﬁ ß İ ı ſ K Å"_s},
    // Blanks, numbers, length; a limit may cut a character in half.
    {u" both "_s},
    {u"\u3000wide\u3000"_s},
    {u"0x1F"_s},
    {u"1e999"_s},
    {u"NULL"_s},
    {u"nnnnnnn😀"_s},
    {QString(11, u'n') + u"😀"_s},
    {QString(49, u'n') + u"😀"_s},
    {QString(5'000, u'w')},
    {QString(5'000, u'字') + u'\''},
};

inline bool isRefused(const QString& text) { return text.contains(u'\'') || text.contains(QChar::Null); }
