#pragma once

// Standard input, output and error in memory: those of the C library, not the process's, so that a
// fuzzer and the sanitizers can still speak. Needs glibc, where the three can be assigned.

#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>

namespace memwright::fuzz {

class Streams {
  public:
    explicit Streams(const char* input_file) : input_(std::fopen(input_file, "rb")) {
        output_ = open_memstream(&output_text_, &output_size_);
        errors_ = open_memstream(&errors_text_, &errors_size_);
        if (input_ == nullptr || output_ == nullptr || errors_ == nullptr) {
            throw std::runtime_error("no streams to be had");
        }
        stdin = input_;
        stdout = output_;
        stderr = errors_;
    }
    Streams(const Streams&) = delete;
    Streams& operator=(const Streams&) = delete;
    ~Streams() {
        restore();
        std::free(output_text_);
        std::free(errors_text_);
    }

    void restore() {
        if (input_ == nullptr) return;
        stdin = stdin_before_;
        stdout = stdout_before_;
        stderr = stderr_before_;
        for (std::FILE* file : {input_, output_, errors_}) std::fclose(file);
        input_ = nullptr;
    }

    // What was written, once they are restored.
    std::string output() const { return {output_text_, output_size_}; }
    std::string errors() const { return {errors_text_, errors_size_}; }

  private:
    std::FILE* stdin_before_ = stdin;
    std::FILE* stdout_before_ = stdout;
    std::FILE* stderr_before_ = stderr;
    std::FILE* input_;
    std::FILE* output_ = nullptr;
    std::FILE* errors_ = nullptr;
    char* output_text_ = nullptr;
    char* errors_text_ = nullptr;
    std::size_t output_size_ = 0;
    std::size_t errors_size_ = 0;
};

}  // namespace memwright::fuzz
