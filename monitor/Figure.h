#pragma once

#include <QString>
#include <QWidget>

namespace kestrel {

// A number under its name, as engraved on the console.
class Figure : public QWidget {
public:
    Figure(const QString& name, QWidget* parent);

    [[nodiscard]] const QString& name() const { return m_name; }
    [[nodiscard]] const QString& value() const { return m_value; }
    void setValue(const QString& value);
    // A figure that counts trouble stands out as soon as there is some.
    void setWarning(bool warning);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QFont nameFont() const;
    [[nodiscard]] QFont valueFont() const;

    const QString m_name;
    QString m_value;
    bool m_isWarning = false;
};

} // namespace kestrel
