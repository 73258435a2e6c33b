#include "ScanKit/Reports/Exports.h"
#include "ScanKit/Reports/HTML/HTMLStyle.h"
#include "ScanKit/Reports/HTML/HTMLWriter.h"
#include "ScanKit/Reports/NoticeParts.h"
#include "ScanKit/Reports/ReportSummary.h"
#include "ScanKit/Support/Dates.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace ScanKit::Exports {
namespace {

/// A text, with all packages that it belongs to.
struct Section {
    NoticePart part;
    std::vector<const Dependency*> packages;
};

/// A package, with the places of its texts in the list of sections.
struct Entry {
    const Dependency* package = nullptr;
    std::vector<std::size_t> sections;
};

/// The reported packages and their texts, each text once, in the order in which the packages bring them.
class Contents {
public:
    explicit Contents(const std::vector<const Dependency*>& dependencies) {
        for (const Dependency* dependency : dependencies) {
            Entry entry{.package = dependency};
            for (NoticePart& part : noticeParts(*dependency)) {
                const std::size_t place = placeOf(std::move(part));
                // Two files of a package may hold the same.
                if (sections_[place].packages.empty() || sections_[place].packages.back() != dependency) {
                    sections_[place].packages.push_back(dependency);
                    entry.sections.push_back(place);
                }
            }
            entries_.push_back(std::move(entry));
        }
    }

    const std::vector<Entry>& entries() const { return entries_; }
    const std::vector<Section>& sections() const { return sections_; }

    /// About what the page will hold, so that its text is not copied over and over while it grows.
    std::size_t expectedSize() const {
        std::size_t size = 8'000 + entries_.size() * 700;
        for (const Section& section : sections_) {
            size += 300 + section.part.text.value_or("").size() * 21 / 20;
        }
        return size;
    }

private:
    std::size_t placeOf(NoticePart part) {
        std::vector<std::size_t>& places = places_[part.text.value_or("")];
        const auto same =
            std::ranges::find_if(places, [&](std::size_t place) { return sections_[place].part == part; });
        if (same != places.end()) {
            return *same;
        }
        places.push_back(sections_.size());
        sections_.push_back({.part = std::move(part), .packages = {}});
        return sections_.size() - 1;
    }

