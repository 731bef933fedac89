#include "veskresolution.h"

#include <cmath>
#include <limits>

double round2(double x)
{
    double const below = std::floor(x);
    return x - below > 0.5 ? std::ceil(x) : below;
}

VeskResolution::VeskResolution(float ratio, int startWidth)
    : ratio(ratio)
    , startWidth(startWidth)
{
    if (!(ratio > 0.0f))
        return;
    qint64 width = startWidth;
    for (int step = 0; step < 100; ++step) {
        width += 16;
        if (width > std::numeric_limits<int>::max())
            break;
        // The quotient in single precision, as the heights of the lists
        // depend on it (4/3 is 1.3333334f).
        double const height = round2(double(float(width) / ratio));
        if (!(height >= std::numeric_limits<int>::min() && height <= std::numeric_limits<int>::max()))
            continue;
        int const h = int(height);
        if ((h & 15) == 0)
            resolutions.append(QSize(int(width), h));
    }
}

QSize VeskResolution::getFirstResolution() const
{
    return resolutions.isEmpty() ? QSize() : resolutions.first();
}

QSize VeskResolution::getNextResolution(QSize const& size) const
{
    for (QSize const& entry : resolutions) {
        if (entry.width() > size.width())
            return entry;
    }
    return resolutions.isEmpty() ? QSize() : resolutions.last();
}

QSize VeskResolution::getPreviousResolution(QSize const& size) const
{
    for (auto entry = resolutions.crbegin(); entry != resolutions.crend(); ++entry) {
        if (entry->width() < size.width())
            return *entry;
    }
    return getFirstResolution();
}

QSize VeskResolution::getNearestResolution(QSize const& size) const
{
    for (int i = 0; i + 1 < resolutions.size(); ++i) {
        QSize const& entry = resolutions.at(i);
        QSize const& next = resolutions.at(i + 1);
        bool const smaller = entry.width() < size.width() && entry.height() < size.height();
        bool const nextLarger = next.width() > size.width() || next.height() > size.height();
        if (smaller && nextLarger)
            return entry;
    }
    return getFirstResolution();
}

QList<QSize> VeskResolution::getResolutions() const
{
    return resolutions;
}

float VeskResolution::getRatio() const
{
    return ratio;
}

int VeskResolution::getStartWidth() const
{
    return startWidth;
}
