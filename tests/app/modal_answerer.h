#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <deque>
#include <functional>

// Answers the modal windows the code under test opens, as a user would: message dialogs by
// their buttons, file dialogs with a path (or cancel), any other modal window by closing it.
// It records what each message dialog said, as "first line|second line", and counts the
// messages that came up while an always-on-top window was up.
class ModalAnswerer : public QObject {
    Q_OBJECT

  public:
    ModalAnswerer();

    // Next message dialog: press "YES", "NO", "CANCEL" or "OK".
    ModalAnswerer& press(const QString& button);
    // Next file dialog: choose this path; an empty path cancels.
    ModalAnswerer& choose(const QString& path);
    // Next other modal window: handed to look first (which may pick, accept or reject), then
    // accepted if still open.
    ModalAnswerer& inspect(std::function<void(QWidget&)> look);

    // Called with each message dialog as it comes up, before it is answered.
    ModalAnswerer& onMessage(std::function<void(QWidget&)> look);

    const QStringList& messages() const { return messages_; }
    int covered() const { return covered_; }
    const QStringList& otherWindows() const { return others_; }
    int unexpected() const { return unexpected_; }
    bool allUsed() const { return answers_.empty(); }

  private:
    void poll();

    struct Reply {
        bool file = false;
        QString value;
    };
    std::deque<Reply> answers_;
    std::deque<std::function<void(QWidget&)>> looks_;
    QStringList messages_;
    QStringList others_;
    std::function<void(QWidget&)> onMessage_;
    int unexpected_ = 0;
    int covered_ = 0;
    QTimer timer_;
};
