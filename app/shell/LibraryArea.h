#pragma once

#include <QMdiArea>

/// Holds the windows of the open libraries; says how to get one while there is none.
class LibraryArea : public QMdiArea {
public:
    explicit LibraryArea(QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;
};
