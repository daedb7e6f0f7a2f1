// The rules themselves: that each of them catches what it is for.

#include "architecture/rules.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace memwright::architecture {
namespace {

TEST(IncludeRule, a_folder_may_include_itself_and_the_folders_below_it) {
    EXPECT_EQ(wrong_include("image", "image/layout.h"), "");
    EXPECT_EQ(wrong_include("image", "base/error.h"), "");
    EXPECT_EQ(wrong_include("app", "table/channel_table.h"), "");
    EXPECT_EQ(wrong_include("qt", "app/form1.h"), "");
    EXPECT_EQ(wrong_include("cli", "link/clone_read.h"), "");
    EXPECT_EQ(wrong_include("qt", "qt/window.h"), "");
    EXPECT_EQ(wrong_include("qt", "window.moc"), "");
}

TEST(IncludeRule, a_folder_may_not_include_one_above_it) {
    for (std::size_t lower = 0; lower < kOrder.size(); ++lower) {
        for (std::size_t higher = lower + 1; higher < kOrder.size(); ++higher) {
            const std::string header = std::string(kOrder[higher]) + "/x.h";
            EXPECT_NE(wrong_include(kOrder[lower], header), "") << kOrder[lower] << " " << header;
        }
    }
}

TEST(IncludeRule, nobody_includes_the_folders_at_the_top) {
    for (const char* from :
         {"base", "platform", "native", "image", "table", "files", "link", "app", "qt", "cli"}) {
        for (const char* to : {"radio", "qt", "cli"}) {
            if (std::string(from) == to) continue;
            EXPECT_NE(wrong_include(from, std::string(to) + "/x.h"), "") << from << " " << to;
        }
    }
}

TEST(IncludeRule, the_radio_knows_the_image_and_what_that_stands_on) {
    EXPECT_EQ(wrong_include("radio", "image/layout.h"), "");
    EXPECT_EQ(wrong_include("radio", "base/error.h"), "");
    EXPECT_EQ(wrong_include("radio", "radio/line.h"), "");
    for (const char* to : {"table", "files", "link", "app", "qt", "cli"}) {
        EXPECT_NE(wrong_include("radio", std::string(to) + "/x.h"), "") << to;
    }
}

TEST(IncludeRule, headers_are_named_from_the_source_folder_on) {
    EXPECT_NE(wrong_include("app", "../image/layout.h"), "");
    EXPECT_NE(wrong_include("app", "util/text.h"), "");
}

TEST(IncludeRule, Qt_headers_are_known_by_their_names) {
    for (const char* header : {"QWidget", "QtWidgets/QWidget", "QtGlobal", "qglobal.h"}) {
        EXPECT_TRUE(is_qt_header(header)) << header;
    }
    for (const char* header : {"queue", "string", "qt/window.h", "image/layout.h"}) {
        EXPECT_FALSE(is_qt_header(header)) << header;
    }
}

TEST(IncludeRule, an_include_is_read_in_any_way_that_it_can_be_written) {
    EXPECT_EQ(include_of("#include <vector>").header, "vector");
    EXPECT_FALSE(include_of("#include <vector>").quoted);
    EXPECT_EQ(include_of("#include \"image/layout.h\"").header, "image/layout.h");
    EXPECT_TRUE(include_of("#include \"image/layout.h\"").quoted);
    EXPECT_EQ(include_of("  #  include\t\"a/b.h\"  // why").header, "a/b.h");
    EXPECT_EQ(include_of("#include\"a/b.h\"").header, "a/b.h");
    EXPECT_EQ(include_of("// #include <vector>").header, "");
    EXPECT_EQ(include_of("#define X").header, "");
    EXPECT_EQ(include_of("#").header, "");
    EXPECT_EQ(include_of("").header, "");
}

TEST(ShapeRule, a_header_begins_with_pragma_once) {
    EXPECT_EQ(wrong_shape("a.h", {"#pragma once", ""}), "");
    EXPECT_NE(wrong_shape("a.h", {"", "#pragma once"}), "");
    EXPECT_NE(wrong_shape("a.h", {"#ifndef A_H"}), "");
    EXPECT_NE(wrong_shape("a.h", {}), "");
    EXPECT_EQ(wrong_shape("a.cpp", {"#include <vector>"}), "");
    EXPECT_EQ(wrong_shape("a.md", {}), "");
}

TEST(ShapeRule, files_stay_short) {
    EXPECT_EQ(wrong_shape("a.h", std::vector<std::string>(199, "#pragma once")), "");
    EXPECT_NE(wrong_shape("a.h", std::vector<std::string>(200, "#pragma once")), "");
    EXPECT_EQ(wrong_shape("a.cpp", std::vector<std::string>(399)), "");
    EXPECT_NE(wrong_shape("a.cpp", std::vector<std::string>(400)), "");
    EXPECT_EQ(wrong_shape("a.md", std::vector<std::string>(4000)), "");
}

}  // namespace
}  // namespace memwright::architecture
