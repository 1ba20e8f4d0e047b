#include <QApplication>
#include <QDir>
#include <QImage>
#include <QMdiArea>
#include <QPixmap>

#include "main_form_fixture.h"
#include "views/mdi_child.h"

// Draws the frame with three documents into build/screenshots/, for a person to look at;
// the checks make sure the picture shows the real windows, not an empty frame.
TEST_F(MainFormTest, ScreenshotWithThreeDocuments) {
    TMainForm& form = start(
        {sample(QStringLiteral("7")), sample(QStringLiteral("10")), sample(QStringLiteral("5"))});
    form.resize(1440, 900);
    ASSERT_EQ(form.DocumentWindows().size(), 3);
    form.WindowCascade1Execute();
    const auto windows = form.MdiArea()->subWindowList(QMdiArea::CreationOrder);
    // A second document on its group delay tab, the front one on its reverb charts.
    qobject_cast<TMDIChild*>(windows.at(1))->PageControl()->setCurrentIndex(1);
    for (int i = 0; i < windows.size(); ++i) {
        windows.at(i)->resize(1060, 640);
    }
    form.MdiArea()->setActiveSubWindow(windows.back());
    waitFor([] { return true; });
    QApplication::processEvents();

    const QImage image = form.grab().toImage();
    const QString folder = QStringLiteral(SONALYX_BINARY_DIR "/screenshots");
    QDir().mkpath(folder);
    ASSERT_TRUE(image.save(folder + QStringLiteral("/main-window-three-documents.png")));

    // Close-ups of the other two tabs of the front document.
    auto* front = qobject_cast<TMDIChild*>(windows.back());
    for (int tab : {1, 2}) {
        front->PageControl()->setCurrentIndex(tab);
        QApplication::processEvents();
        ASSERT_TRUE(front->grab().save(folder + QStringLiteral("/document-tab-%1.png").arg(tab)));
    }
    front->PageControl()->setCurrentIndex(0);

    EXPECT_EQ(image.size(), form.size() * image.devicePixelRatio());
    // Many distinct colours: charts, tool bar pictures and text, not a flat frame.
    QSet<QRgb> colours;
    for (int y = 0; y < image.height(); y += 3) {
        for (int x = 0; x < image.width(); x += 3) {
            colours.insert(image.pixel(x, y));
        }
    }
    EXPECT_GT(colours.size(), 500);
}
