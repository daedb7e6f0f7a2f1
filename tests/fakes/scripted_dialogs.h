#pragma once

// Message boxes and file dialogs that are answered from a script and remember what they were asked.

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/file_dialogs.h"
#include "platform/message_box.h"

namespace memwright::fakes {

class ScriptedMessageBox final : public MessageBox {
  public:
    std::deque<Answer> answers;
    std::vector<Message> shown;
    std::function<void()> while_shown;  // what happens behind an open box

    // Questions that are asked without waiting stay open until the test answers them, or they are
    // withdrawn.
    bool leaves_questions_open = false;
    bool has_open_question() const { return !open_.expired(); }
    void answer_open_question(Answer answer) {
        const auto question = open_.lock();
        ASSERT_NE(question, nullptr) << "no question is open";
        open_.reset();
        (*question)(answer);
    }

    Connection ask(const Message& message, std::function<void(Answer)> answered) override {
        if (!leaves_questions_open) return MessageBox::ask(message, std::move(answered));
        shown.push_back(message);
        const auto question = std::make_shared<std::function<void(Answer)>>(std::move(answered));
        open_ = question;
        return question;
    }

    Answer show(const Message& message) override {
        shown.push_back(message);
        if (while_shown) while_shown();
        if (answers.empty()) {
            ADD_FAILURE() << "unexpected message box: " << message.title << ": " << message.text;
            return Answer::cancel;
        }
        const Answer answer = answers.front();
        answers.pop_front();
        return answer;
    }

  private:
    std::weak_ptr<std::function<void(Answer)>> open_;
};

class ScriptedFileDialogs final : public FileDialogs {
  public:
    struct Asked {
        FileRequest request;
        bool saving;
    };
    std::deque<std::optional<std::string>> names;
    std::vector<Asked> asked;

    std::optional<std::string> open(const FileRequest& request) override {
        return answer(request, false);
    }
    std::optional<std::string> save(const FileRequest& request) override {
        return answer(request, true);
    }

  private:
    std::optional<std::string> answer(const FileRequest& request, bool saving) {
        asked.push_back({request, saving});
        if (names.empty()) {
            ADD_FAILURE() << "unexpected file dialog: " << request.title;
            return std::nullopt;
        }
        auto name = names.front();
        names.pop_front();
        return name;
    }
};

}  // namespace memwright::fakes
