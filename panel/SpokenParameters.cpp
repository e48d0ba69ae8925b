#include "panel/SpokenParameters.h"

#include "panel/PanelText.h"

#include <QStringList>

#include <algorithm>

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

bool SpokenParameters::isBlank() const
{
    return std::all_of(m_told.begin(), m_told.end(),
        [](const auto& parameter) { return parameter.value_or(QString()).isEmpty(); });
}

} // namespace kestrel
