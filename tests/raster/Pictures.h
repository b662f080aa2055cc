// Pictures that tests of the pixels and of the document share, and quiet for broken ones.
#pragma once

#include "tools/raster/StrokeImage.h"

#include <QImage>
#include <QPainter>
#include <QRadialGradient>

#include <random>

namespace drawing {

/// A canvas that is transparent but for one pixel, whose place and colour tell `id` (1..1048575).
inline QImage marked(int id) {
    QImage image = vellum::blankCanvas();
    image.setPixelColor(id % vellum::kCanvasSize, id / vellum::kCanvasSize,
                        QColor(id & 255, id >> 8 & 255, 77));
    return image;
}

/// A canvas with soft, hard and opaque parts, different for each seed.
inline QImage scribble(unsigned seed) {
    std::mt19937 random(seed);
    const auto upTo = [&](int limit) { return static_cast<int>(random() % unsigned(limit)); };
    const auto color = [&] { return QColor(upTo(256), upTo(256), upTo(256), 1 + upTo(255)); };
    QImage image = vellum::blankCanvas();
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    for (int i = 0; i < 4; ++i) {
        const QPointF centre(upTo(1024), upTo(1024));
        QRadialGradient soft(centre, 40 + upTo(300));
        soft.setColorAt(0, color());
        soft.setColorAt(1, Qt::transparent);
        painter.fillRect(image.rect(), soft);
        painter.setPen(QPen(color(), 1 + upTo(60), Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(upTo(1024), upTo(1024), upTo(1024), upTo(1024));
    }
    painter.fillRect(upTo(900), upTo(900), 20 + upTo(300), 20 + upTo(300),
                     QColor(upTo(256), upTo(256), upTo(256)));
    return image;
}

/// Qt says a lot about broken pictures; here that is expected.
class QuietQt {
public:
    QuietQt()
        : previous_(
              qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {})) {
    }
    ~QuietQt() { qInstallMessageHandler(previous_); }
    QuietQt(const QuietQt&) = delete;
    QuietQt& operator=(const QuietQt&) = delete;

private:
    QtMessageHandler previous_;
};

} // namespace drawing
