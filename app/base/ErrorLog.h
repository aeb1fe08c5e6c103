#pragma once

#include <QString>

/// What went wrong last: set by guarded() for the time its record is written.
struct CurrentError {
    int number = 0;
    QString description;
};

CurrentError& currentError();

/// Appends records to Error.log in the program folder and shows each to the user. The only channel for errors.
class clsErrorLog {
public:
    clsErrorLog();

    /// Records currentError() as having happened in `module`.`procedure`: appends to the file (failures to do so are
    /// ignored) and waits until the user has closed the message box with the same text.
    void WriteLog(const QString& module, const QString& procedure);

private:
    QString recordText(const QString& module, const QString& procedure) const;

    QString computerName;
};
