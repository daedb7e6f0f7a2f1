#pragma once

// Texts in UTF-8 on their way to a terminal. It takes control characters for commands, and some
// others for a change of the direction of writing, which makes a text look like another one. Those,
// and bytes that are no UTF-8, are question marks.

#include <string>
#include <string_view>

namespace memwright {

// Lines and tabs stay. A line that ended with "\r\n" ends with "\n".
std::string printable(std::string_view text);

// A name or label among other words: ends of lines and tabs are question marks, too.
std::string printable_in_line(std::string_view text);

}  // namespace memwright
