// Renders an SVG to a square PNG: render_icon SOURCE.svg TARGET.png PIXELS
// Used by the build for the icons that the desktop wants in fixed sizes.
#include <QCoreApplication>
#include <QImage>
#include <QPainter>
#include <QStringList>
#include <QSvgRenderer>

#include <cstdio>

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const int pixels = arguments.value(3).toInt();
    QSvgRenderer drawing(arguments.value(1));
    if (arguments.size() != 4 || pixels <= 0 || !drawing.isValid()) {
        std::fputs("usage: render_icon SOURCE.svg TARGET.png PIXELS\n", stderr);
        return 2;
    }
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    drawing.render(&painter);
    painter.end();
    if (!image.save(arguments.at(2), "PNG")) {
        std::fprintf(stderr, "render_icon: can't write %s\n", qUtf8Printable(arguments.at(2)));
        return 1;
    }
    return 0;
}
