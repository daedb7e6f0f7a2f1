#include "qt/print/pdf_file.h"

#include <regex>
#include <sstream>
#include <stdexcept>

#include "support/run_program.h"
#include "support/temporary_folder.h"

namespace memwright {
namespace {

constexpr double kTwipsPerPoint = 20;

std::string run(const char* tool, const QStringList& arguments) {
    systest::Command command = {.program = tool, .environment = systest::inherited_environment()};
    for (const QString& each : arguments) command.arguments.push_back(each.toStdString());
    const auto ended = systest::run_apart(std::move(command));
    if (!ended.status.success()) {
        throw std::runtime_error(std::string(tool) +
                                 " fails (is poppler-utils installed?): " + ended.errors);
    }
    return ended.output;
}

std::vector<std::string> lines_of(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

QStringList only(int page) { return {"-f", QString::number(page), "-l", QString::number(page)}; }

}  // namespace

std::string PdfFile::info(const std::string& field) const {
    for (const std::string& line : lines_of(run("pdfinfo", {QString::fromStdString(path_)}))) {
        if (!line.starts_with(field + ":")) continue;
        const std::size_t start = line.find_first_not_of(' ', field.size() + 1);
        return start == std::string::npos ? "" : line.substr(start);
    }
    throw std::runtime_error(path_ + " tells no " + field);
}

int PdfFile::pages() const { return std::stoi(info("Pages")); }

std::string PdfFile::title() const { return info("Title"); }

QSizeF PdfFile::paper() const {
    std::istringstream in(info("Page size"));
    double width = 0, height = 0;
    std::string by;
    in >> width >> by >> height;
    return {width * kTwipsPerPoint, height * kTwipsPerPoint};
}

std::vector<std::string> PdfFile::lines(int page) const {
    return lines_of(
        run("pdftotext", only(page) + QStringList{"-layout", "-nopgbrk", "-enc", "UTF-8",
                                                  QString::fromStdString(path_), "-"}));
}

std::vector<PdfFile::Word> PdfFile::words(int page) const {
    const std::string told =
        run("pdftotext", only(page) + QStringList{"-bbox", QString::fromStdString(path_), "-"});
    static const std::regex kWord(
        R"re(<word xMin="([0-9.-]+)" yMin="([0-9.-]+)" xMax="([0-9.-]+)" yMax="([0-9.-]+)">(.*?)</word>)re");
    std::vector<Word> words;
    for (std::sregex_iterator it(told.begin(), told.end(), kWord), end; it != end; ++it) {
        const auto twips = [&](std::size_t i) { return std::stod((*it)[i]) * kTwipsPerPoint; };
        words.push_back(
            {(*it)[5], QRectF(QPointF(twips(1), twips(2)), QPointF(twips(3), twips(4)))});
    }
    return words;
}

int PdfFile::images() const {
    constexpr int kHeadings = 2;
    const auto told = lines_of(run("pdfimages", {"-list", QString::fromStdString(path_)}));
    return static_cast<int>(told.size()) - kHeadings;
}

bool PdfFile::fonts_are_whole() const {
    constexpr std::size_t kHeadings = 2;
    const auto told = lines_of(run("pdffonts", {QString::fromStdString(path_)}));
    static const std::regex kWhole(R"( yes +(yes|no) +yes +\d+ +\d+ *$)");  // emb, sub, uni
    for (std::size_t i = kHeadings; i < told.size(); ++i) {
        if (!std::regex_search(told[i], kWhole)) return false;
    }
    return told.size() > kHeadings;
}

QImage PdfFile::picture(int page, int dots_per_inch, const QRectF& part) const {
    const TemporaryFolder folder;
    QStringList arguments =
        only(page) + QStringList{"-png", "-singlefile", "-r", QString::number(dots_per_inch)};
    if (!part.isEmpty()) {
        const auto dots = [&](double twips) {
            return QString::number(static_cast<int>(twips * dots_per_inch / 1440));
        };
        arguments += {"-x", dots(part.left()),  "-y", dots(part.top()),
                      "-W", dots(part.width()), "-H", dots(part.height())};
    }
    run("pdftoppm", arguments + QStringList{QString::fromStdString(path_),
                                            QString::fromStdString(folder.file("page"))});
    QImage image(QString::fromStdString(folder.file("page.png")));
    if (image.isNull()) throw std::runtime_error(path_ + " gives no picture");
    return image.convertToFormat(QImage::Format_Grayscale8);
}

}  // namespace memwright
