#pragma once

#include <QFile>
#include <QStringList>
#include <vector>

using namespace Qt::StringLiterals;

/// What the user in the program is told to do.
struct Orders {
    QString library;  ///< path, open in the program already
    QString journal;  ///< path
    unsigned seed = 1;
    int steps = 0;
    bool checked = false;  ///< every step is judged, and what the file holds is written down
    qint64 endAt = 0;      ///< the process is killed at this change of a file, from the first step on; 0: it is not

    /// For an environment variable that the toolkit reads as a list of Latin letters.
    QString toText() const {
        const QStringList parts{library,
                                journal,
                                QString::number(seed),
                                QString::number(steps),
                                QString::number(checked),
                                QString::number(endAt)};
        return QString::fromLatin1(parts.join(u'|').toUtf8().toHex());
    }
    static Orders fromText(const QString& text) {
        const QStringList parts = QString::fromUtf8(QByteArray::fromHex(text.toLatin1())).split(u'|');
        return {parts[0], parts[1], parts[2].toUInt(), parts[3].toInt(), parts[4] == u"1", parts[5].toLongLong()};
    }
};

/// What is heard of the user: the journal, line by line, each of which is in the file before anything else happens.
///   begin N    step N begins
///   content D  what the file holds now (a run that is checked only), see contentOf()
///   end N      the window shows the result of step N
///   changes N  as many operations changed files from the first step on
///   wrong T    something is not as it has to be
///   done       the program was closed as a user closes it
struct Journal {
    int begun = 0;
    int ended = 0;
    std::vector<QStringList> contents = std::vector<QStringList>(1);  ///< by step; 0: before the first
    qint64 changes = 0;
    QStringList wrong;
    bool done = false;

    explicit Journal(const QString& path) {
        QFile file(path);
        const QString text = QString::fromUtf8(file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray());
        // A line that was cut off is none.
        for (const QString& line : text.left(text.lastIndexOf(u'\n') + 1).split(u'\n')) {
            const QString word = line.section(u' ', 0, 0), rest = line.section(u' ', 1);
            if (word == u"begin") {
                begun = rest.toInt();
                contents.emplace_back();
            } else if (word == u"end") {
                ended = rest.toInt();
            } else if (word == u"content") {
                contents.back() << rest;
            } else if (word == u"changes") {
                changes = rest.toLongLong();
            } else if (word == u"wrong") {
                wrong << rest;
            } else if (word == u"done") {
                done = true;
            }
        }
    }
};
