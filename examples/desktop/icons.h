#ifndef DESKTOP_ICONS_H
#define DESKTOP_ICONS_H

#include <QtCore/QByteArray>
#include <QtCore/QString>

// Draws the presence icons of the sample protocol into dir as
// <presence>.png, plus ask.png (a pending subscription) and feed.png.
bool drawIcons(QString const& dir);
// The plugin's logo as PNG bytes, for the settings page's image field.
QByteArray logoPng();

#endif
