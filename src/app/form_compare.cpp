#include "app/form_compare.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

TFormCompare::TFormCompare(const QString& documentTitle, const QStringList& titles,
                           const QStringList& paths, QWidget* parent)
    : QDialog(parent), documents_(static_cast<int>(titles.size())) {
    setObjectName(QStringLiteral("FormCompare"));
    setWindowTitle(tr("Compare With"));
    auto* layout = new QVBoxLayout(this);
    auto* prompt = new QLabel(
        tr("Draw the curves of another measurement beside those of %1:").arg(documentTitle), this);
    prompt->setWordWrap(true);
    layout->addWidget(prompt);

    list_ = new QListWidget(this);
    list_->setObjectName(QStringLiteral("ListDocuments"));
    for (int i = 0; i < documents_; ++i) {
        auto* item = new QListWidgetItem(titles.at(i), list_);
        item->setToolTip(paths.value(i));
    }
    auto* other = new QListWidgetItem(tr("Other file…"), list_);
    QFont italic = other->font();
    italic.setItalic(true);
    other->setFont(italic);
    other->setToolTip(tr("Open a document file as the reference"));
    list_->setCurrentRow(0);
    layout->addWidget(list_);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setText(tr("Compare"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(list_, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    layout->addWidget(buttons);
    resize(420, 260);
}

int TFormCompare::ChosenDocument() const {
    const int row = list_->currentRow();
    return row >= 0 && row < documents_ ? row : -1;
}

bool TFormCompare::OtherFileChosen() const {
    return list_->currentRow() == documents_;
}
