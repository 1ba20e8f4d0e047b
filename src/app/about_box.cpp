#include "app/about_box.h"

#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/brand_art.h"
#include "sonalyx_version.h"

TAboutBox::TAboutBox(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("AboutBox"));
    setWindowTitle(tr("Version Information"));
    setWindowFlags(Qt::Dialog | Qt::MSWindowsFixedSizeDialogHint | Qt::WindowTitleHint |
                   Qt::WindowCloseButtonHint);

    auto* panel = new QFrame(this);
    panel->setObjectName(QStringLiteral("Panel1"));
    panel->setFrameShape(QFrame::StyledPanel);
    panel->setFrameShadow(QFrame::Sunken);

    auto* icon = new QLabel(panel);
    icon->setObjectName(QStringLiteral("ProgramIcon"));
    icon->setFixedSize(49, 49);
    icon->setPixmap(BrandArt::Icon(49));

    auto* product = new QLabel(tr("Veltrona Sonalyx"), panel);
    product->setObjectName(QStringLiteral("ProductName"));
    QFont productFont = product->font();
    productFont.setPointSizeF(productFont.pointSizeF() * 1.4);
    productFont.setBold(true);
    product->setFont(productFont);

    auto* version = new QLabel(tr("Version %1").arg(QStringLiteral(SONALYX_VERSION)), panel);
    version->setObjectName(QStringLiteral("Version"));

    auto* notice =
        new QLabel(tr("Views, prints and keeps the room calibration measurements of your AV "
                      "receiver.\nCopyright \u00A9 Veltrona. All rights reserved."),
                   panel);
    notice->setObjectName(QStringLiteral("Copyright"));
    notice->setWordWrap(true);

    auto* grid = new QGridLayout(panel);
    grid->setContentsMargins(12, 12, 12, 12);
    grid->setHorizontalSpacing(14);
    grid->addWidget(icon, 0, 0, 2, 1, Qt::AlignTop);
    grid->addWidget(product, 0, 1);
    grid->addWidget(version, 1, 1);
    grid->addWidget(notice, 2, 0, 1, 2);

    auto* ok = new QPushButton(tr("OK"), this);
    ok->setObjectName(QStringLiteral("OKButton"));
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(panel);
    layout->addWidget(ok, 0, Qt::AlignHCenter);
    setFixedSize(360, sizeHint().height());
}
