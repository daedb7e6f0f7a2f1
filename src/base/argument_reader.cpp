#include "base/argument_reader.h"

#include <utility>

namespace memwright {

bool ArgumentReader::next() {
    if (rest_.empty()) return false;
    options_ended_ = options_ended_ || ends_options_;
    text_ = rest_.front();
    rest_ = rest_.subspan(1);
    ends_options_ = !options_ended_ && text_ == "--";
    const auto equals = text_.find('=');
    name_ = text_.substr(0, equals);
    own_value_.reset();
    if (equals != std::string::npos) own_value_ = text_.substr(equals + 1);
    return true;
}

bool ArgumentReader::is_option() const {
    return !options_ended_ && !ends_options_ && text_.size() > 1 && text_.front() == '-';
}

std::optional<std::string> ArgumentReader::take_value() {
    if (own_value_) return std::exchange(own_value_, std::nullopt);
    if (rest_.empty()) return std::nullopt;
    const std::string& value = rest_.front();
    rest_ = rest_.subspan(1);
    return value;
}

}  // namespace memwright
