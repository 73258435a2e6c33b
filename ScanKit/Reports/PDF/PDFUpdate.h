#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>

namespace ScanKit {

/// Adds objects to a finished PDF, or replaces some, by appending to it as the format provides for. A report's structure
/// has seven objects a package: written as text they cost a tenth of what a library's object model takes for them.
class PDFUpdate {
public:
    /// The document must end in a cross-reference stream.
    explicit PDFUpdate(std::string document);

    /// A number for this many new objects in a row: that of the first.
    std::size_t newNumbers(std::size_t count = 1);
    /// The object in the format's own words; no stream. Replaces the one of this number.
    void put(std::size_t number, std::string object);

    using Deflate = std::string (*)(std::string_view);
    /// The document with all that was put.
    std::string finished(Deflate deflate);

private:
    void putStreams(Deflate deflate);
    void putCrossReferences(Deflate deflate);
    void putStream(std::size_t number, std::string_view entries, std::string_view content, Deflate deflate);

    /// Where an object is: the stream that holds it and its place there; or, without a stream, an offset.
    struct Place {
        std::size_t stream = 0, position = 0;
    };
    std::string document_;
    std::string trailer_;  ///< the entries that the last cross-references had and the next must have, too
    std::size_t size_ = 0;
    std::map<std::size_t, std::string> objects_;
    std::map<std::size_t, Place> places_;
};

}  // namespace ScanKit
