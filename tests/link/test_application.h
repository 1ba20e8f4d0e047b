#pragma once

namespace sonalyx::test {

// Makes sure a QApplication exists (widgets, timers and serial ports need one).
void ensureApplication();

}  // namespace sonalyx::test
