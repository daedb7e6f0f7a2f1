// The module's door.

#include <QtGlobal>

#include "platform/modules.h"
#include "qt/printing/qt_printer.h"

extern "C" Q_DECL_EXPORT memwright::Printer* memwright_open_printer(memwright::FileSystem& files) {
    return new memwright::qt::QtPrinter(files);
}
