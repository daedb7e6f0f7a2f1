#include "qt/serial/qt_serial_devices.h"

#include <QFile>
#include <QFileInfo>
#include <QSerialPortInfo>

#ifndef _WIN32
#include <sys/stat.h>
#include <sys/sysmacros.h>
#endif

namespace memwright {

namespace {

constexpr char kTtyFolder[] = "/sys/class/tty";

bool usb_by_name(const QString& path) {
    const QString name = path.section(QLatin1Char('/'), -1);
    return name.startsWith(QLatin1String("ttyUSB")) || name.startsWith(QLatin1String("ttyACM"));
}

bool is_there(const QString& path) {
#ifdef _WIN32
    return !path.isEmpty();
#else
    return QFileInfo::exists(path);
#endif
}

bool is_pseudo_terminal([[maybe_unused]] const QString& path) {
#ifdef _WIN32
    return false;  // there are none
#else
    struct stat node {};
    if (stat(QFile::encodeName(path).constData(), &node) != 0) return false;
    constexpr unsigned kFirst = 136, kLast = 143;
    return S_ISCHR(node.st_mode) && major(node.st_rdev) >= kFirst && major(node.st_rdev) <= kLast;
#endif
}

}  // namespace

bool is_phantom_port(const std::string& path, const std::string& tty_folder) {
    const std::string name = path.substr(path.rfind('/') + 1);
    QFile type(QString::fromStdString(tty_folder + "/" + name + "/type"));
    return type.open(QIODevice::ReadOnly) && type.readAll().trimmed() == "0";
}

std::vector<SerialDevice> QtSerialDevices::list() {
    std::vector<SerialDevice> devices;
    for (const QSerialPortInfo& port : QSerialPortInfo::availablePorts()) {
#ifdef _WIN32
        const QString path = port.portName();
#else
        const QString path = port.systemLocation();
#endif
        const std::string name = path.toStdString();
        if (!is_there(path) || is_phantom_port(name, kTtyFolder)) continue;
        // A serial card on the PCI bus has a vendor too, and is no adapter.
        const bool built_in = path.contains(QLatin1String("ttyS"));
        devices.push_back({name, port.description().toStdString(),
                           usb_by_name(path) || (port.hasVendorIdentifier() && !built_in)});
    }
    return devices;
}

std::string QtSerialDevices::describe(const std::string& path) {
    const QFileInfo file(QString::fromStdString(path));
    const QString canonical = file.canonicalFilePath();
    const std::string device = canonical.isEmpty() ? path : canonical.toStdString();
    for (const auto& known : list()) {
        if (known.path != device) continue;
        if (!known.description.empty()) return known.description;
        return known.usb ? "USB serial adapter" : "serial port";
    }
    if (numbers_name_devices() || canonical.isEmpty()) return "not present";
    if (is_pseudo_terminal(canonical)) return "pseudo-terminal";
    if (file.isFile() || file.isDir()) return "not a serial device";
    return "device";
}

bool QtSerialDevices::numbers_name_devices() const {
#ifdef _WIN32
    return true;
#else
    return false;
#endif
}

}  // namespace memwright
