#include "QuorvaneCLI/ProgressLine.h"

#include "QuorvaneCLI/Terminal.h"

#include <cstdio>
#include <string>

#include <fmt/format.h>
#include <unistd.h>

namespace {

constexpr std::chrono::milliseconds quietTime{500};
constexpr std::string_view clearedLine = "\r\x1b[K";

void writeToStandardError(const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), stderr);
    std::fflush(stderr);
}

}  // namespace

ProgressLine::ProgressLine(bool isWanted)
    : isShown_(isWanted && isatty(STDERR_FILENO) != 0), began_(std::chrono::steady_clock::now()) {}

ProgressLine::~ProgressLine() {
    if (hasWritten_) {
        writeToStandardError(std::string(clearedLine));
    }
}

void ProgressLine::show(const ScanKit::ScanProgress& progress) {
    const std::lock_guard lock(mutex_);
    if (!isShown_ || std::chrono::steady_clock::now() - began_ < quietTime) {
        return;
    }
    const std::string count =
        progress.total > 0 ? fmt::format("Identifying licenses: {} of {}  ", progress.done, progress.total)
                           : fmt::format("Reading packages: {}  ", progress.done);
    const std::size_t columns = Terminal::columns(STDERR_FILENO).value_or(80);
    hasWritten_ = true;
    writeToStandardError(std::string(clearedLine) +
                         Terminal::fitted(count + Terminal::safe(progress.name), columns - 1));
}
