#include "receive_engine.h"

#include <algorithm>
#include <string_view>

namespace sonalyx {

namespace {

constexpr std::string_view kCommandError = "Command error occurred. Please try again.";
constexpr std::string_view kIllegalDataSize =
    "Command error occurred. Please try again.(Illegal data size)";
constexpr std::string_view kTooLongData =
    "Command error occurred. Please try again.(Too long data)";
constexpr std::string_view kTimeout = "Timeout occurred.";

constexpr std::string_view kProbeCommand = "?RVFL\r";
constexpr std::string_view kAfterFrontLeftCommand = "?RAFL\r";
constexpr std::string_view kWaitingToReopen = "Waiting to reopen the port";

constexpr int kMaxEmptyPolls = 10;
constexpr int kMaxRepeats = 3;
constexpr int kMaxBodyLength = 2048;
constexpr std::size_t kHeaderBytes = 3;
constexpr std::size_t kCountErrorTail = 4;   // 'E' was read, "04" and two more follow
constexpr std::size_t kHeaderErrorTail = 2;  // "E04" was read, two more follow

bool isListCommand(std::string_view command) {
    return command.ends_with("ALL\r");
}

std::string commandText(std::string_view command) {
    std::string text(command);
    if (!text.empty() && text.back() == '\r')
        text.pop_back();
    return text;
}

}  // namespace

ReceiveEngine::ReceiveEngine(SerialLink& link, Ticker& ticker, Messenger& messenger,
                             ReceiveObserver& observer)
    : link_(link),
      ticker_(ticker),
      messenger_(messenger),
      observer_(observer),
      commands_(run_, *this) {}

ReceiveEngine::~ReceiveEngine() {
    if (running_)
        ticker_.disarm();
    closePort();
}

bool ReceiveEngine::start(const ReceiveOptions& options) {
    if (running_)
        return false;
    run_.options = options;
    if (run_.options.parametersOnly) {
        run_.options.reverb = run_.options.groupDelay = false;
        run_.options.parameters = true;
    } else if (!run_.options.reverb && !run_.options.groupDelay && !run_.options.parameters) {
        return false;
    }
    resetRunState();
    run_.lines = {"[DATE]", "", ""};
    if (!link_.open(run_.options.portName, false))
        return false;
    portOpen_ = true;
    running_ = true;
    if (run_.options.parametersOnly)
        startOtherReceive();
    else
        startFullReceive();
    run_.probePending = true;
    commands_.SendNextCommand();
    return true;
}

void ReceiveEngine::resetRunState() {
    run_.reset();
    textCleared_ = false;
    cancelled_ = false;
    armedTag_ = 0;
    armedIntervalMs_ = 0;
    failureMessage_.clear();
    pollCount_ = 0;
    bodyLength_ = 0;
    readState_ = kExpectHeader;
    errorTailLength_ = 0;
}

void ReceiveEngine::startFullReceive() {
    run_.lines.insert(run_.lines.end(), {"  \"Reverb Characteristics\"", "", "[FILEMEMO]", ""});
    if (run_.options.reverb)
        run_.phase = ReceiveRun::kReverbPhase;
    else if (run_.options.groupDelay)
        run_.phase = ReceiveRun::kGroupDelayPhase;
    else
        run_.phase = ReceiveRun::kParameterPhase;
    showProgress(0);
}

void ReceiveEngine::startOtherReceive() {
    run_.phase = ReceiveRun::kParameterPhase;
    showProgress(0);
}

void ReceiveEngine::onTick(int tag) {
    if (!running_ || tag != armedTag_)
        return;
    ticker_.disarm();
    armedTag_ = 0;
    run_.tracker.waited(armedIntervalMs_);
    if (tag == kReopenTag) {
        ReopenAndRepeat();
        return;
    }
    while (running_ && HandleReplyStep()) {
    }
}

void ReceiveEngine::cancel() {
    if (!running_)
        return;
    cancelled_ = true;
    clearText();
    FinishRun();
}

void ReceiveEngine::reportProgress() {
    observer_.progressed(run_.tracker.current());
}

// ---- Sending -----------------------------------------------------------------------------------

bool ReceiveEngine::sendCommand(const std::string& command) {
    readState_ = isListCommand(command) ? kExpectCount : kExpectHeader;
    pollCount_ = 0;
    run_.lastCommand = command;
    if (!link_.send(std::vector<std::uint8_t>(command.begin(), command.end()))) {
        // The link has told the user ("Send failed.").
        clearText();
        FinishRun();
        return false;
    }
    observer_.commandSent(commandText(command));
    run_.tracker.commandSent(commandText(command));
    reportProgress();
    armTicker(kReplyPollTag, run_.options.tickMs);
    return true;
}

void ReceiveEngine::armTicker(int tag, int intervalMs) {
    armedTag_ = tag;
    armedIntervalMs_ = intervalMs;
    ticker_.arm(tag, intervalMs);
}

void ReceiveEngine::RepeatCommand() {
    pollCount_ = 0;
    sendCommand(std::string(run_.lastCommand));
}

void ReceiveEngine::ReopenAndRepeat() {
    pollCount_ = 0;
    closePort();
    if (!link_.open(run_.options.portName, false)) {
        clearText();
        FinishRun();
        return;
    }
    portOpen_ = true;
    sendCommand(std::string(run_.lastCommand));
}

void ReceiveEngine::showProgress(int percent) {
    observer_.progress(percent);
}

// ---- Reading -----------------------------------------------------------------------------------

bool ReceiveEngine::HandleReplyStep() {
    if (pollCount_ >= kMaxEmptyPolls) {
        failRun(std::string(kTimeout));
        return false;
    }
    switch (readState_) {
        case kExpectCount:
            return readCountByte();
        case kExpectGroup:
            return readGroupByte();
        case kExpectHeader:
            return readHeader();
        case kExpectBody:
            return readBody();
        default:
            return readErrorTail();
    }
}

ReceiveEngine::Read ReceiveEngine::readBytes(std::size_t count, std::vector<std::uint8_t>& out) {
    out.clear();
    if (!link_.receive(count, out)) {
        // The link has told the user ("Receive failed.").
        clearText();
        FinishRun();
        return Read::Failed;
    }
    if (out.size() < count) {
        ++pollCount_;
        armTicker(kReplyPollTag, run_.options.tickMs);
        return Read::Waiting;
    }
    pollCount_ = 0;
    return Read::Ready;
}

bool ReceiveEngine::readCountByte() {
    std::vector<std::uint8_t> byte;
    if (readBytes(1, byte) != Read::Ready)
        return false;
    if (byte[0] == 'E') {
        errorSource_ = ErrorSource::CountByte;
        errorTailLength_ = kCountErrorTail;
        readState_ = kExpectErrorTail;
        return true;
    }
    run_.itemCount = byte[0];
    run_.itemIndex = run_.subIndex = 0;
    run_.items.clear();
    run_.itemAttributes.assign(static_cast<size_t>(run_.itemCount), 0);
    if (run_.itemCount == 0) {
        // An empty list: nothing more follows.
        commands_.SendNextCommand();
        return false;
    }
    readState_ = run_.paramStep == ReceiveRun::kEqListStep ? kExpectGroup : kExpectHeader;
    return true;
}

bool ReceiveEngine::readGroupByte() {
    std::vector<std::uint8_t> byte;
    if (readBytes(1, byte) != Read::Ready)
        return false;
    if (byte[0] == 'E') {
        failRun(std::string(kCommandError));
        return false;
    }
    run_.itemAttributes[static_cast<size_t>(run_.itemIndex)] = byte[0];
    readState_ = kExpectHeader;
    return true;
}

bool ReceiveEngine::readErrorTail() {
    std::vector<std::uint8_t> tail;
    if (readBytes(errorTailLength_, tail) != Read::Ready)
        return false;
    if (errorSource_ == ErrorSource::CountByte && !(tail[0] == '0' && tail[1] == '4')) {
        failRun(std::string(kCommandError));
        return false;
    }
    handleErrorReply(errorSource_);
    return false;
}

void ReceiveEngine::handleErrorReply(ErrorSource source) {
    // Only a kept command is asked again; the others cannot be repeated.
    if (run_.lastCommand.empty()) {
        failRun(std::string(kCommandError));
        return;
    }
    ++run_.retryCount;
    if (run_.retryCount < kMaxRepeats) {
        RepeatCommand();
        return;
    }
    if (run_.lastCommand == kAfterFrontLeftCommand) {
        // This receiver keeps no after-calibration data: ask measured values only.
        run_.afterAvailable = 0;
        run_.retryCount = 0;
        run_.afterVariant = 0;
        ++run_.dataNumber;
        run_.replan();
        commands_.SendNextCommand();
    } else if (run_.phase == ReceiveRun::kGroupDelayPhase) {
        run_.channelStep = ReceiveRun::kGroupDelayEnd;
        run_.groupDelayEndedAt = commandText(run_.lastCommand);
        run_.replan();
        commands_.SendNextCommand();
    } else if (run_.phase == ReceiveRun::kParameterPhase && source == ErrorSource::CountByte) {
        // The EQ list is refused: ask channel by channel.
        run_.phase = ReceiveRun::kFallback;
        run_.paramStep = ReceiveRun::kFallbackStart;
        run_.retryCount = 0;
        run_.replan();
        commands_.SendNextCommand();
    } else {
        failRun(std::string(kCommandError));
    }
}

bool ReceiveEngine::readHeader() {
    std::vector<std::uint8_t> header;
    if (readBytes(kHeaderBytes, header) != Read::Ready)
        return false;
    if (header[0] == 'E' && header[1] == '0' && header[2] == '4') {
        errorSource_ = ErrorSource::Header;
        errorTailLength_ = kHeaderErrorTail;
        readState_ = kExpectErrorTail;
        return true;
    }
    if (run_.infoPending) {
        bodyLength_ = header[1] * 256 + header[2];
        if (bodyLength_ != 2 && bodyLength_ != 4) {
            failRun(std::string(kCommandError));
            return false;
        }
        readState_ = kExpectBody;
        return true;
    }
    run_.attribute = header[0];
    if (run_.configCode == 0)
        run_.extended = header[1] & 0x80;
    bodyLength_ = (header[1] & 0x7F) * 256 + header[2];
    if (bodyLength_ == 0)
        return handleEmptyReply();
    if (run_.lastCommand == kProbeCommand && bodyLength_ != 576 && bodyLength_ != 384) {
        if (run_.retryCount != 0) {
            failRun(std::string(kIllegalDataSize));
            return false;
        }
        // A first reply of the wrong size: give the receiver a moment, then start afresh.
        ++run_.retryCount;
        run_.tracker.setKind(std::string(kWaitingToReopen));
        reportProgress();
        armTicker(kReopenTag, run_.options.reopenPauseMs);
        return false;
    }
    if (bodyLength_ > kMaxBodyLength) {
        failRun(std::string(kTooLongData));
        return false;
    }
    readState_ = kExpectBody;
    return true;
}

bool ReceiveEngine::handleEmptyReply() {
    if (isListItem())
        return storeListItem({});
    if (run_.phase == ReceiveRun::kReverbPhase) {
        if (isExtendedProbe())
            run_.fl1Data.clear();
        else
            run_.reverb.writeDataBlock(run_.dataNumber, run_.afterVariant != 0, false, {},
                                       run_.lines);
        advanceReverbBlock();
    }
    commands_.SendNextCommand();
    return false;
}

bool ReceiveEngine::readBody() {
    std::vector<std::uint8_t> body;
    if (readBytes(static_cast<std::size_t>(bodyLength_), body) != Read::Ready)
        return false;
    if (run_.infoPending) {
        handleInformation(body);
        return false;
    }
    switch (run_.phase) {
        case ReceiveRun::kReverbPhase:
            handleReverbBody(body);
            return false;
        case ReceiveRun::kGroupDelayPhase:
            if (run_.configCode > 0 && (run_.attribute & 0xF0) < 0xF0)
                run_.reverb.convertGroupDelay(run_.attribute, body);
            commands_.SendNextCommand();
            return false;
        case ReceiveRun::kParameterPhase:
            return handleParameterBody(std::move(body));
        default:
            handleFallbackBody(body);
            return false;
    }
}

void ReceiveEngine::handleInformation(const std::vector<std::uint8_t>& body) {
    const int configCode = body[0];
    if (configCode == 0) {
        // A receiver that cannot name its configuration cannot be asked for its channels.
        failRun(std::string(kCommandError));
        return;
    }
    const int bandSelector = body[1];
    const int infoA = body.size() == 4 ? body[2] : 0;
    run_.useConfiguration(configCode);
    run_.reverb.setConfiguration(configCode, bandSelector, infoA);
    run_.parameters.setConfiguration(configCode, bandSelector);
    run_.reverb.writeHeader(run_.lines);
    if (run_.options.reverb)
        run_.reverb.writeDataBlock(1, false, !run_.fl1Data.empty(), run_.fl1Data, run_.lines);
    run_.replan();
    commands_.SendNextCommand();
}

bool ReceiveEngine::isExtendedProbe() const {
    return run_.phase == ReceiveRun::kReverbPhase && run_.channelStep == 0 &&
           run_.afterVariant == 0 && run_.extended != 0;
}

void ReceiveEngine::handleReverbBody(const std::vector<std::uint8_t>& body) {
    if (isExtendedProbe()) {
        // The front-left block waits until "?EI" has named the configuration.
        if (run_.attribute < 16)
            run_.fl1Data = body;
        else
            run_.fl1Data.clear();
        run_.afterVariant = 1;
        commands_.SendNextCommand();
        return;
    }
    const bool valid = (run_.attribute & 0xF0) < 0xF0;
    run_.reverb.writeDataBlock(run_.dataNumber, run_.afterVariant != 0, valid, body, run_.lines);
    advanceReverbBlock();
    commands_.SendNextCommand();
}

// With after-calibration data a channel's measured and after blocks share one number.
void ReceiveEngine::advanceReverbBlock() {
    if (!run_.afterAvailable) {
        ++run_.dataNumber;
    } else if (run_.afterVariant) {
        run_.afterVariant = 0;
        ++run_.dataNumber;
    } else {
        run_.afterVariant = 1;
    }
}

bool ReceiveEngine::isListItem() const {
    return run_.phase == ReceiveRun::kParameterPhase && run_.paramStep >= 3;
}

bool ReceiveEngine::handleParameterBody(std::vector<std::uint8_t> body) {
    if (isListItem())
        return storeListItem(std::move(body));
    if (run_.paramStep == 1)
        run_.parameters.convertSystemInfo(body);
    else if (run_.paramStep == 2)
        run_.parameters.convertSpeakerSetting(run_.attribute, body, run_.lines);
    commands_.SendNextCommand();
    return false;
}

bool ReceiveEngine::storeListItem(std::vector<std::uint8_t> body) {
    const bool eqList = run_.paramStep == ReceiveRun::kEqListStep;
    const int perGroup = eqList ? std::max(run_.eqRecordsPerGroup(), 1) : 1;
    const size_t slot = static_cast<size_t>(run_.itemIndex * perGroup + run_.subIndex);
    if (run_.items.size() <= slot)
        run_.items.resize(slot + 1);
    run_.items[slot] = ReplyItem{run_.attribute, std::move(body)};
    ++run_.subIndex;
    if (run_.subIndex < perGroup) {
        readState_ = kExpectGroup;
        return true;
    }
    ++run_.itemIndex;
    if (run_.itemIndex >= run_.itemCount) {
        commands_.SendNextCommand();
        return false;
    }
    run_.subIndex = 0;
    readState_ = eqList ? kExpectGroup : kExpectHeader;
    return true;
}

void ReceiveEngine::handleFallbackBody(const std::vector<std::uint8_t>& body) {
    const ReplyItem reply{run_.attribute, body};
    switch (run_.paramStep) {
        case ReceiveRun::kFallbackDistance:
            run_.parameters.convertSingleDistance(reply, run_.lines);
            break;
        case ReceiveRun::kFallbackLevel:
            run_.parameters.convertSingleLevel(reply, run_.lines);
            break;
        default:
            run_.parameters.convertSingleEq(run_.fallbackChannel, reply, run_.lines);
            break;
    }
    commands_.SendNextCommand();
}

// ---- Ending ------------------------------------------------------------------------------------

void ReceiveEngine::failRun(const std::string& message) {
    failureMessage_ = message;
    clearText();
    FinishRun();
    messenger_.show(message, "", MessageMode::Ok);
}

void ReceiveEngine::clearText() {
    run_.lines.clear();
    textCleared_ = true;
}

void ReceiveEngine::closePort() {
    if (!portOpen_)
        return;
    portOpen_ = false;
    link_.close();
}

void ReceiveEngine::FinishRun() {
    ticker_.disarm();
    armedTag_ = 0;
    closePort();
    running_ = false;
    ReceiveResult result;
    result.success = !textCleared_;
    result.cancelled = cancelled_;
    result.message = failureMessage_;
    if (result.success) {
        result.lines = std::move(run_.lines);
        run_.tracker.complete();
        reportProgress();
    }
    run_.lines.clear();
    observer_.finished(result);
}

}  // namespace sonalyx
