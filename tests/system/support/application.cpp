#include "system/support/application.h"

#include <charconv>
#include <exception>
#include <iostream>
#include <sstream>

#include "system/support/message_bus.h"
#include "system/support/mouse.h"
#include "system/support/x_display.h"

namespace memwright::systest {
namespace {

constexpr const char* kRootPath = "/org/a11y/atspi/accessible/root";

double scale_from(const Environment& environment) {
    double scale = 1;
    const auto found = environment.find("QT_SCALE_FACTOR");
    if (found != environment.end()) {
        const std::string& text = found->second;
        std::from_chars(text.data(), text.data() + text.size(), scale);
    }
    return scale;
}

void save_failure_picture(const Desktop& desktop) {
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    if (test == nullptr) return;
    const std::filesystem::path folder("system-failures");
    try {
        std::filesystem::create_directories(folder);
        const auto file =
            folder / (std::string(test->test_suite_name()) + "." + test->name() + ".png");
        desktop.screen().picture().save(file);
        std::cerr << "The screen at the end: " << std::filesystem::absolute(file) << '\n';
    } catch (const std::exception& problem) {
        std::cerr << "No picture of the failure: " << problem.what() << '\n';
    }
}

}  // namespace

Application::Application(Desktop& desktop, const std::filesystem::path& file,
                         std::vector<std::string> arguments, const Environment& extra)
    : Program(desktop, file, std::move(arguments), extra), scale_(scale_from(extra)) {}

Application::~Application() {
    if (testing::Test::HasFailure() || std::uncaught_exceptions() > 0) {
        save_failure_picture(desktop());
    }
}

Accessible Application::root(Milliseconds patience) const {
    const MessageBus& bus = desktop().bus();
    const auto registered = [&] {
        require_running();
        const Variant reply = bus.call({"org.a11y.atspi.Registry", kRootPath},
                                       "org.a11y.atspi.Accessible", "GetChildren");
        const Variant list(g_variant_get_child_value(reply.get(), 0));
        for (gsize i = 0; i < g_variant_n_children(list.get()); ++i) {
            const char* owner = nullptr;
            const char* path = nullptr;
            const Variant each(g_variant_get_child_value(list.get(), i));
            g_variant_get(each.get(), "(&s&o)", &owner, &path);
            if (bus.process_of(owner) == static_cast<std::uint32_t>(pid())) owner_ = owner;
        }
        return !owner_.empty();
    };
    if (owner_.empty() && !wait_until(registered, patience)) {
        throw NotThere("The program never registered with the accessibility registry");
    }
    return {*this, {owner_, kRootPath}};
}

Accessible Application::find(const Query& query, Milliseconds patience) const {
    return root().find(query, patience);
}

Accessible Application::active_window(const Query& query, std::string_view text,
                                      Milliseconds patience) const {
    const Accessible top = root();
    std::optional<Accessible> found;
    const auto look = [&] {
        require_running();
        for (const Accessible& window : top.children()) {
            if (window.matches(query) && window.is(State::kActive) &&
                (text.empty() ||
                 window.find_now({.role = Role::kLabel, .name_part = std::string(text)}))) {
                found = window;
            }
        }
        return found.has_value();
    };
    if (!wait_until(look, patience)) {
        std::ostringstream problem;
        problem << "There is not, holding the keyboard, " << query << " saying '" << text
                << "'. The program's tree is:\n"
                << tree();
        throw NotThere(problem.str());
    }
    // The program may hear of its focus before the window manager does.
    desktop().display().manager_is_done(patience);
    return *found;
}

Accessible Application::main_window(std::string_view title) const {
    return active_window({.role = Role::kFrame, .name = std::string(title), .showing = true}, {},
                         kPatience);
}

Accessible Application::dialog(std::string_view title, Milliseconds patience) const {
    return active_window({.role = Role::kDialog, .name = std::string(title), .showing = true}, {},
                         patience);
}

Accessible Application::message_box(std::string_view title, std::string_view text,
                                    Milliseconds patience) const {
    return active_window({.role = Role::kAlert, .name = std::string(title), .showing = true}, text,
                         patience);
}

bool Application::has_window(std::string_view title) const {
    const Query query{.name = std::string(title), .showing = true};
    for (const Accessible& window : root().children()) {
        try {
            if (window.matches(query)) return true;
        } catch (const NotThere&) {
            continue;  // closed since
        }
    }
    return false;
}

void Application::choose(std::initializer_list<std::string_view> path) const {
    Mouse mouse(desktop());
    Accessible place = root();
    for (const std::string_view name : path) {
        place = place.find({.role = Role::kMenuItem, .name = std::string(name), .showing = true});
        mouse.click(place);
    }
}

void Application::settle(Milliseconds patience) const {
    const XDisplay& display = desktop().display();
    if (!display.manager_is_done(patience)) {
        throw NotThere("The window manager does not answer");
    }
    const auto answered = [&] {
        require_running();
        for (const TopWindow& window : desktop().windows()) {
            if (window.process() != pid()) continue;
            return display.program_is_done(window.id(), patience);
        }
        return false;
    };
    if (!wait_until(answered, patience)) {
        throw NotThere("The program does not answer the window manager's ping");
    }
    // What it has read it also handles before it turns to this question.
    root().name();
}

std::string Application::tree() const {
    if (!running()) return "(it has ended)\n";
    return root().tree();
}

}  // namespace memwright::systest
