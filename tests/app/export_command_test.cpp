#include <sys/wait.h>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QTabWidget>
#include <cstdlib>

#include "app/export_command.h"
#include "document/document_file.h"
#include "document/document_loader.h"
#include "document/document_writer.h"
#include "main_form_fixture.h"
#include "support/golden.h"
#include "support/recording_messenger.h"
#include "views/window/mdi_child.h"

namespace {

QByteArray bytesOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Vector files carry no bitmap: no SVG <image> element, no PDF image object.
bool embedsRaster(const QByteArray& bytes) {
    return bytes.contains("<image") || bytes.contains("/Subtype /Image") ||
           bytes.contains("/Subtype/Image");
}

class ExportCommandTest : public MainFormTest {
  protected:
    // sonalyx-cli render of the same document and view; the exit status.
    int render(const QString& document, const QString& options, const QString& out) {
        const QString command = QStringLiteral("%1 render '%2' %3 -o '%4' 2>/dev/null")
                                    .arg(QStringLiteral(SONALYX_CLI), document, options, out);
        const int raw = std::system(command.toLocal8Bit().constData());
        return WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
    }
    TMDIChild* openShown(const QString& path) {
        TMainForm& form = start({path});
        TMDIChild* child = form.ActiveDocument();
        child->showNormal();
        child->resize(900, 640);
        QApplication::processEvents();
        return child;
    }
};

struct AgreementCase {
    int tab;
    int comboIndex;  // -1: as opened
    QString file;
    QString renderOptions;
    bool sameBytes;  // else both are vector files of the same kind
};

TEST_F(ExportCommandTest, WritesWhatRenderWritesForTheSameView) {
    const QString document = sample(QStringLiteral("9"));
    TMDIChild* child = openShown(document);
    // The view is the window's client area: the MDI frame around it is not part of it.
    const QSize client = child->widget()->size();
    const QString size = QStringLiteral("--size %1x%2").arg(client.width()).arg(client.height());
    const AgreementCase cases[] = {
        {TMDIChild::kReverbTab, -1, "reverb.json", "--tab reverb", true},
        {TMDIChild::kReverbTab, 3, "reverb-channel.json", "--tab reverb --channel 3", true},
        {TMDIChild::kGroupDelayTab, -1, "delay.json", "--tab groupdelay", true},
        {TMDIChild::kParametersTab, 2, "memory.txt", "--tab parameters --channel 2", true},
        {TMDIChild::kParametersTab, 0, "sheet.svg", "--tab parameters", true},
        {TMDIChild::kParametersTab, 0, "sheet.pdf", "--tab parameters", false},
        {TMDIChild::kReverbTab, 0, "reverb.svg", "--tab reverb", false},
        {TMDIChild::kGroupDelayTab, -1, "delay.pdf", "--tab groupdelay", false},
    };
    for (const AgreementCase& c : cases) {
        SCOPED_TRACE(c.file.toStdString());
        child->PageControl()->setCurrentIndex(c.tab);
        if (c.comboIndex >= 0) {
            child->Panel1()->ComboChannel()->setCurrentIndex(c.comboIndex);
        }
        QApplication::processEvents();
        const QString exported = folder_.filePath(QStringLiteral("gui-") + c.file);
        const QString rendered = folder_.filePath(QStringLiteral("cli-") + c.file);
        ModalAnswerer answerer;
        answerer.choose(exported);
        form_->Action(QStringLiteral("FileExport"))->trigger();
        EXPECT_TRUE(answerer.allUsed());
        EXPECT_TRUE(answerer.messages().isEmpty()) << answerer.messages().join('\n').toStdString();
        ASSERT_EQ(render(document, c.renderOptions + QLatin1Char(' ') + size, rendered), 0);
        const QByteArray gui = bytesOf(exported);
        const QByteArray cli = bytesOf(rendered);
        ASSERT_FALSE(gui.isEmpty());
        if (c.sameBytes) {
            // Byte for byte; the diff only says where.
            EXPECT_TRUE(gui == cli) << sonalyx::test::unifiedDiff(
                sonalyx::test::readLinesOrFail(rendered.toStdString()),
                sonalyx::test::readLinesOrFail(exported.toStdString()));
        } else {
            EXPECT_EQ(gui.left(5), cli.left(5));
            EXPECT_FALSE(embedsRaster(gui));
            EXPECT_FALSE(embedsRaster(cli));
            EXPECT_EQ(gui.count("/Type /Page\n"), cli.count("/Type /Page\n"));
        }
    }
}

TEST_F(ExportCommandTest, RemembersTheFolderAndFormatAndAddsTheSuffix) {
    TMDIChild* child = openShown(sample(QStringLiteral("10")));
    child->PageControl()->setCurrentIndex(TMDIChild::kGroupDelayTab);
    ASSERT_TRUE(QDir(folder_.path()).mkdir(QStringLiteral("shared")));
    const QString first = folder_.filePath(QStringLiteral("shared/first.json"));
    ModalAnswerer answerer;
    answerer.choose(first).choose(QStringLiteral("again"));
    form_->Action(QStringLiteral("FileExport"))->trigger();
    form_->Action(QStringLiteral("FileExport"))->trigger();
    EXPECT_TRUE(answerer.allUsed());
    const QByteArray again = bytesOf(folder_.filePath(QStringLiteral("shared/again.json")));
    EXPECT_FALSE(again.isEmpty());
    EXPECT_EQ(again, bytesOf(first));
}

TEST_F(ExportCommandTest, RefusesAnEmptyTabAndReportsAFailedWrite) {
    sonalyx::MeasurementDocument doc;
    ASSERT_TRUE(sonalyx::DocumentLoader::load(
        doc, *sonalyx::readDocumentLines(sample(QStringLiteral("5")).toStdString()), "x", nullptr));
    doc.parameterLines.clear();
    std::vector<std::string> lines;
    sonalyx::DocumentWriter::write(doc, lines);
    const QString bare = folder_.filePath(QStringLiteral("bare.csv"));
    ASSERT_TRUE(sonalyx::writeDocumentLinesAtomically(bare.toStdString(), lines));

    TMainForm& form = start();
    EXPECT_FALSE(form.Action(QStringLiteral("FileExport"))->isEnabled());
    ASSERT_TRUE(form.OpenDocumentFile(bare));
    EXPECT_TRUE(form.Action(QStringLiteral("FileExport"))->isEnabled());
    TMDIChild* child = form.ActiveDocument();
    child->PageControl()->setCurrentIndex(TMDIChild::kParametersTab);
    ModalAnswerer answerer;
    form.Action(QStringLiteral("FileExport"))->trigger();
    EXPECT_EQ(answerer.messages(), QStringList{QStringLiteral("No data.|")});

    child->PageControl()->setCurrentIndex(TMDIChild::kReverbTab);
    sonalyx::test::RecordingMessenger messenger;
    ExportCommand command(nullptr, messenger);
    const QString unwritable = folder_.filePath(QStringLiteral("missing/reverb.png"));
    EXPECT_FALSE(command.Write(*child, unwritable));
    ASSERT_EQ(messenger.texts(),
              std::vector<std::string>{"Can't write the file. Please close, if it's opened."});
    EXPECT_NE(messenger.messages[0].secondLine.find("missing/reverb.png"), std::string::npos);
}

}  // namespace
