#include "receive_engine.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "document/channel_name.h"
#include "document/speaker_layout.h"
#include "retrieval/receive_plan.h"

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
constexpr std::string_view kInformationCommand = "?EI\r";
constexpr std::string_view kWaitingToReopen = "Waiting to reopen the port";

constexpr int kMaxEmptyPolls = 10;
constexpr int kMaxRepeats = 3;
constexpr int kMaxBodyLength = 2048;
constexpr int kProgressCap = 95;
constexpr int kAssumedConfiguration = 9;
constexpr std::size_t kHeaderBytes = 3;
constexpr std::size_t kCountErrorTail = 4;   // 'E' was read, "04" and two more follow
constexpr std::size_t kHeaderErrorTail = 2;  // "E04" was read, two more follow

// Group delay steps; the empty first entry is never sent.
constexpr std::array<std::string_view, 7> kGroupDelaySteps = {"", "F", "S", "C", "B", "ES", "TS"};
constexpr int kGroupDelayEnd = 7;

// Parameter commands by re-mapped step: asked as SI, SP, EQALL, DLALL, LVALL, STALL.
constexpr std::array<std::string_view, 6> kParameterWords = {"SI",    "SP",    "DLALL",
                                                             "LVALL", "STALL", "EQALL"};
constexpr int kParameterEnd = 7;
constexpr int kEqListStep = 6;

// Single-channel codes of the fallback by channel index; empty ones are never asked.
constexpr std::array<std::string_view, 15> kFallbackCodes = {
    "FL", "FR", "SL", "SR", "CT", "SBL", "SBR", "SPBL", "SPBR", "", "", "EXSL", "EXSR", "", "TS"};
// paramStep values of the fallback: which reply is outstanding.
constexpr int kFallbackStart = 2;
constexpr int kFallbackDistance = 3;
constexpr int kFallbackLevel = 4;
constexpr int kFallbackEq = 5;

bool isListCommand(std::string_view command) {
    return command.ends_with("ALL\r");
}

