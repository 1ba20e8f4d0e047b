#include "test_application.h"

#include <QApplication>

namespace sonalyx::test {

// The application lives until the process ends: tearing it down after the tests' own statics
// are gone crashes at exit.
void ensureApplication() {
    if (QCoreApplication::instance() != nullptr) {
        return;
    }
    static int argc = 1;
    static char name[] = "link_tests";
    static char* argv[] = {name, nullptr};
#ifdef SONALYX_NO_WIDGETS
    // Runs without any display: timers and serial ports need no more than this.
    new QCoreApplication(argc, argv);
#else
    // The widgets are tested without a display.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    new QApplication(argc, argv);
#endif
}

}  // namespace sonalyx::test
