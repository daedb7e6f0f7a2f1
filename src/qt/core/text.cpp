#include "qt/core/text.h"

#include <QFile>

#include "base/charset.h"

namespace memwright::qt {

QString from_utf8(const std::string& text) { return QString::fromStdString(text); }

std::string to_utf8(const QString& text) { return text.toStdString(); }

QString from_radio(const std::string& text) {
    QString shown;
    for (const char byte : text) {
        shown +=
            QChar(static_cast<char16_t>(character_from_radio(static_cast<unsigned char>(byte))));
    }
    return shown;
}

std::string to_radio(const QString& text) { return radio_from_utf8(to_utf8(text)); }

QString from_file_name(const std::string& name) {
    return QFile::decodeName(QByteArray::fromStdString(name));
}

std::string to_file_name(const QString& name) { return QFile::encodeName(name).toStdString(); }

}  // namespace memwright::qt