int remapParameterStep(int step) {
    switch (step) {
        case 2:
            return 5;
        case 5:
            return 6;
        case 6:
            return 2;
        default:
            return step;
    }
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
    : link_(link), ticker_(ticker), messenger_(messenger), observer_(observer) {}

ReceiveEngine::~ReceiveEngine() {
    if (running_)
        ticker_.disarm();
    closePort();
}

bool ReceiveEngine::start(const ReceiveOptions& options) {
    if (running_)
        return false;
    options_ = options;
    if (options_.parametersOnly) {
        options_.reverb = options_.groupDelay = false;
        options_.parameters = true;
    } else if (!options_.reverb && !options_.groupDelay && !options_.parameters) {
        return false;
    }
    resetRunState();
    lines_ = {"[DATE]", "", ""};
    if (!link_.open(options_.portName, false))
        return false;
    portOpen_ = true;
    running_ = true;
    if (options_.parametersOnly)
        startOtherReceive();
    else
        startFullReceive();
    probePending_ = true;
    SendNextCommand();
    return true;
}

void ReceiveEngine::resetRunState() {
    reverb_.reset();
    parameters_.reset();
    lines_.clear();
    textCleared_ = false;
    cancelled_ = false;
    armedTag_ = 0;
    armedIntervalMs_ = 0;
    failureMessage_.clear();
    tracker_.reset();
    groupDelayEndedAt_.clear();
    phase_ = kReverbPhase;
    infoPending_ = 0;
    retryCount_ = 0;
    extended_ = 0;
    fl1Data_.clear();
    channelStep_ = 0;
    dataNumber_ = 1;
    paramStep_ = 0;
    attribute_ = 0;
    pollCount_ = 0;
    bodyLength_ = 0;
    readState_ = kExpectHeader;
    lastCommand_.clear();
    items_.clear();
    itemAttributes_.clear();
    itemCount_ = itemIndex_ = subIndex_ = 0;
    afterVariant_ = 0;
    afterAvailable_ = 1;
    progressStep_ = 0;
    progressPosition_ = 0;
    fallbackChannel_ = 0;
    errorTailLength_ = 0;
    // Until the receiver says otherwise its channels are those of configuration 9; the code
    // itself stays unknown (0) so that the first reply's extended flag is read.
    useConfiguration(kAssumedConfiguration);
    configCode_ = 0;
}

void ReceiveEngine::startFullReceive() {
    lines_.insert(lines_.end(), {"  \"Reverb Characteristics\"", "", "[FILEMEMO]", ""});
    if (options_.reverb)
        phase_ = kReverbPhase;
    else if (options_.groupDelay)
        phase_ = kGroupDelayPhase;
    else
        phase_ = kParameterPhase;
    showProgress(0);
}

void ReceiveEngine::startOtherReceive() {
    phase_ = kParameterPhase;
    showProgress(0);
}

void ReceiveEngine::onTick(int tag) {
    if (!running_ || tag != armedTag_)
        return;
    ticker_.disarm();
    armedTag_ = 0;
    tracker_.waited(armedIntervalMs_);
    if (tag == kReopenTag) {
        ReopenAndRepeat();
        return;
    }
    while (running_ && HandleReplyStep()) {
    }
}

// ---- Choosing the next command -------------------------------------------------------------

void ReceiveEngine::SendNextCommand() {
    if (probePending_) {
        // Every run starts with the front-left reverb query: its reply tells whether the
        // receiver speaks the extended protocol.
        probePending_ = false;
        configCode_ = 0;
        infoPending_ = 0;
        extended_ = 0;
        sendNextReverbCommand();
        return;
    }
    continueWithPhase();
}

void ReceiveEngine::continueWithPhase() {
    if (configCode_ != 0) {
        infoPending_ = 0;
    } else if (extended_) {
        infoPending_ = 1;
        sendCommand(std::string(kInformationCommand));
        return;
    } else {
        assumeConfiguration9();
    }
    switch (phase_) {
        case kReverbPhase:
            sendNextReverbCommand();
            break;
        case kGroupDelayPhase:
            if (extended_)
                sendNextGroupDelayCommand();
            else
                FinishRun();
            break;
        case kParameterPhase:
            if (extended_)
                sendNextParameterCommand();
            else
                FinishRun();
            break;
        default:
            sendNextFallbackCommand();
            break;
    }
}

void ReceiveEngine::assumeConfiguration9() {
    useConfiguration(kAssumedConfiguration);
    replan();
}

void ReceiveEngine::cancel() {
    if (!running_)
        return;
    cancelled_ = true;
    clearText();
    FinishRun();
}

// The whole list of commands follows from what the receiver has told so far.
void ReceiveEngine::replan() {
    PlanFacts facts;
    facts.reverb = options_.reverb;
    facts.groupDelay = options_.groupDelay;
    facts.parameters = options_.parameters;
    facts.extended = extended_ != 0;
    facts.channelCodes = channelCodes_;
    facts.configCode = configCode_;
    facts.afterData = afterAvailable_ != 0;
    facts.groupDelayEndedAt = groupDelayEndedAt_;
    facts.fallback = phase_ == kFallback;
    for (int i = 0; i < static_cast<int>(kFallbackCodes.size()); ++i) {
        if (!kFallbackCodes[static_cast<size_t>(i)].empty() &&
            parameters_.fallbackChannelPresent(i))
            facts.fallbackEqCodes.emplace_back(kFallbackCodes[static_cast<size_t>(i)]);
    }
    // Every change of plan is followed by a command or the end, which report it.
    tracker_.setPlan(planCommands(facts));
}

void ReceiveEngine::reportProgress() {
    observer_.progressed(tracker_.current());
}

void ReceiveEngine::useConfiguration(int configCode) {
    configCode_ = configCode;
    channelCodes_.clear();
    if (const SpeakerLayout* layout = layoutByNumber(configCode)) {
        for (int id : layout->channelIds)
            channelCodes_.emplace_back(channelName(id).queryCode);
    } else {
        // A configuration without a channel list: only the front left, asked by the probe.
        channelCodes_.emplace_back("FL");
    }
}

int ReceiveEngine::channelCount() const {
    return static_cast<int>(channelCodes_.size());
}

void ReceiveEngine::sendNextReverbCommand() {
    const int channels = channelCount();
    if (channelStep_ != 0 && channelStep_ >= channels) {
        if (options_.groupDelay && extended_) {
            phase_ = kGroupDelayPhase;
            infoPending_ = 1;
            channelStep_ = 1;
            retryCount_ = 0;
        } else if (options_.parameters && extended_) {
            enterParameterPhase();
        } else {
            FinishRun();
            return;
        }
        continueWithPhase();
        return;
    }
    if (channelStep_ == 1 && afterVariant_ == 0) {
        int following = 0;
        if (extended_) {
            if (options_.groupDelay && options_.parameters)
                following = 10;
            else if (options_.groupDelay)
                following = 2;
            else if (options_.parameters)
                following = 8;
        }
        progressStep_ = (100 - progressPosition_) / (channels + following);
    }
    const std::string command =
        (afterVariant_ ? "?RA" : "?RV") + channelCodes_[static_cast<size_t>(channelStep_)] + "\r";
    // With after-calibration data each channel is asked twice, measured then after.
    if (!afterAvailable_ || !options_.reverb) {
        afterVariant_ = 0;
        ++channelStep_;
    } else if (afterVariant_) {
        ++channelStep_;
    }
    if (!sendCommand(command))
        return;
    progressPosition_ = std::min(progressPosition_ + progressStep_, kProgressCap);
    showProgress(channelStep_ == 1 ? 1 : progressPosition_);
}

void ReceiveEngine::enterParameterPhase() {
    phase_ = kParameterPhase;
    infoPending_ = 1;
    paramStep_ = 0;
    channelStep_ = 1;
    retryCount_ = 0;
}

void ReceiveEngine::sendNextGroupDelayCommand() {
    if (channelStep_ == 1)
        progressStep_ = (100 - progressPosition_) / (options_.parameters ? 10 : 2);
    // "ES" is asked only of configurations 10 and 11, "TS" only of 10.
    if ((configCode_ < 10 && channelStep_ >= 5) || (configCode_ == 11 && channelStep_ >= 6))
        channelStep_ = kGroupDelayEnd;
    if (channelStep_ >= kGroupDelayEnd) {
        endGroupDelayPhase();
        return;
    }
    while (kGroupDelaySteps[static_cast<size_t>(channelStep_)].empty())
        ++channelStep_;
    const std::string command =
        "?FB" + std::string(kGroupDelaySteps[static_cast<size_t>(channelStep_)]) + "\r";
    ++channelStep_;
    if (!sendCommand(command))
        return;
    advanceProgress();
}

void ReceiveEngine::endGroupDelayPhase() {
    if (reverb_.hasGroupDelay()) {
        lines_.insert(lines_.end(),
                      {"", "", "  \"Group Delay Characteristics\"", "", "[FILEMEMO]", ""});
        reverb_.writeGroupDelaySection(lines_);
    }
    if (options_.parameters && extended_) {
        enterParameterPhase();
        continueWithPhase();
    } else {
        FinishRun();
    }
}

void ReceiveEngine::sendNextParameterCommand() {
    const int entry = paramStep_;
    if (entry == 0) {
        progressStep_ = (100 - progressPosition_) / 8;
        lines_.insert(lines_.end(), {"", "", "  \"TORVE Parameters\"", "", "[FILEMEMO]", ""});
    }
    convertListReply(entry);
    const int mapped = remapParameterStep(entry);
    paramStep_ = mapped + 1;
    if (mapped < static_cast<int>(kParameterWords.size())) {
        const std::string_view word = kParameterWords[static_cast<size_t>(mapped)];
        if (!sendCommand("?" + std::string(word) + "\r"))
            return;
        // Only the EQ list is asked again after an error reply; the others end the run.
        if (word != "EQALL")
            lastCommand_.clear();
        advanceProgress();
    }
    if (paramStep_ == kParameterEnd)
        FinishRun();
}

void ReceiveEngine::convertListReply(int entry) {
    switch (entry) {
        case 3:
            parameters_.convertDistanceList(items_, lines_);
            break;
        case 4:
            parameters_.convertLevelList(items_, lines_);
            break;
        case 5:
            parameters_.convertStandingWaveList(items_, lines_);
            break;
        case kEqListStep:
            parameters_.convertEqList(items_, eqRecordsPerGroup(), itemAttributes_, lines_);
            break;
        default:
            break;
    }
}

int ReceiveEngine::eqRecordsPerGroup() const {
    return configCode_ == 11 ? 9 : configCode_;
}

void ReceiveEngine::sendNextFallbackCommand() {
    std::string command;
    if (paramStep_ == kFallbackStart) {
        progressStep_ = (100 - progressPosition_) / 12;
        command = "?DL\r";
        paramStep_ = kFallbackDistance;
    } else if (paramStep_ == kFallbackDistance) {
        command = "?LV\r";
        paramStep_ = kFallbackLevel;
        channelStep_ = 0;
    } else {
        while (channelStep_ < static_cast<int>(kFallbackCodes.size()) &&
               (kFallbackCodes[static_cast<size_t>(channelStep_)].empty() ||
                !parameters_.fallbackChannelPresent(channelStep_)))
            ++channelStep_;
        if (channelStep_ >= static_cast<int>(kFallbackCodes.size())) {
            parameters_.finishFallback(lines_);
            FinishRun();
            return;
        }
        fallbackChannel_ = channelStep_++;
        paramStep_ = kFallbackEq;
        command = "?EQ" + std::string(kFallbackCodes[static_cast<size_t>(fallbackChannel_)]) + "\r";
    }
    if (!sendCommand(command))
        return;
    advanceProgress();
}

// ---- Sending -------------------------------------------------------------------------------

bool ReceiveEngine::sendCommand(const std::string& command) {
    readState_ = isListCommand(command) ? kExpectCount : kExpectHeader;
    pollCount_ = 0;
    lastCommand_ = command;
    if (!link_.send(std::vector<std::uint8_t>(command.begin(), command.end()))) {
        // The link has told the user ("Send failed.").
        clearText();
        FinishRun();
        return false;
    }
    observer_.commandSent(commandText(command));
    tracker_.commandSent(commandText(command));
    reportProgress();
    armTicker(kReplyPollTag, options_.tickMs);
    return true;
}

void ReceiveEngine::armTicker(int tag, int intervalMs) {
    armedTag_ = tag;
    armedIntervalMs_ = intervalMs;
    ticker_.arm(tag, intervalMs);
}

void ReceiveEngine::RepeatCommand() {
    pollCount_ = 0;
    sendCommand(std::string(lastCommand_));
}

void ReceiveEngine::ReopenAndRepeat() {
    pollCount_ = 0;
    closePort();
    if (!link_.open(options_.portName, false)) {
        clearText();
        FinishRun();
        return;
    }
    portOpen_ = true;
    sendCommand(std::string(lastCommand_));
}

void ReceiveEngine::advanceProgress() {
    progressPosition_ = std::min(progressPosition_ + progressStep_, kProgressCap);
    showProgress(progressPosition_);
}

void ReceiveEngine::showProgress(int percent) {
    observer_.progress(percent);
}

// ---- Reading -------------------------------------------------------------------------------

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
        armTicker(kReplyPollTag, options_.tickMs);
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
    itemCount_ = byte[0];
    itemIndex_ = subIndex_ = 0;
    items_.clear();
    itemAttributes_.assign(static_cast<size_t>(itemCount_), 0);
    if (itemCount_ == 0) {
        // An empty list: nothing more follows.
        SendNextCommand();
        return false;
    }
    readState_ = paramStep_ == kEqListStep ? kExpectGroup : kExpectHeader;
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
    itemAttributes_[static_cast<size_t>(itemIndex_)] = byte[0];
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
    if (lastCommand_.empty()) {
        failRun(std::string(kCommandError));
        return;
    }
    ++retryCount_;
    if (retryCount_ < kMaxRepeats) {
        RepeatCommand();
        return;
    }
    if (lastCommand_ == kAfterFrontLeftCommand) {
        // This receiver keeps no after-calibration data: ask measured values only.
        afterAvailable_ = 0;
        retryCount_ = 0;
        afterVariant_ = 0;
        ++dataNumber_;
        replan();
        SendNextCommand();
    } else if (phase_ == kGroupDelayPhase) {
        channelStep_ = kGroupDelayEnd;
        groupDelayEndedAt_ = commandText(lastCommand_);
        replan();
        SendNextCommand();
    } else if (phase_ == kParameterPhase && source == ErrorSource::CountByte) {
        // The EQ list is refused: ask channel by channel.
        phase_ = kFallback;
        paramStep_ = kFallbackStart;
        retryCount_ = 0;
        replan();
        SendNextCommand();
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
    if (infoPending_) {
        bodyLength_ = header[1] * 256 + header[2];
        if (bodyLength_ != 2 && bodyLength_ != 4) {
            failRun(std::string(kCommandError));
            return false;
        }
        readState_ = kExpectBody;
        return true;
    }
    attribute_ = header[0];
    if (configCode_ == 0)
        extended_ = header[1] & 0x80;
    bodyLength_ = (header[1] & 0x7F) * 256 + header[2];
    if (bodyLength_ == 0)
        return handleEmptyReply();
    if (lastCommand_ == kProbeCommand && bodyLength_ != 576 && bodyLength_ != 384) {
        if (retryCount_ != 0) {
            failRun(std::string(kIllegalDataSize));
            return false;
        }
        // A first reply of the wrong size: give the receiver a moment, then start afresh.
        ++retryCount_;
        tracker_.setKind(std::string(kWaitingToReopen));
        reportProgress();
        armTicker(kReopenTag, options_.reopenPauseMs);
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
    if (phase_ == kReverbPhase) {
        if (isExtendedProbe())
            fl1Data_.clear();
        else
            reverb_.writeDataBlock(dataNumber_, afterVariant_ != 0, false, {}, lines_);
        advanceReverbBlock();
    }
    SendNextCommand();
    return false;
}

bool ReceiveEngine::readBody() {
    std::vector<std::uint8_t> body;
    if (readBytes(static_cast<std::size_t>(bodyLength_), body) != Read::Ready)
        return false;
    if (infoPending_) {
        handleInformation(body);
        return false;
    }
    switch (phase_) {
        case kReverbPhase:
            handleReverbBody(body);
            return false;
        case kGroupDelayPhase:
            if (configCode_ > 0 && (attribute_ & 0xF0) < 0xF0)
                reverb_.convertGroupDelay(attribute_, body);
            SendNextCommand();
            return false;
        case kParameterPhase:
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
    useConfiguration(configCode);
    reverb_.setConfiguration(configCode, bandSelector, infoA);
    parameters_.setConfiguration(configCode, bandSelector);
    reverb_.writeHeader(lines_);
    if (options_.reverb)
        reverb_.writeDataBlock(1, false, !fl1Data_.empty(), fl1Data_, lines_);
    replan();
    SendNextCommand();
}

bool ReceiveEngine::isExtendedProbe() const {
    return phase_ == kReverbPhase && channelStep_ == 0 && afterVariant_ == 0 && extended_ != 0;
}

void ReceiveEngine::handleReverbBody(const std::vector<std::uint8_t>& body) {
    if (isExtendedProbe()) {
        // The front-left block waits until "?EI" has named the configuration.
        if (attribute_ < 16)
            fl1Data_ = body;
        else
            fl1Data_.clear();
        afterVariant_ = 1;
        SendNextCommand();
        return;
    }
    const bool valid = (attribute_ & 0xF0) < 0xF0;
    reverb_.writeDataBlock(dataNumber_, afterVariant_ != 0, valid, body, lines_);
    advanceReverbBlock();
    SendNextCommand();
}

// With after-calibration data a channel's measured and after blocks share one number.
void ReceiveEngine::advanceReverbBlock() {
    if (!afterAvailable_) {
        ++dataNumber_;
    } else if (afterVariant_) {
        afterVariant_ = 0;
        ++dataNumber_;
    } else {
        afterVariant_ = 1;
    }
}

bool ReceiveEngine::isListItem() const {
    return phase_ == kParameterPhase && paramStep_ >= 3;
}

bool ReceiveEngine::handleParameterBody(std::vector<std::uint8_t> body) {
    if (isListItem())
        return storeListItem(std::move(body));
    if (paramStep_ == 1)
        parameters_.convertSystemInfo(body);
    else if (paramStep_ == 2)
        parameters_.convertSpeakerSetting(attribute_, body, lines_);
    SendNextCommand();
    return false;
}

bool ReceiveEngine::storeListItem(std::vector<std::uint8_t> body) {
    const bool eqList = paramStep_ == kEqListStep;
    const int perGroup = eqList ? std::max(eqRecordsPerGroup(), 1) : 1;
    const size_t slot = static_cast<size_t>(itemIndex_ * perGroup + subIndex_);
    if (items_.size() <= slot)
        items_.resize(slot + 1);
    items_[slot] = ReplyItem{attribute_, std::move(body)};
    ++subIndex_;
    if (subIndex_ < perGroup) {
        readState_ = kExpectGroup;
        return true;
    }
    ++itemIndex_;
    if (itemIndex_ >= itemCount_) {
        SendNextCommand();
        return false;
    }
    subIndex_ = 0;
    readState_ = eqList ? kExpectGroup : kExpectHeader;
    return true;
}

void ReceiveEngine::handleFallbackBody(const std::vector<std::uint8_t>& body) {
    const ReplyItem reply{attribute_, body};
    switch (paramStep_) {
        case kFallbackDistance:
            parameters_.convertSingleDistance(reply, lines_);
            break;
        case kFallbackLevel:
            parameters_.convertSingleLevel(reply, lines_);
            break;
        default:
            parameters_.convertSingleEq(fallbackChannel_, reply, lines_);
            break;
    }
    SendNextCommand();
}

// ---- Ending --------------------------------------------------------------------------------

void ReceiveEngine::failRun(const std::string& message) {
    failureMessage_ = message;
    clearText();
    FinishRun();
    messenger_.show(message, "", MessageMode::Ok);
}

void ReceiveEngine::clearText() {
    lines_.clear();
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
        result.lines = std::move(lines_);
        tracker_.complete();
        reportProgress();
    }
    lines_.clear();
    observer_.finished(result);
}

}  // namespace sonalyx
