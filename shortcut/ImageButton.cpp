#include "shortcut/ImageButton.h"

#include "shortcut/ControlDrawing.h"

#include <QPainter>

namespace kestrel {

namespace {
constexpr double DisabledOpacity = 0.4;
constexpr double CornerRadius = 5;
} // namespace

ImageButton::ImageButton(const QRect& frame, QWidget* parent)
    : QAbstractButton(parent)
{
    setGeometry(frame);
    setFocusPolicy(Qt::TabFocus);
}

void ImageButton::setImage(const InterfaceImage& image)
{
    m_image = image;
    update();
}

void ImageButton::setAlternateImage(const InterfaceImage& image)
{
    m_alternateImage = image;
    update();
}

void ImageButton::setDisabledImage(const InterfaceImage& image)
{
    m_disabledImage = image;
    update();
}

void ImageButton::drawRect()
{
    QPainter painter(this);
    if (isEnabled())
        drawImage(painter, isDown() ? m_alternateImage : m_image, {});
    else if (m_disabledImage.isNull())
        drawImage(painter, m_image, {}, DisabledOpacity);
    else
        drawImage(painter, m_disabledImage, {});
    if (hasFocus())
        drawFocusRing(painter, rect(), CornerRadius);
}

void ImageButton::paintEvent(QPaintEvent*)
{
    drawRect();
}

} // namespace kestrel
