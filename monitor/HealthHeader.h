#pragma once

#include "activity/LinkHealth.h"

#include <QWidget>

#include <array>
#include <functional>

class QLabel;

namespace kestrel {

class BeatPlot;
class Figure;
class MonitorButton;
class StateLamp;

// The health of the link: in a sentence, in figures and as a plot of the beats.
class HealthHeader : public QWidget {
public:
    // The health and the clock outlive the header.
    HealthHeader(const LinkHealth& health, const Clock& clock, QWidget* parent);

    // `lead` leads the user to where the permission to post keys is given.
    void setShowPermission(std::function<void()> lead) { m_showPermission = std::move(lead); }
    // Shows the present state.
    void refresh();

    [[nodiscard]] QString title() const;
    [[nodiscard]] QString sentence() const;
    [[nodiscard]] MonitorButton* permissionButton() const { return m_permissionButton; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void makeTexts();
    void makeFigures();
    void takeColours();
    void tellSentence(const QString& text);
    [[nodiscard]] QString titleText() const;
    [[nodiscard]] QString sentenceText() const;

    static constexpr std::size_t FigureCount = 7;

    const LinkHealth& m_health;
    const Clock& m_clock;
    std::function<void()> m_showPermission = [] {};
    StateLamp* m_lamp;
    QLabel* m_title;
    QLabel* m_sentence;
    MonitorButton* m_permissionButton;
    BeatPlot* m_plot;
    std::array<Figure*, FigureCount> m_figures {};
};

} // namespace kestrel
