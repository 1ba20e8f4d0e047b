#include "views/channel_card.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace sonalyx {

namespace {

QString badge(const QString& text, bool on) {
    const char* style =
        on ? "background:#2f6f4f;color:#e8fff0;" : "background:#3a3d44;color:#8a8f99;";
    return QStringLiteral("<span style=\"%1\">&nbsp;%2&nbsp;</span>")
        .arg(QLatin1String(style), text);
}

}  // namespace

ChannelCard::ChannelCard(QWidget* parent)
    : QFrame(parent),
      title_(new QLabel(this)),
      badges_(new QLabel(this)),
      preview_(new CurvePreview(this)),
      memo_(new QPlainTextEdit(this)) {
    setFrameShape(QFrame::StyledPanel);
    setObjectName(QStringLiteral("ChannelCard"));
    setStyleSheet(QStringLiteral(
        "#ChannelCard{background:#23262c;border:1px solid #3a3f48;border-radius:4px;}"
        "QLabel{color:#dfe3ea;}"));

    QFont titleFont = title_->font();
    titleFont.setBold(true);
    title_->setFont(titleFont);
    badges_->setTextFormat(Qt::RichText);

    preview_->setRanges({0, 160}, {53, 63});
    preview_->setAxisTitles(tr("ms"), tr("dB"));
    preview_->setGridSteps(8, 5);

    memo_->setObjectName(QStringLiteral("ChannelMemo"));
    memo_->setPlaceholderText(tr("Channel memo"));
    memo_->setToolTip(tr("Channel memo (up to 20 lines), saved with the document"));
    memo_->setFixedHeight(46);
    memo_->setTabChangesFocus(true);
    connect(memo_, &QPlainTextEdit::textChanged, this, [this] {
        if (!filling_) {
            emit memoEdited(memo_->toPlainText());
        }
    });

    auto* header = new QHBoxLayout;
    header->addWidget(title_, 1);
    header->addWidget(badges_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 5, 6, 6);
    layout->setSpacing(4);
    layout->addLayout(header);
    layout->addWidget(preview_, 1);
    layout->addWidget(memo_);
}

void ChannelCard::setTitle(const QString& longName, const QString& shortName) {
    title_->setText(shortName.isEmpty() || shortName == longName
                        ? longName
                        : QStringLiteral("%1  (%2)").arg(longName, shortName));
}

void ChannelCard::setAvailability(bool before, bool after) {
    badges_->setText(badge(tr("Before"), before) + QStringLiteral(" ") + badge(tr("After"), after));
}

void ChannelCard::setCurves(QVector<CurvePreview::Series> series, bool depth) {
    preview_->setDepth(depth);
    preview_->setSeries(std::move(series));
}

void ChannelCard::setMemo(const QString& text) {
    filling_ = true;
    memo_->setPlainText(text);
    filling_ = false;
}

QString ChannelCard::memo() const {
    return memo_->toPlainText();
}

}  // namespace sonalyx
