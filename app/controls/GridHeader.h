#pragma once

#include <QHash>
#include <QHeaderView>

class KeyedGrid;

/// The fixed header row of a KeyedGrid, and the widths of its columns. Captions are never cut off; equal neighbouring
/// captions can merge into one.
///
/// Widths that the user chose are remembered under the objectName of the grid and the keys of its columns.
class GridHeader : public QHeaderView {
    Q_OBJECT

public:
    explicit GridHeader(KeyedGrid* grid);

    /// Gives each column the width that the user chose, else its own.
    void layOut();
    /// The section that takes the room which the others leave free; -1 for none.
    void setGrowing(int section) { m_growing = section; }
    /// Fits the growing section into the grid.
    void grow();

    void setMergesEqual(bool on);
    bool mergesEqual() const { return m_mergesEqual; }

protected:
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void paintSection(QPainter* painter, const QRect& rect, int section) const override;
    QSize sizeHint() const override;

private:
    /// Width below which the caption of `section` would be cut off.
    int captionWidth(int section) const;
    int ownWidth(int section) const;
    int neighbour(int section, int step) const;

    KeyedGrid* m_grid;
    QHash<int, int> m_chosen;
    int m_growing = -1;
    bool m_mergesEqual = false;
    bool m_userActs = false;
    int m_userResized = -1;
};
