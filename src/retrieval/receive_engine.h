#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "document/messenger.h"
#include "retrieval/receive_commands.h"
#include "retrieval/receive_observer.h"
#include "retrieval/receive_run.h"
#include "retrieval/serial_link.h"
#include "retrieval/ticker.h"

namespace sonalyx {

// The dialogue with the receiver that fetches one set of measurements and turns it into the
// text of a new document: reverb, group delay, then the calibration parameters. It is a state
// machine paced by the owner's ticker: every command arms a poll (tag kReplyPollTag), every
// tick reads what has arrived. Messages go through the Messenger; the owner hears progress
// and the end through the ReceiveObserver. It reads the replies; ReceiveCommands chooses what
// to ask next.
class ReceiveEngine : private CommandSender {
  public:
    // Ticker tags: the reply poll, and the pause before the port is reopened.
    static constexpr int kReplyPollTag = 10;
    static constexpr int kReopenTag = 12;

    ReceiveEngine(SerialLink& link, Ticker& ticker, Messenger& messenger,
                  ReceiveObserver& observer);
    ReceiveEngine(const ReceiveEngine&) = delete;
    ReceiveEngine& operator=(const ReceiveEngine&) = delete;
    // Closes the port of a run still going; the observer hears nothing more.
    ~ReceiveEngine() override;

    // Opens the port (monitor off) and sends the first command. False when a run is already
    // going, when no kind is selected (nothing is said), or when the open failed (the link told
    // the user). When the first send fails, finished() has already been called on return.
    bool start(const ReceiveOptions& options);
    // The owner's ticker fired with this tag. Ticks that were not armed are ignored.
    void onTick(int tag);
    // Ends a run at once at the user's wish: the port is closed, everything collected is
    // dropped and nothing is said; the observer hears a cancelled result.
    void cancel();
    bool isRunning() const { return running_; }

  private:
    // Values of readState; the last one waits for the rest of an "E04" reply.
    enum ReadState : int {
        kExpectCount = -2,
        kExpectGroup = -1,
        kExpectHeader = 0,
        kExpectBody = 1,
        kExpectErrorTail = 2,
    };
    enum class ErrorSource { CountByte, Header };
    enum class Read { Ready, Waiting, Failed };

    bool sendCommand(const std::string& command) override;
    void FinishRun() override;
    void showProgress(int percent) override;

    bool HandleReplyStep();
    void RepeatCommand();
    void ReopenAndRepeat();

    void resetRunState();
    void startFullReceive();
    void startOtherReceive();
    void armTicker(int tag, int intervalMs);
    void reportProgress();

    Read readBytes(std::size_t count, std::vector<std::uint8_t>& out);
    bool readCountByte();
    bool readGroupByte();
    bool readHeader();
    bool readBody();
    bool readErrorTail();
    void handleErrorReply(ErrorSource source);
    bool handleEmptyReply();
    void handleInformation(const std::vector<std::uint8_t>& body);
    void handleReverbBody(const std::vector<std::uint8_t>& body);
    bool handleParameterBody(std::vector<std::uint8_t> body);
    bool isListItem() const;
    bool storeListItem(std::vector<std::uint8_t> body);
    void handleFallbackBody(const std::vector<std::uint8_t>& body);
    bool isExtendedProbe() const;
    void advanceReverbBlock();

    void failRun(const std::string& message);
    void clearText();
    void closePort();

    SerialLink& link_;
    Ticker& ticker_;
    Messenger& messenger_;
    ReceiveObserver& observer_;
    ReceiveRun run_;
    ReceiveCommands commands_;

    bool running_ = false;
    bool portOpen_ = false;
    bool textCleared_ = false;
    bool cancelled_ = false;
    int armedTag_ = 0;
    int armedIntervalMs_ = 0;
    std::string failureMessage_;

    // Where the reply being read stands.
    int pollCount_ = 0;
    int bodyLength_ = 0;
    int readState_ = kExpectHeader;
    ErrorSource errorSource_ = ErrorSource::Header;
    std::size_t errorTailLength_ = 0;
};

}  // namespace sonalyx
