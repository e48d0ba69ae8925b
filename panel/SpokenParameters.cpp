#include "panel/SpokenParameters.h"

#include "panel/PanelText.h"

#include <QStringList>

namespace kestrel {

QString SpokenParameters::changed(const PanelZones& zones)
{
    QStringList sentences;
    for (std::size_t i = 0; i < m_told.size(); ++i) {
        const QString now = PanelText::parameter(zones, i);
        if (m_told[i] != now && !now.isEmpty())
            sentences += now;
        m_told[i] = now;
    }
    return sentences.join(QStringLiteral(", "));
}

void SpokenParameters::forget()
{
    m_told = {};
}

} // namespace kestrel
