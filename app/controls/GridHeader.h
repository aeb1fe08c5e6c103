#pragma once

#include <QHeaderView>

/// The fixed header row of a KeyedGrid. Captions are never cut off; equal neighbouring captions can merge into one.
class GridHeader : public QHeaderView {
    Q_OBJECT

public:
    explicit GridHeader(QWidget* parent);

    void setMergesEqual(bool on);
    bool mergesEqual() const { return m_mergesEqual; }

    /// Width below which the caption of `section` would be cut off.
    int captionWidth(int section) const;

Q_SIGNALS:
    /// The user has given `section` this width.
    void widthChosen(int section, int width);

protected:
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void paintSection(QPainter* painter, const QRect& rect, int section) const override;
    QSize sizeHint() const override;

private:
    int neighbour(int section, int step) const;

    bool m_mergesEqual = false;
    bool m_userActs = false;
    int m_userResized = -1;
};
