#pragma once

#include <QString>
#include <type_traits>

/// The text of one statement. It is put together by sql() from literal pieces and values, so that no value can ever
/// change what a statement does.
class SqlText {
public:
    /// A statement, or a piece of one, that stands in the source as it is.
    template <std::size_t size>
    SqlText(const char (&literal)[size]) : m_text(QString::fromUtf8(literal, size - 1)) {}  // NOLINT: meant to convert

    const QString& text() const { return m_text; }
    bool isEmpty() const { return m_text.isEmpty(); }

    /// Where a value broke the statement; empty for a whole statement. A broken one never runs: executing it throws
    /// the syntax error.
    const QString& brokenAt() const { return m_brokenAt; }

private:
    friend class SqlComposer;
    SqlText() = default;

    QString m_text;
    QString m_brokenAt;
};

/// A value whose apostrophes are doubled, so that it is matched literally.
struct Doubled {
    QString text;
};

/// Collects the pieces for sql().
class SqlComposer {
public:
    void add(const SqlText& piece);
    template <std::size_t size>
    void add(const char (&literal)[size]) {
        add(SqlText(literal));
    }
    void add(const QString& value);
    void add(const Doubled& value);
    template <typename Number, typename = std::enable_if_t<std::is_integral_v<Number>>>
    void add(Number value) {
        m_statement.m_text += QString::number(value);
    }

    SqlText take() { return std::move(m_statement); }

private:
    SqlText m_statement;
};

/// Joins pieces into a statement: string literals and SqlTexts stand as they are, QStrings and numbers are values.
///
/// Values are not escaped. One that holds an apostrophe (or a NUL, at which the database would stop reading) would
/// break out of its quotes, so it makes the whole statement a broken one, certain to fail before anything runs.
template <typename... Pieces>
SqlText sql(const Pieces&... pieces) {
    SqlComposer composer;
    (composer.add(pieces), ...);
    return composer.take();
}
