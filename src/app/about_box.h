#pragma once

#include <QDialog>

// The version box: product name, version and the maker's notice.
class TAboutBox : public QDialog {
    Q_OBJECT

  public:
    explicit TAboutBox(QWidget* parent = nullptr);
};
