#include "qt/serial/line_settings.h"

#include <map>
#include <vector>

#include "base/error.h"
#include "base/number_text.h"

namespace memwright {

namespace {

std::vector<std::string> fields_of(const std::string& text) {
    std::vector<std::string> fields(1);
    for (const char letter : text) {
        if (letter == ',') {
            fields.emplace_back();
        } else if (letter != ' ') {
            fields.back() += letter;
        }
    }
    return fields;
}

[[noreturn]] void refuse(const std::string& text, const std::string& why) {
    throw PortError("The line settings \"" + text + "\" do not read: " + why +
                    ".\nThey are written like \"9600,E,8,1\": baud rate, parity, data bits and "
                    "stop bits.");
}

int baud_of(const std::string& text, const std::string& field) {
    const auto baud = whole_number(field);
    if (!baud || *baud <= 0) refuse(text, "\"" + field + "\" is no baud rate");
    return *baud;
}

template <class Value>
Value chosen(const std::map<std::string, Value>& choices, const std::string& text,
             const std::string& field, const std::string& what) {
    const auto found = choices.find(field);
    if (found == choices.end()) refuse(text, "\"" + field + "\" is no " + what);
    return found->second;
}

}  // namespace

LineSettings parse_line_settings(const std::string& text) {
    const std::map<std::string, QSerialPort::Parity> parities = {
        {"N", QSerialPort::NoParity},    {"n", QSerialPort::NoParity},
        {"E", QSerialPort::EvenParity},  {"e", QSerialPort::EvenParity},
        {"O", QSerialPort::OddParity},   {"o", QSerialPort::OddParity},
        {"M", QSerialPort::MarkParity},  {"m", QSerialPort::MarkParity},
        {"S", QSerialPort::SpaceParity}, {"s", QSerialPort::SpaceParity}};
    const std::map<std::string, QSerialPort::DataBits> data_bits = {{"5", QSerialPort::Data5},
                                                                    {"6", QSerialPort::Data6},
                                                                    {"7", QSerialPort::Data7},
                                                                    {"8", QSerialPort::Data8}};
    const std::map<std::string, QSerialPort::StopBits> stop_bits = {
        {"1", QSerialPort::OneStop},
        {"1.5", QSerialPort::OneAndHalfStop},
        {"2", QSerialPort::TwoStop}};

    const auto fields = fields_of(text);
    if (fields.size() != 4) refuse(text, "four fields are wanted");
    return {baud_of(text, fields[0]), chosen(parities, text, fields[1], "parity"),
            chosen(data_bits, text, fields[2], "number of data bits"),
            chosen(stop_bits, text, fields[3], "number of stop bits")};
}

}  // namespace memwright
