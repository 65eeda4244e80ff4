// SPDX-License-Identifier: GPL-3.0-or-later
// tav-render-icon SVG SIZE OUT.png: draws the program's SVG icon as a square
// PNG of SIZE pixels, for the desktop's fixed-size icon folders. Run by the
// build, so the PNGs always match the SVG.
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cstdio>

int main(int argc, char* argv[])
{
    if (argc != 4) {
        std::fprintf(stderr, "usage: tav-render-icon SVG SIZE OUT.png\n");
        return 2;
    }
    // The drawing needs no display; fonts, should the icon ever hold text,
    // need a Gui application.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    QSvgRenderer svg(QString::fromLocal8Bit(argv[1]));
    const int size = QByteArray(argv[2]).toInt();
    if (!svg.isValid() || size <= 0) {
        std::fprintf(stderr, "tav-render-icon: cannot read %s or size %s\n", argv[1], argv[2]);
        return 1;
    }
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    svg.render(&painter);
    painter.end();
    if (!image.save(QString::fromLocal8Bit(argv[3]), "PNG")) {
        std::fprintf(stderr, "tav-render-icon: cannot write %s\n", argv[3]);
        return 1;
    }
    return 0;
}
