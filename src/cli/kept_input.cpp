#include "cli/kept_input.h"

#include "cli/arguments.h"

namespace memwright::cli {

void keep_input(StreamFiles& files, const Input& input, const Output& output) {
    if (!files.replaces(output.path, input.path)) return;
    throw WrongUsage(output.path + " is the file that is read as " + input.argument + ": " +
                     output.content + " would replace it.\nNothing was written. Name another " +
                     "file for " + output.argument + ".");
}

}  // namespace memwright::cli
