#pragma once

#include <QByteArray>
#include <QString>
#include <variant>
#include <vector>

/// The text of a grid's cell. What a file gave as UTF-8 is kept so until somebody looks: most rows of a long list are
/// never shown.
class CellText {
public:
    CellText() = default;
    CellText(const QString& text) : m_text(text) {}
    CellText(const QByteArray& utf8) : m_text(utf8) {}

    QString text() const {
        const auto* utf8 = std::get_if<QByteArray>(&m_text);
        return utf8 ? QString::fromUtf8(*utf8) : std::get<QString>(m_text);
    }

private:
    std::variant<QString, QByteArray> m_text;
};

/// A row of a grid.
struct GridRow {
    std::vector<CellText> cells;
    /// Its level in the outline.
    int level = 0;
    bool collapsed = false;
    /// One bit for each column: the cell shows what is not written.
    quint32 pending = 0;
};
