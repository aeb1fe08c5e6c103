#pragma once

#include <QFile>

using namespace Qt::StringLiterals;

/// Most memory that this process has held so far, in KiB; 0 where the system does not tell it in this way.
inline long peakMemory() {
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:"))
            return line.mid(6).chopped(2).trimmed().toLong();
    }
    return 0;
}
