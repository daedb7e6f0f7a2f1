// The radio's end of the line, with the other end opened and closed between two looks.

#include "radio/pseudo_terminal.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <array>

namespace memwright::radio {
namespace {

using Bytes = std::vector<std::uint8_t>;

// The computer's end, in one process with the radio's: nothing happens between two looks but what
// the test does.
class OtherEnd {
  public:
    explicit OtherEnd(const PseudoTerminal& line)
        : descriptor_(open(line.path().c_str(), O_RDWR | O_NOCTTY)) {}
    OtherEnd(const OtherEnd&) = delete;
    OtherEnd& operator=(const OtherEnd&) = delete;
    ~OtherEnd() { close(descriptor_); }

    void write(const Bytes& bytes) const {
        EXPECT_EQ(::write(descriptor_, bytes.data(), bytes.size()),
                  static_cast<ssize_t>(bytes.size()));
    }
    Bytes read() const {
        std::array<std::uint8_t, 64> bytes{};
        const ssize_t length = ::read(descriptor_, bytes.data(), bytes.size());
        return {bytes.begin(), bytes.begin() + std::max<ssize_t>(length, 0)};
    }

  private:
    int descriptor_;
};

PseudoTerminal::Activity look_at(PseudoTerminal& line) { return line.wait(PseudoTerminal::now()); }

TEST(PseudoTerminal, tells_of_an_opening_then_of_bytes_then_of_a_closing) {
    PseudoTerminal line;
    {
        const OtherEnd other(line);
        EXPECT_TRUE(look_at(line).opened);
        other.write({1, 2, 3});
        EXPECT_EQ(look_at(line).bytes_before, (Bytes{1, 2, 3}));
        EXPECT_EQ(line.send(Bytes{4, 5}), 0U);
        EXPECT_EQ(other.read(), (Bytes{4, 5}));
    }
    EXPECT_TRUE(look_at(line).closed);
}

TEST(PseudoTerminal, tells_of_what_was_sent_by_one_who_opened_and_closed_at_once) {
    PseudoTerminal line;
    { OtherEnd(line).write({1, 2, 3}); }
    const PseudoTerminal::Activity first = look_at(line);
    EXPECT_TRUE(first.opened);
    EXPECT_FALSE(first.closed);
    EXPECT_EQ(first.bytes_before, Bytes{});
    EXPECT_EQ(first.bytes_after, (Bytes{1, 2, 3}));
    const PseudoTerminal::Activity second = look_at(line);
    EXPECT_TRUE(second.closed);
    EXPECT_FALSE(second.opened);
}

}  // namespace
}  // namespace memwright::radio
