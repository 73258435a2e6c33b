#include "Tests/Reports/TaggedDocument.h"

#include "ScanKit/Reports/PDF/QPDFForClang.h"

#include <map>
#include <set>

#include <fmt/format.h>
#include <qpdf/Buffer.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>

namespace ScanKit {
namespace {

using Object = QPDFObjectHandle;
using Faults = std::vector<std::string>;
using Piece = std::pair<QPDFObjGen, int>;  ///< a page, and the number of some of its content

/// Collects the numbered content of one page, and whatever is drawn outside of content that says what it is.
class ContentReader : public Object::ParserCallbacks {
public:
    explicit ContentReader(Faults& faults) : faults_(faults) {}

    void handleObject(Object object) override {
        if (!object.isOperator()) {
            operands_.push_back(object);
            return;
        }
        const std::string name = object.getOperatorValue();
        static const std::set<std::string> drawing{"Tj", "TJ", "'",  "\"", "S",  "s",  "f", "F",
                                                   "f*", "B",  "B*", "b",  "b*", "Do", "sh"};
        if (name == "BMC" || name == "BDC") {
            begin();
        } else if (name == "EMC") {
            open_.pop_back();
        } else if (drawing.contains(name) && open_.empty()) {
            faults_.push_back("draws outside of marked content: " + name);
        }
        operands_.clear();
    }
    void handleEOF() override {}

    std::set<int> numbers;

private:
    void begin() {
        const bool isArtifact = operands_.front().getName() == "/Artifact";
        if (isArtifact && !open_.empty()) {
            faults_.emplace_back("an artifact inside of a part of the document");
        }
        open_.push_back(isArtifact);
        Object properties = operands_.back();
        if (properties.isDictionary() && properties.hasKey("/MCID")) {
            const int number = properties.getKey("/MCID").getIntValueAsInt();
            if (!numbers.insert(number).second) {
                faults_.push_back(fmt::format("content has the number {} twice", number));
            }
        } else if (!isArtifact && open_.size() == 1) {
            faults_.emplace_back("content is neither numbered nor an artifact");
        }
    }

    Faults& faults_;
    std::vector<Object> operands_;
    std::vector<bool> open_;
};

/// Walks the tree of parts.
class Tree {
public:
    Tree(QPDF& pdf, Faults& faults) : faults_(faults) {
        Object root = pdf.getRoot().getKey("/StructTreeRoot");
        if (!root.isDictionary()) {
            faults_.emplace_back("no structure");
            return;
        }
        Object numbers = root.getKey("/ParentTree").getKey("/Nums");
        for (int i = 0; i + 1 < numbers.getArrayNItems(); i += 2) {
            owners_[numbers.getArrayItem(i).getIntValueAsInt()] = numbers.getArrayItem(i + 1);
        }
        walk(root.getKey("/K"), root);
        if (headings_ == 0) {
            faults_.emplace_back("no heading");
        }
    }

    /// The part that holds this piece by the tree must be its owner by the list of owners.
    void expectOwner(Object page, int number) {
        const auto held = holders_.find({page.getObjGen(), number});
        Object owners = owners_[page.getKey("/StructParents").getIntValueAsInt()];
        Object owner = owners.isArray() && number < owners.getArrayNItems() ? owners.getArrayItem(number)
                                                                            : Object::newNull();
        if (held == holders_.end() || owner.getObjGen() != held->second) {
            faults_.push_back(
                fmt::format("the content {} is in no part, or in another than it says", number));
        } else {
            holders_.erase(held);
        }
    }
    void expectLink(Object link) {
        Object owner = owners_[link.getKey("/StructParent").getIntValueAsInt()];
        const auto held = links_.find(link.getObjGen());
        if (!owner.isDictionary() || owner.getKey("/S").getName() != "/Link" || held == links_.end() ||
            held->second != owner.getObjGen()) {
            faults_.emplace_back("a link that is in no part of the document");
        }
        if (!link.getKey("/Contents").isString() || link.getKey("/Contents").getUTF8Value().empty()) {
            faults_.emplace_back("a link that says nothing");
        }
    }
    /// To be asked when all pages were looked at.
    void expectNothingLeft() {
        if (!holders_.empty()) {
            faults_.emplace_back("a part holds content that no page has");
        }
    }

private:
    void walk(Object part, Object parent) {
        const std::string role = part.getKey("/S").getName();
        if (part.getKey("/P").getObjGen() != parent.getObjGen()) {
            faults_.push_back(role + " names another parent");
        }
        expectPlace(role, parent.hasKey("/S") ? parent.getKey("/S").getName() : "");
        if (role == "/TH" && !part.hasKey("/A")) {
            faults_.emplace_back("a header cell without its scope");
        }
        std::size_t cells = 0;
        Object kids = part.getKey("/K");
        for (Object kid : kids.isArray() ? kids.getArrayAsVector() : std::vector<Object>{kids}) {
            cells += walkKid(kid, part) ? 1 : 0;
        }
        if (role == "/Table") {
            columns_ = 0;
        } else if (role == "/TR") {
            if (columns_ != 0 && cells != columns_) {
                faults_.push_back(fmt::format("a row of {} cells in a table of {}", cells, columns_));
            }
            columns_ = cells;
        }
    }

