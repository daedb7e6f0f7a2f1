#include <string>
#include <vector>

#include "cli/commands.h"

int main(int count, char** arguments) {
    return memwright::cli::run({arguments + 1, arguments + count});
}
