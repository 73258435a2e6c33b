#include "ScanKit/Reports/PDF/PDFUpdate.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include <fmt/format.h>

namespace ScanKit {
namespace {

std::size_t numberAt(std::string_view text, std::size_t at) {
    std::size_t number = 0;
    std::from_chars(text.data() + std::min(at, text.size()), text.data() + text.size(), number);
    return number;
}

/// The number behind the last of these words.
std::size_t numberBehind(std::string_view text, std::string_view words) {
    const std::size_t at = text.rfind(words);
    return at == std::string_view::npos ? 0 : numberAt(text, at + words.size());
}

/// From the key to the end of its value, which the given character is.
std::string entryOf(std::string_view dictionary, std::string_view key, char end) {
    const std::size_t begin = dictionary.find(key);
    const std::size_t last =
        begin == std::string_view::npos ? begin : dictionary.find(end, begin + key.size());
    return last == std::string_view::npos ? "" : std::string(dictionary.substr(begin, last - begin + 1));
}

void appendBigEndian(std::string& bytes, std::size_t number, int count) {
    for (int shift = 8 * (count - 1); shift >= 0; shift -= 8) {
        bytes += static_cast<char>(number >> shift & 0xFF);
    }
}

}  // namespace

PDFUpdate::PDFUpdate(std::string document) : document_(std::move(document)) {
    const std::size_t start = numberBehind(document_, "startxref\n");
    const std::string_view last = std::string_view(document_).substr(std::min(start, document_.size()));
    size_ = numberBehind(last.substr(0, last.find("stream")), "/Size ");
    trailer_ = fmt::format("{} {} {} /Prev {}", entryOf(last, "/Root ", 'R'), entryOf(last, "/Info ", 'R'),
                           entryOf(last, "/ID ", ']'), start);
}

std::size_t PDFUpdate::newNumbers(std::size_t count) {
    return std::exchange(size_, size_ + count);
}

void PDFUpdate::put(std::size_t number, std::string object) {
    objects_.insert_or_assign(number, std::move(object));
}

std::string PDFUpdate::finished(Deflate deflate) {
    putStreams(deflate);
    putCrossReferences(deflate);
    return std::move(document_);
}

void PDFUpdate::putStream(std::size_t number, std::string_view entries, std::string_view content,
                          Deflate deflate) {
    const std::string packed = deflate(content);
    places_[number] = {.position = document_.size()};
    fmt::format_to(std::back_inserter(document_),
                   "{} 0 obj\n<< {} /Filter /FlateDecode /Length {} >>\nstream\n", number, entries,
                   packed.size());
    document_ += packed;
    document_ += "\nendstream\nendobj\n";
}

void PDFUpdate::putStreams(Deflate deflate) {
    // A reader unpacks a whole stream for one object of it.
    constexpr std::size_t mostInOne = 500;
    for (auto object = objects_.begin(); object != objects_.end();) {
        const std::size_t stream = newNumbers();
        std::string offsets, contents;
        std::size_t count = 0;
        for (; object != objects_.end() && count < mostInOne; ++object, ++count) {
            fmt::format_to(std::back_inserter(offsets), "{} {} ", object->first, contents.size());
            contents += object->second;
            contents += '\n';
            places_[object->first] = {.stream = stream, .position = count};
        }
        const std::string entries = fmt::format("/Type /ObjStm /N {} /First {}", count, offsets.size());
        putStream(stream, entries, offsets + contents, deflate);
    }
}

void PDFUpdate::putCrossReferences(Deflate deflate) {
    const std::size_t number = newNumbers();
    const std::size_t start = document_.size();
    places_[number] = {.position = start};
    std::string table, ranges;
    std::size_t first = 0, next = 0;
    for (const auto& [object, place] : places_) {
        if (object != next && next > 0) {
            fmt::format_to(std::back_inserter(ranges), "{} {} ", first, next - first);
        }
        first = object == next && next > 0 ? first : object;
        next = object + 1;
        table += place.stream > 0 ? '\2' : '\1';
        appendBigEndian(table, place.stream > 0 ? place.stream : place.position, 4);
        appendBigEndian(table, place.stream > 0 ? place.position : 0, 2);
    }
    fmt::format_to(std::back_inserter(ranges), "{} {}", first, next - first);
    const std::string entries =
        fmt::format("/Type /XRef /W [ 1 4 2 ] /Index [ {} ] /Size {} {}", ranges, size_, trailer_);
    putStream(number, entries, table, deflate);
    fmt::format_to(std::back_inserter(document_), "startxref\n{}\n%%EOF\n", start);
}

}  // namespace ScanKit
