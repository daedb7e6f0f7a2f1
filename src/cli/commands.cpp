#include "cli/commands.h"

namespace memwright::cli {

// Which memories, limits and settings an image holds, and where, is told by docs/image-format.md.
const std::vector<Command>& commands() {
    static const std::vector<Command> all = {
        {"channels",
         "IMAGE [--format text|csv|json] [--all]",
         "show the channel memories",
         "Shows the occupied memories of an image file, as the table of the window shows them.\n"
         "\n"
         "  --format FORMAT  text (a table), csv (as export, but in UTF-8) or json\n"
         "  --all            all 640 memories\n"
         "\n"
         "Example: memwright-cli channels --format json radio.120 | jq -r '.[].tag'\n",
         {{{"--format", true}, {"--all", false}}, 1, 1},
         channels},
        {"export",
         "IMAGE [CSV]",
         "write the channel list as CSV",
         "Writes the channel list of an image file as CSV, as the window exports it: in the\n"
         "radio's character set, Windows-1252. Without CSV to standard output.\n"
         "\n"
         "Example: memwright-cli export radio.120 channels.csv\n",
         {{}, 1, 2},
         export_csv},
        {"import",
         "IMAGE CSV [--output OUT]",
         "take a channel list from CSV into an image",
         "Takes the memories that a CSV file names into an image file, as the window imports and\n"
         "saves them. Other memories stay. Nothing is written if a line cannot be used.\n"
         "\n"
         "  --output OUT     write the image to OUT and leave IMAGE as it is\n"
         "\n"
         "Example: memwright-cli import radio.120 channels.csv --output new.120\n",
         {{{"--output", true}}, 2, 2},
         import_csv},
        {"settings",
         "IMAGE [NAME=VALUE]... [--format text|json] [--output OUT]",
         "show or change the set-mode settings",
         "Shows the set-mode settings of an image file; with NAME=VALUE changes them, and no "
         "other\n"
         "byte of the file. NAME is as shown, VALUE the text of a choice.\n"
         "\n"
         "  --format FORMAT  text (NAME=VALUE lines) or json\n"
         "  --output OUT     write the image to OUT and leave IMAGE as it is\n"
         "\n"
         "The radio keeps scan-mode and key-beep in one place: Bank goes with OFF, All with ON.\n"
         "\n"
         "Example: memwright-cli settings radio.120 \"scan-resume=5 Sec\" "
         "linked-scan-bands=0,3,9\n",
         {{{"--format", true}, {"--output", true}}, 1, 1000},
         settings},
        {"limits",
         "IMAGE [N=FREQ[,MODE]]... [--format text|json] [--output OUT]",
         "show or change the search limits",
         "Shows the search limits 0 to 17 of an image file; with N=FREQ or N=FREQ,MODE changes\n"
         "them, and no other byte of the file. FREQ is in MHz and is corrected as in the window;\n"
         "MODE is AUTO, NFM, WFM or AM.\n"
         "\n"
         "  --format FORMAT  text (N=FREQ,MODE lines) or json\n"
         "  --output OUT     write the image to OUT and leave IMAGE as it is\n"
         "\n"
         "Example: memwright-cli limits radio.120 0=144,NFM 1=146,NFM\n",
         {{{"--format", true}, {"--output", true}}, 1, 1000},
         limits},
        {"diff",
         "A B [--format text|json]",
         "compare two images",
         "Compares two image files: memory by memory, setting by setting, limit by limit, and "
         "then\n"
         "all other bytes. Ends with 1 if they differ.\n"
         "\n"
         "  --format FORMAT  text or json\n"
         "\n"
         "Example: memwright-cli diff yesterday.120 today.120\n",
         {{{"--format", true}}, 2, 2},
         diff},
        {"check",
         "IMAGE",
         "say what looks wrong in an image",
         "Says what looks wrong in an image file, where, and why it matters. Ends with 1 if there\n"
         "is something.\n"
         "\n"
         "Example: memwright-cli check radio.120\n",
         {{}, 1, 1},
         check},
        {"read",
         "OUT [--com N=DEVICE|--port DEVICE] [--yes]",
         "read the radio's memory (clone read)",
         "Reads the memory of a radio into a file: its 7392 bytes as they come. Ctrl-C stops and\n"
         "leaves OUT as it was.\n"
         "\n"
         "  --port DEVICE    the serial device; otherwise the one that the window would use\n"
         "  --com N=DEVICE   the device for COM N\n"
         "  --yes            begin without waiting for Enter\n"
         "\n"
         "Example: memwright-cli read --port /dev/ttyUSB0 --yes backup.120\n",
         {{{"--com", true}, {"--port", true}, {"--yes", false}}, 1, 1},
         read_radio},
        {"write",
         "IMAGE [--com N=DEVICE|--port DEVICE] [--yes]",
         "write an image into the radio (clone write)",
         "Sends an image file to a radio, byte for byte as it stands. Ctrl-C stops; the radio "
         "then\n"
         "holds a part of it only and has to be written again.\n"
         "\n"
         "  --port DEVICE    the serial device; otherwise the one that the window would use\n"
         "  --com N=DEVICE   the device for COM N\n"
         "  --yes            begin without waiting for Enter\n"
         "\n"
         "Example: memwright-cli write --port /dev/ttyUSB0 backup.120\n",
         {{{"--com", true}, {"--port", true}, {"--yes", false}}, 1, 1},
         write_radio},
        {"ports",
         "",
         "list the serial devices",
         "Lists the serial devices and which COM n each of them is.\n"
         "\n"
         "Example: memwright-cli ports\n",
         {{}, 0, 0},
         ports},
        {"archive",
         "[show IMAGE|restore IMAGE OUT]",
         "images that came from radios or went to them",
         "Lists the images that were read from radios or written to them, and those of tables "
         "that\n"
         "were in no file when the window closed them (set aside), the latest first: the last 50\n"
         "distinct ones of either are kept. Shows the channels of one, or restores it into a "
         "file.\n"
         "IMAGE is a name or a number of the list.\n"
         "\n"
         "Example: memwright-cli archive restore 1 lost.120\n",
         {{}, 0, 3},
         archive},
        {"print",
         "IMAGE --pdf OUT [--range A-B]",
         "print the channel table into a PDF file",
         "Prints the rows 1 to 240 of the channel table as a PDF file, in the pages that the "
         "window\n"
         "prints.\n"
         "\n"
         "  --pdf OUT        the PDF file\n"
         "  --range A-B      only the rows A to B, of 1 to 240\n"
         "\n"
         "Example: memwright-cli print radio.120 --pdf channels.pdf --range 1-64\n",
         {{{"--pdf", true}, {"--range", true}}, 1, 1},
         print},
    };
    return all;
}

}  // namespace memwright::cli
