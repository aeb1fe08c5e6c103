#pragma once

#include "tests/support/OtherProgram.h"

/// What the user in the program is told to do, in an environment variable.
struct Orders {
    static constexpr const char* variable = "TESSEL_TEST_ORDERS";

    QString library;  ///< path, open in the program already
    QString journal;  ///< path
    QString go = {};  ///< of two users: after the n-th rest they go on when the file of this path and n is there
    unsigned seed = 1;
    int steps = 0;
    bool checked = false;  ///< every step is judged, and what the file holds is written down
    qint64 endAt = 0;      ///< the process is killed at this change of a file, from the first step on; 0: it is not

    QString toText() const {
        return u"%1|%2|%3|%4|%5|%6|%7"_s.arg(library, journal, go).arg(seed).arg(steps).arg(checked).arg(endAt);
    }
    static Orders fromText(const QString& text) {
        const QStringList parts = text.split(u'|');
        return {
            parts[0], parts[1], parts[2], parts[3].toUInt(), parts[4].toInt(), parts[5] == u"1", parts[6].toLongLong()};
    }
};

/// What is heard of the user: the journal, line by line, each of which is in the file before anything else happens.
///   begin      the next step begins
///   content D  what the file holds now (a run that is checked only), see digestOf()
///   end        the window shows the result of the step
///   changes N  as many operations changed files from the first step on
///   wrong T    something is not as it has to be
///   rest       one of two users has done a part of the work
///   said T     the status bar says this
///   named I N  the window shows the name N that was typed for the bill with the id I
///   done       the program was closed as a user closes it
struct Journal {
    std::vector<QStringList> contents = std::vector<QStringList>(1);  ///< by step; 0: before the first
    QMap<QString, QStringList> said;                                  ///< the rest of all other lines by their word

    explicit Journal(const QString& path) {
        const QString text = QString::fromUtf8(bytesOf(path));
        // A line that was cut off is none.
        for (const QString& line : text.left(text.lastIndexOf(u'\n') + 1).split(u'\n')) {
            const QString word = line.section(u' ', 0, 0), rest = line.section(u' ', 1);
            if (word == u"begin")
                contents.emplace_back();
            else if (word == u"content")
                contents.back() << rest;
            else
                said[word] << rest;
        }
    }

    std::size_t begun() const { return contents.size() - 1; }
    std::size_t ended() const { return static_cast<std::size_t>(said[u"end"_s].size()); }
};

/// What a library holds, short, but for the times of changes. Empty when the file cannot be read now.
inline QString digestOf(const QString& library) {
    if (!OtherProgram(library).tryScript("SELECT count(*) FROM sqlite_schema"))
        return {};
    static const QRegularExpression time(u"\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d"_s);
    const QByteArray content = contentOf(library).replaceInStrings(time, QString()).join(u'\n').toUtf8();
    return QString::fromLatin1(QCryptographicHash::hash(content, QCryptographicHash::Sha1).toHex());
}
