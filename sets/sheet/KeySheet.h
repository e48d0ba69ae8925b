#pragma once

#include "assign/UserAssignFile.h"

#include <QFont>
#include <QRectF>
#include <QString>

#include <vector>

namespace kestrel {

// A page with the twelve keys as they lie on the console, each with its number, its name and its
// shortcuts. No text leaves its place: a long one is set smaller, in two lines, or cut with an
// ellipsis. Needs an application object, for the fonts.
class KeySheet {
public:
    enum class Paper { A4, Letter };

    // All measures are in tenths of a point, 1/720 inch.
    static constexpr double UnitsPerInch = 720;

    // For a set without a name of its own.
    inline static const QString UsualHeading = QStringLiteral("User-assignable keys");

    struct Text {
        QString text;
        QFont font;
        QPointF baseline; // where it begins
        QRectF place; // which it does not leave
        int grey = 0; // 0 is black
    };

    KeySheet(const UserAssignFile& set, const QString& heading, Paper paper);

    [[nodiscard]] Paper paper() const { return m_paper; }
    [[nodiscard]] QSizeF size() const; // in landscape
    [[nodiscard]] const QString& heading() const { return m_heading; }
    [[nodiscard]] const std::vector<QRectF>& keys() const { return m_keys; }
    [[nodiscard]] const std::vector<Text>& texts() const { return m_texts; }

private:
    void addKey(const UserAssignFile& set, int number);
    void addName(const QString& name, const QRectF& place);
    void addShortcuts(const ButtonEntry& entry, const QRectF& place);

    Paper m_paper;
    QString m_heading;
    std::vector<QRectF> m_keys;
    std::vector<Text> m_texts;
};

} // namespace kestrel
