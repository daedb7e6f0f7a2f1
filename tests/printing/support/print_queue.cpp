#include "printing/support/print_queue.h"

#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <csignal>
#include <fstream>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <utility>

#include "support/eventually.h"
#include "support/read_file.h"
#include "support/run_program.h"

namespace memwright::printing {
namespace {

namespace fs = std::filesystem;
using systest::output_of;
using systest::read_file;
using systest::run_program;

// A job passes through Ghostscript twice, beside everything else that the machine does.
constexpr systest::Milliseconds kLimit{90000};

constexpr const char* kPrinter = "Paper";
constexpr const char* kScheduler = "/usr/sbin/cupsd";
constexpr const char* kDescription = "/usr/share/ppd/cups-pdf/CUPS-PDF_noopt.ppd";
constexpr std::array kNeeded = {kScheduler,
                                kDescription,
                                "/usr/lib/cups/backend/cups-pdf",
                                "/usr/lib/cups/filter/pdftopdf",
                                "/usr/lib/cups/filter/pdftops",
                                "/usr/bin/gs",
                                "/usr/bin/lpstat",
                                "/usr/bin/pdftocairo",
                                "/usr/sbin/cupsreject",
                                "/usr/sbin/lpadmin"};

void write_file(const fs::path& file, const std::string& text) {
    std::ofstream out(file, std::ios::binary);
    out << text;
    out.close();
    if (!out) throw std::runtime_error("Cannot write " + file.string());
}

// Where the scheduler keeps its files.
std::string file_settings(const std::string& folder) {
    std::string text;
    for (const auto& [key, place] : {std::pair{"ServerRoot", "/server"},
                                     {"StateDir", "/state"},
                                     {"CacheDir", "/cache"},
                                     {"RequestRoot", "/spool"},
                                     {"TempDir", "/spool/tmp"},
                                     {"AccessLog", "/log/access"},
                                     {"ErrorLog", "/log/errors"},
                                     {"PageLog", "/log/pages"},
                                     {"Printcap", "/printcap"},
                                     {"ServerKeychain", "/server/keys"}}) {
        text += std::string(key) + ' ' + folder + place + '\n';
    }
    return text + "SystemGroup root\nLogFileGroup root\nSyncOnClose No\n";
}

// Everyone may do everything: the socket lies in a private folder.
std::string scheduler_settings(const fs::path& socket) {
    return "Listen " + socket.string() +
           "\nLogLevel info"
           "\nMaxLogSize 0"
           "\nBrowsing No"
           "\nWebInterface No"
           "\nDefaultPaperSize A4"
           "\nDirtyCleanInterval 0"
           "\nErrorPolicy abort-job"
           "\n<Location />\n  Order allow,deny\n  Allow all\n</Location>"
           "\n<Policy default>"
           "\n  JobPrivateAccess all\n  JobPrivateValues none"
           "\n  SubscriptionPrivateAccess all\n  SubscriptionPrivateValues none"
           "\n  <Limit All>\n    Order deny,allow\n  </Limit>"
           "\n</Policy>\n";
}

// The PDF printer takes its settings from its description, too. Values in there may not contain
// slashes, so these are names in the folder that the scheduler runs in.
std::string printer_description() {
    std::string text = read_file(kDescription);
    for (const auto& [key, value] : {std::pair{"Out", "documents"},
                                     {"AnonDirName", "documents"},
                                     {"Spool", "work"},
                                     {"GSTmp", "work"},
                                     {"Log", "log"},
                                     {"Grp", "lp"},
                                     {"Label", "1"},  // "job_7-" before each title
                                     {"TitlePref", "1"}}) {
        const std::string name(key);
        text.append("*OpenUI *").append(name).append(": PickOne\n");
        text.append("*Default").append(name).append(": ").append(value).append("\n*");
        text.append(name).append(" ").append(value).append(": \"\"\n*CloseUI: *");
        text.append(name).append("\n");
    }
    return text;
}

// The number of "job_7-Title.pdf".
std::size_t job_of(const fs::path& document) {
    const std::string name = document.filename();
    constexpr std::string_view kStart = "job_";
    std::size_t number = 0;
    if (name.starts_with(kStart)) {
        std::from_chars(name.data() + kStart.size(), name.data() + name.size(), number);
    }
    return number;
}

std::vector<pid_t> processes_with(const std::string& variable) {
    std::vector<pid_t> found;
    for (const auto& entry : fs::directory_iterator("/proc")) {
        const std::string name = entry.path().filename();
        pid_t number = 0;
        if (std::from_chars(name.data(), name.data() + name.size(), number).ec != std::errc()) {
            continue;
        }
        const std::string environment = '\0' + read_file(entry.path() / "environ");
        if (environment.find('\0' + variable + '\0') != std::string::npos) found.push_back(number);
    }
    return found;
}

}  // namespace

std::string PrintQueue::why_not() {
    if (geteuid() != 0) return "Only root can run a CUPS scheduler with its PDF printer.";
    for (const char* file : kNeeded) {
        if (!fs::exists(file)) {
            return std::string(file) +
                   " is missing: install the packages cups and printer-driver-cups-pdf.";
        }
    }
    return "";
}

PrintQueue::PrintQueue() {
    if (const std::string reason = why_not(); !reason.empty()) throw std::runtime_error(reason);
    if (socket().string().size() >= sizeof(sockaddr_un::sun_path)) {
        throw std::runtime_error("The name of the socket is too long: " + socket().string());
    }
    start();
    add_printer();
}

PrintQueue::~PrintQueue() { stop(); }

std::string PrintQueue::printer_name() const { return kPrinter; }

systest::Environment PrintQueue::environment() const {
    // The second wins over a default printer that the user may have chosen.
    return {{"CUPS_SERVER", socket()}, {"LPDEST", printer_name()}};
}

fs::path PrintQueue::socket() const { return folder_.path() / "socket"; }

void PrintQueue::start() {
    const fs::path& folder = folder_.path();
    // Filters run as a user without rights, printing programs as any: they pass, but see no names.
    fs::permissions(folder, fs::perms::owner_all | fs::perms::group_exec | fs::perms::others_exec);
    for (const char* name : {"server", "state", "cache", "spool/tmp", "log", "documents", "work"}) {
        fs::create_directories(folder / name);
    }
    fs::permissions(folder / "documents", fs::perms::all);
    fs::permissions(folder / "work", fs::perms::all);
    write_file(folder / "server/cups-files.conf", file_settings(folder));
    write_file(folder / "server/cupsd.conf", scheduler_settings(socket()));
    write_file(folder / "printer.ppd", printer_description());
    scheduler_.emplace(systest::Command{.program = kScheduler,
                                        .arguments = {"-f", "-c", folder / "server/cupsd.conf",
                                                      "-s", folder / "server/cups-files.conf"},
                                        .environment = {{"PATH", "/usr/sbin:/usr/bin:/sbin:/bin"},
                                                        {"CUPS_SERVERROOT", folder / "server"}},
                                        .folder = folder,
                                        .output = folder / "log/scheduler",
                                        .errors = folder / "log/scheduler",
                                        // So that it ends its jobs even then.
                                        .death_signal = SIGTERM});
    const auto answers = [this] {
        if (scheduler_->exit_status()) return true;
        return run_program("/usr/bin/lpstat", {"-h", socket(), "-r"})
            .output.starts_with("scheduler is running");
    };
    if (!systest::wait_until(answers, kLimit) || scheduler_->exit_status()) {
        throw std::runtime_error("The CUPS scheduler does not start." + end_of_log());
    }
}

void PrintQueue::add_printer() {
    // Without the renderer named here, the documents' texts would be pictures of letters.
    ask("/usr/sbin/lpadmin",
        {"-p", kPrinter, "-E", "-v", "cups-pdf:/memwright", "-P", folder_.path() / "printer.ppd",
         "-o", "pdftops-renderer-default=pdftocairo"});
    ask("/usr/sbin/lpadmin", {"-d", kPrinter});
}

std::string PrintQueue::ask(const fs::path& program, std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), {"-h", socket()});
    try {
        return output_of(program, std::move(arguments));
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(error.what() + end_of_log());
    }
}

