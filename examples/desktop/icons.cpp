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

QByteArray logoPng()
{
    QImage image(180, 40, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        QLinearGradient gradient(0, 0, 180, 0);
        gradient.setColorAt(0, QColor(0x2b, 0x5f, 0xb3));
        gradient.setColorAt(1, QColor(0x5b, 0xc0, 0xbe));
        painter.setBrush(gradient);
        painter.setPen(Qt::NoPen);
        painter.drawRoundedRect(QRectF(0, 0, 180, 40), 8, 8);
        painter.setBrush(Qt::white);
        for (int i = 0; i < 3; ++i)
            painter.drawEllipse(QRectF(14 + i * 22, 12, 16, 16));
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}
