#include "monitor/MonitorAccessibility.h"

#include "monitor/ActivityWindow.h"
#include "monitor/BeatPlot.h"
#include "monitor/Figure.h"
#include "monitor/StateLamp.h"

#include <QAccessibleWidget>

namespace kestrel {

namespace {
class FigureAccessible final : public QAccessibleWidget {
public:
    explicit FigureAccessible(Figure& figure)
        : QAccessibleWidget(&figure, QAccessible::StaticText)
        , m_figure(figure)
    {
    }
    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        if (kind == QAccessible::Name)
            return m_figure.name() + QStringLiteral(": ") + m_figure.value();
        return kind == QAccessible::Value ? m_figure.value() : QString();
    }

private:
    Figure& m_figure;
};

class BeatPlotAccessible final : public QAccessibleWidget {
public:
    explicit BeatPlotAccessible(BeatPlot& plot)
        : QAccessibleWidget(&plot, QAccessible::Chart)
        , m_plot(plot)
    {
    }
    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        if (kind == QAccessible::Name)
            return QStringLiteral("Jitter of the beat: ") + m_plot.jitterText();
        return kind == QAccessible::Value ? m_plot.jitterText() : QString();
    }

private:
    BeatPlot& m_plot;
};

QAccessibleInterface* makeAccessible(const QString&, QObject* object)
{
    if (auto* const figure = dynamic_cast<Figure*>(object))
        return new FigureAccessible(*figure);
    if (auto* const plot = dynamic_cast<BeatPlot*>(object))
        return new BeatPlotAccessible(*plot);
    if (auto* const window = dynamic_cast<ActivityWindow*>(object))
        return new QAccessibleWidget(window, QAccessible::Window);
    // The lamp repeats what the title says.
    if (auto* const lamp = dynamic_cast<StateLamp*>(object))
        return new QAccessibleWidget(lamp, QAccessible::Indicator, QStringLiteral("Link"));
    return nullptr;
}
} // namespace

void installMonitorAccessibility()
{
    [[maybe_unused]] static const bool installed = [] {
        QAccessible::installFactory(makeAccessible);
        return true;
    }();
}

} // namespace kestrel
