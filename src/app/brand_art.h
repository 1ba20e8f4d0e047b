#pragma once

#include <QIcon>
#include <QPixmap>

// The program's own pictures, drawn rather than shipped so they stay sharp at any scale: the
// splash, the application icon and the logo at the right of the tool bar.
class BrandArt {
  public:
    static QPixmap Splash(const QSize& size);
    static QPixmap Icon(int size);
    static QIcon ApplicationIcon();
    static QPixmap Logo(int height);
};
