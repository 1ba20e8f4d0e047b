#pragma once

#include <string>
#include <vector>

#include "emulator/parameter_replies.h"
#include "retrieval/parameter_conversion.h"

// Feeds the emulator's parameter reply bodies to a ParameterConverter in the order a receive
// run converts them, without the serial framing: the rows a received document would carry.
namespace sonalyx::emulator {

ReplyItem toItem(const Reply& reply);

// SI, SP, EQALL (with the X-curve), DLALL, LVALL, STALL.
std::vector<std::string> convertListReplies(const ParameterProfile& profile);
// SI, SP, then the fallback: DL, LV, EQ<code> for each present channel, the end.
std::vector<std::string> convertFallbackReplies(const ParameterProfile& profile);

}  // namespace sonalyx::emulator
