#include "qt/serial/port_properties.h"

#include "qt/serial/line_settings.h"
#include "qt/serial/port_handle.h"

namespace memwright {

namespace {

constexpr int kRtsCts = 2;

QSerialPort::FlowControl flow_control_of(int handshaking) {
    if (handshaking == 1) return QSerialPort::SoftwareControl;
    if (handshaking == kRtsCts) return QSerialPort::HardwareControl;
    return QSerialPort::NoFlowControl;
}

std::string refused_line(QSerialPort& port, const PortProperties& properties) {
    const LineSettings line = parse_line_settings(properties.Settings);
    if (!port.setParity(line.parity)) return "parity";
    if (!port.setDataBits(line.data_bits)) return "number of data bits";
    if (!port.setStopBits(line.stop_bits)) return "number of stop bits";
    // A driver may drop what it cannot do without a word.
    std::string dropped = port_handle::refused_setting(port.handle(), line);
    if (!dropped.empty()) return dropped;
    if (!port.setDataTerminalReady(properties.DTREnable)) return "modem line DTR";
    // With RTS/CTS the line is the driver's own.
    if (properties.Handshaking == kRtsCts) return {};
    return port.setRequestToSend(properties.RTSEnable) ? std::string() : "modem line RTS";
}

}  // namespace

std::string impossible_property(const PortProperties& properties) {
    if (properties.Handshaking < 0 || properties.Handshaking > kRtsCts) return "this handshaking";
    if (properties.EOFEnable) return "an end-of-file character";
    if (properties.InputMode != 1) return "input as text";
    if (properties.NullDiscard) return "discarding zero bytes";
    if (!properties.ParityReplace.empty()) return "replacing bytes with parity errors";
    return {};
}

std::string set_up_port(QSerialPort& port, const PortProperties& properties, bool may_lack_lines) {
    // What arrives while nobody takes it stays with the system once this is full.
    port.setReadBufferSize(properties.InBufferSize);
    if (!port.setBaudRate(parse_line_settings(properties.Settings).baud)) return "baud rate";
    if (!port.setFlowControl(flow_control_of(properties.Handshaking))) return "handshaking";
    std::string refused = refused_line(port, properties);
    if (!refused.empty() && !may_lack_lines) return refused;
    // Last, because the others set the same flags.
    if (!port_handle::set_reception(port.handle(), properties.RThreshold)) return "reception";
    return {};
}

}  // namespace memwright
