#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "document/messenger.h"
#include "retrieval/parameter_conversion.h"
#include "retrieval/progress_tracker.h"
#include "retrieval/receive_observer.h"
#include "retrieval/reverb_converter.h"
#include "retrieval/serial_link.h"
#include "retrieval/ticker.h"

namespace sonalyx {

// What a receive run fetches and how it is paced.
struct ReceiveOptions {
    std::string portName;
    bool reverb = true;
    bool groupDelay = true;
    bool parameters = true;
    // The "other receive": parameters only; the three kinds above are then ignored.
    bool parametersOnly = false;
    // Interval of the reply poll and the pause before the port is reopened after a bad first
    // reply; shorter values serve tests and tools.
    int tickMs = 1000;
    int reopenPauseMs = 3000;
};

// The dialogue with the receiver that fetches one set of measurements and turns it into the
// text of a new document: reverb, group delay, then the calibration parameters. It is a state
// machine paced by the owner's ticker: every command arms a poll (tag kReplyPollTag), every
// tick reads what has arrived. Messages go through the Messenger; the owner hears progress
// and the end through the ReceiveObserver.
class ReceiveEngine {
  public:
    // Ticker tags: the reply poll, and the pause before the port is reopened.
    static constexpr int kReplyPollTag = 10;
    static constexpr int kReopenTag = 12;

    ReceiveEngine(SerialLink& link, Ticker& ticker, Messenger& messenger,
                  ReceiveObserver& observer);
    ReceiveEngine(const ReceiveEngine&) = delete;
    ReceiveEngine& operator=(const ReceiveEngine&) = delete;
    // Closes the port of a run still going; the observer hears nothing more.
    ~ReceiveEngine();

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
    enum Phase : int { kReverbPhase = 0, kGroupDelayPhase = 1, kParameterPhase = 2, kFallback = 3 };
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

    void SendNextCommand();
    bool HandleReplyStep();
    void RepeatCommand();
    void ReopenAndRepeat();
    void FinishRun();

    void resetRunState();
    void startFullReceive();
    void startOtherReceive();
    void continueWithPhase();
    void sendNextReverbCommand();
    void sendNextGroupDelayCommand();
    void endGroupDelayPhase();
    void sendNextParameterCommand();
    void convertListReply(int entry);
    void sendNextFallbackCommand();
    void enterParameterPhase();
    void assumeConfiguration9();
    void useConfiguration(int configCode);

    bool sendCommand(const std::string& command);
    void armTicker(int tag, int intervalMs);
    void advanceProgress();
    void showProgress(int percent);
    void replan();
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
    int channelCount() const;
    int eqRecordsPerGroup() const;

    void failRun(const std::string& message);
    void clearText();
    void closePort();

    SerialLink& link_;
    Ticker& ticker_;
    Messenger& messenger_;
    ReceiveObserver& observer_;
    ReceiveOptions options_;
    ReverbConverter reverb_;
    ParameterConverter parameters_;

    bool running_ = false;
    bool portOpen_ = false;
    bool textCleared_ = false;
    bool probePending_ = false;
    bool cancelled_ = false;
    int armedTag_ = 0;
    int armedIntervalMs_ = 0;
    std::string failureMessage_;
    ProgressTracker tracker_;
    // The group delay command whose refusal ended that phase early.
    std::string groupDelayEndedAt_;

    // The run state.
    std::vector<std::string> lines_;
    int phase_ = kReverbPhase;
    int infoPending_ = 0;
    int retryCount_ = 0;
    int configCode_ = 0;
    int extended_ = 0;
    std::vector<std::uint8_t> fl1Data_;
    int channelStep_ = 0;
    int dataNumber_ = 1;
    int paramStep_ = 0;
    int attribute_ = 0;
    int pollCount_ = 0;
    int bodyLength_ = 0;
    int readState_ = kExpectHeader;
    std::string lastCommand_;
    std::vector<ReplyItem> items_;
    int itemCount_ = 0;
    int itemIndex_ = 0;
    int subIndex_ = 0;
    std::vector<int> itemAttributes_;
    int afterVariant_ = 0;
    int afterAvailable_ = 1;
    int progressStep_ = 0;
    int progressPosition_ = 0;
    std::vector<std::string> channelCodes_;
    int fallbackChannel_ = 0;
    ErrorSource errorSource_ = ErrorSource::Header;
    std::size_t errorTailLength_ = 0;
};

}  // namespace sonalyx
