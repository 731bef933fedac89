#ifndef VESKRESOLUTION_H
#define VESKRESOLUTION_H

/// \file
/// VeskResolution, the frame sizes of one aspect ratio.

#include "veskdata_global.h"

#include <QtCore/QList>
#include <QtCore/QSize>

/// Rounds to the nearest integer; a fraction of exactly one half rounds down
/// (2.5 gives 2, -2.5 gives -3).
VESK_DATA_EXPORT double round2(double x);

/// The frame sizes of one aspect ratio whose width and height are multiples
/// of 16, in increasing width. The widths tried are startWidth + 16, + 32, ...
/// up to startWidth + 1600; a width is kept when its height, width / ratio
/// rounded with round2(), is a multiple of 16.
///
/// Lookups on an empty list (a ratio of zero or below, or no height that
/// fits) return an invalid QSize().
class VESK_DATA_EXPORT VeskResolution
{
public:
    /// Builds the list for width / height = ratio, from startWidth + 16 on.
    VeskResolution(float ratio, int startWidth);

    /// The narrowest entry.
    QSize getFirstResolution() const;
    /// The first entry wider than size, else the last entry.
    QSize getNextResolution(QSize const& size) const;
    /// The widest entry narrower than size, else the first entry.
    QSize getPreviousResolution(QSize const& size) const;
    /// The entry strictly smaller than size in both directions whose successor
    /// is larger in one of them, else the first entry. An equal entry does not
    /// count as smaller.
    QSize getNearestResolution(QSize const& size) const;

    /// Every entry, in increasing width.
    QList<QSize> getResolutions() const;
    /// The ratio given at construction.
    float getRatio() const;
    /// The start width given at construction.
    int getStartWidth() const;

private:
    float ratio;
    int startWidth;
    QList<QSize> resolutions;
};

#endif // VESKRESOLUTION_H
