#include "test_application.h"

#include <QApplication>

namespace sonalyx::test {

void ensureApplication() {
    if (QCoreApplication::instance() != nullptr) {
        return;
    }
    static int argc = 1;
    static char name[] = "link_tests";
    static char* argv[] = {name, nullptr};
#ifdef SONALYX_NO_WIDGETS
    // Runs without any display: timers and serial ports need no more than this.
    static QCoreApplication application(argc, argv);
#else
    static QApplication application(argc, argv);
#endif
}

}  // namespace sonalyx::test
