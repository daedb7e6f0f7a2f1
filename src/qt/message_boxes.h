#pragma once

#include <QWidget>

#include "platform/file_dialogs.h"
#include "platform/message_box.h"

namespace memwright::qt {

class QtMessageBox final : public MessageBox {
  public:
    explicit QtMessageBox(QWidget& owner) : owner_(owner) {}

    Answer show(const Message& message) override;
    Connection ask(const Message& message, std::function<void(Answer)> answered) override;

  private:
    QWidget& owner_;
};

class QtFileDialogs final : public FileDialogs {
  public:
    explicit QtFileDialogs(QWidget& owner) : owner_(owner) {}

    std::optional<std::string> open(const FileRequest& request) override;
    std::optional<std::string> save(const FileRequest& request) override;

  private:
    std::optional<std::string> ask(const FileRequest& request, bool saving);

    QWidget& owner_;
};

}  // namespace memwright::qt
