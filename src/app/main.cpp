#include <QApplication>
#include <QCommandLineParser>
#include <QSettings>
#include <QStyleFactory>
#include <memory>

#include "app/brand_art.h"
#include "app/main_form.h"

namespace {

// SONALYX_NO_SPLASH=1 (or --no-splash) starts without the splash, as scripts and tests want.
bool splashWanted(const QCommandLineParser& parser) {
    return !parser.isSet(QStringLiteral("no-splash")) &&
           qEnvironmentVariableIntValue("SONALYX_NO_SPLASH") == 0;
}

}  // namespace

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("veltrona"));
    QApplication::setApplicationName(QStringLiteral("Sonalyx"));
    // No display name: the window system would append it to every caption ("Sonalyx — Veltrona
    // Sonalyx"), and each window's caption is already what the user should read.
    QApplication::setApplicationVersion(QStringLiteral("2.2"));
    QApplication::setDesktopFileName(QStringLiteral("sonalyx"));
    QApplication::setWindowIcon(BrandArt::ApplicationIcon());
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Views, prints and keeps room calibration measurements."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOption({QStringLiteral("no-splash"), QStringLiteral("Start without the splash.")});
    parser.addOption({QStringLiteral("settings"),
                      QStringLiteral("Keep the settings (file history, last port, window "
                                     "place) in this ini file instead of the user's."),
                      QStringLiteral("file")});
    parser.addOption({QStringLiteral("port"),
                      QStringLiteral("Offer this serial port first when receiving (repeatable)."),
                      QStringLiteral("name")});
    parser.addPositionalArgument(QStringLiteral("files"), QStringLiteral("Documents to open."),
                                 QStringLiteral("[files...]"));
    parser.process(app);

    std::unique_ptr<QSettings> settings;
    if (parser.isSet(QStringLiteral("settings"))) {
        settings = std::make_unique<QSettings>(parser.value(QStringLiteral("settings")),
                                               QSettings::IniFormat);
    }
    MainFormOptions options;
    options.settings = settings.get();
    options.files = parser.positionalArguments();
    options.showSplash = splashWanted(parser);
    options.ports = parser.values(QStringLiteral("port"));

    TMainForm form(options);
    form.show();
    return QApplication::exec();
}
