#include "panel/PanelShape.h"

#include "panel/PanelLayout.h"

#include <algorithm>
#include <cmath>

namespace kestrel {

double panelHeight(double width)
{
    return width * PanelLayout::Height / PanelLayout::Width;
}

bool isInProportion(QSize content)
{
    return std::abs(content.height() - panelHeight(content.width())) < 1;
}

QRect fittedPanel(QSize content)
{
    if (isInProportion(content))
        return { QPoint(), content };
    const double height = std::min<double>(content.height(), panelHeight(content.width()));
    const double width = height * PanelLayout::Width / PanelLayout::Height;
    const QSize panel(qRound(width), qRound(height));
    return { QPoint((content.width() - panel.width()) / 2, (content.height() - panel.height()) / 2),
        panel };
}

} // namespace kestrel
