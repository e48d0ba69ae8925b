#pragma once

#include "pictures/InterfaceImage.h"

#include <QAbstractButton>

namespace kestrel {

// A button that consists of a picture. It shows the alternate picture while it is pressed.
class ImageButton : public QAbstractButton {
public:
    explicit ImageButton(const QRect& frame, QWidget* parent = nullptr);

    void setImage(const InterfaceImage& image);
    void setAlternateImage(const InterfaceImage& image);
    // Without one, a disabled button shows its image faintly.
    void setDisabledImage(const InterfaceImage& image);
    [[nodiscard]] const InterfaceImage& image() const { return m_image; }
    [[nodiscard]] const InterfaceImage& alternateImage() const { return m_alternateImage; }

protected:
    void drawRect();
    void paintEvent(QPaintEvent* event) override;

private:
    InterfaceImage m_image;
    InterfaceImage m_alternateImage;
    InterfaceImage m_disabledImage;
};

} // namespace kestrel
