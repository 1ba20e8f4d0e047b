#include "link/form_rs232c.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

namespace sonalyx {

namespace {

constexpr int kWindowWidth = 320;
constexpr int kWindowHeight = 148;

QFont arial(int pixelSize) {
    QFont font(QStringLiteral("Arial"));
    font.setPixelSize(pixelSize);
    return font;
}

}  // namespace

TFormRS232C::TFormRS232C(Messenger& messenger, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                          Qt::WindowCloseButtonHint | Qt::WindowStaysOnTopHint),
      Label1(new QLabel(QStringLiteral("Receiving"), this)),
      LabelKind(new QLabel(this)),
      ProgressBar1(new QProgressBar(this)),
      LabelTimeLeft(new QLabel(this)),
      ButtonCancel(new QPushButton(QStringLiteral("Cancel"), this)),
      Memo1(new QPlainTextEdit(this)),
      Timer1(new QTimer(this)),
      link_(messenger, this) {
    setObjectName(QStringLiteral("FormRS232C"));
    setWindowTitle(QStringLiteral("Sonalyx"));
    buildLayout();
    Timer1->setObjectName(QStringLiteral("Timer1"));
    Timer1->setInterval(10000);
    connect(Timer1, &QTimer::timeout, this, &TFormRS232C::Timer1Timer);
    connect(ButtonCancel, &QPushButton::clicked, this, &TFormRS232C::ButtonCancelClick);
    link_.setTraceSink([this](const std::string& text) { appendToMemo(text); });
    centreOnScreen();
}

void TFormRS232C::buildLayout() {
    setFixedSize(kWindowWidth, kWindowHeight);
    setAutoFillBackground(true);
    QPalette black = palette();
    black.setColor(QPalette::Window, Qt::black);
    black.setColor(QPalette::WindowText, Qt::white);
    setPalette(black);

    Label1->setObjectName(QStringLiteral("Label1"));
    Label1->setFont(arial(16));
    Label1->setAlignment(Qt::AlignCenter);

    LabelKind->setObjectName(QStringLiteral("LabelKind"));
    LabelKind->setFont(arial(12));
    LabelKind->setAlignment(Qt::AlignCenter);
    QPalette grey = black;
    grey.setColor(QPalette::WindowText, QColor(0xc8, 0xc8, 0xc8));
    LabelKind->setPalette(grey);

    ProgressBar1->setObjectName(QStringLiteral("ProgressBar1"));
    ProgressBar1->setRange(0, 0);
    ProgressBar1->setValue(0);
    ProgressBar1->setTextVisible(true);
    ProgressBar1->setFormat(QStringLiteral("%v of %m"));
    ProgressBar1->setAlignment(Qt::AlignCenter);

    LabelTimeLeft->setObjectName(QStringLiteral("LabelTimeLeft"));
    LabelTimeLeft->setFont(arial(12));
    LabelTimeLeft->setPalette(grey);

    ButtonCancel->setObjectName(QStringLiteral("ButtonCancel"));
    ButtonCancel->setAutoDefault(false);
    ButtonCancel->setFocusPolicy(Qt::StrongFocus);

    Memo1->setObjectName(QStringLiteral("Memo1"));
    Memo1->setReadOnly(true);
    Memo1->setVisible(false);

    auto* bottom = new QHBoxLayout;
    bottom->addWidget(LabelTimeLeft, 1);
    bottom->addWidget(ButtonCancel);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(12, 8, 12, 10);
    layout->setSpacing(6);
    layout->addWidget(Label1);
    layout->addWidget(LabelKind);
    layout->addWidget(ProgressBar1);
    layout->addLayout(bottom);
    ShowProgress({});
}

void TFormRS232C::centreOnScreen() {
    if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        const QRect area = screen->availableGeometry();
        move(area.center() - QPoint(width() / 2, height() / 2));
    }
}

bool TFormRS232C::OpenPort(const std::string& portName, bool monitor) {
    const bool opened = link_.open(portName, monitor);
    Memo1->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    Memo1->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    return opened;
}

void TFormRS232C::LogLine(const std::string& text) {
    link_.logLine(text);
}

void TFormRS232C::appendToMemo(const std::string& text) {
    Memo1->appendPlainText(QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size())));
}

void TFormRS232C::ShowProgress(const ReceiveProgress& progress) {
    if (progress.total > 0) {
        ProgressBar1->setRange(0, progress.total);
        ProgressBar1->setValue(std::min(progress.answered, progress.total));
    } else {
        // Until the receiver has named its configuration nobody knows how long this is.
        ProgressBar1->setRange(0, 0);
    }
    LabelKind->setText(QString::fromStdString(progress.kind));
    LabelTimeLeft->setText(progress.total > 0 && progress.remainingMs >= 0
                               ? TimeLeftText(progress.remainingMs)
                               : QStringLiteral("Estimating the time left"));
}

QString TFormRS232C::TimeLeftText(long long remainingMs) {
    // Rounded up: "About 0 s left" would be a promise the last reply may not keep.
    const long long seconds = (remainingMs + 999) / 1000;
    if (seconds < 60) {
        return QStringLiteral("About %1 s left").arg(seconds);
    }
    return QStringLiteral("About %1 min %2 s left").arg(seconds / 60).arg(seconds % 60);
}

void TFormRS232C::ButtonCancelClick() {
    emit CancelRequested();
}

void TFormRS232C::reject() {
    // Esc: the run decides when the window goes, once the port is closed.
    emit CancelRequested();
}

void TFormRS232C::closeEvent(QCloseEvent* event) {
    event->ignore();
    emit CancelRequested();
}

void TFormRS232C::Timer1Timer() {
    Timer1->stop();
    timedOut_ = true;
}

}  // namespace sonalyx
