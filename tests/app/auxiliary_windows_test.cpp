#include <gtest/gtest.h>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTextBrowser>

#include "app/about_box.h"
#include "app/form_openning.h"
#include "app/glossary.h"
#include "sonalyx_version.h"

namespace {

TEST(GlossaryTest, ShowsTheGlossaryOnDarkGrey) {
    TGlossary glossary(nullptr, {QStringLiteral(SONALYX_SOURCE_DIR "/data/glossary")});
    EXPECT_EQ(glossary.windowTitle(), QStringLiteral("Veltrona Sonalyx - Glossary"));
    EXPECT_EQ(glossary.size(), QSize(469 + 50, 301 + 50));
    EXPECT_TRUE(glossary.LoadedPath().endsWith(QStringLiteral("Glossary.rtf")));
    const QString text = glossary.GlossaryText()->toPlainText();
    EXPECT_TRUE(text.contains(QStringLiteral("Standing Wave Control")));
    EXPECT_TRUE(text.contains(QStringLiteral("X-Curve")));
    EXPECT_TRUE(glossary.GlossaryText()->isReadOnly());
    EXPECT_TRUE(glossary.GlossaryText()->styleSheet().contains(QStringLiteral("rgb(50,50,50)")));
}

// The first folder that has the file gives it; with none, the window says so and where.
TEST(GlossaryTest, FindsTheFileInTheFirstFolderThatHasItOrSaysWhereItLooked) {
    QTemporaryDir empty;
    const QString shipped = QStringLiteral(SONALYX_SOURCE_DIR "/data/glossary");
    EXPECT_TRUE(TGlossary(nullptr, {empty.path(), shipped}).LoadedPath().startsWith(shipped));
    TGlossary missing(nullptr, {empty.path()});
    EXPECT_TRUE(missing.LoadedPath().isEmpty());
    const QString text = missing.GlossaryText()->toPlainText();
    EXPECT_TRUE(text.contains(QStringLiteral("Glossary.rtf was not found")));
    EXPECT_TRUE(text.contains(empty.path()));
}

TEST(AboutBoxTest, NamesProductAndVersion) {
    TAboutBox box;
    EXPECT_EQ(box.windowTitle(), QStringLiteral("Version Information"));
    EXPECT_EQ(box.findChild<QLabel*>(QStringLiteral("ProductName"))->text(),
              QStringLiteral("Veltrona Sonalyx"));
    EXPECT_EQ(box.findChild<QLabel*>(QStringLiteral("Version"))->text(),
              QStringLiteral("Version " SONALYX_VERSION));
    const auto* icon = box.findChild<QLabel*>(QStringLiteral("ProgramIcon"));
    EXPECT_EQ(icon->size(), QSize(49, 49));
    EXPECT_FALSE(icon->pixmap().isNull());
    EXPECT_NE(box.findChild<QPushButton*>(QStringLiteral("OKButton")), nullptr);
}

TEST(SplashTest, IsABorderlessPictureOfItsSize) {
    TFormOpenning splash;
    EXPECT_EQ(splash.size(), QSize(451, 275));
    EXPECT_TRUE(splash.windowFlags() & Qt::FramelessWindowHint);
    const QImage picture = splash.Image1()->pixmap().toImage();
    ASSERT_EQ(picture.size(), QSize(451, 275));
    // A drawn picture, not a flat fill.
    EXPECT_NE(picture.pixel(10, 10), picture.pixel(440, 260));
}

}  // namespace
