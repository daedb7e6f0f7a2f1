#pragma once

// A print queue of a test's own: a CUPS scheduler with one printer, the default one, that makes a
// PDF file of each job. It listens on a socket in a private folder and on no network port, writes
// nothing outside that folder, and goes away with the test, however that ends. Any number of them
// run side by side.
// Linux, as root, with the Debian packages cups and printer-driver-cups-pdf.
// Errors: std::runtime_error, with the end of the scheduler's log.

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "support/process.h"
#include "support/temporary_folder.h"

namespace memwright::printing {

class PrintQueue {
  public:
    PrintQueue();
    ~PrintQueue();  // ends the scheduler and its jobs, removes the folder
    PrintQueue(const PrintQueue&) = delete;
    PrintQueue& operator=(const PrintQueue&) = delete;

    // Why there can be no queue here, and what to do; empty if there can.
    static std::string why_not();

    std::string printer_name() const;

    // What makes a program print here. The CUPS library reads it once in each thread: a process
    // that has looked for printers stays with the scheduler that it found.
    systest::Environment environment() const;

    // The documents in the order of their jobs, once so many jobs have ended; fails if one of them
    // made none.
    std::vector<std::filesystem::path> wait_for_documents(std::size_t count) const;

    // From now on, jobs are turned away.
    void refuse_jobs();

    // From now on, there is no scheduler, as if the service had been stopped. Documents stay.
    void stop();

  private:
    std::filesystem::path socket() const;
    void start();
    void add_printer();
    std::string ask(const std::filesystem::path& program, std::vector<std::string> arguments) const;
    std::size_t ended_jobs() const;
    std::vector<std::filesystem::path> documents() const;
    void end_jobs() const;
    std::string end_of_log() const;

    TemporaryFolder folder_{TemporaryFolder::For::the_test};
    std::optional<systest::Process> scheduler_;
};

}  // namespace memwright::printing
