#include <QApplication>
#include <QCommandLineParser>
#include <QSettings>
#include <QStyleFactory>
#include <memory>

#include "app/brand_art.h"
#include "app/main_form.h"
#include "sonalyx_version.h"

namespace {

// SONALYX_NO_SPLASH=1 (or --no-splash) starts without the splash, as scripts and tests want.
bool splashWanted(const QCommandLineParser& parser) {
    return !parser.isSet(QStringLiteral("no-splash")) &&
           qEnvironmentVariableIntValue("SONALYX_NO_SPLASH") == 0;
}

void nameApplication() {
    QCoreApplication::setOrganizationName(QStringLiteral("veltrona"));
    QCoreApplication::setApplicationName(QStringLiteral("Sonalyx"));
    QCoreApplication::setApplicationVersion(QStringLiteral(SONALYX_VERSION));
}

void describeOptions(QCommandLineParser& parser) {
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
}

// --help and --version answer on the terminal even where no display can be reached.
bool asksForTextOnly(int argc, char* argv[]) {
    for (int i = 1; i < argc; ++i) {
        const QByteArray arg(argv[i]);
        if (arg == "-h" || arg == "--help" || arg == "--help-all" || arg == "-v" ||
            arg == "--version")
            return true;
    }
    return false;
}

}  // namespace

int main(int argc, char* argv[]) {
    QCommandLineParser parser;
    if (asksForTextOnly(argc, argv)) {
        QCoreApplication app(argc, argv);
        nameApplication();
        describeOptions(parser);
        parser.process(app);
        return 0;
    }
    QApplication app(argc, argv);
    nameApplication();
    // No display name: the window system would append it to every caption ("Sonalyx — Veltrona
    // Sonalyx"), and each window's caption is already what the user should read.
    QApplication::setDesktopFileName(QStringLiteral("sonalyx"));
    QApplication::setWindowIcon(BrandArt::ApplicationIcon());
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    describeOptions(parser);
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
