#pragma once

#include "common/AccessibilityListener.h"
#include "panel/KnobRing.h"
#include "panel/PlugInPanelView.h"
#include "panel/SpokenParameters.h"

#include <QTimer>

#include <chrono>
#include <optional>

namespace kestrel {

// Tells assistive technology what has changed on the panel, at most a few times a second. A value
// that changes and changes back between two announcements is not announced. After changes that
// nobody listened to, the next announcement tells everything. It also puts a sentence about changed
// parameters into the panel's accessible description; a new listener is told only what changes from
// then on. While nobody listens, nothing is computed.
class PanelAnnouncer : public QObject, private QAccessible::ActivationObserver {
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds Pause { 300 };
    static constexpr std::chrono::milliseconds PauseBetweenSentences { 500 };

    explicit PanelAnnouncer(PlugInPanelView& view); // the view owns the announcer
    PanelAnnouncer(PlugInPanelView& view, AccessibilityListener listener);
    ~PanelAnnouncer() override;

private:
    void accessibilityActiveChanged(bool isActive) override;
    [[nodiscard]] bool isHeard();
    void contentChanged();
    void announce();
    void speak();
    void forgetSentence();
    void forgetAnnounced();
    void announceRows();
    void announceKnobs();
    void announceKnob(std::size_t knob, std::optional<std::uint8_t> before, KnobRing now);
    void announceSwitches();
    void tell(QAccessible::Event type, int child);
    void tellValue(int child, int value);

    PlugInPanelView& m_view;
    AccessibilityListener m_listener;
    QTimer m_pause;
    QTimer m_silence; // runs from a change of the content to the sentence about it
    SpokenParameters m_spoken;
    bool m_hasMissed = false; // something has changed while nobody listened
    // The values that were announced last; no value where a listener may have another one.
    std::array<std::optional<QString>, 2> m_rows;
    std::array<std::optional<QString>, PanelLayout::Knobs> m_knobNames;
    std::array<std::optional<std::uint8_t>, PanelLayout::Knobs> m_knobs;
    std::array<std::optional<bool>, PanelLayout::Switches> m_lit;
};

} // namespace kestrel
