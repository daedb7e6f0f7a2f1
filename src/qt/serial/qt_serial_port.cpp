#include "qt/serial/qt_serial_port.h"

#include <QDeadlineTimer>
#include <QFileInfo>
#include <algorithm>
#include <chrono>
#include <limits>
#include <utility>

#include "base/error.h"
#include "qt/serial/line_settings.h"
#include "qt/serial/port_diagnosis.h"
#include "qt/serial/port_handle.h"
#include "qt/serial/port_lock.h"
#include "qt/serial/port_properties.h"
#include "qt/serial/qt_serial_devices.h"

namespace memwright {

namespace {

// The device itself where the path is a symbolic link, so that programs that call one device by
// two names lock each other out.
QString device_behind(const std::string& path) {
    const QFileInfo file(QString::fromStdString(path));
    const QString canonical = file.isAbsolute() ? file.canonicalFilePath() : QString();
    return canonical.isEmpty() ? QString::fromStdString(path) : canonical;
}

std::string refused_opening(int number, const std::string& path, const QSerialPort& port) {
    using Cause = PortFacts::Cause;
    QtSerialDevices devices;
    PortFacts facts = port_facts(path);
    if (facts.system_text.empty()) facts.system_text = port.errorString().toStdString();
    if (facts.cause == Cause::other && devices.numbers_name_devices()) {
        // There a port that is open elsewhere is told as one that may not be used.
        if (port.error() == QSerialPort::DeviceNotFoundError) facts.cause = Cause::missing;
        if (port.error() == QSerialPort::PermissionError) facts.cause = Cause::busy;
    }
    return port_diagnosis(number, path, facts, devices.list());
}

}  // namespace

QtSerialPort::QtSerialPort(DeviceOf device_of) : device_of_(std::move(device_of)) {
    QObject::connect(&port_, &QSerialPort::errorOccurred, &port_,
                     [this](QSerialPort::SerialPortError error) { on_error(error); });
}

QtSerialPort::~QtSerialPort() { close(); }

void QtSerialPort::PortOpen(bool open_wanted) {
    if (!open_wanted) {
        close();
        lost_.clear();
    } else if (!port_.isOpen()) {
        open();
    }
}

std::string QtSerialPort::name() const { return port_name(opened_.CommPort, path_); }

void QtSerialPort::open() {
    lost_.clear();
    opened_ = properties_;
    path_ = device_of_(opened_.CommPort);
    const std::string impossible = impossible_property(opened_);
    if (!impossible.empty()) {
        throw PortError("Cannot open " + name() + ": " + impossible + " cannot be had here.");
    }
    const LineSettings line = parse_line_settings(opened_.Settings);

    const QString device = device_behind(path_);
    const std::string no_lock = no_lock_file(device.toStdString());
    if (!no_lock.empty()) throw PortError("Cannot open " + name() + ": " + no_lock);
    port_.setPortName(device);
    if (!port_.open(QIODevice::ReadWrite)) {
        throw PortError(refused_opening(opened_.CommPort, path_, port_));
    }
    output_ = taken_ = 0;
    transmission_.begin(line);
    set_up();
    in_use_ = true;
}

void QtSerialPort::set_up() {
    pseudo_terminal_ = port_handle::is_pseudo_terminal(port_.handle());
    const std::string refused = set_up_port(port_, opened_, pseudo_terminal_);
    if (!refused.empty()) {
        const std::string why = port_.errorString().toStdString();
        close();
        throw PortError("Cannot set " + name() + " to " + opened_.Settings +
                        ": the device refuses the " + refused + " (" + why +
                        ").\nThe port is closed again. Use another serial adapter.");
    }
    // What an earlier transfer left behind on its way belongs to nobody.
    port_handle::discard_input(port_.handle());
}

void QtSerialPort::close() {
    in_use_ = false;
    if (!port_.isOpen()) return;
    finish_output();
    port_.close();
}

// Bytes that the system has yet to take or the device has yet to send. What has just been taken
// goes on the line now.
int QtSerialPort::waiting_to_leave() {
    const std::int64_t kept = port_.bytesToWrite();
    const std::int64_t taken = output_ - kept;
    transmission_.add(taken - taken_, Transmission::Clock::now());
    taken_ = taken;
    return static_cast<int>(kept) + port_handle::unsent(port_.handle());
}

int QtSerialPort::unsent_bytes() {
    // What a pseudo-terminal has taken has arrived, and its other end may hang up then.
    if (in_use_ && pseudo_terminal_ && port_.bytesToWrite() == 0) return 0;
    require_open();
    port_handle::send(port_);
    const int waiting = waiting_to_leave();
    // The device may still hold what nobody counts any more.
    const auto on_line = static_cast<int>(transmission_.bytes_left(Transmission::Clock::now()));
    const int held = port_handle::transmitter_is_empty(port_.handle()) ? 0 : 1;
    return std::max({waiting, on_line, held});
}

// Lets the last bytes leave before the line is set back, and never waits long for a line that takes
// none: the system itself would wait for them for half a minute.
void QtSerialPort::finish_output() {
    constexpr std::chrono::milliseconds kLongestStop(250);
    const QDeadlineTimer end(Transmission::kLongest + kLongestStop);
    QDeadlineTimer stopped(kLongestStop);
    int before = std::numeric_limits<int>::max();
    while (!port_handle::is_hung_up(port_.handle())) {
        port_handle::send(port_);
        const int waiting = waiting_to_leave();
        if (waiting < before) stopped.setRemainingTime(kLongestStop);
        before = waiting;
        const bool sent = waiting == 0 && port_handle::transmitter_is_empty(port_.handle()) &&
                          transmission_.bytes_left(Transmission::Clock::now()) == 0;
        if (sent) return;
        if (end.hasExpired() || (waiting > 0 && stopped.hasExpired())) break;
        port_handle::wait_to_send(port_);
    }
    port_handle::discard_output(port_.handle());
}

void QtSerialPort::on_error(QSerialPort::SerialPortError error) {
    const bool harmless = error == QSerialPort::NoError || error == QSerialPort::TimeoutError ||
                          error == QSerialPort::NotOpenError;
    // A read that finds nothing and a full line are reported as errors too. After a hang-up the
    // reports never end, and take a whole core, until the port is closed.
    if (!in_use_ || harmless || port_handle::is_alive(port_.handle())) return;
    give_up("the other end hung up or the device was unplugged");
}

void QtSerialPort::give_up(const std::string& why) {
    in_use_ = false;
    lost_ = "Lost " + name() + ": " + why +
            ".\nThe port is closed. Check the cable and the plugs, then start the transfer again.";
    port_handle::discard_output(port_.handle());
    port_.close();
}

void QtSerialPort::require_open() {
    // A hang-up need not be reported by QSerialPort.
    if (in_use_ && port_handle::is_hung_up(port_.handle())) {
        give_up("the other end hung up or the device was unplugged");
    }
    if (!lost_.empty()) throw PortError(lost_);
    if (!in_use_) {
        throw PortError("COM " + std::to_string(properties_.CommPort) +
                        " is not open.\nOpen it before bytes are sent or received.");
    }
}

void QtSerialPort::Output(std::span<const std::uint8_t> bytes) {
    require_open();
    const auto length = static_cast<qint64>(bytes.size());
    if (opened_.OutBufferSize > 0 && port_.bytesToWrite() + length > opened_.OutBufferSize) {
        give_up("the other end has stopped taking bytes");
    } else {
        output_ += length;
        port_.write(reinterpret_cast<const char*>(bytes.data()), length);
        port_handle::send(port_);
        if (in_use_) waiting_to_leave();
    }
    require_open();
}

int QtSerialPort::InBufferCount() {
    require_open();
    return static_cast<int>(port_.bytesAvailable()) + port_handle::waiting(port_.handle());
}

Bytes QtSerialPort::Input() {
    require_open();
    const int limit = opened_.InputLen;
    const int most = limit > 0 ? limit : std::numeric_limits<int>::max();
    const QByteArray fetched = limit > 0 ? port_.read(limit) : port_.readAll();
    Bytes bytes(fetched.begin(), fetched.end());
    // Older bytes lie with QSerialPort, the latest still with the system.
    port_handle::take(port_.handle(), most - static_cast<int>(bytes.size()), bytes);
    return bytes;
}

}  // namespace memwright