    /// Whether it is another part.
    bool walkKid(Object kid, Object part) {
        if (kid.isInteger()) {
            holders_[{part.getKey("/Pg").getObjGen(), kid.getIntValueAsInt()}] = part.getObjGen();
        } else if (kid.isDictionary() && kid.hasKey("/MCID")) {
            holders_[{kid.getKey("/Pg").getObjGen(), kid.getKey("/MCID").getIntValueAsInt()}] =
                part.getObjGen();
        } else if (kid.isDictionary() && kid.hasKey("/Obj")) {
            links_[kid.getKey("/Obj").getObjGen()] = part.getObjGen();
        } else if (kid.isDictionary()) {
            walk(kid, part);
            return true;
        } else if (part.getKey("/S").getName() != "/TD") {
            faults_.push_back(part.getKey("/S").getName() + " is empty");
        }
        return false;
    }

    void expectPlace(const std::string& role, const std::string& parent) {
        static const std::map<std::string, std::string> parents{{"/Document", ""}, {"/TR", "/Table"},
                                                                {"/TD", "/TR"},    {"/TH", "/TR"},
                                                                {"/LI", "/L"},     {"/LBody", "/LI"}};
        static const std::set<std::string> others{"/H1", "/H2",    "/H3",   "/P",
                                                  "/L",  "/Table", "/Link", "/Caption"};
        const auto only = parents.find(role);
        if (only == parents.end() ? !others.contains(role) : only->second != parent) {
            faults_.push_back(role + " in " + parent);
        }
        if (role.size() == 3 && role[1] == 'H' && role != "/TH") {
            const int level = role[2] - '0';
            if (level > level_ + 1) {
                faults_.push_back(fmt::format("a heading of level {} below one of {}", level, level_));
            }
            level_ = level;
            ++headings_;
        }
    }

    Faults& faults_;
    std::map<int, Object> owners_;
    std::map<Piece, QPDFObjGen> holders_;
    std::map<QPDFObjGen, QPDFObjGen> links_;
    std::size_t columns_ = 0;
    int level_ = 0, headings_ = 0;
};

void checkFonts(Object page, Faults& faults) {
    for (auto [name, font] : page.getKey("/Resources").getKey("/Font").getDictAsMap()) {
        const bool isComposite = font.hasKey("/DescendantFonts");
        Object inner = isComposite ? font.getKey("/DescendantFonts").getArrayItem(0) : font;
        Object description = inner.getKey("/FontDescriptor");
        const bool isEmbedded = inner.getKey("/Subtype").getName() == "/Type3" ||
                                (description.isDictionary() &&
                                 (description.hasKey("/FontFile") || description.hasKey("/FontFile2") ||
                                  description.hasKey("/FontFile3")));
        if (inner.getKey("/Subtype").getName() == "/CIDFontType2" && !inner.hasKey("/CIDToGIDMap")) {
            faults.push_back("the font " + name + " does not say which glyphs its numbers mean");
        }
        if (!isEmbedded || !font.getKey("/ToUnicode").isStream()) {
            faults.push_back("the font " + name + " is not embedded, or does not say which letters it draws");
        }
    }
}

void checkDescription(QPDF& pdf, Faults& faults) {
    Object root = pdf.getRoot();
    Object title = pdf.getTrailer().getKey("/Info").getKey("/Title");
    const std::shared_ptr<Buffer> metadata =
        root.getKey("/Metadata").isStream() ? root.getKey("/Metadata").getStreamData() : nullptr;
    const std::string xml =
        metadata ? std::string(reinterpret_cast<const char*>(metadata->getBuffer()), metadata->getSize())
                 : "";
    const std::pair<bool, const char*> demands[] = {
        {root.getKey("/Lang").isString(), "no language"},
        {root.getKey("/MarkInfo").isDictionary() && root.getKey("/MarkInfo").getKey("/Marked").getBoolValue(),
         "does not say that it is tagged"},
        {root.getKey("/ViewerPreferences").isDictionary() &&
             root.getKey("/ViewerPreferences").getKey("/DisplayDocTitle").getBoolValue(),
         "shows no title"},
        {title.isString() && !title.getUTF8Value().empty(), "no title"},
        {xml.find("<pdfuaid:part>1</pdfuaid:part>") != std::string::npos, "does not make its claim"},
        {xml.find("<dc:title>") != std::string::npos, "no title in the metadata"}};
    for (const auto& [isMet, fault] : demands) {
        if (!isMet) {
            faults.emplace_back(fault);
        }
    }
}

}  // namespace

std::vector<std::string> faultsForListeners(const std::string& document,
                                            const std::function<void(QPDF&)>& damage) {
    Faults faults;
    QPDF pdf;
    pdf.processMemoryFile("document", document.data(), document.size());
    if (damage) {
        damage(pdf);
    }
    checkDescription(pdf, faults);
    Tree tree(pdf, faults);
    for (QPDFPageObjectHelper& helper : QPDFPageDocumentHelper(pdf).getAllPages()) {
        Object page = helper.getObjectHandle();
        ContentReader reader(faults);
        helper.parseContents(&reader);
        for (const int number : reader.numbers) {
            tree.expectOwner(page, number);
        }
        if (page.getKey("/Tabs").isName() ? page.getKey("/Tabs").getName() != "/S" : true) {
            faults.emplace_back("the tab key follows another order than the reader");
        }
        for (Object link : page.getKey("/Annots").isArray() ? page.getKey("/Annots").getArrayAsVector()
                                                            : std::vector<Object>{}) {
            tree.expectLink(link);
        }
        checkFonts(page, faults);
    }
    tree.expectNothingLeft();
    return faults;
}

}  // namespace ScanKit
