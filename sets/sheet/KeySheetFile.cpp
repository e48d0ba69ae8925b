#include "sets/sheet/KeySheetFile.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QPdfWriter>

namespace kestrel::KeySheetFile {

namespace {
constexpr double CornerRadius = 90;
constexpr double LineWidth = 10;
constexpr int PixelsPerInch = 200;

QColor colour(int grey)
{
    return { grey, grey, grey };
}

void draw(const KeySheet& sheet, QPainter& painter)
{
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.setPen(QPen(Qt::black, LineWidth));
    for (const QRectF& key : sheet.keys())
        painter.drawRoundedRect(key, CornerRadius, CornerRadius);
    for (const KeySheet::Text& text : sheet.texts()) {
        painter.setFont(text.font);
        painter.setPen(colour(text.grey));
        painter.drawText(text.baseline, text.text);
    }
}

QByteArray pdf(const KeySheet& sheet)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setResolution(static_cast<int>(KeySheet::UnitsPerInch));
    writer.setCreator(QStringLiteral("ZENTA Kestrel"));
    writer.setTitle(sheet.heading());
    const auto paper = sheet.paper() == KeySheet::Paper::A4 ? QPageSize::A4 : QPageSize::Letter;
    writer.setPageLayout(QPageLayout(QPageSize(paper), QPageLayout::Landscape, QMarginsF()));
    QPainter painter(&writer);
    draw(sheet, painter);
    painter.end();
    return buffer.data();
}

QByteArray png(const KeySheet& sheet)
{
    constexpr double Scale = PixelsPerInch / KeySheet::UnitsPerInch;
    constexpr double InchesPerMetre = 1000 / 25.4;
    QImage image((sheet.size() * Scale).toSize(), QImage::Format_RGB32);
    image.fill(Qt::white);
    image.setDotsPerMeterX(qRound(PixelsPerInch * InchesPerMetre));
    image.setDotsPerMeterY(image.dotsPerMeterX());
    QPainter painter(&image);
    painter.scale(Scale, Scale);
    draw(sheet, painter);
    painter.end();
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return buffer.data();
}

QString coordinates(const QPainterPath::Element& element)
{
    return QString::number(element.x, 'f', 1) + u' ' + QString::number(element.y, 'f', 1) + u' ';
}

// The outlines in the language of the attribute "d".
QString outlines(const QPainterPath& path)
{
    QString text;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        if (element.isMoveTo())
            text += u'M';
        else if (element.isLineTo())
            text += u'L';
        else if (element.isCurveTo())
            text += u'C';
        text += coordinates(element);
    }
    return text.trimmed();
}

// Outlines, so that it looks the same where the fonts are missing. Each has its text beside it.
QByteArray svg(const KeySheet& sheet)
{
    const double width = sheet.size().width();
    const double height = sheet.size().height();
    QString text
        = QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%1in\" height=\"%2in\" "
                         "viewBox=\"0 0 %3 %4\">\n<title>%5</title>\n"
                         "<rect width=\"100%\" height=\"100%\" fill=\"#fff\"/>\n")
              .arg(width / KeySheet::UnitsPerInch)
              .arg(height / KeySheet::UnitsPerInch)
              .arg(width)
              .arg(height)
              .arg(sheet.heading().toHtmlEscaped());
    for (const QRectF& key : sheet.keys())
        text += QStringLiteral("<rect x=\"%1\" y=\"%2\" width=\"%3\" height=\"%4\" rx=\"%5\" "
                               "fill=\"none\" stroke=\"#000\" stroke-width=\"%6\"/>\n")
                    .arg(key.x())
                    .arg(key.y())
                    .arg(key.width())
                    .arg(key.height())
                    .arg(CornerRadius)
                    .arg(LineWidth);
    for (const KeySheet::Text& line : sheet.texts()) {
        QPainterPath path;
        path.addText(line.baseline, line.font, line.text);
        text += QStringLiteral("<path fill=\"%1\" d=\"%2\"><title>%3</title></path>\n")
                    .arg(colour(line.grey).name(), outlines(path), line.text.toHtmlEscaped());
    }
    return (text + QStringLiteral("</svg>\n")).toUtf8();
}
} // namespace

std::optional<Format> formatOf(const QString& path)
{
    const QString extension = QFileInfo(path).suffix().toLower();
    if (extension == u"pdf")
        return Format::Pdf;
    if (extension == u"svg")
        return Format::Svg;
    if (extension == u"png")
        return Format::Png;
    return std::nullopt;
}

QByteArray content(const KeySheet& sheet, Format format)
{
    switch (format) {
    case Format::Pdf:
        return pdf(sheet);
    case Format::Svg:
        return svg(sheet);
    case Format::Png:
        return png(sheet);
    }
    return {};
}

} // namespace kestrel::KeySheetFile
