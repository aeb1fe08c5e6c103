#pragma once

#include <QHeaderView>

/// The fixed header row of a KeyedGrid. Captions are never cut off; equal neighbouring captions can merge into one.
class GridHeader : public QHeaderView {
public:
    explicit GridHeader(QWidget* parent);

    void setMergesEqual(bool on);
    bool mergesEqual() const { return m_mergesEqual; }

    /// Width below which the caption of `section` would be cut off.
    int captionWidth(int section) const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void paintSection(QPainter* painter, const QRect& rect, int section) const override;
    QSize sizeHint() const override;

private:
    int neighbour(int section, int step) const;

    bool m_mergesEqual = false;
};
