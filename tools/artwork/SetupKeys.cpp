#include "tools/artwork/SetupKeys.h"

#include "artwork/Canvas.h"
#include "artwork/Engraving.h"
#include "artwork/KeyCap.h"
#include "artwork/Light.h"
#include "artwork/StrokeFont.h"

namespace kestrel::artwork {

namespace {

constexpr QRectF UserKeyRect(1, 1, 76, 76);
constexpr QRectF LampBar(27, 7, 24, 3);
constexpr QRectF ButtonRect(1, 1, 54, 29);

void drawLampBar(Canvas& canvas, KeyLight light)
{
    const QPainterPath bar = roundedRect(LampBar, 1.5);
    if (light == KeyLight::Off) {
        canvas.painter().fillPath(bar, QColor(112, 106, 96));
        return;
    }
    castSoft(canvas, bar, QPointF(0, 0), 2.5, QColor(255, 120, 20, 230));
    canvas.painter().fillPath(bar, QColor(255, 255, 244));
}

KeyCap buttonCap(ButtonFace face)
{
    KeyCap cap { .rect = ButtonRect, .radius = 5.0, .rim = 1.5 };
    switch (face) {
    case ButtonFace::Lit:
        cap.top = QColor(255, 236, 190);
        cap.bottom = QColor(255, 196, 104);
        cap.shine = QColor(255, 255, 255, 200);
        cap.bezel = QColor(150, 84, 14);
        break;
    case ButtonFace::Resting:
        cap.top = QColor(84, 87, 91);
        cap.bottom = QColor(56, 58, 62);
        break;
    case ButtonFace::Pressed:
        cap.top = QColor(44, 46, 49);
        cap.bottom = QColor(54, 56, 60);
        cap.pressed = true;
        break;
    case ButtonFace::Disabled:
    case ButtonFace::Unlit:
        cap.top = QColor(46, 48, 50);
        cap.bottom = QColor(36, 37, 39);
        cap.shine = QColor(255, 255, 255, 26);
        break;
    }
    return cap;
}

QColor wordPaint(ButtonFace face)
{
    switch (face) {
    case ButtonFace::Resting:
        return QColor(238, 238, 234);
    case ButtonFace::Pressed:
        return QColor(255, 196, 110);
    case ButtonFace::Unlit:
        return QColor(170, 172, 172);
    case ButtonFace::Lit:
        return QColor(60, 34, 4);
    case ButtonFace::Disabled:
        break;
    }
    return QColor(104, 106, 108);
}

} // namespace

QImage drawUserAssignableKey(KeyLight light, int scale)
{
    Canvas canvas(QSize(78, 78), scale, Canvas::Backing::Transparent);
    const bool lit = light == KeyLight::On;
    drawKeyCap(canvas,
        { .rect = UserKeyRect,
            .radius = 7.0,
            .rim = lit ? 2.0 : 1.6,
            .top = lit ? QColor(255, 236, 190) : QColor(186, 182, 173),
            .bottom = lit ? QColor(255, 200, 112) : QColor(158, 154, 146),
            .shine = QColor(255, 255, 255, lit ? 200 : 110),
            .bezel = lit ? QColor(150, 84, 14) : QColor(9, 9, 10) });
    drawLampBar(canvas, light);
    return canvas.take();
}

QImage drawPushButton(const QString& word, ButtonFace face, int scale)
{
    Canvas canvas(QSize(56, 31), scale, Canvas::Backing::Transparent);
    drawKeyCap(canvas, buttonCap(face));
    const double down = face == ButtonFace::Pressed ? 1.0 : 0.0;
    engrave(canvas, word, QPointF(28, 12.5 + down), { .paint = wordPaint(face) });
    return canvas.take();
}

QImage drawButtonGlow(int scale)
{
    constexpr double Reach = 16;
    Canvas canvas(QSize(88, 63), scale, Canvas::Backing::Transparent);
    castSoft(canvas, roundedRect(ButtonRect.translated(Reach, Reach), 5), QPointF(0, 0), 9,
        QColor(255, 150, 40, 190));
    return canvas.take();
}

QImage drawTextBox(FieldState state, int scale)
{
    Canvas canvas(QSize(171, 34), scale, Canvas::Backing::Transparent);
    const QPainterPath box = roundedRect(QRectF(0, 0, 171, 34), 3);
    const bool enabled = state == FieldState::Enabled;
    canvas.painter().fillPath(box, enabled ? QColor(0, 0, 0) : QColor(32, 33, 35));
    const QPainterPath inner = roundedRect(QRectF(1, 1, 169, 32), 2.4);
    canvas.painter().fillPath(
        box.subtracted(inner), enabled ? QColor(88, 92, 95) : QColor(52, 54, 56));
    return canvas.take();
}

} // namespace kestrel::artwork
