#pragma once

#include <QString>

/// What the ration browser knows of the editor that it serves.
class RationReceiver {
public:
    /// Takes the ration `deh` of the library `dekID` as a new row (mode 0) or in place of the current one (mode 1).
    /// Does nothing where the editor's current row does not allow it.
    virtual void WinCommand(short mode, const QString& deh, const QString& dekID) = 0;

protected:
    ~RationReceiver() = default;
};
