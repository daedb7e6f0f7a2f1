#include "gui/support/dialog_subjects.h"

#include <QComboBox>
#include <QLineEdit>
#include <algorithm>
#include <optional>

#include "app/dialogs.h"
#include "app/fill_series.h"
#include "app/frm_limit_search.h"
#include "app/frm_misc_setting.h"
#include "app/frm_print.h"
#include "app/move_to.h"
#include "app/radio_image.h"
#include "fakes/memory_settings.h"
#include "gui/support/dialog_test.h"
#include "gui/support/plugged_devices.h"

namespace memwright::gui {
namespace {

using Texts = std::vector<std::string>;

void choose_entry(QDialog& dialog, const char* list, int entry) {
    part<QComboBox>(dialog, list).setFocus();
    key(dialog, Qt::Key_Home);
    for (int i = 0; i < entry; ++i) key(dialog, Qt::Key_Down);
}

void type_over(QDialog& dialog, const char* box, const char* text) {
    part<QLineEdit>(dialog, box).setFocus();
    key(dialog, Qt::Key_A, Qt::ControlModifier);
    type(dialog, text);
}

// A dialog that changes bytes of the radio's memory.
template <class Form>
class ImageSubject : public DialogSubject {
  public:
    void show(qt::QtDialogViews& views, const Reply& work) override {
        before_ = radio_.image();
        Form form(radio_.store());
        answering({work}, [&] { views.show_modal(form); });
    }
    Texts stored() const override { return radio_.changes_from(before_); }

  protected:
    RadioImage radio_;

  private:
    MemoryImage before_;
};

class SettingsSubject final : public ImageSubject<frmMiscSetting> {
  public:
    void change(QDialog& dialog) override { choose_entry(dialog, "Combo10", 2); }
};

class LimitsSubject final : public ImageSubject<frmLimitSearch> {
  public:
    LimitsSubject() { radio_.put(7152, {0x11, 0x60, 0x00, 0x01}); }
    void change(QDialog& dialog) override { type_over(dialog, "Text1(16)", "200"); }
};

class PortSubject final : public DialogSubject {
  public:
    void show(qt::QtDialogViews& views, const Reply& work) override {
        ComPorts ports(devices_, settings_, {});
        Form2 form(settings_, ports);
        answering({work}, [&] { views.show_modal(form); });
    }
    void change(QDialog& dialog) override {
        choose_entry(dialog, "Combo1", 2);
        choose_entry(dialog, "DeviceList", 1);
    }
    Texts stored() const override {
        Texts all;
        for (const auto& [key, value] : settings_.values) all.push_back(key + "=" + value);
        return all;
    }

  private:
    PluggedDevices devices_;
    fakes::MemorySettings settings_;
};

class PrintSubject final : public DialogSubject {
  public:
    void show(qt::QtDialogViews& views, const Reply& work) override {
        frmPrint form;
        answering({work}, [&] { views.show_modal(form); });
        wanted_ = form.wanted();
    }
    void change(QDialog& dialog) override { type_over(dialog, "Text1", "7"); }
    Texts stored() const override {
        if (!wanted_) return {};
        return {std::to_string(wanted_->first) + " to " + std::to_string(wanted_->last)};
    }

  private:
    std::optional<frmPrint::Range> wanted_;
};

class SeriesSubject final : public DialogSubject {
  public:
    void show(qt::QtDialogViews& views, const Reply& work) override {
        TableRows rows(2);
        rows[0].at(columns::kFreq).text = "145.50000";
        FillSeries form(std::move(rows), 1, {});
        answering({work}, [&] { views.show_modal(form); });
        if (form.wanted()) next_ = form.wanted()->rows[1].text(columns::kFreq);
    }
    void change(QDialog& dialog) override { type_over(dialog, "StepBox", "-6,25"); }
    Texts stored() const override { return next_.empty() ? Texts{} : Texts{next_}; }

