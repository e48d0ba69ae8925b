#include "monitor/ActivityList.h"

#include "activity/Recording.h"
#include "monitor/ActivityColours.h"
#include "monitor/ActivityRowDelegate.h"

#include <QEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>

namespace kestrel {

namespace {
constexpr int RowHeight = 24;
} // namespace

ActivityList::ActivityList(ActivityModel& model, QWidget* parent)
    : QTableView(parent)
    , m_model(model)
{
    setModel(&model);
    setItemDelegate(new ActivityRowDelegate(this));
    setAccessibleName(QStringLiteral("Events"));
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setTabKeyNavigation(false);
    setShowGrid(false);
    setWordWrap(false);
    setFrameShape(NoFrame);
    setVerticalScrollMode(ScrollPerItem);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setCornerButtonEnabled(false);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(RowHeight);
    QHeaderView& header = *horizontalHeader();
    header.setSectionResizeMode(QHeaderView::Fixed);
    header.setHighlightSections(false);
    header.setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    header.hide();
    takeColours();
}

void ActivityList::refresh()
{
    const bool follows = isAtEnd();
    const int place = verticalScrollBar()->value();
    const int dropped = m_model.refresh();
    if (follows)
        scrollToBottom();
    else if (dropped > 0)
        verticalScrollBar()->setValue(place - dropped);
}

void ActivityList::scrollToNewest()
{
    scrollToBottom();
}

bool ActivityList::isAtEnd() const
{
    return verticalScrollBar()->value() == verticalScrollBar()->maximum();
}

QString ActivityList::text() const
{
    QModelIndexList rows = selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    if (rows.isEmpty()) {
        for (int row = 0; row < m_model.rowCount(); ++row)
            rows.append(m_model.index(row, 0));
    }
    std::string text;
    for (const QModelIndex& row : rows) {
        if (const ActivityEvent* const event = m_model.eventAt(row.row()))
            text += Recording::line(*event) + "\n";
    }
    return QString::fromStdString(text);
}

void ActivityList::resizeEvent(QResizeEvent* event)
{
    const bool follows = isAtEnd();
    shareWidth();
    QTableView::resizeEvent(event);
    if (follows)
        scrollToBottom();
}

int ActivityList::usualWidth() const
{
    int width = verticalScrollBar()->sizeHint().width();
    for (int column = 0; column < ActivityModel::ColumnCount; ++column)
        width += ActivityRowDelegate::usualWidth(font(), column);
    return width;
}

// The bytes get what the words leave.
void ActivityList::shareWidth()
{
    int left = viewport()->width();
    for (const auto column :
        { ActivityModel::Time, ActivityModel::Event, ActivityModel::Outcome }) {
        const int width = std::min(ActivityRowDelegate::usualWidth(font(), column), left);
        setColumnWidth(column, width);
        left -= width;
    }
    setColumnWidth(ActivityModel::Bytes, left);
}

void ActivityList::paintEvent(QPaintEvent* event)
{
    QTableView::paintEvent(event);
    if (m_model.rowCount() > 0)
        return;
    QPainter painter(viewport());
    painter.setPen(ActivityColours::of(palette()).dim);
    painter.drawText(viewport()->rect(), Qt::AlignCenter,
        QStringLiteral("Nothing to show yet. Press a key on the console."));
}

void ActivityList::takeColours()
{
    const ActivityColours& colours = ActivityColours::of(parentWidget()->palette());
    QPalette ground = viewport()->palette();
    ground.setColor(QPalette::Base, colours.list);
    viewport()->setPalette(ground);
    QPalette groove = verticalScrollBar()->palette();
    for (const auto role : { QPalette::Window, QPalette::Base, QPalette::Light })
        groove.setColor(role, colours.band);
    groove.setColor(QPalette::Button, colours.keyTop);
    groove.setColor(QPalette::ButtonText, colours.dim);
    verticalScrollBar()->setPalette(groove);
}

// QTableView would copy one cell.
void ActivityList::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Copy))
        event->ignore();
    else
        QTableView::keyPressEvent(event);
}

void ActivityList::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::PaletteChange)
        takeColours();
    QTableView::changeEvent(event);
}

} // namespace kestrel
