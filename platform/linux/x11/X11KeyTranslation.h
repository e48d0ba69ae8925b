#pragma once

#include "platform/KeyTranslation.h"
#include "platform/linux/x11/X11Session.h"

#include <memory>

namespace kestrel {

// Translates X11 key events as Qt passes them on: X keycode, keysym and state. Alt stands for
// Option, Super for Command. The characters come from the X server's present layout, or from the
// keysym of the event when the server does not answer.
class X11KeyTranslation final : public KeyTranslation {
public:
    explicit X11KeyTranslation(std::shared_ptr<X11Session> session);

    [[nodiscard]] std::optional<TranslatedKey> translate(const NativeKeyEvent& event) override;

    [[nodiscard]] ModifierNames modifierNames() const override { return ModifierNames::AltSuper; }

private:
    [[nodiscard]] std::string charactersIgnoringModifiers(const NativeKeyEvent& event);

    std::shared_ptr<X11Session> m_session;
};

} // namespace kestrel
