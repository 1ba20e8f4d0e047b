#pragma once

#include <string>
#include <vector>

#include "emulator/parameter_replies.h"
#include "retrieval/parameter_conversion.h"

// Feeds the emulator's parameter reply bodies to a ParameterConverter in the order a receive
// run converts them, without the serial framing.
namespace sonalyx::test {

ReplyItem toItem(const emulator::Reply& reply);

// SI, SP, EQALL (with the X-curve), DLALL, LVALL, STALL.
std::vector<std::string> convertListReplies(const emulator::ParameterProfile& profile);
// SI, SP, then the fallback: DL, LV, EQ<code> for each present channel, the end.
std::vector<std::string> convertFallbackReplies(const emulator::ParameterProfile& profile);

// A received document's text: the date, the parameters title and memo block, then rows.
std::vector<std::string> documentWithParameters(const std::vector<std::string>& rows);

}  // namespace sonalyx::test
