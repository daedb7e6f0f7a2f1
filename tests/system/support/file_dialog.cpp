#include "system/support/file_dialog.h"

#include "system/support/mouse.h"

namespace memwright::systest {

void enter_path(const Application& application, std::string_view title,
                const std::filesystem::path& path) {
    const Accessible dialog = application.dialog(title);
    const Accessible field = dialog.find({.role = Role::kText, .showing = true});
    Mouse(application.desktop()).click(field);
    field.wait_for(State::kFocused);
    Keyboard& keyboard = application.desktop().keyboard();
    keyboard.press("ctrl+a");
    keyboard.type(path.string());
    if (!wait_until([&] { return field.text() == path.string(); })) {
        throw NotThere("The name field holds '" + field.text() + "' and not the path typed");
    }
    keyboard.press("Enter");
}

}  // namespace memwright::systest
