#pragma once

#include <QString>
#include <exception>
#include <utility>

/// A failure with a number and a description for the user, as Error.log records it. Failures of the database carry
/// SQLite's number.
class Error : public std::exception {
public:
    Error(int number, QString description)
        : m_number(number), m_description(std::move(description)), m_utf8(m_description.toUtf8()) {}

    int number() const { return m_number; }
    const QString& description() const { return m_description; }
    const char* what() const noexcept override { return m_utf8.constData(); }

private:
    int m_number;
    QString m_description;
    QByteArray m_utf8;
};
