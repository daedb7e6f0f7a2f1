#include "radio/command_line.h"

#include "base/argument_reader.h"
#include "base/error.h"
#include "base/number_text.h"

namespace memwright::radio {
namespace {

[[noreturn]] void refuse(const std::string& text) { throw ConversionError(text); }

void take_no_value(const ArgumentReader& reader) {
    if (reader.has_own_value()) refuse(reader.name() + " takes no value.");
}

bool value_follows(const ArgumentReader& reader) {
    const std::string* const next = reader.following();
    return reader.has_own_value() || (next != nullptr && !next->starts_with("--"));
}

std::string value_of(ArgumentReader& reader, const std::string& what) {
    const std::string value = value_follows(reader) ? *reader.take_value() : std::string();
    if (value.empty()) refuse(reader.name() + " needs a value: " + what + ".");
    return value;
}

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
    const auto block = whole_number(text);
    if (block && *block >= 0 && *block < kBlocks) return *block;
    refuse("No such block: \"" + text + "\". Blocks are 0 to 239.");
}

void take_short_frames(ArgumentReader& reader, Options& options) {
    do {
        const std::string value = value_of(reader, "a block, 0 to 239, or none");
        if (value != "none") options.short_frames_before.push_back(block_from(value));
    } while (value_follows(reader));
}

void take_faults(ArgumentReader& reader, Options& options) {
    do {
        const std::string value = value_of(reader, "KIND@BLOCK or KIND@BLOCK:BYTE");
        options.faults.push_back(fault_from_text(value));
    } while (value_follows(reader));
}

}  // namespace

CommandLine parse_command_line(std::span<const std::string> list) {
    CommandLine line;
    ArgumentReader reader(list);
    bool own_short_frames = false;
    while (reader.next()) {
        const std::string option = reader.text().starts_with("--") ? reader.name() : reader.text();
        if (option == "--help") {
            take_no_value(reader);
            line.help = true;
        } else if (option == "--version") {
            take_no_value(reader);
            line.version = true;
        } else if (option == "--image") {
            line.image = value_of(reader, "a file");
        } else if (option == "--save") {
            line.save = value_of(reader, "a file");
        } else if (option == "--pace") {
            line.options.pace = pace_from(value_of(reader, "line or none"));
        } else if (option == "--mode") {
            line.options.mode = mode_from(value_of(reader, "auto, send or receive"));
        } else if (option == "--fault") {
            take_faults(reader, line.options);
        } else if (option == "--short-frame") {
            if (!own_short_frames) line.options.short_frames_before.clear();
            own_short_frames = true;
            take_short_frames(reader, line.options);
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
