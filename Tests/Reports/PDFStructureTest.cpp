#include "ScanKit/Reports/PDF/PDFReport.h"
#include "ScanKit/Reports/PDF/QPDFForClang.h"
#include "Tests/Reports/SampleResult.h"
#include "Tests/Reports/TaggedDocument.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>

namespace ScanKit {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Names that a page's content must not take for its own beginnings and ends, wherever its lines break.
ScanResult misleadingResult() {
    ScanResult result = resultOf({});
    for (std::size_t i = 0; i < 80; ++i) {
        result.dependencies.push_back({.name = std::string(i, 'x') + "/Private << /MCID 3 >> BDC EMC (",
                                       .source = "https://example.com/'(x) >> endobj"});
    }
    return result;
}

TEST(PDFStructure, LeavesAMachineNothingToSayAgainstIt) {
    for (const ScanResult& result : {resultOf({}), sampleResult(), hostileResult(), misleadingResult()}) {
        const ReportOptions options{.projectName = "<A & B>", .preparedBy = "C > D", .includeDev = true};
        EXPECT_THAT(faultsForListeners(PDFReport::document(result, options)), IsEmpty())
            << result.dependencies.size() << " packages";
    }
}

QPDFObjectHandle firstPage(QPDF& pdf) {
    return QPDFPageDocumentHelper(pdf).getAllPages().front().getObjectHandle();
}

QPDFObjectHandle document(QPDF& pdf) {
    return pdf.getRoot().getKey("/StructTreeRoot").getKey("/K");
}

/// The first part of this role, from the top.
QPDFObjectHandle partOf(QPDFObjectHandle part, const std::string& role) {
    if (part.isDictionary() && part.hasKey("/S")) {
        if (part.getKey("/S").getName() == role) {
            return part;
        }
        QPDFObjectHandle kids = part.getKey("/K");
        for (QPDFObjectHandle kid :
             kids.isArray() ? kids.getArrayAsVector() : std::vector<QPDFObjectHandle>{kids}) {
            if (QPDFObjectHandle found = partOf(kid, role); found.isDictionary()) {
                return found;
            }
        }
    }
    return QPDFObjectHandle::newNull();
}

/// Adds the text that each part gives in place of what is drawn.
void addSpoken(QPDFObjectHandle part, std::vector<std::string>& spoken) {
    if (part.isDictionary() && part.hasKey("/S")) {
        if (part.hasKey("/ActualText")) {
            spoken.push_back(part.getKey("/ActualText").getUTF8Value());
        }
        QPDFObjectHandle kids = part.getKey("/K");
        for (QPDFObjectHandle kid :
             kids.isArray() ? kids.getArrayAsVector() : std::vector<QPDFObjectHandle>{kids}) {
            addSpoken(kid, spoken);
        }
    }
}

TEST(PDFStructure, GivesTheLettersOfWhatIsNotDrawnInTheirOrder) {
    std::string longName;
    while (longName.size() < 20'000) {
        longName += "latin letters over more than one page, ";
    }
    longName += "שלום!";
    const std::string drawn =
        PDFReport::document(resultOf({{.name = "שלום!", .source = "https://example.com", .license = "кит"},
                                      {.name = longName},
                                      {.name = "𐎀 ไทย"}}),
                            {});
    QPDF pdf;
    pdf.processMemoryFile("document", drawn.data(), drawn.size());
    std::vector<std::string> spoken;
    addSpoken(document(pdf), spoken);
    EXPECT_THAT(spoken, ElementsAre("שלום!", longName, "𐎀 ไทย"));
}

TEST(PDFStructure, HasTheFilesReadAsAList) {
    const std::string drawn = PDFReport::document(sampleResult(), sampleOptions());
    QPDF pdf;
    pdf.processMemoryFile("document", drawn.data(), drawn.size());
    QPDFObjectHandle list = partOf(document(pdf), "/L");
    ASSERT_TRUE(list.isDictionary());
    EXPECT_TRUE(partOf(partOf(list, "/LI"), "/LBody").isDictionary());
}

TEST(PDFStructure, IsLookedAtByACheckThatFindsFaults) {
    const std::string sound = PDFReport::document(sampleResult(), sampleOptions());
    const std::pair<const char*, void (*)(QPDF&)> damages[] = {
        {"no language", [](QPDF& pdf) { pdf.getRoot().removeKey("/Lang"); }},
        {"no claim", [](QPDF& pdf) { pdf.getRoot().removeKey("/Metadata"); }},
        {"no tree", [](QPDF& pdf) { pdf.getRoot().removeKey("/StructTreeRoot"); }},
        {"a lost part", [](QPDF& pdf) { document(pdf).getKey("/K").eraseItem(1); }},
        {"a short row", [](QPDF& pdf) { partOf(document(pdf), "/TR").getKey("/K").eraseItem(0); }},
        {"a skipped level",
         [](QPDF& pdf) { partOf(document(pdf), "/H2").replaceKey("/S", QPDFObjectHandle::newName("/H3")); }},
        {"no scope", [](QPDF& pdf) { partOf(document(pdf), "/TH").removeKey("/A"); }},
        {"a mute link",
         [](QPDF& pdf) {
             partOf(document(pdf), "/Link")
                 .getKey("/K")
                 .getArrayItem(1)
                 .getKey("/Obj")
                 .removeKey("/Contents");
         }},
        {"no order", [](QPDF& pdf) { firstPage(pdf).removeKey("/Tabs"); }},
        {"unmarked ink",
         [](QPDF& pdf) {
             firstPage(pdf).addPageContents(QPDFObjectHandle::newStream(&pdf, " 0 0 m 9 9 l S "), false);
         }},
    };
    for (const auto& [what, damage] : damages) {
        EXPECT_FALSE(faultsForListeners(sound, damage).empty()) << what;
    }
}

}  // namespace
}  // namespace ScanKit
