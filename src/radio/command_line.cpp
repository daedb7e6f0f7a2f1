#include "radio/command_line.h"

#include <charconv>
#include <optional>

#include "base/error.h"

namespace memwright::radio {
namespace {

[[noreturn]] void refuse(const std::string& text) { throw ConversionError(text); }

// The arguments one after the other; "--name=value" counts as two.
class Arguments {
  public:
    explicit Arguments(std::span<const std::string> rest) : rest_(rest) {}

    bool more() const { return inline_value_ || !rest_.empty(); }

    std::string option() {
        if (inline_value_) refuse(option_ + " takes no value.");
        option_ = rest_.front();
        rest_ = rest_.subspan(1);
        const auto equals = option_.find('=');
        if (option_.starts_with("--") && equals != std::string::npos) {
            inline_value_ = option_.substr(equals + 1);
            option_.resize(equals);
        }
        return option_;
    }

    bool value_follows() const {
        return inline_value_ || (!rest_.empty() && !rest_.front().starts_with("--"));
    }

    std::string value(const std::string& what) {
        if (!value_follows()) refuse(option_ + " needs a value: " + what + ".");
        std::string value = inline_value_ ? *inline_value_ : rest_.front();
        if (!inline_value_) rest_ = rest_.subspan(1);
        inline_value_.reset();
        if (value.empty()) refuse(option_ + " needs a value: " + what + ".");
        return value;
    }

  private:
    std::span<const std::string> rest_;
    std::string option_;
    std::optional<std::string> inline_value_;
};

Pace pace_from(const std::string& text) {
    if (text == "line") return Pace::line;
    if (text == "none") return Pace::none;
    refuse("No such pace: \"" + text + "\". It is line or none.");
}

Mode mode_from(const std::string& text) {
    if (text == "auto") return Mode::automatic;
    if (text == "send") return Mode::send;
    if (text == "receive") return Mode::receive;
    refuse("No such mode: \"" + text + "\". It is auto, send or receive.");
}

int block_from(const std::string& text) {
    int block = -1;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, block);
    if (error == std::errc{} && stop == end && block >= 0 && block < kBlocks) return block;
    refuse("No such block: \"" + text + "\". Blocks are 0 to 239.");
}

void take_short_frames(Arguments& arguments, Options& options) {
    do {
        const std::string value = arguments.value("a block, 0 to 239, or none");
        if (value != "none") options.short_frames_before.push_back(block_from(value));
    } while (arguments.value_follows());
}

void take_faults(Arguments& arguments, Options& options) {
    do {
        const std::string value = arguments.value("KIND@BLOCK or KIND@BLOCK:BYTE");
        options.faults.push_back(fault_from_text(value));
    } while (arguments.value_follows());
}

}  // namespace

CommandLine parse_command_line(std::span<const std::string> list) {
    CommandLine line;
    Arguments arguments(list);
    bool own_short_frames = false;
    while (arguments.more()) {
        const std::string option = arguments.option();
        if (option == "--help") {
            line.help = true;
        } else if (option == "--version") {
            line.version = true;
        } else if (option == "--image") {
            line.image = arguments.value("a file");
        } else if (option == "--save") {
            line.save = arguments.value("a file");
        } else if (option == "--pace") {
            line.options.pace = pace_from(arguments.value("line or none"));
        } else if (option == "--mode") {
            line.options.mode = mode_from(arguments.value("auto, send or receive"));
        } else if (option == "--fault") {
            take_faults(arguments, line.options);
        } else if (option == "--short-frame") {
            if (!own_short_frames) line.options.short_frames_before.clear();
            own_short_frames = true;
            take_short_frames(arguments, line.options);
        } else {
            refuse("No such argument: \"" + option + "\".");
        }
    }
    return line;
}

std::string help_text() {
    return R"(Usage: vr120-sim [OPTION]...
Plays a VR-120 receiver in clone mode at the end of a pseudo-terminal, whose path
is the first line that it prints. Ends on SIGTERM and SIGINT, and when it hangs up.

  --image FILE     send these 7392 bytes (otherwise: a demonstration memory)
  --save FILE      write what is received to FILE, each time that all of it came well
  --pace line      take the time that the bytes need at 9600 baud (this is the default)
  --pace none      take no time
  --mode auto      send when the line has been open and silent for a second, receive
                   when an opening frame arrives; what was received is what is sent
                   next (this is the default)
  --mode send      send as soon as the line is opened
  --mode receive   only receive
  --short-frame BLOCK...
                   answer with an 8-byte frame before these blocks instead of before
                   40, 120 and 200; "none" for never
  --fault KIND@BLOCK[:BYTE]...
                   let something go wrong at BLOCK: 0 to 239, opening or closing. Each
                   fault happens once; list it twice to have it in two transfers.
                   All but trickle happen to what is received, too.
      checksum        the checksum is wrong
      missing-byte    byte BYTE of the frame is left out
      extra-byte      there is a byte more before byte BYTE
      silence         nothing is sent after BYTE bytes until the line is opened anew
      garbage         random bytes come instead, from byte BYTE on
      hang-up         the line drops after BYTE bytes of the frame, sent or received
      block-number    the block has the number BYTE, 231 (if not given) to 255
      trickle         the first BYTE bytes (7 if not given) come slowly
      flipped-bit     a bit of byte BYTE is flipped
      doubled         the first BYTE bytes (all if not given) come twice
  --help           print this and exit
  --version        print the version and exit)";
}

}  // namespace memwright::radio