std::size_t PrintQueue::ended_jobs() const {
    const std::string jobs = ask("/usr/bin/lpstat", {"-W", "completed", "-o"});
    return static_cast<std::size_t>(std::ranges::count(jobs, '\n'));
}

std::vector<fs::path> PrintQueue::documents() const {
    std::vector<fs::path> found;
    for (const auto& entry : fs::directory_iterator(folder_.path() / "documents")) {
        found.push_back(entry.path());
    }
    std::ranges::sort(found, {}, job_of);
    return found;
}

std::vector<fs::path> PrintQueue::wait_for_documents(std::size_t count) const {
    const bool ended = systest::wait_until([&] { return ended_jobs() >= count; }, kLimit);
    auto found = documents();
    if (ended && found.size() >= count) return found;
    throw std::runtime_error("Of " + std::to_string(count) + " jobs, " +
                             std::to_string(ended_jobs()) + " have ended and made " +
                             std::to_string(found.size()) + " documents." + end_of_log());
}

void PrintQueue::refuse_jobs() { ask("/usr/sbin/cupsreject", {kPrinter}); }

void PrintQueue::stop() {
    if (!scheduler_) return;
    scheduler_->stop();
    scheduler_.reset();
    end_jobs();
}

// A scheduler that ends takes its filters along, but not the programs that these have started.
void PrintQueue::end_jobs() const {
    const std::string mark = "CUPS_SERVERROOT=" + (folder_.path() / "server").string();
    systest::wait_until([&] {
        const auto left = processes_with(mark);
        for (const pid_t process : left) kill(process, SIGKILL);
        return left.empty();
    });
}

std::string PrintQueue::end_of_log() const {
    constexpr std::size_t kLength = 4000;
    const std::string log =
        read_file(folder_.path() / "log/scheduler") + read_file(folder_.path() / "log/errors");
    return " The end of its log:\n" + log.substr(log.size() - std::min(log.size(), kLength));
}

}  // namespace memwright::printing
