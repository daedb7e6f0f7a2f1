#include "system/support/application.h"

#include <charconv>
#include <exception>
#include <iostream>

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

Accessible Application::window(Role first, Role second, std::string_view title,
                               Milliseconds patience) const {
    const Accessible top = root();
    std::optional<Accessible> found;
    const auto look = [&] {
        require_running();
        for (const Role role : {first, second}) {
            found = top.find_now({.role = role, .name = std::string(title), .showing = true});
            if (found && found->is(State::kActive)) return true;
        }
        return false;
    };
    if (wait_until(look, patience)) {
        // The program may hear of its focus before the window manager does.
        desktop().display().manager_is_done(patience);
        return *found;
    }
    throw NotThere("No window '" + std::string(title) +
                   "' is there and active. The program's tree is:\n" + tree());
}

Accessible Application::main_window(std::string_view title) const {
    return window(Role::kFrame, Role::kFrame, title, kPatience);
}

Accessible Application::dialog(std::string_view title, Milliseconds patience) const {
    return window(Role::kDialog, Role::kAlert, title, patience);
}

bool Application::has_dialog(std::string_view title) const {
    for (const Role role : {Role::kDialog, Role::kAlert}) {
        if (root().find_now({.role = role, .name = std::string(title), .showing = true})) {
            return true;
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
