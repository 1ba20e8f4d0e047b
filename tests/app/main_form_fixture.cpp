#include "main_form_fixture.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFile>
#include <QMdiArea>
#include <QMimeData>
#include <QUrl>

#include "views/window/mdi_child.h"

void MainFormTest::SetUp() {
    ASSERT_TRUE(folder_.isValid());
    settings_ = std::make_unique<QSettings>(folder_.filePath(QStringLiteral("settings.ini")),
                                            QSettings::IniFormat);
}

void MainFormTest::TearDown() {
    if (form_ != nullptr) {
        // Nothing left to ask about: the test is over.
        for (TMDIChild* child : form_->DocumentWindows()) {
            child->Document().modified = false;
        }
        form_.reset();
    }
    QApplication::processEvents();
}

TMainForm& MainFormTest::start(const QStringList& files) {
    MainFormOptions options;
    options.settings = settings_.get();
    options.files = files;
    options.showSplash = false;
    options.ports = ports_;
    options.receiveTickMs = receiveTickMs_;
    form_ = std::make_unique<TMainForm>(options);
    form_->show();
    EXPECT_TRUE(waitFor([this] { return form_->StartupFinished(); }));
    return *form_;
}

QString MainFormTest::sample(const QString& layout, const QString& name) {
    const QString source = QStringLiteral(SONALYX_SAMPLES_DIR "/sample-layout-%1.csv").arg(layout);
    const QString target =
        folder_.filePath(name.isEmpty() ? QStringLiteral("layout-%1.csv").arg(layout) : name);
    QFile::remove(target);
    EXPECT_TRUE(QFile::copy(source, target)) << source.toStdString();
    QFile::setPermissions(target, QFile::ReadOwner | QFile::WriteOwner);
    return target;
}

QStringList MainFormTest::samples(int count) {
    static const char* layouts[] = {"5", "7", "9", "10", "11"};
    QStringList paths;
    for (int i = 0; i < count; ++i) {
        paths.append(sample(QLatin1String(layouts[i % 5]), QStringLiteral("run%1.csv").arg(i + 1)));
    }
    return paths;
}

QString MainFormTest::writeFile(const QString& name, const QByteArray& bytes) {
    const QString path = folder_.filePath(name);
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    return path;
}

QStringList MainFormTest::storedHistory() {
    QSettings stored(settings_->fileName(), QSettings::IniFormat);
    stored.beginGroup(QStringLiteral("FILEHISTORY"));
    QStringList paths;
    const int count = stored.value(QStringLiteral("COUNT"), 0).toInt();
    for (int i = 0; i < count; ++i) {
        paths.append(stored.value(QStringLiteral("PATH%1").arg(i)).toString());
    }
    return paths;
}

bool MainFormTest::waitFor(const std::function<bool()>& done) {
    QDeadlineTimer deadline(20000);
    while (!done()) {
        if (deadline.hasExpired()) {
            return false;
        }
        QApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    return true;
}

void MainFormTest::dropFiles(const QStringList& paths) {
    QMimeData data;
    QList<QUrl> urls;
    for (const QString& path : paths) {
        urls.append(QUrl::fromLocalFile(path));
    }
    data.setUrls(urls);
    QWidget* target = form_->MdiArea()->viewport();
    const QPoint at = target->rect().center();
    QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &enter);
    ASSERT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(at), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &drop);
    ASSERT_TRUE(drop.isAccepted());
}
