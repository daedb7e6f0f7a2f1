#pragma once

// A run of the program with an image of empty memories, whose rows are put, marked and looked at.

#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

#include "app/notice_texts.h"
#include "app/runs_test.h"

namespace memwright {

inline constexpr Colour kGreyText = 0xC0C0C0;

class RowCommandsTest : public RunsTest {
  protected:
    void SetUp() override { run = start_with_a_file(); }

    MSFlexGrid& grid() { return run->form.MSFlexGrid1; }
    AddedEntries& added() { return run->form.added; }
    Notices& notices() { return run->program.notices; }

    // A memory, all of whose columns can be told from those of others.
    void put(int row, const std::string& tag, const std::string& freq = "145.50000") {
        for (int col = columns::kTag; col < columns::kCount; ++col) {
            grid().set_text(row, col, tag + std::to_string(col));
        }
        grid().set_text(row, columns::kTag, tag);
        grid().set_text(row, columns::kFreq, freq);
    }
    void put_all(int first, const std::string& tags) {
        for (const char tag : tags) {
            if (tag != '.') put(first, std::string(1, tag));
            ++first;
        }
    }
    void mark(int first, int last) {
        grid().mouse_down(MouseButton::left, {first, columns::kLabel});
        grid().mouse_up(MouseButton::left, {last, columns::kLabel});
    }
    void go_to(int row) {
        grid().set_row(row);
        grid().set_col(columns::kTag);
    }
    std::string tags(int first, int last) {
        std::string all;
        for (int row = first; row <= last; ++row) {
            const std::string& tag = grid().TextMatrix(row, columns::kTag);
            all += tag.empty() ? "." : tag;
        }
        return all;
    }
    // Texts and colours of all columns, labels included.
    std::vector<std::pair<std::string, Colour>> whole_table() {
        std::vector<std::pair<std::string, Colour>> all;
        for (int row = 0; row < columns::kRows; ++row) {
            for (int col = 0; col < columns::kCount; ++col) {
                all.emplace_back(grid().TextMatrix(row, col), grid().colour(row, col));
            }
        }
        return all;
    }
    // That the last command was one step of this name, and comes back whole.
    void expect_step(const std::string& name,
                     const std::vector<std::pair<std::string, Colour>>& before) {
        EXPECT_EQ(added().undo.caption.get(), "&Undo " + name);
        const auto after = whole_table();
        EXPECT_NE(after, before) << name;
        added().undo.clicked();
        EXPECT_EQ(whole_table(), before) << name;
        added().redo.clicked();
        EXPECT_EQ(whole_table(), after) << name;
        added().undo.clicked();
    }

    std::unique_ptr<Running> run;
};

}  // namespace memwright
