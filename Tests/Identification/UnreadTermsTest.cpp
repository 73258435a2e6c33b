#include "ScanKit/Identification/LicenseMatcher.h"
#include "ScanKit/Support/Text.h"
#include "Tests/Builders/Printers.h"
#include "Tests/Identification/InstalledPackage.h"

#include <functional>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

namespace ScanKit {
namespace {

using testing::Contains;
using testing::HasSubstr;

struct Case {
    const char* what;
    const char* declared;
    std::string text;
    const char* outcome;
};

void expectOutcomes(const std::vector<Case>& cases) {
    for (const Case& one : cases) {
        EXPECT_EQ(outcome(InstalledPackage(one.declared).license("LICENSE", one.text).identified()),
                  one.outcome)
            << one.what;
    }
}

std::string reference(std::string_view name) {
    return std::string(referenceText(name).value());
}

/// A standard text with words put in front of some of its own.
std::string with(std::string_view name, std::string_view before, std::string_view words) {
    std::string text = standard(name);
    const std::size_t at = text.find(before);
    EXPECT_NE(at, std::string::npos) << before;
    return text.insert(at, words);
}

const std::string firstGrant = "Redistribution and use in source and binary forms";
const std::string vendorTerms =
    "Map Terms. The files of this package are licensed under our terms of service, for use only with our own "
    "products, by developers with an active account. This license terminates when the account does. "
    "Modifications that change billing or accounting are not authorized.\n\nThe following is bundled:\n\n";
const std::string withoutSelling =
    "The Software is provided to you under the License, subject to the following condition. The grant of rights "
    "under the License does not include the right to Sell the Software.\n\n";
const std::string forEducation =
    "Permission is hereby granted, free of charge, to any person obtaining a copy of these files to read and "
    "study them.\n\nYou may not publish them, nor an app made of them, in any store. Use in classes is welcome "
    "as long as the work stays within the school; whatever else you have in mind needs our written consent.\n";

TEST(UnreadTerms, AreNeverReportedAsAFreeLicenseAlone) {
    const std::string forGood =
        with("MIT", "THE SOFTWARE IS", "The Software shall be used for Good, not Evil.\n\n");
    const std::string sharedSource = with(
        "BSD-3-Clause", "THIS SOFTWARE IS",
        "4. Redistributions in any form must be accompanied by information on how to obtain complete source "
        "code for this software and any software that uses it.\n\n");
    expectOutcomes({
        {"a vendor's terms, then bundled texts", "SEE LICENSE IN LICENSE",
         vendorTerms + standard("BSD-3-Clause"), "nothing by none, proprietary"},
        {"the same, named by an identifier", "LicenseRef-Proprietary", vendorTerms + standard("BSD-3-Clause"),
         "nothing by none, unknown"},
        {"the same, longer than what it bundles", "",
         vendorTerms + forEducation + vendorTerms + vendorTerms + standard("ISC"),
         "nothing by none, unknown"},
        {"terms that begin like a license", "", forEducation, "nothing by none, unknown"},
        {"a sentence within the license", "MIT AND JSON", forGood, "nothing by none, unknown"},
        {"the same, declared MIT", "MIT", forGood, "MIT by metadataAndText, unknown"},
        {"an identifier that nobody knows beside a known one", "(MIT AND JSON)", standard("MIT"),
         "MIT by text, unknown"},
        {"a restriction in front", "MIT", withoutSelling + standard("MIT"),
         "MIT by metadataAndText, unknown"},
        {"the same, nothing declared", "", withoutSelling + standard("MIT"), "MIT by text, unknown"},
        {"the same around Apache-2.0", "Apache-2.0", withoutSelling + standard("Apache-2.0"),
         "Apache-2.0 by metadataAndText, unknown"},
        {"declared as if it were an exception", "Apache-2.0 WITH Commons-Clause", standard("Apache-2.0"),
         "Apache-2.0 WITH Commons-Clause by metadataAndText, unknown"},
        {"a use that is ruled out", "BSD-3-Clause",
         standard("BSD-3-Clause") +
             "\nYou acknowledge that this software is not designed, licensed or intended "
             "for use in any military facility.\n",
         "BSD-3-Clause by metadataAndText, unknown"},
        {"copyleft in the words of a free license", "", sharedSource, "nothing by none, unknown"},
        {"an agreement, with a known license declared", "MIT", vendorTerms, "MIT by metadata, unknown"},
        {"GPL with terms of its own is no less", "SEE LICENSE IN LICENSE",
         withoutSelling + standard("GPL-3.0"), "GPL-3.0 by text, strongCopyleft, unknown"},
        {"not open source, as declared", "UNLICENSED", vendorTerms, "UNLICENSED by metadata, proprietary"},
        {"a word within the grant", "MIT", with("MIT", "without restriction", "for non-commercial purposes "),
         "MIT by metadataAndText, unknown"},
        {"the same, nothing declared", "", with("ISC", "purpose", "noncommercial "),
         "nothing by none, unknown"},
        {"less than the license grants", "",
         Text::replacingAll(standard("MIT"), "to use, copy, modify, merge,", "to use, copy,"),
         "nothing by none, unknown"},
        {"a heading of its own", "MIT", "Non-commercial use only\n\n" + standard("MIT"),
         "MIT by metadataAndText, unknown"},
        {"behind the name of a holder", "MIT",
         "(c) 2024 A Company. All rights reserved. Commercial use requires a paid license.\n\n" +
             standard("MIT"),
         "MIT by metadataAndText, unknown"},
        {"a badge", "MIT",
         standard("MIT") + "\nThe watermark has to stay in whatever is made with this library.\n",
         "MIT by metadataAndText, unknown"},
        {"another language", "MIT",
         standard("MIT") + "\nDie gewerbliche Nutzung ist ohne Erlaubnis nicht gestattet.\n",
         "MIT by metadataAndText, unknown"},
        {"a page of HTML", "MIT",
         "<!DOCTYPE html><html><head><title>x</title></head><body><p>" +
             Text::replacingAll(standard("MIT"), "\"", "&quot;") + "</p></body></html>",
         "MIT by metadataAndText"},
    });
}

TEST(UnreadTerms, LeaveInPeaceWhatAsksNothing) {
    expectOutcomes({
        {"where it comes from", "MIT",
         "This project is a fork of an earlier one by Somebody Else, extended and distributed under the terms of "
         "the license above, which is the same as that of the original work.\n\n" +
             standard("MIT"),
         "MIT by metadataAndText"},
        {"generous", "MIT",
         standard("MIT") +
             "\nYou can use it for commercial projects, without any restriction and without fee, or "
             "for whatever else you like; attribution is not required.\n",
         "MIT by metadataAndText"},
        {"views of the authors", "BSD-2-Clause",
         standard("BSD-2-Clause") +
             "\nThe views and conclusions contained in the software are those of the authors "
             "and should not be interpreted as representing official policies.\n",
         "BSD-2-Clause by metadataAndText"},
        {"holders and addresses", "MIT",
         "Copyright (c) 2020 One\nCopyright (c) 2021 Two\n\nOne <one@example.com>\nTwo <two@example.com>\nThree "
         "<https://example.com>\n\n" +
             standard("MIT"),
         "MIT by metadataAndText"},
        {"what every license asks", "MIT",
         standard("MIT") +
             "\nAll redistributions must retain an intact copy of this copyright notice and disclaimer.\n",
         "MIT by metadataAndText"},
        {"contributions", "MIT",
         standard("MIT") +
             "\nBy sending a patch you agree that your work is licensed in the same way as the rest.\n",
         "MIT by metadataAndText"},
        {"a few words changed", "MIT",
         Text::replacingAll(standard("MIT"), "shall be included in", "must be included with"),
         "MIT by metadataAndText"},
    });
}

TEST(UnreadTerms, AreQuotedFromWhereTheirSentenceBegins) {
    const auto notes = [](std::string_view text) {
        return InstalledPackage("MIT").license("LICENSE", text).identified().notes;
    };
    const std::string origin =
        "This library bundles a version of another one, under the terms of its own license, whose text follows "
        "below in this very file and in the folders beside it.\n\n";
    EXPECT_THAT(
        notes(origin + standard("MIT")),
        Contains("The license file says more than the standard text: “This library bundles a version of "
                 "another one, under the terms of its own license, whose text follows below in this…”. "
                 "Read it."));
    EXPECT_THAT(
        notes(origin + with("MIT", "THE SOFTWARE IS", "The Software shall be used\nfor Good, not Evil.\n\n")),
        Contains(HasSubstr("“The Software shall be used for Good, not Evil…”")))
        << "terms come first";
    EXPECT_THAT(notes("By Somebody, in the year 2020.\n\n" + standard("MIT")), testing::IsEmpty())
        << "not of substance";
}

TEST(TextOfALicense, ReadsAsItselfAndNotAsOneItResembles) {
    for (const KnownLicense& row : knownLicenses()) {
        const auto text = standardText(row.id) ? standardText(row.id) : referenceText(row.id);
        if (text) {
            const Dependency alone = InstalledPackage().license("LICENSE", *text).identified();
            EXPECT_EQ(alone.license, row.id);
            EXPECT_FALSE(alone.has(Flag::unknown)) << row.id;
            EXPECT_FALSE(InstalledPackage(std::string(row.id))
                             .license("LICENSE", *text)
                             .identified()
                             .has(Flag::mismatch))
                << row.id;
        }
    }
    const std::string gpl2 = standard("GPL-2.0");
    expectOutcomes({
        {"AGPL with a text after it", "AGPL-3.0-only", reference("AGPL-3.0") + "\n" + standard("MIT"),
         "AGPL-3.0-only by metadataAndText, networkCopyleft"},
        {"the same, nothing declared", "", reference("SSPL-1.0") + "\n" + standard("MIT"),
         "SSPL-1.0 AND MIT by text, networkCopyleft"},
        {"another license than declared", "MIT", reference("EPL-2.0"), "MIT by metadata, mismatch"},
        {"the same", "MIT", reference("MPL-1.1"), "MIT by metadata, mismatch"},
        {"the same", "MIT", reference("CDDL-1.0"), "MIT by metadata, mismatch"},
        {"the same", "MIT", reference("EUPL-1.2"), "MIT by metadata, mismatch"},
        {"the same", "MIT", reference("BUSL-1.1"), "MIT by metadata, mismatch"},
        {"a name that two licenses go by", "BSL", reference("BUSL-1.1"),
         "BUSL-1.1 by metadataAndText, proprietary"},
        {"the same", "BSL", reference("BSL-1.0"), "BSL-1.0 by metadataAndText"},
        {"a change license to come", "",
         Text::replacingAll(reference("BUSL-1.1"), "Terms\n",
                            "Change License: Apache License, Version 2.0\n\nTerms\n"),
         "BUSL-1.1 by text, proprietary"},
        {"one clause of two", "BSD-1-Clause", reference("BSD-1-Clause"), "BSD-1-Clause by metadataAndText"},
        {"Python's stack under its first name", "PSF-2.0", reference("Python-2.0"),
         "PSF-2.0 by metadataAndText"},
        {"half a GPL under another name", "MIT", gpl2.substr(0, gpl2.size() / 2),
         "MIT by metadata, mismatch"},
        {"half a GPL", "", gpl2.substr(0, gpl2.size() / 2), "GPL-2.0 by notice, strongCopyleft"},
        {"share alike", "",
         Text::replacingAll(reference("CC-BY-4.0"), "Attribution 4.0", "Attribution-ShareAlike 4.0"),
         "nothing by none, unknown"},
    });
}

/// The paragraphs of a text in lines of at most this many columns.
std::string reflowed(std::string_view text, std::size_t columns) {
    std::string output;
    std::size_t column = 0;
    bool isBlankLine = false;
    for (const std::string_view line : Text::split(text, "\n")) {
        isBlankLine = Text::isBlank(line);
        if (isBlankLine) {
            output += column == 0 ? "" : "\n\n";
            column = 0;
        }
        for (const std::string_view word : Text::split(line, " \t\r")) {
            if (word.empty()) {
                continue;
            }
            const bool fits = column + 1 + word.size() <= columns;
            output += column == 0 ? "" : fits ? " " : "\n";
            column = column != 0 && fits ? column + 1 + word.size() : word.size();
            output += word;
        }
    }
    return output + "\n";
}

TEST(TextOfALicense, ReadsTheSameInEveryLayout) {
    const auto lines = [](std::string_view text, std::string_view before) {
        return Text::replacingAll(text, "\n", "\n" + std::string(before));
    };
    const std::pair<const char*, std::function<std::string(const std::string&)>> layouts[]{
        {"40 columns", [](const std::string& text) { return reflowed(text, 40); }},
        {"45 columns", [](const std::string& text) { return reflowed(text, 45); }},
        {"60 columns", [](const std::string& text) { return reflowed(text, 60); }},
        {"200 columns", [](const std::string& text) { return reflowed(text, 200); }},
        {"CR LF", [](const std::string& text) { return Text::replacingAll(text, "\n", "\r\n"); }},
        {"a comment", [&](const std::string& text) { return "/*\n * " + lines(text, " * ") + "\n */\n"; }},
        {"Markdown", [&](const std::string& text) { return "# License\n\n> " + lines(text, "> "); }},
        {"escaped quotes", [](const std::string& text) { return Text::replacingAll(text, "\"", "&quot;"); }},
        {"typographic quotes", [](const std::string& text) { return Text::replacingAll(text, "\"", "”"); }},
        {"a holder",
         [](const std::string& text) { return "Copyright (c) 2026 Somebody Önderson\n\n" + text; }},
        {"bullets",
         [](const std::string& text) {
             std::string bulleted = text;
             for (const char* number : {"1.", "2.", "3.", "4.", "5.", "6.", "(a)", "(b)", "(c)"}) {
                 bulleted = Text::replacingAll(bulleted, "\n" + std::string(number), "\n *");
                 bulleted = Text::replacingAll(bulleted, "\n  " + std::string(number), "\n   *");
             }
             return bulleted;
         }},
    };
    for (const LicenseMatcher::Template& one : LicenseMatcher::templates()) {
        for (const auto& [name, layout] : layouts) {
            const Dependency found =
                InstalledPackage().license("LICENSE", layout(standard(one.id))).identified();
            EXPECT_EQ(found.license, one.id) << name;
            EXPECT_FALSE(found.has(Flag::unknown)) << one.id << " in " << name;
        }
    }
}

TEST(TextOfALicense, MayOfferAChoiceOrStateAnException) {
    const std::string classpath =
        "\nAs a special exception, the copyright holders of this library give you permission to link this library "
        "with independent modules to produce an executable, regardless of the license terms of these independent "
        "modules.\n";
    const std::string swift =
        "\nAs an exception, if you use this Software to compile your source code and portions of this Software are "
        "embedded into the binary product as a result, you may redistribute such product without providing "
        "attribution as would otherwise be required.\n";
    const std::string dual = "This is dual licensed under the MIT and GPL licenses; you may pick one.\n\n";
    expectOutcomes({
        {"two texts", "", dual + standard("MIT") + "\n" + standard("GPL-2.0"), "MIT OR GPL-2.0 by text"},
        {"the same, declared", "(MIT OR GPL-2.0)", dual + standard("MIT") + "\n" + standard("GPL-2.0"),
         "MIT OR GPL-2.0 by metadataAndText"},
        {"and a third that is no choice", "",
         dual + standard("MIT") + "\n" + standard("GPL-2.0") + "\n" + standard("Zlib"),
         "(MIT OR GPL-2.0) AND Zlib by text"},
        {"two notices", "",
         "Dual licensed under the GNU General Public License, version 2, and the Apache License, Version 2.0.",
         "GPL-2.0 OR Apache-2.0 by notice"},
        {"of a part alone", "",
         "The examples directory is dual licensed under MIT and GPL; the rest is under both.\n\n" +
             standard("MIT") + "\n" + standard("GPL-2.0"),
         "MIT AND GPL-2.0 by text, strongCopyleft"},
        {"of something else", "",
         "You can choose a theme. The program is GPL, the icons are MIT.\n\n" + standard("MIT") + "\n" +
             standard("GPL-2.0"),
         "MIT AND GPL-2.0 by text, strongCopyleft"},
        {"with money", "",
         "Dual licensed: GPL for everybody, a commercial license for the others, MIT for the rest.\n\n" +
             standard("MIT") + "\n" + standard("GPL-2.0"),
         "MIT AND GPL-2.0 by text, strongCopyleft, unknown"},
        {"a tag", "", "// SPDX-License-Identifier: MIT OR GPL-2.0-only\n", "MIT OR GPL-2.0-only by notice"},
        {"a name, against the metadata", "MIT", "Released under the GPL v3.", "MIT by metadata, mismatch"},
        {"nobody offers one", "", standard("MIT") + "\n" + standard("GPL-2.0"),
         "MIT AND GPL-2.0 by text, strongCopyleft"},
        {"an exception", "", standard("GPL-2.0") + classpath,
         "GPL-2.0 WITH Classpath-exception-2.0 by text, weakCopyleft"},
        {"the same, declared", "GPL-2.0-only WITH Classpath-exception-2.0", standard("GPL-2.0") + classpath,
         "GPL-2.0-only WITH Classpath-exception-2.0 by metadataAndText, weakCopyleft"},
        {"for what a compiler leaves behind", "", standard("Apache-2.0") + swift,
         "Apache-2.0 WITH Swift-exception by text"},
        {"an exception that is none", "",
         standard("GPL-2.0") +
             "\nWe do not give you permission to link this library with independent modules to "
             "produce an executable.\n",
         "GPL-2.0 by text, strongCopyleft"},
        {"the GPL, and a bundled LGPL", "",
         "This program is under the GNU General Public License, version 2 or any later version. The bundled library "
         "is under the GNU Lesser General Public License, version 2.1.",
         "GPL-2.0-or-later by notice, strongCopyleft"},
        {"an exception that belongs to another license", "", standard("MIT") + classpath, "MIT by text"},
    });
    // The LGPL is written as additions to the GPL; a list of third parties that mentions it is not.
    const Dependency listed =
        InstalledPackage()
            .license("LICENSE", standard("GPL-3.0"))
            .license("LICENSE-THIRD-PARTY",
                     "A font renderer that comes with this program, and which is loaded when a "
                     "document asks for it and not before, is under the GNU Lesser General "
                     "Public License, version 3; its authors have been with us for many years "
                     "and answer whoever writes to them about it.\n")
            .identified();
    EXPECT_EQ(outcome(listed), "GPL-3.0 AND LGPL-3.0 by text, strongCopyleft, unknown");
}

}  // namespace
}  // namespace ScanKit
