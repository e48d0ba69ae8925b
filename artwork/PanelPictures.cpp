#include "artwork/PanelPictures.h"

#include "artwork/CharacterSet.h"
#include "artwork/KnobStrip.h"
#include "artwork/LampKeys.h"
#include "artwork/PanelBack.h"

namespace kestrel::artwork {

InterfaceImage panelPicture(const QString& name)
{
    const auto drawn = [](auto picture) { return InterfaceImage(std::move(picture)); };
    if (name == QLatin1String("back"))
        return drawn(std::make_shared<PanelBack>());
    if (name == QLatin1String("text"))
        return drawn(std::make_shared<CharacterSet>());
    if (name == QLatin1String("knob67x67"))
        return drawn(std::make_shared<KnobStrip>());
    if (name == QLatin1String("btn_green"))
        return drawn(std::make_shared<LampKeys>(LampColour::Green));
    if (name == QLatin1String("btn_red"))
        return drawn(std::make_shared<LampKeys>(LampColour::Red));
    if (name == QLatin1String("btn_orange"))
        return drawn(std::make_shared<LampKeys>(LampColour::Orange));
    return {};
}

} // namespace kestrel::artwork
