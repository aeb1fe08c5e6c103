#pragma once

#include <QRect>
#include <QString>

/// What becomes of a chosen ration. The numbers are fixed.
enum class RationMode : short {
    Insert = 0,   ///< It becomes a new row.
    Replace = 1,  ///< It takes the place of the current ration.
};

/// What the ration browser knows of the editor that it serves.
class RationReceiver {
public:
    /// Takes the ration `deh` of the library `dekID`. Does nothing where the editor's current row does not allow it.
    virtual void WinCommand(RationMode mode, const QString& deh, const QString& dekID) = 0;

    /// Tells in one line which row would receive a ration now ("→ library · bill · row"), or why none would.
    virtual QString receivingRow() const = 0;

    /// That row in global coordinates; null when it cannot be seen.
    virtual QRect receivingRect() const = 0;

protected:
    ~RationReceiver() = default;
};
