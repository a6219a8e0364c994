#include "widgets/help_style.h"

#include "widgets/theme.h"

#include <QHash>
#include <QImage>
#include <QPainter>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextImageFormat>
#include <QUrl>
#include <QVariant>

#include <algorithm>

namespace kelvrane {

namespace {

/// The width that the page gives a picture, before it was fitted; 0 for the picture's own.
constexpr int givenWidth = QTextFormat::UserProperty + 1;

struct Place {
    int position;
    QTextImageFormat format;
};

QList<Place> picturesOf(const QTextDocument& page) {
    QList<Place> places;
    for (QTextBlock block = page.begin(); block.isValid(); block = block.next())
        for (auto part = block.begin(); !part.atEnd(); ++part)
            if (part.fragment().charFormat().isImageFormat())
                places.append(
                    {part.fragment().position(), part.fragment().charFormat().toImageFormat()});
    return places;
}

/// A window's picture has the colour of paper at its edge.
void frame(QImage& picture) {
    QPainter painter(&picture);
    painter.setPen(QColor(0x80, 0x87, 0x90, 0x80));
    painter.drawRect(QRectF({0.5, 0.5}, picture.deviceIndependentSize() - QSizeF(1, 1)));
}

} // namespace

QString HelpStyle(const QPalette& palette) {
    const QColor paper = palette.color(QPalette::Base);
    const QColor link = theme::ReadableOn(QColor(0x3b, 0x78, 0xd8), paper);
    return QStringLiteral("body { color: %1; }"
                          "a { color: %2; text-decoration: none; }"
                          "p, li, td, th { line-height: 125%; }"
                          "h1, h2, h3 { color: %1; font-weight: 600; }"
                          "th { text-align: left; font-weight: 600; }")
        .arg(palette.color(QPalette::Text).name(), link.name());
}

QVariant HelpResource(int type, const QByteArray& data) {
    if (type != QTextDocument::ImageResource)
        return data;
    const QImage picture = QImage::fromData(data);
    if (!picture.isNull())
        return picture;
    QImage blank(1, 1, QImage::Format_ARGB32_Premultiplied);
    blank.fill(Qt::transparent);
    return blank;
}

void FitPictures(QTextDocument& page, const QUrl& address, const HelpData& data, int width,
                 double devicePixelRatio) {
    QHash<QUrl, QImage> originals;
    QTextCursor cursor(&page);
    cursor.beginEditBlock();
    for (Place& place : picturesOf(page)) {
        QTextImageFormat& format = place.format;
        const QUrl url = address.resolved(QUrl(format.name()));
        if (!originals.contains(url))
            originals.insert(url, QImage::fromData(data(url)));
        const QImage& picture = originals[url];
        if (picture.isNull())
            continue;
        if (!format.hasProperty(givenWidth))
            format.setProperty(givenWidth, format.width());
        const double given = format.doubleProperty(givenWidth);
        const double wide =
            std::clamp<double>(given > 0 ? given : picture.width(), 1, std::max(width, 1));
        const double high = wide * picture.height() / picture.width();
        QImage fitted = picture
                            .scaled((QSizeF(wide, high) * devicePixelRatio).toSize(),
                                    Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                            .convertToFormat(QImage::Format_ARGB32_Premultiplied);
        fitted.setDevicePixelRatio(devicePixelRatio);
        frame(fitted);
        page.addResource(QTextDocument::ImageResource, url, fitted);
        format.setName(url.toString());
        format.setWidth(wide);
        format.setHeight(high);
        cursor.setPosition(place.position);
        cursor.setPosition(place.position + 1, QTextCursor::KeepAnchor);
        cursor.setCharFormat(format);
        QTextBlockFormat line = cursor.blockFormat(); // the page's line spacing is for text
        line.setLineHeight(0, QTextBlockFormat::SingleHeight);
        cursor.setBlockFormat(line);
    }
    cursor.endEditBlock();
}

} // namespace kelvrane
