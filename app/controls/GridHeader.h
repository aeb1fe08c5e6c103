#pragma once

#include <QHash>
#include <QHeaderView>

class KeyedGrid;

/// The fixed header row of a KeyedGrid. Captions are never cut off; equal neighbouring captions can merge into one.
///
/// Widths that the user chose are remembered under the objectName of the grid and the keys of its columns.
class GridHeader : public QHeaderView {
    Q_OBJECT

public:
    explicit GridHeader(KeyedGrid* grid);

    /// Reads the remembered widths of a grid that has its columns.
    void readChosenWidths();
    bool isChosen(int section) const { return m_chosen.contains(section); }
    /// The width that the user chose, else `width`.
    int chosenWidth(int section, int width) const { return m_chosen.value(section, width); }

    void setMergesEqual(bool on);
    bool mergesEqual() const { return m_mergesEqual; }

    /// Width below which the caption of `section` would be cut off.
    int captionWidth(int section) const;

Q_SIGNALS:
    void widthChosen();

protected:
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void paintSection(QPainter* painter, const QRect& rect, int section) const override;
    QSize sizeHint() const override;

private:
    int neighbour(int section, int step) const;

    KeyedGrid* m_grid;
    QHash<int, int> m_chosen;
    bool m_mergesEqual = false;
    bool m_userActs = false;
    int m_userResized = -1;
};
