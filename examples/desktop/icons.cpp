#include "icons.h"

#include <QtCore/QBuffer>
#include <QtGui/QImage>
#include <QtGui/QPainter>

namespace {

QImage disc(QColor const& colour)
{
    QImage image(16, 16, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour.darker(150), 1.5));
    painter.setBrush(colour);
    painter.drawEllipse(QRectF(2.5, 2.5, 11, 11));
    return image;
}

} // namespace

bool drawIcons(QString const& dir)
{
    QImage feed(16, 16, QImage::Format_ARGB32_Premultiplied);
    feed.fill(Qt::transparent);
    {
        QPainter painter(&feed);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setBrush(QColor(0xf0, 0x8c, 0x1a));
        painter.setPen(Qt::NoPen);
        painter.drawRoundedRect(QRectF(1, 1, 14, 14), 3, 3);
        painter.setBrush(Qt::white);
        painter.drawEllipse(QRectF(3.5, 10, 3, 3));
    }
    QImage ask = disc(QColor(0x4a, 0x7d, 0xd8));
    {
        QPainter painter(&ask);
        painter.setPen(QPen(Qt::white, 2));
        painter.drawLine(QPointF(8, 5), QPointF(8, 9));
        painter.drawPoint(QPointF(8, 11.5));
    }
    return disc(QColor(0x3c, 0xb3, 0x4a)).save(dir + QStringLiteral("/online.png"))
           && disc(QColor(0xf2, 0xb1, 0x1d)).save(dir + QStringLiteral("/away.png"))
           && disc(QColor(0x9a, 0x9a, 0x9a)).save(dir + QStringLiteral("/offline.png"))
           && ask.save(dir + QStringLiteral("/ask.png")) && feed.save(dir + QStringLiteral("/feed.png"));
}

// Computed pixel by pixel: the plugin's thread stays out of the raster
// engine, which hands large fills to QtGui's thread pool.
QByteArray logoPng()
{
    int const width = 180;
    int const height = 40;
    QImage image(width, height, QImage::Format_ARGB32);
    for (int y = 0; y < height; ++y) {
        auto* const line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < width; ++x) {
            int const t = x * 255 / (width - 1);
            QRgb pixel = qRgb(0x2b + (0x5b - 0x2b) * t / 255, 0x5f + (0xc0 - 0x5f) * t / 255,
                              0xb3 + (0xbe - 0xb3) * t / 255);
            for (int i = 0; i < 3; ++i) {
                int const dx = x - (22 + i * 22);
                int const dy = y - 20;
                if (dx * dx + dy * dy <= 64)
                    pixel = qRgb(255, 255, 255);
            }
            line[x] = pixel;
        }
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}
