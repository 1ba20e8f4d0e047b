#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace sonalyx::test {

// A bare pseudo-terminal whose far end the test drives byte by byte.
class RawPty {
  public:
    RawPty();
    ~RawPty();
    RawPty(const RawPty&) = delete;
    RawPty& operator=(const RawPty&) = delete;

    const std::string& portPath() const { return portPath_; }
    void write(const std::vector<std::uint8_t>& bytes);
    // What the computer sent so far (waits briefly for it).
    std::vector<std::uint8_t> readSent(std::size_t count);
    // Pulls the cable: both ends close.
    void hangUp();

  private:
    int master_ = -1;
    int portSide_ = -1;
    std::string portPath_;
};

}  // namespace sonalyx::test
