#pragma once

#include "monitor/ActivityModel.h"

#include <QTableView>

namespace kestrel {

// The list of events. It follows the newest event as long as its end is in view.
class ActivityList : public QTableView {
public:
    // The model outlives the list.
    ActivityList(ActivityModel& model, QWidget* parent);

    // Takes in what has happened. What the user reads stays in place while older events are dropped
    // above it.
    void refresh();
    void scrollToNewest();
    // The width in which the usual words of all columns have room.
    [[nodiscard]] int usualWidth() const;
    // The selected rows, else all rows, one a line.
    [[nodiscard]] QString text() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void takeColours();
    void shareWidth();
    [[nodiscard]] bool isAtEnd() const;

    ActivityModel& m_model;
};

} // namespace kestrel
