// The reader of JSON takes what is JSON, and refuses what is nearly so.

#include "cli/support/json.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace memwright::cli_tests {
namespace {

TEST(JsonReader, reads_every_kind_of_value) {
    const Json json = read_json(
        " {\"a\": [1, -2.5e1, true, false, null], \"b\": {}, \"\": \"\\\"\\\\\\u0007\xC3\xA4\"}\n");
    EXPECT_EQ(json.names(), (std::vector<std::string>{"a", "b", ""}));
    EXPECT_EQ(json["a"], (Json{JsonArray{{1.0}, {-25.0}, {true}, {false}, {nullptr}}}));
    EXPECT_TRUE(json["b"].object().empty());
    EXPECT_EQ(json[""].text(), "\"\\\a\xC3\xA4");
}

TEST(JsonReader, refuses_what_is_not_JSON) {
    for (const char* const text :
         {"",     "[1,]",  "[1 2]",    "{\"a\":1,}",   "{a:1}",   "{'a':1}",   "[01]",
          "[1.]", "[+1]",  "\"a",      "\"\n\"",       "\"\\x\"", "\"\\u12\"", "{\"a\":1,\"a\":2}",
          "[1]]", "[1] x", "\"\xE4\"", "\"\xC0\x80\"", "nul",     "// no\n1"}) {
        EXPECT_THROW(read_json(text), std::runtime_error) << text;
    }
}

}  // namespace
}  // namespace memwright::cli_tests
