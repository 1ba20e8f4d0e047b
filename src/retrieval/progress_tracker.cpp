#include "retrieval/progress_tracker.h"

#include <algorithm>

#include "retrieval/receive_plan.h"

namespace sonalyx {

void ProgressTracker::reset() {
    *this = ProgressTracker();
}

void ProgressTracker::setPlan(std::vector<std::string> plan) {
    plan_ = std::move(plan);
    position_ = -1;
    if (sent_.empty())
        return;
    const auto found = std::find(plan_.begin(), plan_.end(), sent_.back());
    if (found == plan_.end()) {
        // Should the plan miss a command that went out, count it rather than lose it.
        const auto at = static_cast<std::ptrdiff_t>(std::min(sent_.size() - 1, plan_.size()));
        plan_.insert(plan_.begin() + at, sent_.back());
        position_ = static_cast<int>(at);
    } else {
        position_ = static_cast<int>(found - plan_.begin());
    }
}

void ProgressTracker::commandSent(const std::string& command) {
    kind_ = describeCommand(command);
    if (!sent_.empty() && sent_.back() == command)
        return;
    sent_.push_back(command);
    if (plan_.empty())
        return;
    const auto from = plan_.begin() + (position_ + 1);
    const auto found = std::find(from, plan_.end(), command);
    if (found == plan_.end()) {
        plan_.insert(from, command);
        ++position_;
    } else {
        position_ = static_cast<int>(found - plan_.begin());
    }
}

void ProgressTracker::complete() {
    complete_ = true;
    kind_.clear();
}

ReceiveProgress ProgressTracker::current() const {
    ReceiveProgress progress;
    progress.kind = kind_;
    progress.total = static_cast<int>(plan_.size());
    if (complete_) {
        progress.total = std::max(progress.total, static_cast<int>(sent_.size()));
        progress.answered = progress.total;
        progress.remainingMs = 0;
        return progress;
    }
    progress.answered =
        plan_.empty() ? std::max(static_cast<int>(sent_.size()) - 1, 0) : std::max(position_, 0);
    if (progress.total > 0 && progress.answered > 0) {
        progress.remainingMs = waitedMs_ * (progress.total - progress.answered) / progress.answered;
    }
    return progress;
}

}  // namespace sonalyx
