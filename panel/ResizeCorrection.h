#pragma once

#include "panel/PanelShape.h"

#include <optional>

namespace kestrel {

// Decides when a window that was given a size out of proportion asks for a better one: at once, and
// once more when things have settled, but then never again for the same size, because whoever gave
// it insists. Having settled in proportion wipes the slate.
class ResizeCorrection {
public:
    [[nodiscard]] bool wantedAfterResize(QSize content)
    {
        return !isInProportion(content) && isNew(m_triedAtOnce, content);
    }

    [[nodiscard]] bool wantedAfterSettling(QSize content)
    {
        if (!isInProportion(content))
            return isNew(m_triedSettled, content);
        m_triedAtOnce.reset();
        m_triedSettled.reset();
        return false;
    }

private:
    [[nodiscard]] static bool isNew(std::optional<QSize>& tried, QSize content)
    {
        const bool isNew = tried != content;
        tried = content;
        return isNew;
    }

    std::optional<QSize> m_triedAtOnce;
    std::optional<QSize> m_triedSettled;
};

} // namespace kestrel
