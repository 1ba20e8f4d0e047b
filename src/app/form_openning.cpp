#include "app/form_openning.h"

#include <QGuiApplication>
#include <QLabel>
#include <QScreen>

#include "app/brand_art.h"

TFormOpenning::TFormOpenning(QWidget* parent)
    : QWidget(parent, Qt::SplashScreen | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint),
      image_(new QLabel(this)) {
    setObjectName(QStringLiteral("FormOpenning"));
    setFixedSize(kWidth, kHeight);
    image_->setObjectName(QStringLiteral("Image1"));
    image_->setGeometry(0, 0, kWidth, kHeight);
    image_->setPixmap(BrandArt::Splash(QSize(kWidth, kHeight)));
    if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        move(screen->availableGeometry().center() - rect().center());
    }
}

void TFormOpenning::mousePressEvent(QMouseEvent*) {
    hide();
}
