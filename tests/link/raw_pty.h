#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace sonalyx::test {

// Opens a port the way a serial program would: raw, both directions (-1 when it cannot).
int openRawPort(const std::string& path);
// Reads until count bytes have come or the line stays quiet for two seconds.
std::vector<std::uint8_t> readAtLeast(int fd, std::size_t count);

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
