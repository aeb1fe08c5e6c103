#include "tests/environment/HostileTexts.h"

namespace {

QString characters(std::initializer_list<int> codes) {
    QString text = QStringLiteral("a");
    for (const int code : codes)
        text += QChar(code);
    return text + QLatin1Char('z');
}

}  // namespace

const QStringList& hostileTexts() {
    static const QStringList texts{
        // Out of the quotes.
        QStringLiteral("'"),
        QStringLiteral("''"),
        QStringLiteral("it's"),
        QStringLiteral("' OR 1=1 --"),
        QStringLiteral("'; DROP TABLE tblBill; --"),
        QStringLiteral("x', Rule='gone"),
        QStringLiteral("x' WHERE 1=1; DELETE FROM tblSYB; --"),
        QStringLiteral("' UNION SELECT sql FROM sqlite_master --"),
        QStringLiteral("x'||(SELECT name FROM sqlite_schema)||'"),
        QStringLiteral("\\'; --"),
        QStringLiteral("%27 OR 1=1"),
        // Without an apostrophe nothing of it is a statement.
        QStringLiteral("-- comment"),
        QStringLiteral("/* comment"),
        QStringLiteral("*/ x /*"),
        QStringLiteral("; DELETE FROM tblBill;"),
        QStringLiteral("\" OR \"\"=\""),
        QStringLiteral("\"\"doubled\"\""),
        QStringLiteral("`back` [bracket] {brace}"),
        QStringLiteral("%_[a-z]*?"),
        QStringLiteral("_________"),
        QStringLiteral("?1 :name @name $name"),
        QStringLiteral("\\ \\n \\0 \\x27 \\u0027"),
        QStringLiteral("&#39; &apos; &lt;"),
        // Placeholders, rich text, mnemonics.
        QStringLiteral("%1 %2 %L1 %n %s %d %%"),
        QStringLiteral("%99$n{0}{}"),
        QStringLiteral("<b>bold</b>"),
        QStringLiteral("<img src=x><a href=\"y\">z</a>"),
        QStringLiteral("<!-- <table><tr>"),
        QStringLiteral("&File && &x"),
        QStringLiteral("title [*]"),
        QStringLiteral("#1;a|#2;b|..."),
        // Characters.
        characters({0}),
        characters({0x01, 0x07, 0x08, 0x0B, 0x0C, 0x1B, 0x7F}),
        characters({0x85, 0xA0, 0xAD}),
        characters({'\t'}),
        characters({'\n'}),
        characters({'\r', '\n', '\r'}),
        characters({0x2028}),
        characters({0x2029}),
        characters({0x200B, 0x200D, 0xFEFF, 0x2060}),
        characters({0x202E, 0x2066, 0x200F}),
        characters({0xFFFE, 0xFFFF}),
        characters({0xFDD0, 0xFDD1, 0xFDEF}),
        characters({0xFFFC, 0xFFFD}),
        characters({0xD800}),
        characters({0xDC00}),
        characters({0xDC00, 0xD800}),
        characters({0xD83D, 0xDE00}),
        QStringLiteral("🏗️👷🏽‍♀️🇨🇳"),
        QStringLiteral("𠀀𪚥 龘"),
        characters({0x0301, 0x0302, 0x0303, 0x0489}),
        characters({0x2018, 0x2019, 0x02BC, 0xFF07, 0x2032, 0x00B4, 0x055A}),
        QStringLiteral("ﬁ ß İ ı ſ K Å"),
        // Lengths and blanks.
        QStringLiteral(" both "),
        QStringLiteral("\u3000wide\u3000"),
        QString(7, QLatin1Char('n')) + QStringLiteral("😀"),
        QString(49, QLatin1Char('n')) + QStringLiteral("😀"),
        QString(5'000, QLatin1Char('w')),
        QStringLiteral("字").repeated(5'000) + QLatin1Char('\''),
        QStringLiteral("0x1F"),
        QStringLiteral("1e999"),
        QStringLiteral("NULL"),
    };
    return texts;
}

bool breaksStatement(const QString& text) { return text.contains(QLatin1Char('\'')) || text.contains(QChar::Null); }
