// What holds of every dialog: its title, its keys, its buttons, its looks.

#include <gmock/gmock.h>

#include <QAbstractButton>
#include <map>

#include "gui/support/appearance.h"
#include "gui/support/dialog_subjects.h"
#include "gui/support/dialog_test.h"

namespace memwright::gui {
namespace {

using ::testing::ElementsAreArray;
using ::testing::IsEmpty;

using Texts = std::vector<std::string>;

void press_on(QDialog& dialog, const char* name, Qt::Key which) {
    part(dialog, name).setFocus();
    key(dialog, which);
}

class EveryDialog : public DialogTest, public ::testing::WithParamInterface<DialogContract> {
  protected:
    const DialogContract& contract() const { return GetParam(); }

    // What the dialog has stored when the work has closed it.
    Texts stored_by(const std::function<void(DialogSubject&, QDialog&)>& work) {
        const auto subject = contract().make();
        subject->show(views_, [&](QDialog& dialog) { work(*subject, dialog); });
        return subject->stored();
    }
    Texts stored_after_change(const Reply& close) {
        return stored_by([&](DialogSubject& subject, QDialog& dialog) {
            subject.change(dialog);
            close(dialog);
        });
    }
    // Opens it for a look, and closes it.
    void look_at(const std::function<void(QDialog&)>& at) {
        stored_by([&](DialogSubject& /*subject*/, QDialog& dialog) {
            at(dialog);
            dialog.close();
        });
    }
};

TEST_P(EveryDialog, has_its_title_and_belongs_to_the_window) {
    look_at([&](QDialog& dialog) {
        EXPECT_EQ(qt::to_utf8(dialog.objectName()), contract().object);
        EXPECT_EQ(qt::to_utf8(dialog.windowTitle()), contract().title);
        EXPECT_EQ(dialog.parentWidget(), &owner_);
        EXPECT_TRUE(dialog.isModal());
        EXPECT_EQ(part<QAbstractButton>(dialog, "Command1").text(), "&OK");
        if (contract().can_cancel()) {
            EXPECT_EQ(part<QAbstractButton>(dialog, "Command2").text(), "&Cancel");
        }
    });
}

TEST_P(EveryDialog, begins_at_its_first_control_and_tab_goes_through_all_and_back) {
    look_at([&](QDialog& dialog) {
        const Texts& there = contract().tour;
        EXPECT_THAT(tab_tour(dialog), ElementsAreArray(there));
        Texts back(there.rbegin(), there.rend());
        std::ranges::rotate(back, back.end() - 1);
        EXPECT_THAT(tab_tour(dialog, Qt::Key_Backtab), ElementsAreArray(back));
    });
}

TEST_P(EveryDialog, has_mnemonics_that_are_unique_and_lead_to_their_controls) {
    look_at([&](QDialog& dialog) {
        std::string letters;
        for (const auto& [letter, name] : mnemonics(dialog)) {
            letters += letter;
            if (name.starts_with("Command")) continue;  // these close it
            alt(dialog, letter);
            EXPECT_EQ(focused(), name);
        }
        EXPECT_EQ(letters, contract().mnemonics);
    });
}

TEST_P(EveryDialog, has_a_spoken_name_of_its_own_for_every_control) {
    look_at([&](QDialog& dialog) {
        std::map<std::string, std::string> names;
        for (const std::string& control : contract().tour) {
            const std::string name = spoken_name(part(dialog, control));
            EXPECT_FALSE(name.empty()) << control;
            EXPECT_EQ(name.find('&'), std::string::npos) << name;
            EXPECT_TRUE(names.emplace(name, control).second) << name;
        }
    });
}

TEST_P(EveryDialog, stores_what_was_changed_however_it_is_accepted) {
    const std::vector<Reply> ways = {
        [](QDialog& dialog) { key(dialog, Qt::Key_Return); },
        [](QDialog& dialog) { key(dialog, Qt::Key_Enter, Qt::KeypadModifier); },
        [](QDialog& dialog) { alt(dialog, 'O'); },
        [](QDialog& dialog) { click(dialog, "Command1"); },
        [](QDialog& dialog) { press_on(dialog, "Command1", Qt::Key_Space); }};
    for (std::size_t way = 0; way < ways.size(); ++way) {
        EXPECT_THAT(stored_after_change(ways[way]), ElementsAreArray(contract().stores))
            << "way " << way;
    }
}

TEST_P(EveryDialog, is_accepted_by_enter_in_every_control_but_cancel) {
    for (const std::string& name : contract().tour) {
        if (name == "Command2") continue;
        EXPECT_THAT(stored_after_change([&](QDialog& dialog) {
                        press_on(dialog, name.c_str(), Qt::Key_Return);
                        EXPECT_FALSE(dialog.isVisible()) << name;
                        dialog.reject();
                    }),
                    ElementsAreArray(contract().stores))
            << name;
    }
}

TEST_P(EveryDialog, stores_nothing_however_it_is_cancelled) {
    std::vector<Reply> ways = {[](QDialog& dialog) { key(dialog, Qt::Key_Escape); },
                               [](QDialog& dialog) { dialog.close(); }};
    if (contract().can_cancel()) {
        ways.insert(ways.end(),
                    {[](QDialog& dialog) { alt(dialog, 'C'); },
                     [](QDialog& dialog) { click(dialog, "Command2"); },
                     [](QDialog& dialog) { press_on(dialog, "Command2", Qt::Key_Return); }});
    }
    for (std::size_t way = 0; way < ways.size(); ++way) {
        EXPECT_THAT(stored_after_change(ways[way]), IsEmpty()) << "way " << way;
    }
}

std::string name_of(const ::testing::TestParamInfo<DialogContract>& contract) {
    return contract.param.name;
}

INSTANTIATE_TEST_SUITE_P(Of, EveryDialog, ::testing::ValuesIn(dialog_contracts()), name_of);

// Once more at other scales.
class DialogLooks : public EveryDialog {};

TEST_P(DialogLooks, are_as_large_as_the_contents_and_readable_in_either_palette) {
    const QString widest = contract().widest_text;
    look_at([&](QDialog& dialog) { expect_good_looks(dialog, widest); });
    const WithPalette dark(dark_palette());
    look_at([&](QDialog& dialog) { expect_good_looks(dialog, widest); });
}

INSTANTIATE_TEST_SUITE_P(Of, DialogLooks, ::testing::ValuesIn(dialog_contracts()), name_of);

}  // namespace
}  // namespace memwright::gui
