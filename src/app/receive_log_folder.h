#pragma once

#include <QDateTime>
#include <QString>

namespace sonalyx {

// Where the exchange logs of the program's receive runs are kept: "receive-logs" in the user's
// data folder, the newest runs only.
class ReceiveLogFolder {
  public:
    static constexpr int kKeptRuns = 20;

    static QString path();
    // Creates the folder when missing; false when it cannot be made.
    static bool make();
    // The file for a run starting at `now`, with room made for it: of the older logs only the
    // newest kKeptRuns - 1 stay. Empty when the folder cannot be made.
    static QString newLogFile(const QDateTime& now = QDateTime::currentDateTime());
};

}  // namespace sonalyx