    std::vector<Entry> entries_;
    std::vector<Section> sections_;
    std::unordered_map<std::string_view, std::vector<std::size_t>> places_;  ///< by the texts themselves
};

void writeHead(HTMLWriter& page, std::string_view project) {
    page.markup(
        "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
        "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src 'sha256-");
    page.markup(htmlStyleDigest);
    page.markup(
        "'; base-uri 'none'; form-action 'none'\">\n"
        "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
        "<meta name=\"color-scheme\" content=\"light dark\">\n<meta name=\"referrer\" content=\"no-referrer\">\n"
        "<title>Third-party software notices: ");
    page.text(project);
    page.markup("</title>\n<style>");
    page.markup(htmlStyle);
    page.markup("</style>\n</head>\n");
}

void writeName(HTMLWriter& page, const Dependency& package) {
    page.isolated(package.name);
    if (!package.version.empty()) {
        page.markup(" ");
        page.isolated(package.version);
    }
}

/// What a link to it reads, behind the package's name.
std::string_view kindOf(const NoticePart& part) {
    if (part.isNotice) {
        return "notice";
    }
    return part.text ? "further text" : "text not included";
}

void writeList(HTMLWriter& page, const Contents& contents) {
    page.markup("<nav aria-labelledby=\"packages\">\n<h2 id=\"packages\">Packages (");
    page.number(contents.entries().size());
    page.markup(")</h2>\n<ul role=\"list\">\n");
    for (const Entry& entry : contents.entries()) {
        page.markup("<li><a href=\"#t");
        page.number(entry.sections.front() + 1);
        page.markup("\">");
        writeName(page, *entry.package);
        page.markup("</a> <span class=\"quiet\">");
        page.isolated(entry.package->license.value_or("license unknown"));
        // The name leads to the first text; each further one has a link of its own.
        for (std::size_t i = 1; i < entry.sections.size(); ++i) {
            const std::string_view kind = kindOf(contents.sections()[entry.sections[i]].part);
            page.markup(" · <a href=\"#t");
            page.number(entry.sections[i] + 1);
            page.markup("\" aria-label=\"");
            page.text(kind);
            page.markup(" of ");
            page.text(entry.package->name);
            page.markup("\">");
            page.text(kind);
            page.markup("</a>");
        }
        page.markup("</span></li>\n");
    }
    page.markup("</ul>\n</nav>\n");
}

/// "MIT: left-pad 1.3.0 and 4 more"
void writeHeading(HTMLWriter& page, const Section& section) {
    const Dependency& first = *section.packages.front();
    page.markup("<h3>");
    if (section.part.isNotice) {
        page.markup("Notice");
    } else if (section.part.text || section.part.identifier) {
        page.isolated(section.part.identifier.value_or(first.license.value_or("License text")));
        page.text(section.part.text ? "" : ", not included");
    } else {
        page.markup("No license text");
    }
    page.markup(": ");
    writeName(page, first);
    if (section.packages.size() > 1) {
        page.markup(" and ");
        page.number(section.packages.size() - 1);
        page.markup(" more");
    }
    page.markup("</h3>\n");
}

void writeOrigin(HTMLWriter& page, const Dependency& package) {
    page.markup("License: ");
    page.isolated(package.license.value_or("Unknown – see the package"));
    if (package.source) {
        page.markup(" · Source: ");
        page.address(*package.source);
    }
}

void writePackages(HTMLWriter& page, const Section& section) {
    if (section.packages.size() == 1) {
        // Its name is the heading.
        page.markup("<p class=\"quiet\">");
        writeOrigin(page, *section.packages.front());
        page.markup("</p>\n");
        return;
    }
    page.markup("<ul role=\"list\">\n");
    for (const Dependency* package : section.packages) {
        page.markup("<li>");
        writeName(page, *package);
        page.markup(" <span class=\"quiet\">");
        writeOrigin(page, *package);
        page.markup("</span></li>\n");
    }
    page.markup("</ul>\n");
}

void writeTexts(HTMLWriter& page, const Contents& contents) {
    page.markup("<main id=\"texts\">\n<h2>Licenses and notices</h2>\n");
    std::size_t number = 0;
    for (const Section& section : contents.sections()) {
        page.markup("<section id=\"t");
        page.number(++number);
        page.markup("\">\n");
        writeHeading(page, section);
        writePackages(page, section);
        for (const std::string& remark : section.part.remarks) {
            page.markup("<p class=\"remark\">");
            page.text(remark);
            page.markup("</p>\n");
        }
        if (section.part.text) {
            page.preformatted(*section.part.text);
        }
        page.markup("</section>\n");
    }
    page.markup("</main>\n");
}

}  // namespace

std::string html(const ScanResult& result, const ReportOptions& options) {
    const std::string project = Text::oneLine(options.projectName);
    const Contents contents(reportedDependencies(result, options));
    HTMLWriter page(contents.expectedSize());
    writeHead(page, project);
    page.markup("<body>\n");
    if (!contents.entries().empty()) {
        page.markup("<a class=\"skip\" href=\"#texts\">Skip to the licenses</a>\n");
    }
    page.markup("<header>\n<h1>Third-party software notices</h1>\n<p class=\"project\">");
    page.isolated(project);
    page.markup("</p>\n<p>");
    page.isolated(project);
    page.markup(
        " uses the open-source software listed below. Each package's license and copyright notices follow.</p>\n"
        "<p class=\"quiet\">Generated ");
    page.text(Dates::longDate(result.scannedAt));
    page.markup(" with ");
    page.isolated(Text::oneLine(options.appName));
    page.markup(". ");
    page.text(disclaimer);
    page.markup("</p>\n</header>\n");
    if (contents.entries().empty()) {
        page.markup("<main>\n<h2>Packages (0)</h2>\n<p>There are no packages to list.</p>\n</main>\n");
    } else {
        writeList(page, contents);
        writeTexts(page, contents);
    }
    page.markup("</body>\n</html>\n");
    return page.take();
}

}  // namespace ScanKit::Exports
