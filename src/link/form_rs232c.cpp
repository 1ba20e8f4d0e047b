#include "link/form_rs232c.h"

#include <QGuiApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QScreen>
#include <QVBoxLayout>

namespace sonalyx {

TFormRS232C::TFormRS232C(Messenger& messenger, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                          Qt::WindowStaysOnTopHint),
      Label1(new QLabel(QStringLiteral("Receiving"), this)),
      ProgressBar1(new QProgressBar(this)),
      Memo1(new QPlainTextEdit(this)),
      Timer1(new QTimer(this)),
      link_(messenger, this) {
    setObjectName(QStringLiteral("FormRS232C"));
    setWindowTitle(QStringLiteral("Sonalyx"));
    buildLayout();
    Timer1->setObjectName(QStringLiteral("Timer1"));
    Timer1->setInterval(10000);
    connect(Timer1, &QTimer::timeout, this, &TFormRS232C::Timer1Timer);
    link_.setTraceSink([this](const std::string& text) { appendToMemo(text); });
    centreOnScreen();
}

void TFormRS232C::buildLayout() {
    setFixedSize(299, 66);
    setAutoFillBackground(true);
    QPalette black = palette();
    black.setColor(QPalette::Window, Qt::black);
    black.setColor(QPalette::WindowText, Qt::white);
    setPalette(black);

    Label1->setObjectName(QStringLiteral("Label1"));
    QFont font(QStringLiteral("Arial"));
    font.setPixelSize(16);
    Label1->setFont(font);
    Label1->setAlignment(Qt::AlignCenter);

    ProgressBar1->setObjectName(QStringLiteral("ProgressBar1"));
    ProgressBar1->setRange(0, 100);
    ProgressBar1->setValue(0);
    ProgressBar1->setTextVisible(false);

    Memo1->setObjectName(QStringLiteral("Memo1"));
    Memo1->setReadOnly(true);
    Memo1->setVisible(false);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(Label1, 1);
    layout->addWidget(ProgressBar1);
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

void TFormRS232C::setProgress(int percent) {
    ProgressBar1->setValue(percent);
}

void TFormRS232C::Timer1Timer() {
    Timer1->stop();
    timedOut_ = true;
}

}  // namespace sonalyx
