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
    static QApplication application(argc, argv);
}

}  // namespace sonalyx::test
