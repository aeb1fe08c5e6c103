#pragma once

#include <QProcess>
#include <QTemporaryDir>
#include <optional>
#include <vector>

#include "tests/kill/Orders.h"
#include "tests/kill/VirtualDisplay.h"

/// What a journal says.
struct Journal {
    int begun = 0;                      ///< the last step that began
    int ended = 0;                      ///< the last step whose result was shown
    std::vector<QStringList> contents;  ///< what the file held, one after the other, by step; 0: before the first
    qint64 changes = 0;                 ///< of files, by all steps
    QStringList wrong;
    bool done = false;

    explicit Journal(const QByteArray& text);
};

/// The shipped program on a display, with the random user at work in it.
class Program {
public:
    /// `orders` without a journal, which is this object's.
    Program(const VirtualDisplay& display, Orders orders);
    ~Program();

    Journal journal() const;
    /// Waits until a step has begun; false when the program ended before.
    bool waitForWork();
    /// Waits until the program has ended; false when it takes longer than `milliseconds`.
    bool waitForEnd(int milliseconds);
    /// Ends it at once.
    void kill();
    /// What it wrote to the console, how it ended and what the journal says last.
    QString lastWords();

private:
    QTemporaryDir m_folder;
    QString m_journal;
    QProcess m_process;
};
