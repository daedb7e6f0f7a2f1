#pragma once

// The one place where the core's texts and file names become Qt's and back.

#include <QString>
#include <string>

namespace memwright::qt {

// UTF-8: whatever is shown to people.
QString from_utf8(const std::string& text);
std::string to_utf8(const QString& text);

// The radio's character set: the texts of the channel table's cells.
QString from_radio(const std::string& text);
std::string to_radio(const QString& text);

// File names in the file system's own encoding.
QString from_file_name(const std::string& name);
std::string to_file_name(const QString& name);

}  // namespace memwright::qt
