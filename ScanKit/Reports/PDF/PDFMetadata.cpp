#include "ScanKit/Reports/PDF/PDFMetadata.h"

#include <algorithm>
#include <string_view>

#include <fmt/format.h>

namespace ScanKit::PDFMetadata {
namespace {

std::string escaped(std::string_view text) {
    std::string xml;
    for (const char c : text) {
        switch (c) {
            case '&':
                xml += "&amp;";
                break;
            case '<':
                xml += "&lt;";
                break;
            case '>':
                xml += "&gt;";
                break;
            default:
                xml += c;
        }
    }
    return xml;
}

}  // namespace

std::string date(Date date) {
    std::string digits = Dates::iso8601(date);
    std::erase_if(digits, [](char c) { return c == '-' || c == ':' || c == 'T'; });
    return "D:" + digits;
}

std::string packet(const PDFPages::Properties& properties) {
    const auto& [title, author, creator, created] = properties;
    const std::string when = Dates::iso8601(created);
    std::string xml =
        "<?xpacket begin=\"\xEF\xBB\xBF\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>\n"
        "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\">\n"
        "<rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">\n"
        "<rdf:Description rdf:about=\"\" xmlns:dc=\"http://purl.org/dc/elements/1.1/\""
        " xmlns:xmp=\"http://ns.adobe.com/xap/1.0/\" xmlns:pdfuaid=\"http://www.aiim.org/pdfua/ns/id/\">\n"
        "<pdfuaid:part>1</pdfuaid:part>\n";
    xml += fmt::format(
        "<dc:title><rdf:Alt><rdf:li xml:lang=\"x-default\">{}</rdf:li></rdf:Alt></dc:title>\n"
        "<dc:language><rdf:Bag><rdf:li>en-US</rdf:li></rdf:Bag></dc:language>\n",
        escaped(title));
    if (!author.empty()) {
        xml +=
            fmt::format("<dc:creator><rdf:Seq><rdf:li>{}</rdf:li></rdf:Seq></dc:creator>\n", escaped(author));
    }
    if (!creator.empty()) {
        xml += fmt::format("<xmp:CreatorTool>{}</xmp:CreatorTool>\n", escaped(creator));
    }
    xml += fmt::format(
        "<xmp:CreateDate>{0}</xmp:CreateDate>\n<xmp:ModifyDate>{0}</xmp:ModifyDate>\n"
        "</rdf:Description>\n</rdf:RDF>\n</x:xmpmeta>\n<?xpacket end=\"r\"?>\n",
        when);
    return xml;
}

}  // namespace ScanKit::PDFMetadata
