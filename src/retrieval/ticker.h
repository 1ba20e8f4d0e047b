#pragma once

namespace sonalyx {

// The main window's shared timer as the receive engine sees it: one pending tick at a time,
// identified by a tag. The owner calls the engine's tick handler with the tag when it fires.
class Ticker {
  public:
    virtual ~Ticker() = default;
    virtual void arm(int tag, int intervalMs) = 0;
    virtual void disarm() = 0;
};

}  // namespace sonalyx
