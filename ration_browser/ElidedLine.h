#pragma once

#include <QLabel>

/// A line of text that never asks for room: what does not fit is left out in the middle and told by the tool tip.
class ElidedLine : public QLabel {
    Q_OBJECT

public:
    explicit ElidedLine(QWidget* parent);

    void setLine(const QString& line);
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};
