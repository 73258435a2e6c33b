#include "QuorvaneApp/Views/Dialogs/HelpPage.h"

#include "QuorvaneApp/Model/Texts.h"
#include "ScanKit/Model/EnumerationTable.h"
#include "ScanKit/Model/Flag.h"
#include "ScanKit/Model/LicenseBasis.h"
#include "ScanKit/Model/LicenseCategory.h"

#include <array>

namespace {

using ScanKit::Flag;
using ScanKit::LicenseBasis;
using ScanKit::LicenseCategory;

/// The compiler checks that each table has its whole enumeration, so no new flag goes without an explanation.
template <typename Value>
struct Meaning {
    Value value;
    const char* words;
};

constexpr auto categoryMeanings = std::to_array<Meaning<LicenseCategory>>({
    {LicenseCategory::publicDomain, "The authors gave up their rights. Nothing is asked of you."},
    {LicenseCategory::permissive,
     "Use it freely; keep its copyright notice and license text with your program."},
    {LicenseCategory::weakCopyleft,
     "Changes to the package itself must stay open under the same license. Your own code can stay closed."},
    {LicenseCategory::strongCopyleft,
     "A program that contains the package may have to be published under the same license."},
    {LicenseCategory::networkCopyleft,
     "Like copyleft, and offering the program over a network can be enough to bring the duty about."},
    {LicenseCategory::proprietary,
     "The license is not an open-source license. Read its terms before you use the package."},
    {LicenseCategory::unknown,
     "No license was found, or none that is recognized, so nothing can be said about it."},
});
static_assert(ScanKit::hasRowForEachEnumerator(categoryMeanings), "each enumerator needs its row here");

constexpr auto flagMeanings = std::to_array<Meaning<Flag::Case>>({
    {Flag::networkCopyleft,
     "The license has network copyleft. Have it reviewed before you ship or host the program."},
    {Flag::strongCopyleft, "The license has copyleft. Have it reviewed before you ship the program."},
    {Flag::proprietary, "The license is not an open-source license."},
    {Flag::missing,
     "Neither the package's metadata nor a license file says anything. By default nobody may use it."},
    {Flag::unknown,
     "There is a license that Quorvane doesn’t know, or the license file sets terms beyond the license. Read it, or have it read."},
    {Flag::mismatch,
     "The metadata names one license and the license file reads as another. Ask the authors."},
    {Flag::weakCopyleft, "The license has weak copyleft: usually fine, as long as you keep to its terms."},
    {Flag::notOnDisk,
     "The package's files are not on this computer, so its license file could not be read. Install the packages and scan again."},
    {Flag::noLicenseFile,
     "The license is known, but the package ships no text of it. This alone needs no review."},
});
static_assert(ScanKit::hasRowForEachEnumerator(flagMeanings), "each enumerator needs its row here");

constexpr auto basisMeanings = std::to_array<Meaning<LicenseBasis>>({
    {LicenseBasis::metadataAndText,
     "The metadata names the license and the license file agrees: the surest answer."},
    {LicenseBasis::metadata, "The metadata names the license; no license file could confirm it."},
    {LicenseBasis::classifier, "One of the package's Python classifiers names the license."},
    {LicenseBasis::text, "The text of the license file was recognized; the metadata says nothing."},
    {LicenseBasis::notice, "A short notice in a file names the license; its full text was not found."},
    {LicenseBasis::none, "Nothing was found."},
});
static_assert(ScanKit::hasRowForEachEnumerator(basisMeanings), "each enumerator needs its row here");

template <typename Value, std::size_t count>
QString definitions(const std::array<Meaning<Value>, count>& meanings) {
    QString html;
    for (const Meaning<Value>& meaning : meanings) {
        const QString term = Texts::fromUtf8(ScanKit::label(meaning.value)).toHtmlEscaped();
        html += QStringLiteral("<p><b>%1.</b> %2</p>").arg(term, QString::fromUtf8(meaning.words));
    }
    return html;
}

/// Without colours or sizes of its own, so that it follows light, dark and the desktop's font.
constexpr const char* page = R"(
<h1>Quorvane Help</h1>
<p>Quorvane lists the open-source licenses of the packages that a project depends on, and writes the reports
that go with a program when it ships. It reads the project folder and changes nothing in it.</p>
<h2>The way through</h2>
<p><b>1. Open</b> a project folder: drop it on the window, or choose File, Open Project Folder.</p>
<p><b>2. Look</b> at what needs review. The sidebar filters the packages, the search finds names and
licenses, and the details tell how each license was found.</p>
<p><b>3. Mend</b> what the warnings at the top ask for, and scan again.</p>
<p><b>4. Export</b> the reports: a PDF with the flags, a NOTICE file with every license text, as text or
as a page for an app's own screen, a CSV table, and JSON.</p>
<p>What Quorvane says is information, not legal advice.</p>
<h2>Without a mouse</h2>
<p>Tab leads from the search through the buttons, the filters, the headings and the rows to the details. On the
headings, Left and Right choose one, Space sorts by it, and Shift with Left and Right changes its width; View, Fit
Columns forgets such widths. The menu key on a row copies it, opens its source or shows it in the file manager. Find
in License Text looks for words in the text of the selected package.</p>
<h2>Categories</h2>%1
<h2>Flags</h2>
<p>An octagon marks high severity, a triangle medium, a ring low.</p>%2
<h2>Found by</h2>%3
<h2>What is read</h2>
<table cellpadding="4">
<tr><td><b>Swift packages</b></td><td>Package.resolved, checked-out packages</td></tr>
<tr><td><b>npm</b></td><td>package-lock.json, npm-shrinkwrap.json, pnpm-lock.yaml, yarn.lock, bun.lock, package.json;
node_modules, pnpm’s store, Yarn’s packed packages</td></tr>
<tr><td><b>Python</b></td><td>requirements files, poetry.lock, uv.lock, pdm.lock, Pipfile.lock, pylock.toml;
virtual environments</td></tr>
</table>
<p>Each entry of a lockfile is accounted for, and dependency files that are not read raise a warning.</p>
<h2>Dev-only packages</h2>
<p>Packages marked “dev” are needed only for development, such as tests and build tools. They usually don’t
ship with your program, so reports leave them out unless you include them in the settings or when
exporting.</p>
)";

}  // namespace

QString helpPage() {
    return QString::fromUtf8(page).arg(definitions(categoryMeanings), definitions(flagMeanings),
                                       definitions(basisMeanings));
}
