#include "ScanKit/Reports/PDF/PDFStructure.h"

#include "ScanKit/Model/EnumerationTable.h"
#include "ScanKit/Reports/PDF/PDFMetadata.h"
#include "ScanKit/Reports/PDF/PDFUpdate.h"
#include "ScanKit/Reports/PDF/QPDFForClang.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <exception>
#include <map>
#include <mutex>
#include <string_view>
#include <utility>

#include <fmt/format.h>
#include <qpdf/Buffer.hh>
#include <qpdf/Pl_Buffer.hh>
#include <qpdf/Pl_Flate.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>
#include <qpdf/QPDFWriter.hh>

namespace ScanKit {
namespace {

using Object = QPDFObjectHandle;

struct RoleRow {
    PDFPages::Role value;
    std::string_view entries;
};
constexpr auto roleRows = std::to_array<RoleRow>({
    {PDFPages::Role::document, "/S/Document"},
    {PDFPages::Role::heading1, "/S/H1"},
    {PDFPages::Role::heading2, "/S/H2"},
    {PDFPages::Role::heading3, "/S/H3"},
    {PDFPages::Role::paragraph, "/S/P"},
    {PDFPages::Role::list, "/S/L"},
    {PDFPages::Role::listItem, "/S/LI"},
    {PDFPages::Role::listBody, "/S/LBody"},
    {PDFPages::Role::table, "/S/Table"},
    {PDFPages::Role::row, "/S/TR"},
    {PDFPages::Role::columnHeader, "/S/TH/A<</O/Table/Scope/Column>>"},
    {PDFPages::Role::rowHeader, "/S/TH/A<</O/Table/Scope/Row>>"},
    {PDFPages::Role::cell, "/S/TD"},
    {PDFPages::Role::link, "/S/Link"},
});
static_assert(hasRowForEachEnumerator(roleRows), "each role needs its row here");

/// The bytes that a library hands over.
std::string bytesOf(const std::shared_ptr<Buffer>& buffer) {
    return {reinterpret_cast<const char*>(buffer->getBuffer()), buffer->getSize()};
}

/// Packs for speed: what a report consists of is packed nearly as well in half the time.
std::string deflated(std::string_view bytes) {
    static std::once_flag once;
    std::call_once(once, [] { Pl_Flate::setCompressionLevel(3); });
    Pl_Buffer packed("packed");
    Pl_Flate flate("flate", &packed, Pl_Flate::a_deflate);
    flate.write(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
    flate.finish();
    return bytesOf(packed.getBufferSharedPointer());
}

std::size_t numberAt(std::string_view text, std::size_t at) {
    std::size_t number = 0;
    at = std::min(text.find_first_not_of(" \n", at), text.size());
    std::from_chars(text.data() + at, text.data() + text.size(), number);
    return number;
}

/// Strikes the drawing library's own tree, which has an object for each operation, off the document's list of objects:
/// before a document is written all of them are read, which takes longer than all else.
void dropTree(std::string& drawn) {
    static constexpr std::array<std::string_view, 4> beginnings{
        "<< /Type /StructElem\n", "<< /Type /StructTreeRoot\n", "<< /Nums [\n", "[\n"};
    static constexpr std::string_view start = "startxref", header = "xref\n0 ", behindNumber = " 0 obj\n";
    const std::size_t list =
        numberAt(drawn, std::min(drawn.rfind(start), drawn.size() - start.size()) + start.size());
    if (drawn.compare(list, header.size(), header) != 0) {
        return;
    }
    constexpr std::size_t entrySize = 20;
    const std::size_t count = numberAt(drawn, list + header.size());
    std::size_t entry = drawn.find('\n', list + header.size()) + 1;
    for (std::size_t i = 0; i < count && entry + entrySize <= drawn.size(); ++i, entry += entrySize) {
        const std::size_t object = numberAt(drawn, entry);
        const std::size_t body = drawn.find(behindNumber, object) + behindNumber.size();
        const std::string_view text = std::string_view(drawn).substr(std::min(body, drawn.size()), 40);
        char& use = drawn[entry + entrySize - 3];
        if (use == 'n' &&
            std::ranges::any_of(beginnings, [&](auto each) { return text.starts_with(each); })) {
            use = 'f';
        }
    }
}

/// The page's content with its artifacts called so, which the drawing library cannot do. A line that begins
/// inside a string follows a backslash, so that no text of a package is taken for a piece's beginning.
std::string withArtifacts(std::string_view content) {
    static const std::string beginning = fmt::format("\n/{} << /MCID ", artifactTag);
    static constexpr std::string_view end = " BDC";
    std::string changed;
    changed.reserve(content.size());
    std::size_t done = 0;
    for (std::size_t at = content.find(beginning); at != std::string_view::npos;
         at = content.find(beginning, at + 1)) {
        const std::size_t tail = content.find(end, at);
        if (at > 0 && content[at - 1] != '\\' && tail != std::string_view::npos) {
            changed.append(content.substr(done, at - done)).append("\n/Artifact BMC");
            done = tail + end.size();
        }
    }
    return changed.append(content.substr(done));
}

/// The drawn document made ready for its structure, which is yet to be put into it.
struct Prepared {
    std::string bytes;
    std::size_t root = 0;  ///< the number of an object to be replaced by the structure's root
    std::vector<std::size_t> pages, links;  ///< the numbers of pages, and of their lists of links
};

void describe(QPDF& pdf, const PDFPages::Properties& properties) {
    Object root = pdf.getRoot();
    root.replaceKey("/Lang", Object::newString("en-US"));
    root.replaceKey("/MarkInfo", Object::newDictionary({{"/Marked", Object::newBool(true)}}));
    root.replaceKey("/ViewerPreferences",
                    Object::newDictionary({{"/DisplayDocTitle", Object::newBool(true)}}));
    Object metadata = pdf.newStream(PDFMetadata::packet(properties));
    metadata.replaceDict(Object::newDictionary(
        {{"/Type", Object::newName("/Metadata")}, {"/Subtype", Object::newName("/XML")}}));
    root.replaceKey("/Metadata", metadata);
    Object information = pdf.getTrailer().getKey("/Info");
    Object created = Object::newString(PDFMetadata::date(properties.created));
    information.replaceKey("/CreationDate", created);
    information.replaceKey("/ModDate", created);
}

/// Says of each embedded font of this kind that its glyphs have the numbers that texts have for them: so it is when nothing
/// is said, and yet it must be.
void completeFonts(Object page) {
    for (auto [name, font] : page.getKey("/Resources").getKey("/Font").getDictAsMap()) {
        if (font.hasKey("/DescendantFonts")) {
            Object inner = font.getKey("/DescendantFonts").getArrayItem(0);
            if (inner.getKey("/Subtype").isNameAndEquals("/CIDFontType2") && !inner.hasKey("/CIDToGIDMap")) {
                inner.replaceKey("/CIDToGIDMap", Object::newName("/Identity"));
            }
        }
    }
}

Prepared prepared(const std::string& drawn, const PDFPages& document) {
    QPDF pdf;
    pdf.setSuppressWarnings(true);
    pdf.processMemoryFile("report", drawn.data(), drawn.size());
    describe(pdf, document.properties);
    Object root = pdf.makeIndirectObject(Object::newDictionary());
    pdf.getRoot().replaceKey("/StructTreeRoot", root);
    std::vector<Object> pages, links;
    for (QPDFPageObjectHelper& helper : QPDFPageDocumentHelper(pdf).getAllPages()) {
        Object page = helper.getObjectHandle();
        page.replaceKey("/StructParents", Object::newInteger(static_cast<long long>(pages.size())));
        page.replaceKey("/Tabs", Object::newName("/S"));
        completeFonts(page);
        Object contents = page.getKey("/Contents");
        contents.replaceStreamData(deflated(withArtifacts(bytesOf(contents.getStreamData()))),
                                   Object::newName("/FlateDecode"), Object::newNull());
        links.push_back(pdf.makeIndirectObject(Object::newArray()));
        page.replaceKey("/Annots", links.back());
        pages.push_back(page);
    }
    QPDFWriter writer(pdf);
    writer.setOutputMemory();
    writer.setDeterministicID(true);
    writer.setObjectStreamMode(qpdf_o_generate);
    writer.setMinimumPDFVersion("1.7");
    writer.write();
    const auto numberOf = [&](Object object) {
        return static_cast<std::size_t>(writer.getRenumberedObjGen(object.getObjGen()).getObj());
    };
    Prepared made{.bytes = bytesOf(writer.getBufferSharedPointer()), .root = numberOf(root)};
    for (std::size_t i = 0; i < pages.size(); ++i) {
        made.pages.push_back(numberOf(pages[i]));
        made.links.push_back(numberOf(links[i]));
    }
    return made;
}

/// A string as the format writes it: any text in UTF-16, digit by digit.
std::string inHexadecimal(const std::string& text) {
    return Object::newUnicodeString(text).unparse();
}

/// Writes the tree of parts, and the links.
class Structure {
public:
    Structure(const Prepared& document, const PDFPages& pages)
        : document_(document),
          sheetHeight_(pages.sheet.height),
          update_(document.bytes),
          elements_(pages.structure),
          first_(update_.newNumbers(elements_.size())),
          kids_(elements_.size()),
          pages_(elements_.size()) {
        for (std::size_t i = 1; i < elements_.size(); ++i) {
            append(kids_[elements_[i].parent], "{} 0 R", first_ + i);
        }
        addSpokenTexts(pages.pages);
    }

    /// `place` goes on from link to link.
    void addPage(std::size_t index, const PDFPages::Page& ops, const PDFPages::Rectangle*& place) {
        std::string owners, links;
        std::size_t piece = 0;
        for (const PDFPages::Op& op : ops) {
            const auto* text = std::get_if<PDFPages::Text>(&op);
            if (text == nullptr || !text->element) {
                continue;
            }
            append(owners, "{} 0 R", first_ + *text->element);
            addPiece(*text->element, document_.pages[index], piece++);
            if (text->string.link) {
                append(links, "{} 0 R", addLink(*text, document_.pages[index], *place++));
            }
        }
        const std::size_t number = update_.newNumbers();
        update_.put(number, fmt::format("[{}]", owners));
        append(pageOwners_, "{} {} 0 R", index, number);
        update_.put(document_.links[index], fmt::format("[{}]", links));
    }

    std::string finished() {
        for (std::size_t i = 0; i < elements_.size(); ++i) {
            const std::size_t parent = i == 0 ? document_.root : first_ + elements_[i].parent;
            std::string object =
                fmt::format("<<{}/P {} 0 R", rowOf(roleRows, elements_[i].role).entries, parent);
            if (pages_[i] != 0) {
                append(object, "/Pg {} 0 R", pages_[i]);
            }
            if (const auto spoken = spoken_.find(i); spoken != spoken_.end()) {
                append(object, "/ActualText {}", inHexadecimal(spoken->second));
            }
            if (!kids_[i].empty()) {
                append(object, "/K[{}]", kids_[i]);
            }
            update_.put(first_ + i, object + ">>");
        }
        const std::size_t owners = update_.newNumbers();
        update_.put(owners, fmt::format("<</Nums[{} {}]>>", pageOwners_, linkOwners_));
        update_.put(document_.root,
                    fmt::format("<</Type/StructTreeRoot/K {} 0 R/ParentTree {} 0 R/ParentTreeNextKey {}>>",
                                first_, owners, document_.pages.size() + linkCount_));
        return update_.finished(deflated);
    }

private:
    template <typename... Values>
    static void append(std::string& list, fmt::format_string<Values...> format, Values&&... values) {
        if (!list.empty()) {
            list += ' ';
        }
        fmt::format_to(std::back_inserter(list), format, std::forward<Values>(values)...);
    }

    /// What is drawn from the right, in letters that join, or as boxes, is no text in the order of its letters: such
    /// parts have their text beside what is drawn.
    void addSpokenTexts(const std::vector<PDFPages::Page>& pages) {
        // A letter of Hebrew and of whatever stands behind it begins with a byte that no letter of Latin, Greek or
        // Cyrillic has, and that is not the one of dashes, quotes and symbols.
        const auto isOther = [](char c) {
            const auto byte = static_cast<unsigned char>(c);
            return byte >= 0xD6 && byte != 0xE2;
        };
        forEachPart(pages, [&](std::size_t element, const std::string& text) {
            if (std::ranges::any_of(text, isOther)) {
                spoken_[element];
            }
        });
        forEachPart(pages, [&](std::size_t element, const std::string& text) {
            if (const auto part = spoken_.find(element); part != spoken_.end()) {
                part->second += text;
            }
        });
    }

    static void forEachPart(const std::vector<PDFPages::Page>& pages, const auto& body) {
        for (const PDFPages::Page& page : pages) {
            for (const PDFPages::Op& op : page) {
                const auto* text = std::get_if<PDFPages::Text>(&op);
                if (text != nullptr && text->element) {
                    body(*text->element, text->string.text);
                }
            }
        }
    }

    /// The page that a part begins on is said once; a piece on another one says so itself.
    void addPiece(std::size_t element, std::size_t page, std::size_t number) {
        if (pages_[element] == 0) {
            pages_[element] = page;
        }
        if (pages_[element] == page) {
            append(kids_[element], "{}", number);
        } else {
            append(kids_[element], "<</Type/MCR/Pg {} 0 R/MCID {}>>", page, number);
        }
    }

    std::size_t addLink(const PDFPages::Text& text, std::size_t page, const PDFPages::Rectangle& place) {
        const std::string& address = *text.string.link;
        const std::size_t number = update_.newNumbers(), owner = document_.pages.size() + linkCount_++;
        const double top = sheetHeight_ - place.y;
        // An address holds no parenthesis and no backslash, which would end the string: they are escaped.
        update_.put(number,
                    fmt::format("<</Type/Annot/Subtype/Link/Rect[{:.2f} {:.2f} {:.2f} {:.2f}]/BS<</W 0>>/F 4"
                                "/StructParent {}/Contents {}/A<</Type/Action/S/URI/URI({})>>>>",
                                place.x, top - place.height, place.x + place.width, top, owner,
                                inHexadecimal(text.string.text + ": " + address), address));
        append(linkOwners_, "{} {} 0 R", owner, first_ + *text.element);
        append(kids_[*text.element], "<</Type/OBJR/Pg {} 0 R/Obj {} 0 R>>", page, number);
        return number;
    }

    const Prepared& document_;
    double sheetHeight_;
    PDFUpdate update_;
    const std::vector<PDFPages::Element>& elements_;
    std::size_t first_;               ///< the object number of the first element, which the others follow
    std::vector<std::string> kids_;   ///< of each element, in the format's words
    std::vector<std::size_t> pages_;  ///< likewise; 0 for one without content of its own
    std::map<std::size_t, std::string> spoken_;  ///< the texts of the elements that need them
    std::string pageOwners_, linkOwners_;
    std::size_t linkCount_ = 0;
};

}  // namespace

std::string withStructure(std::string drawn, const PDFPages& document,
                          const std::vector<PDFPages::Rectangle>& links) {
    try {
        dropTree(drawn);
        const Prepared ready = prepared(drawn, document);
        Structure structure(ready, document);
        const PDFPages::Rectangle* place = links.data();
        for (std::size_t i = 0; i < document.pages.size(); ++i) {
            structure.addPage(i, document.pages[i], place);
        }
        return structure.finished();
    } catch (const std::exception&) {
        return drawn;
    }
}

}  // namespace ScanKit