  private:
    std::string next_;
};

class MoveSubject final : public DialogSubject {
  public:
    void show(qt::QtDialogViews& views, const Reply& work) override {
        MoveTo form({5, 7});
        answering({work}, [&] { views.show_modal(form); });
        wanted_ = form.wanted();
    }
    void change(QDialog& dialog) override {
        choose_entry(dialog, "BankList", 2);
        choose_entry(dialog, "MemoryList", 10);
    }
    Texts stored() const override {
        if (!wanted_) return {};
        const bool swaps = wanted_->kind == RowMove::Kind::swap;
        return {(swaps ? "swap at " : "overwrite at ") + std::to_string(wanted_->to)};
    }

  private:
    std::optional<RowMove> wanted_;
};

class AboutSubject final : public DialogSubject {
  public:
    void show(qt::QtDialogViews& views, const Reply& work) override {
        Form5 form;
        answering({work}, [&] { views.show_modal(form); });
    }
    void change(QDialog& /*dialog*/) override {}
    Texts stored() const override { return {}; }
};

template <class Subject>
std::unique_ptr<DialogSubject> make() {
    return std::make_unique<Subject>();
}

Texts tour_of_limits() {
    constexpr int kLimits = 18;
    Texts names;
    for (int limit = 0; limit < kLimits; ++limit) {
        names.push_back("Text1(" + std::to_string(limit) + ")");
        names.push_back("Combo1(" + std::to_string(limit) + ")");
    }
    names.insert(names.end(), {"Command1", "Command2"});
    return names;
}

}  // namespace

bool DialogContract::can_cancel() const { return std::ranges::count(tour, "Command2") == 1; }

const std::vector<DialogContract>& dialog_contracts() {
    static const std::vector<DialogContract> contracts = {
        {"Settings",
         "frmMiscSetting",
         "Settings",
         {"Combo1",    "Combo14",   "Combo3",    "Combo11",   "Combo13",   "Option2",   "Check1(0)",
          "Check1(1)", "Check1(2)", "Check1(3)", "Check1(4)", "Check1(5)", "Check1(6)", "Check1(7)",
          "Check1(8)", "Check1(9)", "Combo4",    "Combo5",    "Combo6",    "Combo9",    "Combo7",
          "Combo8",    "Combo12",   "Combo10",   "Combo2",    "Command1",  "Command2"},
         "0123456789ABCDEFHKLMNOPRSTVW",
         {"6666: 0 > 2"},
         "",
         make<SettingsSubject>},
        {"Limits",
         "frmLimitSearch",
         "Search Band Memories",
         tour_of_limits(),
         "-01234567CO",
         {"7152: 17 > 32", "7153: 96 > 0"},
         "1299.00000",
         make<LimitsSubject>},
        {"Ports",
         "Form2",
         "Comm Port",
         {"Combo1", "DeviceList", "Command1"},
         "DOP",
         {"Memwright/Ports/COM1=/dev/ttyUSB0", "VR120/Settings/CommPort=3"},
         "",
         make<PortSubject>},
        {"Print",
         "frmPrint",
         "Print to Default Printer...",
         {"Option1", "Text1", "Text2", "Command1", "Command2"},
         "ACMO",
         {"7 to 35"},
         "240",
         make<PrintSubject>},
        {"FillSeries",
         "FillSeries",
         "Fill Series",
         {"StepBox", "NumberTags", "Command1", "Command2"},
         "CNOS",
         {"145.49375"},
         "-1299999.99999",
         make<SeriesSubject>},
        {"MoveTo",
         "MoveTo",
         "Move To",
         {"BankList", "MemoryList", "SwapOption", "Command1", "Command2"},
         "BCMOSV",
         {"swap at 139"},
         "",
         make<MoveSubject>},
        {"About", "Form5", "About Memwright", {"Command1"}, "O", {}, "", make<AboutSubject>}};
    return contracts;
}

}  // namespace memwright::gui
